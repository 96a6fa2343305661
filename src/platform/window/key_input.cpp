#include "platform/window/key_input.h"

#include <QKeyEvent>
#include <algorithm>
#include <iterator>
#include <utility>

#include "platform/controls/control.h"
#include "platform/controls/native.h"
#include "platform/window/native_window.h"

namespace morva {

namespace {

constexpr std::pair<Qt::Key, Key> kKeys[] = {
    {Qt::Key_Left, Key::kLeft},     {Qt::Key_Up, Key::kUp},
    {Qt::Key_Right, Key::kRight},   {Qt::Key_Down, Key::kDown},
    {Qt::Key_Home, Key::kHome},     {Qt::Key_End, Key::kEnd},
    {Qt::Key_PageUp, Key::kPageUp}, {Qt::Key_PageDown, Key::kPageDown},
    {Qt::Key_Space, Key::kSpace},   {Qt::Key_Return, Key::kEnter},
    {Qt::Key_Enter, Key::kEnter},   {Qt::Key_Escape, Key::kEscape},
    {Qt::Key_Menu, Key::kMenu},     {Qt::Key_F6, Key::kF6},
    {Qt::Key_T, Key::kT},
};

Key KeyOf(const QKeyEvent& event) {
  const auto* known =
      std::find_if(std::begin(kKeys), std::end(kKeys), [&](const auto& key) { return key.first == event.key(); });
  return known == std::end(kKeys) ? Key::kOther : known->second;
}

// It is held for another key, or for the wheel, and says nothing by itself.
bool IsModifier(int key) {
  return (key >= Qt::Key_Shift && key <= Qt::Key_ScrollLock) || key == Qt::Key_Super_L || key == Qt::Key_Super_R ||
         key == Qt::Key_AltGr;
}

}  // namespace

bool TakeKey(const QWidget& receiver, NativeWindow& window, const QKeyEvent& event) {
  // What the control with the focus leaves alone comes by once more for each widget that it stands on.
  const QWidget* focus = window.focusWidget();
  if (&receiver != (focus != nullptr ? focus : &window) || IsModifier(event.key())) return false;
  const bool menu = event.key() == Qt::Key_F10 && event.modifiers() == Qt::ShiftModifier;
  const Key key = menu ? Key::kMenu : KeyOf(event);
  const int shift = menu ? 0 : ShiftOf(event.modifiers());
  const Control* control = ControlOf(&receiver);
  return (control != nullptr && control->KeyDown && control->KeyDown(key, shift)) ||
         window.Events().Form_KeyDown(key, shift);
}

}  // namespace morva
