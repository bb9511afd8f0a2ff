#include "project/ProjectFileFormat.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "DataPaths.h"
#include "Golden.h"
#include "ScriptedDialogs.h"
#include "base/XmlTag.h"
#include "project/Project.h"

namespace zendry {
namespace {

// A project in the folder "/w/demo" that has read a text.
struct ReadProject : Project {
  explicit ReadProject(std::string_view text) {
    Init("/w/demo/p.zpj", cConsole);
    reading = ReadProjectText(text, *this);
  }
  ProjectReading reading;
};

// The names of a project's files.
std::string Names(const Project& project) {
  std::string names;
  for (const auto& file : project.Files()) names += file->name + ";";
  return names;
}

// The written text of a project as `set` leaves it.
ProjectText Written(void (*set)(Project&)) {
  Project project;
  project.Init("/w/demo/p.zpj", cConsole);
  set(project);
  return WriteProjectText(project);
}

TEST(ProjectFileFormat, Write_NewProject_IsExactlyThis) {
  EXPECT_EQ(Written([](Project&) {}).text,
            "<ide>\n<set parse=\"y\"/></ide>\n<src>\n</src>\n<hdr>\n</hdr>\n<opt>\n\t<gen>\n"
            "\t\t<targ id=\"0\"/>\n\t\t<inc value=\"-I@/mylib\"/>\n"
            "\t\t<arch value=\"-L@/mylib\"/>\n\t\t<lib/>\n\t\t<out/>\n\t\t<pars/>\n\t</gen>\n"
            "\t<dbg>\n\t\t<gcc id=\"0\"/>\n\t\t<comp opt=\"-g\"/>\n\t\t<link opt=\"-g\"/>\n"
            "\t</dbg>\n\t<rel>\n\t\t<gcc id=\"0\"/>\n\t\t<comp opt=\"-O2\"/>\n"
            "\t\t<link opt=\"-s\"/>\n\t</rel>\n</opt>\n");
}

TEST(ProjectFileFormat, Write_Files_StandInTheListOfTheirKind) {
  const std::string text =
      Written([](Project& project) {
        for (const char* name : {"b.h", "a.cpp", "n.txt", "o.zpj", "c.c", "x/r.rc", "../d.h"})
          project.AddFile(name);
        project.parse = false;
      }).text;
  EXPECT_TRUE(text.starts_with(
      "<ide>\n<set parse=\"n\"/></ide>\n<src>\n\t<file name=\"a.cpp\"/>\n"
      "\t<file name=\"n.txt\"/>\n\t<file name=\"c.c\"/>\n</src>\n<hdr>\n\t<file name=\"b.h\"/>\n"
      "\t<file name=\"../d.h\"/>\n</hdr>\n<res>\n\t<file name=\"x/r.rc\"/>\n</res>\n<opt>\n"))
      << text;
}

TEST(ProjectFileFormat, Write_NameThatDiffersInCaseOnly_StandsWhole) {
  const std::string text = Written([](Project& project) { project.AddFile("/W/demo/a.c"); }).text;
  EXPECT_NE(text.find("\t<file name=\"/W/demo/a.c\"/>\n"), std::string::npos);
}

TEST(ProjectFileFormat, Write_TargetWithoutLibrarySet_HasNoOpt) {
  const std::string text = Written([](Project& project) {
                             project.type = cApiApplication;
                             project.includePath.clear();
                           }).text;
  EXPECT_NE(text.find("\t\t<targ id=\"2\"/>\n\t\t<inc/>\n"), std::string::npos);
}

TEST(ProjectFileFormat, ReadAndWrite_GoldenFiles_GiveTheSameBytes) {
  const std::vector<std::string> paths = test::DataPaths("project");
  ASSERT_FALSE(paths.empty());
  for (const std::string& path : paths) {
    const ReadProject project(test::ReadData(path));
    EXPECT_TRUE(project.reading.isComplete) << path;
    const ProjectText again = WriteProjectText(project);
    EXPECT_TRUE(test::MatchesGolden(path, again.text));
    EXPECT_EQ(again.unwritable, "") << path;
  }
}

TEST(ProjectFileFormat, ReadAndWrite_CarriageReturns_AreDroppedBetweenElements) {
  for (const std::string& path : test::DataPaths("project")) {
    const std::string text = test::ReadData(path);
    if (path.ends_with("odd_names.zpj")) continue;  // a line end within a name is part of it
    std::string crlf;
    for (const char c : text) crlf += c == '\n' ? "\r\n" : std::string(1, c);
    EXPECT_EQ(WriteProjectText(ReadProject(crlf)).text, text) << path;
  }
}

// Group: reading.

TEST(ProjectFileFormat, Read_EmptyInclude_IsNotTheDefault) {
  EXPECT_EQ(ReadProject("<gen><inc/></gen>").includePath, "");
  EXPECT_EQ(ReadProject("<gen></gen>").includePath, "-I@/mylib");
}

TEST(ProjectFileFormat, Read_General_AllValues) {
  const ReadProject project(
      "<gen><targ id=\"1\" opt=\"set\"/><inc value=\"i\"/><arch value=\"a\"/><lib value=\"l\"/>"
      "<out value=\"o\"/><pars p=\"p q\"/></gen>");
  EXPECT_EQ(project.type, 1);
  EXPECT_EQ(project.libSet, "set");
  EXPECT_EQ(project.includePath, "i");
  EXPECT_EQ(project.linkerPath, "a");
  EXPECT_EQ(project.linkLibs, "l");
  EXPECT_EQ(project.outName, "o");
  EXPECT_EQ(project.programParams, "p q");
}

TEST(ProjectFileFormat, Read_Options_GoToTheirGroup) {
  const ReadProject project(
      "<dbg><gcc id=\"1\"/><comp opt=\"c1\"/><link opt=\"l1\"/></dbg>"
      "<rel><gcc id=\"2\"/><comp opt=\"c2\"/><link opt=\"l2\"/></rel>");
  EXPECT_EQ(project.debugOptions.gcc, 1);
  EXPECT_EQ(project.debugOptions.comp, "c1");
  EXPECT_EQ(project.debugOptions.link, "l1");
  EXPECT_EQ(project.releaseOptions.gcc, 2);
  EXPECT_EQ(project.releaseOptions.comp, "c2");
  EXPECT_EQ(project.releaseOptions.link, "l2");
}

TEST(ProjectFileFormat, Read_GoesByFirstLettersInTheOptions) {
  const ReadProject project(
      "<gen><indoors val=\"i\"/><linkage v=\"l\"/></gen><rel><linkage obj=\"x\"/></rel>");
  EXPECT_EQ(project.includePath, "i");
  EXPECT_EQ(project.linkLibs, "l");
  EXPECT_EQ(project.releaseOptions.link, "x");
}

TEST(ProjectFileFormat, Read_GeneralValuesInOtherSections_CountAsGiven) {
  const ReadProject project(
      "<rel><inc value=\"x\"/><arch value=\"x\"/><out value=\"o\"/><pars p=\"p\"/>"
      "<targ id=\"4\"/></rel><gen><comp opt=\"c\"/><gcc id=\"2\"/></gen>");
  EXPECT_EQ(project.includePath, "-I@/mylib");
  EXPECT_EQ(project.linkerPath, "-L@/mylib");
  EXPECT_EQ(project.outName, "o");
  EXPECT_EQ(project.programParams, "p");
  EXPECT_EQ(project.type, 4);
  EXPECT_EQ(project.debugOptions.comp, "c");
  EXPECT_EQ(project.debugOptions.gcc, 2);
}

TEST(ProjectFileFormat, Read_OptionsOutsideTheirSections_AreIgnored) {
  const ReadProject project("<targ id=\"3\"/><opt><inc/></opt><gen></gen><out value=\"x\"/>");
  EXPECT_EQ(project.type, 0);
  EXPECT_EQ(project.includePath, "-I@/mylib");
  EXPECT_EQ(project.outName, "");
}

TEST(ProjectFileFormat, Read_UnknownElements_AreIgnored) {
  const ReadProject project("<gen><x v=\"1\"/><!-- inc --><zz/></gen><file2 name=\"a.c\"/>");
  EXPECT_EQ(WriteProjectText(project).text, Written([](Project&) {}).text);
}

TEST(ProjectFileFormat, Read_Parse_IsOnlyEverTurnedOff) {
  EXPECT_FALSE(ReadProject("<set parse=\"no\"/>").parse);
  EXPECT_TRUE(ReadProject("<set parse=\"y\"/>").parse);
  EXPECT_TRUE(ReadProject("<set/>").parse);
  EXPECT_FALSE(ReadProject("<set p=\"n\"/><set p=\"y\"/>").parse);
}

TEST(ProjectFileFormat, Read_OptimisationBySize_IsChangedInFormProjects) {
  const std::string switches = "<dbg><comp opt=\"-Os -g -Os\"/></dbg>";
  const std::string form = "<gen><targ id=\"1\"/></gen>";
  EXPECT_EQ(ReadProject(form + switches).debugOptions.comp, "-O2 -g -Os");
  EXPECT_EQ(ReadProject(switches).debugOptions.comp, "-Os -g -Os");
  EXPECT_EQ(ReadProject(switches + form).debugOptions.comp, "-Os -g -Os");
}

TEST(ProjectFileFormat, Read_Files_AreOfTheKindOfTheirExtension) {
  const ReadProject project(
      "<res><file name=\"a.cpp\"/></res><src><file name=\"r.rc\"/><file name=\"h.h\"/></src>"
      "<file name=\"loose.c\"/>");
  EXPECT_EQ(Names(project), "/w/demo/a.cpp;/w/demo/h.h;/w/demo/loose.c;");
  EXPECT_EQ(project.resourceFile, "r.rc");
}

TEST(ProjectFileFormat, Read_EmptyResourceSection_IsNone) {
  const std::string text = test::ReadData(TEST_DATA "/project/console.zpj");
  std::string withSection = text;
  withSection.insert(text.find("<opt>"), "<res>\n</res>\n");
  const ReadProject project(withSection);
  EXPECT_EQ(project.resourceFile, "");
  EXPECT_EQ(WriteProjectText(project).text, text);
}

TEST(ProjectFileFormat, Read_FurtherResourceFiles_BringUpOneMessage) {
  test::ScriptedDialogs dialogs;
  std::string text = "<src>";
  for (int i = 0; i < 1000; ++i) text += "<file name=\"r" + std::to_string(i) + ".rc\"/>";
  EXPECT_EQ(ReadProject(text).resourceFile, "r0.rc");
  EXPECT_EQ(dialogs.texts,
            std::vector<std::string>{"Information: Only single resource file allowed!"});
}

TEST(ProjectFileFormat, Read_FileWithoutAName_IsSkipped) {
  EXPECT_EQ(Names(ReadProject("<file/><file name=\"\"/><file id=\"3\"/><file name=\"a")), "");
}

TEST(ProjectFileFormat, Read_ValueWithAQuote_IsCutAtTheLast) {
  EXPECT_EQ(ReadProject("<gen><inc value=\"-DX=\"1\"/></gen>\"/>").includePath,
            "-DX=\"1\"/></gen>");
  EXPECT_EQ(ReadProject("<gen><inc value=\"-DX=\"1\"\"/></gen>").includePath, "-DX=\"1\"");
}

TEST(ProjectFileFormat, Read_NumbersThatMakeNoSense_AreKept) {
  const ReadProject project("<gen><targ id=\"77\"/></gen><dbg><gcc/></dbg>");
  EXPECT_EQ(project.type, 77);
  EXPECT_EQ(project.debugOptions.gcc, -1);
}

TEST(ProjectFileFormat, Read_PathsOutOfTheProject_AreKept) {
  const ReadProject project(
      "<file name=\"../../../../a.c\"/><file name=\"C:/../b.c\"/><file name=\"x\\y.c\"/>");
  EXPECT_EQ(Names(project), "/a.c;C:/../b.c;/w/demo/x/y.c;");
}

TEST(ProjectFileFormat, Read_TellsWhatItFound) {
  EXPECT_FALSE(ReadProject("").reading.hasElements);
  EXPECT_FALSE(ReadProject("plain text").reading.hasElements);
  EXPECT_TRUE(ReadProject("<ide>").reading.hasElements);
  EXPECT_FALSE(ReadProject("<opt><gen></gen>").reading.isComplete);
  EXPECT_TRUE(ReadProject("<opt></opt>").reading.isComplete);
}

// Group: what the format can't hold.

TEST(ProjectFileFormat, Write_ValueThatWouldNotComeBack_IsNamed) {
  using Set = void (*)(Project&);
  const Set cases[] = {
      [](Project& project) { project.includePath = "a\"b"; },
      [](Project& project) { project.linkerPath = "a\"b"; },
      [](Project& project) { project.linkLibs = "a\"b"; },
      [](Project& project) { project.outName = "a\"b"; },
      [](Project& project) { project.libSet = "a\"b"; },
      [](Project& project) { project.programParams = "a\"b"; },
      [](Project& project) { project.debugOptions.comp = "a\"b"; },
      [](Project& project) { project.releaseOptions.link = "a\"b"; },
  };
  for (const Set set : cases) EXPECT_EQ(Written(set).unwritable, "a\"b");
}

TEST(ProjectFileFormat, Write_FileNames_AreNamedToo) {
  EXPECT_EQ(Written([](Project& project) { project.AddFile("a\".c"); }).unwritable, "a\".c");
  EXPECT_EQ(Written([](Project& project) { project.AddFile("a\".rc"); }).unwritable, "a\".rc");
}

TEST(ProjectFileFormat, Write_SwitchWithABlankInQuotes_IsNamed) {
  EXPECT_EQ(Written([](Project& project) {
              project.debugOptions.comp = "-DX=\"a\"";
              project.releaseOptions.comp = "-DX=\"a b\"";
            }).unwritable,
            "-DX=\"a b\"");
}

TEST(ProjectFileFormat, Write_ValueOf509Characters_IsNamed) {
  EXPECT_EQ(Written([](Project& project) { project.linkLibs.assign(508, 'x'); }).unwritable, "");
  EXPECT_EQ(Written([](Project& project) { project.linkLibs.assign(509, 'x'); }).unwritable.size(),
            509u);
}

// Whatever is said to be writable must come back.
TEST(ProjectFileFormat, WriteAndRead_AllShortTextsOfOddCharacters_ComeBackOrAreNamed) {
  const std::string letters = "a\" =>/<\n";
  int kept = 0;
  for (size_t code = 0; code < 8 * 8 * 8 * 8 * 8; ++code) {
    Project project;
    project.Init("/w/demo/p.zpj", cConsole);
    for (size_t rest = code; rest; rest /= letters.size())
      project.programParams += letters[rest % letters.size()];
    const ProjectText written = WriteProjectText(project);
    if (!written.unwritable.empty()) continue;
    ++kept;
    const ReadProject again(written.text);
    ASSERT_EQ(again.programParams, project.programParams);
    ASSERT_EQ(WriteProjectText(again).text, written.text);
  }
  EXPECT_GT(kept, 10000);
}

// Group: damage.

TEST(ProjectFileFormat, Read_CutAtEveryByte_GivesAProjectThatCanBeWritten) {
  for (const std::string& path : test::DataPaths("project")) {
    const std::string text = test::ReadData(path);
    for (size_t length = 0; length < text.size(); ++length) {
      const ReadProject project(text.substr(0, length));
      // Without the last character only the line end is missing, or the ">" before it too.
      EXPECT_EQ(project.reading.isComplete, length + 2 >= text.size()) << path << " " << length;
      const ProjectText written = WriteProjectText(project);
      if (!written.unwritable.empty()) continue;  // a quoted value was cut
      ASSERT_EQ(WriteProjectText(ReadProject(written.text)).text, written.text);
    }
  }
}

TEST(ProjectFileFormat, Read_AnyByteReplaced_GivesAProject) {
  test::ScriptedDialogs dialogs;
  const std::string text = test::ReadData(TEST_DATA "/project/form_with_resource.zpj");
  for (const char bad : {'\0', '"', '<', '>', '\xff', ' '}) {
    for (size_t at = 0; at < text.size(); ++at) {
      std::string damaged = text;
      damaged[at] = bad;
      if (!TokensFit(damaged)) continue;  // a quote too many makes one long token of the rest
      const std::string written = WriteProjectText(ReadProject(damaged)).text;
      EXPECT_TRUE(written.starts_with("<ide>\n") && written.ends_with("</opt>\n")) << at;
    }
  }
}

TEST(ProjectFileFormat, Read_NoProjectAtAll_GivesAnEmptyOne) {
  const std::string binary(
      "\x7f"
      "ELF\0\x01\x02\0\0\xff\xfe",
      11);
  for (const std::string& text :
       {std::string(), binary, std::string(100000, '\0'), std::string(1000000, 'x')}) {
    const ReadProject project(text);
    EXPECT_EQ(Names(project), "");
    EXPECT_FALSE(project.reading.hasElements);
  }
}

TEST(ProjectFileFormat, Read_ValueThatIsTooLong_ReadsNothingAndSaysSo) {
  EXPECT_EQ(ReadProject("<file name=\"" + std::string(506, 'x') + ".c\"/>").Files().size(), 1u);
  const ReadProject project("<file name=\"a.c\"/><file name=\"" + std::string(507, 'x') + ".c\"/>");
  EXPECT_TRUE(project.Files().empty());
  EXPECT_EQ(project.reading.tooLong.substr(0, 60),
            "holds a value of more than some 500 characters: <file name=\"");
}

TEST(ProjectFileFormat, Read_OneMegabyteInOneLine_IsReadThrough) {
  std::string text = "<set p=\"n\"/><src>";
  int count = 0;
  for (; text.size() < 1000000; ++count) text += "<file name=\"a.c\"/>";
  EXPECT_EQ(ReadProject(text).Files().size(), static_cast<size_t>(count));
}

TEST(ProjectFileFormat, Read_NulBytesInAName_AreKept) {
  const std::string text("<file name=\"a\0b.c\"/>", 20);
  const ReadProject project(text);
  EXPECT_EQ(Names(project), std::string("/w/demo/a\0b.c;", 14));
}

TEST(WhyUnwritable, NamesQuotesAndLength_AndNothingElse) {
  for (const char* fits : {"", "a b", "-DX=\"a\"", "a>b=c<d/", "\\", "'x'"})
    EXPECT_EQ(WhyUnwritable(fits), "") << fits;
  for (const char* bad : {"\"", "-I\"a b\"", "\"a>b\""})
    EXPECT_THAT(WhyUnwritable(bad), testing::HasSubstr("double quotes")) << bad;
  EXPECT_EQ(WhyUnwritable(std::string(508, 'x')), "");
  EXPECT_THAT(WhyUnwritable(std::string(509, 'x')), testing::HasSubstr("too long"));
}

}  // namespace
}  // namespace zendry
