#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "BytesRead.h"
#include "ProjectShell.h"
#include "ScopedVariable.h"
#include "TempFolder.h"
#include "TextInMemory.h"
#include "project/Project.h"
#include "project/ProjectSources.h"
#include "tags/TagParser.h"

namespace zendry {
namespace {

// Shows texts as open editors and keeps the log.
class EditorShell : public test::ProjectShell {
 public:
  std::vector<EditorText*> OpenTexts() override { return open; }
  void AppendOutput(std::string_view text) override { log += text; }
  void TagsChanged() override { ++tagChanges; }

  std::vector<EditorText*> open;
  std::string log;
  int tagChanges = 0;
};

class ProjectTagsTest : public testing::Test {
 protected:
  ProjectTagsTest() {
    project.SetShell(&shell);
    project.Init(folder.Path("p.zpj"), cConsole);
  }

  ProjectFile& Add(const std::string& name, const std::string& text) {
    project.AddFile(folder.Write(name, text));
    return *project.Files().back();
  }

  // Names of the globals, blank-separated.
  static std::string Globals(const TagData& data) {
    std::string names;
    for (const TagItem& item : data.globals) names += (names.empty() ? "" : " ") + item.name;
    return names;
  }

  test::TempFolder folder;
  EditorShell shell;
  Project project;
};

TEST_F(ProjectTagsTest, FileStore_CarriesTheFilesName) {
  const ProjectFile& file = Add("a.cpp", "");
  EXPECT_EQ(file.tags.fileName, folder.Path("a.cpp"));
}

TEST_F(ProjectTagsTest, AddFile_ParsesTheFile) {
  const ProjectFile& file =
      Add("a.cpp", "#include \"a.h\"\nint a;\nvoid f() {}\nclass C { int m; };\n");
  EXPECT_EQ(Globals(file.tags), "a f");
  ASSERT_TRUE(file.tags.classes.contains("C"));
  EXPECT_EQ(file.tags.classes.at("C").members.size(), 1u);
  ASSERT_EQ(file.tags.includes.size(), 1u);
  EXPECT_EQ(file.tags.includes[0].name, "a.h");
}

TEST_F(ProjectTagsTest, AddFile_WithoutParse_HasNoTags) {
  project.parse = false;
  const ProjectFile& file = Add("a.cpp", "#include \"a.h\"\nint a;\n");
  EXPECT_EQ(Globals(file.tags), "");
  EXPECT_TRUE(file.tags.includes.empty());
}

TEST_F(ProjectTagsTest, NamesThatBeginWithAnUnderscore_AreKeptInTheProjectsFilesOnly) {
  const ProjectFile& file = Add("a.cpp", "int _a, __b;\nclass _C { int _m; };\n#define _D\n");
  EXPECT_EQ(Globals(file.tags), "_a __b _D");
  EXPECT_TRUE(file.tags.classes.contains("_C"));
  EXPECT_FALSE(theTagParser.keepReserved) << "libraries and tags files are read without";
}

TEST_F(ProjectTagsTest, OnlyIntA_HasOneGlobalAndNoClasses) {
  const ProjectFile& file = Add("a.cpp", "int a;\n");
  EXPECT_EQ(file.tags.globals.size(), 1u);
  EXPECT_TRUE(file.tags.classes.empty());
}

TEST_F(ProjectTagsTest, MemberOfAnUnseenClass_MakesARecordWithoutLineAndKind) {
  ProjectFile& file = Add("a.cpp", "void A::f() {}\n");
  const TagClass* tagClass = file.tags.findClass("A");
  ASSERT_NE(tagClass, nullptr);
  EXPECT_EQ(tagClass->line, -1);
  EXPECT_EQ(tagClass->kind, 0);
  ASSERT_EQ(tagClass->members.size(), 1u);
  EXPECT_EQ(tagClass->members[0].name, "f");
}

TEST_F(ProjectTagsTest, Load_ParsesEveryFileOnce) {
  folder.Write("a.cpp", "int a;\n");
  folder.Write("b.h", "int b;\n");
  folder.Write("p.zpj", "<src><file name=\"a.cpp\"/></src><hdr><file name=\"b.h\"/></hdr></opt>");
  Project loaded;
  loaded.SetShell(&shell);
  shell.Take();
  ASSERT_TRUE(loaded.Load(folder.Path("p.zpj")).Ok());
  ASSERT_EQ(loaded.Files().size(), 2u);
  EXPECT_EQ(Globals(loaded.Files()[0]->tags), "a");
  EXPECT_EQ(Globals(loaded.Files()[1]->tags), "b");
  const std::string events = shell.Take();
  EXPECT_EQ(events.find("status parse " + folder.Path("a.cpp")),
            events.rfind("status parse " + folder.Path("a.cpp")));
}

TEST_F(ProjectTagsTest, Load_ProjectWithParseOff_ParsesNothing) {
  folder.Write("a.cpp", "int a;\n");
  folder.Write("p.zpj", "<set parse=\"n\"/><src><file name=\"a.cpp\"/></src></opt>");
  ASSERT_TRUE(project.Load(folder.Path("p.zpj")).Ok());
  EXPECT_EQ(Globals(project.Files()[0]->tags), "");
}

TEST_F(ProjectTagsTest, ToolProject_ReadsIncludesOnly) {
  project.storesTags = false;
  const ProjectFile& file = Add("a.cpp", "#include \"a.h\"\n#include <b>\nint a;\n");
  EXPECT_EQ(Globals(file.tags), "");
  ASSERT_EQ(file.Includes().size(), 2u);
  EXPECT_FALSE(file.Includes()[1].quoted);
}

TEST_F(ProjectTagsTest, ToolProject_ReadsIncludesWhenTheyAreAskedForAndOnce) {
  project.storesTags = false;
  const ProjectFile& file = Add("a.cpp", "#include \"a.h\"\n");
  folder.Write("a.cpp", "#include \"b.h\"\n");
  ASSERT_EQ(file.Includes().size(), 1u);
  EXPECT_EQ(file.Includes()[0].name, "b.h");
  folder.Write("a.cpp", "");
  EXPECT_EQ(file.Includes().size(), 1u);
}

TEST_F(ProjectTagsTest, ToolProject_FileThatIsGone_IncludesNothing) {
  project.storesTags = false;
  const ProjectFile& file = Add("a.cpp", "#include \"a.h\"\n");
  std::filesystem::remove(folder.Path("a.cpp"));
  EXPECT_TRUE(file.Includes().empty());
}

TEST_F(ProjectTagsTest, Includes_AreTheSameWithAndWithoutTags) {
  const std::string text =
      "#include \"a.h\"\r\n  #include \"not.h\"\n/*\n#include <c>\n*/\n#if 0\n#  in clude \"d "
      "e.h\"\n"
      "#endif\n#include \"open\n#include NAME\"\n#define X \"y\"\n#include <last>";
  const ProjectFile& parsed = Add("a.cpp", text);
  Project tool;
  tool.storesTags = false;
  tool.AddFile(folder.Path("a.cpp"));
  const std::vector<IncludeRec>& expected = tool.Files()[0]->Includes();
  ASSERT_EQ(parsed.tags.includes.size(), expected.size());
  ASSERT_EQ(expected.size(), 5u);
  for (size_t i = 0; i < expected.size(); ++i) {
    EXPECT_EQ(parsed.tags.includes[i].name, expected[i].name);
    EXPECT_EQ(parsed.tags.includes[i].quoted, expected[i].quoted);
  }
}

TEST_F(ProjectTagsTest, TextOf_IsTheEditorsElseTheFiles) {
  ProjectSources sources(project, shell);
  const ProjectFile& file = Add("a.cpp", "int disk;\n");
  EXPECT_EQ(sources.TextOf(file.tags), "int disk;\n");
  folder.Write("a.cpp", "int disk, later;\n");
  EXPECT_EQ(sources.TextOf(file.tags), "int disk, later;\n");
  test::TextInMemory editor("int typed;\n", file.name);
  shell.open = {&editor};
  EXPECT_EQ(sources.TextOf(file.tags), "int typed;\n");
}

TEST_F(ProjectTagsTest, TextOf_WhatIsNoReadableFileOrTooLarge_IsEmpty) {
  ProjectSources sources(project, shell);
  TagData module;
  const auto text = [&](const std::string& path) {
    module.fileName = path;
    return sources.TextOf(module);
  };
  EXPECT_EQ(text(""), "");
  EXPECT_EQ(text(folder.Path("gone.h")), "");
  EXPECT_EQ(text(folder.Path("")), "");
  ASSERT_EQ(mkfifo(folder.Path("pipe.h").c_str(), 0600), 0);
  EXPECT_EQ(text(folder.Path("pipe.h")), "");
  EXPECT_EQ(text(folder.Write("large.h", std::string((1 << 20) + 1, 'x'))), "");
  test::TextInMemory editor(std::string((1 << 20) + 1, 'x'), folder.Path("open.h"));
  shell.open = {&editor};
  EXPECT_EQ(text(editor.path), "");
  EXPECT_EQ(editor.copies, 0);
}

TEST_F(ProjectTagsTest, TextOf_OneMegabyte_IsTheLargest) {
  ProjectSources sources(project, shell);
  TagData module;
  module.fileName = folder.Write("a.h", std::string(1 << 20, 'x'));
  EXPECT_EQ(sources.TextOf(module).size(), 1u << 20);
  test::TextInMemory editor(std::string(1 << 20, 'y'), module.fileName);
  shell.open = {&editor};
  EXPECT_EQ(sources.TextOf(module).size(), 1u << 20);
}

TEST_F(ProjectTagsTest, TextOf_16Files_AreReadOnce_A17thMakesRoom) {
  if (test::BytesRead() < 0) GTEST_SKIP() << "the system doesn't count";
  constexpr int cSize = 100'000;
  ProjectSources sources(project, shell);
  const auto reads = [&](int i) {
    TagData module;
    module.fileName = folder.Path(std::to_string(i) + ".h");
    const int64_t before = test::BytesRead();
    EXPECT_EQ(sources.TextOf(module).size(), static_cast<size_t>(cSize));
    return test::BytesRead() - before >= cSize;
  };
  for (int i = 0; i <= 16; ++i) folder.Write(std::to_string(i) + ".h", std::string(cSize, 'x'));
  for (const bool isFirst : {true, false})
    for (int i = 0; i < 16; ++i) EXPECT_EQ(reads(i), isFirst) << i;
  EXPECT_TRUE(reads(16));
  EXPECT_FALSE(reads(16));
  EXPECT_TRUE(reads(0));
}

TEST_F(ProjectTagsTest, TextOf_ManyFiles_GivesEachItsOwn) {
  ProjectSources sources(project, shell);
  for (int round = 0; round < 2; ++round)
    for (int i = 0; i < 40; ++i) {
      TagData module;
      module.fileName = folder.Write(std::to_string(i) + ".h", std::to_string(i));
      EXPECT_EQ(sources.TextOf(module), std::to_string(i));
    }
}

// A key typed into a text that is too long for its tags.
TEST_F(ProjectTagsTest, Includes_OfALargeEditor_AreReadInPartUntilItIsSaved) {
  constexpr int cMostRead = 1 << 20;
  ProjectFile& file =
      Add("a.cpp", "#include \"a.h\"\n" + std::string(2000, 'x') + "\n#include \"b.h\"\n");
  test::TextInMemory editor(
      "#include \"c.h\"\n" + std::string(4 << 20, 'x') + "\n#include \"b.h\"\n#include \"d.h\"\n",
      file.name);
  shell.open = {&editor};
  const auto names = [&] {
    std::string joined;
    for (const IncludeRec& include : file.tags.includes) joined += include.name + " ";
    return joined;
  };
  project.parseOpenEditors(nullptr);
  EXPECT_EQ(names(), "c.h a.h b.h ");
  EXPECT_LE(editor.longestCopy, cMostRead);
  project.parseOpenEditors(&editor);
  EXPECT_EQ(names(), "c.h b.h d.h ");
}

TEST_F(ProjectTagsTest, Includes_OfAMegabyteThatIsTyped_AreReadWhole_OneByteMoreInPart) {
  for (const int more : {0, 1}) {
    project.Clear();
    ProjectFile& file = Add("a.cpp", "#include \"a.h\"\n" + std::string(2000, 'x') + "\n");
    std::string text = "#include \"c.h\"\n";
    text.append(static_cast<size_t>((1 << 20) + more) - text.size(), 'x');
    test::TextInMemory editor(text, file.name);
    shell.open = {&editor};
    project.parseOpenEditors(nullptr);
    EXPECT_EQ(file.tags.includes.size(), more ? 2u : 1u) << more;
    EXPECT_EQ(file.tags.includes.at(0).name, "c.h");
    shell.open.clear();
  }
}

TEST_F(ProjectTagsTest, Includes_KnownOnesOfALargeEditor_StayOnceInEachOfTheirForms) {
  for (const char* known : {"#include \"c.h\"\n", "#include <c.h>\n"}) {
    project.Clear();
    ProjectFile& file = Add("a.cpp", known + std::string(2000, 'x') + "\n");
    test::TextInMemory editor("#include \"c.h\"\n" + std::string(4 << 20, 'x'), file.name);
    shell.open = {&editor};
    project.parseOpenEditors(nullptr);
    EXPECT_EQ(file.tags.includes.size(),
              std::string(known).find('<') != std::string::npos ? 2u : 1u)
        << known;
    shell.open.clear();
  }
}

TEST_F(ProjectTagsTest, Includes_OfALargeFileOutsideTheProject_AreReadInPart) {
  test::TextInMemory editor(std::string(4 << 20, 'x') + "\n#include \"a.h\"\n", "/elsewhere/x.cpp");
  shell.open = {&editor};
  project.parseOpenEditors(&editor);
  EXPECT_TRUE(project.scratchModule.includes.empty());
  EXPECT_LE(editor.longestCopy, 1 << 20);
}

TEST_F(ProjectTagsTest, Includes_OfAFileThatTheParserGivesUp_AreWhole) {
  const ProjectFile& file =
      Add("a.cpp", "#include \"a.h\"\n" + std::string(2000, 'x') + "\n#include \"b.h\"\n");
  ASSERT_EQ(file.tags.includes.size(), 2u);
  EXPECT_EQ(file.tags.includes[1].name, "b.h");
}

TEST_F(ProjectTagsTest, FileInNoLanguage_HasNoIncludes) {
  for (const bool stores : {false, true}) {
    project.storesTags = stores;
    const std::string name = stores ? "b.txt" : "a.txt";
    EXPECT_TRUE(Add(name, "#include \"a.h\"\nint a;\n").Includes().empty()) << name;
  }
}

TEST_F(ProjectTagsTest, BrokenFiles_HaveNoTags) {
  folder.Folder("dir.cpp");
  ASSERT_EQ(mkfifo(folder.Path("pipe.cpp").c_str(), 0600), 0);
  for (const char* name : {"dir.cpp", "pipe.cpp", "gone.cpp", "gone.txt"})
    project.AddFile(folder.Path(name));
  for (const auto& file : project.Files()) {
    EXPECT_TRUE(file->tags.globals.empty() && file->Includes().empty()) << file->name;
  }
}

TEST_F(ProjectTagsTest, BinaryFile_IsAFileWithoutClasses) {
  std::string bytes;
  for (unsigned i = 0; i < 100000; ++i) bytes += static_cast<char>(i * i % 256);
  Add("a.cpp", bytes);
  Add("b.cpp", std::string(100000, '\0'));
  Add("c.cpp", std::string(100000, '{'));
  ASSERT_EQ(project.Files().size(), 3u);
  for (const auto& file : project.Files()) EXPECT_TRUE(file->tags.classes.empty()) << file->name;
}

// Group: parseModule.

TEST_F(ProjectTagsTest, ParseModule_ReplacesWhatWasThere) {
  ProjectFile& file = Add("a.cpp", "#include \"a.h\"\nint a;\nclass A {};\n");
  folder.Write("a.cpp", "#include \"b.h\"\nint b;\nclass B {};\n");
  project.parseModule(file.tags, nullptr);
  EXPECT_EQ(Globals(file.tags), "b");
  EXPECT_EQ(file.tags.classes.size(), 1u);
  EXPECT_EQ(file.tags.classes.begin()->second.serial, 1);
  ASSERT_EQ(file.tags.includes.size(), 1u);
  EXPECT_EQ(file.tags.includes[0].name, "b.h");
}

TEST_F(ProjectTagsTest, ParseModule_ParseOff_DoesNothing) {
  ProjectFile& file = Add("a.cpp", "int a;\n");
  project.parse = false;
  test::TextInMemory editor("int b;\n", file.name);
  project.parseModule(file.tags, &editor);
  EXPECT_EQ(Globals(file.tags), "a");
  EXPECT_FALSE(editor.parsed);
}

TEST_F(ProjectTagsTest, ParseModule_UnsavedTextWinsOverTheFile) {
  ProjectFile& file = Add("a.cpp", "int onDisk;\n");
  test::TextInMemory editor("int inEditor;\n", file.name);
  shell.open = {&editor};
  project.parseModule(file.tags, nullptr);
  EXPECT_EQ(Globals(file.tags), "inEditor");
  EXPECT_TRUE(editor.parsed);
}

TEST_F(ProjectTagsTest, ParseModule_OfTheGivenEditor) {
  ProjectFile& file = Add("a.cpp", "int onDisk;\n");
  test::TextInMemory editor("int given;\n", "/other.cpp");
  project.parseModule(file.tags, &editor);
  EXPECT_EQ(Globals(file.tags), "given");
}

TEST_F(ProjectTagsTest, ParseModule_EditorOfAnotherFile_CountsForNothing) {
  ProjectFile& file = Add("a.cpp", "int onDisk;\n");
  test::TextInMemory editor("int b;\n", folder.Path("A.cpp"));
  shell.open = {&editor};
  project.parseModule(file.tags, nullptr);
  EXPECT_EQ(Globals(file.tags), "onDisk");
  EXPECT_FALSE(editor.parsed);
}

TEST_F(ProjectTagsTest, ParseModule_FileThatIsGone_LosesItsTags) {
  ProjectFile& file = Add("a.cpp", "int a;\n");
  unlink(file.name.c_str());
  project.parseModule(file.tags, nullptr);
  EXPECT_EQ(Globals(file.tags), "");
}

TEST_F(ProjectTagsTest, ParseModule_LocalsAreNeverStored) {
  const ProjectFile& file = Add("a.cpp", "void f() { int local; }\n");
  EXPECT_EQ(Globals(file.tags), "f");
}

TEST_F(ProjectTagsTest, ParseModule_TellsThatTheTagsChanged) {
  ProjectFile& file = Add("a.cpp", "int a;\n");
  const uint64_t before = file.tags.Generation();
  project.parseModule(file.tags, nullptr);
  EXPECT_NE(file.tags.Generation(), before);
}

TEST_F(ProjectTagsTest, TooManyTags_AreLoggedAndTheFirst1025Kept) {
  std::string text;
  for (int i = 1; i <= 1100; ++i) text += "int v" + std::to_string(i) + ";\n";
  const ProjectFile& file = Add("a.cpp", text);
  EXPECT_EQ(file.tags.globals.size(), 1025u);
  EXPECT_EQ(file.tags.globals.back().name, "v1025");
  EXPECT_NE(shell.log.find("To many tags"), std::string::npos);
  EXPECT_NE(shell.log.find("tags end before the end of"), std::string::npos);
}

TEST_F(ProjectTagsTest, UnfinishedText_IsLoggedWhenItIsAFilesAndNotWhileItIsTyped) {
  const std::string text = "void f() {\n";
  ProjectFile& file = Add("a.cpp", text);
  EXPECT_NE(shell.log.find("failed to find match for {"), std::string::npos);
  shell.log.clear();
  test::TextInMemory editor(text, file.name);
  project.parseOpenEditors(&editor);
  EXPECT_TRUE(editor.parsed);
  EXPECT_EQ(shell.log, "");
}

TEST_F(ProjectTagsTest, TextOfManyWindows_IsParsedAsTheFileIs) {
  std::string text;
  for (int i = 0; i < 900; ++i)
    text += "int v" + std::to_string(i) + "; /*" + std::string(300, 'x') + "*/\n";
  ProjectFile& file = Add("a.cpp", text);
  const std::string fromDisk = Globals(file.tags);
  test::TextInMemory editor(text, file.name);
  project.parseModule(file.tags, &editor);
  EXPECT_EQ(Globals(file.tags), fromDisk);
  EXPECT_EQ(file.tags.globals.size(), 900u);
  EXPECT_GT(editor.copies, 1);
}

// Group: parseOpenEditors.

TEST_F(ProjectTagsTest, ParseOpenEditors_ParsesThoseWithChangedText) {
  ProjectFile& a = Add("a.cpp", "int a;\n");
  ProjectFile& b = Add("b.cpp", "int b;\n");
  test::TextInMemory first("int a2;\n", a.name), second("int b2;\n", b.name);
  second.parsed = true;
  shell.open = {&first, &second};
  const test::ScopedVariable log("ZENDRY_LOG", folder.Path("log"));
  project.parseOpenEditors(nullptr);
  EXPECT_EQ(Globals(a.tags), "a2");
  EXPECT_EQ(Globals(b.tags), "b");
  EXPECT_TRUE(first.parsed);
  EXPECT_EQ(folder.Read("log"), "Parse --> " + a.name + "\n");
  EXPECT_EQ(shell.log, "") << "who builds isn't told what is read";
}

TEST_F(ProjectTagsTest, ParseOpenEditors_WithAnEditor_ParsesOnlyIt) {
  ProjectFile& a = Add("a.cpp", "int a;\n");
  ProjectFile& b = Add("b.cpp", "int b;\n");
  test::TextInMemory first("int a2;\n", a.name), second("int b2;\n", b.name);
  shell.open = {&first, &second};
  project.parseOpenEditors(&second);
  EXPECT_EQ(Globals(a.tags), "a");
  EXPECT_EQ(Globals(b.tags), "b2");
}

TEST_F(ProjectTagsTest, ParseOpenEditors_WithAParsedEditor_ParsesNothing) {
  ProjectFile& a = Add("a.cpp", "int a;\n");
  test::TextInMemory editor("int a2;\n", a.name);
  editor.parsed = true;
  project.parseOpenEditors(&editor);
  EXPECT_EQ(Globals(a.tags), "a");
}

// Puts `added` before the first place of a text, as an editor does.
void TypeBefore(test::TextInMemory& editor, const std::string& place, const std::string& added) {
  const size_t at = editor.text.find(place);
  ASSERT_NE(at, std::string::npos);
  editor.bodies.WillChange(editor, static_cast<int>(at), 0, static_cast<int>(added.size()));
  editor.text.insert(at, added);
  editor.parsed = editor.parsed && editor.bodies.Hold(editor);
}

TEST_F(ProjectTagsTest, APointTypedInABody_NeedsNoParse) {
  ProjectFile& file = Add("a.cpp", "");
  test::TextInMemory editor("void f() {\n  part;\n}\nint after;\n", file.name);
  shell.open = {&editor};
  project.parseOpenEditors(nullptr);
  const int changes = shell.tagChanges;
  const uint64_t tags = file.tags.Generation();
  TypeBefore(editor, ";", ".");
  project.parseOpenEditors(nullptr);
  EXPECT_EQ(shell.tagChanges, changes);
  EXPECT_EQ(file.tags.Generation(), tags);
  TypeBefore(editor, ";", "{");
  project.parseOpenEditors(nullptr);
  EXPECT_EQ(shell.tagChanges, changes + 1) << "a brace";
  EXPECT_EQ(Globals(file.tags), "f");
  TypeBefore(editor, ";", "}");
  project.parseOpenEditors(nullptr);
  EXPECT_EQ(shell.tagChanges, changes + 2) << "a brace";
  EXPECT_EQ(Globals(file.tags), "f after");
  TypeBefore(editor, "r;", ".");
  project.parseOpenEditors(nullptr);
  EXPECT_EQ(shell.tagChanges, changes + 3) << "no body";
}

// A key is no reason to read a large text.
TEST_F(ProjectTagsTest, APointTypedInABody_ReadsSomeLines) {
  ProjectFile& file = Add("a.cpp", "");
  std::string text = "void f() {\n  part;\n}\n";
  for (int i = 0; i < 20000; ++i) text += "int v;\n";
  test::TextInMemory editor(text, file.name);
  shell.open = {&editor};
  project.parse = true;
  theTagParser.mostTags = 100'000;
  project.parseOpenEditors(nullptr);
  theTagParser.mostTags = TagParser::cMostTags;
  editor.longestCopy = editor.copies = 0;
  TypeBefore(editor, ";", ".");
  project.parseOpenEditors(nullptr);
  EXPECT_LE(editor.copies, 2);
  EXPECT_LE(editor.longestCopy, 2 * PassedBodies::cLongestLine + 16);
}

TEST_F(ProjectTagsTest, TextThatIsNotReadToItsEnd_IsParsedAfterEachChange) {
  ProjectFile& file = Add("a.cpp", "");
  test::TextInMemory editor("void f() {\n  part;\n}\n" + std::string(1100, 'x'), file.name);
  shell.open = {&editor};
  project.parseOpenEditors(nullptr);
  TypeBefore(editor, ";", ".");
  EXPECT_FALSE(editor.parsed);
}

TEST_F(ProjectTagsTest, FilesOutsideTheProject_TakeTheirStoreBackWhenTheyAreTypedInto) {
  test::TextInMemory first("void f() { a; }\n", "/x/a.cpp");
  test::TextInMemory second("void g() { b; }\n", "/x/b.cpp");
  shell.open = {&first, &second};
  project.parseOpenEditors(nullptr);
  EXPECT_EQ(Globals(project.scratchModule), "g");
  TypeBefore(first, ";", ".");
  EXPECT_TRUE(first.parsed);
  project.parseOpenEditors(nullptr);
  EXPECT_EQ(project.scratchModule.fileName, "/x/a.cpp");
  EXPECT_EQ(Globals(project.scratchModule), "f");
  const uint64_t tags = project.scratchModule.Generation();
  TypeBefore(first, ";", ".");
  project.parseOpenEditors(nullptr);
  EXPECT_EQ(project.scratchModule.Generation(), tags) << "it has the store";
}

TEST_F(ProjectTagsTest, ParseOpenEditors_ShowsTheNewTagsOnceAndNothingWhenNoneAreNew) {
  test::TextInMemory editor("int x;\n", "/elsewhere/x.cpp");
  shell.open = {&editor};
  const int before = shell.tagChanges;
  project.parseOpenEditors(nullptr);
  EXPECT_EQ(shell.tagChanges, before + 1);
  project.parseOpenEditors(nullptr);
  EXPECT_EQ(shell.tagChanges, before + 1);
}

TEST_F(ProjectTagsTest, ParseOpenEditors_FileOutsideTheProject_FillsTheScratchModule) {
  test::TextInMemory editor("int x;\n", "/elsewhere/x.cpp");
  shell.open = {&editor};
  project.parseOpenEditors(nullptr);
  EXPECT_EQ(project.scratchModule.fileName, "/elsewhere/x.cpp");
  EXPECT_EQ(Globals(project.scratchModule), "x");
}

TEST_F(ProjectTagsTest, ParseModule_TextOpenByAnotherName_IsTheOneParsed) {
  ProjectFile& a = Add("a.cpp", "int onDisk;\n");
  test::TextInMemory editor("int typed;\n", folder.Path("./a.cpp"));
  shell.open = {&editor};
  project.parseModule(a.tags, nullptr);
  EXPECT_EQ(Globals(a.tags), "typed");
}

TEST_F(ProjectTagsTest, ModuleOf_IsTheFilesUnderEachOfItsNames) {
  ProjectFile& a = Add("a.cpp", "int a;\n");
  EXPECT_EQ(&project.ModuleOf(a.name), &a.tags);
  EXPECT_EQ(&project.ModuleOf(folder.Path("./a.cpp")), &a.tags);
  for (const std::string& other : {folder.Path("A.cpp"), std::string("a.cpp")})
    EXPECT_EQ(&project.ModuleOf(other), &project.scratchModule) << other;
}

// Group: reference libraries.

class ProjectReferencesTest : public ProjectTagsTest {
 protected:
  ProjectReferencesTest() {
    for (const char* library : {"stl", "mavro"}) {
      const std::string name = library;
      folder.Write("install/Defs/" + name + "/header",
                   "class " + name + "Class { public: int m; };\n");
      folder.Write("install/Defs/" + name + "ref.tgd",
                   "<lib n=\"" + name + "\" p=\"" + name + "\"/>\n<hdr n=\"header\" id=\"1\"/>\n");
    }
    project.SetInstallFolder(folder.Path("install/"));
  }

  void Load(int type) {
    folder.Write("q.zpj", "<opt><gen><targ id=\"" + std::to_string(type) + "\"/></gen></opt>");
    ASSERT_TRUE(project.Load(folder.Path("q.zpj")).Ok());
  }
};

TEST_F(ProjectReferencesTest, Load_ReadsTheStandardLibrary) {
  Load(cConsole);
  EXPECT_NE(project.tags.findClass("stlClass"), nullptr);
  EXPECT_EQ(project.tags.findClass("mavroClass"), nullptr);
}

TEST_F(ProjectReferencesTest, LoadOfAFormProject_ReadsTheFrameworkToo) {
  Load(cFormApplication);
  EXPECT_NE(project.tags.findClass("stlClass"), nullptr);
  EXPECT_NE(project.tags.findClass("mavroClass"), nullptr);
}

TEST_F(ProjectReferencesTest, SecondLoad_ReadsNothingAgain) {
  Load(cConsole);
  shell.log.clear();
  project.Clear();
  Load(cConsole);
  EXPECT_EQ(shell.log, "");
  EXPECT_NE(project.tags.findClass("stlClass"), nullptr);
}

TEST_F(ProjectReferencesTest, Load_LogsWhatItReads) {
  Load(cConsole);
  EXPECT_NE(shell.log.find("------ Loading --> " + folder.Path("install/Defs/stlref.tgd")),
            std::string::npos);
}

TEST_F(ProjectReferencesTest, SingleFile_HasTheStandardLibrary) {
  project.OpenSingleFile(folder.Write("a.cpp", "int a;\n"));
  EXPECT_NE(project.tags.findClass("stlClass"), nullptr);
}

TEST_F(ProjectReferencesTest, ToolProject_ReadsNone) {
  project.storesTags = false;
  Load(cFormApplication);
  EXPECT_TRUE(project.tags.classes.empty());
}

TEST_F(ProjectReferencesTest, InstallationWithoutDefinitions_IsSilent) {
  project.SetInstallFolder(folder.Path("nowhere/"));
  Load(cFormApplication);
  EXPECT_TRUE(project.tags.classes.empty());
  EXPECT_EQ(shell.Take().find("Information"), std::string::npos);
}

}  // namespace
}  // namespace zendry
