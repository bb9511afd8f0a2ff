#include "help/HelpIndex.h"

#include <gmock/gmock.h>

#include "FileText.h"
#include "TempFolder.h"
#include "help/HelpPage.h"

namespace zendry {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// An entry as "key|brief|type|params|returns|body" without what is empty at the end.
std::string Shown(const HelpEntry& entry) {
  std::string shown = entry.key + "|" + entry.brief + "|" + entry.type + "|" + entry.params + "|" +
                      entry.returns + "|" + entry.body;
  while (shown.ends_with('|')) shown.pop_back();
  return shown;
}

std::vector<std::string> Entries(std::string_view bytes, char language = 'E') {
  HelpIndex index(language);
  index.Read(bytes);
  std::vector<std::string> shown;
  for (const HelpEntry& entry : index.Topics()) shown.push_back(Shown(entry));
  return shown;
}

std::vector<std::string> Modules(std::string_view bytes) {
  HelpIndex index;
  index.Read(bytes);
  return index.Modules();
}

struct Row {
  const char* what;
  const char* bytes;
  std::vector<std::string> entries;
};

class HelpRows : public testing::TestWithParam<Row> {};

TEST_P(HelpRows, ReadAs) {
  EXPECT_EQ(Entries(GetParam().bytes), GetParam().entries);
}

const Row cRows[] = {
    {"Empty", "", {}},
    {"NewEntry_KeyFollowsTwoCharacters", "#-m@name\nText\n", {"m@name|||||Text"}},
    {"NewEntry_WithoutALineEnd", "#-m@name", {"m@name"}},
    {"NewEntry_EndsTheOneBefore", "#-a\n1\n#-b\n2", {"a|||||1", "b|||||2"}},
    {"NewEntry_WithoutAKey_IsNone", "#-\nlost\n#-a\n1", {"a|||||1"}},
    {"Aliases_AreReferencesToTheFirst",
     "#-z\n0\n#=m@a m@b  c\nText",
     {"z|||||0", "m@a|||||Text", "m@b|||||$1", "c|||||$1"}},
    {"Alias_OfOneName_HasTheText", "#=a\nText", {"a|||||Text"}},
    {"Alias_OfNoName_IsNone", "#=  \nlost", {}},
    {"OtherHash_IsIgnored", "#-a\n# remark\n#include <x>\n#\nText", {"a|||||Text"}},
    {"Fields",
     "#-a\n@b:brief\n@t:type\n@p:p1\n@p:p2\n@r:back\nbody",
     {"a|brief|type|p1\np2|back|body"}},
    {"Fields_WithoutTheColon",
     "#-a\n@bbrief\n@ttype\n@pparam\n@rback",
     {"a|brief|type|param|back"}},
    {"Fields_BeforeAnyEntry_AreLost", "@b:lost\n#-a", {"a"}},
    {"UnknownField_IsText", "#-a\n@x:y\n@", {"a|||||@x:y\n@"}},
    {"Lines_AreJoinedByNewlines", "#-a\none\n\ntwo\n", {"a|||||one\n\ntwo"}},
    {"EmptyLinesAtTheEnds_AreCut", "#-a\n\none\n\n\n#-b", {"a|||||one", "b"}},
    {"LineEnds_MayHaveCr", "#-a\r\none\r\ntwo\r\n", {"a|||||one\ntwo"}},
    {"Cr_WithinALineIsKept", "#-a\none\rtwo\n", {"a|||||one\rtwo"}},
    {"OtherLanguage_TakesNoText",
     "#-a\n/*-p\npolski\n@b:skrot\n/*-e\nenglish\n/*/\nboth",
     {"a|||||english\nboth"}},
    {"OtherLanguage_HeadingsStillCount", "/*-P\n#-a\nlost\n/*/\n#-b\nB", {"a", "b|||||B"}},
    {"Language_WithoutALetter_ChangesNothing", "#-a\n/*-\none", {"a|||||one"}},
    {"LanguageEnd_WithoutABeginning_ChangesNothing", "#-a\n/*/\none", {"a|||||one"}},
    {"CommentThatIsNoLanguage_IsText", "#-a\n/* x */", {"a|||||/* x */"}},
    {"Heading_AloneIsNoEntry", "##@stdio.h\n", {}},
    {"Heading_WithADescriptionIsOne", "##stdio.h\n@b:Files\nStreams", {"stdio.h|Files||||Streams"}},
    {"Heading_EndsTheEntryBefore", "#-a\n1\n##m\n#-b\n2", {"a|||||1", "b|||||2"}},
    {"TextBeforeHeadings_IsNoEntry", "licence\n#-a\n1", {"a|||||1"}},
    {"ByteOrderMark_IsSkipped", "\xEF\xBB\xBF#-a\n1", {"a|||||1"}},
};

INSTANTIATE_TEST_SUITE_P(Table, HelpRows, testing::ValuesIn(cRows),
                         [](const auto& row) { return row.param.what; });

TEST(HelpIndex, Modules_AreNamedAfterTheAtOrTheMark_EachOnce) {
  EXPECT_THAT(Modules("##@stdio.h\n##string.h\n## x@math.h \n##\n##@\n##stdio.h\n"),
              ElementsAre("stdio.h", "string.h", "math.h"));
}

TEST(HelpIndex, OtherLanguage_IsReadByItsOwnReaders) {
  EXPECT_THAT(Entries("#-a\n/*-p\npolski\n/*-e\nenglish", 'P'), ElementsAre("a|||||polski"));
}

TEST(HelpIndex, LanguageBlock_EndsWithItsFile) {
  HelpIndex index;
  index.Read("#-a\n/*-p\nlost");
  index.Read("#-b\nkept");
  EXPECT_EQ(index.Topics()[1].body, "kept");
}

TEST(HelpIndex, TextBeforeTheFirstHeading_IsExtra) {
  HelpIndex index;
  index.Read("From the manual\nFree to copy\n#-a\n1");
  EXPECT_EQ(index.Extra(), "From the manual\nFree to copy");
}

TEST(HelpIndex, LongLine_IsOneLineAndNoHeading) {
  for (const size_t length : {509u, 510u, 511u, 512u, 1022u, 1023u, 5000u}) {
    const std::string text(length, 'x');
    EXPECT_THAT(Entries("#-a\n" + text + "\nnext\n"), ElementsAre("a|||||" + text + "\nnext"));
    EXPECT_THAT(Entries("#-a\n" + text + "#-b\n"), ElementsAre("a|||||" + text + "#-b")) << length;
    EXPECT_THAT(Entries("#-a\n@b:" + text), ElementsAre("a|" + text)) << length;
  }
}

TEST(HelpIndex, LongHeading_IsCut) {
  const std::string name(600, 'n');
  EXPECT_THAT(Entries("#-" + name + "\ntext"), ElementsAre(name.substr(0, 509) + "|||||text"));
}

TEST(HelpEntry, Key_IsSplitAtTheAt) {
  HelpIndex index;
  index.Read("#-stdio.h@printf\n#-alone\n#-a@b@c");
  EXPECT_EQ(index.Topics()[0].Module(), "stdio.h");
  EXPECT_EQ(index.Topics()[0].Name(), "printf");
  EXPECT_EQ(index.Topics()[0].title, "printf");
  EXPECT_EQ(index.Topics()[1].Module(), "alone");
  EXPECT_EQ(index.Topics()[1].Name(), "alone");
  EXPECT_EQ(index.Topics()[2].Name(), "b@c");
}

TEST(HelpEntry, State_TellsFirstRecordsFromAliases) {
  HelpIndex index;
  index.Read("#=a b\ntext\n#-c\n$0\n#-d\n$0x");
  EXPECT_EQ(index.Topics()[0].state, HelpEntry::cFirst);
  EXPECT_EQ(index.Topics()[1].state, HelpEntry::cAlias);
  EXPECT_EQ(index.Topics()[2].state, HelpEntry::cAlias);
  EXPECT_EQ(index.Topics()[3].state, HelpEntry::cFirst);
}

TEST(HelpIndex, References_LeadToTheirEntry) {
  HelpIndex index;
  index.Read("#-a\nA\n#-b\n$0\n#-c\n$1\n");
  for (const HelpEntry& entry : index.Topics()) EXPECT_EQ(index.Source(entry)->body, "A");
}

TEST(HelpIndex, References_ToNothing_ToThemselves_InACircle_LeadNowhere) {
  HelpIndex index;
  index.Read("#-a\n$0\n#-b\n$2\n#-c\n$1\n#-d\n$4\n#-e\n$99999\n#-f\n$99999999999999999999");
  for (size_t i = 0; i < 5; ++i) EXPECT_EQ(index.Source(index.Topics()[i]), nullptr) << i;
  EXPECT_EQ(index.Source(index.Topics()[5])->body, "$99999999999999999999");
}

TEST(HelpIndex, CutAtEveryByte_IsRead) {
  const std::string bytes =
      "top\n##@m\nabout\n#=m@a m@b\n@b:brief\n@p:p\n/*-p\npl\n/*/\nbody {\\rtf}\r\n#-m@c\n$1\n";
  for (size_t length = 0; length <= bytes.size(); ++length) {
    HelpIndex index;
    index.Read(std::string_view(bytes).substr(0, length));
    for (const HelpEntry& entry : index.Topics()) EXPECT_FALSE(entry.key.empty());
    search(index, {}, 5000);
  }
}

TEST(HelpIndex, BinaryBytes_AreRead) {
  std::string bytes = "#-a\n";
  for (int i = 0; i < 100000; ++i) bytes += static_cast<char>(i * 7919 >> 3);
  HelpIndex index;
  index.Read(bytes);
  EXPECT_EQ(index.Topics()[0].key, "a");
  search(index, {}, 5000);
}

TEST(HelpIndex, ReadFile_SkipsWhatCannotBeRead) {
  const test::TempFolder folder;
  folder.Write("good.ch", "#-a\nA");
  HelpIndex index;
  EXPECT_FALSE(index.ReadFile(folder.Path("missing.ch")));
  EXPECT_FALSE(index.ReadFile(folder.Path("")));
  EXPECT_TRUE(index.ReadFile(folder.Path("good.ch")));
  EXPECT_EQ(index.Topics().size(), 1u);
}

TEST(HelpIndex, ReadFolders_TakesTheThreeFirst_ThenTheOthersByName) {
  const test::TempFolder folder;
  for (const char* name : {"Help/b.ch", "Help/a.ch", "Help/clib.ch", "Help/stl.ch", "Help/mavro.ch",
                           "own/0.ch", "own/stl.ch", "own/note.txt", "Help/c.chm"})
    folder.Write(name, std::string("#-") + name);
  folder.Write("Help/d.ch/x", "");
  HelpIndex index;
  index.ReadFolders(folder.Path("Help"), folder.Path("own"));
  std::vector<std::string> order;
  for (const HelpEntry& entry : index.Topics()) order.push_back(entry.key);
  EXPECT_THAT(order, ElementsAre("Help/mavro.ch", "Help/stl.ch", "Help/clib.ch", "Help/a.ch",
                                 "Help/b.ch", "own/stl.ch", "own/0.ch"));
}

TEST(HelpIndex, ReadFolders_WithoutFolders_IsEmpty) {
  HelpIndex index;
  index.ReadFolders("/nowhere/at/all", "");
  EXPECT_THAT(index.Topics(), IsEmpty());
}

TEST(HelpIndex, Nearest_NamesAreSortedByTheirDistance) {
  HelpIndex index;
  index.Read("#-m@printf\n#-m@sprintf\n#-m@scanf\n#-m@fprintf\n#-n@printf\n#-m@open\n");
  EXPECT_THAT(index.Nearest("prinft", 3), ElementsAre("printf", "sprintf", "fprintf"));
  EXPECT_THAT(index.Nearest("PRINTF", 1), ElementsAre("printf"));
  EXPECT_THAT(index.Nearest("std::open", 1), ElementsAre("open"));
  EXPECT_THAT(index.Nearest("open", 9),
              ElementsAre("open", "scanf", "printf", "sprintf", "fprintf"));
  EXPECT_THAT(HelpIndex().Nearest("open", 3), IsEmpty());
  EXPECT_EQ(index.Nearest(std::string(100000, 'x'), 3).size(), 3u);
}

}  // namespace
}  // namespace zendry
