#pragma once

#include <cstdint>
#include <vector>

#include "platform/controls/control.h"
#include "platform/system/event_loop.h"

namespace morva {

/// A list of lines with a number each, in the order of insertion. Nothing in a line is taken for markup. A line too
/// long for the list is shown without its start, and whole in its tip.
class ListBox : public Control {
 public:
  ListBox();
  ~ListBox() override;
  Property<int> ListIndex;  ///< the selected line, -1 for none; assigning scrolls it into view
  void AddItem(const std::string& text);
  void Clear();
  int ListCount() const;
  const std::string& List(int index) const;
  std::int32_t& ItemData(int index);
  void Rescale() override;

 private:
  void Show();
  struct Item {
    std::string text;
    std::int32_t data = 0;
  };
  class Model;
  class Rows;
  class View;
  std::vector<Item> items_;
  std::unique_ptr<Model> model_;
  ShownLater later_;
};

}  // namespace morva
