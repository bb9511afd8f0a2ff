#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace test {

// Sets a variable of the environment as long as it lives.
class ScopedVariable {
 public:
  ScopedVariable(const char* name, const std::string& value) : name(name) {
    if (const char* old = std::getenv(name)) saved = old;
    setenv(name, value.c_str(), 1);
  }
  ~ScopedVariable() {
    if (saved)
      setenv(name, saved->c_str(), 1);
    else
      unsetenv(name);
  }
  ScopedVariable(const ScopedVariable&) = delete;
  ScopedVariable& operator=(const ScopedVariable&) = delete;

 private:
  const char* name;
  std::optional<std::string> saved;
};

}  // namespace test
