#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "base/QuietShell.h"
#include "build/Builder.h"
#include "config/IdeConfig.h"
#include "project/Project.h"

// check_bench PROJECT ROUNDS APPDIR: milliseconds of a build with nothing to do inside a program
// that has the project open, as median, least and most. "Zendry.cfg" is in the folder APPDIR.
int main(int argc, char** argv) {
  using Clock = std::chrono::steady_clock;
  if (argc != 4) return 2;
  zendry::QuietShell shell;
  zendry::theIdeConfig.appDir = argv[3];
  if (!ReadConfig(zendry::theIdeConfig, zendry::theIdeFonts).Ok()) return 1;
  if (!zendry::theProject.Load(argv[1]).Ok()) return 1;
  zendry::theBuilder.Bind(zendry::theProject, shell);
  std::vector<double> times;
  for (int round = std::atoi(argv[2]); round >= 0; --round) {
    const auto start = Clock::now();
    if (!zendry::theBuilder.Build(zendry::Builder::Scope::cStale)) return 1;
    times.push_back(std::chrono::duration<double, std::milli>(Clock::now() - start).count());
  }
  times.erase(times.begin());  // the first round fills the cache
  std::sort(times.begin(), times.end());
  std::printf("%.2f %.2f %.2f\n", times[times.size() / 2], times.front(), times.back());
  return 0;
}
