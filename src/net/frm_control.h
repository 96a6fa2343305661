#pragma once

#include <string>

#include "net/connection.h"
#include "platform/controls/buttons.h"
#include "platform/controls/label.h"
#include "platform/controls/pictures.h"
#include "platform/window/window.h"

namespace morva {

/// The small status window that owns the connection: it listens or connects, shows the main window when the other side
/// is there, and stays loaded, off the screen, for as long as the game lasts.
class FrmControl : public Form {
 public:
  FrmControl();

  std::string Nick;  ///< the user's nick
  std::string Host;  ///< the address that the user typed
  std::string Mode;  ///< "client" or "server"

  Connection tcp;
  CommandButton cmdCancel;
  Image PicIcon;
  Label lblStat;

  void Form_Load() override;
  void GoServer();
  void GoClient();

 private:
  void tcp_ConnectionRequest(int requestID);
  void tcp_Connect();
  void tcp_DataArrival();
  void tcp_Close();
  void cmdCancel_Click();
  void Withdraw();
};

inline Window<FrmControl> frmControl;

}  // namespace morva
