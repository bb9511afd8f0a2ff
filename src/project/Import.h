#pragma once

#include <memory>
#include <string>
#include <vector>

#include "FileText.h"
#include "project/SourceFacts.h"

namespace zendry {

struct CommandSwitches;

// A file that a new project may have.
struct ImportFile {
  std::string name;  // as seen from the folder of the project
  int kind = 0;      // FileKind
  bool taken = true;
  std::string reason = {};  // why it was left out; empty if the user did it
  std::string target = {};  // the program or library that it is built for, if that is known
  std::shared_ptr<const CommandSwitches> command = {};  // how it is compiled, if that is known
  bool isRead = false;
  SourceFacts facts = {};
};

// A project to be made of existing files. Nothing is written before WriteImport.
struct Import {
  std::string folder;  // of the new project; absolute, without a trailing slash
  std::vector<ImportFile> files;
  // What every file is compiled with.
  std::vector<std::string> includeFolders;  // as seen from `folder`
  // Macros, the standard and others, as they stand in a command line.
  std::vector<std::string> switches;
  std::vector<std::string> linkSwitches;
  std::vector<std::string> libraries;  // "-lz"
  // The source with the `main` of the program; empty for a library. The others that have one are
  // left out.
  std::string mainFile;
  // Sentences about what the project will lack, and what differs from the files' own build.
  std::vector<std::string> notes;
  std::vector<std::string> findings;  // the same, about the files taken
  // Switches that can run a program while compiling. They are left out unless `takesRisky`.
  std::vector<std::string> risky;
  bool takesRisky = false;
  // Reasons why there is nothing to import; then the rest is empty.
  std::string error;

  size_t TakenCount(int kind) const;
  // The sources that define `main`, those that are left out for another reason not among them.
  std::vector<const ImportFile*> Mains() const;
};

// The reasons for which a file is left out by itself.
constexpr char cOtherMain[] = "has a main too";
constexpr char cOtherProgram[] = "belongs to another program";
constexpr char cTests[] = "tests and examples";
constexpr char cOtherSystem[] = "another system";
constexpr char cIncludedSource[] = "is included by another source";

// The file named, as seen from the import's folder or by its full path; null if there is none.
ImportFile* FindImportFile(Import& import, const std::string& name);

// Chooses the file with the program's `main` among those taken: the one named, as seen from the
// folder or by its full name, else the one that is highest in the folder; of several equally high
// one called "main", then the first by name. The others are left out, with what belongs to their
// programs only. An error if the file named has none. May be called again.
std::string ChooseMain(Import& import, const std::string& wanted);

// Writes the project file. An existing one is replaced only if `mayReplace`. Values that the format
// can't hold are left out, and `import.notes` get a sentence about each.
enum class Replacing { cRefused, cAllowed };
mavro::FileResult WriteImport(Import& import, const std::string& path, Replacing replacing);

// A report in lines: the files taken, left out and why, the notes.
std::vector<std::string> ImportReport(const Import& import);

// The reason for which files in a folder of this name are left out; null if there is none.
const char* WhyLeftOut(const std::string& folderName);
// True for "test_a.cpp", "a_test.cpp", "a_unittest.cc" and their like.
bool IsNamedAsTest(const std::string& name);
// The switch of the library that a header of the system belongs to; empty for the C and C++
// libraries, and if there is no such header. Asks the disk, and no compiler: an import starts
// nothing.
std::string LibraryOf(const std::string& header);
bool IsOfTheSystem(const std::string& header);
// Takes the sources in the folders of tests, examples and other systems after all if there are no
// others.
void TakeUnusualIfAlone(Import& import);

// A path as seen from a folder; absolute if it lies elsewhere. Both absolute.
std::string SeenFrom(const std::string& folder, const std::string& path);

}  // namespace zendry
