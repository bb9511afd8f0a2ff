#include "EditTabs.h"

#include <sys/stat.h>

#include <algorithm>

#include "Assert.h"
#include "FileActs.h"
#include "FileView.h"
#include "IdeSession.h"
#include "MainForm.h"
#include "Paths.h"
#include "Project.h"
#include "SystemDialogs.h"

namespace zendry {

namespace {

void ShowError(const std::string& text) {
  mavro::Dialogs().message(text, "Error", mavro::cErrorIcon);
}

char Upper(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

bool EqualButForCase(const std::string& a, const std::string& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return Upper(x) == Upper(y); });
}

// Whether both names exist and stand for two different files.
bool AreTwoFiles(const std::string& a, const std::string& b) {
  struct stat first, second;
  if (stat(a.c_str(), &first) != 0 || stat(b.c_str(), &second) != 0) return false;
  return first.st_dev != second.st_dev || first.st_ino != second.st_ino;
}

bool NamesSameFile(const std::string& a, const std::string& b) {
  return a == b || (EqualButForCase(a, b) && !AreTwoFiles(a, b));
}

}  // namespace

EditTab::EditTab(std::unique_ptr<FileEditor> newEditor) : editor(std::move(newEditor)) {
  mavro::Control& control = editor->GetControl();
  control.dock = mavro::Dock::cFill;
  Add(&control);
}

void EditTab::SetModified(bool on) {
  if (modified == on) return;
  modified = on;
  text = modified ? caption + "*" : caption;
}

void EditTab::ShowName() {
  caption = BaseName(editor->path);
  text = modified ? caption + "*" : caption;
}

EditTabs::EditTabs() {
  closable = true;
  onChange.Add_H(this, &EditTabs::OnChangeSel);
  onCloseRequest.Add_H(this, &EditTabs::OnTabCloseRequest);
}

EditTabs::~EditTabs() = default;

EditTab* EditTabs::GetTab(int index) const {
  return tabs[static_cast<size_t>(index)].get();
}

EditTab* EditTabs::Active() const {
  const int index = selectedIndex;
  return index >= 0 && index < static_cast<int>(tabs.size()) ? GetTab(index) : nullptr;
}

FileEditor* EditTabs::OpenFile(const std::string& givenPath) {
  const std::string path = TidyPath(givenPath);
  if (!IsAbsolutePath(path)) {
    ShowError(path + "->path format");
    return nullptr;
  }
  if (FileEditor* open = Activate(path, true)) return open;
  FileEditor* editor = NewTab(path);
  if (editor)
    theIdeSession.AddRecent(theIdeSession.recentFiles, path);
  else
    ShowError("Could not open file \"" + path + "\"");
  return editor;
}

FileEditor* EditTabs::Activate(const std::string& path, bool select) {
  const int index = FindTab(path);
  if (index < 0) return nullptr;
  if (select && index != selectedIndex) {
    selectedIndex = index;
    ActiveChanged();
  }
  return GetTab(index)->editor.get();
}

// The tab in front is asked first.
int EditTabs::FindTab(const std::string& path) const {
  const EditTab* front = Active();
  if (front && NamesSameFile(front->editor->path, path)) return selectedIndex;
  const auto found = std::find_if(tabs.begin(), tabs.end(), [&path](const auto& tab) {
    return NamesSameFile(tab->editor->path, path);
  });
  return found == tabs.end() ? -1 : static_cast<int>(found - tabs.begin());
}

FileEditor* EditTabs::NewTab(const std::string& path) {
  auto editor = std::make_unique<FileView>();
  if (!editor->Load(path)) return nullptr;
  tabs.push_back(std::make_unique<EditTab>(std::move(editor)));
  EditTab& tab = *tabs.back();
  tab.ShowName();
  Add(&tab);
  selectedIndex = TabCount() - 1;
  theMainForm->SetEditorCommandsEnabled(true);
  ActiveChanged();
  return tab.editor.get();
}

FileEditor* EditTabs::GoTo(const std::string& path, int line) {
  FileEditor* editor = OpenFile(path);
  if (editor && line > 0) editor->GoToLine(line);
  return editor;
}

bool EditTabs::CanClose(EditTab& tab) {
  if (!tab.editor->dirty) return true;
  const std::string question = "File:   " + tab.editor->path + "\n\nwas modified!\tSave?";
  return !mavro::Confirm(question) || Save(tab, false);
}

bool EditTabs::CloseTab(int n, bool force) {
  MAVRO_ASSERT_AS(n < TabCount(), "n<TabCount()");
  if (!force && !CanClose(*GetTab(n))) return false;
  const std::unique_ptr<EditTab> closed = std::move(tabs[static_cast<size_t>(n)]);
  tabs.erase(tabs.begin() + n);
  RemovePage(n);
  if (tabs.empty()) theMainForm->SetEditorCommandsEnabled(false);
  ActiveChanged();
  return true;
}

bool EditTabs::CloseAll() {
  for (const auto& tab : tabs)
    if (!CanClose(*tab)) return false;
  for (int i = TabCount() - 1; i >= 0; --i) CloseTab(i, true);
  return true;
}

bool EditTabs::SaveActive(bool saveAs) {
  EditTab* tab = Active();
  return tab && Save(*tab, saveAs);
}

bool EditTabs::Save(EditTab& tab, bool saveAs) {
  FileEditor& editor = *tab.editor;
  if (saveAs || editor.path.empty()) {
    mavro::FileQuestion question;
    question.mode = mavro::FileQuestion::cSave;
    question.title = saveAs ? "Save as" : "Save";
    question.name = editor.path;
    question.defaultExtension = "cpp";
    const std::vector<std::string> chosen = mavro::Dialogs().chooseFiles(question);
    if (chosen.empty()) return false;
    editor.path = chosen.front();
    tab.ShowName();
  }
  if (!editor.Save()) {
    ShowError("Error on save file:" + editor.path);
    return false;
  }
  tab.SetModified(editor.dirty);
  return true;
}

void EditTabs::SaveChanged() {
  for (const auto& tab : tabs)
    if (tab->editor->dirty) Save(*tab, false);
}

void EditTabs::SaveAll() {
  SaveChanged();
  if (!theProject.isOpen) return;
  if (theProject.modified) theFileActs.SaveProject();
  theFileActs.SaveSession();
}

void EditTabs::OnCommand(int id) {
  const bool needsTab = id > cOpenCommand && id != cSaveAllCommand;
  if (needsTab && !Active()) return;
  switch (id) {
    case cOpenCommand:
      return AskAndOpen();
    case cSaveCommand:
      SaveActive(false);
      return;
    case cSaveAsCommand:
      SaveActive(true);
      return;
    case cSaveAllCommand:
      return SaveAll();
    case cCloseCommand:
      CloseTab(selectedIndex, false);
      return;
    case cCloseAllCommand:
      CloseAll();
      return;
    default:
      return;
  }
}

void EditTabs::AskAndOpen() {
  mavro::FileQuestion question;
  question.title = "Open...";
  question.filter = std::string(cSourceFilter) + "|All|*.*";
  question.defaultExtension = "cpp";
  question.folder = theProject.folder;
  const std::vector<std::string> chosen = mavro::Dialogs().chooseFiles(question);
  if (!chosen.empty()) OpenFile(chosen.front());
}

void EditTabs::RemoveMark(EditorMark mark) {
  for (const auto& tab : tabs) tab->editor->RemoveMark(mark);
}

void EditTabs::OnChangeSel(mavro::NotifyArgs&) {
  ActiveChanged();
}

void EditTabs::OnTabCloseRequest(mavro::NotifyArgs& args) {
  if (args.value >= 0 && args.value < TabCount()) CloseTab(args.value, false);
}

void EditTabs::ActiveChanged() {
  if (!theMainForm) return;
  theMainForm->ShowActiveFile();
  if (EditTab* tab = Active()) tab->editor->GetControl().Focus();
}

}  // namespace zendry
