#pragma once

#include <array>
#include <cstddef>

namespace morva {

/// Controls of one kind under one name, told apart by the index First to First + N - 1. Another index throws
/// std::out_of_range.
template <class C, int N, int First = 0>
class ControlArray {
 public:
  ControlArray() {
    for (int i = 0; i < N; ++i) items_[i].Index = First + i;
  }
  C& operator()(int index) { return items_.at(static_cast<std::size_t>(index - First)); }
  const C& operator()(int index) const { return items_.at(static_cast<std::size_t>(index - First)); }
  auto begin() { return items_.begin(); }
  auto end() { return items_.end(); }
  static constexpr int LBound() { return First; }
  static constexpr int UBound() { return First + N - 1; }

 private:
  std::array<C, N> items_;
};

}  // namespace morva
