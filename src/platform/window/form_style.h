#pragma once

#include <string>

namespace morva {

/// How a window looks and behaves at its edges.
struct FormStyle {
  enum class Frame { kNone, kFixed, kSizable, kSizableWidth };
  std::string caption = {};
  Frame frame = Frame::kFixed;
  double scale_width = 0, scale_height = 0;  ///< client area, twips
  bool close_box = true;                     ///< without it the window manager's ways of closing do nothing
  bool minimise_box = false;
  bool maximise_box = false;
  bool on_task_bar = false;
  bool escape_closes = false;  ///< Escape closes it, as the close box does
  bool title_bar = true;
  enum class Start { kCentred, kByCode } start = Start::kCentred;
  bool round = false;         ///< an ellipse that fills the client area; the window manager takes no part in it
  bool within_owner = false;  ///< lies within the window that it belongs to, moves with it, and finds its place itself
  double left = 0, top = 0;   ///< with Start::kByCode: twips on the screen
};

}  // namespace morva
