#pragma once

#include <memory>
#include <string>
#include <vector>

#include "TabCtrl.h"
#include "Timer.h"
#include "base/DiskStamp.h"
#include "base/FileKinds.h"
#include "editor/CppEditor.h"

namespace zendry {

class EditTabs;
class EditorHost;

// One open file: a page with its editor.
class EditTab : public mavro::TabPage {
 public:
  explicit EditTab(EditTabs& itsTabs);
  ~EditTab() override;

  // Shows or removes the mark of unsaved changes.
  void SetModified(bool on);
  // Names the page after the editor's file.
  void ShowName();
  // The first part of a large file is in the editor: brings the tab to the front, if it is a new
  // one of a window that is on the screen.
  bool ShowFirstPart();

  // The window as the tabs see it; null once the window is being destroyed.
  EditorHost* Host() const;

  std::string caption;    // the file's short name
  bool modified = false;  // the mark is shown
  const std::unique_ptr<CppEditor> editor;

 private:
  void OnMouseDown(mavro::MouseArgs& args);
  void OnContextMenu(mavro::MouseArgs& args);

  EditTabs& tabs;
  int pressedX = 0, pressedY = 0;  // where the mouse was last pressed, in the editor
};

// The open files, one tab each. All code that shows a place in a file uses this class. Owns its
// tabs.
class EditTabs : public mavro::TabCtrl {
 public:
  // `itsHost` is the window that contains the tabs.
  explicit EditTabs(EditorHost& itsHost);
  ~EditTabs() override;

  // The window; null once it is being destroyed; after that no tab may be opened or closed.
  EditorHost* Host() const { return host; }
  void DetachHost() { host = nullptr; }

  // Where a failure is reported: in a message box, or in the status line if the user has not just
  // asked for the file.
  enum class OnFailure { cBox, cSay };
  // Shows a file, in its tab if it has one. The path must be absolute. Null when it can't be shown;
  // then the failure has been reported. The editor lives until its tab is closed.
  CppEditor* OpenFile(const std::string& path, OnFailure onFailure = OnFailure::cBox);
  // The editor of the file that a path names, even if the file is open under another name; null
  // when the file isn't open. With `select`, its tab comes to the front. For files that don't
  // exist, only the names are compared, without the case of letters.
  CppEditor* Activate(const std::string& path, bool select);
  // Adds and shows a tab with the file; for an empty path, with an empty text that has no name yet.
  // Null when the file can't be read.
  CppEditor* NewTab(const std::string& path);
  // Brings the tab that is being made to the front; false if it can't be seen.
  bool ShowEarly(const EditTab& tab);
  // Opens a file and puts the caret at a line; line 0 leaves the caret where it is.
  CppEditor* GoTo(const std::string& path, int line);

  // Ask about unsaved changes before a tab is closed, or drop them.
  enum class Unsaved { cAsk, cDrop };
  // Closes a tab; false when the user wants it to stay.
  bool CloseTab(int n, Unsaved unsaved);
  // Closes all tabs or, when one must stay, none.
  bool CloseAll();
  // The two halves of CloseAll: MayCloseAll asks about all unsaved changes and answers false when a
  // tab must stay; DropAll closes all tabs without asking.
  bool MayCloseAll();
  void DropAll();
  // The name for a save: the text's own name if it has one, or a name that the user is asked for.
  enum class SaveName { cOwn, cAsked };
  // Saves the tab in front; false when the file wasn't written.
  bool SaveActive(SaveName name);
  // Saves the tabs with changes; then the project, if it has changes, and its session.
  void SaveAll();
  // Saves only the tabs with changes.
  void SaveChanged(CppEditor::SavedBy by);

  // Applies the settings to all editors.
  void ApplySettings();

  // Runs a file command. Commands with an id above 1302 need a tab, except "Save all".
  void OnCommand(int id);

  // Brings a tab to the front by its place, from 0; nothing if there is none.
  void Show(int index);
  // Brings the tab that was in front before to the front.
  void ShowLastUsed();
  // Opens the source that belongs to the header in front, or the header that belongs to the source.
  void GoToCounterpart();
  // Offers the unsaved texts of earlier runs of the program, and opens those that the user wants.
  void OfferRescuedTexts();
  // To be called before the user is taken to another place: fires onLeavePlace.
  void LeavePlace();
  // True while the first part of a file is painted: the tabs must stay as they are.
  bool IsShowingEarly() const { return showsEarly; }
  // Asks about each open file that another program has changed, once for each change.
  void CheckDisk();

  // The tab in front, or null.
  EditTab* Active() const;
  EditTab* GetTab(int index) const;
  // The tabs in the order in which they were in front, the one in front first.
  const std::vector<const EditTab*>& LastUsed() const { return lastUsed; }
  void RemoveMark(EditorMark mark);

  // The caret is about to be taken to another place, by a list or a command.
  mavro::NotifyEvent onLeavePlace;

 private:
  void OnChangeSel(mavro::NotifyArgs& args);
  void OnTabCloseRequest(mavro::NotifyArgs& args);
  void OnMovePage(mavro::ItemArgs& args);
  void NewFile();
  void AskAndOpen();
  void OnRescueTimer(mavro::NotifyArgs& args);
  int FindTab(const std::string& path) const;
  void AskAbout(const DiskStamp& change, CppEditor& editor);
  bool MayTakeName(EditTab& tab, const std::string& path);
  bool MayOverwrite(CppEditor& editor);
  bool CanClose(EditTab& tab);
  bool Save(EditTab& tab, SaveName name, CppEditor::SavedBy by = CppEditor::SavedBy::cUser);
  void ActiveChanged();

  EditorHost* host;
  std::vector<std::unique_ptr<EditTab>> tabs;  // in the order of the pages
  std::vector<const EditTab*> lastUsed;        // the one in front first
  mavro::Timer rescueTimer{this};
  bool showsEarly = false;
  bool asking = false;  // true during a question about files on the disk: one at a time
};

// The filter of source and header files for file dialogs; further pairs may follow it.
inline std::string SourceFilter() {
  return "C/C++ Files|" + SourcePatterns();
}

}  // namespace zendry
