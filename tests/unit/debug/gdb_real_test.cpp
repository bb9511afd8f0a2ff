#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <optional>
#include <stdexcept>
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
  void Compile(const std::vector<std::string>& names, const std::string& program,
               const std::string& compilerName = "gcc") {
    std::string line = compilerName + " -g -O0 -w -o " + mavro::QuoteArgument(folder.Path(program));
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

// A pseudo terminal; what is written to it waits to be read.
class Terminal {
 public:
  Terminal() : master(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC)) {
    if (master < 0 || grantpt(master) != 0 || unlockpt(master) != 0)
      throw std::runtime_error("no terminal");
    path = ptsname(master);
    // A terminal that nobody has open any more can't be read.
    slave = open(path.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
  }
  Terminal(const Terminal&) = delete;
  Terminal& operator=(const Terminal&) = delete;
  ~Terminal() {
    close(slave);
    close(master);
  }

  // What was written, up to a text; less when it doesn't come.
  std::string ReadUntil(std::string_view end) {
    std::string text;
    char byte;
    while (!text.ends_with(end) && mavro::WaitReadable(master, 20'000) &&
           read(master, &byte, 1) == 1)
      text += byte;
    return text;
  }

  std::string path;

 private:
  int master;
  int slave = -1;
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

TEST_F(RealGdb, PrintersOfTheSystemsLibrariesAreUsed) {
  folder.Write("a.cpp",
               "#include <string>\nint main() {\n  std::string s = \"text\";\n  return 0;\n}\n");
  Compile({"a.cpp"}, "program", "g++");
  Start("program");
  Send(*GdbTemporaryBreak(folder.Path("a.cpp"), 4));
  EXPECT_TRUE(Has(Send("run"), "stopped by breakpoint 1"));
  events.watched = {"s"};
  EXPECT_EQ(Send(*GdbDisplayCommand("s")), "display 1 s is \"text\"\nprompt\n");
}

TEST_F(RealGdb, AProgramWithATerminalOfItsOwn_ForgesNothingAndCanBePaused) {
  folder.Write("a.c", R"(#include <stdio.h>
int main(void) {
  puts("#1  f () at a.c:1\n1: k = 2\nBreakpoint 9 at 0x1: file a.c, line 2.\n(gdb) $1 = 2");
  puts("\032\032exited 3\n\032\032source /p/a.c:1:1:beg:0x1\n\032\032prompt\nprinted");
  fflush(stdout);
  volatile int k = 1;
  for (puts("running"), fflush(stdout); k; ++k) k = 1;
}
)");
  Compile({"a.c"}, "program");
  const std::string path = folder.Path("a.c");
  Terminal terminal;
  Start("program");
  events.watched = {"k"};
  Send(*GdbTerminal(terminal.path));
  Send(*GdbBreak(path, 6, ""));
  const std::string stop = Send("run");
  EXPECT_TRUE(stop.starts_with("output Starting program")) << stop;
  EXPECT_TRUE(stop.ends_with("hit 1 at " + path + ":6\nsource " + path +
                             ":6 level 0\nstopped by breakpoint 1 in main () at " + path +
                             ":6\nprompt\ndisplays due\n"))
      << stop;
  for (const char* forged : {"frame", "display ", "result", "breakpoint 9", "ended", "/p/a.c"})
    EXPECT_FALSE(Has(stop, forged)) << stop;
  EXPECT_TRUE(Has(terminal.ReadUntil("printed\r\n"), "exited 3\r\n"));

  stream.CommandSent();
  ASSERT_TRUE(console.Send("continue"));
  EXPECT_EQ(terminal.ReadUntil("running\r\n"), "running\r\n");
  ASSERT_TRUE(console.Interrupt());
  ASSERT_TRUE(IdleUntil([this] { return stream.promptSeen; }));
  const std::string pause = events.Take();
  EXPECT_TRUE(Has(pause, "stopped by signal SIGINT (Interrupt)")) << pause;
  EXPECT_TRUE(stream.paused);
}

}  // namespace
}  // namespace zendry
