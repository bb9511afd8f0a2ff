#include "tags/TagReference.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <ctime>
#include <filesystem>
#include <string>

#include "Privileges.h"
#include "TempFolder.h"
#include "base/Shell.h"
#include "tags/TagCache.h"
#include "tags/TagData.h"
#include "tags/TagParser.h"

namespace zendry {
namespace {

namespace fs = std::filesystem;

class LogShell : public OutputShell {
 public:
  void AppendOutput(std::string_view text) override { log += text; }
  void ClearOutput() override { log.clear(); }
  std::string log;
};

class TagReferenceTest : public testing::Test {
 protected:
  TagReferenceTest() {
    theTagParser.shell = &shell;
    folder.Write("std/box", "class Box { public: int size() const; };\nint free(int a);\n");
    WriteDefinition("<library n=\"std\" p=\"" + folder.Path("std") +
                    "\"/>\n<header n=\"box\" id=\"3\"/>\n");
  }
  ~TagReferenceTest() override { theTagParser.shell = nullptr; }

  void WriteDefinition(const std::string& text, int seconds = -100) {
    SetTime(folder.Write("lib.tgd", text), seconds);
  }

  // Sets a file's time, in seconds from now and nanoseconds.
  static void SetTime(const std::string& path, int seconds, long nanoseconds = 0) {
    const timespec time{std::time(nullptr) + seconds, nanoseconds};
    const timespec times[] = {time, time};
    ASSERT_EQ(utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
  }

  TagData Loaded() {
    TagData data;
    data.loadReference(Definition());
    return data;
  }

  std::string Definition() const { return folder.Path("lib.tgd"); }
  std::string Cache() const { return folder.Path("lib.tgx"); }

  // True if tags come from the headers: only then do they include globals.
  static bool IsParsed(const TagData& data) { return !data.globals.empty(); }
  static bool HasBox(TagData& data) {
    const TagClass* box = data.findClass("Box");
    return box && box->members.size() == 1 && box->members[0].name == "size";
  }

  test::TempFolder folder;
  LogShell shell;
};

// Group: paths and times.

TEST_F(TagReferenceTest, CachePath_ReplacesTheLastLetter) {
  EXPECT_EQ(CachePath("/a/stlref.tgd"), "/a/stlref.tgx");
  EXPECT_EQ(CachePath("x"), "x");
  EXPECT_EQ(CachePath(""), "");
}

TEST_F(TagReferenceTest, DefinitionIsNewer_DefinitionThatCannotBeOpened_IsNot) {
  EXPECT_FALSE(definitionIsNewer(folder.Path("gone.tgd"), Definition()));
  EXPECT_FALSE(definitionIsNewer(folder.Path("gone.tgd"), folder.Path("gone.tgx")));
}

TEST_F(TagReferenceTest, DefinitionIsNewer_CacheThatCannotBeOpened_Is) {
  EXPECT_TRUE(definitionIsNewer(Definition(), folder.Path("gone.tgx")));
  EXPECT_TRUE(definitionIsNewer(Definition(), folder.Folder("folder.tgx")));
}

TEST_F(TagReferenceTest, DefinitionIsNewer_ByItsLastWrite) {
  const std::string cache = folder.Write("lib.tgx", "");
  struct Row {
    int definition;
    int cache;
    bool isNewer;
  };
  for (const Row& row : {Row{-100, -99, false}, Row{-100, -100, false}, Row{-100, -101, true}}) {
    SetTime(Definition(), row.definition);
    SetTime(cache, row.cache);
    EXPECT_EQ(definitionIsNewer(Definition(), cache), row.isNewer) << row.cache;
  }
}

TEST_F(TagReferenceTest, DefinitionIsNewer_AtEqualSeconds_TheRestDecides) {
  const std::string cache = folder.Write("lib.tgx", "");
  const int now = -50;
  SetTime(Definition(), now, 2000);
  SetTime(cache, now, 1000);
  EXPECT_TRUE(definitionIsNewer(Definition(), cache));
  SetTime(cache, now, 3000);
  EXPECT_FALSE(definitionIsNewer(Definition(), cache));
}

// Group: definitions.

TEST_F(TagReferenceTest, Definition_HeadersCarryTheirIdOptionsNameAndPath) {
  WriteDefinition(
      "<lib n=\"std\" p=\"/d\"/><hdr n=\"a\" p=\"sub/a.h\" o=\"opt\" id=\"5\"/><hdr n=\"b\"/>");
  const TagData data = Loaded();
  ASSERT_EQ(data.headers.size(), 2u);
  EXPECT_EQ(data.headers[0].id, 5);
  EXPECT_EQ(data.headers[0].options, "opt");
  EXPECT_EQ(data.headers[0].name, "a");
  EXPECT_EQ(data.headers[0].path, "/d/sub/a.h");
  EXPECT_EQ(data.headers[1].path, "/d/b");
}

TEST_F(TagReferenceTest, Definition_TagsCarryTheHeadersId) {
  TagData data = Loaded();
  ASSERT_TRUE(HasBox(data));
  EXPECT_EQ(data.findClass("Box")->fileId, 3);
  EXPECT_EQ(data.findClass("Box")->members[0].fileId, 3);
  EXPECT_EQ(data.globals[0].fileId, 3);
}

TEST_F(TagReferenceTest, Definition_OnlyTheFirstLetterOfAnElementCounts) {
  WriteDefinition("<letter p=\"" + folder.Path("std") + "\"/><x/><house n=\"box\" id=\"1\"/>");
  TagData data = Loaded();
  EXPECT_TRUE(HasBox(data));
}

TEST_F(TagReferenceTest, Definition_OtherElements_AreSkipped) {
  WriteDefinition("<Lib p=\"/x\"/><class n=\"A\"/><itm n=\"b\"/><globals n=\"3\"/></header>");
  const TagData data = Loaded();
  EXPECT_TRUE(data.headers.empty() && data.classes.empty() && data.globals.empty());
}

TEST_F(TagReferenceTest, Definition_RelativeFolder_IsTakenFromItsOwn) {
  WriteDefinition("<lib n=\"std\" p=\"std\"/><hdr n=\"box\" id=\"1\"/>");
  TagData data = Loaded();
  EXPECT_TRUE(HasBox(data));
  EXPECT_EQ(data.headers[0].path, folder.Path("std/box"));
  EXPECT_NE(folder.Read("lib.tgx").find("p=\"std/box\""), std::string::npos);
  const TagData again = Loaded();
  EXPECT_FALSE(IsParsed(again));
  EXPECT_EQ(again.headers[0].path, folder.Path("std/box"));
}

TEST_F(TagReferenceTest, Definition_OptionX_DecidesAboutTheCache) {
  struct Row {
    const char* element;
    bool isWritten;
  };
  for (const Row& row : {Row{"", true}, Row{"<o o=\"-x\"/>", true}, Row{"<opt o=\"a -xy\"/>", true},
                         Row{"<opt/>", false}, Row{"<opt o=\"x\"/>", false},
                         Row{"<opt o=\"-x\"/><opt o=\"-y\"/>", false}}) {
    fs::remove(Cache());
    WriteDefinition(std::string(row.element) + "<lib p=\"std\"/><hdr n=\"box\"/>");
    EXPECT_EQ(Loaded().saveCache, row.isWritten) << row.element;
    EXPECT_EQ(folder.Exists("lib.tgx"), row.isWritten) << row.element;
  }
}

TEST_F(TagReferenceTest, Definition_MissingHeader_IsLoggedAndTheNextGoesOn) {
  WriteDefinition("<lib p=\"std\"/><hdr n=\"gone\" id=\"1\"/><hdr n=\"box\" id=\"2\"/>");
  TagData data = Loaded();
  EXPECT_TRUE(HasBox(data));
  EXPECT_NE(shell.log.find("------ cannot open: --> " + folder.Path("std/gone")), std::string::npos)
      << shell.log;
}

TEST_F(TagReferenceTest, Definition_HeaderThatIsAFolderOrAPipe_IsPassedOver) {
  folder.Folder("std/dir");
  ASSERT_EQ(mkfifo(folder.Path("std/pipe").c_str(), 0600), 0);
  WriteDefinition("<lib p=\"std\"/><hdr n=\"dir\"/><hdr n=\"pipe\"/><hdr n=\"box\"/>");
  TagData data = Loaded();
  EXPECT_TRUE(HasBox(data));
}

TEST_F(TagReferenceTest, Definition_BrokenText_DoesNoHarm) {
  for (const std::string& text :
       {std::string(), std::string(100000, '\0'),
        std::string("<hdr n=\"" + std::string(600, 'x') + "\"/>"), std::string("<hdr/>"),
        std::string("<hdr n=\"\"/><lib"), std::string("\"\"<<<>>>==")}) {
    WriteDefinition(text);
    fs::remove(Cache());
    EXPECT_TRUE(Loaded().classes.empty()) << text.substr(0, 50);
  }
}

TEST_F(TagReferenceTest, Definition_CutAtAnyByte_GivesAtMostTheWholeOnes) {
  const std::string text = folder.Read("lib.tgd");
  const TagData whole = Loaded();
  for (size_t length = 0; length < text.size(); ++length) {
    WriteDefinition(text.substr(0, length));
    fs::remove(Cache());
    const TagData data = Loaded();
    EXPECT_LE(data.headers.size(), whole.headers.size()) << length;
    for (const auto& [name, tagClass] : data.classes)
      EXPECT_TRUE(whole.classes.contains(name)) << length << " " << name;
  }
}

TEST_F(TagReferenceTest, LoadDefinition_ClearsTheStore) {
  TagData data;
  data.globals.resize(2);
  data.classes["Old"].name = "Old";
  loadDefinition(data, Definition());
  EXPECT_EQ(data.globals.size(), 1u);
  EXPECT_FALSE(data.classes.contains("Old"));
}

// Group: loading by way of the cache.

TEST_F(TagReferenceTest, FirstLoad_ParsesAndWritesTheCache) {
  TagData data = Loaded();
  EXPECT_TRUE(IsParsed(data));
  EXPECT_TRUE(HasBox(data));
  EXPECT_TRUE(folder.Exists("lib.tgx"));
  EXPECT_TRUE(data.loaded.contains(Definition()));
}

TEST_F(TagReferenceTest, SecondLoad_ReadsTheCacheWithoutGlobals) {
  Loaded();
  TagData data = Loaded();
  EXPECT_FALSE(IsParsed(data));
  EXPECT_TRUE(HasBox(data));
  EXPECT_EQ(data.findClass("Box")->members[0].access, 1);
  EXPECT_EQ(data.headers.size(), 1u);
}

TEST_F(TagReferenceTest, CacheWithoutAStamp_IsReadAsItIs) {
  const std::string text =
      "<reference n=\"lib\">\n\t<hdr n=\"box\" id=\"3\" p=\"/box\"/>\n</reference>\n"
      "<globals n=\"0\">\n</globals>\n"
      "<class n=\"Box\" id=\"3\" o=\"c1\">\n\t<itm n=\"size\" id=\"3\" o=\"p1\"/>\n</class>\n";
  folder.Write("lib.tgx", text);
  TagData data = Loaded();
  EXPECT_FALSE(IsParsed(data));
  EXPECT_TRUE(HasBox(data));
  EXPECT_EQ(folder.Read("lib.tgx"), text);
}

TEST_F(TagReferenceTest, OlderCacheWithoutAStamp_IsMadeAgain) {
  SetTime(folder.Write("lib.tgx",
                       "<reference n=\"lib\">\n</reference>\n<globals n=\"0\">\n"
                       "</globals>\n<class n=\"Old\">\n</class>\n"),
          -200);
  EXPECT_TRUE(IsParsed(Loaded()));
}

TEST_F(TagReferenceTest, LoadedPath_IsNotReadAgain) {
  TagData data = Loaded();
  shell.log.clear();
  data.clear();
  data.loadReference(Definition());
  EXPECT_TRUE(data.classes.empty());
  EXPECT_EQ(shell.log, "");
}

TEST_F(TagReferenceTest, Load_IsLogged) {
  Loaded();
  EXPECT_TRUE(shell.log.starts_with("\r\n------ Loading --> " + Definition() + "\r\n"))
      << shell.log;
}

TEST_F(TagReferenceTest, Load_OfTheStoresOwnName_IsNotLogged) {
  TagData data;
  data.fileName = Definition();
  data.loadReference(Definition());
  EXPECT_EQ(shell.log.find("Loading"), std::string::npos);
  EXPECT_TRUE(HasBox(data));
}

TEST_F(TagReferenceTest, NewerDefinition_IsParsedAgain) {
  Loaded();
  SetTime(Definition(), 100);
  EXPECT_TRUE(IsParsed(Loaded()));
}

TEST_F(TagReferenceTest, DefinitionOfAnotherCompiler_IsParsedThoughItIsOlder) {
  Loaded();
  WriteDefinition("<library n=\"std 13\" p=\"std\"/>\n<header n=\"box\" id=\"3\"/>\n", -1000);
  EXPECT_TRUE(IsParsed(Loaded()));
  EXPECT_FALSE(IsParsed(Loaded()));
}

TEST_F(TagReferenceTest, MissingDefinition_LeavesTheCache) {
  Loaded();
  fs::remove(Definition());
  TagData data = Loaded();
  EXPECT_TRUE(HasBox(data));
  EXPECT_FALSE(IsParsed(data));
}

TEST_F(TagReferenceTest, MissingDefinitionAndCache_LeaveTheLibraryEmpty) {
  fs::remove(Definition());
  const TagData data = Loaded();
  EXPECT_TRUE(data.classes.empty() && data.headers.empty());
  EXPECT_TRUE(data.loaded.contains(Definition()));
  EXPECT_EQ(folder.Names(), std::vector<std::string>{"std"});
}

TEST_F(TagReferenceTest, TwoLibraries_StandInOneStore) {
  folder.Write("std/lid", "class Lid { public: int open(); };\n");
  SetTime(folder.Write("two.tgd", "<lib p=\"std\"/><hdr n=\"lid\" id=\"9\"/>"), -100);
  for (int round = 0; round < 2; ++round) {
    TagData data = Loaded();
    data.loadReference(folder.Path("two.tgd"));
    EXPECT_TRUE(HasBox(data)) << round;
    EXPECT_NE(data.findClass("Lid"), nullptr) << round;
    EXPECT_EQ(data.headers.size(), 2u) << round;
  }
  EXPECT_EQ(folder.Read("two.tgx").find("Box"), std::string::npos);
}

TEST_F(TagReferenceTest, FirstLibrary_TakesThePlaceOfForeignTags) {
  TagData data;
  data.globals.resize(1);
  data.classes["Old"].name = "Old";
  data.loadReference(Definition());
  EXPECT_FALSE(data.classes.contains("Old"));
}

TEST_F(TagReferenceTest, Load_TellsThatTheTagsChanged) {
  TagData data;
  const uint64_t before = data.Generation();
  data.loadReference(Definition());
  EXPECT_NE(data.Generation(), before);
}

// Group: caches that are not trusted.

TEST_F(TagReferenceTest, CacheCutAtAnyByte_IsMadeAgain) {
  Loaded();
  const std::string whole = folder.Read("lib.tgx");
  for (size_t length = 0; length < whole.size(); ++length) {
    if (length == whole.find("<stamp")) continue;  // whole without its stamp
    folder.Write("lib.tgx", whole.substr(0, length));
    TagData data = Loaded();
    ASSERT_TRUE(IsParsed(data) && HasBox(data)) << length;
    ASSERT_EQ(folder.Read("lib.tgx"), whole) << length;
  }
}

TEST_F(TagReferenceTest, BrokenCache_IsMadeAgain) {
  Loaded();
  const std::string whole = folder.Read("lib.tgx");
  for (const std::string& broken :
       {std::string(), std::string(1, '\0'), std::string(3000000, '<'), std::string(3000000, '"'),
        whole + whole, "x" + whole, std::string("<class n=\"Box\">\n</class>\n")}) {
    folder.Write("lib.tgx", broken);
    TagData data = Loaded();
    EXPECT_TRUE(IsParsed(data) && HasBox(data)) << broken.substr(0, 40);
    EXPECT_EQ(folder.Read("lib.tgx"), whole) << broken.substr(0, 40);
  }
}

TEST_F(TagReferenceTest, CacheThatIsAFolderOrAPipe_IsPassedOver) {
  folder.Folder("lib.tgx");
  TagData data = Loaded();
  EXPECT_TRUE(HasBox(data));
  fs::remove(Cache());
  ASSERT_EQ(mkfifo(Cache().c_str(), 0600), 0);
  data = Loaded();
  EXPECT_TRUE(HasBox(data));
}

TEST_F(TagReferenceTest, UnreadableCache_IsPassedOver) {
  Loaded();
  fs::permissions(folder.Path(), fs::perms::all);
  fs::permissions(Cache(), fs::perms::none);
  const test::WithoutRights user;
  TagData data = Loaded();
  EXPECT_TRUE(IsParsed(data) && HasBox(data));
}

TEST_F(TagReferenceTest, FolderThatCannotBeWritten_StillGivesTheTagsOfTheSession) {
  fs::permissions(folder.Path(), fs::perms::owner_read | fs::perms::owner_exec |
                                     fs::perms::others_read | fs::perms::others_exec);
  {
    const test::WithoutRights user;
    TagData data = Loaded();
    EXPECT_TRUE(IsParsed(data) && HasBox(data));
  }
  EXPECT_EQ(shell.log, "\r\n------ Loading --> " + Definition() + "\r\n");
  EXPECT_FALSE(folder.Exists("lib.tgx"));
}

TEST_F(TagReferenceTest, CacheThatCannotBeWritten_IsReadWhereItIsGood) {
  Loaded();
  fs::permissions(Cache(), fs::perms::owner_read | fs::perms::others_read);
  fs::permissions(folder.Path(), fs::perms::owner_read | fs::perms::owner_exec |
                                     fs::perms::others_read | fs::perms::others_exec);
  const test::WithoutRights user;
  TagData data = Loaded();
  EXPECT_TRUE(!IsParsed(data) && HasBox(data));
}

TEST_F(TagReferenceTest, DefinitionFromTheFuture_IsParsedOnlyOnce) {
  SetTime(Definition(), 100000);
  EXPECT_TRUE(IsParsed(Loaded()));
  EXPECT_FALSE(IsParsed(Loaded()));
}

}  // namespace
}  // namespace zendry
