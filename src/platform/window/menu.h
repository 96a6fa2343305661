#pragma once

#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

#include "platform/system/property.h"

class QAction;
class QMenu;
class QPoint;
class QWidget;

namespace morva {

/// An item of a window's menu, or a menu itself. It belongs to a window once Form::SetMenu has placed it.
class Menu {
 public:
  Menu();
  Property<std::string> Caption;  ///< "&" marks the access key; "-" is a separator
  Property<bool> Checked;
  Property<bool> Enabled;
  std::function<void()> Click;  ///< also fired by the shortcut, wherever the focus is

  /// A row of a menu table: depth 0 is a menu of the bar, deeper rows stand in the menu above them.
  struct Row {
    int depth;
    Menu& item;
    std::string caption;
    std::string shortcut = {};  ///< "Ctrl+F1"; empty for none
    bool checked_at_start = false;
    bool hidden = false;  ///< a menu that only opens as a popup
  };
  /// Makes the items of a table, which then belong to the window; returns those that stand in its bar.
  static std::vector<QAction*> Make(QWidget& window, std::initializer_list<Row> rows);
  /// Opens the menu at a place on the screen and waits until it closes; does nothing for an item.
  void OpenAt(const QPoint& screen);

 private:
  void Stand(QAction* action, const Row& row);
  QAction* action_ = nullptr;
  QMenu* menu_ = nullptr;
};

}  // namespace morva
