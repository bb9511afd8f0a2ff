#include "config/BuildSettings.h"

#include <sched.h>

#include <algorithm>

namespace zendry {

namespace {

constexpr char cJobsKey[] = "jobs";
constexpr char cAllHeadersKey[] = "all-headers";

std::string LauncherKey(size_t set) {
  return "launcher" + std::to_string(set);
}

}  // namespace

BuildSettings theBuildSettings;

std::optional<int> ReadJobs(std::string_view text) {
  const bool isNumber = !text.empty() && std::all_of(text.begin(), text.end(),
                                                     [](char c) { return c >= '0' && c <= '9'; });
  if (!isNumber) return {};
  int jobs = 0;
  for (const char c : text) jobs = std::min(jobs * 10 + (c - '0'), BuildSettings::cMostJobs);
  return jobs > 0 ? std::optional(jobs) : std::nullopt;
}

BuildSettings ReadBuildSettings(const std::function<std::string(const std::string& key)>& value) {
  BuildSettings settings;
  settings.jobs = ReadJobs(value(cJobsKey)).value_or(0);
  settings.watchAllHeaders = value(cAllHeadersKey) == "1";
  for (size_t set = 0; set < settings.launchers.size(); ++set)
    settings.launchers[set] = value(LauncherKey(set));
  return settings;
}

std::map<std::string, std::string> BuildSettingValues(const BuildSettings& settings) {
  std::map<std::string, std::string> values;
  values[cAllHeadersKey] = settings.watchAllHeaders ? "1" : "";
  values[cJobsKey] = settings.jobs > 0 ? std::to_string(settings.jobs) : "";
  for (size_t set = 0; set < settings.launchers.size(); ++set)
    values[LauncherKey(set)] = settings.launchers[set];
  return values;
}

int ProcessorCount() {
  cpu_set_t processors;
  if (sched_getaffinity(0, sizeof processors, &processors) != 0) return 1;
  return std::clamp(CPU_COUNT(&processors), 1, BuildSettings::cMostJobs);
}

}  // namespace zendry
