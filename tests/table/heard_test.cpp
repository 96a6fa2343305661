// What assistive tools are told, over their own interface.

#include <QAccessible>
#include <QAccessibleActionInterface>

#include "net/frm_splash.h"
#include "tests/game.h"

using namespace morva;

namespace {

Lines& Heard() {
  static Lines heard;
  return heard;
}

// Notes what is announced as it is, a focus as "focus NAME" and a new name of a square as "now NAME".
void Note(QAccessibleEvent* event) {
  QAccessibleInterface* told = event->accessibleInterface();
  if (told == nullptr) return;
  const std::string name = told->text(QAccessible::Name).toStdString();
  if (event->type() == QAccessible::ObjectShow && told->role() == QAccessible::Notification) {
    Heard().push_back(told->child(0)->text(QAccessible::Name).toStdString());
  } else if (event->type() == QAccessible::Focus) {
    Heard().push_back("focus " + name);
  } else if (event->type() == QAccessible::NameChanged && told->role() == QAccessible::ListItem) {
    Heard().push_back("now " + name);
  }
}

// The first object below with the role and the name.
QAccessibleInterface* Find(QAccessibleInterface* in, QAccessible::Role role, const QString& name) {
  if (in->role() == role && in->text(QAccessible::Name) == name) return in;
  for (int i = 0; i < in->childCount(); ++i) {
    EXPECT_EQ(in->indexOfChild(in->child(i)), i);
    EXPECT_EQ(in->child(i)->parent(), in) << name.toStdString();
    if (QAccessibleInterface* found = Find(in->child(i), role, name)) return found;
  }
  return nullptr;
}

class Hearing : public GameTest {
 protected:
  void SetUp() override {
    QAccessible::setActive(true);
    QAccessible::installUpdateHandler(Note);
    Heard().clear();
  }
  void TearDown() override {
    GameTest::TearDown();
    QAccessible::installUpdateHandler(nullptr);
    QAccessible::setActive(false);
  }
  static QAccessibleInterface* Of(Form& form) { return QAccessible::queryAccessibleInterface(form.Native()); }

  /// What is heard of a message, the last time with these words.
  static void Hears(const std::string& message, const Lines& words) {
    Heard().clear();
    Tell(message);
    Await([&] { return Heard().size() >= words.size() && Heard().back() == words.back(); }, 1500);
    EXPECT_EQ(Heard(), words) << message;
  }
};

TEST_F(Hearing, EachEventIsSaidOnceAndTheFocusStays) {
  ASSERT_NO_FATAL_FAILURE(Sit());
  ASSERT_TRUE(Await([] { return !Heard().empty() && Heard().back() == "You play black. Bob's turn"; }));
  Hears("15236", {"now E7, empty", "now E5, white pawn", "Bob: E7 - E5 (white pawn). Your turn"});
  Hears("11010", {});  // the turn is mine already
  Hears("me", {"Bob's turn"});
  Hears("0a <b>&amp;</b>", {"Bob: a <b>&amp;</b>"});
  Hears("310", {"now C2, empty", "Bob: trashed C2 (black pawn)"});
  Hears("410616777215", {"now C2, white queen", "Bob: C2 (nothing to white queen)"});
  frmChess->onesec.Tick();
  Hears("1clear", {});
  EXPECT_EQ(Heard().size(), 33U + 1) << "all squares with a piece, and the words";
  EXPECT_EQ(Heard().back(), "Board cleared");
  Heard().clear();
  Tell("0one");
  Tell("0two!");
  Tell("0three");
  EXPECT_TRUE(Await([] { return Heard() == Lines{"Bob: one. Bob: two! Bob: three"}; }));
  EXPECT_TRUE(ChatHasFocus());
  // Nobody listens: nothing is put together.
  QAccessible::setActive(false);
  Hears("0unheard", {});
}

TEST_F(Hearing, TheTreeHoldsWhatIsSeen) {
  frmSplash->Show();
  EXPECT_NE(Find(Of(*frmSplash), QAccessible::Window, "Morva"), nullptr);
  Unload(frmSplash);
  Go("host");
  EXPECT_NE(Find(Of(*frmControl), QAccessible::StaticText, QString::fromStdString(frmControl->lblStat.Caption())),
            nullptr);
  EXPECT_EQ(Of(*frmControl)->role(), QAccessible::Dialog);
  frmChess->Show();
  frmControl->Top = -10000;
  EXPECT_TRUE(Await([] { return frmControl->Native()->windowHandle() == nullptr; })) << "tools would go on seeing it";

  QAccessibleInterface* board = Find(Of(*frmChess), QAccessible::List, "Board");
  ASSERT_NE(board, nullptr);
  ASSERT_EQ(board->childCount(), 64);
  EXPECT_EQ(board->child(0)->text(QAccessible::Name), "A1, black castle");
  EXPECT_EQ(board->child(63)->text(QAccessible::Name), "H8, white castle");
  for (const char* name : {"Chat", "Chat log"}) {
    EXPECT_NE(Find(Of(*frmChess), QAccessible::EditableText, name), nullptr) << name;
  }
  EXPECT_EQ(Find(Of(*frmChess), QAccessible::Button, "A"), nullptr) << "a label stacked out of sight";
  EXPECT_EQ(Find(Of(*frmChess), QAccessible::Button, "Send"), nullptr);
  EXPECT_NE(Find(Of(*frmToolWindow), QAccessible::List, "History"), nullptr);
  frmToolWindow->lbl3D(0).Caption = "shadow";
  frmToolWindow->lbl3D(0).Visible = true;
  EXPECT_EQ(Find(Of(*frmToolWindow), QAccessible::StaticText, "shadow"), nullptr);

  // Press does what it says, and not through a window that takes no input.
  QAccessibleInterface* labels = Find(Of(*frmChess), QAccessible::Button, "Show co-ordinates");
  ASSERT_NE(labels, nullptr);
  labels->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_TRUE(frmChess->coordinates.CoordsShown);
  board->child(1)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_EQ(frmChess->Carried, 1);
  board->child(3)->actionInterface()->doAction(QAccessibleActionInterface::showMenuAction());
  ASSERT_TRUE(frmChange.Loaded());
  EXPECT_EQ(frmChange->rdo(6).Value(), true);
  EXPECT_EQ(Of(*frmChange)->text(QAccessible::Name), "Change D1, black queen");
  QAccessibleInterface* king = Find(Of(*frmChange), QAccessible::RadioButton, "King");
  EXPECT_EQ(king->parent()->text(QAccessible::Name), "Chess");
  king->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_TRUE(frmChange->rdo(5).Value());
  labels->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_TRUE(frmChess->coordinates.CoordsShown);
}

}  // namespace
