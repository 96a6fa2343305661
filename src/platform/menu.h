#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/property.h"

class QMenu;
class QAction;
class QWidget;

namespace morva {

/// An item of a window's menu, or a menu itself. It belongs to a window once Form::SetMenu has placed it.
class Menu {
 public:
  Menu() = default;
  ~Menu();
  Property<std::string> Caption;  ///< "&" marks the access key; "-" is a separator
  Property<bool> Checked;
  std::function<void()> Click;  ///< also fired by the shortcut, wherever the focus is

  /// A row of a menu table: depth 0 is a menu of the bar, deeper rows stand in the menu above them.
  struct Row;

 private:
  friend class Form;
  void Become(QAction* action, const Row& row);
  QAction* action_ = nullptr;
  QMenu* menu_ = nullptr;
};

struct Menu::Row {
  int depth;
  Menu& item;
  std::string caption;
  std::string shortcut = {};  ///< "Ctrl+F1"; empty for none
  bool checked_at_start = false;
  bool hidden = false;  ///< a menu that only opens as a popup
};

}  // namespace morva
