#pragma once

#include <string>

namespace mavro {

class SysImpl;

using PropertySetter = void (SysImpl::*)();

// Calls `setter` on `target`. Lives in the platform half, where SysImpl is known.
void CallSetter(SysImpl* target, PropertySetter setter);

// A member that looks like a value and tells the platform half when it changes. The value lives in
// the control or its implementation, so that a control can be set up in full before its window
// exists. Assigning an equal value does nothing.
template <class T>
class WriteProperty {
 public:
  // None of the pointers is owned; all outlive the property.
  WriteProperty(SysImpl* impl, PropertySetter changed, T* stored)
      : target(impl), setter(changed), value(stored) {}
  WriteProperty(const WriteProperty&) = delete;

  WriteProperty& operator=(const T& wanted) {
    if (*value == wanted) return *this;
    *value = wanted;
    CallSetter(target, setter);
    return *this;
  }
  WriteProperty& operator=(const WriteProperty& other) { return *this = *other.value; }

  operator const T&() const { return *value; }
  const T& Get() const { return *value; }

 private:
  SysImpl* target;
  PropertySetter setter;
  T* value;
};

// The text of a control. Reading asks the window while one exists and its text is live.
class TextProperty {
 public:
  explicit TextProperty(SysImpl* impl) : target(impl) {}
  TextProperty(const TextProperty&) = delete;

  TextProperty& operator=(const std::string& wanted);
  TextProperty& operator=(const TextProperty& other) { return *this = other.Get(); }

  operator std::string() const { return Get(); }
  std::string Get() const;

 private:
  SysImpl* target;
};

}  // namespace mavro
