#include "build/ToolEnvironment.h"

#include <cstdlib>

namespace zendry {

void ClearCompilerEnvironment() {
  for (const char* name : {"LIBRARY_PATH", "CPLUS_INCLUDE_PATH", "C_INCLUDE_PATH"}) unsetenv(name);
}

// LC_ALL overrules LC_MESSAGES, and LANGUAGE overrules both for the texts of messages.
std::vector<std::string> ToolEnvironment(const char* userLocale) {
  std::vector<std::string> changes = {"LC_MESSAGES=C", "LANGUAGE", "LC_ALL"};
  if (userLocale && *userLocale) changes.push_back(std::string("LC_CTYPE=") + userLocale);
  return changes;
}

}  // namespace zendry
