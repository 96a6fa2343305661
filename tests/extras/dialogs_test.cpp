#include <QTemporaryDir>

#include "extras/about.h"
#include "extras/frm_about_chess.h"
#include "extras/frm_author.h"
#include "files/file_menus.h"
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
    frmChess.made = [](FrmChess& window) {
      ConnectFileMenus(window);
      ConnectHelpMenu(window);
    };
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
  const std::function<void()> ways[] = {[] { frmAboutChess->cmdOK.Click(); }, [] { frmAboutChess->Native()->close(); },
                                        [] { QTest::keyClick(frmAboutChess->Native(), Qt::Key_Return); },
                                        [] { frmInstructions->Native()->close(); },
                                        [] { QTest::keyClick(frmInstructions->Native(), Qt::Key_Escape); }};
  for (const bool always : {true, false}) {
    for (int way = 0; way < 5; ++way) {
      const bool about = way < 3;
      frmToolWindow->mnuAlways.Checked = always;
      frmToolWindow->frmext.ontop = true;
      (about ? frmChess->mnuAbout : frmChess->mnuInstructions).Click();
      Form& dialog = about ? static_cast<Form&>(*frmAboutChess) : *frmInstructions;
      EXPECT_TRUE(QTest::qWaitForWindowActive(dialog.Native()));
      EXPECT_FALSE(TableTakesInput() || frmToolWindow->frmext.ontop());
      ways[way]();
      EXPECT_FALSE(frmAboutChess.Loaded() || frmInstructions.Loaded()) << way;
      EXPECT_TRUE(TableTakesInput() && frmToolWindow->frmext.ontop() == always) << way;
      EXPECT_TRUE(!about || QTest::qWaitForWindowActive(frmChess->Native())) << way;
    }
  }
}

TEST_F(Dialogs, ThePortraitOpensTheAuthorRightOverItAndTheOneThereClosesIt) {
  frmChess->mnuAbout.Click();
  for (const QPoint corner : {QPoint(0, 0), QPoint(210, 140)}) {
    frmAboutChess->Left = corner.x() * kTwipsPerPixel;
    frmAboutChess->Top = corner.y() * kTwipsPerPixel;
    QTest::mouseClick(frmAboutChess->photo.Native(), Qt::LeftButton);
    ASSERT_TRUE(frmAuthor.Loaded() && QTest::qWaitForWindowActive(frmAuthor->Native()));
    QWidget& under = *frmAboutChess->photo.Native();
    QWidget& over = *frmAuthor->photo.Native();
    EXPECT_EQ(over.mapToGlobal(QPoint()), under.mapToGlobal(QPoint()));
    EXPECT_EQ(over.grab().toImage(), under.grab().toImage());
    frmAuthor->Native()->close();
    frmAboutChess->Native()->close();
    ASSERT_TRUE(frmAuthor.Loaded() && frmAboutChess.Loaded()) << "only the portrait closes";
    QTest::mouseClick(&over, Qt::LeftButton);
    EXPECT_TRUE(!frmAuthor.Loaded() && frmAboutChess->Enabled() && !TableTakesInput());
    EXPECT_TRUE(QTest::qWaitForWindowActive(frmAboutChess->Native()));
  }
}

TEST_F(Dialogs, InstructionsFillTheirWindowWithTheFileOfEitherEncoding) {
  const std::pair<std::string, const char*> files[] = {{"", ""},
                                                       {"\n", "\r\n"},
                                                       {"one\r\n\r\ntwo\nthree", "one\r\n\r\ntwo\r\nthree\r\n"},
                                                       {"\ta\t\tb\t\n", "\ta\t\tb\t\r\n"},
                                                       {"\xEF\xBB\xBFgr\xC3\xBC\xC3\x9F", "gr\xC3\xBC\xC3\x9F\r\n"},
                                                       {"gr\xFC\xDF", "gr\xC3\xBC\xC3\x9F\r\n"},
                                                       {std::string("a\0-\x1B", 4), "a\xEF\xBF\xBD-\xEF\xBF\xBD\r\n"}};
  for (const auto& [bytes, text] : files) {
    Unload(frmInstructions);
    WriteFile("morva.txt", bytes);
    frmChess->mnuInstructions.Click();
    EXPECT_EQ(frmInstructions->textbox.Text(), text);
  }
  for (const QSize size : {QSize(800, 300), QSize(200, 700)}) {
    frmInstructions->Native()->resize(size);
    EXPECT_TRUE(Await([&] { return frmInstructions->textbox.Native()->size() == size; })) << size.width();
  }
}

}  // namespace
}  // namespace morva
