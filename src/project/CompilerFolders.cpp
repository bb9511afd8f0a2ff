#include "project/CompilerFolders.h"

#include <cstdlib>
#include <filesystem>
#include <map>
#include <utility>

#include "CommandLine.h"
#include "SpawnConsole.h"
#include "base/Paths.h"

namespace zendry {

namespace {

// The headers of the newest C++ library and those of C.
std::vector<std::string> UsualFolders() {
  namespace fs = std::filesystem;
  std::vector<std::string> folders;
  std::string newest;
  int newestVersion = 0;
  std::error_code error;
  for (const auto& entry : fs::directory_iterator("/usr/include/c++", error)) {
    const int version = std::atoi(entry.path().filename().c_str());
    if (version <= newestVersion) continue;
    newestVersion = version;
    newest = entry.path().string();
  }
  if (!newest.empty()) folders.push_back(newest);
  folders.push_back("/usr/local/include");
  for (const auto& entry : fs::directory_iterator("/usr/include", error)) {
    const std::string name = entry.path().filename().string();
    if (name.ends_with("-linux-gnu")) {
      if (!newest.empty())
        folders.push_back(entry.path().string() +
                          newest.substr(std::string("/usr/include").size()));
      folders.push_back(entry.path().string());
    }
  }
  folders.push_back("/usr/include");
  return folders;
}

constexpr std::string_view cBegin = "#include <...> search starts here:\n";
constexpr std::string_view cEnd = "End of search list.";
// A compiler that can't be started then is no failure of the runner, which would show a box.
constexpr char cTimeLimit[] = "timeout -k 1 5 ";
constexpr size_t cLongestReport = 1 << 20;  // bytes

// What a compiler says of itself while it reads nothing, in English.
std::string ReportOf(const std::string& compiler, bool isCpp) {
  mavro::SpawnConsole runner;
  std::string report;
  runner.environment = {"LC_ALL=C"};
  runner.SetOutput(
      [&](const std::string& line) {
        report += line + '\n';
        if (report.size() > cLongestReport) runner.Terminate();
      },
      "");
  const std::string line = cTimeLimit + mavro::QuoteArgument(compiler) + " -E -v -x " +
                           (isCpp ? "c++" : "c") + " /dev/null";
  runner.Execute(line, mavro::SpawnConsole::Mode::cBlocking);
  return report;
}

}  // namespace

std::vector<std::string> FoldersInReport(std::string_view report) {
  const size_t begin = report.find(cBegin);
  if (begin == report.npos) return {};
  report.remove_prefix(begin + cBegin.size());
  std::vector<std::string> folders;
  while (!report.empty() && !report.starts_with(cEnd)) {
    std::string_view line = report.substr(0, report.find('\n'));
    report.remove_prefix(std::min(line.size() + 1, report.size()));
    while (line.starts_with(' ')) line.remove_prefix(1);
    if (!line.empty()) folders.push_back(TidyPath(std::string(line)));
  }
  return folders;
}

const std::vector<std::string>& CompilerFolders(const std::string& compiler, bool isCpp) {
  static std::map<std::pair<std::string, bool>, std::vector<std::string>> known;
  const auto [entry, isNew] = known.try_emplace({compiler, isCpp});
  if (!isNew) return entry->second;
  entry->second = FoldersInReport(ReportOf(compiler, isCpp));
  if (entry->second.empty()) entry->second = UsualFolders();
  return entry->second;
}

}  // namespace zendry
