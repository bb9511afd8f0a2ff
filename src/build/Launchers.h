#pragma once

#include <string>

namespace zendry {

struct BuildSettings;
struct IdeConfig;

// A launcher is a program put before the compiler: "ccache" keeps objects of former builds,
// "distcc" and "icecc" compile on other machines.

// The launcher of a compiler set: the user's, else that of "Zendry.cfg"; empty for none. "@" stands
// for the root of the installation.
std::string LauncherOf(const IdeConfig& config, const BuildSettings& settings, int set);

// Whether a launcher can be used.
struct LauncherState {
  std::string name;  // empty: the set has none
  std::string path;  // where it was found; empty if it wasn't

  bool IsFound() const { return !path.empty(); }
  // "no launcher", "ccache: found (/usr/bin/ccache)" or "ccache: not found".
  std::string Words() const;
};
LauncherState StateOfLauncher(const std::string& launcher);

// True if it compiles on other machines: a failure of the launcher is then none of the source.
bool IsDistributing(const std::string& launcher);

// The number of compilers that may run at once with a launcher, if the user hasn't set one:
// the places of the machines that "distcc" knows, else this machine's processors. Asking takes two
// seconds at most.
int UsualJobs(const std::string& launcher);

}  // namespace zendry
