#pragma once

#include <QLabel>
#include <QMenu>
#include <QStyle>
#include <QTemporaryDir>
#include <QToolTip>

#include "extras/frm_about_chess.h"
#include "extras/frm_author.h"
#include "files/frm_instructions.h"
#include "net/frm_splash.h"
#include "painting/coordinates.h"
#include "platform/system/plain_files.h"
#include "platform/system/qt_text.h"
#include "tests/game.h"

namespace morva {

/// The desktop's colours: "light", "dark" or "contrast".
inline QPalette Scheme(const std::string& name) {
  if (name == "light") return QApplication::style()->standardPalette();
  const bool dark = name == "dark";
  QPalette palette(dark ? 0x353535 : 0, dark ? 0x313131 : 0);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(role, Qt::white);
    palette.setColor(QPalette::Disabled, role, dark ? Qt::gray : Qt::green);
  }
  palette.setColor(QPalette::Base, dark ? 0x232323 : 0);
  palette.setColor(QPalette::Highlight, dark ? 0x2A629A : 0xFFFF00);
  palette.setColor(QPalette::HighlightedText, dark ? Qt::white : Qt::black);
  return palette;
}

/// One evening, in which each window, box and menu of the program is looked at, always in the same state.
class Walk : public GameTest {
 protected:
  /// Told the situation's name and what is seen in it.
  using Look = std::function<void(const std::string& name, QWidget& seen)>;

  void SetUp() override { QApplication::setCursorFlashTime(0); }

  void Go(const Look& look) {
    look_ = look;
    ASSERT_NO_FATAL_FAILURE(StartUp());
    ASSERT_NO_FATAL_FAILURE(Sit());
    frmChess->onesec.Enabled = false;
    Table();
    Menus();
    Dialogs();
    server_.close();
    Box("box-left", QMessageBox::No, [this] {
      peer_->abort();
      Await([this] { return ended_ > 0; });
    });
  }

 private:
  static void Activate(Form& form) {
    form.Native()->activateWindow();  // after a box that is a window manager's task
    EXPECT_TRUE(HasKeys(form)) << form.Caption();
    QTest::qWait(1);  // new lines show a turn of the event loop later
  }

  void See(const std::string& name, Form& form) {
    Activate(form);
    look_(name, *form.Native());
  }

  /// Looks at the box that comes up meanwhile, and presses the button.
  void Box(const std::string& name, QMessageBox::StandardButton button, const std::function<void()>& meanwhile) {
    BoxUser user(button, [&] { look_(name, *morva::Box()); });
    meanwhile();
    EXPECT_TRUE(Await([&] { return !user.boxes.empty(); })) << name;  // a notice doesn't wait for its user
  }

  void StartUp() {
    frmSplash->Show();
    See("splash", *frmSplash);
    frmSplash->Form_Click();
    See("welcome-guest", *frmWelcome);
    Box("box-oops", QMessageBox::Ok, [] { frmWelcome->cmdGo.Click(); });
    frmWelcome->txtNick.Text = "Ann";
    frmWelcome->txtHost.Text = "chess.example.org";
    frmWelcome->rdoHost.Value = true;
    frmWelcome->txtNick.SetFocus();
    See("welcome-host", *frmWelcome);
    GameTest::Go("host");
    frmControl->lblStat.Caption = "Waiting for guest to connect to 192.168.100.200 . . .";  // each computer has another
    See("control", *frmControl);
    frmControl->tcp.Close();
    Unload(frmControl);
  }

  void Table() {
    FrmChess& table = *frmChess;
    FrmToolWindow& tools = *frmToolWindow;
    See("table-start", table);
    look_("tools-start", *tools.Native());
    for (const char* message :
         {"2J\xC3\xB6rg & <b>Bob</b>", "15236", "11228", "16245", "10118", "15844", "106511", "16052", "36", "12836",
          "427616777215", "0hello there", "0a&b <i>x</i>", "0g\xC3\xBC\xC3\x9F dich",
          "0a line that is so long that it goes on in the next one, for the log is no wider than the board above it "
          "is"}) {
      Tell(message);
    }
    table.DoMove(11, 57);
    tools.highlight("you");
    table.txtIn.Text = "half a line";
    table.clock.sec = 59;
    table.onesec.Tick();
    table.coordinates.cmdShowCoord.MouseDown(kLeftButton, 0, 0, 0);
    while (frmCoords.Loaded()) frmCoords->Timer1.Tick();
    for (int time = 0; time < 200; ++time) table.hover(36, kBlack);
    Press(48);
    QTest::mouseMove(MainWindow(), At(35));
    QLabel hand;
    hand.setPixmap(QGuiApplication::overrideCursor()->pixmap());
    hand.resize(hand.sizeHint());
    look_("hand", hand);
    See("table-played", table);
    look_("tools-played", *tools.Native());
    Release(48);
    tools.highlight("me");
    tools.Native()->resize(tools.Native()->size() + QSize(40, 40));  // it grows in width alone
    QTest::qWait(1);
    look_("tools-wide", *tools.Native());
    tools.Native()->resize(tools.Native()->width() - 40, tools.Native()->height());
    table.coordinates.cmdShowCoord.MouseDown(kLeftButton, 0, 0, 0);
    for (int tick = 0; tick < 10; ++tick) frmCoords->Timer1.Tick();
    table.SetUpCheckers();
    table.checkerking(2, 0);
    table.checkerking(58, 1);
    Unload(frmCoords);
    See("table-checkers", table);
    table.Cursor = 58;
    table.FocusBoard();
    look_("cursor", *table.squ(58).Native());
    for (const auto key : {Qt::Key_Space, Qt::Key_Up}) Key(key);
    look_("cursor-carrying", *table.squ(50).Native());
    Key(Qt::Key_Escape);
    table.FocusChat();
    table.mnuShowLast.Click();
    look_("marker", *frmShowMove->Native());
    Unload(frmShowMove);
    table.Enabled = true;
  }

  void Menus() {
    for (QMenu* menu : frmChess->Native()->findChildren<QMenu*>(Qt::FindDirectChildrenOnly)) {
      if (menu->title().isEmpty()) continue;  // the menu bar's own, where it is too narrow
      menu->popup(frmChess->Native()->pos());
      look_("menu-" + menu->title().remove('&').section(' ', 0, 0).toLower().toStdString(), *menu);
      menu->close();
    }
    FrmToolWindow& tools = *frmToolWindow;
    const QPoint place = tools.lblVS.Native()->mapTo(tools.Native(), QPoint(20, 8));
    QTimer::singleShot(20, [&] {
      QWidget* menu = QApplication::activePopupWidget();
      ASSERT_NE(menu, nullptr);
      const bool fits = qApp->devicePixelRatio() == 1;  // the screen is as large at either scale
      EXPECT_TRUE(!fits || (menu->pos() - tools.Native()->mapToGlobal(place)).manhattanLength() <= 2);
      look_("menu-tools", *menu);
      menu->close();
    });
    QTest::mouseClick(tools.Native()->windowHandle(), Qt::RightButton, {}, place);
    QToolTip::showText({}, TipText("a&b <i>x</i>,  two blanks"));
    for (QWidget* window : QApplication::topLevelWidgets()) {
      if (window->inherits("QTipLabel") && window->isVisible()) look_("tip", *window);
    }
    QToolTip::hideText();
  }

  void Dialogs() {
    Click(58, Qt::RightButton);
    See("change", *frmChange);
    frmChange->cmdCancel.Click();
    Box("box-message", QMessageBox::Ok, [] { Tell("0iwin"); });
    frmChess->mnuAbout.Click();
    See("about", *frmAboutChess);
    frmAboutChess->photo.Click();
    See("author", *frmAuthor);
    frmAuthor->photo.Click();
    for (int step = 0; step < 2; ++step) {
      QTest::keyClick(frmAboutChess->Native(), Qt::Key_Plus, Qt::ControlModifier);
    }
    See("about-large", *frmAboutChess);
    frmAboutChess->cmdOK.Click();
    See("table-large", *frmChess);
    QTest::keyClick(frmChess->Native(), Qt::Key_0, Qt::ControlModifier);
    const QString before = QDir::currentPath();
    const QTemporaryDir folder;
    QDir::setCurrent(folder.path());
    std::string text = "MORVA\n\nMove\t\tDrag a piece.\n";
    for (int line = 1; line < 60; ++line) text += "Line " + std::to_string(line) + " of a long file.\n";
    WriteFile("morva.txt", text);
    frmChess->mnuInstructions.Click();
    QDir::setCurrent(before);
    See("instructions", *frmInstructions);
    Unload(frmInstructions);
  }

  Look look_;
};

}  // namespace morva
