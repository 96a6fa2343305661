#include <QAbstractListModel>
#include <QCoreApplication>
#include <QEvent>
#include <QListView>
#include <functional>

#include "platform/controls.h"
#include "platform/qt_values.h"

namespace morva {

// Shows the items that the view has been told of; the list itself may be ahead of it until the next turn of the event
// loop, so that a thousand new lines cost one layout.
class ListBox::Model : public QAbstractListModel {
 public:
  explicit Model(const std::vector<Item>& items) : items_(items) {}
  int rowCount(const QModelIndex& parent) const override { return parent.isValid() ? 0 : shown_; }
  QVariant data(const QModelIndex& index, int role) const override {
    if (!index.isValid() || index.row() >= static_cast<int>(items_.size())) return {};
    const std::string& text = items_[static_cast<std::size_t>(index.row())].text;
    if (role == Qt::DisplayRole) return QtText(text);
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
  std::function<void()> show;

 protected:
  bool event(QEvent* event) override {
    if (event->type() != QEvent::UpdateRequest) return QAbstractListModel::event(event);
    show();
    return true;
  }

 private:
  const std::vector<Item>& items_;
  int shown_ = 0;
};

ListBox::ListBox() : Control(std::make_unique<QListView>()), model_(std::make_unique<Model>(items_)) {
  auto& view = *static_cast<QListView*>(Native());
  model_->show = [this] { ShowNow(); };
  view.setModel(model_.get());
  view.setUniformItemSizes(true);
  view.setEditTriggers(QAbstractItemView::NoEditTriggers);
  view.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  view.setTextElideMode(Qt::ElideRight);
  QObject::connect(view.selectionModel(), &QItemSelectionModel::currentChanged, [this](const QModelIndex& current) {
    if (!show_pending_) ListIndex.Store(current.row());
  });
  ListIndex.assigned = [this] { ShowLater(); };
}

ListBox::~ListBox() { static_cast<QListView*>(Native())->setModel(nullptr); }

void ListBox::AddItem(const std::string& text) {
  items_.push_back({text});
  ShowLater();
}

void ListBox::Clear() {
  items_.clear();
  ListIndex.Store(-1);
  show_pending_ = true;
  model_->Forget();
  show_pending_ = false;
}

int ListBox::ListCount() const { return static_cast<int>(items_.size()); }

const std::string& ListBox::List(int index) const { return items_.at(static_cast<std::size_t>(index)).text; }

std::int32_t& ListBox::ItemData(int index) { return items_.at(static_cast<std::size_t>(index)).data; }

void ListBox::ShowLater() {
  if (show_pending_) return;
  show_pending_ = true;
  // With the painting's own priority, so that a square that was painted on before is seen before.
  QCoreApplication::postEvent(model_.get(), new QEvent(QEvent::UpdateRequest), Qt::LowEventPriority);
}

void ListBox::ShowNow() {
  auto& view = *static_cast<QListView*>(Native());
  model_->ShowAll();
  view.setCurrentIndex(model_->index(ListIndex()));
  view.scrollTo(view.currentIndex());
  show_pending_ = false;
}

}  // namespace morva
