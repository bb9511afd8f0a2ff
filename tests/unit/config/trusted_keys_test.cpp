#include "config/TrustedKeys.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "TempFolder.h"

namespace zendry {
namespace {

TEST(TrustedKeys, OnlyWhatWasAdded_IsTrusted) {
  const test::TempFolder folder;
  const TrustedKeys keys(folder.Path());
  EXPECT_FALSE(keys.Has("a"));
  EXPECT_TRUE(keys.Add({"a", "line\nwith % and \x01", "a"}).Ok());
  EXPECT_TRUE(keys.Has("a"));
  EXPECT_TRUE(TrustedKeys(folder.Path()).Has("line\nwith % and \x01"));
  for (const char* other : {"", "b", "a ", "line", "line\nwith % and ", "line%0awith %25 and %01"})
    EXPECT_FALSE(keys.Has(other)) << other;
  const std::string text = folder.Read("trusted");
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 2);
}

TEST(TrustedKeys, OfTheSameDigest_IsNotEnough) {
  const test::TempFolder folder;
  const TrustedKeys keys(folder.Path());
  EXPECT_TRUE(keys.Add({"a"}).Ok());
  std::string text = folder.Read("trusted");
  text.back() = 'b';  // the text, not its digest
  folder.Write("trusted", text + "\n");
  EXPECT_FALSE(keys.Has("a"));
}

TEST(TrustedKeys, After1000_TheOldestAreForgotten) {
  const test::TempFolder folder;
  const TrustedKeys keys(folder.Path());
  std::vector<std::string> many;
  for (int i = 0; i < 1001; ++i) many.push_back(std::to_string(i));
  EXPECT_TRUE(keys.Add(many).Ok());
  EXPECT_FALSE(keys.Has("0"));
  EXPECT_TRUE(keys.Has("1"));
  EXPECT_TRUE(keys.Has("1000"));
}

TEST(TrustedKeys, WithoutAFolder_NothingIsTrusted) {
  EXPECT_FALSE(TrustedKeys("").Add({"a"}).Ok());
  EXPECT_FALSE(TrustedKeys("").Has("a"));
  const test::TempFolder folder;
  EXPECT_FALSE(TrustedKeys(folder.Path("missing")).Add({"a"}).Ok());
  folder.Folder("trusted");
  EXPECT_FALSE(TrustedKeys(folder.Path()).Add({"a"}).Ok()) << "no file, and not replaced";
}

}  // namespace
}  // namespace zendry
