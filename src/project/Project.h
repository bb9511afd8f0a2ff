#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "FileText.h"
#include "Object.h"
#include "tags/TagData.h"

namespace zendry {

class EditorText;
class Shell;

// The kind of output that a project builds. The project file stores the number. Any other number in
// a file means cOther.
enum ProjectType { cConsole, cFormApplication, cApiApplication, cStaticLib, cDynamicLib, cOther };
enum BuildMode { cRelease = 0, cDebug = 1 };

// Id of the resource file's tree node. No ProjectFile has it.
constexpr int32_t cResourceFileId = 0x1000;

// Switches for compiling and linking that every project gets after its own.
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
  const std::string name;  // absolute path, forward slashes, normalised if possible
  TagData tags;            // its declarations and includes

  // The files that it includes. Those of a file that has no tags are read when they are first asked
  // for, once: most builds never need them.
  const std::vector<IncludeRec>& Includes() const;
  bool readsIncludesLate = false;

 private:
  mutable std::optional<std::vector<IncludeRec>> lateIncludes;
};

// The one project of the running program: its file, files, options and output names, and the
// project file format with extension "zpj". Reports to a Shell, which must outlive it; without a
// Shell it reports nothing.
//
// Names from outside (project files, dialogs, the command line) may hold a "/../" that can't be
// removed. They are kept as they are; the system still finds such a file.
class Project : public mavro::object {
 public:
  Project();
  ~Project() override;

  void SetShell(Shell* newShell);
  // Sets the folder of the running program, with a trailing slash. "Defs/" is looked for in it.
  void SetInstallFolder(const std::string& folder);

  // Life of a project. Before a load, all changes must be saved.
  void Init(const std::string& path, int newType);
  // Opens a project. A relative path is taken from the current folder. If the file can't be read,
  // or holds a value that is too long, the result is an empty project under its name. Problems with
  // its session are noted in theIdeSession.
  mavro::FileResult Load(const std::string& path);
  // Writes the project file. Shows a dialog when the project has no name or `saveAs`. False when
  // the user cancels, when the format can't hold a value (a message names it) or when writing fails
  // (the status line says so); then the old file is intact and `modified` stays. Asks before it
  // replaces any file content that this project did not itself read or write last.
  bool Save(bool saveAs);
  // Writes the session, closes the tabs, offers to save. False when the user refuses or when saving
  // fails. A project that couldn't be read gets no session file.
  bool Close();
  // Writes the session, unless the project has none or is just being loaded; a failure is noted in
  // theIdeSession.
  void KeepSession();
  // Empties the project. `modified`, `implicit`, `libSet`, `outName`, the options of both modes
  // and the program parameters stay.
  void Clear();
  // Makes an implicit project of one C or C++ source; ignores other files.
  void OpenSingleFile(const std::string& path);
  // Writes a Makefile, "Makefile" beside the project file when `path` is empty. Asks before it
  // replaces a Makefile that this program did not write, or that was changed since.
  mavro::FileResult ExportMakefile(const std::string& path) const;

  // Files. AddFile and RemoveFile leave `modified` alone: their callers set it.

  // Adds a file by its name relative to the project's folder or its full name. A resource script
  // becomes the resource file, of which there is only one.
  void AddFile(const std::string& path);
  // Removes the file with this id, or the resource file, and its tree node. False if there is no
  // such file.
  bool RemoveFile(int32_t id);
  // The source and header files in the order added.
  const std::vector<std::unique_ptr<ProjectFile>>& Files() const { return files; }
  // The first file of this name; else the first file that the name refers to through links or as
  // another name of the same file. Null when there is none. Valid until the file is removed.
  ProjectFile* FindFile(std::string_view fullName) const;
  // True if a path names the file that a module was read from.
  bool IsFileOf(const std::string& path, const TagData& module) const;
  // Position in Files(), -1 when absent.
  int IndexOfFile(int32_t id) const;
  // Full path of the project's file that an include names; empty when the project has no such file.
  std::string ResolveInclude(const std::string& includeName) const;

  // Tags.

  // Parses a module and replaces its tags, unless `parse` is off. The text is that of `editor`,
  // which then counts as parsed. If `editor` is null, the text is that of the module's open editor,
  // else of its file. The open text of no file of the project has no tags beyond cMostTextAlone.
  static constexpr int cMostTextAlone = 16 << 20;  // bytes
  void parseModule(TagData& module, EditorText* editor);
  // Parses the open editors whose text has changed since they were parsed, unless the change can't
  // have changed their tags; if `editor` is given, only that one.
  void parseOpenEditors(EditorText* editor);
  // The tags of a file. All files outside the project share one store, the scratchModule, which
  // takes the file's name.
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
  // The path relative to the project's folder; ignores the case of letters.
  std::string MakeRelative(const std::string& path) const;
  // MakeRelative if its result leads back to the same file, else the path as it is. Project files,
  // sessions and the command lines of tools use this form.
  std::string RelativeIfSame(const std::string& path) const;
  // The path of the session file; empty when none can be made from the project's name.
  std::string SessionPath() const;

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
  std::string cRefFile;
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
  std::string programParams;  // stored in the project file for the debugger
  TagData tags;               // of the reference libraries
  TagData scratchModule;      // of an open file outside the project
  bool storesTags = true;     // false in tools, which need at most the includes

 private:
  bool HasTagsOf(const EditorText& editor) const;

  // Files by name; for equal names, the file that was added first. The keys point into the files.
  using NameIndex = std::unordered_map<std::string_view, ProjectFile*>;

  void Begin(const std::string& path, int newType);
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
  std::string knownText;    // content of the project file when last read whole or written
  bool couldBeRead = true;  // false after a Load without a file
  bool isLoading = false;   // the session has not been restored yet
  mutable bool indexed = true;
  mutable NameIndex byName;
  mutable NameIndex byBaseName;
  // Files by their names without links. Filled when a name is looked up that no file has.
  mutable std::unordered_map<std::string, ProjectFile*> byRealName;
};

extern Project theProject;

}  // namespace zendry
