#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "FileText.h"
#include "Object.h"
#include "base/LoadResult.h"
#include "tags/TagData.h"

namespace zendry {

class EditorText;
class Shell;

// What a project builds; the number is what its file stores. A file may hold any other number,
// which stands for cOther.
enum ProjectType { cConsole, cFormApplication, cApiApplication, cStaticLib, cDynamicLib, cOther };
enum BuildMode { cRelease = 0, cDebug = 1 };

// Id of the resource file's tree node. No ProjectFile has it.
constexpr int32_t cResourceFileId = 0x1000;

// What every project is compiled and linked with, behind its own switches.
constexpr char cBasicIncludes[] = "-I@/libs/basic";
constexpr char cBasicLibs[] = "-L@/libs";

// The switches of one build mode.
struct BuildOptions {
  int32_t gcc = 0;   // compiler set; the build clamps it
  std::string comp;  // compile switches
  std::string link;  // link switches
};

// A source or header of the project; owned by it.
struct ProjectFile {
  ProjectFile(int32_t newId, std::string fullName);

  const int32_t id;
  const int32_t type;      // FileKind
  const std::string name;  // absolute path, forward slashes, normalised where that can be
  TagData tags;            // what it declares and includes
};

// The one project of the running program: its file, files, options and output names, and the
// project file format with extension "zpj". Reports to a Shell, which must outlive it; without one
// it is mute.
//
// Names from outside (project files, dialogs, the command line) may hold a "/../" that can't be
// taken out. They are kept as they are; the system still finds such a file.
class Project : public mavro::object {
 public:
  Project();
  ~Project() override;

  void SetShell(Shell* newShell);
  // Folder of the running program with its trailing slash, where "Defs/" is looked for.
  void SetInstallFolder(const std::string& folder);

  // Life of a project. Nothing may be unsaved when it is loaded.
  void Init(const std::string& path, int newType);
  // Opens a project. A relative path is taken from the current folder. A file that can't be read,
  // or that holds a value too long to be read, leaves an empty project under its name. What is
  // wrong with its session is noted in theIdeSession.
  LoadResult Load(const std::string& path);
  // Writes the project file. Shows a dialog when the project has no name or `saveAs`. False when
  // that is cancelled, when the format can't hold a value (which a message names) or when writing
  // fails (which the status line says); then the old file is whole and `modified` stays. Asks
  // before it replaces a file that isn't the one last read or written here.
  bool Save(bool saveAs);
  // Writes the session, closes the tabs, offers to save; false when the user refuses or when what
  // was to be saved couldn't be. No session is written for a project that couldn't be read.
  bool Close();
  // Writes the session, unless the project has none or is just being loaded; a failure is noted in
  // theIdeSession.
  void KeepSession();
  // Empties the project. `modified`, `implicit`, `libSet`, `outName`, the options of both modes
  // and the program parameters stay.
  void Clear();
  // Makes an implicit project of one C or C++ source; other files are passed over.
  void OpenSingleFile(const std::string& path);
  // Writes a Makefile, "Makefile" beside the project file when `path` is empty. Asks before it
  // replaces one that was not made here, or that somebody has changed since.
  mavro::SaveResult ExportMakefile(const std::string& path) const;

  // Files. Neither of the first two touches `modified`: their callers do.

  // Adds a file by its name relative to the project's folder or its full name. A resource script
  // becomes the resource file, of which there is only one.
  void AddFile(const std::string& path);
  // Takes out the file with this id, or the resource file, and its tree node. False without one.
  bool RemoveFile(int32_t id);
  // The source and header files in the order added.
  const std::vector<std::unique_ptr<ProjectFile>>& Files() const { return files; }
  // The first file of this name, else the first that the name leads to by links or as another name
  // of it; null when there is none. It is valid until the file is removed.
  ProjectFile* FindFile(std::string_view fullName) const;
  // Whether a path names the file that a module was read from.
  bool IsFileOf(const std::string& path, const TagData& module) const;
  // Position in Files(), -1 when absent.
  int IndexOfFile(int32_t id) const;
  // Full path of the project file that an include names; empty when it is none of the project's.
  std::string ResolveInclude(const std::string& includeName) const;

  // Tags.

  // Replaces the tags of a module, unless `parse` is off: by those of an editor's text, which then
  // counts as parsed. Without an editor the open one of the module's file is taken, else the file.
  void parseModule(TagData& module, EditorText* editor);
  // Parses the open editors whose text has changed since, or with `editor` only that one.
  void parseOpenEditors(EditorText* editor);
  // The tags of a file; those of one that the project doesn't have share one store, the
  // scratchModule, which takes its name.
  TagData& ModuleOf(const std::string& path);
  // Reads the reference libraries that the project uses into `tags`, once per run.
  void LoadReferences();

  // Names and mode.
  void SetFileName(const std::string& path);
  void SetMode(int newMode);
  void SetDefaultOptions(int forType);
  // The window's caption becomes the project's name without extension, " - " and `text`.
  void SetCaption(const std::string& text);
  std::string GetFullPath(const std::string& path) const;
  std::string GetFullPath(const std::string& path, std::string_view extension) const;
  // The path as seen from the project's folder, the case of letters ignored.
  std::string MakeRelative(const std::string& path) const;
  // MakeRelative where that leads back to the very same file, else the path as it is: the form in
  // which files and sessions store names, and tools are given them.
  std::string RelativeIfSame(const std::string& path) const;
  // Where the session is kept; empty when the project's name leaves no name for it.
  std::string SessionPath() const;
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
  BuildOptions* current = nullptr;  // debugOptions in debug mode, else releaseOptions
  BuildOptions debugOptions;
  BuildOptions releaseOptions;
  std::string programParams;  // carried by the project file for the debugger
  TagData tags;               // of the reference libraries
  TagData scratchModule;      // of an open file that is none of the project's
  bool storesTags = true;     // false in tools, which need no more than the includes

 private:
  // Files by name; of equal names the first one added. The keys lie in the files.
  using NameIndex = std::unordered_map<std::string_view, ProjectFile*>;

  void AddResourceFile(const std::string& path);
  void ReadTags(ProjectFile& file);
  void EnsureIndex() const;
  void AddToIndex(ProjectFile* file) const;
  EditorText* FindEditor(const TagData& module) const;
  ProjectFile* FindByName(std::string_view fullName) const;
  ProjectFile* FindByWhatItNames(const std::string& path) const;
  void DropIndex();
  std::string ChooseSavePath() const;
  bool MayReplace(const std::string& path) const;
  bool Write(const std::string& path);
  bool SaveUnder(const std::string& path);

  Shell* shell;
  std::string installFolder;
  std::vector<std::unique_ptr<ProjectFile>> files;
  std::string knownText;    // content of the project file as last read whole or written
  bool couldBeRead = true;  // false after a Load without a file
  bool isLoading = false;   // the session has not been restored yet
  mutable bool indexed = true;
  mutable NameIndex byName;
  mutable NameIndex byBaseName;
  // By their names without links; filled when a name is asked for that is none of the files'.
  mutable std::unordered_map<std::string, ProjectFile*> byRealName;
};

extern Project theProject;

}  // namespace zendry
