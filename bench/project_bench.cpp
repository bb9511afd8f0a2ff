#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "FileText.h"
#include "Shortest.h"
#include "project/Project.h"

// How long a project file of 5,000 entries takes to load (parsing off) and to save, beside reading
// and saving the same bytes without a project. The limit for both together is 100 ms. With a number
// as its argument it takes that many entries.

namespace {

constexpr int cEntries = 5000;
constexpr double cLimit = 100;

using bench::Shortest;

void Check(bool ok, const char* step) {
  bench::Check(ok, "project_bench", step);
}

void WriteProject(const std::string& path, int entries) {
  zendry::Project project;
  project.Init(path, zendry::cConsole);
  project.parse = false;
  for (int i = 0; i < entries; ++i)
    project.AddFile("src/part" + std::to_string(i / 50) + "/file" + std::to_string(i) +
                    (i % 5 ? ".cpp" : ".h"));
  Check(project.Save(false), "writing the project");
}

}  // namespace

int main(int argc, char* argv[]) {
  const int entries = argc > 1 ? std::atoi(argv[1]) : cEntries;
  std::string folder = (std::filesystem::temp_directory_path() / "project-bench-XXXXXX").string();
  Check(mkdtemp(folder.data()) != nullptr, "making a folder");
  const std::string path = folder + "/big.zpj";
  WriteProject(path, entries);
  const std::string bytes = mavro::ReadFileText(path).text;

  zendry::Project project;
  const double load = Shortest([&] {
    project.Clear();
    Check(project.Load(path).Ok(), "loading");
  });
  Check(project.Files().size() == static_cast<size_t>(entries), "loading all entries");
  const double save = Shortest([&] { Check(project.Save(false), "saving"); });
  const double read = Shortest([&] { Check(mavro::ReadFileText(path).text == bytes, "reading"); });
  const double write = Shortest([&] { Check(mavro::SaveFileText(path, bytes).Ok(), "writing"); });
  std::filesystem::remove_all(folder);

  std::printf("project of %d entries, %zu bytes\n", entries, bytes.size());
  std::printf("  load %8.2f ms   reading the bytes alone %8.2f ms\n", load, read);
  std::printf("  save %8.2f ms   writing the bytes alone %8.2f ms\n", save, write);
  std::printf("  both %8.2f ms   limit %.0f ms for %d entries\n", load + save, cLimit, cEntries);
  return entries == cEntries && load + save > cLimit ? 1 : 0;
}
