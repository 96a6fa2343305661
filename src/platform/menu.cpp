#include "platform/menu.h"

#include <QAction>
#include <QMenu>

#include "platform/qt_values.h"

namespace morva {

Menu::~Menu() = default;

void Menu::Become(QAction* action, const Row& row) {
  action_ = action;
  Caption.assigned = [this] {
    const bool separator = Caption() == "-";
    action_->setSeparator(separator);
    action_->setText(separator ? QString() : QtText(Caption()));
  };
  Checked.assigned = [this] {
    action_->setCheckable(true);
    action_->setChecked(Checked());
  };
  Caption = row.caption;
  if (row.checked_at_start) Checked = true;
  if (!row.shortcut.empty()) {
    action_->setShortcut(QKeySequence(QtText(row.shortcut)));
    action_->setAutoRepeat(false);
  }
  QObject::connect(action_, &QAction::triggered, [this] {
    // A click does what the program says; the toolkit's own toggling is taken back.
    if (action_->isCheckable()) action_->setChecked(Checked());
    if (Click) Click();
  });
}

}  // namespace morva
