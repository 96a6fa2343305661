#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QMessageBox>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>
#include <QTimer>
#include <QWindow>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "net/frm_control.h"
#include "net/frm_welcome.h"
#include "net/wire.h"
#include "platform/application.h"
#include "platform/controls/list_box.h"
#include "platform/controls/pictures.h"
#include "table/frm_change.h"
#include "table/frm_chess.h"
#include "table/frm_show_move.h"
#include "table/frm_tool_window.h"

namespace morva {

/// Thrown where the program would end.
struct Ended {};

/// Lets events run until the condition holds, for at most this long; whether it held.
inline bool Await(const std::function<bool()>& condition, int ms = 5000) {
  QElapsedTimer clock;
  clock.start();
  while (!condition()) {
    if (clock.elapsed() > ms) return false;
    QTest::qWait(5);
  }
  return true;
}

/// The box that has the focus; none where none has.
inline QMessageBox* Box() { return qobject_cast<QMessageBox*>(QApplication::activeWindow()); }

using Lines = std::vector<std::string>;

inline const std::string kStart = "fhgjighfeeeeeeee" + std::string(32, '.') + "ooooooooprqtsqrp";

/// What the user does with the boxes that come up: notes each as "title|text|icon", and presses the button.
class BoxUser {
 public:
  explicit BoxUser(QMessageBox::StandardButton answer = QMessageBox::Ok, std::function<void()> meanwhile = {}) {
    clock_.callOnTimeout([this, answer, meanwhile] {
      QMessageBox* box = Box();
      if (box == nullptr) return;
      boxes.push_back((box->windowTitle() + "|" + box->text() + "|" + QString::number(box->icon())).toStdString());
      EXPECT_EQ(box->textFormat(), Qt::PlainText);
      clock_.stop();
      if (meanwhile) meanwhile();
      clock_.start();
      box->button(answer)->click();
    });
    clock_.start(5);
  }
  Lines boxes;

 private:
  QTimer clock_;
};

/// The whole program, in which "Ann" plays, at one end of the line; the test's own socket at the other.
class GameTest : public testing::Test {
 protected:
  void TearDown() override {
    if (frmControl.Loaded()) frmControl->tcp.Closed = [] {};
    if (peer_) peer_->abort();
    server_.close();
    QTest::qWait(1);
    UnloadAllWindows();
    QTest::qWait(1);
  }

  /// As far as a guest, or a host, gets alone.
  void Go(const char* mode, const char* host = "127.0.0.1") {
    frmWelcome->txtHost.Text = host;
    frmWelcome->txtNick.Text = "Ann";
    if (std::string(mode) == "host") frmWelcome->rdoHost.Value = true;
    frmControl->Show();
    frmControl->tcp.Closed = [this, closed = frmControl->tcp.Closed] {
      try {
        closed();
      } catch (const Ended&) {  // which must not pass through Qt
        ++ended_;
      }
    };
  }

  /// Ann comes in as guest; the peer has not said a word.
  void Join() {
    ASSERT_TRUE(server_.listen(QHostAddress::LocalHost, kPort)) << "port 2948 is taken";
    Go("guest");
    ASSERT_TRUE(Await([this] { return server_.hasPendingConnections(); }));
    peer_.reset(server_.nextPendingConnection());
    peer_->setParent(nullptr);
    ASSERT_TRUE(Await([] { return frmChess.Loaded(); }));
    frmChess->mnuPlaySounds.Checked = false;
  }

  /// Ann plays as guest with Bob.
  void Sit() {
    ASSERT_NO_FATAL_FAILURE(Join());
    Tell("2Bob");
    ASSERT_TRUE(HasKeys(*frmChess));
    EXPECT_EQ(Sent(), "2Ann");
  }

  /// What has been sent since the last call.
  std::string Sent() {
    frmControl->tcp.SendData("#");
    std::string sent;
    EXPECT_TRUE(Await([&] { return (sent += peer_->readAll().toStdString()).ends_with("#"); })) << sent;
    return sent.substr(0, sent.size() - 1);
  }

  /// One write of the peer.
  void Send(const std::string& bytes) {
    peer_->write(bytes.data(), static_cast<qint64>(bytes.size()));
    peer_->flush();
  }

  /// Hands a message to the game, past the wire.
  static void Tell(const std::string& message) { frmControl->tcp.Message(message); }

  /// The squares with something on them as letters, the others as dots; "?" where the picture tells something else.
  static std::string Board() {
    std::string line = frmChess->BoardLine();
    for (PictureBox& square : frmChess->squ) {
      char& letter = line[static_cast<std::size_t>(square.Index)];
      if (square.Tag == "0") letter = '.';
      if (square.Strokes().empty() != (square.Tag == "0")) letter = '?';
    }
    return line;
  }

  /// The history, each line with its number.
  static Lines History() {
    ListBox& list = frmToolWindow->lstHist;
    Lines lines;
    for (int i = 0; i < list.ListCount(); ++i) {
      lines.push_back(list.List(i) + " #" + std::to_string(list.ItemData(i)));
    }
    return lines;
  }

  /// "me" or "you"; "neither" where the labels don't agree.
  static std::string Turn() {
    FrmToolWindow& tools = *frmToolWindow;
    const bool me = tools.lblNick.FontBold();
    const bool agreed = tools.lblOpNick.FontBold() != me && tools.lbl3D(0).Visible() == me &&
                        tools.lbl3D(1).Visible() == me && tools.lblNick.ForeColor() == (me ? kRed : kButtonShadow);
    return agreed ? me ? "me" : "you" : "neither";
  }

  static bool HasKeys(const Form& form) { return QTest::qWaitForWindowActive(form.Native()); }

  static QWindow* MainWindow() { return frmChess->Native()->windowHandle(); }

  /// The middle of a square, in pixels of the main window.
  static QPoint At(int square) {
    const QWidget* widget = frmChess->squ(square).Native();
    return widget->mapTo(frmChess->Native(), widget->rect().center());
  }

  // The user's hands, in the main window.
  static void Key(Qt::Key key, Qt::KeyboardModifiers with = {}) { QTest::keyClick(MainWindow(), key, with); }
  static void Press(int square, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mousePress(MainWindow(), button, {}, At(square));
  }
  static void Release(int square, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mouseRelease(MainWindow(), button, {}, At(square));
  }
  static void Click(int square, Qt::MouseButton button) {
    Press(square, button);
    Release(square, button);
  }
  static void Drag(int from, int too) {
    Press(from);
    QTest::mouseMove(MainWindow(), At(too));
    Release(too);
  }

  /// The empty squares that are marked, "44 ".
  static std::string Marks() {
    std::string squares;
    for (const PictureBox& square : frmChess->squ) {
      if (square.Tag == "0" && !square.Strokes().empty()) squares += std::to_string(square.Index) + " ";
    }
    return squares;
  }

  static std::string Selected(const TextBox& line) {
    return static_cast<const QLineEdit*>(line.Native())->selectedText().toStdString();
  }

  static bool ChatHasFocus() { return frmChess->Native()->focusWidget() == frmChess->txtIn.Native(); }

  QTcpServer server_;
  std::unique_ptr<QTcpSocket> peer_;
  int ended_ = 0;  ///< how often the program would have ended
};

}  // namespace morva
