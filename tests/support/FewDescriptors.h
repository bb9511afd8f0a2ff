#pragma once

#include <sys/resource.h>
#include <unistd.h>

namespace test {

// Leaves this process so many descriptors to open, as long as it lives.
class FewDescriptors {
 public:
  explicit FewDescriptors(int count) {
    getrlimit(RLIMIT_NOFILE, &saved);
    const int next = dup(0);
    close(next);
    const rlimit few = {static_cast<rlim_t>(next + count), saved.rlim_max};
    setrlimit(RLIMIT_NOFILE, &few);
  }
  ~FewDescriptors() { setrlimit(RLIMIT_NOFILE, &saved); }
  FewDescriptors(const FewDescriptors&) = delete;
  FewDescriptors& operator=(const FewDescriptors&) = delete;

 private:
  rlimit saved;
};

}  // namespace test
