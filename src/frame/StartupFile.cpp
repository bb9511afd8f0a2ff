#include "frame/StartupFile.h"

#include "base/Paths.h"

namespace zendry {

StartupFile FindStartupFile(const std::vector<std::string>& arguments) {
  StartupFile found;
  for (const std::string& argument : arguments) {
    std::string path = TidyPath(argument);
    const int kind = FileKind(path);
    if (kind > cUnknownKind) found = {std::move(path), kind};
  }
  return found;
}

}  // namespace zendry
