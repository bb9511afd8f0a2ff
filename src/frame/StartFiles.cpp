#include "frame/StartFiles.h"

#include <algorithm>
#include <utility>

#include "base/ControlBytes.h"
#include "base/Paths.h"
#include "config/IdeSession.h"

namespace zendry {

namespace {

constexpr int cTick = 100;  // milliseconds
// The window may appear on the screen just before a tick: by the second tick, the message loop has
// run once.
constexpr int cTicksToSettle = 2;

std::string Sentence(const std::string& path) {
  return "Zendry ended the last time while it opened " + path + ", which is left closed this time.";
}

}  // namespace

StartFiles::StartFiles(mavro::Form& itsForm, Shell& itsShell)
    : form(itsForm), shell(itsShell), timer(&itsForm) {
  timer.onTimer.Add_H(this, &StartFiles::OnTimer);
}

bool StartFiles::MayOpen(const std::string& path, int line) {
  quietTicks = 0;
  if (!timer.IsRunning()) timer.Start(cTick);
  if (marks.Begin(path)) return true;
  unsaid.push_back(path);
  const bool isProject = FileKind(path) == cProjectFile;
  if (!isProject) leftClosed.push_back({{path, line}, shell.OpenFiles().size()});
  IdeSession::AddRecent(isProject ? theIdeSession.recentProjects : theIdeSession.recentFiles, path);
  return false;
}

void StartFiles::AllLoaded() {
  if (!timer.IsRunning()) return;
  marks.Watch("");
  if (!unsaid.empty()) Say(std::exchange(unsaid, {}));
}

void StartFiles::WatchShown() {
  if (timer.IsRunning()) marks.Watch(shell.ActiveFile());
}

void StartFiles::Say(const std::vector<std::string>& paths) {
  for (const std::string& path : paths) shell.AppendOutput(Sentence(path) + "\r\n");
  const std::string what = paths.size() == 1 ? MarkControlBytes(BaseName(paths.front())) + " is"
                                             : std::to_string(paths.size()) + " files are";
  shell.SetStatus(what + " left closed this time: see Output", "");
}

// A tick comes through the running message loop; by then the visible window has been painted.
void StartFiles::OnTimer(mavro::NotifyArgs&) {
  if (!form.IsOnScreen() || ++quietTicks < cTicksToSettle) return;
  timer.Stop();
  marks.Clear();
}

void StartFiles::AddLeftClosed(std::vector<OpenFile>& files) const {
  for (const auto& [file, place] : leftClosed)
    files.insert(files.begin() + static_cast<std::ptrdiff_t>(std::min(place, files.size())), file);
}

void StartFiles::Opened(const std::string& path) {
  std::erase_if(leftClosed, [&path](const LeftClosed& left) { return left.file.path == path; });
}

}  // namespace zendry
