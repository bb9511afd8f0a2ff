#pragma once

#include <gtest/gtest.h>

#include <string>

#include "ScriptedDialogs.h"
#include "TestBuild.h"

namespace test {

constexpr const char* cMain = "int main() { return 0; }\n";

// The arguments of a call after the tool's name, joined by blanks.
inline std::string Arguments(const FakeTools::Call& call) {
  std::string text;
  for (size_t i = 1; i < call.size(); ++i) text += (i > 1 ? " " : "") + call[i];
  return text;
}

// A console project and the tools that stand in for the compilers.
struct BuildTest : testing::Test {
  ScriptedDialogs dialogs;
  TestBuild build;

  std::string Root() const { return build.install.Path(); }
  std::string Output() const { return build.shell.output; }
};

}  // namespace test
