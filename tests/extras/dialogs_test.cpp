#include <QTemporaryDir>

#include "extras/frm_about_chess.h"
#include "extras/frm_author.h"
#include "files/frm_instructions.h"
#include "platform/system/plain_files.h"
#include "tests/game.h"

namespace morva {
namespace {

/// About, author and instructions; the program's current folder is an empty one.
class Dialogs : public GameTest {
 protected:
  void SetUp() override {
    QDir::setCurrent(folder_.path());
    Sit();
  }

  void TearDown() override {
    QDir::setCurrent(before_);
    Unload(frmAuthor);
    Unload(frmAboutChess);
    Unload(frmInstructions);
    GameTest::TearDown();
  }

  static bool TableTakesInput() {
    EXPECT_EQ(frmChess->Enabled(), frmToolWindow->Enabled());
    return frmChess->Enabled();
  }

 private:
  QString before_ = QDir::currentPath();
  QTemporaryDir folder_;
};

TEST_F(Dialogs, KeepTheUserUntilTheyAreClosed) {
  frmChess->mnuInstructions.Click();
  EXPECT_TRUE(!frmInstructions.Loaded() && TableTakesInput()) << "there is no file";
  WriteFile("morva.txt", "How to play");
  for (const bool about : {true, false}) {
    frmToolWindow->mnuAlways.Checked = about;
    frmToolWindow->frmext.ontop = true;
    (about ? frmChess->mnuAbout : frmChess->mnuInstructions).Click();
    Form& dialog = about ? static_cast<Form&>(*frmAboutChess) : *frmInstructions;
    EXPECT_TRUE(HasKeys(dialog));
    EXPECT_FALSE(TableTakesInput() || frmToolWindow->frmext.ontop());
    QTest::keyClick(dialog.Native(), about ? Qt::Key_Return : Qt::Key_Escape);
    EXPECT_FALSE(frmAboutChess.Loaded() || frmInstructions.Loaded()) << about;
    EXPECT_TRUE(TableTakesInput() && frmToolWindow->frmext.ontop() == about);
  }
}

TEST_F(Dialogs, ThePortraitOpensTheAuthorRightOverItAndTheOneThereClosesIt) {
  frmChess->mnuAbout.Click();
  frmAboutChess->Left = 3150;
  frmAboutChess->Top = 2100;
  QTest::mouseClick(frmAboutChess->photo.Native(), Qt::LeftButton);
  ASSERT_TRUE(frmAuthor.Loaded() && HasKeys(*frmAuthor));
  QWidget& over = *frmAuthor->photo.Native();
  EXPECT_EQ(over.mapToGlobal(QPoint()), frmAboutChess->photo.Native()->mapToGlobal(QPoint()));
  frmAuthor->Native()->close();
  frmAboutChess->Native()->close();
  EXPECT_FALSE(frmAuthor->Form_KeyDown(morva::Key::kOther, 0) || frmAboutChess->photo.KeyDown(morva::Key::kEnter, 0));
  ASSERT_TRUE(frmAuthor.Loaded() && frmAboutChess.Loaded()) << "only the portrait closes, and its keys";
  QTest::mouseClick(&over, Qt::LeftButton);
  EXPECT_TRUE(!frmAuthor.Loaded() && frmAboutChess->Enabled() && !TableTakesInput());
  EXPECT_TRUE(HasKeys(*frmAboutChess));
  for (const auto key : {morva::Key::kEscape, morva::Key::kEnter, morva::Key::kSpace}) {
    EXPECT_TRUE(frmAboutChess->photo.KeyDown(morva::Key::kSpace, 0) && frmAuthor.Loaded());
    EXPECT_TRUE(frmAuthor->Form_KeyDown(key, 0) && !frmAuthor.Loaded());
  }
}

TEST_F(Dialogs, InstructionsFillTheirWindowWithTheFileOfEitherEncoding) {
  const std::pair<std::string, const char*> files[] = {
      {"", ""},
      {"\n\tone\r\n\r\n\tt\t\two\t", "\r\n\tone\r\n\r\n\tt\t\two\t\r\n"},
      {"\xEF\xBB\xBFgr\xC3\xBC\xC3\x9F\n", "gr\xC3\xBC\xC3\x9F\r\n"},
      {std::string("gr\xFC\xDF\0-\x1B", 7), "gr\xC3\xBC\xC3\x9F\xEF\xBF\xBD-\xEF\xBF\xBD\r\n"}};
  for (const auto& [bytes, text] : files) {
    Unload(frmInstructions);
    WriteFile("morva.txt", bytes);
    frmChess->mnuInstructions.Click();
    EXPECT_EQ(frmInstructions->textbox.Text(), text);
  }
  frmInstructions->Native()->resize(200, 700);
  EXPECT_TRUE(Await([&] { return frmInstructions->textbox.Native()->size() == QSize(200, 700); }));
}

}  // namespace
}  // namespace morva
