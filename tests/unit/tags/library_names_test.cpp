#include "tags/LibraryNames.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "TempFolder.h"

using zendry::LibraryNames;
using zendry::TagItem;

namespace {

class LibraryNamesTest : public testing::Test {
 protected:
  LibraryNames Names(std::vector<std::string> lines) {
    std::sort(lines.begin(), lines.end());
    std::string text;
    for (const std::string& line : lines) text += line + "\n";
    return LibraryNames(folder.Write("x.tgn", text));
  }
  static std::string Text(const std::vector<TagItem*>& items) {
    std::string text;
    for (const TagItem* item : items)
      text += (text.empty() ? "" : "; ") + item->type + " " + item->name + item->signature;
    return text;
  }
  static std::string Found(LibraryNames& names, std::string_view space, std::string_view name) {
    std::vector<TagItem*> items;
    names.Find(items, space, name);
    return Text(items);
  }
  static std::string Listed(LibraryNames& names, std::string_view space, std::string_view prefix) {
    std::vector<TagItem*> items;
    names.List(items, space, prefix);
    std::string text;
    for (const TagItem* item : items) text += (text.empty() ? "" : " ") + item->name;
    return text;
  }

  test::TempFolder folder;
};

TEST_F(LibraryNamesTest, FindsEveryOverloadAndNoNameThatOnlyBeginsAlike) {
  LibraryNames names =
      Names({" max\tp\tint\t(int)", "std max\tp\tT\t(T a, T b)", "std max\tp\tT\t(list)",
             "std max_align\tt\tlong\t", "std min\tp\tT\t(T a)", "stdx max\tp\tX\t()"});
  EXPECT_EQ(Found(names, "std", "max"), "T max(T a, T b); T max(list)");
  EXPECT_EQ(Found(names, "", "max"), "int max(int)");
  EXPECT_EQ(Found(names, "std", "ma"), "");
  EXPECT_EQ(Found(names, "st", "max"), "");
  EXPECT_EQ(Found(names, "stdx", "max"), "X max()");
  EXPECT_EQ(Found(names, "std", "zero"), "");
  EXPECT_EQ(Found(names, "std", "a"), "");
}

TEST_F(LibraryNamesTest, ListsEachNameOnce) {
  LibraryNames names = Names({" memcpy\tp", " memmove\tp", " memory\tp", " mem\tp", "std memcpy\tp",
                              "std memcpy\tp\tx", "std sort\tp"});
  EXPECT_EQ(Listed(names, "", "mem"), "mem memcpy memmove memory");
  EXPECT_EQ(Listed(names, "", "memc"), "memcpy");
  EXPECT_EQ(Listed(names, "", "memz"), "");
  EXPECT_EQ(Listed(names, "std", ""), "memcpy sort");
}

TEST_F(LibraryNamesTest, KnowsItsNamespaces) {
  LibraryNames names = Names({" a\tp", "chrono b\tp", "std c\tp"});
  EXPECT_TRUE(names.HasNamespace(""));
  EXPECT_TRUE(names.HasNamespace("std"));
  EXPECT_TRUE(names.HasNamespace("chrono"));
  EXPECT_FALSE(names.HasNamespace("chron"));
  EXPECT_FALSE(names.HasNamespace("zoo"));
}

TEST_F(LibraryNamesTest, EveryNameOfAnyNumberOfLinesIsFound) {
  for (const int count : {1, 2, 3, 7, 100}) {
    std::vector<std::string> lines;
    for (int i = 0; i < count; ++i) lines.push_back("n f" + std::to_string(i) + "\tp\tint\t()");
    LibraryNames names = Names(lines);
    for (int i = 0; i < count; ++i)
      EXPECT_EQ(Found(names, "n", "f" + std::to_string(i)), "int f" + std::to_string(i) + "()");
    EXPECT_EQ(Found(names, "n", "f" + std::to_string(count)), "");
    EXPECT_EQ(Found(names, "n", "e"), "");
    EXPECT_EQ(Found(names, "n", "g"), "");
  }
}

TEST_F(LibraryNamesTest, ATagIsTheSameAtEachQuestion) {
  LibraryNames names = Names({"std sort\tp\tvoid\t(I first, I last)"});
  std::vector<TagItem*> items;
  names.Find(items, "std", "sort");
  names.List(items, "std", "so");
  ASSERT_EQ(items.size(), 2U);
  EXPECT_EQ(items[0], items[1]);
  EXPECT_EQ(items[0]->kind, 'p');
  EXPECT_EQ(names.NamespaceOf(*items[0]), "std");
  EXPECT_EQ(names.NamespaceOf(TagItem(*items[0])), std::nullopt);
  EXPECT_EQ(items[0]->module, nullptr);
}

TEST_F(LibraryNamesTest, PartsThatAreMissingAreEmpty) {
  LibraryNames names(folder.Write("x.tgn", " a\n b\td\n c\tp\tint"));
  EXPECT_EQ(Found(names, "", "a"), " a");
  EXPECT_EQ(Found(names, "", "b"), " b");
  EXPECT_EQ(Found(names, "", "c"), "int c");
}

TEST_F(LibraryNamesTest, AnyOtherTextHasSomeNamesOrNone) {
  for (const char* text : {"", "\n", "\n\n\n", "x", "\t\t\t", "no blank here", " \t\n", "b\na\n"}) {
    LibraryNames names(folder.Write("x.tgn", text));
    Found(names, "", "a");
    EXPECT_EQ(Listed(names, "", "b"), "") << text;
    Listed(names, "", "");
  }
  LibraryNames missing(folder.Path("none.tgn"));
  EXPECT_EQ(Listed(missing, "", ""), "");
}

}  // namespace
