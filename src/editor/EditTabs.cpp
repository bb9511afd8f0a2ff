#include "editor/EditTabs.h"

#include <algorithm>
#include <optional>

#include "AsciiCase.h"
#include "Assert.h"
#include "FileText.h"
#include "Form.h"
#include "IdleHook.h"
#include "SystemDialogs.h"
#include "base/ControlBytes.h"
#include "base/ErrorBox.h"
#include "base/FileCommands.h"
#include "base/Paths.h"
#include "base/ReasonFirst.h"
#include "base/ScopedFlag.h"
#include "config/IdeSession.h"
#include "config/WindowSettings.h"
#include "editor/EditorHost.h"
#include "project/Counterpart.h"
#include "project/Project.h"

namespace zendry {

namespace {

constexpr int cRescueTick = 1000;  // milliseconds
const std::string cNoName = "Noname";

// True if a path, and what the disk holds there, is an open file. If one of the two can't be found
// on the disk, only the names are compared.
bool NamesSameFile(const std::string& open, const std::string& path, const DiskStamp& onDisk) {
  if (open == path) return true;
  if (open.empty()) return false;
  const DiskStamp its = ReadDiskStamp(open);
  return its.exists && onDisk.exists ? AreOneFile(its, onDisk) : mavro::EqualNoCase(open, path);
}

// Only the text: the file has a tab already.
RescuedText WithoutName(RescuedText text) {
  text.path.clear();
  text.facts.disk = {};
  return text;
}

}  // namespace

EditTab::EditTab(EditTabs& itsTabs) : editor(std::make_unique<CppEditor>(*this)), tabs(itsTabs) {
  editor->onMouseDown.Add_H(this, &EditTab::OnMouseDown);
  editor->onContextMenu.Add_H(this, &EditTab::OnContextMenu);
  Add(editor.get());
}

EditTab::~EditTab() = default;

EditorHost* EditTab::Host() const {
  return tabs.Host();
}

void EditTab::OnMouseDown(mavro::MouseArgs& args) {
  pressedX = args.x;
  pressedY = args.y;
}

// A key press asks for the text's menu. The commands of the margin's menu act on the caret's line:
// the caret goes to the line beside which the mouse was pressed.
void EditTab::OnContextMenu(mavro::MouseArgs& args) {
  const bool inMargin = args.x >= 0 && pressedX < editor->MarginWidth();
  if (inMargin && editor->LineAt(pressedY) != editor->CaretLine()) {
    const int start = editor->LineStart(editor->LineAt(pressedY));
    editor->Select(start, start);
  }
  editor->menu = inMargin ? &Host()->MarginMenu() : &Host()->TextMenu();
}

void EditTab::SetModified(bool on) {
  if (modified == on) return;
  modified = on;
  text = modified ? caption + "*" : caption;
}

void EditTab::ShowName() {
  caption = BaseName(editor->fileName);
  editor->accessibleName = caption;
  text = modified ? caption + "*" : caption;
}

bool EditTab::ShowFirstPart() {
  ShowName();
  return tabs.ShowEarly(*this);
}

EditTabs::EditTabs(EditorHost& itsHost) : host(&itsHost) {
  closable = true;
  movable = true;
  onChange.Add_H(this, &EditTabs::OnChangeSel);
  onCloseRequest.Add_H(this, &EditTabs::OnTabCloseRequest);
  onMovePage.Add_H(this, &EditTabs::OnMovePage);
  rescueTimer.onTimer.Add_H(this, &EditTabs::OnRescueTimer);
  rescueTimer.Start(cRescueTick);
}

EditTabs::~EditTabs() = default;

EditTab* EditTabs::GetTab(int index) const {
  return tabs[static_cast<size_t>(index)].get();
}

EditTab* EditTabs::Active() const {
  const int index = selectedIndex;
  return index >= 0 && index < static_cast<int>(tabs.size()) ? GetTab(index) : nullptr;
}

CppEditor* EditTabs::OpenFile(const std::string& givenPath, OnFailure onFailure) {
  const auto fail = [&](const std::string& sentence) {
    if (onFailure == OnFailure::cSay)
      host->Say(MarkControlBytes(sentence));
    else
      ShowError(sentence);
    return nullptr;
  };
  const std::string path = TidyPath(givenPath);
  if (!IsAbsolutePath(path)) return fail(path + "->path format");
  if (CppEditor* open = Activate(path, true)) return open;
  CppEditor* editor = NewTab(path);
  if (!editor) return fail("Could not open file \"" + path + "\"");
  theIdeSession.AddRecent(theIdeSession.recentFiles, path);
  host->FileOpened(path);
  return editor;
}

CppEditor* EditTabs::Activate(const std::string& path, bool select) {
  const int index = FindTab(path);
  if (index < 0) return nullptr;
  if (select && index != selectedIndex) {
    selectedIndex = index;
    ActiveChanged();
  }
  return GetTab(index)->editor.get();
}

// Checks the tab in front first.
int EditTabs::FindTab(const std::string& path) const {
  const EditTab* front = Active();
  const int frontIndex = selectedIndex;
  if (front && front->editor->fileName == path) return frontIndex;
  const DiskStamp onDisk = ReadDiskStamp(path);
  const auto isIt = [&](const std::unique_ptr<EditTab>& tab) {
    return NamesSameFile(tab->editor->fileName, path, onDisk);
  };
  if (front && isIt(tabs[static_cast<size_t>(frontIndex)])) return frontIndex;
  const auto found = std::find_if(tabs.begin(), tabs.end(), isIt);
  return found == tabs.end() ? -1 : static_cast<int>(found - tabs.begin());
}

CppEditor* EditTabs::NewTab(const std::string& path) {
  if (!path.empty() && !mavro::FileExists(path)) return nullptr;
  const int before = selectedIndex;
  tabs.push_back(std::make_unique<EditTab>(*this));
  EditTab& tab = *tabs.back();
  CppEditor& editor = *tab.editor;
  editor.fileName = path;
  Add(&tab);
  editor.ApplySettings();
  if (!path.empty() && !editor.Load(path).Ok()) {
    RemovePage(TabCount() - 1);
    std::erase(lastUsed, &tab);
    tabs.pop_back();
    if (before >= 0) selectedIndex = before;
    if (tabs.empty()) host->SetEditorCommandsEnabled(false);
    ActiveChanged();
    return nullptr;
  }
  tab.ShowName();
  selectedIndex = TabCount() - 1;
  theProject.parseOpenEditors(&editor.LiveText());
  host->SetEditorCommandsEnabled(true);
  ActiveChanged();
  if (!path.empty()) host->TabOpened(path);
  if (editor.IsReadOnly()) host->Say(tab.caption + " - " + editor.WhyReadOnly());
  return &editor;
}

bool EditTabs::ShowEarly(const EditTab& tab) {
  mavro::Form* form = GetForm();
  if (tabs.empty() || tabs.back().get() != &tab || !form || !form->IsOnScreen()) return false;
  selectedIndex = TabCount() - 1;
  host->SetEditorCommandsEnabled(true);
  ActiveChanged();
  mavro::RunPendingLayout(form);
  const ScopedFlag painting(showsEarly), quiet(asking);
  mavro::WaitReadable(-1, 0);
  return true;
}

void EditTabs::LeavePlace() {
  if (!Active()) return;
  mavro::NotifyArgs args{this, 0};
  onLeavePlace.Fire(args);
}

CppEditor* EditTabs::GoTo(const std::string& path, int line) {
  LeavePlace();
  CppEditor* editor = OpenFile(path);
  if (editor && line > 0) editor->ShowLine(line);
  return editor;
}

bool EditTabs::CanClose(EditTab& tab) {
  if (!tab.editor->dirty) return true;
  const std::string& name = tab.editor->fileName;
  bool cancelled = false;
  const bool wantsSave = mavro::Confirm(
      "File:   " + (name.empty() ? cNoName : name) + "\n\nwas modified!\tSave?", &cancelled);
  return !cancelled && (!wantsSave || Save(tab, SaveName::cOwn));
}

bool EditTabs::CloseTab(int n, Unsaved unsaved) {
  MAVRO_ASSERT_AS(n < TabCount(), "n<TabCount()");
  if (unsaved == Unsaved::cAsk && !CanClose(*GetTab(n))) return false;
  if (const std::string& path = GetTab(n)->editor->fileName; !path.empty()) host->TabClosing(path);
  const std::unique_ptr<EditTab> closed = std::move(tabs[static_cast<size_t>(n)]);
  tabs.erase(tabs.begin() + n);
  std::erase(lastUsed, closed.get());
  RemovePage(n);
  if (tabs.empty()) host->SetEditorCommandsEnabled(false);
  ActiveChanged();
  return true;
}

bool EditTabs::CloseAll() {
  if (!MayCloseAll()) return false;
  DropAll();
  return true;
}

bool EditTabs::MayCloseAll() {
  return std::all_of(tabs.begin(), tabs.end(), [this](const auto& tab) { return CanClose(*tab); });
}

void EditTabs::DropAll() {
  for (int i = TabCount() - 1; i >= 0; --i) CloseTab(i, Unsaved::cDrop);
}

bool EditTabs::SaveActive(SaveName name) {
  EditTab* tab = Active();
  return tab && Save(*tab, name);
}

bool EditTabs::Save(EditTab& tab, SaveName name, CppEditor::SavedBy by) {
  CppEditor& editor = *tab.editor;
  const bool asks = name == SaveName::cAsked;
  if (asks || editor.fileName.empty()) {
    mavro::FileQuestion question;
    question.mode = mavro::FileQuestion::cSave;
    question.title = asks ? "Save as" : "Save";
    question.name = editor.fileName;
    question.defaultExtension = "cpp";
    const std::vector<std::string> chosen = mavro::Dialogs().chooseFiles(question);
    if (chosen.empty() || !MayTakeName(tab, chosen.front())) return false;
    if (!editor.fileName.empty()) host->TabClosing(editor.fileName);
    editor.TakeName(chosen.front());
    tab.ShowName();
    host->FrontChanged();
    host->TabOpened(editor.fileName);
  }
  if (!MayOverwrite(editor)) return false;
  if (const mavro::FileResult result = editor.Save(by); !result.Ok()) {
    host->Say(ReasonFirst(result.error));
    ShowError("Error on save file:" + editor.fileName);
    return false;
  }
  return true;
}

// One file has one tab. Another tab of this file is closed if it has nothing that would be lost.
bool EditTabs::MayTakeName(EditTab& tab, const std::string& path) {
  const int index = FindTab(path);
  if (index < 0 || GetTab(index) == &tab) return true;
  if (GetTab(index)->editor->dirty) {
    ShowError("File:   " + path + "\n\nis open in another tab, with changes that are not saved!");
    return false;
  }
  CloseTab(index, Unsaved::cDrop);
  return true;
}

void EditTabs::ApplySettings() {
  for (const auto& tab : tabs) tab->editor->ApplySettings();
}

void EditTabs::SaveChanged(CppEditor::SavedBy by) {
  for (const auto& tab : tabs)
    if (tab->editor->dirty) Save(*tab, SaveName::cOwn, by);
}

void EditTabs::SaveAll() {
  SaveChanged(CppEditor::SavedBy::cUser);
  if (!theProject.isOpen) return;
  if (theProject.modified) host->SaveProject();
  host->SaveSession();
}

void EditTabs::OnCommand(int id) {
  const bool needsTab = id > cOpenCommand && id != cSaveAllCommand;
  if (needsTab && !Active()) return;
  switch (id) {
    case cNewCommand:
      return NewFile();
    case cOpenCommand:
      return AskAndOpen();
    case cSaveCommand:
      SaveActive(SaveName::cOwn);
      return;
    case cSaveAsCommand:
      SaveActive(SaveName::cAsked);
      return;
    case cSaveAllCommand:
      return SaveAll();
    case cCloseCommand:
      CloseTab(selectedIndex, Unsaved::cAsk);
      return;
    case cCloseAllCommand:
      CloseAll();
      return;
    default:
      return;
  }
}

// If a project is open, the new file is made for it.
void EditTabs::NewFile() {
  if (!theProject.isOpen || theProject.implicit)
    NewTab("");
  else
    host->AskForNewFile();
}

void EditTabs::AskAndOpen() {
  mavro::FileQuestion question;
  question.title = "Open...";
  question.filter = SourceFilter() + "|All|*.*";
  question.defaultExtension = "cpp";
  question.folder = theProject.folder;
  const std::vector<std::string> chosen = mavro::Dialogs().chooseFiles(question);
  if (!chosen.empty()) OpenFile(chosen.front());
}

void EditTabs::Show(int index) {
  if (index < 0 || index >= TabCount() || index == selectedIndex) return;
  selectedIndex = index;
  ActiveChanged();
}

void EditTabs::ShowLastUsed() {
  if (lastUsed.size() < 2) return;
  const EditTab* wanted = lastUsed[1];
  for (int i = 0; i < TabCount(); ++i)
    if (GetTab(i) == wanted) return Show(i);
}

void EditTabs::GoToCounterpart() {
  const EditTab* tab = Active();
  if (!tab || tab->editor->fileName.empty()) return;
  const std::string found = FindCounterpart(tab->editor->fileName, theProject);
  if (!found.empty()) GoTo(found, 0);
}

void EditTabs::RemoveMark(EditorMark mark) {
  for (const auto& tab : tabs) tab->editor->RemoveMark(mark);
}

void EditTabs::OnRescueTimer(mavro::NotifyArgs&) {
  const auto now = TextRescue::Clock::now();
  std::string whyNoCopy;
  for (const auto& tab : tabs) {
    tab->editor->TickRescue(now);
    if (whyNoCopy.empty()) whyNoCopy = tab->editor->WhyNoRescue();
  }
  host->ShowWhyNoCopy(whyNoCopy);
  theIdeSession.KeepRecent();
}

// A file that another program has changed is not replaced without a question.
bool EditTabs::MayOverwrite(CppEditor& editor) {
  const std::optional<DiskStamp> change = editor.ChangeOnDisk();
  if (!change || !change->exists) return true;
  editor.NoteAskedAbout(*change);
  const ScopedFlag guard(asking);
  return mavro::ConfirmLoss("File:   " + editor.fileName +
                            "\n\nwas changed by another program!\tReplace its changes?");
}

// A message box makes the window inactive, and active again afterwards.
void EditTabs::CheckDisk() {
  if (asking) return;
  const ScopedFlag guard(asking);
  for (size_t i = 0; i < tabs.size(); ++i) {
    CppEditor& editor = *tabs[i]->editor;
    editor.FollowPermission();
    const std::optional<DiskStamp> change = editor.ChangeOnDisk();
    if (change && !editor.WasAskedAbout(*change)) AskAbout(*change, editor);
  }
}

void EditTabs::AskAbout(const DiskStamp& change, CppEditor& editor) {
  editor.NoteAskedAbout(change);
  if (!change.exists) {
    host->Say("No longer there, its text is here only: " + editor.fileName);
    return;
  }
  if (theWindowSettings.reload == WindowSettings::cLeave)
    return host->Say("Changed by another program: " + editor.fileName);
  if (theWindowSettings.reload == WindowSettings::cLoadIfNothingIsLost && !editor.dirty) {
    const bool isLoaded = editor.Reload().Ok();
    return host->Say((isLoaded ? "Loaded again: " : "It can't be loaded again: ") +
                     editor.fileName);
  }
  const std::string fact = "File:   " + editor.fileName + "\n\nwas changed by another program!\t";
  const bool wanted = editor.dirty
                          ? mavro::ConfirmLoss(fact + "Load it again and lose your changes?")
                          : mavro::Confirm(fact + "Load it again?");
  if (wanted && !editor.Reload().Ok()) host->Say("It can't be loaded again: " + editor.fileName);
}

void EditTabs::OfferRescuedTexts() {
  for (const RescuedText& rescued : FindRescuedTexts()) {
    bool cancelled = false;
    const std::string name =
        rescued.path.empty() ? "without a name" : MarkControlBytes(rescued.path);
    const bool wanted = mavro::Confirm(
        "Zendry ended before this file was saved:\n" + name + "\n\nOpen it with its changes?",
        &cancelled);
    if (cancelled) continue;
    CppEditor* editor = nullptr;
    if (wanted && mavro::FileExists(rescued.path)) editor = OpenFile(rescued.path);
    const bool isSecond = editor && editor->dirty;  // two texts of one file: neither is lost
    if (wanted && (!editor || isSecond)) editor = NewTab("");
    const bool isKept = editor && editor->TakeRescued(isSecond ? WithoutName(rescued) : rescued);
    if (editor) GetTab(selectedIndex)->ShowName();
    if (isKept || !wanted) RescueCopies::Forget(rescued);
  }
}

void EditTabs::OnChangeSel(mavro::NotifyArgs&) {
  ActiveChanged();
}

void EditTabs::OnTabCloseRequest(mavro::NotifyArgs& args) {
  if (args.value >= 0 && args.value < TabCount()) CloseTab(args.value, Unsaved::cAsk);
}

void EditTabs::OnMovePage(mavro::ItemArgs&) {
  std::sort(tabs.begin(), tabs.end(),
            [](const auto& a, const auto& b) { return a->pageIndex < b->pageIndex; });
}

void EditTabs::ActiveChanged() {
  if (!host) return;
  host->FrontChanged();
  EditTab* tab = Active();
  if (!tab) return;
  std::erase(lastUsed, tab);
  lastUsed.insert(lastUsed.begin(), tab);
  tab->editor->Focus();
}

}  // namespace zendry
