#include "project/SessionFile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "Privileges.h"
#include "ProjectShell.h"
#include "TempFolder.h"
#include "project/Project.h"

namespace zendry {
namespace {

using Steps = std::vector<SessionStep>;

Steps StepsOf(std::string_view text) {
  return ReadSessionText(text).steps;
}

TEST(SessionText, FilesAndMode_Layout) {
  EXPECT_EQ(
      SessionText({1, {{"src/a.cpp", 12}, {"b.h", 0}}, "/p/b.h"}),
      "<state>\n\t<mode opt=\"dbg\"/>\n\t<open>\n\t\t<file name=\"src/a.cpp\" id=\"12\"/>\n"
      "\t\t<file name=\"b.h\" id=\"0\"/>\n\t\t<active name=\"/p/b.h\"/>\n\t</open>\n</state>\n");
}

TEST(SessionText, NothingOpen_HasNoActive) {
  EXPECT_EQ(SessionText({}), "<state>\n\t<mode opt=\"rel\"/>\n\t<open>\n\t</open>\n</state>\n");
}

TEST(SessionText, PathsTheFormatCantHold_AreLeftOut) {
  const std::string tooLong(600, 'x');
  EXPECT_EQ(SessionText({0, {{"a\"b.c", 1}, {tooLong, 1}}, tooLong}), SessionText({}));
}

TEST(ReadSessionText, GoesByFirstLetters) {
  const Steps steps = StepsOf(
      "<state><mode obj=\"dbg\"/><open><f name=\"a.c\" i=\"3\"/><act "
      "n=\"/p/a.c\"/></open></state>");
  EXPECT_EQ(steps, (Steps{{SessionStep::cSetMode, "", 0, 1},
                          {SessionStep::cOpenFile, "a.c", 3, 0},
                          {SessionStep::cActivate, "/p/a.c", 0, 0}}));
}

TEST(ReadSessionText, OtherMode_IsRelease) {
  EXPECT_EQ(StepsOf("<mode/>"), (Steps{{SessionStep::cSetMode, "", 0, 0}}));
}

TEST(ReadSessionText, WrittenText_GivesTheSame) {
  const std::string text = SessionText({1, {{"a b>.c", 7}, {"x\n.c", 1}}, "/p/ä.c"});
  const Steps steps = StepsOf(text);
  ASSERT_EQ(steps.size(), 4u);
  EXPECT_EQ(SessionText({steps[0].mode,
                         {{steps[1].path, steps[1].line}, {steps[2].path, steps[2].line}},
                         steps[3].path}),
            text);
}

TEST(ReadSessionText, BadText_IsHarmless) {
  EXPECT_TRUE(StepsOf("").empty());
  EXPECT_TRUE(StepsOf(std::string(100000, '\0')).empty());
  EXPECT_TRUE(StepsOf(std::string(1000000, 'x')).empty());
  EXPECT_TRUE(StepsOf("<x/><y n=\"1\"></z>\r\n").empty());
  const std::string text = SessionText({1, {{"a.c", 7}}, "/p/a.c"});
  for (size_t length = 0; length <= text.size(); ++length) ReadSessionText(text.substr(0, length));
}

TEST(ReadSessionText, ValueThatIsTooLong_IsPassedOverAndSaid) {
  const auto text = [](size_t length) {
    return "<state><f n=\"" + std::string(length, 'x') + "\"/><f n=\"b.c\"/></state>";
  };
  EXPECT_EQ(ReadSessionText(text(508)).steps.size(), 2u);
  EXPECT_EQ(ReadSessionText(text(508)).damage, "");
  EXPECT_EQ(ReadSessionText(text(509)).steps, (Steps{{SessionStep::cOpenFile, "b.c", -1, 0}}));
  EXPECT_EQ(ReadSessionText(text(509)).damage,
            "left out is a value of more than some 500 characters: <f n=\"" + std::string(34, 'x') +
                "...");
}

TEST(ReadSessionText, Damage_IsDistinguishedFromWholeText) {
  const std::string text = SessionText({1, {{"a.c", 7}}, "/p/a.c"});
  EXPECT_EQ(ReadSessionText(text).damage, "");
  EXPECT_EQ(ReadSessionText("").damage, "");
  const size_t last = text.rfind('>');
  EXPECT_EQ(ReadSessionText(text.substr(0, last)).damage, "") << "all is there";
  for (size_t length = 1; length < last; ++length)
    EXPECT_EQ(ReadSessionText(text.substr(0, length)).damage, "the session is damaged") << length;
  EXPECT_EQ(ReadSessionText(text + '\0').damage, "the session is damaged");
}

class SessionFileTest : public testing::Test {
 protected:
  SessionFileTest() {
    project.Init(folder.Path("p/p.zpj"), cConsole);
    project.SetShell(&shell);
    folder.Folder("p");
    path = project.SessionPath();
  }
  std::string Loaded(std::string_view text) {
    folder.Write("p/p.zend", text);
    EXPECT_TRUE(LoadSession(path, project, shell).Ok());
    return shell.Take();
  }

  test::TempFolder folder;
  test::ProjectShell shell;
  Project project;
  std::string path;
};

TEST_F(SessionFileTest, SaveAndLoad_RestoreEverything) {
  const std::string a = folder.Write("p/src/a.cpp", "");
  const std::string b = folder.Write("b.h", "");
  project.SetMode(cDebug);
  shell.openFiles = {{a, 12}, {b, 0}};
  shell.activeFile = b;
  ASSERT_TRUE(SaveSession(path, project, shell).Ok());
  EXPECT_NE(folder.Read("p/p.zend").find("\t\t<file name=\"../b.h\" id=\"0\"/>\n"),
            std::string::npos);
  project.SetMode(cRelease);
  shell.Take();
  EXPECT_EQ(LoadSession(path, project, shell).Words(), "");
  EXPECT_EQ(shell.Take(), "mode 1\nopen " + a + " 12\nopen " + b + " 0\nactivate " + b + "\n");
}

TEST_F(SessionFileTest, Load_FilesThatAreGoneOrFolders_ArePassedOver) {
  folder.Folder("p/sub");
  ASSERT_EQ(mkfifo(folder.Path("p/pipe.c").c_str(), 0600), 0);
  EXPECT_EQ(
      Loaded("<file n=\"gone.c\"/><file n=\"sub\"/><file n=\"pipe.c\"/><file/><file n=\"\"/>"), "");
}

TEST_F(SessionFileTest, Load_FileThatTheShellKeepsBack_IsNotOpened) {
  class Keeping : public test::ProjectShell {
   public:
    bool MayReopen(const std::string& path, int line) override {
      asked += path + " " + std::to_string(line) + ";";
      return path.ends_with("b.c");
    }
    std::string asked;
  };
  const std::string a = folder.Write("p/a.c", ""), b = folder.Write("p/b.c", "");
  folder.Write("p/p.zend", "<file n=\"a.c\" i=\"3\"/><file n=\"b.c\" i=\"4\"/>");
  Keeping keeping;
  EXPECT_TRUE(LoadSession(path, project, keeping).Ok());
  EXPECT_EQ(keeping.asked, a + " 3;" + b + " 4;");
  EXPECT_EQ(keeping.Take(), "open " + b + " 4\n");
}

TEST_F(SessionFileTest, Load_NulInAName_OpensNothing) {
  folder.Write("p/a.c", "");
  EXPECT_EQ(Loaded(std::string("<file n=\"a.c\0b\"/>", 18)), "");
}

TEST_F(SessionFileTest, Load_NegativeLine_LeavesTheCaret) {
  const std::string a = folder.Write("p/a.c", "");
  EXPECT_EQ(Loaded("<file n=\"a.c\" i=\"-5\"/>"), "open " + a + " 0\n");
}

TEST_F(SessionFileTest, Load_PathThatCantBeNormalised_IsHarmless) {
  EXPECT_EQ(Loaded("<f n=\"C:/../x.c\"/><f n=\"../../../../../../../../nope.c\"/>"), "");
}

TEST_F(SessionFileTest, Load_Missing_ChangesNothing) {
  EXPECT_EQ(LoadSession(path, project, shell).Words(), "");
  EXPECT_EQ(shell.Take(), "");
}

TEST_F(SessionFileTest, Save_NameThatDiffersInCaseOnly_IsStoredWhole) {
  shell.openFiles = {{folder.Path("P/a.c"), 1}};
  ASSERT_TRUE(SaveSession(path, project, shell).Ok());
  EXPECT_NE(folder.Read("p/p.zend").find("\"" + folder.Path("P/a.c") + "\""), std::string::npos);
}

TEST_F(SessionFileTest, Save_LinkInItsPlace_IsNotFollowed) {
  const std::string victim = folder.Write("victim", "mine");
  ASSERT_EQ(symlink(victim.c_str(), path.c_str()), 0);
  EXPECT_FALSE(SaveSession(path, project, shell).Ok());
  EXPECT_EQ(folder.Read("victim"), "mine");
}

TEST_F(SessionFileTest, Save_SameText_LeavesTheFileAlone) {
  ASSERT_TRUE(SaveSession(path, project, shell).Ok());
  struct stat before, after;
  ASSERT_EQ(stat(path.c_str(), &before), 0);
  ASSERT_TRUE(SaveSession(path, project, shell).Ok());
  ASSERT_EQ(stat(path.c_str(), &after), 0);
  EXPECT_EQ(before.st_ino, after.st_ino);
}

TEST_F(SessionFileTest, Load_Damaged_RestoresWhatIsThereAndSaysSo) {
  const std::string a = folder.Write("p/a.c", "");
  folder.Write("p/p.zend", "<state>\n<file n=\"a.c\"/>\n<fi");
  EXPECT_EQ(LoadSession(path, project, shell).doubt, path + ": the session is damaged");
  EXPECT_EQ(shell.Take(), "open " + a + " 0\n");
}

TEST_F(SessionFileTest, Load_NoRightToRead_SaysSo) {
  folder.Write("p/p.zend", SessionText({}));
  std::filesystem::permissions(folder.Path(), std::filesystem::perms::all);
  std::filesystem::permissions(path, std::filesystem::perms::none);
  const test::WithoutRights user;
  EXPECT_EQ(LoadSession(path, project, shell).error, path + ": Permission denied");
}

TEST_F(SessionFileTest, Save_DamagedOne_IsKeptBesideTheNewOne) {
  folder.Write("p/p.zend", "<state>\n<fi");
  EXPECT_EQ(SaveSession(path, project, shell).error, "");
  EXPECT_EQ(folder.Read("p/p.zend.bad"), "<state>\n<fi");
  EXPECT_EQ(folder.Read("p/p.zend"), SessionText({}));
  std::filesystem::remove(path + ".bad");
  folder.Write("p/p.zend", SessionText({1, {}, ""}));
  EXPECT_EQ(SaveSession(path, project, shell).error, "");
  EXPECT_FALSE(folder.Exists("p/p.zend.bad")) << "a sound one is replaced";
}

TEST_F(SessionFileTest, Save_DamagedOneThatCannotBeKept_StaysAndIsSaid) {
  const std::string victim = folder.Write("victim", "mine");
  ASSERT_EQ(symlink(victim.c_str(), (path + ".bad").c_str()), 0);
  folder.Write("p/p.zend", "<state>\n<fi");
  EXPECT_EQ(SaveSession(path, project, shell).error,
            path + ".bad: is a link. The session is not kept.");
  EXPECT_EQ(folder.Read("victim"), "mine");
  EXPECT_EQ(folder.Read("p/p.zend"), "<state>\n<fi");
}

TEST_F(SessionFileTest, Save_OneThatCannotBeRead_StaysAsItIs) {
  folder.Write("p/p.zend", SessionText({1, {}, ""}));
  std::filesystem::permissions(folder.Path(), std::filesystem::perms::all);
  std::filesystem::permissions(folder.Path("p"), std::filesystem::perms::all);
  std::filesystem::permissions(path, std::filesystem::perms(0222));
  {
    const test::WithoutRights user;
    EXPECT_EQ(SaveSession(path, project, shell).error,
              path + ": Permission denied. The session is not kept.");
  }
  EXPECT_EQ(folder.Read("p/p.zend"), SessionText({1, {}, ""}));
}

TEST_F(SessionFileTest, Save_NoFolder_FailsInWords) {
  EXPECT_FALSE(SaveSession(folder.Path("none/p.zend"), project, shell).Ok());
  EXPECT_TRUE(SaveSession("", project, shell).Ok());
}

}  // namespace
}  // namespace zendry
