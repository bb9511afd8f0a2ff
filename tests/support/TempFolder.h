#pragma once

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace test {

// A folder for one test, made under TMPDIR (else /tmp) and removed with everything in it.
//
//   test::TempFolder folder;
//   std::string path = folder.Write("src/a.cpp", "int a;\n");  // makes "src" too
//   EXPECT_EQ(folder.Read("src/a.cpp"), "int a;\n");
class TempFolder {
 public:
  TempFolder() {
    const char* base = std::getenv("TMPDIR");
    root = std::string(base && *base ? base : "/tmp") + "/zendry-test-XXXXXX";
    if (!mkdtemp(root.data())) throw std::runtime_error("can't make " + root);
    root = std::filesystem::canonical(root).string();
  }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  // Rights are given back first, so that a test may take them from a folder.
  ~TempFolder() {
    namespace fs = std::filesystem;
    std::error_code error;
    fs::permissions(root, fs::perms::owner_all, fs::perm_options::add, error);
    fs::recursive_directory_iterator entry(root, error), end;
    for (; !error && entry != end; entry.increment(error))
      if (!entry->is_symlink(error) && entry->is_directory(error))
        fs::permissions(entry->path(), fs::perms::owner_all, fs::perm_options::add, error);
    fs::remove_all(root, error);
  }

  // The folder's absolute path without links and without a trailing slash.
  const std::string& Path() const { return root; }
  // The absolute path of `name` in it, which need not exist.
  std::string Path(std::string_view name) const { return root + "/" + std::string(name); }

  // Writes a file, its folders included, and answers its path.
  std::string Write(std::string_view name, std::string_view content) const {
    std::string path = Path(name);
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(content.data(), static_cast<std::streamsize>(content.size()));
    if (!file.flush()) throw std::runtime_error("can't write " + path);
    return path;
  }

  // The content of a file; throws, which fails the test, when it can't be read.
  std::string Read(std::string_view name) const {
    std::ifstream file(Path(name), std::ios::binary);
    if (!file) throw std::runtime_error("can't read " + Path(name));
    return {std::istreambuf_iterator<char>(file), {}};
  }

  bool Exists(std::string_view name) const { return std::filesystem::exists(Path(name)); }

  // Makes a folder, its parents included, and answers its path.
  std::string Folder(std::string_view name) const {
    std::filesystem::create_directories(Path(name));
    return Path(name);
  }

  // The names directly in the folder, sorted.
  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(root))
      names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
  }

 private:
  std::string root;
};

}  // namespace test
