#include "UriList.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace mavro {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> Paths(std::string_view list) {
  return LocalPathsOf(list, "desk");
}

TEST(UriList, LocalFiles_AreTheirPaths_InOrder) {
  EXPECT_THAT(Paths("file:///b.cpp\r\nfile:///a.cpp\r\n"), ElementsAre("/b.cpp", "/a.cpp"));
}

TEST(UriList, SchemeAndHost_AreFoundInAnyCase) {
  EXPECT_THAT(LocalPathsOf("FILE://AMZ[/a\nfile://amz[/b\nfile://amz{/c", "amz["),
              ElementsAre("/a", "/b"));
}

TEST(UriList, BareNewlinesAndNoneAtTheEnd_AreEnough) {
  EXPECT_THAT(Paths("file:///a\nfile:///b"), ElementsAre("/a", "/b"));
}

TEST(UriList, Escapes_AreTheBytesTheyStandFor) {
  EXPECT_THAT(Paths("file:///my%20file%23%3f%25.cpp"), ElementsAre("/my file#?%.cpp"));
  EXPECT_THAT(Paths("file:///caf%E9"), ElementsAre("/caf\xE9"));
  EXPECT_THAT(Paths("file:///a%0Ab%0d"), ElementsAre("/a\nb\r"));
}

TEST(UriList, BrokenEscapes_StandForThemselves) {
  EXPECT_THAT(Paths("file:///50%"), ElementsAre("/50%"));
  EXPECT_THAT(Paths("file:///5%4"), ElementsAre("/5%4"));
  EXPECT_THAT(Paths("file:///%zz%-1%+1%0x"), ElementsAre("/%zz%-1%+1%0x"));
}

TEST(UriList, Nul_IsLeftOut) {
  EXPECT_THAT(Paths("file:///a%00.cpp"), IsEmpty());
  EXPECT_THAT(Paths(std::string_view("file:///a\0.cpp", 14)), IsEmpty());
}

TEST(UriList, ThisHost_IsLocal) {
  EXPECT_THAT(Paths("file://localhost/a\r\nfile://Desk/b\r\nFILE:/c"),
              ElementsAre("/a", "/b", "/c"));
}

TEST(UriList, OtherHosts_AreLeftOut) {
  EXPECT_THAT(Paths("file://elsewhere/a\r\nfile://desk.example/a"), IsEmpty());
  EXPECT_THAT(LocalPathsOf("file://desk/a", ""), IsEmpty());
}

TEST(UriList, OtherSchemesAndComments_AreLeftOut) {
  EXPECT_THAT(Paths("# file:///a\r\nhttp://localhost/a\r\nsftp:///a\r\n/a\r\nfiles:///a"),
              IsEmpty());
}

TEST(UriList, NoPath_IsLeftOut) {
  for (const char* uri : {"", "\r\n", "file", "file:", "file://", "file://localhost", "file:a"})
    EXPECT_THAT(Paths(uri), IsEmpty()) << uri;
}

}  // namespace
}  // namespace mavro
