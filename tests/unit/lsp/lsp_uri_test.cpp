#include "lsp/LspUri.h"

#include <gtest/gtest.h>

namespace zendry {
namespace {

TEST(LspUri, Path_IsReadBack) {
  for (const char* path : {"/a.cpp", "/with blank/\u00e4%20.h", "/a#b?c:d;e\xff.cc"})
    EXPECT_EQ(PathOfUri(UriOfPath(path)), path);
}

TEST(LspUri, OddBytes_AreEscaped) {
  EXPECT_EQ(UriOfPath("/a b/\u00e4.cpp"), "file:///a%20b/%C3%A4.cpp");
}

TEST(LspUri, OtherAddresses_NameNoFile) {
  for (const char* uri :
       {"", "untitled:Untitled-1", "http://a/b.cpp", "file:", "file://other/a.cpp",
        "file:///a%00.cpp", "file:///a\nfile:///b", "/a.cpp"})
    EXPECT_EQ(PathOfUri(uri), "") << uri;
}

TEST(LspUri, EscapedColonAndFoldersUp_AreTidied) {
  EXPECT_EQ(PathOfUri("file:///c%3A/x/../a.cpp"), "/c:/a.cpp");
  EXPECT_EQ(PathOfUri("file://localhost/a.cpp"), "/a.cpp");
}

}  // namespace
}  // namespace zendry
