#include "extras/about.h"

#include <QLabel>

#include "extras/frm_about_chess.h"
#include "extras/frm_author.h"
#include "painting/shadewell.h"
#include "tests/game.h"

namespace morva {
namespace {

class About : public GameTest {
 protected:
  void SetUp() override {
    frmChess.made = ConnectHelpMenu;
    Sit();
  }

  void TearDown() override {
    Unload(frmAuthor);
    Unload(frmAboutChess);
    GameTest::TearDown();
  }

  static void OpenAbout() {
    frmChess->mnuAbout.Click();
    ASSERT_TRUE(QTest::qWaitForWindowActive(frmAboutChess->Native()));
  }

  static void ExpectOnlyAboutOpen() {
    EXPECT_FALSE(frmChess->Enabled() || frmToolWindow->Enabled() || frmToolWindow->frmext.ontop());
    EXPECT_TRUE(frmAboutChess->Enabled() && frmAboutChess->Native()->isVisible() && !frmAuthor.Loaded());
  }
};

TEST_F(About, KeepsTheUserUntilItIsClosedAndNamesOneVersionHoweverOftenItIsOpened) {
  const std::function<void()> ways[] = {
      [] { frmAboutChess->cmdOK.Click(); },
      [] { frmAboutChess->Native()->close(); },
      [] { QTest::keyClick(frmAboutChess->Native(), Qt::Key_Return); },
  };
  bool always = false;
  for (const auto& close : ways) {
    frmToolWindow->mnuAlways.Checked = always;
    frmToolWindow->frmext.ontop = true;
    OpenAbout();
    ExpectOnlyAboutOpen();
    for (const Label& label : frmAboutChess->title) EXPECT_EQ(label.Caption(), "Morva 1.0.185");
    EXPECT_EQ(frmAboutChess->Native()->windowTitle(), "About Morva 1.0.185");
    EXPECT_TRUE(frmAboutChess->legal.Caption().starts_with("Legal blabber:\n\nMorva 1.0.185 is "));
    close();
    EXPECT_FALSE(frmAboutChess.Loaded());
    EXPECT_TRUE(frmChess->Enabled() && frmToolWindow->Enabled());
    EXPECT_TRUE(QTest::qWaitForWindowActive(frmChess->Native()));
    EXPECT_EQ(frmToolWindow->frmext.ontop(), always);
    always = !always;
  }
}

TEST_F(About, ItsPortraitOpensTheAuthorRightOverItAndTheOneThereClosesIt) {
  OpenAbout();
  for (const QPoint corner : {QPoint(0, 0), QPoint(33, 77), QPoint(210, 140)}) {
    frmAboutChess->Left = corner.x() * kTwipsPerPixel;
    frmAboutChess->Top = corner.y() * kTwipsPerPixel;
    QTest::mouseClick(frmAboutChess->photo.Native(), Qt::LeftButton);
    ASSERT_TRUE(frmAuthor.Loaded() && QTest::qWaitForWindowActive(frmAuthor->Native()));
    QWidget& under = *frmAboutChess->photo.Native();
    QWidget& over = *frmAuthor->photo.Native();
    EXPECT_EQ(over.mapToGlobal(QPoint()), under.mapToGlobal(QPoint()));
    EXPECT_EQ(over.size(), QSize(99, 121));
    EXPECT_EQ(over.grab().toImage(), under.grab().toImage());

    EXPECT_FALSE(frmChess->Enabled() || frmToolWindow->Enabled() || frmAboutChess->Enabled());
    frmAuthor->Native()->close();
    frmAboutChess->Native()->close();
    ASSERT_TRUE(frmAuthor.Loaded() && frmAboutChess.Loaded()) << "only the portrait closes";
    QTest::mouseClick(&over, Qt::LeftButton);
    ExpectOnlyAboutOpen();
    EXPECT_TRUE(QTest::qWaitForWindowActive(frmAboutChess->Native()));
  }
}

TEST_F(About, TextsFitAndPanelsFollowTheDesktopAtEachActivation) {
  OpenAbout();
  frmAboutChess->photo.Click();
  for (const Label* label : {&frmAboutChess->legal, &frmAboutChess->Label1, &frmAuthor->lblPhoto,
                             &frmAuthor->lblTheAuthor, &frmAuthor->lblAuthorOf, &frmAuthor->lblInfo}) {
    const auto& shown = *qobject_cast<QLabel*>(label->Native());
    EXPECT_FALSE(label->Caption().empty());
    EXPECT_LE(shown.heightForWidth(shown.width()), shown.height()) << label->Caption();
  }

  const QPalette before = QApplication::palette();
  QPalette desktop = before;
  desktop.setColor(QPalette::Button, QColor(200, 100, 50));
  desktop.setColor(QPalette::Light, QColor(1, 2, 3));
  QApplication::setPalette(desktop);
  frmAboutChess->Form_Activate();
  frmAuthor->Form_Activate();
  EXPECT_EQ(SystemColorOf(kButtonHighlight), 0x030201U);
  const Color face = SystemColorOf(kButtonFace), shadow = SystemColorOf(kButtonShadow);
  EXPECT_EQ(face, 0x3264C8U);
  EXPECT_LT(shadow, face / 2);
  QApplication::setPalette(before);
  for (const Panel* panel : {&frmAboutChess->picLeft, &frmAuthor->picGrad, &frmAuthor->picSmalGrad}) {
    const auto lines = static_cast<std::ptrdiff_t>(panel->Width() / 15) + 1;
    ASSERT_GE(std::ssize(panel->Strokes()), lines);
    EXPECT_EQ(panel->Strokes().end()[-lines].color, shadow);
    EXPECT_EQ(panel->Strokes().back().color, face);
    EXPECT_EQ(panel->Strokes().back().x1, static_cast<float>(panel->Width()));
  }
  EXPECT_EQ(frmAboutChess->picTop.Strokes().back().color, *MixColors(face, kWhite, 50));
}

}  // namespace
}  // namespace morva
