#pragma once

#include <functional>
#include <string>

namespace morva {

/// Shows a box with OK and the critical icon, the text as it stands, nothing in it taken for markup, and waits for the
/// user. Timers and sockets go on meanwhile.
void MsgBox(const std::string& text, const std::string& title);

/// Shows a box that comes by itself, with OK and no icon, and calls `closed` once it is closed; returns at once. It
/// lies over every other window, but waits for a menu or a file dialog to close.
void ShowNotice(const std::string& text, const std::string& title, const std::function<void()>& closed);
/// The same with Yes, the default, and No, and the exclamation icon; tells what was pressed, and nothing else answers.
/// Where it need not wait for a menu or a file dialog it returns after the answer.
void ShowQuestion(const std::string& text, const std::string& title, const std::function<void(bool yes)>& answered);

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

  /// Waits for the user. False: the user gave no name, and FileName is as it was. A name to save under is asked for
  /// again, after a word about it, where nothing can be written.
  bool ShowOpen();
  bool ShowSave();
};

}  // namespace morva
