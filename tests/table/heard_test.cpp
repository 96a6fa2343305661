// What assistive tools find, over their own interface. What they are told is heard in tests/e2e/keys.py.

#include <QAccessible>
#include <QAccessibleActionInterface>

#include "net/frm_splash.h"
#include "tests/game.h"

namespace morva {
namespace {

using Role = QAccessible::Role;

class Hearing : public GameTest {
 protected:
  static QAccessibleInterface* Of(Form& form) { return QAccessible::queryAccessibleInterface(form.Native()); }

  /// The first object in there with the role and the name; none where there is none.
  static QAccessibleInterface* Find(QAccessibleInterface* in, Role role, const std::string& name) {
    if (in->role() == role && in->text(QAccessible::Name).toStdString() == name) return in;
    for (int i = 0; i < in->childCount(); ++i) {
      EXPECT_TRUE(in->indexOfChild(in->child(i)) == i && in->child(i)->parent() == in) << name;
      if (QAccessibleInterface* found = Find(in->child(i), role, name)) return found;
    }
    return nullptr;
  }

  static void Do(QAccessibleInterface* thing, const QString& action = QAccessibleActionInterface::pressAction()) {
    ASSERT_NE(thing, nullptr);
    thing->actionInterface()->doAction(action);
  }
};

TEST_F(Hearing, TheTreeHoldsWhatIsSeen) {
  frmSplash->Show();
  EXPECT_NE(Find(Of(*frmSplash), Role::Window, "Morva, press a key to go on"), nullptr);
  Unload(frmSplash);
  for (const char* name : {"Nick", "Host"}) EXPECT_NE(Find(Of(*frmWelcome), Role::EditableText, name), nullptr) << name;
  Go("host");
  EXPECT_NE(Find(Of(*frmControl), Role::StaticText, frmControl->lblStat.Caption()), nullptr);
  frmChess->Show();
  frmControl->Top = -10000;
  EXPECT_TRUE(Await([] { return frmControl->Native()->windowHandle() == nullptr; })) << "tools would go on seeing it";
  EXPECT_EQ(Find(Of(*frmChess), Role::Button, "A"), nullptr) << "a label stacked out of sight";
}

TEST_F(Hearing, ToolsActThroughTheSameGateAsTheUser) {
  Sit();
  QAccessibleInterface* labels = Find(Of(*frmChess), Role::Button, "Show co-ordinates");
  Do(labels);
  EXPECT_TRUE(frmChess->coordinates.CoordsShown);
  QAccessibleInterface* line = QAccessible::queryAccessibleInterface(frmChess->txtIn.Native());
  line->setText(QAccessible::Value, "Your queen");
  line->editableTextInterface()->replaceText(5, 10, "turn");
  EXPECT_EQ(frmChess->txtIn.Text(), "Your turn");
  Do(Find(Of(*frmChess), Role::ListItem, "B1, black knight"));
  EXPECT_EQ(frmChess->Carried, 1);
  Do(Find(Of(*frmChess), Role::ListItem, "D1, black queen"), QAccessibleActionInterface::showMenuAction());
  ASSERT_TRUE(frmChange.Loaded());
  EXPECT_EQ(Of(*frmChange)->text(QAccessible::Name), "Change D1, black queen");
  EXPECT_NE(Find(Of(*frmChange), Role::Button, "OK, to black queen"), nullptr);
  QAccessibleInterface* king = Find(Find(Of(*frmChange), Role::Grouping, "Chess"), Role::RadioButton, "King");
  EXPECT_FALSE(king->state().checked);
  Do(king);
  EXPECT_TRUE(frmChange->rdo(5).Value() && king->state().checked);
  EXPECT_NE(Find(Of(*frmChange), Role::Button, "OK, to black king"), nullptr);
  Do(labels);
  line->setText(QAccessible::Value, "Mine");
  EXPECT_TRUE(frmChess->coordinates.CoordsShown && frmChess->txtIn.Text() == "Your turn")
      << "the window takes no input";
}

}  // namespace
}  // namespace morva
