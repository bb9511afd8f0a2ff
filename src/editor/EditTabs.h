#pragma once

#include <memory>
#include <string>
#include <vector>

#include "TabCtrl.h"
#include "Timer.h"
#include "editor/CppEditor.h"

namespace zendry {

class EditTabs;
class EditorHost;

// One open file: a page with its editor.
class EditTab : public mavro::TabPage {
 public:
  explicit EditTab(EditTabs& itsTabs);
  ~EditTab() override;

  // Shows or takes away the mark of unsaved changes.
  void SetModified(bool on);
  // Names the page after the editor's file.
  void ShowName();

  // The window's part; null once the window goes.
  EditorHost* Host() const;

  std::string caption;    // the file's short name
  bool modified = false;  // the mark is shown
  const std::unique_ptr<CppEditor> editor;

 private:
  void OnMouseDown(mavro::MouseArgs& args);
  void OnContextMenu(mavro::MouseArgs& args);

  EditTabs& tabs;
  int pressedAt = 0;  // where the mouse was last pressed, from the editor's left
};

// The open files, one tab each. Whoever wants to show a place in a file comes here. Owns its tabs.
class EditTabs : public mavro::TabCtrl {
 public:
  // `itsHost` is the window that the tabs stand in.
  explicit EditTabs(EditorHost& itsHost);
  ~EditTabs() override;

  // The window; null once it goes, after which nothing may be opened or closed.
  EditorHost* Host() const { return host; }
  void DetachHost() { host = nullptr; }

  // How a failure is said: in a box, or in the status line where nobody has just asked for the
  // file.
  enum class OnFailure { cBox, cSay };
  // Shows a file, in its tab if it has one. The path must be absolute. Null when it can't be shown,
  // which has been said. The answer lives until its tab is closed.
  CppEditor* OpenFile(const std::string& path, OnFailure onFailure = OnFailure::cBox);
  // The editor of what a path names, under whatever name it is open, and with `select` its tab
  // brought to the front; null when the file isn't open. The names of files that are not there are
  // compared, the case of their letters ignored.
  CppEditor* Activate(const std::string& path, bool select);
  // Adds and shows a tab with the file, for an empty path with a text that has no name yet; null
  // when the file can't be read.
  CppEditor* NewTab(const std::string& path);
  // Opens a file and puts the caret at a line; line 0 leaves the caret where it is.
  CppEditor* GoTo(const std::string& path, int line);

  // Whether unsaved changes are asked about before a tab goes.
  enum class Unsaved { cAsk, cDrop };
  // Closes a tab; false when the user wants it to stay.
  bool CloseTab(int n, Unsaved unsaved);
  // Closes all tabs or, when one must stay, none.
  bool CloseAll();
  // The two halves of it: asks about all unsaved changes, false when the user wants to go on; and
  // closes all tabs without asking.
  bool MayCloseAll();
  void DropAll();
  // Under which name a text is saved: its own if it has one, or one that is asked for.
  enum class SaveName { cOwn, cAsked };
  // Saves the tab in front; false when it wasn't written.
  bool SaveActive(SaveName name);
  // Saves the tabs with changes; then the project, if it has any, and its session.
  void SaveAll();
  // Saves the tabs with changes and nothing else.
  void SaveChanged();

  // Makes all editors look as the settings say.
  void ApplySettings();

  // Carries out a file command. Those above 1302 need a tab, "Save all" excepted.
  void OnCommand(int id);

  // Opens the source that belongs to the header in front, or the header that belongs to the source.
  void GoToCounterpart();
  // Opens what programs before this one have left unsaved, as far as the user wants it.
  void OfferRescuedTexts();
  // Asks about each open file that another program has changed, once for each change.
  void CheckDisk();

  // The tab in front, or null.
  EditTab* Active() const;
  EditTab* GetTab(int index) const;
  void RemoveMark(EditorMark mark);

 private:
  void OnChangeSel(mavro::NotifyArgs& args);
  void OnTabCloseRequest(mavro::NotifyArgs& args);
  void OnMovePage(mavro::ItemArgs& args);
  void NewFile();
  void AskAndOpen();
  void OnRescueTimer(mavro::NotifyArgs& args);
  int FindTab(const std::string& path) const;
  void CheckDisk(CppEditor& editor);
  bool MayTakeName(EditTab& tab, const std::string& path);
  bool MayOverwrite(CppEditor& editor);
  bool CanClose(EditTab& tab);
  bool Save(EditTab& tab, SaveName name);
  void ActiveChanged();

  EditorHost* host;
  std::vector<std::unique_ptr<EditTab>> tabs;  // in the order of the pages
  mavro::Timer rescueTimer{this};
  bool asking = false;  // about files on the disk: one question at a time
};

// The filter of source and header files for file dialogs; further pairs may follow it.
constexpr const char* cSourceFilter = "C/C++ Files|*.cpp;*.cp;*.c;*.h";

}  // namespace zendry
