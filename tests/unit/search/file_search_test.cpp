#include "search/FileSearch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <functional>

#include "TempFolder.h"
#include "TextsInMemory.h"

namespace zendry {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct Heard : SearchListener {
  void Found(const std::string& path, size_t line, int column, std::string_view text) override {
    columns.push_back(column);
    rows.push_back(path.substr(path.rfind('/') + 1) + ":" + std::to_string(line) + ":" +
                   std::string(text));
  }
  void MissedFollow(size_t count) override { rows.push_back("missed " + std::to_string(count)); }
  bool GoesOn(size_t done, size_t) override {
    if (before) before(done);
    return done < mostFiles;
  }

  std::vector<std::string> rows;
  std::vector<int> columns;
  std::function<void(size_t)> before;  // each file is searched
  size_t mostFiles = SIZE_MAX;
};

class FileSearchTest : public testing::Test {
 protected:
  SearchSum Search(const std::vector<std::string>& paths, const LineTerm& term) {
    return SearchFiles(paths, term, open, heard);
  }
  test::TempFolder folder;
  test::TextsInMemory open;
  Heard heard;
};

TEST_F(FileSearchTest, Lines_HaveFileAndNumber_AndBlanksForControls) {
  const std::string a = folder.Write("a.cpp", "int x;\n\tx\x01y = 1;\r\n"),
                    b = folder.Write("b.cpp", "X");
  const SearchSum sum = Search({a, b}, {"x"});
  EXPECT_THAT(heard.rows, ElementsAre("a.cpp:1:int x;", "a.cpp:2: x y = 1;", "b.cpp:1:X"));
  EXPECT_EQ(sum.lines, 3u);
  EXPECT_EQ(sum.files, 2u);
}

// The shown text has no TABs and is cut; columns are those of the line.
TEST_F(FileSearchTest, Columns_AreThoseOfTheFirstHit_AsCompilersCount) {
  const std::string a =
      folder.Write("a.cpp", "x x\n\tx\n\xC3\xA9x\naaab\n" + std::string(0x4000, ' ') + "x\nxx\n");
  Search({a}, {"x"});
  EXPECT_THAT(heard.columns, ElementsAre(1, 9, 2, 0x4001, 1));
  heard.columns.clear();
  Search({a}, {"aab", true});
  EXPECT_THAT(heard.columns, ElementsAre(2)) << "a line that the run misses";
}

TEST_F(FileSearchTest, MissedLines_FollowUnderACaption) {
  const std::string a = folder.Write("a.cpp", "aaab\naab\n"), b = folder.Write("b.cpp", "aab");
  const SearchSum sum = Search({a, b}, {"aab", true});
  EXPECT_THAT(heard.rows, ElementsAre("a.cpp:2:aab", "b.cpp:1:aab", "missed 1", "a.cpp:1:aaab"));
  EXPECT_EQ(sum.missed, 1u);
}

TEST_F(FileSearchTest, AnOpenEditor_WinsOverTheFile) {
  const std::string a = folder.Write("a.cpp", "on disk");
  open.texts[a].text = "typed\nin the editor";
  Search({a}, {"in"});
  EXPECT_THAT(heard.rows, ElementsAre("a.cpp:2:in the editor"));
}

TEST_F(FileSearchTest, WhatIsNoFile_IsSkippedAndCounted) {
  const std::string fifo = folder.Path("fifo");
  ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
  const std::string a = folder.Write("a.cpp", "x");
  const SearchSum sum = Search({folder.Path("gone"), fifo, folder.Folder("sub"), a}, {"x"});
  EXPECT_THAT(heard.rows, ElementsAre("a.cpp:1:x"));
  EXPECT_EQ(sum.unread, 3u);
}

TEST_F(FileSearchTest, Utf16_IsDecoded_AndAMarkIsNoText) {
  const std::string wide = folder.Write("w.cpp", std::string("\xFF\xFE"
                                                             "a\0x\0\n\0x\0",
                                                             10));
  const std::string mark = folder.Write("m.cpp", "\xEF\xBB\xBFx");
  Search({wide, mark}, {"x"});
  EXPECT_THAT(heard.rows, ElementsAre("w.cpp:1:ax", "w.cpp:2:x", "m.cpp:1:x"));
}

TEST_F(FileSearchTest, EmptyTermsAndLineEnds_FindNothing) {
  const std::string a = folder.Write("a.cpp", "a\nb\r\n");
  for (const char* text : {"", "\n", "a\nb", "longer than any line"}) Search({a}, {text});
  EXPECT_THAT(heard.rows, IsEmpty());
}

TEST_F(FileSearchTest, AStop_EndsIt_AndKeepsWhatWasFound) {
  const std::string a = folder.Write("a.cpp", "x"), b = folder.Write("b.cpp", "x");
  heard.mostFiles = 1;
  EXPECT_TRUE(Search({a, b}, {"x"}).isStopped);
  EXPECT_THAT(heard.rows, ElementsAre("a.cpp:1:x"));
}

TEST_F(FileSearchTest, FilesThatVanishGrowOrBecomeFolders_WhileItSearches) {
  const std::string a = folder.Write("a.cpp", "x"), b = folder.Write("b.cpp", "x"),
                    c = folder.Write("c.cpp", "x"), d = folder.Write("d.cpp", "x");
  heard.before = [&](size_t done) {
    if (done == 1) std::filesystem::remove(b);
    if (done == 2) folder.Write("c.cpp", std::string(5'000'000, ' ') + "\nx\nx");
    if (done == 3) std::filesystem::remove(d);
    if (done == 3) std::filesystem::create_directory(d);
  };
  const SearchSum sum = Search({a, b, c, d}, {"x"});
  EXPECT_THAT(heard.rows, ElementsAre("a.cpp:1:x", "c.cpp:2:x", "c.cpp:3:x"));
  EXPECT_EQ(sum.unread, 2u);
}

TEST_F(FileSearchTest, AHugeLine_IsCutInTheList) {
  std::string huge(50'000'000, 'a');
  huge += "needle";
  const std::string a = folder.Write("a.cpp", huge);
  EXPECT_EQ(Search({a}, {"needle"}).lines, 1u);
  EXPECT_LT(heard.rows.front().size(), 20'000u);
}

}  // namespace
}  // namespace zendry
