#pragma once

namespace mavro {

// Root of the framework's classes: whatever has events handled or commands sent to it derives from
// it.
class object {
 public:
  object() = default;
  object(const object&) = delete;
  object& operator=(const object&) = delete;
  virtual ~object() = default;
};

}  // namespace mavro
