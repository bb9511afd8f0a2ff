#include "build/BuildActs.h"

#include "SystemDialogs.h"
#include "base/Shell.h"
#include "project/Project.h"

namespace zendry {

namespace {

using mavro::cControlKey;
using mavro::cShiftKey;

using enum WhileBuilding;

constexpr CommandRow cRows[] = {
    {cCompileFileCommand, "&Compile File", cControlKey | cKeyF7, cRefused},
    {cMakeCommand, "&Make", cKeyF7, cRefused},
    {cRebuildCommand, "Rebuild", cShiftKey | cKeyF7, cRefused},
    {cSwitchModeCommand, "Switch Debug/Relase mode", 0, cRefused},
    {cClearOutputCommand, "Clear Output Files", cControlKey | cShiftKey | cKeyF7, cRefused},
    {cNextErrorCommand, "Go to Next error", cKeyF4},
    {cPreviousErrorCommand, "Go to Prev error", cShiftKey | cKeyF4},
};

}  // namespace

BuildActs theBuildActs;

BuildActs::BuildActs() : CommandList(cRows) {}

void BuildActs::Bind(Builder& newBuilder, Project& newProject, Shell& newShell) {
  builder = &newBuilder;
  project = &newProject;
  shell = &newShell;
}

void BuildActs::CarryOut(int id) {
  if (!builder) return;
  if (shell->IsDebuggerRunning()) {
    mavro::Information("Stop debugger first!");
    return;
  }
  switch (id) {
    case cCompileFileCommand:
      return builder->CompileCurrent();
    case cMakeCommand:
      return builder->Make(Builder::Scope::cStale);
    case cRebuildCommand:
      return builder->Make(Builder::Scope::cAll);
    case cSwitchModeCommand:
      return project->SetMode(shell->SelectedMode());
    case cClearOutputCommand:
      return builder->ClearOutput();
    case cStopBuildCommand:
      return builder->RequestStop();
    case cNextErrorCommand:
      return shell->GoToNextError();
    case cPreviousErrorCommand:
      return shell->GoToPreviousError();
    default:
      return;
  }
}

}  // namespace zendry
