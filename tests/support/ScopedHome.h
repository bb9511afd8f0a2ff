#pragma once

#include <cstdlib>
#include <string>

namespace test {

// Makes a folder the profile folder as long as it lives.
class ScopedHome {
 public:
  explicit ScopedHome(const std::string& folder) {
    const char* home = std::getenv("HOME");
    if (home) saved = home;
    setenv("HOME", folder.c_str(), 1);
  }
  ~ScopedHome() { setenv("HOME", saved.c_str(), 1); }
  ScopedHome(const ScopedHome&) = delete;
  ScopedHome& operator=(const ScopedHome&) = delete;

 private:
  std::string saved;
};

}  // namespace test
