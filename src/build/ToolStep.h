#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "build/BuildRecords.h"

namespace zendry {

// The tool whose rules say what the lines of a step mean.
enum class ToolKind { cCompiler, cSingleFile, cResource, cLinker, cArchiver };

// One run of a tool in a build, as it is decided before the run.
struct ToolStep {
  ToolKind kind = ToolKind::cCompiler;
  std::string line = {};    // the command line
  std::string folder = {};  // where it runs; empty: the current folder
  // With a launcher before the tool: its name, the line without it, and the line for the records,
  // which is the same with every launcher.
  std::string launcher = {};
  std::string lineWithoutLauncher = {};
  std::string recordedLine = {};
  // The launcher runs the tool on other machines, and its failures don't mean those of the tool.
  bool mayBeLostElsewhere = false;

  std::string subject = {};  // what a row about the run itself names: a source, script or product
  std::string product = {};  // the file it writes, relative to the current folder
  std::vector<InputFile> inputs = {};  // what it reads, as far as is known before
  bool asksForReadFiles = false;       // the tool is a compiler
  std::string readFilesPath = {};      // if its switches ask for them, and not its environment
  bool keepsProductOfFailure = true;   // unless a signal ended the tool

  // Texts and details of the log before the run.
  std::vector<std::pair<std::string, std::string>> captions = {};
  std::string staleFile = {};  // for the observer, with the reason
  std::string reason = {};

  // A step that can't be run: the file and the reason of the row in its place.
  struct Refusal {
    std::string file;
    std::string why;
  };
  std::optional<Refusal> refusal = {};

  // The command line that the records keep.
  const std::string& RecordedLine() const { return recordedLine.empty() ? line : recordedLine; }
};

// How a step's run has ended.
struct StepEnd {
  bool wasRun = false;  // false: refused
  std::string startFailure = {};
  int exitCode = -1;        // or 128 and the signal that killed the tool
  int exitSignal = 0;       // 0 for none
  bool wasStopped = false;  // the user has ended it
  int lostWith = 0;         // the launcher's exit code, after which the tool was run without it
  long milliseconds = 0;
};

}  // namespace zendry
