#include "base/TraceLog.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

namespace zendry {

// One write appends the whole line: lines of several programs don't mix.
void TraceMessage(std::string_view text, std::string_view detail) {
  const char* path = std::getenv("ZENDRY_LOG");
  if (!path || !*path) return;
  const int file = open(path, O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NONBLOCK, 0600);
  if (file < 0) return;
  std::string line(text);
  line.append(" --> ").append(detail).append("\n");
  [[maybe_unused]] const ssize_t written = write(file, line.data(), line.size());
  close(file);
}

}  // namespace zendry
