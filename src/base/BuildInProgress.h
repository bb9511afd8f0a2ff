#pragma once

namespace zendry {

// The code that runs a build keeps one on its stack until the build ends. Between two files of a
// build the window handles messages: the handler of one can ask whether a build is on the stack
// below it.
class BuildInProgress {
 public:
  BuildInProgress() { ++running; }
  ~BuildInProgress() { --running; }
  BuildInProgress(const BuildInProgress&) = delete;
  BuildInProgress& operator=(const BuildInProgress&) = delete;

  static bool Any() { return running > 0; }

 private:
  static inline int running = 0;
};

}  // namespace zendry
