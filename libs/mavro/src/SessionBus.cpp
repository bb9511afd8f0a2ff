#include "SessionBus.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

namespace mavro {

namespace {

constexpr char cNoBus[] = "disabled:";
constexpr std::string_view cStarts = "autolaunch:";

std::optional<std::string> entryOfChildren;

std::string_view Variable(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

// True for a socket that the user owns; a socket of another user doesn't count.
bool IsUsersBusThere() {
  const std::string path = std::string(Variable("XDG_RUNTIME_DIR")) + "/bus";
  struct stat status;
  return path.starts_with('/') && path != "/bus" && stat(path.c_str(), &status) == 0 &&
         S_ISSOCK(status.st_mode) && status.st_uid == getuid();
}

}  // namespace

std::optional<std::string> SafeBusAddress(std::string_view given, bool isBusThere) {
  if (given.empty()) return isBusThere ? std::nullopt : std::optional<std::string>(cNoBus);
  if (given.find(cStarts) == std::string_view::npos) return std::nullopt;
  std::string kept;
  while (!given.empty()) {
    const std::string_view address = given.substr(0, given.find(';'));
    given.remove_prefix(std::min(address.size() + 1, given.size()));
    if (address.find(cStarts) != std::string_view::npos || address.empty()) continue;
    kept.append(kept.empty() ? "" : ";").append(address);
  }
  return kept.empty() ? cNoBus : kept;
}

void KeepBusFromStarting() {
  const std::string_view given = Variable(cBusVariable);
  entryOfChildren.reset();
  const auto safe = SafeBusAddress(given, IsUsersBusThere());
  if (!safe) return;
  const bool wasSet = std::getenv(cBusVariable) != nullptr;
  entryOfChildren = wasSet ? std::string(cBusVariable) + "=" + std::string(given) : "";
  setenv(cBusVariable, safe->c_str(), 1);
}

const std::optional<std::string>& BusEntryOfChildren() {
  return entryOfChildren;
}

}  // namespace mavro
