#pragma once

#include <functional>
#include <string>

namespace morva {

enum class MsgBoxButtons { kOk, kYesNo };
enum class MsgBoxIcon { kNone, kCritical, kExclamation };
enum class MsgBoxResult { kOk, kYes, kNo };

/// What a box answers: something that the user has just done, or nothing of the kind. The latter takes neither keys nor
/// clicks in its first 700 ms.
enum class MsgBoxCause { kUser, kByItself };

/// Shows a box with the text as it stands, nothing in it taken for markup, and waits for the user. Timers and sockets
/// go on meanwhile. Closing a Yes/No box counts as No.
MsgBoxResult MsgBox(const std::string& text, const std::string& title, MsgBoxButtons buttons = MsgBoxButtons::kOk,
                    MsgBoxIcon icon = MsgBoxIcon::kNone, MsgBoxCause cause = MsgBoxCause::kUser);

/// Shows a box that comes by itself, with OK and no icon, does not wait for the user, and calls `closed` once it is
/// closed. While the user is busy with a menu, a file dialog or another box, or `busy` says so, the box waits for that.
void ShowNotice(const std::string& text, const std::string& title, const std::function<bool()>& busy,
                const std::function<void()>& closed);

inline constexpr int kOverwritePrompt = 0x2;
inline constexpr int kHideReadOnly = 0x4;
inline constexpr int kLongNames = 0x200000;

/// Asks for a file name.
class CommonDialog {
 public:
  std::string DialogTitle;
  std::string Filter;    ///< "Text (*.txt)|*.txt"
  int Flags = 0;         ///< the k… flags above, added
  std::string InitDir;   ///< where the dialog starts; another folder of the user's where this can't be written to
  std::string FileName;  ///< the choice, as typed, with its folder; a name without a folder is offered at the start

  /// Waits for the user. False: the user gave no name, and FileName is as it was.
  bool ShowOpen();
  bool ShowSave();
};

}  // namespace morva
