// What assistive tools find, over their own interface. What they are told is heard in tests/e2e/heard.py.

#include <QAccessible>
#include <QAccessibleActionInterface>

#include "net/frm_splash.h"
#include "tests/game.h"

using namespace morva;

namespace {

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
  static QAccessibleInterface* Of(Form& form) { return QAccessible::queryAccessibleInterface(form.Native()); }
};

TEST_F(Hearing, TheTreeHoldsWhatIsSeen) {
  frmSplash->Show();
  EXPECT_NE(Find(Of(*frmSplash), QAccessible::Window, "Morva"), nullptr);
  Unload(frmSplash);
  for (const char* name : {"Nick", "Host"}) {
    EXPECT_NE(Find(Of(*frmWelcome), QAccessible::EditableText, name), nullptr) << name;
  }
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
