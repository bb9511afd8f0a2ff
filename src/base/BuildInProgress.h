#pragma once

namespace zendry {

// Stands on the stack of whoever builds, as long as the build runs. Between two files of a build
// the window handles messages: who gets one then can ask whether a build is on the stack below.
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
