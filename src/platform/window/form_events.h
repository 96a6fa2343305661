#pragma once

#include <functional>

#include "platform/controls/control.h"

namespace morva {

/// What happens to a window; the windows of the program override the events that they use.
class FormEvents {
 public:
  FormEvents() = default;
  FormEvents(const FormEvents&) = delete;
  FormEvents& operator=(const FormEvents&) = delete;
  virtual ~FormEvents() = default;

  virtual void Form_Load() {}
  virtual void Form_Activate() {}
  virtual void Form_GotFocus() {}
  virtual void Form_Resize() {}
  virtual void Form_SysColorsChanged() {}  ///< the desktop has other colours now
  virtual void Form_Unload() {}
  virtual void Form_Click() {}
  virtual void Form_MouseDown(int /*Button*/, int /*Shift*/, float /*X*/, float /*Y*/) {}
  /// A key that the control with the focus has not used.
  virtual bool Form_KeyDown(Key /*key*/, int /*Shift*/) { return false; }
  virtual void Form_DragOver(Control& /*Source*/, float /*X*/, float /*Y*/, DragState /*State*/) {}

  std::function<void()> unload;  ///< set by Window<T>: ends this window
};

}  // namespace morva
