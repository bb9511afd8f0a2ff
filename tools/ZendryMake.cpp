#include <unistd.h>

#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "FileText.h"
#include "base/ControlBytes.h"
#include "base/Paths.h"
#include "base/QuietShell.h"
#include "build/Builder.h"
#include "build/CommandLines.h"
#include "build/CompileCommands.h"
#include "build/Launchers.h"
#include "build/ProjectDangers.h"
#include "build/ToolEnvironment.h"
#include "config/BuildSettings.h"
#include "config/IdeConfig.h"
#include "config/IdeSession.h"
#include "project/ImportCommands.h"
#include "project/ImportFolder.h"
#include "project/Project.h"

// zendry-make: builds a project without a window. Prints the text of the Output panel, then one
// line "file:line: text" for each row of the error list on standard error.

using namespace zendry;

namespace {

enum ExitStatus { cBuilt = 0, cNotBuilt = 1, cCannotStart = 2 };

volatile std::sig_atomic_t stopSignal = 0;

struct Options {
  std::string project;
  std::string import;  // a folder or a compile_commands.json
  std::string output;
  std::string main;
  bool takesRisky = false;
  bool compileCommands = false;
  std::string mode;
  std::string jobs;
  bool rebuild = false;
  bool clean = false;
  bool explain = false;
};

// The text as one line: a newline in a file's name becomes a mark too.
std::string OneLine(std::string_view text) {
  std::string line;
  for (char c : MarkControlBytes(text)) {
    if (c == '\n')
      line += "<0a>";
    else if (c != '\r')
      line += c;
  }
  return line;
}

// Standard output in place of the Output panel; the rows of the error list are kept for the end.
class ConsoleShell : public QuietShell {
 public:
  void AppendOutput(std::string_view text) override {
    const std::string marked = MarkControlBytes(text);
    for (size_t i = 0; i < marked.size(); ++i) {
      const bool endsLine = marked[i] == '\r' && i + 1 < marked.size() && marked[i + 1] == '\n';
      if (!endsLine) std::putchar(marked[i]);
    }
    std::fflush(stdout);
  }

  void AddErrorRow(const ErrorRow& row) override { rows.push_back(row); }
  void AppendToLastErrorRow(std::string_view text) override {
    if (!rows.empty()) rows.back().text += text;
  }
  void ClearErrorRows() override { rows.clear(); }
  int ErrorRowCount() override { return static_cast<int>(rows.size()); }

  void PumpMessages() override { AnswerWhileRunning(); }
  void AnswerWhileRunning() override {
    if (stopSignal) theBuilder.EndNow();
  }

  void PrintRows() const {
    for (const ErrorRow& row : rows)
      std::fprintf(stderr, "%s:%d: %s\n", OneLine(row.file).c_str(), row.line,
                   OneLine(row.text).c_str());
  }

 private:
  std::vector<ErrorRow> rows;
};

void Say(const std::string& text) {
  std::fprintf(stderr, "zendry-make: %s\n", OneLine(text).c_str());
}

void NoteSignal(int signal) {
  stopSignal = signal;
}

// A signal ends the running tools, so that their incomplete output is deleted; no other tool is
// started. A second signal ends the program at once.
void StopOnSignals() {
  struct sigaction action = {};
  action.sa_handler = NoteSignal;
  action.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
  for (int signal : {SIGINT, SIGTERM, SIGHUP}) sigaction(signal, &action, nullptr);
}

// The folder of this program, links resolved, with a trailing slash.
std::string ProgramFolder() {
  std::error_code error;
  const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
  return program.parent_path().string() + "/";
}

mavro::FileResult ReadSettings() {
  theIdeConfig.appDir = ProgramFolder();
  const mavro::FileResult config = ReadConfig(theIdeConfig, theIdeFonts);
  theIdeSession.LoadBuildSettings(theIdeConfig.appDir + "first-start.ini");
  return config;
}

// The compiler sets with their folders and launchers, a line each.
std::string ToolsText() {
  std::string text = ReadSettings().Words();
  if (!text.empty()) text += "\n";
  for (int set = 0; set < static_cast<int>(theIdeConfig.toolSets.size()); ++set) {
    const std::string& name = theIdeConfig.toolSets[static_cast<size_t>(set)].name;
    if (name.empty()) continue;
    const std::string launcher = LauncherOf(theIdeConfig, theBuildSettings, set);
    text += std::to_string(set) + " " + name + ": " +
            ToolPath(theIdeConfig, set, theIdeConfig.gpp) + "; " +
            StateOfLauncher(launcher).Words() + "\n";
  }
  if (text.ends_with('\n')) text.pop_back();  // printing adds one
  return MarkControlBytes(text);
}

// Empty when the project was read whole, else the reason why not. A build that ignored a part of
// the project file or of "Zendry.cfg" would make a different program. A damaged session is only
// reported.
std::string OpenProject(const Options& options, Shell& shell) {
  const mavro::FileResult config = ReadSettings();
  if (!config.Words().empty()) return config.Words();
  if (!options.jobs.empty()) theBuildSettings.jobs = ReadJobs(options.jobs).value_or(0);
  theProject.SetShell(&shell);
  theProject.SetInstallFolder(theIdeConfig.appDir);
  theProject.storesTags = false;
  const int kind = FileKind(options.project);
  if (kind == cCppSource || kind == cCSource) {
    if (!mavro::FileExists(options.project)) return options.project + " can't be read";
    theProject.OpenSingleFile(options.project);
    if (options.mode == "debug") theProject.SetMode(cDebug);
    return "";
  }
  if (kind != cProjectFile)
    return options.project + " is no project file (.zpj) and no C or C++ source";
  const mavro::FileResult loaded = theProject.Load(options.project);
  if (!loaded.Words().empty()) return loaded.Words();
  if (const std::string noted = theIdeSession.TakeError(); !noted.empty()) Say(noted);
  if (!options.mode.empty()) theProject.SetMode(options.mode == "debug" ? cDebug : cRelease);
  return "";
}

// Scripts have nobody to ask.
void WarnOfDangers() {
  for (const ProjectDanger& danger : FindDangers(theProject))
    Say("warning: this project can run or write something by itself: " + danger.place + ": " +
        danger.text);
}

void PrintReason(const std::string& file, const std::string& reason) {
  std::printf("explain: %s: %s\n", OneLine(file).c_str(), OneLine(reason).c_str());
}

// Makes a project of existing files.
int RunImport(const Options& options) {
  if (const mavro::FileResult config = ReadSettings(); !config.Words().empty()) {
    Say(config.Words());
    return cCannotStart;
  }
  if (FileKind(options.output) != cProjectFile) {
    Say(options.output.empty() ? "--import needs -o NAME.zpj"
                               : options.output + " is no project file (.zpj)");
    return cCannotStart;
  }
  const std::string path = AbsolutePath(options.output);
  const bool isFolder = mavro::FolderExists(options.import);
  Import import = isFolder
                      ? ListFolder(options.import)
                      : ReadCommands(options.import, std::filesystem::path(path).parent_path());
  std::string error = import.error;
  if (error.empty())
    error = isFolder ? SettleImport(import, options.main) : SettleCommands(import, options.main);
  import.takesRisky = options.takesRisky;
  if (error.empty()) error = WriteImport(import, path, Replacing::cRefused).error;
  if (!error.empty()) {
    Say(error);
    return cCannotStart;
  }
  std::printf("%s\n", OneLine(path).c_str());
  for (const std::string& line : ImportReport(import)) std::printf("%s\n", OneLine(line).c_str());
  return cBuilt;
}

// Writes the command lines of a project for other tools.
int RunCompileCommands(const Options& options) {
  const CommandsText text = CompileCommandsText(theBuilder.CompileCommands());
  const std::string path = options.output.empty() ? theProject.GetFullPath(cCompileCommandsName)
                                                  : AbsolutePath(options.output);
  const std::string error = SaveCompileCommands(path, text.text).error;
  for (const std::string& name : text.leftOut)
    Say("left out, because the name is not UTF-8: " + name);
  if (error.empty()) return cBuilt;
  Say(error);
  return cNotBuilt;
}

int Run(const Options& options) {
  ClearCompilerEnvironment();
  ConsoleShell shell;
  if (const std::string error = OpenProject(options, shell); !error.empty()) {
    Say(error);
    return cCannotStart;
  }
  WarnOfDangers();
  StopOnSignals();
  theBuilder.Bind(theProject, shell);
  if (options.compileCommands) return RunCompileCommands(options);
  if (options.explain) theBuilder.SetStaleObserver(PrintReason);
  if (options.clean) {
    theBuilder.ClearOutput();
  } else {
    theBuilder.Build(options.rebuild ? Builder::Scope::cAll : Builder::Scope::cStale);
    theBuilder.Summary();
  }
  shell.PrintRows();
  const bool isPrinted = std::fflush(stdout) == 0 && !std::ferror(stdout);
  if (!isPrinted) Say("standard output can't be written");
  return theBuilder.HasSucceeded() && isPrinted && !stopSignal ? cBuilt : cNotBuilt;
}

}  // namespace

int main(int argc, char** argv) {
  Options options;
  CLI::App app("Builds a Zendry project without a window.", "zendry-make");
  app.set_version_flag("--version", "zendry-make " ZENDRY_VERSION);
  CLI::Option* project = app.add_option("PROJECT", options.project,
                                        "the project file (.zpj), or a source to build alone");
  app.add_option("--mode", options.mode,
                 "release or debug; else as the project was last used, else release")
      ->check(CLI::IsMember({"release", "debug"}));
  app.add_option(
         "-j,--jobs", options.jobs,
         "how many sources are compiled at once; else `jobs` of zendry.ini, else as many as "
         "there are processors")
      ->check([](const std::string& text) {
        return ReadJobs(text) ? ""
                              : "jobs must be a whole number above 0, and not \"" + text + "\"";
      });
  app.add_flag_callback(
      "--tools", [] { throw CLI::CallForVersion(ToolsText(), 0); },
      "print the compiler sets and their launchers, and stop");
  CLI::Option* rebuild = app.add_flag("--rebuild", options.rebuild, "run every tool, stale or not");
  app.add_flag("--clean", options.clean, "delete the object files and stop")->excludes(rebuild);
  app.add_flag("--explain", options.explain, "say for each file why it is stale");
  CLI::Option* import = app.add_option("--import", options.import,
                                       "make the project NAME.zpj of a folder with sources or of a "
                                       "compile_commands.json, and stop");
  import->excludes(project);
  app.add_option("-o,--output", options.output,
                 "the file that --import or --compile-commands writes");
  app.add_option("--main", options.main,
                 "the source with the main of the imported program; else the one that is highest "
                 "in the folder")
      ->needs(import);
  app.add_flag("--take-risky", options.takesRisky,
               "import switches that can run programs while compiling too")
      ->needs(import);
  app.add_flag("--compile-commands", options.compileCommands,
               "write the project's command lines into a compile_commands.json beside it, and stop")
      ->excludes(import);
  app.footer("Exit status: 0 built, 1 not built, 2 wrong command line or unreadable project.");
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? cBuilt : cCannotStart;
  }
  if (!options.import.empty()) return RunImport(options);
  if (options.project.empty()) {
    Say("PROJECT is required; see --help");
    return cCannotStart;
  }
  return Run(options);
}
