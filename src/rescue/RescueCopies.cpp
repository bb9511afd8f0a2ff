#include "rescue/RescueCopies.h"

#include <dirent.h>
#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>

#include "FileText.h"
#include "base/ParseInt.h"

namespace zendry {

namespace {

constexpr std::string_view cSteps = "-steps";
constexpr char cNoFolder[] = "the folder for copies can't be had";

std::string StepsOf(const std::string& file) {
  return std::string(file).append(cSteps);
}

// Removes the copy first: steps without a copy are never offered.
void Remove(const std::string& file) {
  unlink(file.c_str());
  unlink(StepsOf(file).c_str());
}

// What the system says of a process. An ended one is listed until its parent asks for its end.
struct ProcessState {
  bool hasEnded = false;
  uint64_t start = 0;  // when it was started, in the system's ticks; 0 when it is unknown
};

// Doesn't use the heap: it may be called while the program is about to end.
ProcessState StateOf(pid_t process) {
  constexpr int cFieldsBefore = 20;  // between the name's end and the start
  char path[32], text[1024];
  std::snprintf(path, sizeof path, "/proc/%d/stat", static_cast<int>(process));
  const int file = open(path, O_RDONLY | O_CLOEXEC);
  const ssize_t count = file >= 0 ? read(file, text, sizeof text) : -1;
  if (file >= 0) close(file);
  std::string_view rest(text, count > 0 ? static_cast<size_t>(count) : 0);
  rest.remove_prefix(std::min(rest.rfind(')'), rest.size()));
  const bool hasEnded = rest.starts_with(") Z") || rest.starts_with(") X");
  for (int i = 0; i < cFieldsBefore; ++i)
    rest.remove_prefix(std::min(rest.find(' ') + 1, rest.size()));
  return {hasEnded, TakeNumber<uint64_t>(rest).value_or(0)};
}

// A process can have the number of one that has ended: in a container that is common.
bool IsAlive(pid_t process, uint64_t start) {
  if (kill(process, 0) != 0 && errno != EPERM) return false;
  const ProcessState state = StateOf(process);
  return !state.hasEnded && (start == 0 || state.start == start);
}

// The part of the names of this process's copies after the kind.
std::string OwnName() {
  static pid_t process = 0;
  static uint64_t start = 0;
  if (process != getpid()) {
    process = getpid();
    start = StateOf(process).start;
  }
  return std::to_string(process) + "." + std::to_string(start);
}

std::vector<std::string> NamesIn(const std::string& folder) {
  std::vector<std::string> names;
  const std::unique_ptr<DIR, int (*)(DIR*)> stream(opendir(folder.c_str()), closedir);
  while (const dirent* entry = stream ? readdir(stream.get()) : nullptr)
    names.emplace_back(entry->d_name);
  std::sort(names.begin(), names.end());
  return names;
}

std::optional<RescueCopy> ReadCopy(const std::string& file) {
  const std::string bytes = mavro::ReadFileText(file).text;
  const size_t end = bytes.find('\0');
  if (end == std::string::npos) return std::nullopt;
  return RescueCopy{file, bytes.substr(0, end), bytes.substr(end + 1),
                    mavro::ReadFileText(StepsOf(file)).text};
}

}  // namespace

std::string RescueCopies::FileOf(int number) const {
  const std::string folder = mavro::RescueFolder();
  if (folder.empty()) return "";
  return folder + "/" + kind + "-" + OwnName() + "-" + std::to_string(number);
}

mavro::FileResult RescueCopies::Keep(int number, std::string_view path,
                                     std::string_view content) const {
  const std::string file = FileOf(number);
  if (file.empty()) return {cNoFolder};
  std::string bytes;
  bytes.reserve(path.size() + 1 + content.size());
  bytes.append(path).append(1, '\0').append(content);
  return mavro::SaveFileText(file, bytes);
}

mavro::FileResult RescueCopies::AddStep(int number, size_t offset, std::string_view step) const {
  const std::string file = FileOf(number);
  if (file.empty()) return {cNoFolder};
  return mavro::AppendFileText(StepsOf(file), offset, step);
}

void RescueCopies::Drop(int number) const {
  const std::string file = FileOf(number);
  if (!file.empty()) Remove(file);
}

void RescueCopies::Forget(const RescueCopy& copy) {
  Remove(copy.file);
}

bool RescueCopies::IsOfEndedProcess(std::string_view fileName) const {
  if (!fileName.starts_with(kind + "-")) return false;
  fileName.remove_prefix(kind.size() + 1);
  const auto maker = TakeNumber<pid_t>(fileName).value_or(0);
  uint64_t start = 0;
  if (fileName.starts_with(".")) {
    fileName.remove_prefix(1);
    start = TakeNumber<uint64_t>(fileName).value_or(0);
  }
  if (maker <= 0 || !fileName.starts_with("-")) return false;
  fileName.remove_prefix(1);
  return TakeNumber<int>(fileName).value_or(0) > 0 && fileName.empty() && !IsAlive(maker, start);
}

std::vector<RescueCopy> RescueCopies::OfEndedProcesses() const {
  std::vector<RescueCopy> found;
  const std::string folder = mavro::RescueFolder();
  if (folder.empty()) return found;
  for (std::string name : NamesIn(folder)) {
    const bool isSteps = name.ends_with(cSteps);
    if (isSteps) name.resize(name.size() - cSteps.size());
    if (!IsOfEndedProcess(name)) continue;
    if (isSteps) {
      // The process ended while it dropped the copy, and left the steps.
      if (!mavro::FileExists(folder + "/" + name)) Remove(folder + "/" + name);
      continue;
    }
    if (std::optional<RescueCopy> copy = ReadCopy(folder + "/" + name))
      found.push_back(*std::move(copy));
  }
  return found;
}

}  // namespace zendry
