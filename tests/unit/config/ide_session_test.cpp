#include "config/IdeSession.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <string>

#include "FileFaults.h"
#include "Privileges.h"
#include "ScopedHome.h"
#include "TempFolder.h"
#include "config/EditorSettings.h"

namespace zendry {
namespace {

constexpr char cIni[] = ".zendry/zendry.ini";

class IdeSessionTest : public testing::Test {
 protected:
  IdeSessionTest() : home(folder.Path()) {}
  ~IdeSessionTest() override { theEditorSettings = EditorSettings(); }

  // A session that has read an ini file of this content.
  IdeSession Loaded(std::string_view text) {
    folder.Write(cIni, text);
    IdeSession session;
    session.Load();
    return session;
  }
  // A session that has read this ini file in an installation that starts with `first`.
  IdeSession LoadedWith(std::string_view first, std::string_view text) {
    folder.Write(cIni, text);
    IdeSession session;
    session.Load(folder.Write("first-start.ini", first));
    return session;
  }
  std::string SavedBy(IdeSession session) {
    session.Save(place);
    return folder.Read(cIni);
  }
  bool Saves(std::string_view text, std::string_view line) {
    return SavedBy(Loaded(text)).find(line) != std::string::npos;
  }

  test::TempFolder folder;
  test::ScopedHome home;
  const Placement place = {1, 2, 900, 600, 400};
};

TEST_F(IdeSessionTest, Construction_NamesTheFolderAndTouchesNothing) {
  const IdeSession session;
  EXPECT_EQ(session.folder, folder.Path(".zendry"));
  EXPECT_EQ(session.iniPath, folder.Path(cIni));
  EXPECT_FALSE(folder.Exists(".zendry"));
}

TEST_F(IdeSessionTest, Load_MissingFolder_IsMadeForTheUserAlone) {
  IdeSession session;
  session.Load();
  struct stat status;
  ASSERT_EQ(stat(session.folder.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0700u);
  EXPECT_EQ(session.TakeError(), "");
}

TEST_F(IdeSessionTest, Load_Missing_LeavesDefaults) {
  IdeSession session;
  session.Load();
  EXPECT_TRUE(session.values.empty());
  EXPECT_TRUE(session.recentFiles.items.empty());
  EXPECT_EQ(theEditorSettings.useTabs, 1);
  EXPECT_EQ(theEditorSettings.tabSize, 4);
  EXPECT_EQ(theEditorSettings.indentSize, 4);
  EXPECT_EQ(theEditorSettings.useMonoFont, 0);
  EXPECT_TRUE(session.debuggerTips);
}

TEST_F(IdeSessionTest, Load_SplitsAtTheFirstEquals) {
  EXPECT_EQ(Loaded("x=y=z\r\nno value\n=e\n").values.at("x"), "y=z");
  EXPECT_TRUE(Saves("x=y=z\n", "\nx=y=z\n"));
}

TEST_F(IdeSessionTest, Save_WritesKeysInOrder) {
  IdeSession session = Loaded("zz=1\nAA=2\nempty=\nm=3");
  IdeSession::AddRecent(session.recentFiles, "/a.c");
  EXPECT_EQ(SavedBy(session),
            "AA=2\nBounds=1;2;900;600;\ndbg-tip=1\ned-indsize=4\ned-tabsize=4\ned-usemono=0\n"
            "ed-usetab=1\nfileA=/a.c\nm=3\nsplit-h=400\nzz=1\n");
}

TEST_F(IdeSessionTest, Save_EmptyValue_Disappears) {
  EXPECT_FALSE(Saves("k=\n", "k="));
}

TEST_F(IdeSessionTest, SaveAndLoad_GiveTheSameBytes) {
  const std::string text = SavedBy(Loaded("fileA=/a b.c\nfileB=/\xff.c\nprojA=/p.zpj\nx= y \n"));
  EXPECT_EQ(SavedBy(Loaded(text)), text);
}

TEST_F(IdeSessionTest, Load_EditorSettings) {
  Loaded("ed-usetab=0\ned-tabsize=8\ned-indsize=2\ned-usemono=1\ned-linefolds=1\n");
  EXPECT_EQ(theEditorSettings.useTabs, 0);
  EXPECT_EQ(theEditorSettings.tabSize, 8);
  EXPECT_EQ(theEditorSettings.indentSize, 2);
  EXPECT_EQ(theEditorSettings.useMonoFont, 1);
  EXPECT_EQ(theEditorSettings.lineAboveOpenFolds, 1);
  EXPECT_EQ(theEditorSettings.closePairs, 1);
  Loaded("ed-closepairs=0\n");
  EXPECT_EQ(theEditorSettings.closePairs, 0);
  Loaded("");
  EXPECT_EQ(theEditorSettings.closePairs, 1);
}

TEST_F(IdeSessionTest, Load_FlagsOfOtherText_OnlyOneWordCounts) {
  Loaded("ed-usetab=no\ned-usemono=yes\n");
  EXPECT_EQ(theEditorSettings.useTabs, 1);
  EXPECT_EQ(theEditorSettings.useMonoFont, 0);
}

TEST_F(IdeSessionTest, Load_SizesNoEditorCanUse_AreTheDefaults) {
  for (const char* size : {"0", "-1", "x", "", "99999999999"}) {
    Loaded(std::string("ed-tabsize=") + size + "\ned-indsize=-7\n");
    EXPECT_EQ(theEditorSettings.tabSize, 4) << size;
    EXPECT_EQ(theEditorSettings.indentSize, 4);
  }
  Loaded("ed-indsize=0\n");
  EXPECT_EQ(theEditorSettings.indentSize, 0);
}

// Group: what the installation starts with.

TEST_F(IdeSessionTest, FirstStart_HoldsForEachKeyThatTheUserDoesNotHave) {
  LoadedWith("# a remark\ned-usemono=1\ned-linenum=1\ned-tabsize=8\n", "ed-tabsize=2\n");
  EXPECT_EQ(theEditorSettings.useMonoFont, 1);
  EXPECT_EQ(theEditorSettings.lineNumbers, 1);
  EXPECT_EQ(theEditorSettings.tabSize, 2);
  LoadedWith("ed-usemono=1\ned-linenum=1\n", "ed-usemono=0\ned-linenum=\n");
  EXPECT_EQ(theEditorSettings.useMonoFont, 0);
  EXPECT_EQ(theEditorSettings.lineNumbers, 0);
}

TEST_F(IdeSessionTest, FirstStart_FileMissingOrDamaged_LeavesTheDefaultsWithoutAWord) {
  IdeSession session;
  session.Load(folder.Path("none.ini"));
  EXPECT_EQ(theEditorSettings.useMonoFont, 0);
  EXPECT_EQ(theEditorSettings.lineNumbers, 0);
  EXPECT_EQ(session.TakeError(), "");
  EXPECT_EQ(LoadedWith(std::string_view("x\0y\nno value", 12), "").TakeError(), "");
}

TEST_F(IdeSessionTest, FirstStart_IsNotWrittenToTheUsersFile) {
  EXPECT_EQ(SavedBy(LoadedWith("zz=1\nfirst-size=70\ned-linenum=1\n", "")),
            "Bounds=1;2;900;600;\ndbg-tip=1\ned-indsize=4\ned-tabsize=4\ned-usemono=0\n"
            "ed-usetab=1\nsplit-h=400\n");
}

TEST_F(IdeSessionTest, LineNumbers_ChangedByTheUser_AreKept) {
  IdeSession session = LoadedWith("ed-linenum=1\n", "");
  theEditorSettings.lineNumbers = 0;
  EXPECT_NE(SavedBy(session).find("\ned-linenum=0\n"), std::string::npos);
  session = LoadedWith("ed-linenum=1\n", "ed-linenum=0\n");
  EXPECT_EQ(theEditorSettings.lineNumbers, 0);
  theEditorSettings.lineNumbers = 1;
  EXPECT_TRUE(SavedBy(session).starts_with("Bounds"));
  EXPECT_NE(folder.Read(cIni).find("\ned-linenum=1\n"), std::string::npos);
}

TEST_F(IdeSessionTest, Switches_AreReadAndKeptOnceChanged) {
  const std::pair<const char*, int EditorSettings::*> switches[] = {
      {"ed-wrap", &EditorSettings::wrapLines},
      {"ed-blanks", &EditorSettings::showWhiteSpace},
      {"ed-lineends", &EditorSettings::showLineEnds},
      {"ed-strip", &EditorSettings::stripBlanks},
      {"ed-lastline", &EditorSettings::endLastLine},
  };
  for (const auto& [key, setting] : switches) {
    IdeSession session = LoadedWith("", "");
    EXPECT_EQ(theEditorSettings.*setting, 0) << key;
    EXPECT_EQ(SavedBy(session).find(key), std::string::npos) << key << " is as at first";
    theEditorSettings.*setting = 1;
    EXPECT_NE(SavedBy(session).find(std::string(key) + "=1\n"), std::string::npos);
    theEditorSettings.*setting = 0;
    EXPECT_EQ(Loaded(std::string(key) + "=1\n").TakeError(), "");
    EXPECT_EQ(theEditorSettings.*setting, 1) << key;
    Loaded(std::string(key) + "=yes\n");
    EXPECT_EQ(theEditorSettings.*setting, 0) << key;
  }
}

TEST_F(IdeSessionTest, FirstPlacement_NothingSaid_Is800By560AtTheOrigin) {
  EXPECT_EQ(Loaded("").FirstPlacement(50, 20, 1920, 1080), (Placement{0, 0, 800, 560, 385}));
  for (const char* share : {"0", "29", "101", "-70", "x", ""}) {
    const IdeSession session = LoadedWith(std::string("first-size=") + share, "");
    EXPECT_EQ(session.FirstPlacement(0, 0, 1920, 1080).width, 800) << share;
  }
}

TEST_F(IdeSessionTest, FirstPlacement_ShareOfTheScreen_StandsInItsMiddle) {
  const IdeSession session = LoadedWith("first-size=70\n", "");
  EXPECT_EQ(session.FirstPlacement(0, 0, 1920, 1080), (Placement{288, 162, 1344, 756, 519}));
  EXPECT_EQ(session.FirstPlacement(100, 30, 1280, 960).left, 100 + 192);
  EXPECT_EQ(session.FirstPlacement(100, 30, 1280, 960).top, 30 + 144);
  EXPECT_EQ(LoadedWith("first-size=30", "").FirstPlacement(0, 0, 4000, 2000).width, 1200);
  EXPECT_EQ(LoadedWith("first-size=100", "").FirstPlacement(0, 0, 4000, 2000).width, 4000);
}

TEST_F(IdeSessionTest, FirstPlacement_SmallScreen_IsOneThatTheNextStartTakesBack) {
  IdeSession session = LoadedWith("first-size=70\n", "");
  const Placement first = session.FirstPlacement(0, 0, 1024, 560);
  EXPECT_EQ(first, (Placement{111, 79, 801, 401, 275}));
  session.Save(first);
  EXPECT_EQ(session.RestoreBounds(1024, 560), first);
  EXPECT_EQ(session.FirstPlacement(0, 0, 640, 300), (Placement{0, 0, 640, 300, 206}));
}

TEST_F(IdeSessionTest, Save_KeysAfterTheLastOfAList_AreSomebodyElses) {
  const std::string saved = SavedBy(Loaded("fileI=own\nprojI=own too\nfileH=h\n"));
  EXPECT_NE(saved.find("fileI=own\n"), std::string::npos);
  EXPECT_NE(saved.find("projI=own too\n"), std::string::npos);
  EXPECT_EQ(saved.find("fileH="), std::string::npos);
}

TEST_F(IdeSessionTest, SettingsThatCouldNotBeReadAtTheStart_AreNotReplaced) {
  namespace fs = std::filesystem;
  folder.Write(cIni, "own=1\n");
  for (const char* name : {"", ".zendry"})
    fs::permissions(folder.Path(name), fs::perms::others_read | fs::perms::others_exec,
                    fs::perm_options::add);
  fs::permissions(folder.Path(cIni), fs::perms::none);
  IdeSession session;
  {
    const test::WithoutRights user;
    session.Load();
  }
  fs::permissions(folder.Path(cIni), fs::perms::owner_all);
  EXPECT_NE(session.TakeError(), "");
  session.Save(place);
  EXPECT_EQ(folder.Read(cIni), "own=1\n");
}

TEST_F(IdeSessionTest, DebuggerTips_AreWrittenAndNeverReadBack) {
  IdeSession session = Loaded("dbg-tip=0\n");
  EXPECT_TRUE(session.debuggerTips);
  session.debuggerTips = false;
  EXPECT_NE(SavedBy(session).find("dbg-tip=0\n"), std::string::npos);
}

TEST_F(IdeSessionTest, QuietDebugger_IsReadFromTheUserFirst) {
  EXPECT_FALSE(Loaded("").quietDebugger);
  EXPECT_TRUE(Loaded("dbg-quiet=1\n").quietDebugger);
  EXPECT_TRUE(LoadedWith("dbg-quiet=1\n", "").quietDebugger);
  EXPECT_FALSE(LoadedWith("dbg-quiet=1\n", "dbg-quiet=0\n").quietDebugger);
}

TEST_F(IdeSessionTest, Load_RecentLists_FromAToH) {
  const IdeSession session = Loaded("fileA=1\nfileH=8\nfileI=9\nprojB=p\nfileC=3\n");
  EXPECT_EQ(session.recentFiles.items, (std::vector<std::string>{"1", "3", "8"}));
  EXPECT_EQ(session.recentProjects.items, std::vector<std::string>{"p"});
}

TEST_F(IdeSessionTest, Save_PathWithALineEnd_IsLeftOut) {
  IdeSession session = Loaded("fileB=old\n");
  session.recentFiles.items = {"/a\nBounds=0;", "/b\r", "/c"};
  const std::string text = SavedBy(session);
  EXPECT_NE(text.find("fileA=/c\nsplit-h"), std::string::npos) << text;
  EXPECT_EQ(text.find("/b"), std::string::npos);
}

// Group: two programs with one file.

using Paths = std::vector<std::string>;

TEST_F(IdeSessionTest, KeepRecent_WritesWhatWasAddedAndNothingElse) {
  IdeSession session = Loaded("fileA=/old.c\nx=1\n");
  IdeSession::AddRecent(session.recentFiles, "/new.c");
  session.KeepRecent();
  EXPECT_EQ(folder.Read(cIni), "fileA=/new.c\nfileB=/old.c\nx=1\n");
}

TEST_F(IdeSessionTest, KeepRecent_NothingAdded_LeavesTheFileAlone) {
  IdeSession session = Loaded("x=1\n");
  folder.Write(cIni, "x=2\n");
  session.KeepRecent();
  EXPECT_EQ(folder.Read(cIni), "x=2\n");
  EXPECT_EQ(session.values.at("x"), "1");
}

TEST_F(IdeSessionTest, KeepRecent_BeforeLoad_WritesNothing) {
  IdeSession session;
  IdeSession::AddRecent(session.recentProjects, "/p.zpj");
  session.KeepRecent();
  EXPECT_FALSE(folder.Exists(".zendry"));
}

TEST_F(IdeSessionTest, KeepRecent_TwoPrograms_HaveThePathsOfBoth) {
  IdeSession first = Loaded("fileA=/old.c\nprojA=/p.zpj\n"), second = first;
  IdeSession::AddRecent(first.recentFiles, "/first.c");
  first.KeepRecent();
  IdeSession::AddRecent(second.recentFiles, "/second.c");
  IdeSession::AddRecent(second.recentProjects, "/q.zpj");
  second.KeepRecent();
  EXPECT_EQ(second.recentFiles.items, (Paths{"/second.c", "/first.c", "/old.c"}));
  EXPECT_EQ(folder.Read(cIni),
            "fileA=/second.c\nfileB=/first.c\nfileC=/old.c\nprojA=/q.zpj\nprojB=/p.zpj\n");
  IdeSession::AddRecent(first.recentFiles, "/old.c");
  first.KeepRecent();
  EXPECT_EQ(first.recentFiles.items, (Paths{"/old.c", "/second.c", "/first.c"}));
}

TEST_F(IdeSessionTest, Save_TwoPrograms_TheLastKeepsTheOthersPathsAndKeys) {
  IdeSession first = Loaded("fileA=/old.c\nx=1\ny=1\n"), second = first;
  IdeSession::AddRecent(first.recentFiles, "/first.c");
  first.values["x"] = "2";
  first.values["new"] = "3";
  first.Save(place);
  second.values["y"] = "4";
  const std::string text = SavedBy(second);
  for (const char* line : {"fileA=/first.c\n", "fileB=/old.c\n", "x=2\n", "y=4\n", "new=3\n"})
    EXPECT_NE(text.find(line), std::string::npos) << line << text;
}

TEST_F(IdeSessionTest, Save_TwoPrograms_TheLastPlacementWins) {
  IdeSession first = Loaded("x=1\n"), second = first;
  first.Save({5, 6, 900, 600, 400, true});
  EXPECT_NE(folder.Read(cIni).find("win-max=1\n"), std::string::npos);
  const std::string text = SavedBy(second);
  EXPECT_NE(text.find("Bounds=1;2;900;600;\n"), std::string::npos);
  EXPECT_EQ(text.find("win-max"), std::string::npos);
}

TEST_F(IdeSessionTest, Save_FileGoneMeanwhile_IsWrittenWhole) {
  IdeSession session = Loaded("fileA=/old.c\nx=1\n");
  unlink(folder.Path(cIni).c_str());
  const std::string text = SavedBy(session);
  EXPECT_NE(text.find("fileA=/old.c\n"), std::string::npos);
  EXPECT_NE(text.find("x=1\n"), std::string::npos);
}

TEST_F(IdeSessionTest, Save_FileDamagedMeanwhile_IsKeptBesideIt) {
  IdeSession session = Loaded("x=1\n");
  folder.Write(cIni, "no setting\n");
  EXPECT_NE(SavedBy(session).find("x=1\n"), std::string::npos);
  EXPECT_EQ(folder.Read(".zendry/zendry.ini.bad"), "no setting\n");
}

TEST_F(IdeSessionTest, KeepRecent_Fails_IsSaidAndTriedAgainWithTheNextPath) {
  IdeSession session = Loaded("x=1\n");
  IdeSession::AddRecent(session.recentFiles, "/a.c");
  {
    const test::FileFaults faults(1, ENOSPC, test::FileFaults::Extent::cAllFrom);
    session.KeepRecent();
  }
  EXPECT_NE(session.TakeError(), "");
  session.KeepRecent();
  EXPECT_EQ(folder.Read(cIni), "x=1\n");
  IdeSession::AddRecent(session.recentFiles, "/b.c");
  session.KeepRecent();
  EXPECT_EQ(folder.Read(cIni), "fileA=/b.c\nfileB=/a.c\nx=1\n");
}

TEST_F(IdeSessionTest, Error_IsSaidOnce) {
  IdeSession session;
  session.NoteError("a");
  EXPECT_EQ(session.TakeError(), "a");
  session.NoteError("a");
  session.NoteError("b");
  EXPECT_EQ(session.TakeError(), "b");
  EXPECT_EQ(session.TakeError(), "");
}

TEST_F(IdeSessionTest, MaximisedWindow_IsRestored) {
  IdeSession session = Loaded("");
  session.Save({1, 2, 900, 600, 400, true});
  session.Load();
  EXPECT_TRUE(session.RestoreBounds(1024, 768)->isMaximized);
  session.Save(place);
  session.Load();
  EXPECT_FALSE(session.RestoreBounds(1024, 768)->isMaximized);
}

TEST_F(IdeSessionTest, AddRecent_Nine_OldestFallsOut) {
  RecentList list{8, "file0", {}};
  for (char c = '1'; c <= '9'; ++c) IdeSession::AddRecent(list, std::string(1, c));
  EXPECT_EQ(list.items, (std::vector<std::string>{"9", "8", "7", "6", "5", "4", "3", "2"}));
}

TEST_F(IdeSessionTest, AddRecent_Present_MovesToTheFront) {
  RecentList list{8, "file0", {"1", "2", "3", "4", "5", "6", "7", "8"}};
  IdeSession::AddRecent(list, list.items[2]);
  EXPECT_EQ(list.items, (std::vector<std::string>{"3", "1", "2", "4", "5", "6", "7", "8"}));
  IdeSession::AddRecent(list, "A");
  IdeSession::AddRecent(list, "a");
  EXPECT_EQ(list.items[1], "A");
}

// Group: bounds.

std::optional<Placement> Restored(const std::string& bounds, const std::string& splitter = "") {
  IdeSession session;
  session.values = {{"Bounds", bounds}, {"split-h", splitter}};
  return session.RestoreBounds(1024, 768);
}

TEST_F(IdeSessionTest, RestoreBounds_OffScreenAndTooSmall_IsTheWholeScreen) {
  EXPECT_EQ(Restored("900;1000;300;200;"), (Placement{0, 0, 1024, 768, 528}));
}

TEST_F(IdeSessionTest, RestoreBounds_LimitsThemselves_AreKept) {
  EXPECT_EQ(Restored("800;800;801;401;"), (Placement{800, 800, 801, 401, 275}));
  EXPECT_EQ(Restored("801;801;800;400;"), (Placement{0, 0, 1024, 768, 528}));
  EXPECT_EQ(Restored("-8;-8;1024;768;"), (Placement{-8, -8, 1024, 768, 528}));
  EXPECT_EQ(Restored("0;0;1025;769;"), (Placement{0, 0, 1024, 768, 528}));
}

TEST(Placements, BeyondASmallerScreen_AreMovedUntilTheyCanBeReached) {
  const auto at = [](int left, int top) { return Placement{left, top, 801, 401, 275}; };
  EXPECT_EQ(Reachable(at(800, 700), 1024, 768), at(800, 367));
  EXPECT_EQ(Reachable(at(800, 668), 1024, 768), at(800, 668));
  EXPECT_EQ(Reachable(at(800, 669), 1024, 768), at(800, 367));
  EXPECT_EQ(Reachable(at(700, 0), 800, 600), at(700, 0));
  EXPECT_EQ(Reachable(at(701, 0), 800, 600), at(0, 0));
  EXPECT_EQ(Reachable(at(-300, -8), 1024, 768), at(-300, -8));
}

TEST_F(IdeSessionTest, RestoreBounds_NoKeyOrTooFewFields_IsNothing) {
  EXPECT_FALSE(IdeSession().RestoreBounds(1024, 768));
  for (const char* text : {"", "1", "1;2;3;4", "1;2;3;", ";;;"})
    EXPECT_FALSE(Restored(text)) << text;
}

TEST_F(IdeSessionTest, RestoreBounds_Junk_IsTheWholeScreen) {
  EXPECT_EQ(Restored("x;y;z;;"), (Placement{0, 0, 1024, 768, 528}));
  EXPECT_EQ(Restored("99999999999;-99999999999;99999999999;-1;9;9"),
            (Placement{0, 0, 1024, 768, 528}));
  EXPECT_EQ(Restored(std::string("\0;\0;\0;\0;", 8)), (Placement{0, 0, 1024, 768, 528}));
}

TEST_F(IdeSessionTest, RestoreBounds_Splitter_IsKeptBetweenItsLimits) {
  const std::string whole = "0;0;1024;768;";
  EXPECT_EQ(Restored(whole, "")->splitter, 528);
  EXPECT_EQ(Restored(whole, "386")->splitter, 528);
  EXPECT_EQ(Restored(whole, "387")->splitter, 387);
  EXPECT_EQ(Restored(whole, "688")->splitter, 688);
  EXPECT_EQ(Restored(whole, "689")->splitter, 528);
  EXPECT_EQ(Restored(whole, "junk")->splitter, 528);
}

TEST_F(IdeSessionTest, RestoreBounds_WhatWasSaved_ComesBack) {
  IdeSession session;
  session.Save({10, 20, 900, 600, 400});
  EXPECT_EQ(session.RestoreBounds(1024, 768), (Placement{10, 20, 900, 600, 400}));
}

// Group: bad files and places.

TEST_F(IdeSessionTest, Load_BadContent_TheNextSaveIsWhole) {
  for (const std::string& text : {std::string(), std::string(100000, '\0'),
                                  std::string(1000000, 'x'), std::string(1000000, '='),
                                  std::string("\xff\xfe\0=\0\r\n\n\r", 9), std::string(1000, '\n')})
    EXPECT_TRUE(Saves(text, "Bounds=1;2;900;600;\n")) << text.size();
}

TEST_F(IdeSessionTest, Load_CutAtEveryByte_KeepsWhatIsBefore) {
  const std::string text = "Bounds=1;2;900;600;\nfileA=/a.c\nkept=1\nsplit-h=400\n";
  for (size_t length = 0; length <= text.size(); ++length) {
    const IdeSession session = Loaded(text.substr(0, length));
    EXPECT_EQ(session.values.count("kept"), length >= text.find("kept=") + 5 ? 1u : 0u);
  }
}

TEST_F(IdeSessionTest, Load_DamagedLines_AreSaidAndKeptBesideTheFile) {
  const std::string damaged = std::string("a=1\n\0\0\0garbage\nb=2\n", 18) + "\n";
  IdeSession session = Loaded(damaged);
  EXPECT_NE(session.TakeError().find("zendry.ini"), std::string::npos);
  EXPECT_EQ(session.TakeError(), "");
  EXPECT_NE(SavedBy(session).find("a=1\n"), std::string::npos);
  EXPECT_NE(folder.Read(cIni).find("b=2\n"), std::string::npos);
  EXPECT_EQ(folder.Read(".zendry/zendry.ini.bad"), damaged);
}

TEST_F(IdeSessionTest, Load_EmptyLines_AreNoDamage) {
  EXPECT_EQ(Loaded("a=1\n\n \t\r\n\nb=2\n").TakeError(), "");
  EXPECT_NE(Loaded("a=1\n x\nb=2\n").TakeError(), "");
}

TEST_F(IdeSessionTest, Save_SoundFile_LeavesNoCopy) {
  EXPECT_EQ(Loaded("a=1\n").TakeError(), "");
  SavedBy(Loaded("a=1\n"));
  EXPECT_FALSE(folder.Exists(".zendry/zendry.ini.bad"));
}

TEST_F(IdeSessionTest, FileInThePlaceOfTheFolder_WorksAndIsSaid) {
  folder.Write(".zendry", "mine");
  IdeSession session;
  session.Load();
  EXPECT_NE(session.TakeError().find("not a folder"), std::string::npos);
  session.Save(place);
  EXPECT_EQ(folder.Read(".zendry"), "mine");
}

TEST_F(IdeSessionTest, FolderInThePlaceOfTheFile_WorksAndIsSaid) {
  folder.Folder(cIni);
  IdeSession session;
  session.Load();
  EXPECT_NE(session.TakeError().find("zendry.ini"), std::string::npos);
  session.Save(place);
  EXPECT_TRUE(folder.Exists(cIni));
}

TEST_F(IdeSessionTest, PipeInThePlaceOfTheFile_BlocksNobody) {
  folder.Folder(".zendry");
  ASSERT_EQ(mkfifo(folder.Path(cIni).c_str(), 0600), 0);
  IdeSession session;
  session.Load();
  session.Save(place);
  EXPECT_NE(session.TakeError(), "");
}

TEST_F(IdeSessionTest, NoProfileFolder_WorksAndIsSaid) {
  IdeSession session;
  session.folder.clear();
  session.iniPath.clear();
  session.Load();
  EXPECT_NE(session.TakeError().find("profile"), std::string::npos);
  session.Save(place);
  EXPECT_TRUE(folder.Names().empty());
}

TEST_F(IdeSessionTest, FolderGoneMeanwhile_IsMadeAgain) {
  IdeSession session = Loaded("a=1\n");
  std::filesystem::remove_all(session.folder);
  session.Save(place);
  EXPECT_NE(folder.Read(cIni).find("a=1\n"), std::string::npos);
}

TEST_F(IdeSessionTest, Save_FullDisk_KeepsTheOldFileAndSaysSo) {
  IdeSession session = Loaded("a=1\n");
  {
    const test::FileFaults fullDisk(1, ENOSPC, test::FileFaults::Extent::cAllFrom);
    session.Save(place);
  }
  EXPECT_EQ(folder.Read(cIni), "a=1\n");
  EXPECT_NE(session.TakeError(), "");
  session.Save(place);
  EXPECT_NE(folder.Read(cIni), "a=1\n");
}

}  // namespace
}  // namespace zendry
