#pragma once

#include <functional>
#include <string>
#include <type_traits>
#include <utility>

namespace morva {

class PropertyOwner;

/// A value of a control that can be read and assigned like a plain member and tells its control when it is assigned.
template <class T>
class Property {
 public:
  /// Both functions are the control's: one is told of assignments, one reads a value that Qt holds.
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

  /// What was assigned or stored last, whatever Qt holds now.
  const T& Assigned() const { return value_; }

 private:
  friend PropertyOwner;
  T value_;
  std::function<void()> assigned_;
  std::function<T()> read_;
};

/// The owner of properties: it alone stores in them what the user did (typing, choosing), without being told of it.
class PropertyOwner {
 protected:
  template <class T>
  static void Store(Property<T>& property, std::type_identity_t<T> value) {
    property.value_ = std::move(value);
  }
  /// Appends to a text, in a time that depends on the new piece alone.
  static void StoreMore(Property<std::string>& property, const std::string& more) { property.value_ += more; }
};

}  // namespace morva
