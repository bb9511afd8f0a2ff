#pragma once

#include <array>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "config/IdeConfig.h"

namespace zendry {

// Recently used paths, newest first. `keyTemplate` gives the keys under which they are stored: its
// character at position 4 is replaced by a letter from "A" on.
struct RecentList {
  size_t capacity = 8;
  std::string keyTemplate;
  std::vector<std::string> items;
  std::vector<std::string> added = {};  // since the file was read or written, oldest first
};

// The position of the main window and of its horizontal splitter.
struct Placement {
  int left = 0;
  int top = 0;
  int width = 800;
  int height = 560;
  int splitter = 0;
  bool isMaximized = false;  // the rest is its place when it is restored
  friend bool operator==(const Placement&, const Placement&) = default;
};

// A place at the right or the lower edge of a smaller screen than that it was kept on, moved so far
// that the title bar can be reached.
Placement Reachable(Placement placement, int screenWidth, int screenHeight);

// The user's settings that are kept between two runs: "zendry.ini" in the folder ".zendry" of the
// profile folder. Everything works without it; TakeError() gives the reason why something can't be
// kept.
class IdeSession {
 public:
  // Determines the paths of folder and file; touches nothing on disk.
  IdeSession();

  // Reads the ini file and applies the editor's settings to theEditorSettings. The file may be
  // missing, incomplete or damaged. Makes the folder, for the user alone, when it is missing.
  // `firstStart` is the installation's file of the same format: it gives the value of each key that
  // the user's file doesn't have. It may be missing.
  void Load(const std::string& firstStart = "");
  // Only reads the settings for builds; for programs that keep nothing. Makes no folder.
  void LoadBuildSettings(const std::string& firstStart);
  // Writes the ini file. An existing file that couldn't be read is left as it is; one that held
  // lines without meaning is kept beside the new one with ".bad" appended to its name. The changes
  // that other running programs have written since are taken over first: their recent paths stay in
  // the lists, and their values stay for keys that haven't changed here.
  void Save(const Placement& placement);
  // Writes the recent lists, if anything has been added to them; to be called now and then. After a
  // failure it isn't tried again before something else is added. Does nothing before Load.
  void KeepRecent();

  // The place for the window on a screen of this size; nothing when no place, or half a place, is
  // stored. A place above 800 and sizes that are too small or exceed the screen are corrected.
  std::optional<Placement> RestoreBounds(int screenWidth, int screenHeight) const;

  // The place for the window when no place is stored, on a screen with this usable area: in its
  // middle, with the share of it that the installation's file gives. Without such a value it is the
  // place that a Placement starts with.
  Placement FirstPlacement(int left, int top, int width, int height) const;

  // Puts a path at the beginning of a list, which holds it only once.
  static void AddRecent(RecentList& list, std::string path);

  // Notes a reason why something can't be kept, to be shown once. The first reason wins; one that
  // has been shown isn't shown again.
  void NoteError(const std::string& error);
  // The reason noted, which is then forgotten; empty when there is none.
  std::string TakeError();

  std::map<std::string, std::string> values;       // every key of the file, also unknown ones
  std::map<std::string, std::string> firstValues;  // of the installation; never saved
  std::string folder;                              // empty when there is no profile folder
  std::string iniPath;
  bool debuggerTips = true;    // stored, but true again at each start
  bool quietDebugger = false;  // what gdb says in every session isn't logged; never stored
  RecentList recentFiles = {8, "file0", {}};
  RecentList recentProjects = {8, "proj0", {}};
  std::array<FontRec, 3> fonts = IdeFonts().fonts;  // for the options dialog

 private:
  bool EnsureFolder();
  void ReadText(const std::string& text);
  void TakeFirstValues(const std::string& firstStart);
  void TakeEditorSettings() const;
  void TakeBuildSettings() const;
  void StoreBuildSettings();
  void StoreWindowSettings();
  std::string Value(const std::string& key, std::string_view otherwise) const;
  bool IsListKey(const std::string& key) const;
  void TakeLists();
  void TakeOver();
  void StoreList(const RecentList& list);
  void StoreSettings(const Placement& placement);
  bool KeepDamagedText();
  bool Write();
  size_t AddedCount() const { return recentFiles.added.size() + recentProjects.added.size(); }

  using Values = std::map<std::string, std::string>;

  Values known;  // the values as the file had them when it was last read or written
  bool isLoaded = false;
  size_t tried = 0;         // AddedCount() when writing it failed
  bool mayReplace = true;   // false when the file is there and can't be read
  std::string damagedText;  // content of a file that held more than settings
  std::string noted;
  std::set<std::string> said;
};

extern IdeSession theIdeSession;

}  // namespace zendry
