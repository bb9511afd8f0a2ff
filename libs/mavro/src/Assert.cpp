#include "Assert.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace mavro {

namespace {

constexpr int cMaxHooks = 8;
std::array<LastWords, cMaxHooks> hooks;
int hookCount = 0;

// The path within the source tree, without the folder of the build.
const char* ShortPath(const char* file) {
  for (const char* root : {"/libs/mavro/", "/src/", "/tools/", "/tests/"})
    if (const char* found = std::strstr(file, root)) return found + 1;
  return file;
}

}  // namespace

void AddLastWords(LastWords hook) {
  for (int i = 0; i < hookCount; ++i)
    if (hooks[i] == hook) return;
  if (hookCount < cMaxHooks) hooks[hookCount++] = hook;
}

void AssertionFailed(const char* expression, const char* file, int line) {
  std::fprintf(stderr, "%s:%d: assertion failed: %s\n", ShortPath(file), line, expression);
  const int count = hookCount;
  hookCount = 0;
  for (int i = 0; i < count; ++i) hooks[i]();
  std::abort();
}

}  // namespace mavro
