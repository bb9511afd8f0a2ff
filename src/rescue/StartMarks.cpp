#include "rescue/StartMarks.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <string_view>

#include "FileText.h"

namespace zendry {

namespace {

const RescueCopies cCopies("start");
constexpr int cMark = 1;  // a program has one

// Not synced: a mark must outlive the program, not the machine. A power cut says nothing about the
// file that was being opened, and a disk write for each file would slow down the start. For the
// same reason the old mark is overwritten and not emptied first: file systems flush a file that was
// emptied and rewritten.
void Write(const std::string& bytes) {
  const std::string file = cCopies.FileOf(cMark);
  if (file.empty()) return;
  const int mark = open(file.c_str(), O_WRONLY | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0600);
  if (mark < 0) return;
  const auto size = static_cast<ssize_t>(bytes.size());
  const bool isWhole =
      write(mark, bytes.data(), bytes.size()) == size && ftruncate(mark, size) == 0;
  close(mark);
  if (!isWhole) unlink(file.c_str());
}

// The files that a mark names: the file that was being opened, and the files left closed before it.
std::vector<std::string> NamesIn(const RescueCopy& mark) {
  std::vector<std::string> names = {mark.path};
  for (std::string_view rest = mark.content; !rest.empty();) {
    const std::string_view name = rest.substr(0, rest.find('\0'));
    names.emplace_back(name);
    rest.remove_prefix(std::min(name.size() + 1, rest.size()));
  }
  return names;
}

bool Holds(const std::vector<std::string>& names, const std::string& name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

}  // namespace

// A mark that can't be removed doesn't count: it would keep its file closed for ever. If a mark can
// be removed, its other files are doubtful as well: this start may open them later.
bool StartMarks::TakeFromEndedProcess(const std::string& path) {
  if (!leftByOthers) leftByOthers = cCopies.OfEndedProcesses();
  std::erase_if(*leftByOthers, [&](const RescueCopy& mark) {
    const std::vector<std::string> names = NamesIn(mark);
    if (!Holds(names, path)) return false;
    if (unlink(mark.file.c_str()) == 0)
      std::copy_if(names.begin(), names.end(), std::back_inserter(leftClosed),
                   [](const std::string& name) { return !name.empty(); });
    return true;
  });
  return Holds(leftClosed, path);
}

bool StartMarks::Begin(const std::string& path) {
  const bool isDoubtful = TakeFromEndedProcess(path);
  Watch(isDoubtful ? "" : path);
  return !isDoubtful;
}

void StartMarks::Watch(const std::string& path) {
  if (path.empty() && leftClosed.empty()) return cCopies.Drop(cMark);
  std::string bytes = path + '\0';
  for (const std::string& name : leftClosed) bytes += name + '\0';
  Write(bytes);
}

void StartMarks::Clear() {
  if (!leftByOthers) return;
  cCopies.Drop(cMark);
  leftByOthers.reset();
  leftClosed.clear();
}

}  // namespace zendry
