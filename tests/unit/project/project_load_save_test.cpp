#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

#include "DataPaths.h"
#include "FileFaults.h"
#include "Golden.h"
#include "Privileges.h"
#include "ProjectShell.h"
#include "ScopedHome.h"
#include "ScriptedDialogs.h"
#include "TempFolder.h"
#include "config/IdeSession.h"
#include "project/Project.h"

namespace zendry {
namespace {

constexpr char cSaveQuestion[] = "Confirmation: Project file was not saved!\nSave?";

class ProjectLoadSaveTest : public testing::Test {
 protected:
  ProjectLoadSaveTest() : home(folder.Folder("home")) {
    project.SetShell(&shell);
    theIdeSession.recentProjects.items.clear();
    path = folder.Write("p/app.zpj", console);
  }
  // Loads the project of the fixture, which must succeed, and forgets what was recorded.
  void Load() {
    ASSERT_EQ(project.Load(path).error, "");
    shell.Take();
  }

  const std::string console = test::ReadData(TEST_DATA "/project/console.zpj");
  test::TempFolder folder;
  test::ScopedHome home;
  test::ScriptedDialogs dialogs;
  test::ProjectShell shell;
  Project project;
  std::string path;
};

// Group: sessions.

TEST_F(ProjectLoadSaveTest, KeepSession_NeedsAnOpenProjectWithAName) {
  Load();
  project.KeepSession();
  ASSERT_TRUE(folder.Exists("p/app.zend"));
  for (const bool isOpen : {false, true}) {
    std::filesystem::remove(folder.Path("p/app.zend"));
    Load();
    project.isOpen = isOpen;
    if (isOpen) project.name.clear();
    project.KeepSession();
    EXPECT_FALSE(folder.Exists("p/app.zend")) << isOpen;
    EXPECT_FALSE(folder.Exists("p/.zend")) << isOpen;
  }
}

// Group: loading.

TEST_F(ProjectLoadSaveTest, Load_FillsTheProject) {
  const mavro::FileResult result = project.Load(path);
  EXPECT_TRUE(result.Ok());
  EXPECT_EQ(result.doubt, "");
  EXPECT_TRUE(project.isOpen);
  EXPECT_FALSE(project.modified);
  EXPECT_EQ(project.name, "app.zpj");
  EXPECT_EQ(project.folder, folder.Path("p"));
  ASSERT_EQ(project.Files().size(), 5u);
  EXPECT_EQ(project.Files()[4]->name, folder.Path("shared/all.h"));
  EXPECT_EQ(project.linkLibs, "-lm");
  EXPECT_EQ(theIdeSession.recentProjects.items, std::vector<std::string>{path});
}

TEST_F(ProjectLoadSaveTest, Load_StaticLibrary_HasItsTarget) {
  folder.Write("p/app.zpj", test::ReadData(TEST_DATA "/project/static_lib.zpj"));
  Load();
  EXPECT_EQ(project.target, "app.a");
  EXPECT_EQ(project.outName, "libab.a");
}

TEST_F(ProjectLoadSaveTest, Load_ClearsImplicit) {
  project.OpenSingleFile(folder.Write("one.c", ""));
  project.Clear();
  Load();
  EXPECT_FALSE(project.implicit);
}

TEST_F(ProjectLoadSaveTest, Load_RestoresTheSession) {
  const std::string main = folder.Write("p/main.cpp", "");
  folder.Write("p/app.zend", "<mode opt=\"dbg\"/><file name=\"main.cpp\" id=\"7\"/>");
  ASSERT_TRUE(project.Load(path).Ok());
  EXPECT_TRUE(shell.Take().ends_with("mode 1\nopen " + main + " 7\n"));
  EXPECT_EQ(project.outputFolder, folder.Path("p/out-dbg"));
}

TEST_F(ProjectLoadSaveTest, Load_RelativePath_IsTakenFromTheCurrentFolder) {
  const std::string before = std::filesystem::current_path().string();
  std::filesystem::current_path(folder.Path("p"));
  for (const char* name : {"app.zpj", "./app.zpj", "../p/app.zpj"}) {
    EXPECT_TRUE(project.Load(name).Ok());
    EXPECT_EQ(project.folder, folder.Path("p"));
    project.Clear();
  }
  std::filesystem::current_path(before);
}

TEST_F(ProjectLoadSaveTest, Load_UpSegmentAfterALink_FindsTheSystemsFile) {
  folder.Write("far/q/app.zpj", console);
  folder.Folder("far/q/sub");
  std::filesystem::create_directory_symlink(folder.Path("far/q/sub"), folder.Path("p/link"));
  EXPECT_TRUE(project.Load(folder.Path("p/link/../app.zpj")).Ok());
  EXPECT_EQ(project.folder, folder.Path("p/link/.."));
}

TEST_F(ProjectLoadSaveTest, Load_MissingFile_IsAnEmptyProjectOfThatName) {
  const std::string missing = folder.Path("p/none.zpj");
  EXPECT_EQ(project.Load(missing).error, missing + ": No such file or directory");
  EXPECT_TRUE(project.isOpen);
  EXPECT_EQ(project.name, "none.zpj");
  EXPECT_TRUE(project.Files().empty());
  EXPECT_TRUE(theIdeSession.recentProjects.items.empty());
  EXPECT_TRUE(dialogs.texts.empty());
}

TEST_F(ProjectLoadSaveTest, Load_FolderOrPipe_SaysSo) {
  const std::string dir = folder.Folder("dir.zpj");
  EXPECT_EQ(project.Load(dir).error, dir + ": is a folder");
  const std::string pipe = folder.Path("pipe.zpj");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_EQ(project.Load(pipe).error, pipe + ": is not a regular file");
}

TEST_F(ProjectLoadSaveTest, Load_NoRightToRead_SaysSo) {
  std::filesystem::permissions(folder.Path(), std::filesystem::perms::all);
  std::filesystem::permissions(path, std::filesystem::perms::none);
  const test::WithoutRights user;
  EXPECT_EQ(project.Load(path).error, path + ": Permission denied");
}

TEST_F(ProjectLoadSaveTest, Load_EmptyOrBinary_IsNoProjectFile) {
  for (const std::string& text : {std::string(), std::string(5000, '\0'), std::string("text")}) {
    folder.Write("p/app.zpj", text);
    EXPECT_EQ(project.Load(path).error, path + ": is not a project file");
    EXPECT_TRUE(project.isOpen);
    project.Clear();
  }
}

TEST_F(ProjectLoadSaveTest, Load_CutFile_IsReadAndDoubted) {
  folder.Write("p/app.zpj", console.substr(0, console.find("<opt>")));
  const mavro::FileResult result = project.Load(path);
  EXPECT_TRUE(result.Ok());
  EXPECT_EQ(result.doubt, path + ": the end is missing, it may have been cut");
  EXPECT_EQ(project.Files().size(), 5u);
}

TEST_F(ProjectLoadSaveTest, Load_ValueThatIsTooLong_IsRefusedAndTheFileStays) {
  std::string text = console;
  text.replace(text.find("-lm"), 3, std::string(600, 'l'));
  folder.Write("p/app.zpj", text);
  folder.Write("p/app.zend", "<state><mode opt=\"dbg\"/></state>");
  EXPECT_EQ(project.Load(path).error, path +
                                          ": holds a value of more than some 500 characters: <lib "
                                          "value=\"" +
                                          std::string(28, 'l') + "...");
  EXPECT_TRUE(project.Files().empty());
  EXPECT_TRUE(project.isOpen);
  EXPECT_FALSE(project.Save(false)) << "it asks, and the answer is no";
  ASSERT_EQ(dialogs.texts.size(), 1u);
  EXPECT_TRUE(project.Close());
  EXPECT_EQ(folder.Read("p/app.zpj"), text);
  EXPECT_EQ(folder.Read("p/app.zend"), "<state><mode opt=\"dbg\"/></state>");
}

TEST_F(ProjectLoadSaveTest, Load_DamagedSession_IsNoted) {
  folder.Write("p/app.zend", "<state><mode opt=\"dbg\"/>");
  theIdeSession.TakeError();
  EXPECT_EQ(project.Load(path).Words(), "");
  EXPECT_EQ(theIdeSession.TakeError(), folder.Path("p/app.zend") + ": the session is damaged");
}

TEST_F(ProjectLoadSaveTest, Load_FilesThatAreMissingOrFolders_AreKept) {
  folder.Folder("p/src/list.cpp");
  Load();
  EXPECT_EQ(project.Files().size(), 5u);
}

TEST_F(ProjectLoadSaveTest, LoadAndClose_WritesNothingButTheSession) {
  Load();
  EXPECT_TRUE(project.Close());
  EXPECT_EQ(folder.Read("p/app.zpj"), console);
  EXPECT_TRUE(folder.Exists("p/app.zend"));
  size_t entries = 0;
  for ([[maybe_unused]] const auto& entry :
       std::filesystem::recursive_directory_iterator(folder.Path()))
    ++entries;
  EXPECT_EQ(entries, 4u);  // home, p and the two files
}

// Group: saving.

TEST_F(ProjectLoadSaveTest, Save_GoldenFiles_AreWrittenByteForByte) {
  for (const std::string& golden : test::DataPaths("project")) {
    const std::string text = test::ReadData(golden);
    folder.Write("p/app.zpj", text);
    ASSERT_TRUE(project.Load(path).Ok());
    project.modified = true;
    EXPECT_TRUE(project.Save(false)) << golden;
    EXPECT_EQ(folder.Read("p/app.zpj"), text) << golden;
    EXPECT_FALSE(project.modified);
    project.Clear();
  }
  EXPECT_TRUE(dialogs.texts.empty());
}

TEST_F(ProjectLoadSaveTest, Save_Change_IsReadBack) {
  Load();
  project.AddFile("new.c");
  project.modified = true;
  EXPECT_TRUE(project.Save(false));
  Project again;
  ASSERT_TRUE(again.Load(path).Ok());
  EXPECT_TRUE(again.FindFile(folder.Path("p/new.c")));
  EXPECT_TRUE(dialogs.questions.empty());
}

TEST_F(ProjectLoadSaveTest, Save_WithoutAName_Asks) {
  project.SetFileName("");
  dialogs.files = {{folder.Path("p/new.zpj")}};
  EXPECT_TRUE(project.Save(false));
  ASSERT_EQ(dialogs.questions.size(), 1u);
  EXPECT_EQ(dialogs.questions[0].title, "Save project");
  EXPECT_EQ(dialogs.questions[0].filter, "Project Files (*.zpj)|*.zpj");
  EXPECT_EQ(dialogs.questions[0].defaultExtension, "zpj");
  EXPECT_EQ(dialogs.questions[0].mode, mavro::FileQuestion::cSave);
  EXPECT_TRUE(project.isOpen);
  EXPECT_EQ(project.name, "new.zpj");
  EXPECT_EQ(theIdeSession.recentProjects.items.front(), folder.Path("p/new.zpj"));
}

TEST_F(ProjectLoadSaveTest, SaveAs_Cancelled_ChangesNothing) {
  Load();
  EXPECT_FALSE(project.Save(true));
  EXPECT_EQ(dialogs.questions.size(), 1u);
  EXPECT_EQ(project.name, "app.zpj");
}

TEST_F(ProjectLoadSaveTest, SaveAs_ElsewhereKeepsTheFilesReachable) {
  Load();
  dialogs.files = {{folder.Path("home/copy.zpj")}};
  EXPECT_TRUE(project.Save(true));
  EXPECT_EQ(project.folder, folder.Path("home"));
  EXPECT_NE(folder.Read("home/copy.zpj").find("\"../p/main.cpp\""), std::string::npos);
  EXPECT_EQ(folder.Read("p/app.zpj"), console);
}

TEST_F(ProjectLoadSaveTest, SaveAs_ThatCantBeWritten_LeavesTheProjectUnderItsName) {
  Load();
  const auto recent = theIdeSession.recentProjects.items;
  dialogs.files = {{folder.Path("none/copy.zpj")}};
  EXPECT_FALSE(project.Save(true));
  EXPECT_EQ(project.name, "app.zpj");
  EXPECT_EQ(project.folder, folder.Path("p"));
  EXPECT_EQ(theIdeSession.recentProjects.items, recent);
}

TEST_F(ProjectLoadSaveTest, Save_Implicit_MakesARealProject) {
  project.OpenSingleFile(folder.Write("p/one.c", ""));
  EXPECT_TRUE(project.Save(false));
  EXPECT_FALSE(project.implicit);
  EXPECT_TRUE(folder.Exists("p/one.zpj"));
}

TEST_F(ProjectLoadSaveTest, Save_ValueTheFormatCantHold_IsRefusedInWords) {
  Load();
  project.modified = true;
  project.linkLibs = "-l\"my lib\"";
  EXPECT_FALSE(project.Save(false));
  EXPECT_EQ(dialogs.texts,
            std::vector<std::string>{"Information: Project file can't hold this value, it was not "
                                     "saved!\n-l\"my lib\""});
  EXPECT_TRUE(project.modified);
  EXPECT_EQ(folder.Read("p/app.zpj"), console);
}

TEST_F(ProjectLoadSaveTest, Save_ValueOf200Characters_IsShownWhole) {
  Load();
  for (const size_t length : {200, 201}) {
    // A quotation mark makes it unwritable.
    const std::string value = "\"" + std::string(length - 1, 'x');
    project.debugOptions.comp = value;
    EXPECT_FALSE(project.Save(false));
    const std::string shown = length == 200 ? value : value.substr(0, 200) + "...";
    EXPECT_TRUE(dialogs.texts.back().ends_with("\n" + shown)) << dialogs.texts.back();
  }
}

TEST_F(ProjectLoadSaveTest, Save_OverlongValue_IsRefusedAndShownShortened) {
  Load();
  project.debugOptions.comp.assign(100000, 'x');
  EXPECT_FALSE(project.Save(false));
  ASSERT_EQ(dialogs.texts.size(), 1u);
  EXPECT_LT(dialogs.texts[0].size(), 400u);
  EXPECT_EQ(folder.Read("p/app.zpj"), console);
}

// Group: files that hold what this project doesn't.

TEST_F(ProjectLoadSaveTest, Save_OverAFileThatWasNotRead_AsksFirst) {
  const std::string other = folder.Write("p/one.zpj", "a project of somebody's");
  project.OpenSingleFile(folder.Write("p/one.c", ""));
  dialogs.answers = {mavro::Answer::cNo, mavro::Answer::cYes};
  EXPECT_FALSE(project.Save(false));
  EXPECT_EQ(folder.Read("p/one.zpj"), "a project of somebody's");
  EXPECT_TRUE(project.implicit);
  EXPECT_TRUE(project.Save(false));
  EXPECT_FALSE(project.implicit);
  EXPECT_EQ(dialogs.texts.size(), 2u);
}

TEST_F(ProjectLoadSaveTest, Save_OverADamagedFile_AsksFirst) {
  for (const std::string& damaged :
       {console.substr(0, console.size() / 2), std::string(100, '\0'), std::string("text")}) {
    folder.Write("p/app.zpj", damaged);
    EXPECT_NE(project.Load(path).Words(), "");
    EXPECT_FALSE(project.Save(false));
    EXPECT_EQ(folder.Read("p/app.zpj"), damaged);
    project.Clear();
  }
  EXPECT_EQ(dialogs.texts.size(), 3u);
}

TEST_F(ProjectLoadSaveTest, Save_OverAFileChangedByOthers_AsksFirst) {
  Load();
  EXPECT_TRUE(project.Save(false));
  folder.Write("p/app.zpj", console + "<!-- mine -->\n");
  EXPECT_FALSE(project.Save(false));
  EXPECT_EQ(dialogs.texts.size(), 1u);
  dialogs.answers = {mavro::Answer::cYes};
  EXPECT_TRUE(project.Save(false));
  EXPECT_TRUE(project.Save(false));
  EXPECT_EQ(dialogs.texts.size(), 2u);
}

TEST_F(ProjectLoadSaveTest, Save_OverAFileThatCantBeRead_AsksFirst) {
  std::filesystem::permissions(folder.Path(), std::filesystem::perms::all);
  std::filesystem::permissions(folder.Path("p"), std::filesystem::perms::all);
  std::filesystem::permissions(path, std::filesystem::perms::owner_write);
  const test::WithoutRights user;
  EXPECT_FALSE(project.Load(path).Ok());
  EXPECT_FALSE(project.Save(false));
  EXPECT_EQ(dialogs.texts.size(), 1u);
}

TEST_F(ProjectLoadSaveTest, Save_OverAnEmptyOrMissingFile_DoesNotAsk) {
  folder.Write("p/app.zpj", "");
  EXPECT_FALSE(project.Load(path).Ok());
  EXPECT_TRUE(project.Save(false));
  std::filesystem::remove(path);
  EXPECT_TRUE(project.Save(false));
  EXPECT_TRUE(dialogs.texts.empty());
}

// Group: closing.

TEST_F(ProjectLoadSaveTest, Close_SavesTheSessionAndClears) {
  Load();
  EXPECT_TRUE(project.Close());
  EXPECT_EQ(shell.Take(), "may close files\nclose files\nclear tree\n");
  EXPECT_FALSE(project.isOpen);
  EXPECT_TRUE(folder.Exists("p/app.zend"));
  EXPECT_TRUE(dialogs.texts.empty());
}

TEST_F(ProjectLoadSaveTest, Close_TabsRefuse_StaysOpen) {
  Load();
  shell.closes = false;
  project.modified = true;
  EXPECT_FALSE(project.Close());
  EXPECT_TRUE(project.isOpen);
  EXPECT_TRUE(dialogs.texts.empty());
}

TEST_F(ProjectLoadSaveTest, Close_Modified_AsksAndSaves) {
  Load();
  project.linkLibs = "-lz";
  project.modified = true;
  dialogs.answers = {mavro::Answer::cYes};
  EXPECT_TRUE(project.Close());
  EXPECT_EQ(dialogs.texts, std::vector<std::string>{cSaveQuestion});
  EXPECT_NE(folder.Read("p/app.zpj").find("-lz"), std::string::npos);
}

TEST_F(ProjectLoadSaveTest, Close_No_LeavesTheFile) {
  Load();
  project.linkLibs = "-lz";
  project.modified = true;
  dialogs.answers = {mavro::Answer::cNo};
  EXPECT_TRUE(project.Close());
  EXPECT_EQ(folder.Read("p/app.zpj"), console);
  EXPECT_TRUE(project.modified);
}

TEST_F(ProjectLoadSaveTest, Close_Cancel_StaysOpen) {
  Load();
  project.modified = true;
  dialogs.answers = {mavro::Answer::cCancel};
  EXPECT_FALSE(project.Close());
  EXPECT_TRUE(project.isOpen);
  EXPECT_EQ(project.Files().size(), 5u);
}

TEST_F(ProjectLoadSaveTest, Close_SaveFails_StaysOpen) {
  Load();
  project.modified = true;
  project.linkLibs = "\"";
  dialogs.answers = {mavro::Answer::cYes};
  EXPECT_FALSE(project.Close());
  EXPECT_TRUE(project.isOpen);
  EXPECT_TRUE(project.modified);
}

TEST_F(ProjectLoadSaveTest, Close_WithoutARealProject_WritesNoSession) {
  project.OpenSingleFile(folder.Write("p/one.c", ""));
  EXPECT_TRUE(project.Close());
  EXPECT_FALSE(folder.Exists("p/one.zend"));
  EXPECT_TRUE(project.Close());
}

TEST_F(ProjectLoadSaveTest, Close_ProjectThatCouldNotBeRead_KeepsItsSession) {
  folder.Write("p/gone.zend", "<file name=\"main.cpp\"/>");
  EXPECT_FALSE(project.Load(folder.Path("p/gone.zpj")).Ok());
  EXPECT_TRUE(project.Close());
  EXPECT_EQ(folder.Read("p/gone.zend"), "<file name=\"main.cpp\"/>");
}

// Group: faults.

TEST_F(ProjectLoadSaveTest, Save_AnyCallFails_OldOrNewFileIsWholeAndChangesStayMarked) {
  Load();
  bool hit = true;
  for (int n = 1; hit; ++n) {
    const std::string before = folder.Read("p/app.zpj");
    project.linkLibs = "-l" + std::to_string(n);
    project.modified = true;
    bool ok;
    {
      const test::FileFaults fault(n, ENOSPC);
      ok = project.Save(false);
      hit = fault.hit;
    }
    const std::string after = folder.Read("p/app.zpj");
    const bool isNew = after.find("\"" + project.linkLibs + "\"") != std::string::npos;
    EXPECT_TRUE(isNew || (!ok && after == before)) << n;
    EXPECT_EQ(project.modified, !ok) << n;
    EXPECT_EQ(shell.Take().starts_with("status "), !ok) << n;
    dialogs.answers = {mavro::Answer::cYes};  // a rename may have been made and reported as failed
    EXPECT_TRUE(project.Save(false)) << n;
    EXPECT_EQ(folder.Names(), (std::vector<std::string>{"home", "p"}));
  }
}

TEST_F(ProjectLoadSaveTest, Save_ReadOnlyFile_FailsAndSaysSo) {
  std::filesystem::permissions(folder.Path(), std::filesystem::perms::all);
  Load();
  std::filesystem::permissions(path, std::filesystem::perms(0444));
  project.modified = true;
  const test::WithoutRights user;
  EXPECT_FALSE(project.Save(false));
  EXPECT_TRUE(project.modified);
  EXPECT_NE(shell.Take().find(path), std::string::npos);
  EXPECT_EQ(folder.Read("p/app.zpj"), console);
}

// Runs `body` in a child that has a file system of 64 kB of its own mounted at `place`; -1 when
// that can't be had here, else what the body answers.
int OnSmallDisk(const std::string& place, const std::function<int()>& body) {
  const pid_t child = fork();
  if (child == 0) {
    if (unshare(CLONE_NEWNS | (geteuid() == 0 ? 0 : CLONE_NEWUSER)) != 0 ||
        mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
        mount("tmpfs", place.c_str(), "tmpfs", 0, "size=64k") != 0)
      _exit(255);
    _exit(body());
  }
  int status = 0;
  waitpid(child, &status, 0);
  const int answer = WIFEXITED(status) ? WEXITSTATUS(status) : 254;
  return answer == 255 ? -1 : answer;
}

void FillDisk(const std::string& path) {
  std::ofstream file(path, std::ios::binary);
  const std::string block(4096, 'x');
  while (file.write(block.data(), static_cast<std::streamsize>(block.size())).flush()) {
  }
}

TEST_F(ProjectLoadSaveTest, Save_FullDisk_KeepsTheOldFile) {
  const std::string disk = folder.Folder("disk");
  const int answer = OnSmallDisk(disk, [&] {
    const std::string file = folder.Write("disk/app.zpj", console);
    Project full;
    if (!full.Load(file).Ok()) return 1;
    for (int i = 0; i < 1000; ++i) full.AddFile("some/file" + std::to_string(i) + ".c");
    full.modified = true;
    FillDisk(disk + "/filler");
    if (full.Save(false)) return 2;
    if (!full.modified) return 3;
    if (folder.Read("disk/app.zpj") != console) return 4;
    std::filesystem::remove(disk + "/filler");
    if (!full.Save(false)) return 5;
    return full.modified ? 6 : 0;
  });
  if (answer < 0) GTEST_SKIP() << "no file system can be mounted here";
  EXPECT_EQ(answer, 0);
}

}  // namespace
}  // namespace zendry
