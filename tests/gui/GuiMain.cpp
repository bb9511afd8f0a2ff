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
  testing::InitGoogleTest(&testArgc, testArgv);
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  return mavro::RunApplication(testArgc, testArgv);
}
