#include "platform/window/menu.h"

#include <QAction>
#include <QMenu>

#include "platform/drawing/fonts.h"
#include "platform/system/qt_text.h"

namespace morva {

Menu::Menu()
    : Caption({},
              [this] {
                const bool separator = Caption() == "-";
                action_->setSeparator(separator);
                action_->setText(separator ? QString() : QtText(Caption()));
              }),
      Checked(false,
              [this] {
                action_->setCheckable(true);
                action_->setChecked(Checked());
              }),
      Enabled(true, [this] { action_->setEnabled(Enabled()); }) {}

void Menu::Stand(QAction* action, const Row& row) {
  action_ = action;
  Caption = row.caption;
  if (row.checked_at_start) Checked = true;
  if (!row.shortcut.empty()) {
    action_->setShortcut(QKeySequence(QtText(row.shortcut)));
    action_->setAutoRepeat(false);
  }
  QObject::connect(action_, &QAction::triggered, [this] {
    // The program decides what a click does: Qt's own toggling is undone.
    if (action_->isCheckable()) action_->setChecked(Checked());
    if (Click) Click();
  });
}

std::vector<QAction*> Menu::Make(QWidget& window, std::initializer_list<Row> rows) {
  std::vector<QAction*> in_bar;
  std::vector<QMenu*> open;  // the menu that each depth adds to
  for (auto row = rows.begin(); row != rows.end(); ++row) {
    open.resize(static_cast<std::size_t>(row->depth));
    const auto below = row + 1;
    QMenu* menu = below != rows.end() && below->depth > row->depth ? new QMenu(&window) : nullptr;
    QAction* action = menu != nullptr ? menu->menuAction() : new QAction(&window);
    row->item.menu_ = menu;
    row->item.Stand(action, *row);
    if (menu != nullptr) menu->setFont(ProgramFont(9));
    if (!open.empty()) {
      open.back()->addAction(action);
    } else if (!row->hidden) {
      in_bar.push_back(action);
    }
    open.push_back(menu);
  }
  return in_bar;
}

void Menu::OpenAt(const QPoint& screen) {
  if (menu_ != nullptr) menu_->exec(screen);
}

}  // namespace morva
