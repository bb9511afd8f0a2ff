#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "WindresOptions.h"
#include "WindresRun.h"

// windres: compiles resource scripts to objects. It has its own code to read the command line,
// because it must accept the switches that build scripts pass to such a tool.

namespace {

// The preprocessor of the installation that this program belongs to, else the one on the PATH.
std::string FindGcc() {
  std::error_code error;
  const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
  const std::string beside = (program.parent_path() / "gcc").string();
  return access(beside.c_str(), X_OK) == 0 ? beside : "gcc";
}

}  // namespace

int main(int argc, char** argv) {
  const zendry::WindresOptions options = zendry::ReadWindresOptions({argv + 1, argv + argc});
  if (options.wantsHelp) {
    std::fputs(zendry::cWindresHelp, stdout);
    return 0;
  }
  if (options.wantsVersion) {
    std::puts("windres of Zendry " ZENDRY_VERSION);
    return 0;
  }
  if (!options.error.empty()) {
    std::fprintf(stderr, "windres: %s\nSee windres --help.\n", options.error.c_str());
    return 1;
  }
  setenv("LC_ALL", "C.UTF-8", 1);  // this program reads the preprocessor's messages
  const zendry::WindresResult result = zendry::RunWindres(options, FindGcc());
  std::fputs(result.messages.c_str(), stderr);
  return result.ok ? 0 : 1;
}
