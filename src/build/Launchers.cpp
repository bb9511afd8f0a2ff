#include "build/Launchers.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>

#include "CommandLine.h"
#include "SpawnPool.h"
#include "base/Paths.h"
#include "build/CommandLines.h"
#include "config/BuildSettings.h"
#include "config/IdeConfig.h"

namespace zendry {

namespace {

// The whole number that a program prints as its first line; 0 if it prints none in time.
int NumberPrintedBy(const std::string& line) {
  using Clock = std::chrono::steady_clock;
  constexpr std::chrono::seconds cPatience(2);
  constexpr int cSliceMs = 100;
  std::string first;
  mavro::SpawnPool pool;
  pool.Start(0, {line}, [&first](const std::string& printed) {
    if (first.empty()) first = printed;
  });
  const auto until = Clock::now() + cPatience;
  while (pool.Running() > 0 && Clock::now() < until) pool.Wait(cSliceMs);
  return ReadJobs(first).value_or(0);
}

}  // namespace

std::string LauncherOf(const IdeConfig& config, const BuildSettings& settings, int set) {
  const auto index = static_cast<size_t>(CompilerSet(set));
  const std::string& users = settings.launchers[index];
  const std::string& name = users.empty() ? config.toolSets[index].launcher : users;
  if (name == BuildSettings::cNoLauncher) return "";
  return ExpandResourcePath(name, MacroRoot(config.appDir));
}

std::string LauncherState::Words() const {
  if (name.empty()) return "no launcher";
  return name + (IsFound() ? ": found (" + path + ")" : ": not found");
}

LauncherState StateOfLauncher(const std::string& launcher) {
  if (launcher.empty()) return {};
  return {launcher, FindProgram(launcher)};
}

bool IsDistributing(const std::string& launcher) {
  const std::string name = BaseName(launcher);
  return name == "distcc" || name == "icecc";
}

int UsualJobs(const std::string& launcher) {
  const bool knowsPlaces = BaseName(launcher) == "distcc";
  const int places = knowsPlaces ? NumberPrintedBy(mavro::QuoteArgument(launcher) + " -j") : 0;
  return places > 0 ? places : ProcessorCount();
}

}  // namespace zendry
