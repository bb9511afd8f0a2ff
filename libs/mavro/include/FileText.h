#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace mavro {

// The whole content of a regular file, bytes as they are. Nothing for a missing or unreadable file,
// a folder, a FIFO or a device, or 2 GiB and more: it never blocks.
std::optional<std::string> ReadFileText(const std::string& path);

// What became of a save. `error` is empty on success; else it says in words what failed and why.
struct SaveResult {
  std::string error;
  bool Ok() const { return error.empty(); }
};

// Replaces a file's content so that a failure at any byte leaves the old or the new content whole:
// a temporary file beside it (random name, O_EXCL, O_NOFOLLOW), synced and renamed over it, keeping
// mode, owner and access list and following symbolic links. Where that can't be (further hard
// links, no right to make a file in the folder) it writes in place, after a synced copy of the old
// content went to the rescue folder. The copy goes when the write has succeeded or the old content
// is back; else it stays there as "old-DIGITS-NAME", and the error names it. What a killed process
// left beside a file goes with the next save in that folder. A file without write right is refused.
//
// The one function through which the whole tree writes files the user owns.
SaveResult SaveFileText(const std::string& path, std::string_view content);

// Puts `bytes` behind the first `offset` bytes of a file of our own and cuts off what stood there;
// synced when it returns. A file that isn't there is made, for its owner only, when `offset` is 0.
// A failure can leave a piece of `bytes` behind `offset`, so the format must know a torn end. For
// journals; a text of the user's goes through SaveFileText.
SaveResult AppendFileText(const std::string& path, size_t offset, std::string_view bytes);

// Folder for rescue copies, made with mode 0700 when missing; empty when it can't be had.
// It is ".zendry/rescue" in the profile folder.
std::string RescueFolder();

// $HOME, else the home folder of the password database; no trailing slash.
std::string ProfileFolder();

bool FileExists(const std::string& path);    // a regular file, links followed
bool FolderExists(const std::string& path);  // a folder, links followed

}  // namespace mavro
