#include "lsp/LspFrames.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace zendry {
namespace {

std::vector<std::string> Bodies(LspFrames& frames) {
  std::vector<std::string> bodies;
  while (auto body = frames.Next()) bodies.push_back(*body);
  return bodies;
}

std::string Header(size_t length) {
  return "Content-Length: " + std::to_string(length) + "\r\n\r\n";
}

TEST(LspFrames, Frame_IsReadBack) {
  LspFrames frames;
  frames.Feed(LspFrame("{}") + LspFrame("") + LspFrame("[1]"));
  EXPECT_EQ(Bodies(frames), (std::vector<std::string>{"{}", "", "[1]"}));
  EXPECT_FALSE(frames.IsInside());
}

TEST(LspFrames, ByteByByte_IsTheSame) {
  LspFrames frames;
  std::vector<std::string> bodies;
  for (const char c : LspFrame("{\"a\": 1}") + LspFrame("x")) {
    frames.Feed(std::string_view(&c, 1));
    for (const std::string& body : Bodies(frames)) bodies.push_back(body);
  }
  EXPECT_EQ(bodies, (std::vector<std::string>{"{\"a\": 1}", "x"}));
}

TEST(LspFrames, OtherFieldsAndCase_DontMatter) {
  LspFrames frames;
  frames.Feed("Content-Type: application/json\r\ncontent-LENGTH:  2 \r\n\r\nab");
  EXPECT_EQ(Bodies(frames), std::vector<std::string>{"ab"});
}

TEST(LspFrames, MessageThatHasBegun_IsInside) {
  for (const char* begun : {"C", "Content-Length: 3\r\n", "Content-Length: 3\r\n\r\nab"}) {
    LspFrames frames;
    frames.Feed(begun);
    EXPECT_FALSE(frames.Next());
    EXPECT_TRUE(frames.IsInside()) << begun;
    EXPECT_EQ(frames.Error(), "");
  }
}

TEST(LspFrames, HeaderWithoutAUsableLength_EndsTheStream) {
  for (const char* header :
       {"\r\n\r\n", "A: b\r\n\r\n", "Content-Length:\r\n\r\n", "Content-Length: x\r\n\r\n",
        "Content-Length: -1\r\n\r\n", "Content-Length: 1 2\r\n\r\n",
        "Content-Length: 99999999999999999999999\r\n\r\n"}) {
    LspFrames frames;
    frames.Feed(std::string(header) + LspFrame("{}"));
    EXPECT_FALSE(frames.Next()) << header;
    EXPECT_EQ(frames.Error(), "the header of a message tells no length") << header;
    EXPECT_FALSE(frames.Next()) << header;
  }
}

TEST(LspFrames, LongestMessage_IsTaken_OneMoreIsNot) {
  LspFrames fits;
  fits.Feed(Header(LspFrames::cLongestMessage));
  EXPECT_FALSE(fits.Next());
  EXPECT_EQ(fits.Error(), "");
  LspFrames tooLong;
  tooLong.Feed(Header(LspFrames::cLongestMessage + 1));
  EXPECT_FALSE(tooLong.Next());
  EXPECT_EQ(tooLong.Error(), "a message of 67108865 bytes is too long");
}

TEST(LspFrames, HeaderWithoutEnd_EndsTheStreamAtItsBound) {
  LspFrames frames;
  frames.Feed(std::string(LspFrames::cLongestHeader - 1, 'a'));
  EXPECT_FALSE(frames.Next());
  EXPECT_EQ(frames.Error(), "");
  frames.Feed("a");
  EXPECT_FALSE(frames.Next());
  EXPECT_EQ(frames.Error(), "a message has no header");
}

}  // namespace
}  // namespace zendry
