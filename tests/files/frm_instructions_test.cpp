#include "files/frm_instructions.h"

#include <QTemporaryDir>

#include "files/file_menus.h"
#include "platform/system/plain_files.h"
#include "tests/game.h"

namespace morva {
namespace {

/// The program's current folder is an empty one.
class Instructions : public GameTest {
 protected:
  void SetUp() override {
    QDir::setCurrent(folder_.path());
    frmChess.made = ConnectFileMenus;
    Sit();
  }

  void TearDown() override {
    QDir::setCurrent(before_);
    Unload(frmInstructions);
    GameTest::TearDown();
  }

  static void Open(const std::string& bytes) {
    WriteFile("morva.txt", bytes);
    frmChess->mnuInstructions.Click();
  }

  /// What the window shows of a file with these bytes.
  static std::string TextOf(const std::string& bytes) {
    Open(bytes);
    std::string text = frmInstructions->textbox.Text();
    Unload(frmInstructions);
    return text;
  }

 private:
  QString before_ = QDir::currentPath();
  QTemporaryDir folder_;
};

TEST_F(Instructions, NeedTheFileAndKeepTheUserUntilTheirWindowIsClosed) {
  frmToolWindow->frmext.ontop = true;
  frmChess->mnuInstructions.Click();
  EXPECT_FALSE(frmInstructions.Loaded());
  EXPECT_TRUE(frmChess->Enabled() && frmToolWindow->Enabled() && frmToolWindow->frmext.ontop());

  for (const bool always : {true, false}) {
    frmToolWindow->mnuAlways.Checked = always;
    frmToolWindow->frmext.ontop = true;
    Open("How to play");
    EXPECT_TRUE(frmInstructions->Native()->isVisible());
    EXPECT_FALSE(frmChess->Enabled() || frmToolWindow->Enabled() || frmToolWindow->frmext.ontop());
    frmInstructions->Native()->close();
    EXPECT_FALSE(frmInstructions.Loaded());
    EXPECT_TRUE(frmChess->Enabled() && frmToolWindow->Enabled());
    EXPECT_EQ(frmToolWindow->frmext.ontop(), always);
  }
}

TEST_F(Instructions, FillTheirWindow) {
  Open("How to play");
  QWidget& window = *frmInstructions->Native();
  const QWidget& box = *frmInstructions->textbox.Native();
  EXPECT_EQ(window.size(), QSize(473, 417));
  for (const QSize size : {QSize(800, 300), QSize(200, 700), QSize(473, 417)}) {
    window.resize(size);
    EXPECT_TRUE(Await([&] { return box.geometry() == QRect(QPoint(), size); })) << box.width() << " x " << box.height();
  }
}

TEST_F(Instructions, ShowEachLineOfTheFileOfEitherEncodingWithoutControlCharacters) {
  const std::pair<std::string, const char*> files[] = {
      {"", ""},
      {"\n", "\r\n"},
      {"one\r\n\r\ntwo\nthree", "one\r\n\r\ntwo\r\nthree\r\n"},
      {"\ta\t\tb\t\n", "\ta\t\tb\t\r\n"},
      {"\xEF\xBB\xBFgr\xC3\xBC\xC3\x9F", "gr\xC3\xBC\xC3\x9F\r\n"},
      {"gr\xFC\xDF", "gr\xC3\xBC\xC3\x9F\r\n"},
      {std::string("a\0-\x1B", 4), "a\xEF\xBF\xBD-\xEF\xBF\xBD\r\n"},
  };
  for (const auto& [bytes, text] : files) EXPECT_EQ(TextOf(bytes), text);
}

TEST_F(Instructions, OpenSoonHoweverLongTheFileIs) {
  std::string file;
  while (file.size() < std::size_t{8} << 20) file += "Whatever is allowed you settle between yourselves.\r\n";
  QElapsedTimer clock;
  clock.start();
  EXPECT_TRUE(TextOf(file) == file);
  EXPECT_LT(clock.elapsed(), 10000);
}

}  // namespace
}  // namespace morva
