#include "extras/about.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QPushButton>

#include "extras/frm_about_chess.h"
#include "extras/frm_author.h"
#include "net/frm_control.h"
#include "net/frm_welcome.h"
#include "painting/shadewell.h"
#include "table/frm_tool_window.h"
#include "tests/support.h"

namespace morva {
namespace {

class About : public testing::Test {
 protected:
  void SetUp() override {
    frmChess.made = ConnectHelpMenu;
    frmWelcome->txtHost.Text = "127.0.0.1";
    Load(frmControl);
    frmChess->Show();
  }

  void TearDown() override {
    Unload(frmAuthor);
    Unload(frmAboutChess);
    Unload(frmChess);
    QTest::qWait(0);
  }

  static void OpenAbout() {
    frmChess->mnuAbout.Click();
    ASSERT_TRUE(QTest::qWaitForWindowActive(frmAboutChess->Native()));
  }

  static void OpenAuthor() {
    QTest::mouseClick(frmAboutChess->photo.Native(), Qt::LeftButton);
    ASSERT_TRUE(frmAuthor.Loaded());
    ASSERT_TRUE(QTest::qWaitForWindowActive(frmAuthor->Native()));
  }

  static void ExpectOnlyAboutOpen() {
    EXPECT_FALSE(frmChess->Enabled() || frmToolWindow->Enabled() || frmToolWindow->frmext.ontop());
    EXPECT_TRUE(frmAboutChess.Loaded() && frmAboutChess->Enabled() && frmAboutChess->Native()->isVisible());
    EXPECT_FALSE(frmAuthor.Loaded());
  }

  static void ExpectAllClosed() {
    EXPECT_FALSE(frmAboutChess.Loaded() || frmAuthor.Loaded());
    EXPECT_TRUE(frmChess->Enabled() && frmToolWindow->Enabled());
    EXPECT_TRUE(QTest::qWaitForWindowActive(frmChess->Native()));
  }
};

TEST_F(About, NamesOneVersionHoweverOftenItIsOpened) {
  for (int time = 1; time <= 2; ++time) {
    OpenAbout();
    for (const Label& label : frmAboutChess->title) EXPECT_EQ(label.Caption(), "Morva 1.0.185");
    EXPECT_EQ(frmAboutChess->Native()->windowTitle(), "About Morva 1.0.185");
    EXPECT_TRUE(frmAboutChess->legal.Caption().starts_with("Legal blabber:\n\nMorva 1.0.185 is "));
    frmAboutChess->cmdOK.Click();
  }
}

TEST_F(About, KeepsTheUserUntilItIsClosed) {
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
    close();
    ExpectAllClosed();
    EXPECT_EQ(frmToolWindow->frmext.ontop(), always);
    always = !always;
  }
}

TEST_F(About, ItsPortraitOpensTheAuthorAndTheOneThereClosesIt) {
  OpenAbout();
  for (int time = 1; time <= 2; ++time) {
    OpenAuthor();
    EXPECT_FALSE(frmChess->Enabled() || frmToolWindow->Enabled() || frmAboutChess->Enabled());
    frmAuthor->Native()->close();
    frmAboutChess->Native()->close();
    EXPECT_TRUE(frmAuthor.Loaded() && frmAboutChess.Loaded()) << "only the portrait closes";

    QTest::mouseClick(frmAuthor->photo.Native(), Qt::LeftButton);
    ExpectOnlyAboutOpen();
    EXPECT_TRUE(QTest::qWaitForWindowActive(frmAboutChess->Native()));
  }
  frmAboutChess->cmdOK.Click();
  ExpectAllClosed();
}

TEST_F(About, BothPortraitsAreOnOneSpotWhereverTheWindowIs) {
  OpenAbout();
  for (const QPoint corner : {QPoint(0, 0), QPoint(33, 77), QPoint(210, 140)}) {
    frmAboutChess->Left = corner.x() * 15;
    frmAboutChess->Top = corner.y() * 15;
    OpenAuthor();
    QWidget& under = *frmAboutChess->photo.Native();
    QWidget& over = *frmAuthor->photo.Native();
    EXPECT_EQ(over.mapToGlobal(QPoint()), under.mapToGlobal(QPoint()));
    EXPECT_EQ(over.size(), QSize(99, 121));
    EXPECT_EQ(under.size(), over.size());
    EXPECT_EQ(over.grab().toImage(), under.grab().toImage());
    frmAuthor->photo.Click();
  }
}

TEST_F(About, PanelsFollowTheDesktopAtEachActivation) {
  OpenAbout();
  OpenAuthor();
  const QPalette before = QApplication::palette();
  QPalette desktop = before;
  desktop.setColor(QPalette::Button, QColor(200, 100, 50));
  QApplication::setPalette(desktop);
  frmAboutChess->Form_Activate();
  frmAuthor->Form_Activate();
  const Color face = GetSysColor(15);
  const Color shadow = GetSysColor(16);
  QApplication::setPalette(before);

  for (const Panel* panel : {&frmAboutChess->picLeft, &frmAuthor->picGrad, &frmAuthor->picSmalGrad}) {
    const auto lines = static_cast<std::ptrdiff_t>(panel->Width() / 15) + 1;
    const auto& strokes = panel->Strokes();
    ASSERT_GE(strokes.size(), static_cast<std::size_t>(lines));
    EXPECT_EQ(strokes.end()[-lines].color, shadow);
    EXPECT_EQ(strokes.back().color, face);
    EXPECT_EQ(strokes.back().x1, static_cast<float>(panel->Width()));
  }
  EXPECT_EQ(frmAboutChess->picTop.Strokes().back().color, *MixColors(face, kWhite, 50));
}

/// Whether the text of the label fits into it at the width that it has.
bool Fits(const Label& label) {
  const auto& shown = *qobject_cast<QLabel*>(label.Native());
  return shown.heightForWidth(shown.width()) <= shown.height();
}

TEST_F(About, TextsFitTheirLabels) {
  OpenAbout();
  OpenAuthor();
  for (const Label* label : {&frmAboutChess->legal, &frmAboutChess->Label1, &frmAuthor->lblPhoto,
                             &frmAuthor->lblTheAuthor, &frmAuthor->lblAuthorOf, &frmAuthor->lblInfo}) {
    EXPECT_FALSE(label->Caption().empty());
    EXPECT_TRUE(Fits(*label)) << label->Caption();
  }
}

}  // namespace
}  // namespace morva
