#include "search/ProjectSearch.h"

#include <chrono>
#include <optional>

#include "FindCommands.h"
#include "SearchState.h"
#include "SystemDialogs.h"
#include "base/BuildInProgress.h"
#include "base/ControlBytes.h"
#include "base/Paths.h"
#include "base/Shell.h"
#include "editor/EditTabs.h"
#include "editor/ReferenceList.h"
#include "project/Project.h"
#include "search/FileReplace.h"
#include "search/FileSearch.h"
#include "search/ReplaceListDlg.h"
#include "search/SearchHost.h"
#include "search/TabTexts.h"

namespace zendry {

namespace {

constexpr size_t cMostNamed = 5;  // files in a message

std::string Counted(size_t count, const char* one, const char* several) {
  return std::to_string(count) + " " + (count == 1 ? one : several);
}

LineTerm TermNow() {
  return {mavro::theSearch.findText, mavro::theSearch.matchCase, mavro::theSearch.wholeWord};
}

// Some of the names, one in a line.
std::string Named(const std::vector<std::string>& names) {
  std::string all;
  for (size_t i = 0; i < names.size() && i < cMostNamed; ++i)
    all += "\n" + MarkControlBytes(names[i]);
  if (names.size() > cMostNamed)
    all += "\nand " + std::to_string(names.size() - cMostNamed) + " more";
  return all;
}

}  // namespace

// A search in progress: the bar in the status line, the stop button, and commands that wait until
// it has ended. A search that is over before anybody could read it shows nothing.
class ProjectSearch::Progress {
 public:
  // `itsVerb` is what is done with each file.
  Progress(ProjectSearch& itsSearch, std::string itsVerb)
      : search(itsSearch), frame(search.host.Frame()), verb(std::move(itsVerb)) {
    search.isRunning = true;
    search.isStopWanted = false;
    hasStop = !frame.IsDebuggerRunning();
    if (hasStop) frame.SetStopCommand(cStopSearchCommand);
  }
  ~Progress() {
    search.isRunning = false;
    frame.SetProgress("", 0, 0);
    if (hasStop) frame.SetStopCommand(-1);
  }
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  bool GoesOn(const std::string& file, size_t done, size_t total) {
    const auto now = Clock::now();
    if (now < next) return !search.isStopWanted;
    next = now + search.shownEvery;
    frame.SetProgress(verb + " " + MarkControlBytes(BaseName(file)), static_cast<int>(done),
                      static_cast<int>(total));
    frame.PumpMessages();
    return !search.isStopWanted;
  }

 private:
  using Clock = std::chrono::steady_clock;

  ProjectSearch& search;
  FrameShell& frame;
  const std::string verb;
  const BuildInProgress keepsProject;
  Clock::time_point next = Clock::now() + search.shownEvery;
  bool hasStop = false;
};

// Puts what is found into the list.
class ProjectSearch::Results : public SearchListener {
 public:
  Results(ReferenceList& itsList, Progress& itsProgress, const std::vector<std::string>& itsPaths)
      : list(itsList), progress(itsProgress), paths(itsPaths) {}
  ~Results() override { list.ShowKept(); }
  Results(const Results&) = delete;
  Results& operator=(const Results&) = delete;

  void Found(const std::string& path, size_t line, int column, std::string_view text) override {
    if (path != lastPath) {
      lastPath = path;
      name = theProject.isOpen ? theProject.RelativeIfSame(path) : path;
    }
    list.KeepRow(name, static_cast<int>(line), text, column);
  }
  void MissedFollow(size_t count) override {
    list.AddCaption("Only a full search finds " + Counted(count, "line:", "lines:"));
  }
  bool GoesOn(size_t done, size_t total) override {
    list.ShowKept();
    return progress.GoesOn(paths[done], done, total);
  }

 private:
  ReferenceList& list;
  Progress& progress;
  const std::vector<std::string>& paths;
  std::string lastPath, name;
};

void ProjectSearch::Say(const std::string& text) {
  host.Frame().SetStatus(MarkControlBytes(text), "");
}

bool ProjectSearch::Ask(FindInFilesDlg::Mode mode) {
  if (isRunning) return false;
  const EditTab* tab = host.Tabs().Active();
  if (target == cCurrentProject && !theProject.isOpen) target = cCurrentFile;
  if (target == cCurrentFile && !tab) target = cCurrentProject;
  FindInFilesDlg dialog(mode, target, tab ? mavro::SelectionInLine(*tab->editor) : std::string());
  return dialog.Ask();
}

std::vector<std::string> ProjectSearch::Files() const {
  std::vector<std::string> files;
  const EditTab* tab = host.Tabs().Active();
  if (target == cCurrentFile && tab) files.push_back(tab->editor->fileName);
  if (target == cCurrentProject)
    for (const auto& file : theProject.Files()) files.push_back(file->name);
  if (target == cLibraryHeaders)
    for (const HeaderRec& header : theProject.tags.headers) files.push_back(header.path);
  return files;
}

void ProjectSearch::Find() {
  if (!Ask(FindInFilesDlg::Mode::cFind)) return;
  const std::vector<std::string> files = Files();
  ReferenceList& list = host.Results();
  list.Clear();
  host.ShowResults();
  SearchSum sum;
  {
    Progress progress(*this, "Searching");
    TabTexts open(host.Tabs());
    Results results(list, progress, files);
    sum = SearchFiles(files, TermNow(), open, results);
  }
  std::string said = sum.lines == 0 ? "Not found: " + mavro::theSearch.findText
                                    : Counted(sum.lines, "line", "lines") + " in " +
                                          Counted(sum.files, "file", "files");
  if (sum.isCut) said += ", the first " + std::to_string(cMostListed) + " are listed";
  if (sum.unread > 0) said += ", " + Counted(sum.unread, "file", "files") + " can't be read";
  if (sum.isStopped) said += ", stopped";
  if (files.empty()) said = "There is no file to search";
  Say(said);
  host.ResultsChanged();
}

void ProjectSearch::Replace() {
  if (!Ask(FindInFilesDlg::Mode::cReplace)) return;
  const std::vector<std::string> files = Files();
  const TextScan scan(TermNow());
  const std::string with = mavro::theSearch.replaceText;
  TabTexts open(host.Tabs());
  std::vector<FileHits> found;
  size_t missed = 0;
  {
    Progress progress(*this, "Searching");
    for (size_t i = 0; i < files.size(); ++i) {
      if (!progress.GoesOn(files[i], i, files.size())) return Say("Stopped, nothing is replaced");
      FileHits hits = CountHits(files[i], scan, open);
      missed += hits.missed;
      if (hits.hits > 0) found.push_back(std::move(hits));
    }
  }
  if (found.empty()) {
    const std::string more = ", but for " + Counted(missed, "hit", "hits") + " that it misses";
    return Say("Not found: " + scan.Term().text + (missed > 0 ? more : ""));
  }
  ReplaceListDlg dialog(found, scan.Term().text, with);
  const std::vector<std::string> chosen = dialog.Choose();
  if (chosen.empty()) return;
  ReplaceIn(chosen, scan.Term());
}

void ProjectSearch::ReplaceIn(const std::vector<std::string>& paths, const LineTerm& term) {
  ReplaceSum sum;
  {
    Progress progress(*this, "Replacing in");
    TabTexts open(host.Tabs());
    sum = ReplaceInFiles(paths, TextScan(term), mavro::theSearch.replaceText, open, host.Undo(),
                         [&](const std::string& path, size_t done, size_t total) {
                           return progress.GoesOn(path, done, total);
                         });
  }
  std::string said =
      Counted(sum.hits, "hit", "hits") + " replaced in " + Counted(sum.files, "file", "files");
  if (sum.missed > 0) said += ", " + std::to_string(sum.missed) + " that the search misses stay";
  if (sum.untouched > 0)
    said += ", stopped: " + Counted(sum.untouched, "file stays", "files stay") + " as before";
  Say(sum.whyNothing.empty() ? said : sum.whyNothing);
  host.ResultsChanged();
  host.Tabs().CheckDisk();
  if (!sum.failed.empty())
    mavro::Information("Nothing was replaced in these files:" + Named(sum.failed));
}

void ProjectSearch::UndoReplace() {
  if (isRunning) return;
  TabTexts open(host.Tabs());
  const UndoneReplace undone = host.Undo().Undo(open);
  host.ResultsChanged();
  if (!undone.wasThereOne) return Say("There is no replacement to undo");
  Say(Counted(undone.restored, "file has its", "files have their") + " old text again");
  if (!undone.refused.empty())
    mavro::Information("These files were changed since and stay as they are:" +
                       Named(undone.refused));
  if (!undone.failed.empty())
    mavro::Information("The old text can't be written:" + Named(undone.failed));
}

}  // namespace zendry
