#include "build/RunningTools.h"

#include <poll.h>
#include <signal.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <optional>
#include <string_view>
#include <vector>

#include "FileText.h"
#include "base/ParseInt.h"

namespace zendry {

namespace {

constexpr char cVariable[] = "ZENDRY_BUILDER=";

// When a process has started, as the system counts it; empty if there is none, or if it has ended
// and nobody has collected it. The name of its program, in parentheses, may hold anything.
std::optional<long> StartOf(int process) {
  constexpr int cFieldsAfterName = 19;
  const std::string stat = mavro::ReadFileText("/proc/" + std::to_string(process) + "/stat").text;
  size_t at = stat.rfind(')');
  if (at == stat.npos || stat.compare(at, 3, ") Z") == 0) return {};
  for (int i = 0; i <= cFieldsAfterName && at != stat.npos; ++i) at = stat.find(' ', at + 1);
  if (at == stat.npos) return {};
  std::string_view rest = std::string_view(stat).substr(at + 1);
  return TakeNumber<long>(rest);
}

std::string NameOf(int process) {
  return std::to_string(process) + "-" + std::to_string(StartOf(process).value_or(0));
}

// A name as NameOf gives it.
bool IsAlive(std::string_view name) {
  const auto process = TakeNumber<int>(name);
  if (!process || *process < 1 || !name.starts_with('-')) return false;
  name.remove_prefix(1);
  const auto start = TakeNumber<long>(name);
  return start && StartOf(*process) == start;
}

// The processes of this user with an entry in their environment.
std::vector<int> ProcessesWith(const std::string& entry) {
  namespace fs = std::filesystem;
  std::vector<int> processes;
  std::error_code error;
  fs::directory_iterator each("/proc", error);
  for (; !error && each != fs::directory_iterator(); each.increment(error)) {
    const std::string name = each->path().filename();
    std::string_view digits = name;
    const auto process = TakeNumber<int>(digits);
    if (!process || !digits.empty()) continue;
    const std::string environment = mavro::ReadFileText(each->path() / "environ").text;
    const bool isMarked =
        ('\0' + environment).find('\0' + entry + '\0') != std::string::npos && StartOf(*process);
    if (isMarked) processes.push_back(*process);
  }
  return processes;
}

// Waits a little for the ends, so that nothing is written after them. A process that starts another
// meanwhile is found in the next round.
void EndProcessesWith(const std::string& entry) {
  constexpr int cMostRounds = 100, cWaitMs = 10;
  for (int round = 0; round < cMostRounds; ++round) {
    const std::vector<int> processes = ProcessesWith(entry);
    if (processes.empty()) return;
    for (const int process : processes) kill(process, SIGKILL);
    poll(nullptr, 0, cWaitMs);
  }
}

}  // namespace

void RunningTools::Open(const std::string& outputFolder) {
  Forget();
  path = (outputFolder.empty() ? "" : outputFolder + "/") + cRunningName;
  isOthers = false;
  const mavro::FileText file = mavro::ReadFileText(path);
  if (!file.Ok()) return;
  const std::string builder = file.text.substr(0, file.text.find('\n'));
  isOthers = IsAlive(builder) && builder != NameOf(getpid());
  if (isOthers) return;
  if (!builder.empty()) EndProcessesWith(cVariable + builder);
  unlink(path.c_str());
}

std::string RunningTools::Mark() {
  if (name.empty()) name = NameOf(getpid());
  if (!isWritten && !isOthers && !path.empty()) {
    unlink(path.c_str());  // a link is not followed
    isWritten = static_cast<bool>(std::ofstream(path) << name << '\n' << std::flush);
  }
  return cVariable + name;
}

void RunningTools::Forget() {
  if (isWritten) unlink(path.c_str());
  isWritten = false;
}

}  // namespace zendry
