#pragma once

#include <QListView>

namespace morva {

/// A list of rows of one height, which does the work of the rows that are seen and no more: the toolkit's own lays out
/// every row again for each that is added.
class RowList : public QListView {
 public:
  void doItemsLayout() override;
  QRect visualRect(const QModelIndex& index) const override;
  QModelIndex indexAt(const QPoint& place) const override;
  void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;

 protected:
  void updateGeometries() override;
  void scrollContentsBy(int dx, int dy) override;
  int verticalOffset() const override;
  int horizontalOffset() const override { return 0; }
  void paintEvent(QPaintEvent* event) override;
  QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
  void setSelection(const QRect& area, QItemSelectionModel::SelectionFlags command) override;
  QRegion visualRegionForSelection(const QItemSelection& selection) const override;

 private:
  QModelIndex Row(int row) const;
  int row_height_ = 1;
};

}  // namespace morva
