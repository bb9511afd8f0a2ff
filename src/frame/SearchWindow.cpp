#include "frame/SearchWindow.h"

#include <unistd.h>

#include <algorithm>

#include "frame/MainForm.h"
#include "project/Project.h"
#include "rescue/RescueCopies.h"

namespace zendry {

namespace {

const RescueCopies cCopies("replace");

// The project that journals belong to; empty for none.
std::string ProjectPath() {
  const bool hasPath = theProject.isOpen && !theProject.implicit && !theProject.name.empty();
  return hasPath ? theProject.GetFullPath(theProject.name) : std::string();
}

}  // namespace

void SearchWindow::ProjectOpened() {
  if (!undo.TakeLeft()) return;
  form.SetStatus("\"Undo replace in project\" can undo what an ended run has replaced", "");
  form.UpdateCommands();
}

void SearchWindow::ProjectClosed() {
  undo.Forget();
  form.UpdateCommands();
}

EditTabs& SearchWindow::Tabs() {
  return form.editTabs;
}

FrameShell& SearchWindow::Frame() {
  return form;
}

ReferenceList& SearchWindow::Results() {
  return form.resultList;
}

void SearchWindow::ShowResults() {
  form.OpenPage(cResultPage);
}

void SearchWindow::ResultsChanged() {
  form.UpdateCommands();
}

std::string SearchWindow::FileOf(int id) const {
  if (id > 0) return cCopies.FileOf(id);
  const auto found = left.find(id);
  return found == left.end() ? std::string() : found->second;
}

// A journal that an ended program has left keeps its name.
mavro::FileResult SearchWindow::Keep(int id, const std::string& journal) {
  if (id > 0) return cCopies.Keep(id, ProjectPath(), journal);
  return mavro::SaveFileText(FileOf(id), ProjectPath() + std::string(1, '\0') + journal);
}

std::string SearchWindow::Read(int id) {
  const std::string bytes = mavro::ReadFileText(FileOf(id)).text;
  const size_t pathEnd = bytes.find('\0');
  return pathEnd == std::string::npos ? std::string() : bytes.substr(pathEnd + 1);
}

void SearchWindow::Drop(int id) {
  const std::string file = FileOf(id);
  if (!file.empty()) unlink(file.c_str());
  left.erase(id);
}

std::vector<int> SearchWindow::Left() {
  const std::string project = ProjectPath();
  if (project.empty()) return {};
  std::vector<std::string> files;
  for (const RescueCopy& copy : cCopies.OfEndedProcesses())
    if (copy.path == project) files.push_back(copy.file);
  std::sort(files.begin(), files.end(), [](const std::string& a, const std::string& b) {
    return ReadDiskStamp(a).changed < ReadDiskStamp(b).changed;
  });
  std::vector<int> ids;
  for (const std::string& file : files) {
    const int id = left.empty() ? -1 : left.begin()->first - 1;
    left[id] = file;
    ids.push_back(id);
  }
  return ids;
}

}  // namespace zendry
