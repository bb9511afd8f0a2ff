#include "build/BuildRecords.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "TempFolder.h"
#include "TestBuild.h"

namespace zendry {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* cHeader = "zendry-build 1\n";

BuildJournal OneRecord() {
  return {.inputs = {{"a.cpp", 17}, {"my dir/b \\n.h", -1}},
          .records = {{"out/a b.o", {"g++ -c \"a\nb\".cpp -DX=\\n", {0, 1}}}}};
}

TEST(MakeRule, NamesAreThoseBehindTheTarget) {
  EXPECT_THAT(ReadMakeRule("a.o: a.cpp inc/a.h \\\n  b.h\n"),
              ElementsAre("a.cpp", "inc/a.h", "b.h"));
  EXPECT_THAT(ReadMakeRule("a.o:"), IsEmpty());
  EXPECT_THAT(ReadMakeRule(""), IsEmpty());
  EXPECT_THAT(ReadMakeRule("a.o: "), IsEmpty());
  EXPECT_THAT(ReadMakeRule("no target"), IsEmpty());
}

TEST(MakeRule, EscapedCharactersBelongToTheName) {
  EXPECT_THAT(ReadMakeRule("o: my\\ dir/a.h b\\#c d$$e f\\:g"),
              ElementsAre("my dir/a.h", "b#c", "d$e", "f:g"));
  EXPECT_THAT(ReadMakeRule("o: a\\b c\\\\d"), ElementsAre("a\\b", "c\\\\d"));
  EXPECT_THAT(ReadMakeRule("o: a\\\\\\ b"), ElementsAre("a\\ b"));
  EXPECT_THAT(ReadMakeRule("o: a\\\\ b"), ElementsAre("a\\", "b"));
  EXPECT_THAT(ReadMakeRule("o: a\\"), ElementsAre("a"));
}

TEST(BuildJournal, WhatIsWritten_IsRead) {
  const BuildJournal journal = ReadJournal(WriteJournal(OneRecord()));
  EXPECT_TRUE(journal.isWhole);
  EXPECT_EQ(journal.entries, 1u);
  EXPECT_EQ(journal.records, OneRecord().records);
  EXPECT_EQ(journal.inputs, OneRecord().inputs);
}

TEST(BuildJournal, InputsThatNoRecordHas_AreNotWritten) {
  const BuildJournal journal = {.inputs = {{"old", 1}, {"new", 2}},
                                .records = {{"a.o", {"one", {1}}}}};
  EXPECT_EQ(WriteJournal(journal), std::string(cHeader) + "@ 2 new\n+ a.o\n$ one\n< 0 \n= \n");
}

TEST(BuildJournal, LaterRecord_ReplacesTheEarlierAndADropRemovesIt) {
  const std::string first = std::string(cHeader) + "+ a.o\n$ one\n= \n";
  EXPECT_EQ(ReadJournal(first + "+ a.o\n$ two\n= \n").records.at("a.o").command, "two");
  EXPECT_THAT(ReadJournal(first + "- a.o\n").records, IsEmpty());
  EXPECT_EQ(ReadJournal(first + "- b.o\n").records.size(), 1u);
}

TEST(BuildJournal, CutAtEachByte_KeepsTheWholeRecordsBefore) {
  const std::string first = WriteJournal(OneRecord());
  const std::string text = first + "@ 2 b.cpp\n+ b.o\n$ two\n< 2 \n= \n";
  const size_t record = first.size() + std::string("@ 2 b.cpp\n").size();
  for (size_t length = first.size() + 1; length < text.size(); ++length) {
    const BuildJournal journal = ReadJournal(text.substr(0, length));
    EXPECT_EQ(journal.isWhole, length == record) << length;
    EXPECT_EQ(journal.records.size(), 1u) << length;
  }
  for (size_t length = 0; length < first.size(); ++length)
    EXPECT_THAT(ReadJournal(text.substr(0, length)).records, IsEmpty()) << length;
}

TEST(BuildJournal, OtherVersionsAndDamage_AreNotWhole) {
  const std::string whole = "+ a.o\n$ one\n= \n", header = cHeader;
  for (const std::string& text :
       {"zendry-build 2\n" + whole, whole, header + "$ x\n", header + "< 0 \n", header + "= \n",
        header + "@ x a\n", header + "@ 1\n", header + "@ 99999999999999999999 a\n",
        header + "+ a\n< 0 \n", header + "@ 1 a\n+ a\n< 1 \n", header + "@ 1 a\n+ a\n< 0\n",
        header + "@ 1 a\n+ a\n< -1 \n", header + "@ 1 a\n+ a\n< x \n", header + "?\n",
        header + "? x\n", header + "\n", header + std::string("\0\0\0\n", 4)}) {
    const BuildJournal journal = ReadJournal(text);
    EXPECT_FALSE(journal.isWhole) << text;
    EXPECT_THAT(journal.records, IsEmpty()) << text;
  }
  EXPECT_EQ(ReadJournal(header + "@ 1 a\n+ a\n< 0 \n= \n").records.size(), 1u);
}

struct OpenRecords : testing::Test {
  test::TempFolder files;
  const std::string path = files.Path(BuildRecords::cRecordsName);

  BuildRecords Open() const {
    BuildRecords records;
    records.Open(files.Path());
    return records;
  }
};

TEST_F(OpenRecords, SecondOpen_KnowsWhatTheFirstKept) {
  BuildRecords first = Open();
  first.Add("a.o", "one", {{"a.cpp", 1}});
  first.Add("b.o", "two", {});
  first.Drop("b.o");
  const BuildRecords second = Open();
  ASSERT_TRUE(second.Find("a.o"));
  EXPECT_EQ(second.Find("a.o")->command, "one");
  EXPECT_FALSE(second.Find("b.o"));
}

TEST_F(OpenRecords, CutEnd_IsTakenOffSoThatLaterRecordsCount) {
  Open().Add("a.o", "one", {});
  files.Write(BuildRecords::cRecordsName, files.Read(BuildRecords::cRecordsName) + "+ b.o\n$ tw");
  Open().Add("c.o", "three", {});
  const BuildRecords last = Open();
  EXPECT_TRUE(last.Find("a.o"));
  EXPECT_TRUE(last.Find("c.o"));
}

TEST_F(OpenRecords, FileOfAnotherVersion_IsReplaced) {
  files.Write(BuildRecords::cRecordsName, "zendry-build 9\nx\n");
  Open().Add("a.o", "one", {});
  EXPECT_TRUE(Open().Find("a.o"));
}

TEST_F(OpenRecords, FileOfOldRecords_IsMadeShort) {
  BuildRecords records = Open();
  const std::string command(1000, 'x');
  for (int i = 0; i < 200; ++i) records.Add("a.o", command, {});
  EXPECT_GT(files.Read(BuildRecords::cRecordsName).size(), 100'000u);
  EXPECT_TRUE(Open().Find("a.o"));
  EXPECT_LT(files.Read(BuildRecords::cRecordsName).size(), 2000u);
}

TEST_F(OpenRecords, OpenedAgain_KnowsWhatTheFileSaysNow) {
  BuildRecords records = Open();
  records.Add("a.o", "one", {{"a.cpp", 1}});
  records.Open(files.Path());
  EXPECT_TRUE(records.Find("a.o"));
  BuildRecords other = Open();
  other.Add("b.o", "two", {});
  records.Open(files.Path());
  EXPECT_TRUE(records.Find("a.o") && records.Find("b.o"));
  files.Write(BuildRecords::cRecordsName, cHeader);
  records.Open(files.Path());
  EXPECT_FALSE(records.Find("a.o"));
}

TEST_F(OpenRecords, WhatCouldNotBeWritten_IsForgottenWhenOpenedAgain) {
  BuildRecords records = Open();
  records.Add("a.o", "one", {});
  std::filesystem::remove(files.Path(BuildRecords::cRecordsName));
  files.Folder(BuildRecords::cRecordsName);
  records.Add("b.o", "two", {});
  EXPECT_TRUE(records.Find("b.o"));
  records.Open(files.Path());
  EXPECT_FALSE(records.Find("b.o") || records.Find("a.o"));
}

TEST_F(OpenRecords, ProductsWithTheSameInputs_ShareThem) {
  BuildRecords records = Open();
  records.Add("a.o", "one", {{"a.h", 1}, {"a.cpp", 1}});
  records.Add("b.o", "two", {{"a.h", 1}});
  BuildRecords(Open()).Add("c.o", "three", {{"a.h", 1}, {"a.h", 2}});
  const BuildJournal journal = ReadJournal(files.Read(BuildRecords::cRecordsName));
  EXPECT_EQ(journal.inputs.size(), 3u);
  EXPECT_THAT(journal.records.at("c.o").inputs, ElementsAre(0, 2));
}

TEST_F(OpenRecords, TwoProgramsAtOnce_KnowNothingOfEachOthersProducts) {
  BuildRecords one = Open(), two = Open();
  one.Add("a.o", "one", {{"a.cpp", 1}});
  two.Add("b.o", "two", {{"b.cpp", 1}});
  EXPECT_FALSE(Open().Find("a.o"));
  one.Drop("a.o");
  EXPECT_FALSE(one.Find("a.o"));
  EXPECT_FALSE(Open().Find("a.o"));
  one.Add("c.o", "three", {{"c.cpp", 1}});
  EXPECT_TRUE(Open().Find("c.o"));
  EXPECT_TRUE(ReadJournal(files.Read(BuildRecords::cRecordsName)).isWhole);
}

TEST_F(OpenRecords, FolderInPlaceOfTheFile_KnowsNothingAndHarmsNothing) {
  files.Folder(BuildRecords::cRecordsName);
  BuildRecords records = Open();
  records.Add("a.o", "one", {});
  EXPECT_TRUE(records.Find("a.o"));
  EXPECT_FALSE(Open().Find("a.o"));
}

TEST_F(OpenRecords, Check_NamesWhatHasChanged) {
  const std::string header = files.Write("a.h", "");
  test::SetTime(header, 5);
  FileTimes times;
  BuildRecords records = Open();
  EXPECT_THAT(records.Check(times, "a.o", "one").reason, HasSubstr("not known how a.o was made"));
  records.Add("a.o", "one", {{header, *times.Of(header)}});
  EXPECT_FALSE(records.Check(times, "a.o", "one").stale);
  EXPECT_THAT(records.Check(times, "a.o", "two").reason, HasSubstr("command line"));
  test::SetTime(header, 4);
  FileTimes later;
  records.Open(files.Path());
  EXPECT_THAT(records.Check(later, "a.o", "one").reason, HasSubstr("has changed"));
  unlink(header.c_str());
  FileTimes last;
  records.Open(files.Path());
  EXPECT_THAT(records.Check(last, "a.o", "one").reason, HasSubstr("is gone"));
}

}  // namespace
}  // namespace zendry
