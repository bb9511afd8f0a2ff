#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "Shortest.h"
#include "project/ImportFolder.h"

// How long a folder of 5,000 sources and headers takes to be listed, and its project to be written,
// which reads them all. The limits are 500 ms and 1 s.

namespace {

constexpr int cFiles = 5000;
constexpr double cListLimit = 500, cWriteLimit = 1000;

void Check(bool ok, const char* step) {
  bench::Check(ok, "import_bench", step);
}

// A hundred lines, about 7 KB.
std::string SourceText(int number) {
  std::string text =
      "#include \"part" + std::to_string(number / 50) + "/head.h\"\n#include <vector>\n";
  for (int line = 0; line < 100; ++line)
    text += "int Function" + std::to_string(line) + "(int a) { return a * 3; }  // a word\n";
  return text;
}

}  // namespace

int main() {
  namespace fs = std::filesystem;
  std::string folder = (fs::temp_directory_path() / "import-bench-XXXXXX").string();
  Check(mkdtemp(folder.data()) != nullptr, "making a folder");
  for (int i = 0; i < cFiles; ++i) {
    const std::string part = folder + "/part" + std::to_string(i / 50);
    fs::create_directories(part);
    const std::string name = i % 50 == 0 ? "/head.h" : "/file" + std::to_string(i) + ".cpp";
    std::ofstream(part + name) << SourceText(i);
  }
  zendry::Import import;
  const double list = bench::Shortest([&] { import = zendry::ListFolder(folder); });
  Check(import.files.size() == cFiles, "listing all files");
  const double write = bench::Shortest([&] {
    zendry::Import fresh = import;
    Check(zendry::SettleImport(fresh, "").empty(), "reading the files");
    const std::string path = folder + "/p.zpj";
    Check(zendry::WriteImport(fresh, path, zendry::Replacing::cAllowed).Ok(), "writing");
  });
  fs::remove_all(folder);
  std::printf("import of %d files\n  listed  %8.2f ms   limit %.0f ms\n", cFiles, list, cListLimit);
  std::printf("  written %8.2f ms   limit %.0f ms\n", write, cWriteLimit);
  return list > cListLimit || write > cWriteLimit ? 1 : 0;
}
