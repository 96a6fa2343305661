#include "platform/controls/list_box.h"

#include <QAbstractListModel>
#include <QAccessible>
#include <QKeyEvent>
#include <QListView>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QTimer>

#include "platform/drawing/edge.h"
#include "platform/system/qt_text.h"

namespace morva {

// The items that the view knows of. The list itself may be ahead of it until the next turn of the event loop, so that a
// thousand new lines cost one layout.
class ListBox::Model : public QAbstractListModel {
 public:
  explicit Model(const std::vector<Item>& items) : items_(items) {}
  int rowCount(const QModelIndex& parent) const override { return parent.isValid() ? 0 : shown_; }
  QVariant data(const QModelIndex& index, int role) const override {
    if (!index.isValid() || index.row() >= static_cast<int>(items_.size())) return {};
    const std::string& text = items_[static_cast<std::size_t>(index.row())].text;
    if (role == Qt::DisplayRole) return ShortEnd(text);
    if (role == Qt::ToolTipRole) return TipText(text);
    return {};
  }
  void Forget() {
    beginResetModel();
    shown_ = 0;
    endResetModel();
  }
  void ShowAll() {
    const int count = static_cast<int>(items_.size());
    if (count == shown_) return;
    beginInsertRows({}, shown_, count - 1);
    shown_ = count;
    endInsertRows();
  }

 private:
  const std::vector<Item>& items_;
  int shown_ = 0;
};

// Rows as wide as the view, however long their text is.
class ListBox::Rows : public QStyledItemDelegate {
 public:
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    return {0, QStyledItemDelegate::sizeHint(option, index).height()};
  }
};

class ListBox::View : public QListView {
 public:
  View() { setItemDelegate(&rows_); }

 protected:
  // Letters are for the window's input line.
  void keyPressEvent(QKeyEvent* event) override {
    if (event->text().isEmpty()) {
      QListView::keyPressEvent(event);
    } else {
      event->ignore();
    }
  }
  void paintEvent(QPaintEvent* event) override {
    QListView::paintEvent(event);
    if (!hasFocus()) return;
    QPainter painter(viewport());
    PaintFocusRing(painter, viewport()->rect(), 1);
  }

  // Assistive tools hear of the current line while the list has the focus. The handlers of QListView, skipped here,
  // would tell them of every new line.
  void focusInEvent(QFocusEvent* event) override {
    QListView::focusInEvent(event);
    QTimer::singleShot(0, this, [this] { TellLine(); });
  }
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override {
    QAbstractItemView::currentChanged(current, previous);  // NOLINT(bugprone-parent-virtual-call)
    TellLine();
  }
  void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override {
    QAbstractItemView::selectionChanged(selected, deselected);  // NOLINT(bugprone-parent-virtual-call)
  }

 private:
  void TellLine() {
    if (!hasFocus() || !currentIndex().isValid() || !QAccessible::isActive()) return;
    QAccessibleEvent line(this, QAccessible::Focus);
    line.setChild(currentIndex().row());
    QAccessible::updateAccessibility(&line);
  }

  Rows rows_;
};

ListBox::ListBox()
    : Control(std::make_unique<View>()),
      ListIndex(-1, [this] { later_.Request(); }),
      model_(std::make_unique<Model>(items_)),
      later_([this] { Show(); }) {
  auto& view = As<QListView>(*this);
  view.setModel(model_.get());
  view.setUniformItemSizes(true);
  view.setEditTriggers(QAbstractItemView::NoEditTriggers);
  view.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  view.setTextElideMode(Qt::ElideLeft);
  QObject::connect(view.selectionModel(), &QItemSelectionModel::currentChanged, [this](const QModelIndex& current) {
    if (!later_.Requested()) Store(ListIndex, current.row());
  });
}

ListBox::~ListBox() { As<QListView>(*this).setModel(nullptr); }

void ListBox::AddItem(const std::string& text) {
  items_.push_back({text});
  later_.Request();
}

void ListBox::Clear() {
  items_.clear();
  model_->Forget();
  Store(ListIndex, -1);
}

int ListBox::ListCount() const { return static_cast<int>(items_.size()); }

const std::string& ListBox::List(int index) const { return items_.at(static_cast<std::size_t>(index)).text; }

std::int32_t& ListBox::ItemData(int index) { return items_.at(static_cast<std::size_t>(index)).data; }

void ListBox::Show() {
  auto& view = As<QListView>(*this);
  model_->ShowAll();
  view.setCurrentIndex(model_->index(ListIndex()));
  view.scrollTo(view.currentIndex());
}

void ListBox::Rescale() {
  Control::Rescale();
  later_.Request();
}

}  // namespace morva
