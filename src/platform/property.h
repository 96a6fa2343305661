#pragma once

#include <functional>
#include <string>
#include <utility>

namespace morva {

/// A value of a control that can be read and assigned like a plain member and tells its control when it is assigned.
/// What the user does (typing, moving a window) is stored by the control itself, without telling it.
template <class T>
class Property {
 public:
  Property() = default;
  explicit Property(T initial) : value_(std::move(initial)) {}
  Property(const Property&) = delete;
  Property& operator=(const Property& other) { return *this = other(); }

  Property& operator=(T value) {
    value_ = std::move(value);
    if (assigned) assigned();
    return *this;
  }
  T operator()() const { return read ? read() : value_; }
  operator T() const { return (*this)(); }
  friend bool operator==(const Property& property, const T& value) { return property() == value; }

  /// What was assigned or stored last, whatever the toolkit holds now.
  const T& Assigned() const { return value_; }
  /// Takes over a new value without telling the control.
  void Store(T value) { value_ = std::move(value); }
  /// Appends to a text in constant time a piece, without telling the control.
  void StoreMore(const T& more) { value_ += more; }

  std::function<void()> assigned;  ///< set by the control
  std::function<T()> read;         ///< set by a control whose value lives in the toolkit

 private:
  T value_{};
};

}  // namespace morva
