#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include "DataPaths.h"
#include "Golden.h"
#include "RandomTyping.h"

namespace zendry {
namespace {

// Tags are kept after as many changes as have been made here, or a difference is told.
int TypeInto(const std::string& source, const std::string& name, unsigned seed, int steps) {
  test::RandomTyping typing(source, name, seed);
  for (int i = 0; i < steps; ++i) {
    const std::string difference = typing.Step();
    EXPECT_EQ(difference, "") << name << ", seed " << seed << ", step " << i;
    if (!difference.empty()) break;
  }
  return typing.Kept();
}

// By hand, more: so many changes in each source.
int ChangesOfEach() {
  const char* changes = std::getenv("ZENDRY_TYPED_CHANGES");
  return changes ? std::atoi(changes) : 60;
}

// By hand, others: the sources that a file names, a path a line.
std::vector<std::string> Sources() {
  std::vector<std::string> sources;
  if (const char* list = std::getenv("ZENDRY_TYPED_SOURCES")) {
    std::ifstream paths(list);
    for (std::string path; std::getline(paths, path);) sources.push_back(path);
  } else {
    for (const std::string& path : test::DataPaths("tags"))
      if (!path.ends_with(".tags") && !path.ends_with(".new")) sources.push_back(path);
  }
  return sources;
}

TEST(KeptTags, OfNastySources_AreThoseOfAFreshParse) {
  int kept = 0;
  for (unsigned seed = 1; seed <= 400 && !HasFailure(); ++seed)
    kept += TypeInto(test::NastySource(seed), "a.cpp", seed, ChangesOfEach());
  EXPECT_GT(kept, 2000);
}

TEST(KeptTags, OfSources_AreThoseOfAFreshParse) {
  int kept = 0;
  unsigned seed = 7;
  for (const std::string& path : Sources()) {
    kept += TypeInto(test::ReadData(path), path, seed++, ChangesOfEach());
    if (HasFailure()) break;
  }
  EXPECT_GT(kept, 300);
  RecordProperty("kept", kept);
}

}  // namespace
}  // namespace zendry
