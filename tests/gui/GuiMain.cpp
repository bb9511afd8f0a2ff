#include <gtest/gtest.h>

#include "Application.h"
#include "Entry.h"

namespace {

int testArgc = 0;
char** testArgv = nullptr;

}  // namespace

// The tests run inside the framework's own set-up, so that the loop, the dialogs and the key
// handling are those of a real program.
int mavro::Application::Main(ArgumentList&) {
  return RUN_ALL_TESTS();
}

int main(int argc, char** argv) {
  testArgc = argc;
  testArgv = argv;
  // The toolkit paints with threads of its own, which a forked child would wait for in vain.
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  testing::InitGoogleTest(&testArgc, testArgv);
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  return mavro::RunApplication(testArgc, testArgv);
}
