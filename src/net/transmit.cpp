#include "net/frm_control.h"
#include "net/text.h"
#include "net/wire.h"

namespace morva {

void Transmit(const std::string& text, int dtype) { frmControl->tcp.SendData(std::to_string(dtype) + BytesOf(text)); }

}  // namespace morva
