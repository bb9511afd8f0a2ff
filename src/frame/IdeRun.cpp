#include "frame/IdeRun.h"

#include <cstdio>

#include "build/ToolEnvironment.h"
#include "config/EditorSettings.h"
#include "config/IdeConfig.h"
#include "config/IdeSession.h"
#include "frame/EmptyPanels.h"
#include "frame/IdeOptForm.h"
#include "frame/MainForm.h"
#include "frame/PictureStrips.h"
#include "frame/StartupFile.h"
#include "project/Project.h"
#include "rescue/Rescue.h"
#include "tags/TagParser.h"

namespace zendry {

namespace {

void RegisterImageLists() {
  mavro::theApplication.RegisterImageList(cSmallStrip, 16, 15, 4);
  mavro::theApplication.RegisterImageList(cToolStrip, 22, 22, 0);
  mavro::theApplication.RegisterImageList(cLargeToolStrip, 28, 28, 0);
  mavro::theApplication.RegisterImageList(cTreeStrip, 16, 16, 8);
}

Placement WindowPlacement() {
  const mavro::Rect screen = mavro::ScreenArea(nullptr);
  const auto stored = theIdeSession.RestoreBounds(screen.width, screen.height);
  return stored
             ? Reachable(*stored, screen.width, screen.height)
             : theIdeSession.FirstPlacement(screen.left, screen.top, screen.width, screen.height);
}

void KeepUnasked() {
  if (theMainForm) theMainForm->KeepUnasked();
}

}  // namespace

int RunIde(const mavro::ArgumentList& arguments) {
  theIdeFonts.largeToolBar = false;
  theIdeConfig.appDir = mavro::theApplication.appDir;
  theIdeSession.NoteError(ReadConfig(theIdeConfig, theIdeFonts).Words());
  theTagParser.SetLimits(theIdeConfig.mostTags, static_cast<size_t>(theIdeConfig.longestLine));
  theProject.SetInstallFolder(theIdeConfig.appDir);
  theIdeSession.Load(theIdeConfig.appDir + "first-start.ini");
  ClearCompilerEnvironment();
  std::vector<StartupFile> startup = FindStartupFiles(arguments);
  RegisterImageLists();
  ApplyLook();
  RescueOnLastWords();
  MainForm form(std::move(startup));
  const EmptyPanels emptyPanels(form);
  form.SetPlacement(WindowPlacement());
  mavro::theApplication.KeepOnEnd(KeepUnasked);
  form.Run(false);
  theIdeSession.Save(form.LastPlacement());
  // No window is left to show the error.
  const std::string error = theIdeSession.TakeError();
  if (!error.empty()) std::fprintf(stderr, "zendry: %s\n", error.c_str());
  return 0;
}

}  // namespace zendry
