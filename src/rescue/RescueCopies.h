#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "FileText.h"
#include "base/DiskStamp.h"

namespace zendry {

// One copy of unsaved work in the rescue folder.
struct RescueCopy {
  std::string file;     // the copy
  std::string path;     // the file that the work belongs to; empty for one without a name
  std::string content;  // what that file would hold, had the work been saved
  std::string steps;    // what was put behind it since, as it was given
};

// The copies of one kind that this program keeps in the rescue folder, one for each number. A copy
// is named after kind, process, its start and number; it holds the path of the file, a NUL, which
// no path has, and the content. Beside it stands a file of steps, when there are some.
class RescueCopies {
 public:
  // `newKind` is the first part of the names; letters only.
  explicit RescueCopies(std::string_view newKind) : kind(newKind) {}

  // Writes or replaces a copy; synced when it returns. An error: there is no copy of that content.
  mavro::SaveResult Keep(int number, std::string_view path, std::string_view content) const;
  // Puts a step behind the first `offset` bytes of a copy's steps; synced when it returns. An
  // error: it isn't there whole. A new copy leaves the steps of the old one behind it: a step must
  // say which copy it goes with.
  mavro::SaveResult AddStep(int number, size_t offset, std::string_view step) const;
  void Drop(int number) const;
  // The path of a copy of this program's, there or not; empty when there is no folder.
  std::string FileOf(int number) const;
  // The state of the copy on the disk.
  DiskStamp Stamp(int number) const { return ReadDiskStamp(FileOf(number)); }

  // The copies of programs that have ended without dropping them, by name.
  std::vector<RescueCopy> OfTheDead() const;
  // Takes away one of these, which has been dealt with.
  static void Forget(const RescueCopy& copy);

 private:
  bool IsOfTheDead(std::string_view fileName) const;

  const std::string kind;
};

}  // namespace zendry
