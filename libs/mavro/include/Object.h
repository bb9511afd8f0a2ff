#pragma once

namespace mavro {

// Root of the framework's classes. Every class that handles events or receives commands derives
// from it.
class object {
 public:
  object() = default;
  object(const object&) = delete;
  object& operator=(const object&) = delete;
  virtual ~object() = default;
};

}  // namespace mavro
