#include "base/TraceLog.h"

#include <gtest/gtest.h>

#include "ScopedVariable.h"
#include "TempFolder.h"

namespace zendry {
namespace {

struct TraceLog : testing::Test {
  test::TempFolder folder;
};

TEST_F(TraceLog, FileNamed_GetsALineForEachMessage) {
  const test::ScopedVariable log("ZENDRY_LOG", folder.Path("log"));
  TraceMessage("Parse", "/a.cpp");
  TraceMessage(" - class not found", "Gone");
  EXPECT_EQ(folder.Read("log"), "Parse --> /a.cpp\n - class not found --> Gone\n");
}

TEST_F(TraceLog, NoFileNamed_WritesNothing) {
  const test::ScopedVariable log("ZENDRY_LOG", "");
  TraceMessage("Parse", "/a.cpp");
  unsetenv("ZENDRY_LOG");
  TraceMessage("Parse", "/a.cpp");
  EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

TEST_F(TraceLog, FileThatCantBeWritten_IsPassedOver) {
  const test::ScopedVariable log("ZENDRY_LOG", folder.Path("none/log"));
  TraceMessage("Parse", "/a.cpp");
  const test::ScopedVariable aFolder("ZENDRY_LOG", folder.Path());
  TraceMessage("Parse", "/a.cpp");
  EXPECT_FALSE(folder.Exists("none"));
}

}  // namespace
}  // namespace zendry
