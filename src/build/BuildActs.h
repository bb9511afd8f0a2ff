#pragma once

#include "base/CommandTable.h"
#include "build/Builder.h"

namespace zendry {

enum BuildCommand {
  cCompileFileCommand = 1400,
  cMakeCommand = 1401,
  cRebuildCommand = 1402,
  cSwitchModeCommand = 1403,
  cClearOutputCommand = 1404,
  cStopBuildCommand = Builder::cStopCommand,  // of the tool bar's stop button; in no menu
  cNextErrorCommand = 1406,
  cPreviousErrorCommand = 1407
};

// The menu "&Build". Shows "Stop debugger first!" instead of doing anything while the debugger
// runs.
class BuildActs : public CommandList {
 public:
  BuildActs();

  // The builder that runs the commands, the project, and the shell that gets the messages; none is
  // owned. Before this call, commands do nothing.
  void Bind(Builder& newBuilder, Project& newProject, Shell& newShell);

 private:
  void CarryOut(int id) override;

  Builder* builder = nullptr;
  Project* project = nullptr;
  Shell* shell = nullptr;
};

extern BuildActs theBuildActs;

}  // namespace zendry
