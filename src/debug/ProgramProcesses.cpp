#include "debug/ProgramProcesses.h"

#include <signal.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <sstream>
#include <string>

#include "base/ParseInt.h"

namespace zendry {

namespace {

std::string ReadProc(int id, const char* name) {
  std::ifstream file("/proc/" + std::to_string(id) + "/" + name);
  return {std::istreambuf_iterator<char>(file), {}};
}

// "ID (NAME) STATE PARENT GROUP SESSION ..."; the name may hold anything. The time of the start is
// the 20th field after the name.
std::optional<SystemProcess> ReadProcess(int id) {
  const std::string text = ReadProc(id, "stat");
  const size_t name = text.rfind(") ");
  if (name == std::string::npos) return {};
  constexpr size_t cFirstField = 2;
  std::istringstream fields(text.substr(name + cFirstField));
  char state = 0;
  int group = 0;
  SystemProcess process;
  process.id = id;
  fields >> state >> process.parent >> group >> process.session;
  std::string skipped;
  constexpr int cFieldsBeforeStart = 15;
  for (int i = 0; i < cFieldsBeforeStart; ++i) fields >> skipped;
  fields >> process.start;
  if (!fields || state == 'Z') return {};
  return process;
}

std::vector<int> AllIds() {
  std::vector<int> ids;
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator("/proc", error))
    if (const int id = ParseInt(entry.path().filename().string()); id > 0) ids.push_back(id);
  return ids;
}

}  // namespace

int TracedProcess(int debugger) {
  if (debugger <= 0) return 0;
  const std::string wanted = "\nTracerPid:\t" + std::to_string(debugger) + "\n";
  for (const int id : AllIds())
    if (ReadProc(id, "status").find(wanted) != std::string::npos) return id;
  return 0;
}

std::vector<SystemProcess> ProcessesOf(int root) {
  if (root <= 0) return {};
  std::vector<SystemProcess> all;
  for (const int id : AllIds())
    if (const auto process = ReadProcess(id)) all.push_back(*process);
  std::vector<SystemProcess> found;
  const auto isFound = [&found](int id) {
    return std::any_of(found.begin(), found.end(),
                       [id](const SystemProcess& process) { return process.id == id; });
  };
  // Each round adds the children of what was found.
  for (size_t before = all.size() + 1; before != found.size();) {
    before = found.size();
    for (const SystemProcess& process : all) {
      const bool belongs = process.id == root || process.session == root || isFound(process.parent);
      if (belongs && !isFound(process.id)) found.push_back(process);
    }
  }
  return found;
}

void KillProcesses(const std::vector<SystemProcess>& processes) {
  for (const SystemProcess& process : processes) {
    const auto now = ReadProcess(process.id);
    if (now && now->start == process.start) kill(process.id, SIGKILL);
  }
}

}  // namespace zendry
