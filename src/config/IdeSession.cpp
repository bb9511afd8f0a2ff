#include "config/IdeSession.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <utility>

#include "FileText.h"
#include "base/ParseInt.h"
#include "config/BuildSettings.h"
#include "config/EditorSettings.h"
#include "config/PrintSettings.h"
#include "config/SearchSettings.h"
#include "config/WindowSettings.h"

namespace zendry {

IdeSession theIdeSession;

namespace {

constexpr char cBoundsKey[] = "Bounds";
constexpr char cSplitterKey[] = "split-h";
constexpr char cPairsKey[] = "ed-closepairs";
constexpr char cMaximizedKey[] = "win-max";
constexpr char cFirstSizeKey[] = "first-size";  // percent of the screen
constexpr int cFarthest = 800;                  // a window further right or down goes to the edge
constexpr int cFarthestBack = -32767;           // no desktop reaches further left or up
constexpr int cReachable = 100;                 // so much of a window is enough to move it
constexpr int cMinWidth = 801;
constexpr int cMinHeight = 401;
constexpr int cLeastShare = 30;
constexpr int cBelowSplitter = 79;  // room for the bottom pane
constexpr int cDefaultTabSize = 4;
constexpr int cMaxTabSize = 256;

// Switches of the editor that are off at first. They are stored once they have been changed.
struct EditorSwitch {
  const char* key;
  int EditorSettings::*isOn;
};
constexpr EditorSwitch cEditorSwitches[] = {
    {"ed-linenum", &EditorSettings::lineNumbers},
    {"ed-linefolds", &EditorSettings::lineAboveOpenFolds},
    {"ed-wrap", &EditorSettings::wrapLines},
    {"ed-blanks", &EditorSettings::showWhiteSpace},
    {"ed-lineends", &EditorSettings::showLineEnds},
    {"ed-strip", &EditorSettings::stripBlanks},
    {"ed-lastline", &EditorSettings::endLastLine},
};

// The number in the form of "%g".
std::string Number(int number) {
  char text[32];
  std::snprintf(text, sizeof text, "%g", static_cast<double>(number));
  return text;
}

std::string Flag(bool set) {
  return set ? "1" : "0";
}

std::string KeyOf(const RecentList& list, size_t index) {
  std::string key = list.keyTemplate;
  key[4] = static_cast<char>('A' + index);
  return key;
}

// A value that a line of the file can hold: reading it gives the same again.
bool FitsLine(const std::string& value) {
  return value.find('\n') == std::string::npos && !value.ends_with('\r');
}

std::string IniText(const std::map<std::string, std::string>& values) {
  std::string text;
  for (const auto& [key, value] : values)
    if (!value.empty() && FitsLine(value)) text.append(key).append("=").append(value).append("\n");
  return text;
}

// Reads "KEY=VALUE" lines. False when there is any other text.
bool ReadIniText(std::string_view text, std::map<std::string, std::string>& values) {
  bool isWhole = text.find('\0') == std::string::npos;
  for (std::string_view rest = text; !rest.empty();) {
    std::string_view line = rest.substr(0, rest.find('\n'));
    rest.remove_prefix(std::min(line.size() + 1, rest.size()));
    if (line.ends_with('\r')) line.remove_suffix(1);
    const size_t equals = line.find('=');
    if (equals != std::string_view::npos)
      values[std::string(line.substr(0, equals))] = line.substr(equals + 1);
    else if (line.find_first_not_of(" \t") != std::string_view::npos)
      isWhole = false;
  }
  return isWhole;
}

void PutInFront(RecentList& list, std::string path) {
  std::erase(list.items, path);
  if (!list.items.empty() && list.items.size() >= list.capacity) list.items.pop_back();
  list.items.insert(list.items.begin(), std::move(path));
}

// Keeps our other running programs from writing the settings, as long as it lives. If it can't, the
// settings are written all the same.
class FolderLock {
 public:
  explicit FolderLock(const std::string& folder)
      : file(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    if (file >= 0) isFree = flock(file, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
  }
  ~FolderLock() {
    if (file >= 0) close(file);
  }
  FolderLock(const FolderLock&) = delete;
  FolderLock& operator=(const FolderLock&) = delete;

  bool isFree = true;  // false when another program is writing just now

 private:
  const int file;
};

// The four numbers of "LEFT;TOP;WIDTH;HEIGHT;".
std::optional<std::array<int, 4>> ParseBounds(std::string_view text) {
  std::array<int, 4> numbers;
  for (int& number : numbers) {
    const size_t end = text.find(';');
    if (end == std::string_view::npos) return std::nullopt;
    number = ParseInt(text.substr(0, end));
    text.remove_prefix(end + 1);
  }
  return numbers;
}

int CorrectedPlace(int place) {
  return place > cFarthest || place < cFarthestBack ? 0 : place;
}

int CorrectedSize(int size, int smallest, int screen) {
  return size < smallest || size > screen ? screen : size;
}

// A share of the screen, large enough that the next start won't treat it as damaged, but not larger
// than the screen.
int ShareOf(int screen, int percent, int smallest) {
  return std::min(std::max(screen * percent / 100, smallest), screen);
}

int CorrectedSplitter(const std::string& stored, int height) {
  const int base = height * 11 / 16;
  if (stored.empty()) return base;
  const int position = ParseInt(stored);
  return position < base * 11 / 15 || position >= height - cBelowSplitter ? base : position;
}

}  // namespace

IdeSession::IdeSession() {
  const std::string profile = mavro::ProfileFolder();
  if (profile.empty()) return;
  folder = profile + "/.zendry";
  iniPath = folder + "/zendry.ini";
}

void IdeSession::NoteError(const std::string& error) {
  if (noted.empty() && !said.contains(error)) noted = error;
}

std::string IdeSession::TakeError() {
  std::string error;
  error.swap(noted);
  if (!error.empty()) said.insert(error);
  return error;
}

bool IdeSession::EnsureFolder() {
  if (folder.empty()) {
    NoteError("Settings are not kept: there is no profile folder");
    return false;
  }
  if (mkdir(folder.c_str(), 0700) == 0) return true;
  const int error = errno;
  if (mavro::FolderExists(folder)) return true;
  const char* reason = error == EEXIST ? "it is not a folder" : std::strerror(error);
  NoteError(folder + ": Settings are not kept, " + reason);
  return false;
}

void IdeSession::ReadText(const std::string& text) {
  if (ReadIniText(text, values)) return;
  damagedText = text;
  NoteError(iniPath + ": holds lines that are no settings, which are passed over");
}

std::string IdeSession::Value(const std::string& key, std::string_view otherwise) const {
  for (const auto* map : {&values, &firstValues})
    if (const auto found = map->find(key); found != map->end()) return found->second;
  return std::string(otherwise);
}

// Tab and indent sizes that no editor could work with are treated as damaged.
void IdeSession::TakeEditorSettings() const {
  EditorSettings& editor = theEditorSettings;
  editor.useTabs = Value("ed-usetab", "1") != "0";
  editor.tabSize = ParseInt(Value("ed-tabsize", "4"));
  if (editor.tabSize < 1 || editor.tabSize > cMaxTabSize) editor.tabSize = cDefaultTabSize;
  editor.indentSize = ParseInt(Value("ed-indsize", "4"));
  if (editor.indentSize < 0 || editor.indentSize > cMaxTabSize) editor.indentSize = cDefaultTabSize;
  editor.useMonoFont = Value("ed-usemono", "0") == "1";
  editor.closePairs = Value(cPairsKey, "1") != "0";
  for (const EditorSwitch& row : cEditorSwitches) editor.*row.isOn = Value(row.key, "0") == "1";
}

void IdeSession::TakeBuildSettings() const {
  theBuildSettings = ReadBuildSettings([this](const std::string& key) { return Value(key, ""); });
}

void IdeSession::TakeFirstValues(const std::string& firstStart) {
  firstValues.clear();
  if (const mavro::FileText first = mavro::ReadFileText(firstStart); first.Ok())
    ReadIniText(first.text, firstValues);
}

void IdeSession::LoadBuildSettings(const std::string& firstStart) {
  TakeFirstValues(firstStart);
  if (const mavro::FileText ini = mavro::ReadFileText(iniPath); ini.Ok())
    ReadIniText(ini.text, values);
  TakeBuildSettings();
}

void IdeSession::Load(const std::string& firstStart) {
  EnsureFolder();
  TakeFirstValues(firstStart);
  const mavro::FileText ini = mavro::ReadFileText(iniPath);
  if (ini.Ok()) {
    ReadText(ini.text);
  } else if (!ini.isMissing) {
    mayReplace = false;
    NoteError(iniPath + ": Settings are not kept, since they can't be read");
  }
  known = values;
  isLoaded = true;
  TakeLists();
  TakeEditorSettings();
  TakeBuildSettings();
  theWindowSettings = ReadWindowSettings([this](const std::string& key) { return Value(key, ""); });
  TakeSearchSettings(values);
  TakePrintSettings(values);
  fonts = theIdeFonts.fonts;
  debuggerTips = true;
  quietDebugger = Value("dbg-quiet", "0") == "1";
}

bool IdeSession::IsListKey(const std::string& key) const {
  for (const RecentList* list : {&recentFiles, &recentProjects})
    for (size_t i = 0; i < list->capacity; ++i)
      if (key == KeyOf(*list, i)) return true;
  return false;
}

void IdeSession::TakeLists() {
  for (RecentList* list : {&recentFiles, &recentProjects}) {
    list->items.clear();
    for (size_t i = 0; i < list->capacity; ++i)
      if (const auto found = values.find(KeyOf(*list, i)); found != values.end())
        list->items.push_back(found->second);
    for (const std::string& path : list->added) PutInFront(*list, path);
  }
}

// Takes over the changes that other programs have written since the file was last read. A file that
// is gone, or holds more than settings, says nothing about such changes.
void IdeSession::TakeOver() {
  const mavro::FileText ini = mavro::ReadFileText(iniPath);
  if (!ini.Ok()) {
    mayReplace = mayReplace && ini.isMissing;
    if (!mayReplace) NoteError(iniPath + ": Settings are not kept, since they can't be read");
    return;
  }
  Values theirs;
  const bool damaged = !ReadIniText(ini.text, theirs);
  if (damaged && ini.text != damagedText) damagedText = ini.text;
  if (damaged || theirs.empty() || theirs == known) return;
  const Values before = std::exchange(known, theirs);
  for (const auto& [key, value] : values) {
    const auto found = before.find(key);
    const bool isChangedHere = found == before.end() || found->second != value;
    if (isChangedHere && !IsListKey(key)) theirs[key] = value;
  }
  values = std::move(theirs);
  TakeLists();
}

// A path that no line can hold is left out, and the others move up.
void IdeSession::StoreList(const RecentList& list) {
  size_t index = 0;
  for (const std::string& item : list.items)
    if (FitsLine(item)) values[KeyOf(list, index++)] = item;
  for (; index < list.capacity; ++index) values.erase(KeyOf(list, index));
}

void IdeSession::StoreSettings(const Placement& placement) {
  char bounds[64];
  std::snprintf(bounds, sizeof bounds, "%d;%d;%d;%d;", placement.left, placement.top,
                placement.width, placement.height);
  values[cBoundsKey] = bounds;
  if (placement.isMaximized)
    values[cMaximizedKey] = "1";
  else
    values.erase(cMaximizedKey);
  StoreList(recentFiles);
  StoreList(recentProjects);
  values["dbg-tip"] = Flag(debuggerTips);
  values[cSplitterKey] = Number(placement.splitter);
  values["ed-usetab"] = Flag(theEditorSettings.useTabs);
  values["ed-tabsize"] = Number(theEditorSettings.tabSize);
  values["ed-indsize"] = Number(theEditorSettings.indentSize);
  values["ed-usemono"] = Flag(theEditorSettings.useMonoFont);
  for (const EditorSwitch& row : cEditorSwitches) {
    const bool isOn = theEditorSettings.*row.isOn != 0;
    if (isOn != (Value(row.key, "0") == "1")) values[row.key] = Flag(isOn);
  }
  const bool closesPairs = theEditorSettings.closePairs != 0;
  if (closesPairs != (Value(cPairsKey, "1") != "0")) values[cPairsKey] = Flag(closesPairs);
  StoreBuildSettings();
  StoreWindowSettings();
  StoreSearchSettings(values);
  StorePrintSettings(values);
}

// Only what differs from the values that are read the next time anyway.
void IdeSession::StoreBuildSettings() {
  const BuildSettings stored =
      ReadBuildSettings([this](const std::string& key) { return Value(key, ""); });
  if (stored == theBuildSettings) return;
  for (const auto& [key, value] : BuildSettingValues(theBuildSettings)) {
    if (value.empty())
      values.erase(key);
    else
      values[key] = value;
  }
}

// The same.
void IdeSession::StoreWindowSettings() {
  const WindowSettings stored =
      ReadWindowSettings([this](const std::string& key) { return Value(key, ""); });
  const auto before = WindowSettingValues(stored);
  for (const auto& [key, value] : WindowSettingValues(theWindowSettings))
    if (value != before.at(key)) values[key] = value;
}

bool IdeSession::KeepDamagedText() {
  if (damagedText.empty()) return true;
  const mavro::FileResult kept = mavro::SaveFileText(iniPath + ".bad", damagedText);
  if (kept.Ok())
    damagedText.clear();
  else
    NoteError(kept.error);
  return kept.Ok();
}

bool IdeSession::Write() {
  if (!EnsureFolder() || !mayReplace || !KeepDamagedText()) return false;
  const std::string text = IniText(values);
  const mavro::FileText old = mavro::ReadFileText(iniPath);
  if (!old.Ok() || old.text != text) {
    const mavro::FileResult result = mavro::SaveFileText(iniPath, text);
    if (!result.Ok()) NoteError(result.error);
    if (!result.Ok()) return false;
  }
  known.clear();
  ReadIniText(text, known);
  for (RecentList* list : {&recentFiles, &recentProjects}) list->added.clear();
  tried = 0;
  return true;
}

void IdeSession::Save(const Placement& placement) {
  const FolderLock lock(folder);
  if (isLoaded) TakeOver();
  StoreSettings(placement);
  Write();
}

void IdeSession::KeepRecent() {
  if (!isLoaded || AddedCount() == tried) return;
  const FolderLock lock(folder);
  if (!lock.isFree) return;
  TakeOver();
  StoreList(recentFiles);
  StoreList(recentProjects);
  if (!Write()) tried = AddedCount();
}

Placement Reachable(Placement placement, int screenWidth, int screenHeight) {
  if (placement.left > screenWidth - cReachable)
    placement.left = std::max(0, screenWidth - placement.width);
  if (placement.top > screenHeight - cReachable)
    placement.top = std::max(0, screenHeight - placement.height);
  return placement;
}

std::optional<Placement> IdeSession::RestoreBounds(int screenWidth, int screenHeight) const {
  const auto bounds = ParseBounds(Value(cBoundsKey, ""));
  if (!bounds) return std::nullopt;
  Placement placement;
  placement.left = CorrectedPlace((*bounds)[0]);
  placement.top = CorrectedPlace((*bounds)[1]);
  placement.width = CorrectedSize((*bounds)[2], cMinWidth, screenWidth);
  placement.height = CorrectedSize((*bounds)[3], cMinHeight, screenHeight);
  placement.splitter = CorrectedSplitter(Value(cSplitterKey, ""), placement.height);
  placement.isMaximized = Value(cMaximizedKey, "0") == "1";
  return placement;
}

Placement IdeSession::FirstPlacement(int left, int top, int width, int height) const {
  Placement first;
  const int percent = ParseInt(Value(cFirstSizeKey, ""));
  if (percent >= cLeastShare && percent <= 100) {
    first.width = ShareOf(width, percent, cMinWidth);
    first.height = ShareOf(height, percent, cMinHeight);
    first.left = left + (width - first.width) / 2;
    first.top = top + (height - first.height) / 2;
  }
  first.splitter = CorrectedSplitter("", first.height);
  return first;
}

void IdeSession::AddRecent(RecentList& list, std::string path) {
  list.added.push_back(path);
  PutInFront(list, std::move(path));
}

}  // namespace zendry
