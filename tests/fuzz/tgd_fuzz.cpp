#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "FileText.h"
#include "tags/LibraryNames.h"
#include "tags/TagData.h"
#include "tags/TagReference.h"

// Loads a definition of a reference library, in a folder with one header that it may name, and what
// it has compiled once more. The same bytes are read as a file of names, too.

namespace {

// A folder of this process, removed at its end.
struct Folder {
  Folder() {
    if (!mkdtemp(path.data())) std::abort();
    std::ofstream(path + "/box") << "class Box { public: int size() const; };\nint global;\n";
  }
  ~Folder() { std::filesystem::remove_all(path); }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;

  std::string path = (std::filesystem::temp_directory_path() / "tgd-fuzz-XXXXXX").string();
};

// What is listed begins as asked, and is found.
void AskForNames(zendry::LibraryNames& names) {
  for (const char* space : {"", "std"})
    for (const char* prefix : {"", "a", "ze"}) {
      std::vector<zendry::TagItem*> listed, found;
      names.List(listed, space, prefix);
      for (const zendry::TagItem* item : listed) {
        if (!item->name.starts_with(prefix) || names.NamespaceOf(*item) != space) std::abort();
        if (names.HasNamespace(space)) names.Find(found, space, item->name);
      }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const Folder folder;
  const std::string definition = folder.path + "/lib.tgd";
  unlink(zendry::CachePath(definition).c_str());
  std::ofstream(definition, std::ios::binary)
      .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
  zendry::TagData parsed, compiled;
  zendry::loadDefinition(parsed, definition);
  compiled.loadReference(definition);
  if (compiled.headers.size() != parsed.headers.size()) std::abort();
  if (compiled.classes.size() != parsed.classes.size()) std::abort();
  zendry::LibraryNames names(definition);
  AskForNames(names);
  return 0;
}
