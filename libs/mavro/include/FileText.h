#pragma once

#include <string>
#include <string_view>

namespace mavro {

// The result of reading or writing a file. The caller that asked for it shows the words.
struct [[nodiscard]] FileResult {
  std::string error = {};  // what failed and why, with the path; empty on success
  std::string doubt = {};  // what looks wrong in a file that could be read; empty if nothing does
  bool isMissing = false;  // after an error: nothing was found at the path, not even a link
  bool Ok() const { return error.empty(); }
  // The error, else the doubt; empty if there is nothing to say.
  const std::string& Words() const { return error.empty() ? doubt : error; }
};

// The result of reading a whole file, and its content; empty after an error.
struct [[nodiscard]] FileText : FileResult {
  std::string text = {};
};

// Reads the whole content of a regular file, as unchanged bytes. An error for a missing or
// unreadable file, a folder, a FIFO, a device, or a file of 2 GiB or more. Never blocks.
FileText ReadFileText(const std::string& path);

// Replaces a file's content. A failure at any byte leaves either the old or the new content whole.
// The content goes into a temporary file in the same folder (random name, O_EXCL, O_NOFOLLOW),
// which is synced and renamed over the old file. Mode, owner and access list are kept, symbolic
// links are followed. If that is impossible (further hard links, no right to make a file in the
// folder), the file is written in place, after a synced copy of the old content was made in the
// rescue folder. The copy is removed when the write has succeeded or the old content is restored;
// else it is kept as "old-DIGITS-NAME", and the error names it. A temporary file of a killed
// process is removed by the next save in that folder. A file without write permission is refused.
//
// All code writes the user's files through this function.
FileResult SaveFileText(const std::string& path, std::string_view content);

// Writes `bytes` after the first `offset` bytes of one of the program's own files and removes
// everything that was there; synced when it returns. If the file is missing and `offset` is 0, it
// is made, for its owner only. A failure can leave a part of `bytes` after `offset`, so the file's
// format must allow an incomplete end. For journals; the user's texts go through SaveFileText.
FileResult AppendFileText(const std::string& path, size_t offset, std::string_view bytes);

// The folder for rescue copies, ".zendry/rescue" in the profile folder. It is made with mode 0700
// if it is missing. Empty if it can't be made.
std::string RescueFolder();

// $HOME, else the home folder of the password database; no trailing slash.
std::string ProfileFolder();

bool FileExists(const std::string& path);    // a regular file; links are followed
bool FolderExists(const std::string& path);  // a folder; links are followed

}  // namespace mavro
