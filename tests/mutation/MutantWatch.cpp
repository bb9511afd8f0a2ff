// Linked into the test program by tests/mutate.py: chooses the change, and writes to the file that
// ZENDRY_REACHED names which changes each test comes by: "name milliseconds number number ...".
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>

#include "Mutant.h"

namespace mutant {

namespace {
unsigned char atStart[cMost];
}

int chosen = 0;
unsigned char* reached = atStart;

namespace {

// The file behind the pages, so that a program started by a test can share them; -1 for none.
int OpenPages() {
  const char* path = std::getenv("ZENDRY_REACHED");
  if (!path) return -1;
  const int file = open((std::string(path) + ".pages").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
  if (file < 0 || ftruncate(file, cMost) != 0) std::abort();
  return file;
}

// Runs before the constructors of other files, some of which come by a change already. The pages
// are shared, so that what forked children and the programs of death tests come by counts too.
[[gnu::constructor(101)]] void Choose() {
  if (const char* number = std::getenv("ZENDRY_MUTANT")) chosen = std::atoi(number);
  const int file = OpenPages();
  const int flags = MAP_SHARED | (file < 0 ? MAP_ANONYMOUS : 0);
  void* pages = mmap(nullptr, cMost, PROT_READ | PROT_WRITE, flags, file, 0);
  if (pages == MAP_FAILED) std::abort();
  if (file >= 0) close(file);
  reached = static_cast<unsigned char*>(pages);
}

class Watch : public testing::EmptyTestEventListener {
 public:
  explicit Watch(const char* path) : file(path), process(getpid()) {}

  void OnTestProgramStart(const testing::UnitTest&) override { Write("START", 0); }

  void OnTestEnd(const testing::TestInfo& test) override {
    if (getpid() != process) return;
    const testing::TestResult& result = *test.result();
    if (result.Failed()) file << "FAILED ";
    Write(std::string(test.test_suite_name()) + '.' + test.name(), result.elapsed_time());
  }

 private:
  void Write(const std::string& name, long long milliseconds) {
    file << name << ' ' << milliseconds;
    for (int i = 0; i < cMost; ++i)
      if (reached[i]) file << ' ' << i;
    file << std::endl;
    std::memset(reached, 0, cMost);
  }

  std::ofstream file;
  const pid_t process;
};

// The program of a death test is this one again: only the first one writes.
const bool isWatched = [] {
  const char* path = std::getenv("ZENDRY_WATCHED") ? nullptr : std::getenv("ZENDRY_REACHED");
  setenv("ZENDRY_WATCHED", "yes", 1);
  if (path) testing::UnitTest::GetInstance()->listeners().Append(new Watch(path));
  return path != nullptr;
}();

}  // namespace
}  // namespace mutant
