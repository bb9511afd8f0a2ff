#include "frame/EmptyPanels.h"

#include "base/KeyName.h"
#include "build/BuildActs.h"
#include "debug/Debugger.h"
#include "frame/FileActs.h"
#include "frame/MainForm.h"
#include "frame/ToolActs.h"

namespace zendry {

EmptyPanels::EmptyPanels(MainForm& form) {
  const auto key = [](const mavro::ActionList& list, int id) { return KeyName(list.Find(id)); };
  const std::string make = key(theBuildActs, cMakeCommand);
  panels.emplace_back(form.projectTree,
                      "The files of the project. \"New project\" and \"Open project\" are in the "
                      "menu File.");
  panels.emplace_back(form.classTree,
                      "The classes, functions, variables and macros of the project's files.");
  panels.emplace_back(form.output,
                      "What the tools say while they build. " + make + " builds what has changed.");
  panels.emplace_back(form.errorList.list, "Errors and warnings of the last build. " + make +
                                               " builds, " + key(theBuildActs, cNextErrorCommand) +
                                               " goes to the next one.");
  for (WatchList& watch : form.watches)
    panels.emplace_back(watch.list, "Expressions and their values while the program is stopped. " +
                                        key(theDebugger, cAddWatchCommand) +
                                        " adds one, or a click on the empty row.");
  panels.emplace_back(
      form.resultList.list,
      "The lines that a search in files has found: " + key(theToolActs, cFindInProjectCommand) +
          ". The call stack of a stopped program: " + key(theDebugger, cViewStackCommand) + ".");
}

}  // namespace zendry
