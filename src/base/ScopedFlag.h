#pragma once

namespace zendry {

// Sets a flag as long as it lives. Its destructor restores the value that the flag had before.
class ScopedFlag {
 public:
  explicit ScopedFlag(bool& itsFlag) : flag(itsFlag), before(itsFlag) { flag = true; }
  ~ScopedFlag() { flag = before; }
  ScopedFlag(const ScopedFlag&) = delete;
  ScopedFlag& operator=(const ScopedFlag&) = delete;

 private:
  bool& flag;
  const bool before;
};

}  // namespace zendry
