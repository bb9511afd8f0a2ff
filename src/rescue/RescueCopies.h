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
  std::string path;     // the file that the work belongs to; empty for a file without a name
  std::string content;  // the content of that file, had the work been saved
  std::string steps;    // the steps added to the copy since, unchanged
};

// The copies of one kind that this program keeps in the rescue folder, one for each number. The
// name of a copy has the kind, the process, the start of the process and the number. A copy holds
// the path of the file, a NUL, which no path has, and the content. If there are steps, they are in
// a second file in the same folder.
class RescueCopies {
 public:
  // `newKind` is the first part of the names; letters only.
  explicit RescueCopies(std::string_view newKind) : kind(newKind) {}

  // Writes or replaces a copy; synced when it returns. An error means that there is no copy of that
  // content.
  mavro::FileResult Keep(int number, std::string_view path, std::string_view content) const;
  // Writes a step after the first `offset` bytes of a copy's steps; synced when it returns. An
  // error means that the step is not complete on the disk. A new copy doesn't remove the steps of
  // the old one: each step must name the copy that it belongs to.
  mavro::FileResult AddStep(int number, size_t offset, std::string_view step) const;
  void Drop(int number) const;
  // The path of a copy of this program, even if there is no such file; empty when there is no
  // folder.
  std::string FileOf(int number) const;
  // The state of the copy on the disk.
  DiskStamp Stamp(int number) const { return ReadDiskStamp(FileOf(number)); }

  // The copies of processes that have ended without dropping them, sorted by name.
  std::vector<RescueCopy> OfEndedProcesses() const;
  // Removes one of these copies after it has been handled.
  static void Forget(const RescueCopy& copy);

 private:
  bool IsOfEndedProcess(std::string_view fileName) const;

  const std::string kind;
};

}  // namespace zendry
