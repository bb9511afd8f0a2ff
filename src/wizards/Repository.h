#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "FileText.h"

namespace zendry {

// The templates and demos of the installation, as "Repos/items.def" lists them.
struct RepositoryItems {
  struct Item {
    std::string folder;  // below "Repos/"
    std::string text;
  };
  std::vector<Item> templates;
  std::vector<std::string> demoTitles;
  std::vector<Item> demos;  // in the order of the titles; the text is a sentence about it

  // The folder of a demo by its title's place; empty if there is none.
  std::string DemoFolder(int index) const;
};

// Reads the list; any text can be read. Lines that mean nothing are passed over, and so are folders
// that would lead out of the repository.
RepositoryItems ReadRepositoryItems(std::string_view text);

// True if a folder's name can't lead out of the folder that it is taken from.
bool StaysInside(std::string_view folder);

// The name of a new project: digits, and the characters from "A" to "z".
bool IsProjectName(std::string_view name);

// The source of a new console program.
std::string ConsoleSource(bool isCpp);
// The resource script of a new form application.
std::string FormResource();

// A copy of a folder.
struct FolderCopy {
  std::vector<std::string> copied;      // full names, in the order in which they were made
  std::string error;                    // the file that can't be copied, and why; empty for success
  std::vector<std::string> passedOver;  // links out of the folder and devices
  bool wasRefused = false;              // by the question about a file that is there
};

// Copies all files of `source` with its folders into `target`, which is made if it is missing. A
// name that begins with "_." gets `projectName` in place of the "_", as does a name in `renamed`
// that lies in the folder itself. Links to files inside are followed; links to folders, links out
// of the folder and devices are passed over. `mayReplace` is asked before a file that exists with
// another content; null refuses. After a failure the files copied until then stay.
FolderCopy CopyFolder(const std::string& target, const std::string& source,
                      const std::string& projectName, const std::vector<std::string>& renamed = {},
                      const std::function<bool(const std::string& path)>& mayReplace = nullptr);

// Makes a folder with every one above it that is missing.
mavro::FileResult MakeFolders(const std::string& path);

}  // namespace zendry
