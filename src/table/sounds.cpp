#include "platform/system/sound.h"
#include "table/frm_chess.h"

namespace morva {

void FrmChess::PlayResourceSound(int id) {
  if (!mnuPlaySounds.Checked()) return;
  PlaySoundImage(LoadResData(id, "CUSTOM"));
}

}  // namespace morva
