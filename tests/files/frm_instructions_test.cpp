#include "files/frm_instructions.h"

#include <QPlainTextEdit>

#include "tests/files/table_fixture.h"

namespace morva {
namespace {

/// The program's current folder is the empty one.
class Instructions : public TableTest {
 protected:
  void SetUp() override {
    TableTest::SetUp();
    before_ = QDir::currentPath();
    QDir::setCurrent(QString::fromStdString(Path(".")));
  }

  void TearDown() override {
    QDir::setCurrent(before_);
    TableTest::TearDown();
  }

  /// What the window shows of a file with these bytes.
  std::string TextOf(const std::string& bytes) {
    Put("morva.txt", bytes);
    frmChess->mnuInstructions.Click();
    const std::string text = frmInstructions->textbox.Text();
    Unload(frmInstructions);
    return text;
  }

 private:
  QString before_;
};

TEST_F(Instructions, NeedTheFile) {
  frmChess->mnuInstructions.Click();
  EXPECT_FALSE(frmInstructions.Loaded());
  EXPECT_TRUE(frmChess->Enabled() && frmToolWindow->Enabled());
  EXPECT_TRUE(frmToolWindow->frmext.ontop());
}

TEST_F(Instructions, KeepTheUserUntilTheirWindowIsClosed) {
  Put("morva.txt", "How to play");
  for (const bool always : {true, false}) {
    frmToolWindow->mnuAlways.Checked = always;
    frmToolWindow->frmext.ontop = true;
    frmChess->mnuInstructions.Click();
    EXPECT_EQ(frmInstructions->Native()->windowTitle(), "Instructions");
    EXPECT_TRUE(frmInstructions->Native()->isVisible());
    EXPECT_FALSE(frmChess->Enabled() || frmToolWindow->Enabled() || frmToolWindow->frmext.ontop());

    frmInstructions->Native()->close();
    EXPECT_FALSE(frmInstructions.Loaded());
    EXPECT_TRUE(frmChess->Enabled() && frmToolWindow->Enabled());
    EXPECT_EQ(frmToolWindow->frmext.ontop(), always);
  }
}

TEST_F(Instructions, FillTheirWindow) {
  Put("morva.txt", "How to play");
  frmChess->mnuInstructions.Click();
  QWidget& window = *frmInstructions->Native();
  const QWidget& box = *frmInstructions->textbox.Native();
  EXPECT_EQ(window.size(), QSize(473, 417));
  for (const QSize size : {QSize(800, 300), QSize(200, 700), QSize(473, 417)}) {
    window.resize(size);
    EXPECT_TRUE(Await([&] { return box.size() == size; })) << box.width() << " x " << box.height();
    EXPECT_EQ(box.mapTo(&window, QPoint()), QPoint());
  }
}

TEST_F(Instructions, ShowEachLineOfTheFile) {
  EXPECT_EQ(TextOf(""), "");
  EXPECT_EQ(TextOf("\n"), "\r\n");
  EXPECT_EQ(TextOf("one\r\n\r\ntwo\nthree"), "one\r\n\r\ntwo\r\nthree\r\n");
  EXPECT_EQ(TextOf("\ta\t\tb\t\n"), "\ta\t\tb\t\r\n");
}

TEST_F(Instructions, ShowTextOfEitherEncodingAndNoControlCharacters) {
  EXPECT_EQ(TextOf("\xEF\xBB\xBFgr\xC3\xBC\xC3\x9F"), "gr\xC3\xBC\xC3\x9F\r\n");
  EXPECT_EQ(TextOf("gr\xFC\xDF"), "gr\xC3\xBC\xC3\x9F\r\n");
  EXPECT_EQ(TextOf(std::string("a\0b\x1B", 4)),
            "a\xEF\xBF\xBD"
            "b\xEF\xBF\xBD\r\n");
}

TEST_F(Instructions, ShowMarkupAsItIsAndCanNotBeWrittenTo) {
  Put("morva.txt", "<b>bold</b> &amp;\n");
  frmChess->mnuInstructions.Click();
  auto& box = *qobject_cast<QPlainTextEdit*>(frmInstructions->textbox.Native());
  EXPECT_EQ(box.toPlainText(), "<b>bold</b> &amp;\n");
  QTest::keyClicks(&box, "typed");
  EXPECT_EQ(box.toPlainText(), "<b>bold</b> &amp;\n");
}

TEST_F(Instructions, OpenSoonHoweverLongTheFileIs) {
  std::string file;
  while (file.size() < std::size_t{8} << 20)
    file += "Whatever is allowed you settle between yourselves, as at any table.\r\n";
  QElapsedTimer clock;
  clock.start();
  const std::string text = TextOf(file);
  EXPECT_LT(clock.elapsed(), 10000);
  EXPECT_EQ(text.size(), file.size());
}

}  // namespace
}  // namespace morva
