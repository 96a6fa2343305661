#include "platform/controls/row_list.h"

#include <QAbstractItemDelegate>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>

namespace morva {

void RowList::doItemsLayout() {
  QAbstractItemView::doItemsLayout();  // NOLINT(bugprone-parent-virtual-call): not the list's own
  row_height_ = std::max(1, sizeHintForRow(0));
  updateGeometries();
}

QRect RowList::visualRect(const QModelIndex& index) const {
  if (!index.isValid()) return {};
  return {0, index.row() * row_height_ - verticalOffset(), viewport()->width(), row_height_};
}

QModelIndex RowList::indexAt(const QPoint& place) const {
  return model()->index((place.y() + verticalOffset()) / row_height_, 0);
}

void RowList::scrollTo(const QModelIndex& index, ScrollHint /*hint*/) {
  executeDelayedItemsLayout();
  QScrollBar& bar = *verticalScrollBar();
  bar.setValue(std::clamp(bar.value(), index.row() - bar.pageStep() + 1, std::max(0, index.row())));
}

// The scroll bar counts rows.
void RowList::updateGeometries() {
  const int rows = std::max(1, viewport()->height() / row_height_);
  verticalScrollBar()->setSingleStep(1);
  verticalScrollBar()->setPageStep(rows);
  verticalScrollBar()->setRange(0, std::max(0, model()->rowCount() - rows));
  QAbstractItemView::updateGeometries();  // NOLINT(bugprone-parent-virtual-call)
}

void RowList::scrollContentsBy(int /*dx*/, int /*dy*/) { viewport()->update(); }

int RowList::verticalOffset() const { return verticalScrollBar()->value() * row_height_; }

void RowList::paintEvent(QPaintEvent* event) {
  QPainter painter(viewport());
  QStyleOptionViewItem option;
  initViewItemOption(&option);
  const QStyle::State state = option.state & ~(QStyle::State_MouseOver | QStyle::State_HasFocus);
  const QRect area = event->rect();
  for (QModelIndex row = indexAt(area.topLeft()); row.isValid() && visualRect(row).top() <= area.bottom();
       row = row.siblingAtRow(row.row() + 1)) {
    option.rect = visualRect(row);
    option.state = state;
    option.state.setFlag(QStyle::State_Selected, selectionModel()->isSelected(row));
    option.state.setFlag(QStyle::State_HasFocus, hasFocus() && row == currentIndex());
    itemDelegateForIndex(row)->paint(&painter, option, row);
  }
}

QModelIndex RowList::moveCursor(CursorAction action, Qt::KeyboardModifiers /*modifiers*/) {
  const int page = verticalScrollBar()->pageStep();
  const int row = currentIndex().row();
  switch (action) {
    case MoveHome:
      return Row(0);
    case MoveEnd:
      return Row(model()->rowCount() - 1);
    case MovePageUp:
      return Row(row - page);
    case MovePageDown:
      return Row(row + page);
    case MoveUp:
    case MoveLeft:
    case MovePrevious:
      return Row(row - 1);
    default:
      return Row(row + 1);
  }
}

void RowList::setSelection(const QRect& area, QItemSelectionModel::SelectionFlags command) {
  selectionModel()->select(indexAt(area.topLeft()), command);
}

QRegion RowList::visualRegionForSelection(const QItemSelection& /*selection*/) const { return viewport()->rect(); }

QModelIndex RowList::Row(int row) const {
  return model()->index(std::max(0, std::min(row, model()->rowCount() - 1)), 0);
}

}  // namespace morva
