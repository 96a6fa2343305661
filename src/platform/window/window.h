#pragma once

#include <functional>
#include <memory>

#include "platform/window/form.h"

namespace morva {

/// To be called for each window that is made: with the first one that can show it, the program gets its icon.
void WindowLoaded(Form& form);
/// Takes over a window that has been unloaded and lets it go once its running handlers are through. The program ends
/// with the last one.
void WindowUnloaded(std::unique_ptr<Form> form);
bool AnyWindowLoaded();
/// Unloads every window, the one that was loaded last first.
void UnloadAllWindows();

/// The one object of a window class. It is made, and its Form_Load run, when it is first referred to; Unload ends it,
/// and the next reference makes it anew.
template <class T>
class Window {
 public:
  T* operator->() { return &**this; }
  T& operator*() {
    if (!form_) Load();
    return *form_;
  }
  bool Loaded() const { return form_ != nullptr; }

  /// Ends the window: Form_Unload runs, then the window is gone. Nothing happens where it is not loaded.
  void Unload() {
    if (!form_ || unloading_) return;
    unloading_ = true;
    form_->Form_Unload();
    unloading_ = false;
    WindowUnloaded(std::move(form_));
  }

  std::function<void(T&)>
      made;  ///< called for each new object before its Form_Load: what other parts of the program add to it

 private:
  void Load() {
    form_ = std::make_unique<T>();
    form_->unload = [this] { Unload(); };
    WindowLoaded(*form_);
    if (made) made(*form_);
    form_->Form_Load();
  }
  std::unique_ptr<T> form_;
  bool unloading_ = false;
};

/// Makes the window ready without showing it.
template <class T>
void Load(Window<T>& window) {
  static_cast<void>(*window);
}

template <class T>
void Unload(Window<T>& window) {
  window.Unload();
}

}  // namespace morva
