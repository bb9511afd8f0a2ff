#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "CommandLine.h"
#include "ConsoleFixture.h"
#include "GdbEvents.h"
#include "TempFolder.h"
#include "debug/GdbCommands.h"
#include "debug/GdbStream.h"

// The commands and the reader with the gdb of this machine.

namespace zendry {
namespace {

constexpr std::string_view cProgram = R"(#include <stdio.h>
int main(int count, char** words) {
  int k = 1;
  for (int i = 1; i < count; ++i) k += words[i][0];
  return k == 1;
}
)";

struct RealGdb : test::ConsoleFixture {
  RealGdb() {
    folder.Folder("home");
    console.environment = {"HOME=" + folder.Path("home"), "LC_MESSAGES=C", "TERM=dumb"};
  }

  // Compiles sources of the folder into one program.
  void Compile(const std::vector<std::string>& names, const std::string& program) {
    std::string line = "gcc -g -O0 -w -o " + mavro::QuoteArgument(folder.Path(program));
    for (const std::string& name : names) line += " " + mavro::QuoteArgument(folder.Path(name));
    mavro::SpawnConsole compiler;
    compiler.SetOutput([](const std::string& text) { ADD_FAILURE() << text; }, folder.Path());
    ASSERT_TRUE(compiler.Execute(line, cBlocking));
    ASSERT_EQ(compiler.exitCode, 0);
  }

  // Starts gdb as a session does: up to the prompt after the settings.
  void Start(const std::string& program) {
    console.SetOutput([this](const std::string& line) { stream.Feed(line); }, "");
    ASSERT_TRUE(console.Execute(GdbStartLine("gdb", folder.Path(program)), cAttached));
    ASSERT_TRUE(IdleUntil([this] { return stream.promptSeen; }));
    startText = events.Take();
    for (const std::string_view setting : GdbSettings()) EXPECT_EQ(Send(setting), "prompt\n");
  }

  // Writes a command, and answers the events up to the next prompt.
  std::string Send(std::string_view command) {
    stream.CommandSent();
    EXPECT_TRUE(console.Send(std::string(command)));
    EXPECT_TRUE(IdleUntil([this] { return stream.promptSeen; })) << command;
    return events.Take();
  }

  test::TempFolder folder;
  test::GdbEvents events;
  GdbStream stream{events};
  std::string startText;
};

bool Has(std::string_view text, std::string_view part) {
  return text.find(part) != std::string_view::npos;
}

TEST_F(RealGdb, FindsSourcesOfAnyName) {
  const std::vector<std::string> names = {"a b.c",  "a:b.c",   "a,b.c",       "gr\u00FC\u00DFe.c",
                                          "-a.c",   "a\\b.c",  "a if b.c",    "it's.c",
                                          "a\"b.c", "a'\"b.c", "\u00FC 'x'.c"};
  std::vector<std::string> sources = {"main.c"};
  folder.Write("main.c", cProgram);
  for (const std::string& name : names) {
    sources.push_back("sub/" + name);
    folder.Write(sources.back(),
                 "int f" + std::to_string(sources.size()) + "(void) {\n  return 1;\n}\n");
  }
  Compile(sources, "program");
  Start("program");
  for (size_t i = 1; i < sources.size(); ++i) {
    const std::string path = folder.Path(sources[i]);
    const std::string place = " at " + path + ":2\nprompt\n";
    const int number = static_cast<int>(2 * i - 1);
    EXPECT_EQ(Send(*GdbBreak(path, 2, "")), "breakpoint " + std::to_string(number) + place);
    Send(GdbDelete(number));
    EXPECT_EQ(Send(*GdbTemporaryBreak(path, 2)),
              "temporary breakpoint " + std::to_string(number + 1) + place);
  }
  EXPECT_EQ(Send(*GdbClear(folder.Path("sub/a b.c"), 2)), "output Deleted breakpoint 2 \nprompt\n");
}

TEST_F(RealGdb, RunsFromABreakpointToTheEnd) {
  folder.Write("my source.c", cProgram);
  Compile({"my source.c"}, "my program");
  const std::string path = folder.Path("my source.c");
  Start("my program");
  EXPECT_EQ(Send(*GdbBreak(path, 4, "k > 1")), "breakpoint 1 at " + path + ":4\nprompt\n");
  EXPECT_EQ(Send(*GdbCondition(1, "")), "output Breakpoint 1 now unconditional.\nprompt\n");
  const std::optional<std::vector<std::string>> arguments = GdbArguments("a \"b c\"");
  for (const std::string& command : *arguments) Send(command);
  Send(*GdbTerminal("/dev/null"));
  const std::string stop = Send("run");
  EXPECT_TRUE(Has(stop, "\nhit 1 at " + path + ":4\nsource " + path +
                            ":4 level 0\nstopped by breakpoint 1 in main (count=3"))
      << stop;
  EXPECT_TRUE(stream.paused);
  events.watched = {"k", "words[2]"};
  EXPECT_EQ(Send(*GdbDisplayCommand("k")), "display 1 k is 1\nprompt\n");
  EXPECT_TRUE(Has(Send(*GdbDisplayCommand("words[2]")), "\"b c\"\nprompt\n"));
  EXPECT_EQ(Send(*GdbPrint("k + 1")), "result 2\nprompt\n");
  EXPECT_TRUE(Has(Send("backtrace"), "frame 0 #0  main (count=3"));
  EXPECT_EQ(Send(GdbUndisplay(1)), "prompt\n");
  Send(GdbDelete(1));
  EXPECT_TRUE(Has(Send(*GdbUntil(path, 5)), "source " + path + ":5 level 0\n"));
  const std::string end = Send("continue");
  EXPECT_TRUE(Has(end, "ended with 0\n")) << end;
}

TEST_F(RealGdb, AHostileGdbinitChangesNothing) {
  folder.Write("a.c", cProgram);
  Compile({"a.c"}, "program");
  folder.Write("home/.gdbinit",
               "set annotate 0\nset prompt other> \nset height 5\nset width 20\nset confirm on\n"
               "set style enabled on\nset auto-load safe-path /\nset trace-commands on\n");
  folder.Write("program-gdb.py", "print('script ran')\n");
  folder.Write("program-gdb.gdb", "echo script ran\\n\n");
  Start("program");
  EXPECT_FALSE(Has(startText, "script ran")) << startText;
  const std::string path = folder.Path("a.c");
  EXPECT_EQ(Send(*GdbBreak(path, 3, "")), "breakpoint 1 at " + path + ":3\nprompt\n");
  EXPECT_TRUE(Has(Send("run"), "hit 1 at " + path + ":3\n"));
  EXPECT_GT(Send("help set print").size(), 1000u);
}

}  // namespace
}  // namespace zendry
