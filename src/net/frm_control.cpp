#include "net/frm_control.h"

#include "net/frm_welcome.h"
#include "net/game_window.h"
#include "net/text.h"
#include "net/wire.h"
#include "platform/application.h"
#include "platform/dialogs/dialogs.h"

namespace morva {

FrmControl::FrmControl() : Form({.scale_width = 4590, .scale_height = 960}) {
  Place({
      {cmdCancel, 3390, 510, 1080, 345, "Cancel"},
      {PicIcon, 120, 120, 480, 480},
      {lblStat, 750, 135, 3795, 690},
  });
  CancelButton(cmdCancel);

  tcp.ConnectionRequest = [this](int requestID) { tcp_ConnectionRequest(requestID); };
  tcp.Connected = [this] { tcp_Connect(); };
  tcp.DataArrival = [this] { tcp_DataArrival(); };
  tcp.Message = [](const std::string& message) { game_window().Dispatch(message); };
  tcp.Closed = [this] { tcp_Close(); };
  cmdCancel.Click = [this] { cmdCancel_Click(); };
}

void FrmControl::Form_Load() {
  PicIcon.Picture = "icon-32";
  Host = frmWelcome->txtHost.Text();
  Nick = Printable(SingleLine(frmWelcome->txtNick.Text()));
  Mode = frmWelcome->rdoGuest.Value() ? "client" : "server";
  Unload(frmWelcome);
  if (Mode == "client") {
    GoClient();
  } else {
    GoServer();
  }
}

void FrmControl::GoServer() {
  Caption = "Hosting game";
  lblStat.Caption = "Waiting for guest to connect to " + tcp.LocalIP() + " . . .";
  tcp.LocalPort = kPort;
  if (tcp.Listen()) return;
  MsgBox("Morva can't wait for a guest: port " + std::to_string(kPort) +
             " is taken by another program on this computer, perhaps by a second Morva. Close it and start again.",
         "Morva");
  End();
}

void FrmControl::GoClient() {
  Caption = "Connecting";
  lblStat.Caption = "Connecting to host computer . . .";
  tcp.RemotePort = kPort;
  tcp.RemoteHost = Host;
  tcp.Connect();
}

void FrmControl::tcp_ConnectionRequest(int requestID) {
  tcp.Close();
  tcp.Accept(requestID);
}

void FrmControl::tcp_Connect() {
  game_window().Show();
  Transmit(Nick, kNick);
  Withdraw();
  game_window().Nick = Nick;
}

void FrmControl::tcp_DataArrival() {
  if (!Enabled()) return;
  game_window().Show();
  Transmit(Nick, kNick);
  game_window().Nick = Nick;
  Withdraw();
}

void FrmControl::tcp_Close() { game_window().Disconnect(); }

void FrmControl::cmdCancel_Click() { End(); }

// Moves the window off the screen but keeps it loaded, because it owns the connection. Enabled also records whether the
// first exchange is done.
void FrmControl::Withdraw() {
  Enabled = false;
  Top = -10000;
}

}  // namespace morva
