#pragma once

#include <array>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>

#include "config/IdeConfig.h"

namespace zendry {

// The user's settings for builds, from "zendry.ini": `jobs`, `all-headers`, and `launcher0` to
// `launcher2` for the compiler sets of these numbers.
struct BuildSettings {
  // The launcher's name of a user who wants none, though the installation has one.
  static constexpr char cNoLauncher[] = "none";
  // Each compiler needs descriptors of ours; so many fit into the usual limit.
  static constexpr int cMostJobs = 256;

  int jobs = 0;  // compilers that run at once; 0: as many as the machine has processors
  bool watchAllHeaders = false;  // those outside of the project's folder too
  // Programs put before the compilers; empty: as "Zendry.cfg" says.
  std::array<std::string, std::tuple_size_v<decltype(IdeConfig::toolSets)>> launchers;

  bool operator==(const BuildSettings&) const = default;
};

extern BuildSettings theBuildSettings;

// The jobs that a text asks for: a whole number above 0. More than cMostJobs are cMostJobs.
std::optional<int> ReadJobs(std::string_view text);

// Reads the settings; what has no meaning counts as not set. `value` gives the value of a key, or
// an empty text.
BuildSettings ReadBuildSettings(const std::function<std::string(const std::string& key)>& value);
// The keys with their values; an empty value means that the key is not needed.
std::map<std::string, std::string> BuildSettingValues(const BuildSettings& settings);

// The number of processors that this process may use.
int ProcessorCount();

}  // namespace zendry
