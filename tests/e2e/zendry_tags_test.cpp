#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include "Privileges.h"
#include "SmallDisk.h"
#include "TempFolder.h"
#include "ZendryMakeRun.h"

// zendry-tags as a user starts it.

namespace {

namespace fs = std::filesystem;
using test::Ended;

class ZendryTags : public testing::Test {
 protected:
  Ended Run(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), ZENDRY_TAGS);
    return test::Program(arguments, home.Path()).Wait();
  }

  static std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream source(text);
    for (std::string line; std::getline(source, line);) lines.push_back(line);
    return lines;
  }

  // The lines of tags.
  static std::vector<std::string> Tags(const std::string& text) {
    std::vector<std::string> lines = Lines(text);
    std::erase_if(lines, [](const std::string& line) { return line.starts_with("!_TAG_"); });
    return lines;
  }

  std::string Source(const std::string& text =
                         "class Box {\npublic:\n  int size() const;\n};\nint count;\n") const {
    return folder.Write("box.cpp", text);
  }

  test::TempFolder folder;
  test::TempFolder home;
};

TEST_F(ZendryTags, Source_GivesItsTagsOnStandardOutput) {
  const std::string source = Source();
  const Ended ended = Run({source});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.err, "");
  const std::vector<std::string> tags = Tags(ended.out);
  ASSERT_EQ(tags.size(), 3u) << ended.out;
  EXPECT_TRUE(tags[0].starts_with("Box\t" + source + "\t1;\"\tc")) << tags[0];
  EXPECT_TRUE(tags[1].starts_with("count\t" + source + "\t5;\"\tv")) << tags[1];
  EXPECT_TRUE(tags[2].starts_with("size\t" + source + "\t3;\"\tp")) << tags[2];
  EXPECT_NE(tags[2].find("\tclass:Box"), std::string::npos) << tags[2];
  EXPECT_NE(tags[2].find("\taccess:public"), std::string::npos) << tags[2];
}

TEST_F(ZendryTags, Folder_IsWalkedWhenAskedFor) {
  folder.Write("a/b/c.cpp", "int deep;\n");
  folder.Write("a/d.h", "int flat;\n");
  folder.Write("a/README", "int none;\n");
  folder.Write("a/e.txt", "int none;\n");
  const Ended ended = Run({"-R", folder.Path("a")});
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_EQ(Tags(ended.out).size(), 2u) << ended.out;
  EXPECT_EQ(Run({folder.Path("a")}).status, 1);
  EXPECT_EQ(Run({"-R", folder.Path("missing")}).status, 1);
}

TEST_F(ZendryTags, List_NamesSources) {
  folder.Write("a.cpp", "int one;\n");
  folder.Write("b.cpp", "int two;\n");
  folder.Write("list", folder.Path("a.cpp") + "\n\n" + folder.Path("b.cpp"));
  const Ended ended = Run({"-L", folder.Path("list")});
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_EQ(Tags(ended.out).size(), 2u) << ended.out;
  EXPECT_EQ(Run({"-L", folder.Path("missing")}).status, 1);
  EXPECT_EQ(Run({}).status, 2);
}

TEST_F(ZendryTags, File_HasNoLimits) {
  std::string text;
  for (int i = 0; i < 3000; ++i) text += "int a" + std::to_string(i) + ";\n";
  text += "//" + std::string(100000, 'x') + "\nint last;\n";
  const Ended ended = Run({Source(text)});
  EXPECT_EQ(ended.err, "");
  EXPECT_EQ(Tags(ended.out).size(), 3001u);
}

TEST_F(ZendryTags, Output_IsAFileThatEditorsTake) {
  const Ended ended = Run({Source("int b;\nint a;\nint _hidden;\nint B;\nint a2;\n#define a1\n")});
  const std::vector<std::string> lines = Lines(ended.out);
  ASSERT_GT(lines.size(), 3u);
  EXPECT_TRUE(lines[0].starts_with("!_TAG_"));
  EXPECT_NE(ended.out.find("!_TAG_FILE_FORMAT\t2\t"), std::string::npos);
  EXPECT_NE(ended.out.find("!_TAG_FILE_SORTED\t1\t"), std::string::npos);
  EXPECT_TRUE(std::is_sorted(lines.begin(), lines.end())) << ended.out;
  for (const std::string& line : lines)
    EXPECT_GE(std::count(line.begin(), line.end(), '\t'), 2) << line;
  EXPECT_TRUE(ended.out.ends_with('\n'));
}

TEST_F(ZendryTags, Vim_JumpsToATag) {
  if (!fs::exists("/usr/bin/vim")) GTEST_SKIP() << "there is no vim";
  const std::string source = Source(), tags = folder.Path("tags"), line = folder.Path("line");
  ASSERT_EQ(Run({"-o", tags, source}).status, 0);
  const Ended ended =
      test::Program({"/usr/bin/vim", "-N", "-u", "NONE", "-es", "-c", "set tags=" + tags, "-c",
                     "tag size", "-c", "call writefile([line('.')], '" + line + "')", "-c", "qa!"},
                    home.Path())
          .Wait();
  EXPECT_EQ(folder.Read("line"), "3\n") << ended.err;
}

TEST_F(ZendryTags, SeveralSources_StandInOneSortedFile) {
  const std::string first = folder.Write("z.cpp", "int a;\n"),
                    second = folder.Write("b.h", "int c;\nint b;\n");
  const std::vector<std::string> tags = Tags(Run({first, second}).out);
  ASSERT_EQ(tags.size(), 3u);
  EXPECT_TRUE(tags[0].starts_with("a\t" + first));
  EXPECT_TRUE(tags[1].starts_with("b\t" + second));
}

// Lines are sorted by eight bytes of their names at a time, names of 64 bytes and more as wholes;
// then by the sources, then by the digits of their numbers.
TEST_F(ZendryTags, Lines_StandInTheOrderOfTheirBytes) {
  std::string text;
  for (const size_t length : {1u, 2u, 7u, 8u, 9u, 15u, 16u, 17u, 63u, 64u, 65u, 72u, 73u, 200u})
    for (const char* end : {"", "_", "A", "z", "0"})
      text += "int " + std::string(length, 'n') + end + ";\n";
  for (int line = 1; line < 1002; ++line) text += "void same(int);\n";
  const std::string first = folder.Write("a.cpp", text), second = folder.Write("a-b.cpp", text),
                    third = folder.Write("a.h", text);
  const std::vector<std::string> tags = Tags(Run({third, first, second, first}).out);
  EXPECT_EQ(tags.size(), 3 * (14 * 5 + 1001u));
  EXPECT_EQ(std::adjacent_find(tags.begin(), tags.end(), std::greater_equal<>()), tags.end())
      << "in order, each once";
}

// Names have no limit.
TEST_F(ZendryTags, LongNamesThatBeginTheSame_StandInTheirOrder) {
  const std::string name(1'000'000, 'n');
  const std::string source = Source("int " + name + "b;\nint " + name + "a;\nint " + name + ";\n");
  const std::vector<std::string> tags = Tags(Run({source, source}).out);
  ASSERT_EQ(tags.size(), 3u);
  EXPECT_TRUE(tags[0].starts_with(name + '\t'));
  EXPECT_TRUE(tags[1].starts_with(name + "a\t"));
  EXPECT_TRUE(tags[2].starts_with(name + "b\t"));
}

TEST_F(ZendryTags, LongLinesThatAreTheSame_StandOnceAndInTheirOrder) {
  std::string parameters = "int p0";
  for (int i = 1; parameters.size() < 4'000'000; ++i) parameters += ", int p" + std::to_string(i);
  const std::string start = "void f(" + parameters;
  const std::string source = Source(start + ", int z);\n" + start + ", int a);\n");
  const Ended ended = Run({source, source});
  EXPECT_EQ(ended.status, 0) << ended.err;
  const std::vector<std::string> tags = Tags(ended.out);
  ASSERT_EQ(tags.size(), 2u);
  EXPECT_LT(tags[0], tags[1]);
}

TEST_F(ZendryTags, NamedFile_IsWrittenAndOutputStaysEmpty) {
  const Ended ended = Run({"-o", folder.Path("tags"), Source()});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.out, "");
  EXPECT_EQ(Tags(folder.Read("tags")).size(), 3u);
}

TEST_F(ZendryTags, OlderTagsFile_IsReplaced) {
  ASSERT_EQ(Run({"-o", folder.Path("tags"), Source()}).status, 0);
  EXPECT_EQ(Run({"-o", folder.Path("tags"), Source("int a;\n")}).status, 0);
  EXPECT_EQ(Tags(folder.Read("tags")).size(), 1u);
}

TEST_F(ZendryTags, FileThatIsNoTagsFile_IsNotReplaced) {
  const std::string source = Source();
  const Ended ended = Run({"-o", source, source});
  EXPECT_EQ(ended.status, 1);
  EXPECT_NE(ended.err.find(source), std::string::npos);
  EXPECT_TRUE(folder.Read("box.cpp").starts_with("class Box"));
}

TEST_F(ZendryTags, MissingSource_IsNamedAndTheRestGoesOn) {
  const Ended ended = Run({folder.Path("gone.cpp"), Source()});
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.err, "zendry-tags: " + folder.Path("gone.cpp") + ": No such file or directory\n");
  EXPECT_EQ(Tags(ended.out).size(), 3u);
}

TEST_F(ZendryTags, FolderPipeOrDevice_IsNamedAndNeverBlocks) {
  const std::string dir = folder.Folder("dir.cpp"), pipe = folder.Path("pipe.cpp");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  const Ended ended = Run({dir, pipe, "/dev/zero", "--language", "C", Source()});
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.err,
            "zendry-tags: " + dir + ": is a folder\nzendry-tags: " + pipe +
                ": is not a regular file\nzendry-tags: /dev/zero: is not a regular file\n");
}

TEST_F(ZendryTags, SourceWithoutReadRight_IsNamed) {
  const std::string source = Source();
  fs::permissions(folder.Path(), fs::perms::owner_all | fs::perms::others_exec);
  fs::permissions(source, fs::perms::none);
  const int status = test::RunInChild([&] {
    if (geteuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0)) return 99;
    execl(ZENDRY_TAGS, ZENDRY_TAGS, source.c_str(), nullptr);
    return 98;
  });
  EXPECT_EQ(WEXITSTATUS(status), 1);
}

TEST_F(ZendryTags, NameThatTellsNoLanguage_IsPassedOver) {
  const Ended ended = Run({folder.Write("a.txt", "int a;\n"), Source()});
  EXPECT_EQ(ended.status, 0);
  EXPECT_NE(ended.err.find("a.txt"), std::string::npos);
  EXPECT_EQ(Tags(ended.out).size(), 3u);
}

TEST_F(ZendryTags, Language_IsThatOfEverySource) {
  const Ended ended =
      Run({"--language", "java", folder.Write("a.java", "package p;\nclass A { int m; }\n")});
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_NE(ended.out.find("\tf\t"), std::string::npos) << ended.out;
}

TEST_F(ZendryTags, UnknownLanguage_IsAWrongCommandLine) {
  EXPECT_EQ(Run({"--language", "Cobol", Source()}).status, 2);
  EXPECT_EQ(Run({}).status, 2);
  EXPECT_EQ(Run({"--wrong", Source()}).status, 2);
}

TEST_F(ZendryTags, Locals_AreWrittenWhenAskedFor) {
  const std::string source = Source("void f() {\n  int local;\n}\n");
  EXPECT_EQ(Run({source}).out.find("local"), std::string::npos);
  EXPECT_NE(Run({"--locals", source}).out.find("local\t"), std::string::npos);
}

TEST_F(ZendryTags, SourceThatTheParserLogsAbout_IsNamed) {
  const std::string source = Source("int a;\nvoid f() {\n");
  const Ended ended = Run({source});
  EXPECT_EQ(ended.status, 0);
  EXPECT_NE(ended.err.find(source + ": failed to find match for {"), std::string::npos)
      << ended.err;
}

TEST_F(ZendryTags, HelpAndVersion_AreShown) {
  EXPECT_EQ(Run({"--help"}).status, 0);
  EXPECT_TRUE(Run({"--version"}).out.starts_with("zendry-tags "));
}

TEST_F(ZendryTags, FullDisk_LeavesTheOldTagsFile) {
  const std::string source = Source();
  std::string big;
  for (int i = 0; i < 1000; ++i) big += "int variable" + std::to_string(i) + ";\n";
  const std::string many = folder.Write("many.cpp", big);
  const std::string disk = folder.Folder("disk");
  const int answer = test::RunOnSmallDisk(disk, "16k", [&] {
    if (Run({"-o", disk + "/tags", source}).status != 0) return 1;
    std::ifstream before(disk + "/tags");
    const std::string old{std::istreambuf_iterator<char>(before), {}};
    const Ended ended = Run({"-o", disk + "/tags", many});
    if (ended.status != 1 || ended.err.empty()) return 2;
    std::ifstream after(disk + "/tags");
    return std::string{std::istreambuf_iterator<char>(after), {}} == old ? 0 : 3;
  });
  if (answer == test::cCannotMount) GTEST_SKIP() << "nobody may mount";
  EXPECT_EQ(answer, 0);
}

TEST_F(ZendryTags, FullStandardOutput_IsAFailure) {
  const std::string source = Source();
  const int status = test::RunInChild([&] {
    const int full = open("/dev/full", O_WRONLY);
    const int quiet = open("/dev/null", O_WRONLY);
    dup2(full, 1);
    dup2(quiet, 2);
    execl(ZENDRY_TAGS, ZENDRY_TAGS, source.c_str(), nullptr);
    return 98;
  });
  EXPECT_EQ(WEXITSTATUS(status), 1);
}

TEST_F(ZendryTags, SourceNameWithATab_IsRefused) {
  const std::string source = folder.Write("a\tb.cpp", "int a;\n");
  const Ended ended = Run({source});
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(Tags(ended.out).size(), 0u);
}

TEST_F(ZendryTags, SourceCutAtAnyByte_GivesAWellFormedFile) {
  const std::string text =
      "namespace n { class A : public B { int f(int a = 1); }; }\n#define X 1\n";
  for (size_t length = 0; length < text.size(); length += 7) {
    const Ended ended = Run({Source(text.substr(0, length))});
    EXPECT_EQ(ended.status, 0) << length;
    const std::vector<std::string> lines = Lines(ended.out);
    EXPECT_TRUE(std::is_sorted(lines.begin(), lines.end())) << length;
  }
}

}  // namespace
