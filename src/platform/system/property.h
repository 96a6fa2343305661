#pragma once

#include <functional>
#include <utility>

namespace morva {

/// A value that can be read like a plain member, but is looked up each time, and can't be assigned.
template <class T>
class ReadOnly {
 public:
  explicit ReadOnly(std::function<T()> read) : read_(std::move(read)) {}
  ReadOnly(const ReadOnly&) = delete;
  ReadOnly& operator=(const ReadOnly&) = delete;
  T operator()() const { return read_(); }
  operator T() const { return read_(); }

 private:
  std::function<T()> read_;
};

/// A value of a control that can be read and assigned like a plain member and tells its control when it is assigned.
/// What the user does (typing, moving a window) is stored by the control itself, without telling it.
template <class T>
class Property {
 public:
  /// Both functions are the control's: one to be told, and one to read a value that lives in the toolkit.
  Property(T initial, std::function<void()> assigned, std::function<T()> read = {})
      : value_(std::move(initial)), assigned_(std::move(assigned)), read_(std::move(read)) {}
  Property(const Property&) = delete;
  Property& operator=(const Property& other) { return *this = other(); }

  Property& operator=(T value) {
    value_ = std::move(value);
    assigned_();
    return *this;
  }
  T operator()() const { return read_ ? read_() : value_; }
  operator T() const { return (*this)(); }
  friend bool operator==(const Property& property, const T& value) { return property() == value; }

  /// What was assigned or stored last, whatever the toolkit holds now.
  const T& Assigned() const { return value_; }
  /// Takes over a new value without telling the control.
  void Store(T value) { value_ = std::move(value); }
  /// Appends to a text in constant time a piece, without telling the control.
  void StoreMore(const T& more) { value_ += more; }

 private:
  T value_;
  std::function<void()> assigned_;
  std::function<T()> read_;
};

}  // namespace morva
