#pragma once

#include <compare>
#include <concepts>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>

namespace mavro {

class SysImpl;

using PropertySetter = void (SysImpl::*)();

// Calls `setter` on `target`. Lives in the platform half, where SysImpl is known.
void CallSetter(SysImpl* target, PropertySetter setter);

class TextProperty;
template <class T>
class WriteProperty;

// A property whose value is a text; and the types that can be compared with it or joined to it.
template <class T>
concept IsTextProperty =
    std::same_as<T, TextProperty> || std::same_as<T, WriteProperty<std::string>>;
template <class T>
concept IsText = IsTextProperty<T> || std::convertible_to<const T&, std::string_view>;
template <class A, class B>
concept AreTexts = (IsTextProperty<A> && IsText<B>) || (IsText<A> && IsTextProperty<B>);

// Gives a property whose value is a text the reading and changing functions of std::string.
template <class Property>
class TextReading {
 public:
  // The same as the functions of std::string. References and views are valid until the text
  // changes.
  bool empty() const { return Now().empty(); }
  size_t size() const { return Now().size(); }
  size_t length() const { return Now().size(); }
  const char* c_str() const { return Now().c_str(); }
  char operator[](size_t at) const { return Now()[at]; }
  char front() const { return Now().front(); }
  char back() const { return Now().back(); }
  auto begin() const { return Now().begin(); }
  auto end() const { return Now().end(); }
  bool starts_with(std::string_view with) const { return Now().starts_with(with); }
  bool ends_with(std::string_view with) const { return Now().ends_with(with); }
  size_t find(std::string_view what, size_t from = 0) const { return Now().find(what, from); }
  size_t rfind(std::string_view what, size_t from = std::string::npos) const {
    return Now().rfind(what, from);
  }
  std::string substr(size_t from = 0, size_t count = std::string::npos) const {
    return Now().substr(from, count);
  }
  operator std::string_view() const { return Now(); }
  void clear() { Change(std::string()); }
  template <IsText Text>
  Property& operator+=(const Text& added) {
    return Change(Now() + std::string(static_cast<std::string_view>(added)));
  }
  Property& operator+=(char added) { return Change(Now() + added); }

 private:
  const std::string& Now() const { return static_cast<const Property&>(*this).Read(); }
  Property& Change(const std::string& text) { return static_cast<Property&>(*this) = text; }
};

// Texts are compared byte by byte.
template <class A, class B>
requires AreTexts<A, B>
bool operator==(const A& a, const B& b) {
  return static_cast<std::string_view>(a) == static_cast<std::string_view>(b);
}

template <class A, class B>
requires AreTexts<A, B>
auto operator<=>(const A& a, const B& b) {
  return static_cast<std::string_view>(a) <=> static_cast<std::string_view>(b);
}

template <class A, class B>
std::string operator+(const A& a, const B& b) requires AreTexts<A, B> {
  std::string joined(static_cast<std::string_view>(a));
  return joined += static_cast<std::string_view>(b);
}

template <IsTextProperty Property>
std::string operator+(const Property& text, char added) {
  return static_cast<std::string>(text) + added;
}

template <IsTextProperty Property>
std::string operator+(char first, const Property& text) {
  return first + static_cast<std::string>(text);
}

template <class Traits, IsTextProperty Property>
auto& operator<<(std::basic_ostream<char, Traits>& out, const Property& text) {
  return out << static_cast<std::string_view>(text);
}

namespace detail {
struct NoText {};
template <class Property, class T>
using ReadingOf = std::conditional_t<std::same_as<T, std::string>, TextReading<Property>, NoText>;
}  // namespace detail

// A member that looks like a value and notifies the platform half when it changes. The value is
// stored in the control or its implementation, so that a control can be set up completely before
// its window exists. Assigning an equal value does nothing. A copy is independent and belongs to no
// control.
template <class T>
class WriteProperty : public detail::ReadingOf<WriteProperty<T>, T> {
 public:
  // None of the pointers is owned; all outlive the property.
  WriteProperty(SysImpl* impl, PropertySetter changed, T* stored)
      : target(impl), setter(changed), value(stored) {}
  WriteProperty(const WriteProperty& other)
      : copy(std::make_unique<T>(*other.value)), value(copy.get()) {}

  WriteProperty& operator=(const T& wanted) {
    if (*value == wanted) return *this;
    *value = wanted;
    if (target) CallSetter(target, setter);
    return *this;
  }
  WriteProperty& operator=(const WriteProperty& other) { return *this = *other.value; }

  operator const T&() const { return *value; }
  const T& Get() const { return *value; }

  // Changes the value as the operators of its type do.
  template <class Other>
  WriteProperty& operator+=(const Other& other) {
    return Change([&](T& t) { t += other; });
  }
  template <class Other>
  WriteProperty& operator-=(const Other& other) {
    return Change([&](T& t) { t -= other; });
  }
  template <class Other>
  WriteProperty& operator*=(const Other& other) {
    return Change([&](T& t) { t *= other; });
  }
  template <class Other>
  WriteProperty& operator/=(const Other& other) {
    return Change([&](T& t) { t /= other; });
  }
  template <class Other>
  WriteProperty& operator%=(const Other& other) {
    return Change([&](T& t) { t %= other; });
  }
  template <class Other>
  WriteProperty& operator|=(const Other& other) {
    return Change([&](T& t) { t |= other; });
  }
  template <class Other>
  WriteProperty& operator&=(const Other& other) {
    return Change([&](T& t) { t &= other; });
  }
  template <class Other>
  WriteProperty& operator^=(const Other& other) {
    return Change([&](T& t) { t ^= other; });
  }
  template <class Other>
  WriteProperty& operator<<=(const Other& other) {
    return Change([&](T& t) { t <<= other; });
  }
  template <class Other>
  WriteProperty& operator>>=(const Other& other) {
    return Change([&](T& t) { t >>= other; });
  }
  WriteProperty& operator++() {
    return Change([](T& t) { ++t; });
  }
  T operator++(int) {
    const T before = *value;
    ++*this;
    return before;
  }
  WriteProperty& operator--() {
    return Change([](T& t) { --t; });
  }
  T operator--(int) {
    const T before = *value;
    --*this;
    return before;
  }

 private:
  friend TextReading<WriteProperty>;
  const T& Read() const { return *value; }

  template <class How>
  WriteProperty& Change(const How& how) {
    T next = *value;
    how(next);
    return *this = next;
  }

  SysImpl* target = nullptr;
  PropertySetter setter = nullptr;
  std::unique_ptr<T> copy;  // the value of a property that belongs to no control
  T* value;
};

// The text of a control. Reading asks the window while it exists and its text is live. A copy is
// independent and belongs to no control.
class TextProperty : public TextReading<TextProperty> {
 public:
  explicit TextProperty(SysImpl* impl) : target(impl) {}
  TextProperty(const TextProperty& other) : shown(other.Get()) {}

  TextProperty& operator=(const std::string& wanted);
  TextProperty& operator=(const TextProperty& other) { return *this = other.Get(); }

  operator std::string() const { return Get(); }
  std::string Get() const;

 private:
  friend TextReading<TextProperty>;
  const std::string& Read() const;

  SysImpl* target = nullptr;
  mutable std::string shown;  // the last text read; the text itself if there is no control
};

}  // namespace mavro
