#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "FileText.h"
#include "search/OpenTexts.h"

namespace zendry {

// A file that a replacement is about to change.
struct ReplacedFile {
  std::string path;
  std::string oldBytes;
  uint64_t newDigest = 0;  // of the bytes that it will have
};

// The files of a replacement as the bytes of a journal, and back; none if the bytes are anything
// but a whole journal.
std::string WriteReplaceJournal(const std::vector<ReplacedFile>& files);
std::optional<std::vector<ReplacedFile>> ReadReplaceJournal(std::string_view bytes);

// Keeps the journals of the open project on the disk, where they outlive the program.
class JournalStore {
 public:
  virtual ~JournalStore() = default;
  // Writes a new journal, synced when it returns, or replaces one.
  virtual mavro::FileResult Keep(int id, const std::string& journal) = 0;
  // The content of a journal; empty if it can't be read.
  virtual std::string Read(int id) = 0;
  virtual void Drop(int id) = 0;
  // The journals that ended programs have left of the open project, the oldest first. They get ids
  // below 0.
  virtual std::vector<int> Left() = 0;
};

struct UndoneReplace {
  bool wasThereOne = false;
  size_t restored = 0;
  std::vector<std::string> refused;  // files that somebody has changed since
  std::vector<std::string> failed;   // what couldn't be written, with the reason
};

// The replacements in the open project that can be undone, the last one first.
class ReplaceUndo {
 public:
  explicit ReplaceUndo(JournalStore& newStore) : store(newStore) {}

  bool IsEmpty() const { return ids.empty(); }
  // Notes the files of a replacement before the first of them is changed. After an error none may
  // be.
  mavro::FileResult Begin(const std::vector<ReplacedFile>& files);
  // The replacement that was begun last has ended and can have changed only these of its files.
  void KeepOnly(const std::vector<ReplacedFile>& files);
  // Gives the files of the last replacement their old bytes, those that still have the new ones.
  // Others are refused and stay in the journal.
  UndoneReplace Undo(OpenTexts& open);

  // A project was opened: takes over what ended programs have left of it. True if there was
  // anything.
  bool TakeLeft();
  // The project is closed: nothing can be undone any more.
  void Forget();

 private:
  UndoneReplace UndoOne(int id, OpenTexts& open);

  JournalStore& store;
  std::vector<int> ids;
  int lastId = 0;
};

}  // namespace zendry
