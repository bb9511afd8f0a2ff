#include "WindresRun.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Privileges.h"
#include "SmallDisk.h"
#include "TempFolder.h"
#include "WindresPreprocess.h"

namespace zendry {
namespace {

// Scripts in a folder of their own, compiled with the machine's preprocessor.
struct WindresRun : testing::Test {
  test::TempFolder folder;

  WindresResult Compile(const std::string& script, WindresOptions options = {}) {
    options.input = folder.Write("a.rc", script);
    options.output = folder.Path("a.o");
    return RunWindres(options, "gcc");
  }
  // Messages with the folder's path left out.
  std::string Messages(const std::string& script, const WindresOptions& options = {}) {
    const WindresResult result = Compile(script, options);
    EXPECT_FALSE(result.ok);
    EXPECT_FALSE(folder.Exists("a.o"));
    std::string text = result.messages;
    for (size_t at; (at = text.find(folder.Path() + "/")) != std::string::npos;)
      text.erase(at, folder.Path().size() + 1);
    return text;
  }
  bool ObjectHolds(const std::string& bytes) {
    return folder.Read("a.o").find(bytes) != std::string::npos;
  }
};

TEST_F(WindresRun, ScriptWithCommentsMacrosAndIncludes_IsCompiled) {
  folder.Write("ids.h", "#define LOGO 7 // its id\n");
  WindresOptions options;
  options.defines = {"WITH_TEXT=\"there\""};
  const WindresResult result = Compile(
      "#include \"ids.h\"\n/* a\ncomment */\n#ifdef WITH_TEXT\nLOGO RCDATA { WITH_TEXT }\n#endif\n",
      options);
  EXPECT_TRUE(result.ok) << result.messages;
  EXPECT_EQ(result.messages, "");
  EXPECT_TRUE(ObjectHolds("there"));
  EXPECT_TRUE(ObjectHolds("mavro_resource_RCDATA_7"));
}

TEST_F(WindresRun, MacroOfResourceScripts_IsDefined) {
  EXPECT_TRUE(Compile("#ifndef RC_INVOKED\n#error\n#endif\n").ok);
}

TEST_F(WindresRun, NamesThatTheCompilerDefines_AreNames) {
  EXPECT_TRUE(Compile("linux RCDATA {1}\nunix RCDATA {2}\n").ok);
  EXPECT_TRUE(ObjectHolds("linux"));
}

TEST_F(WindresRun, EmptyScript_IsAnObjectWithoutResources) {
  EXPECT_TRUE(Compile("").ok);
  EXPECT_EQ(folder.Read("a.o").substr(0, 4),
            "\x7F"
            "ELF");
}

TEST_F(WindresRun, ResourceFiles_LieBesideTheScriptThatNamesThem) {
  folder.Write("sub/b.rc", "1 RCDATA \"b.txt\"\n");
  folder.Write("sub/b.txt", "content of b");
  EXPECT_TRUE(Compile("#include \"sub/b.rc\"\n").ok);
  EXPECT_TRUE(ObjectHolds("content of b"));
}

TEST_F(WindresRun, ResourceFiles_AreLookedForInTheSearchFolders) {
  folder.Write("pictures/b.txt", "content of b");
  WindresOptions options;
  options.includeFolders = {folder.Path("none"), folder.Path("pictures")};
  EXPECT_TRUE(Compile("1 RCDATA \"b.txt\"\n", options).ok);
  EXPECT_TRUE(ObjectHolds("content of b"));
}

TEST_F(WindresRun, SameScript_SameBytes) {
  Compile("1 RCDATA {\"x\"}\n2 RCDATA {\"y\"}\n");
  const std::string first = folder.Read("a.o");
  Compile("1 RCDATA {\"x\"}\n2 RCDATA {\"y\"}\n");
  EXPECT_EQ(folder.Read("a.o"), first);
}

TEST_F(WindresRun, Verbose_PrintsThePreprocessorsCommand) {
  WindresOptions options;
  options.isVerbose = true;
  EXPECT_EQ(Compile("", options).messages.substr(0, 12), "gcc -E -xc -");
}

TEST_F(WindresRun, MissingResourceFile_IsNamedWithItsLine) {
  EXPECT_EQ(Messages("\n1 ICON \"none.ico\"\n"),
            "a.rc:2: can't read none.ico: No such file or directory\n");
}

TEST_F(WindresRun, MissingInclude_IsNamedWithItsLine) {
  EXPECT_EQ(Messages("\n#include \"none.h\"\n"), "a.rc:2: none.h: No such file or directory\n");
}

TEST_F(WindresRun, WrongSyntaxInAnInclude_IsNamedWithItsOwnLine) {
  folder.Write("ids.h", "\n\n1 RCDATA {\n+}\n");
  EXPECT_EQ(Messages("#include \"ids.h\"\n"),
            "ids.h:4: expected a number, a text or END instead of \"+\"\n");
}

TEST_F(WindresRun, IncludeOfItself_EndsWithAMessage) {
  const std::string messages = Messages("#include \"a.rc\"\n");
  EXPECT_EQ(messages.rfind("a.rc:1: #include nested depth", 0), 0u) << messages;
  EXPECT_EQ(messages.find('\n'), messages.size() - 1);
}

TEST_F(WindresRun, DuplicateOverTwoFiles_NamesBothLines) {
  folder.Write("b.rc", "\n1 RCDATA {1}\n");
  EXPECT_EQ(Messages("#include \"b.rc\"\n1 RCDATA {2}\n"),
            "a.rc:2: RCDATA 1 is there already\nb.rc:2: here it is for the first time\n");
}

TEST_F(WindresRun, HugeFile_IsRefusedUnread) {
  const std::string huge = folder.Write("huge.bin", "");
  ASSERT_EQ(truncate(huge.c_str(), off_t{1} << 40), 0);
  EXPECT_EQ(Messages("1 RCDATA \"huge.bin\"\n"), "a.rc:1: the resources are larger than 1 GB\n");
}

TEST_F(WindresRun, FolderOrPipeAsResource_IsRefused) {
  folder.Folder("b.ico");
  EXPECT_EQ(Messages("1 ICON \"b.ico\"\n"), "a.rc:1: b.ico is no regular file\n");
  ASSERT_EQ(mkfifo(folder.Path("c.ico").c_str(), 0600), 0);
  EXPECT_EQ(Messages("1 ICON \"c.ico\"\n"), "a.rc:1: c.ico is no regular file\n");
}

TEST_F(WindresRun, ScriptInUtf16_IsRefusedInWords) {
  EXPECT_EQ(Messages("\xFF\xFE"
                     "1"),
            "a.rc:1: the script is UTF-16; scripts are UTF-8 here\n");
}

TEST_F(WindresRun, MissingScript_IsNamed) {
  WindresOptions options;
  options.input = folder.Path("none.rc");
  options.output = folder.Path("a.o");
  const WindresResult result = RunWindres(options, "gcc");
  EXPECT_FALSE(result.ok);
  EXPECT_EQ(result.messages, "windres: " + options.input + ": No such file or directory\n");
}

TEST_F(WindresRun, ObjectInPlaceOfTheScript_IsRefusedAndTheScriptKept) {
  WindresOptions options;
  options.input = options.output = folder.Write("a.rc", "1 RCDATA {1}\n");
  EXPECT_FALSE(RunWindres(options, "gcc").ok);
  EXPECT_EQ(folder.Read("a.rc"), "1 RCDATA {1}\n");
}

TEST_F(WindresRun, FailedRun_LeavesNoObjectNotEvenAnOldOne) {
  EXPECT_TRUE(Compile("1 RCDATA {1}\n").ok);
  EXPECT_FALSE(Compile("1 RCDATA {\n").ok);
  EXPECT_EQ(folder.Names(), std::vector<std::string>{"a.rc"});
}

TEST_F(WindresRun, ObjectThatCantBeWrittenWhole_IsNoObject) {
  EXPECT_TRUE(Compile("1 RCDATA {1}\n").ok);
  folder.Write("large.bin", std::string(100'000, 'x'));
  const int status = test::RunInChild([&] {
    signal(SIGXFSZ, SIG_IGN);
    const rlimit most = {50'000, 50'000};
    setrlimit(RLIMIT_FSIZE, &most);
    const WindresResult result = Compile("1 RCDATA \"large.bin\"\n");
    return !result.ok && result.messages.ends_with("a.o: File too large\n") ? 0 : 1;
  });
  EXPECT_EQ(status, 0);
  EXPECT_EQ(folder.Names(), (std::vector<std::string>{"a.rc", "large.bin"}));
}

TEST_F(WindresRun, ResourceThatCantBeRead_LeavesNoHalfWrittenObject) {
  EXPECT_TRUE(Compile("1 RCDATA {1}\n").ok);
  folder.Write("first.bin", std::string(100'000, 'x'));
  const std::string second = folder.Write("second.bin", "content");
  ASSERT_EQ(chmod(second.c_str(), 0), 0);
  ASSERT_EQ(chmod(folder.Path().c_str(), 0777), 0);
  ASSERT_EQ(chmod(folder.Path("a.rc").c_str(), 0666), 0);
  {
    const test::WithoutRights user;
    EXPECT_FALSE(Compile("1 RCDATA \"first.bin\"\n2 RCDATA \"second.bin\"\n").ok);
  }
  EXPECT_EQ(folder.Names(), (std::vector<std::string>{"a.rc", "first.bin", "second.bin"}));
}

TEST_F(WindresRun, FolderThatCantBeWritten_IsNamed) {
  WindresOptions options;
  options.input = folder.Write("a.rc", "");
  options.output = folder.Path("none/a.o");
  EXPECT_EQ(RunWindres(options, "gcc").messages,
            "windres: " + options.output + ": No such file or directory\n");
}

TEST_F(WindresRun, MissingPreprocessor_IsNamed) {
  WindresOptions options;
  options.preprocessor = {folder.Path("none")};
  EXPECT_EQ(Messages("1 RCDATA {1}\n", options),
            "windres: none can't be started: No such file or directory\n");
}

TEST_F(WindresRun, PreprocessorThatFailsMute_IsNamed) {
  WindresOptions options;
  options.preprocessor = {"/bin/false"};
  EXPECT_EQ(Messages("1 RCDATA {1}\n", options), "windres: /bin/false failed without a word\n");
}

TEST(WindresMessages, PlainMessages_KeepErrorsAndWarningsOnly) {
  EXPECT_EQ(PlainMessages("In file included from b.rc:1:\n"
                          "a.rc:2:10: fatal error: x.h: No such file\n"
                          "    2 | #include \"x.h\"\n"
                          "compilation terminated.\n"),
            "a.rc:2: x.h: No such file\n");
  EXPECT_EQ(PlainMessages("a:3: b.rc:2:1: warning: odd\n"), "a:3: b.rc:2: warning: odd\n");
}

TEST(WindresMessages, PlainMessages_UnknownText_StaysWhole) {
  EXPECT_EQ(PlainMessages("gcc: out of memory\n"), "gcc: out of memory\n");
}

}  // namespace
}  // namespace zendry
