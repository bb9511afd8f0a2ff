#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>

namespace zendry {

// Times of last write as one build sees them: each file is asked for once, however often it counts.
class FileTimes {
 public:
  using Time = int64_t;  // nanoseconds since 1970

  // Nothing for what can't be opened and read: missing files, files without the right to read them,
  // folders, pipes and devices (which are never opened, so nothing blocks).
  std::optional<Time> Of(const std::string& path);
  // Has the file asked for again: a tool has written it.
  void Forget(const std::string& path);

  size_t Asked() const { return asked; }

 private:
  std::unordered_map<std::string, std::optional<Time>> times;
  size_t asked = 0;
};

}  // namespace zendry
