#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Object.h"

namespace zendry {

class Shell;

// What a project builds; the number is what its file stores.
enum ProjectType { cConsole, cFormApplication, cApiApplication, cStaticLib, cDynamicLib, cOther };
enum BuildMode { cRelease = 0, cDebug = 1 };

// The switches of one build mode.
struct BuildOptions {
  int32_t gcc = 0;   // compiler set; the build clamps it
  std::string comp;  // compile switches
  std::string link;  // link switches
};

// One name of a file's include list, in the order found. `flag` is 0 for entries that the Makefile
// export skips (names in angle brackets).
struct IncludeEntry {
  int32_t flag = 0;
  std::string name;
};

// A source or header of the project; owned by it.
struct ProjectFile {
  int32_t id = 0;
  int32_t type = 0;  // FileKind
  std::string name;  // absolute path, forward slashes, normalised
  std::vector<IncludeEntry> includes;
};

// What came of reading a project file. The window stays silent about a failure; tools say it.
struct LoadResult {
  std::string error;  // empty on success
  bool Ok() const { return error.empty(); }
};

// The one project of the running program: its file, files, options and output names, and the
// project file format with extension "zpj". Reports to a Shell, which must outlive it; without one
// it is mute.
class Project : public mavro::object {
 public:
  Project();
  ~Project() override;

  void SetShell(Shell* newShell);
  // Folder of the running program with its trailing slash, where "Defs/" is looked for.
  void SetInstallFolder(const std::string& folder);

  // Life of a project.
  void Init(const std::string& path, int newType);
  LoadResult Load(const std::string& path);
  // Shows a dialog when the project has no name or `saveAs`; false when cancelled or not written.
  bool Save(bool saveAs);
  // Writes the session, closes the tabs, offers to save; false when the user refuses.
  bool Close();
  void Clear();
  void OpenSingleFile(const std::string& path);
  void ExportMakefile(const std::string& path) const;

  // Files.
  void AddFile(const std::string& path);
  bool RemoveFile(int32_t id);
  ProjectFile* FindFile(std::string_view fullName) const;
  int IndexOfFile(int32_t id) const;
  // Full path of the project file that an include names; empty when it is none of the project's.
  std::string ResolveInclude(const std::string& includeName) const;

  // Names and mode.
  void SetFileName(const std::string& path);
  void SetMode(int newMode);
  void SetDefaultOptions(int forType);
  void SetCaption(const std::string& text);
  std::string GetFullPath(const std::string& path) const;
  std::string GetFullPath(const std::string& path, std::string_view extension) const;
  std::string MakeRelative(const std::string& path) const;
  BuildOptions& GroupOptions() { return *current; }

  int32_t lastFileId = 0;
  bool isOpen = false;
  bool modified = false;
  int32_t mode = cRelease;
  bool implicit = false;
  bool parse = true;
  std::string name;
  std::string target;
  std::string resourceFile;
  std::string folder;
  std::string outputFolder;
  std::string stlRefFile;
  std::string mavroRefFile;
  int32_t type = cConsole;
  std::string libSet;
  std::string includePath = "-I@/mylib";
  std::string linkerPath = "-L@/mylib";
  std::string linkLibs;
  std::string outName;
  std::vector<std::unique_ptr<ProjectFile>> files;
  BuildOptions* current = nullptr;  // debugOptions in debug mode, else releaseOptions
  BuildOptions debugOptions;
  BuildOptions releaseOptions;
  std::string programParams;  // carried by the project file for the debugger

 private:
  Shell* shell;
  std::string installFolder;
};

extern Project theProject;

}  // namespace zendry
