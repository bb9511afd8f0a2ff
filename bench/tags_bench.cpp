// How fast files become tags, from the disk to the store, beside a loop that only reads the same
// bytes with getc_unlocked and, when asked for, beside ctags on the same files in the same run.
//
//   tags_bench [--ctags PROGRAM] FOLDER...

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "tags/TagData.h"
#include "tags/TagParser.h"

namespace fs = std::filesystem;

namespace {

constexpr int cRuns = 5;

// Processor time, so that what else runs on the machine counts little.
double SecondsOf(int who) {
  rusage usage;
  getrusage(who, &usage);
  const auto seconds = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
  };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

double Seconds(const std::function<void()>& work, int who = RUSAGE_SELF) {
  const double start = SecondsOf(who);
  work();
  return SecondsOf(who) - start;
}

// The best of several runs: what the machine does besides only ever adds.
double Best(const std::function<void()>& work) {
  double best = 1e9;
  for (int run = 0; run < cRuns; ++run) best = std::min(best, Seconds(work));
  return best;
}

std::vector<std::string> SourcesIn(const std::string& folder) {
  std::vector<std::string> sources;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    bool isHeader = false;
    if (entry.is_regular_file() && zendry::TagParser::languageOf(entry.path().native(), isHeader))
      sources.push_back(entry.path());
  }
  std::sort(sources.begin(), sources.end());
  return sources;
}

size_t ReadAll(const std::vector<std::string>& sources) {
  size_t bytes = 0;
  for (const std::string& source : sources) {
    FILE* file = std::fopen(source.c_str(), "rb");
    if (file == nullptr) continue;
    while (getc_unlocked(file) != EOF) ++bytes;
    std::fclose(file);
  }
  return bytes;
}

size_t ParseAll(const std::vector<std::string>& sources) {
  size_t tags = 0;
  zendry::theTagParser.found = [&tags](const zendry::TagFacts&) { ++tags; };
  for (const std::string& source : sources) {
    zendry::TagData store;
    store.fileName = source;
    zendry::theTagParser.parseBuffer(store, nullptr, false);
  }
  return tags;
}

void RunCtags(const std::string& program, const std::string& list) {
  const pid_t child = fork();
  if (child == 0) {
    dup2(open("/dev/null", O_WRONLY), STDOUT_FILENO);
    execlp(program.c_str(), program.c_str(), "--quiet=yes", "--options=NONE",
           "--language-force=C++", "--kinds-C++=cdefgmnpstuv", "-u", "-f", "-", "-L", list.c_str(),
           nullptr);
    _exit(127);
  }
  int status = 0;
  waitpid(child, &status, 0);
}

}  // namespace

int main(int count, char** arguments) {
  std::string ctags;
  std::vector<std::string> sources;
  for (int i = 1; i < count; ++i) {
    if (std::string(arguments[i]) == "--ctags" && i + 1 < count) {
      ctags = arguments[++i];
      continue;
    }
    const std::vector<std::string> more = SourcesIn(arguments[i]);
    sources.insert(sources.end(), more.begin(), more.end());
  }
  const double megabytes = static_cast<double>(ReadAll(sources)) / 1e6;
  size_t tags = 0;
  const double ours = Best([&] { tags = ParseAll(sources); });
  const double limit = Best([&] { ReadAll(sources); });
  std::printf("%zu files, %.1f MB, %zu tags\n", sources.size(), megabytes, tags);
  std::printf("parser            %7.1f MB/s\n", megabytes / ours);
  std::printf("getc_unlocked     %7.1f MB/s, %.2f times the parser\n", megabytes / limit,
              ours / limit);
  if (ctags.empty()) return 0;
  const std::string list = fs::temp_directory_path() / ("tags_bench." + std::to_string(getpid()));
  std::ofstream lines(list);
  for (const std::string& source : sources) lines << source << '\n';
  lines.close();
  const double theirs = Seconds([&] { RunCtags(ctags, list); }, RUSAGE_CHILDREN);
  fs::remove(list);
  std::printf("ctags             %7.1f MB/s, %.1f times slower than the parser\n",
              megabytes / theirs, theirs / ours);
  return 0;
}
