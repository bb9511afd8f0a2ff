#include <algorithm>
#include <filesystem>
#include <unordered_map>

#include "project/Import.h"

// The headers of the machine, and the libraries that they belong to.

namespace zendry {

namespace fs = std::filesystem;

namespace {

// Folders that the compilers of this machine search by themselves. No compiler is asked: an import
// starts nothing.
const std::vector<std::string>& SystemFolders() {
  static const std::vector<std::string> folders = [] {
    std::vector<std::string> found;
    const auto add = [&](const fs::path& path) {
      std::error_code error;
      if (fs::is_directory(path, error)) found.push_back(path.string() + "/");
    };
    const auto addEach = [&](const char* parent, const char* below, std::string_view ending) {
      std::error_code error;
      for (fs::directory_iterator entry(parent, error), end; !error && entry != end;
           entry.increment(error))
        if (ending.empty() || entry->path().string().find(ending) != std::string::npos)
          add(entry->path() / below);
    };
    add("/usr/local/include");
    add("/usr/include");
    addEach("/usr/include", "", "-linux-gnu");
    addEach("/usr/include/c++", "", "");
    addEach("/usr/lib/gcc", "", "");
    const std::vector<std::string> targets = found;
    for (const std::string& target : targets)
      if (target.starts_with("/usr/lib/gcc/")) addEach(target.c_str(), "include", "");
    return found;
  }();
  return folders;
}

}  // namespace

bool IsOfTheSystem(const std::string& name) {
  static std::unordered_map<std::string, bool> known;
  const auto found = known.find(name);
  if (found != known.end()) return found->second;
  std::error_code error;
  const bool is = std::ranges::any_of(
      SystemFolders(), [&](const std::string& folder) { return fs::exists(folder + name, error); });
  return known[name] = is;
}

// The library that a header of the system belongs to, as a switch; empty for the C and C++
// libraries.
std::string LibraryOf(const std::string& header) {
  if (!IsOfTheSystem(header)) return "";
  struct Row {
    std::string_view start;
    const char* library;
  };
  constexpr Row cRows[] = {
      {"zlib.h", "-lz"},
      {"bzlib.h", "-lbz2"},
      {"lzma.h", "-llzma"},
      {"zstd.h", "-lzstd"},
      {"png.h", "-lpng"},
      {"jpeglib.h", "-ljpeg"},
      {"expat.h", "-lexpat"},
      {"yaml.h", "-lyaml"},
      {"sqlite3.h", "-lsqlite3"},
      {"curl/", "-lcurl"},
      {"openssl/", "-lssl -lcrypto"},
      {"ncurses.h", "-lncurses"},
      {"curses.h", "-lncurses"},
      {"readline/", "-lreadline"},
      {"gtest/", "-lgtest"},
      {"gmock/", "-lgmock"},
      {"benchmark/", "-lbenchmark"},
      {"X11/", "-lX11"},
  };
  for (const Row& row : cRows)
    if (header == row.start || (row.start.ends_with('/') && header.starts_with(row.start)))
      return row.library;
  return "";
}

}  // namespace zendry
