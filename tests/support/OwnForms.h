#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "DataPaths.h"
#include "FileText.h"
#include "frmedt/FormLocator.h"

namespace test {

// The sources of the program's own windows, and those of them that are forms.
//
//   for (const auto& path : FormSources()) {
//     zendry::FormLocator locator;
//     locator.Scan(ReadForm(path));
//     locator.Select(0, OtherHalf);
//   }

inline zendry::FormTextPtr ReadForm(const std::filesystem::path& path) {
  mavro::FileText file = mavro::ReadFileText(path.string());
  return file.Ok() ? std::make_shared<zendry::FormText>(path.string(), file.text) : nullptr;
}

// The file beside one that has the other region.
inline zendry::FormTextPtr OtherHalf(const std::string& path, bool isHeader) {
  return ReadForm(std::filesystem::path(path).replace_extension(isHeader ? ".h" : ".cpp"));
}

inline const std::vector<std::string> cOwnFolders = {"src", "libs/mavro/sci"};

// Calls `take` with the path and the text of each source in folders of the tree.
inline void ForEachSource(
    const std::vector<std::string>& folders,
    const std::function<void(const std::filesystem::path&, const std::string&)>& take) {
  namespace fs = std::filesystem;
  const fs::path tree = fs::path(TEST_DATA).parent_path().parent_path();
  for (const std::string& folder : folders)
    for (const auto& entry : fs::recursive_directory_iterator(tree / folder)) {
      const auto extension = entry.path().extension();
      if (extension != ".h" && extension != ".cpp") continue;
      take(entry.path(), mavro::ReadFileText(entry.path().string()).text);
    }
}

// The sources that have a region of declarations.
inline std::vector<std::filesystem::path> FormSources(
    const std::vector<std::string>& folders = cOwnFolders) {
  std::vector<std::filesystem::path> found;
  ForEachSource(folders, [&](const std::filesystem::path& path, const std::string& text) {
    if (text.find("\n\t//!decl\n") != text.npos) found.push_back(path);
  });
  return found;
}

}  // namespace test
