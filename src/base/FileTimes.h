#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>

namespace zendry {

// Times of last write as one build sees them: the time of each file is read once, however often it
// is needed.
class FileTimes {
 public:
  using Time = int64_t;  // nanoseconds since 1970

  // Empty if the path can't be opened and read: missing files, files without the right to read
  // them, folders, pipes and devices (which are never opened, so nothing blocks).
  std::optional<Time> Of(const std::string& path);
  // Makes the next call read the file's time again: a tool has written the file.
  void Forget(const std::string& path);

  // The current folder, with a "/" at its end. What lies below it is asked for from there, because
  // the system then has less to look up.
  void SetCurrentFolder(std::string folder) { currentFolder = std::move(folder); }

  size_t Asked() const { return asked; }

 private:
  const char* Shortest(const std::string& path) const;

  std::unordered_map<std::string, std::optional<Time>> times;
  std::string currentFolder;
  size_t asked = 0;
};

}  // namespace zendry
