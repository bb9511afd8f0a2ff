#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "FileText.h"
#include "base/LoadResult.h"
#include "base/Shell.h"

namespace zendry {

class Project;

// What a session file is made from.
struct SessionState {
  int mode = 0;                 // 0 release, 1 debug
  std::vector<OpenFile> files;  // paths as stored
  std::string active;           // full path; empty when no tab is active
};

// One step of restoring a session, in the order of the file.
struct SessionStep {
  enum Kind { cOpenFile, cSetMode, cActivate };
  Kind kind = cOpenFile;
  std::string path;  // cOpenFile and cActivate
  int line = 0;      // cOpenFile; 0 and below for no line
  int mode = 0;      // cSetMode
  friend bool operator==(const SessionStep&, const SessionStep&) = default;
};

// The text of a session file. A path that the format can't hold is left out.
std::string SessionText(const SessionState& state);

// The steps that a session file stands for; what means nothing is passed over.
struct SessionReading {
  std::vector<SessionStep> steps;
  std::string damage;  // what can't have been written here, in words; empty when all is sound
};
SessionReading ReadSessionText(std::string_view text);

// Restores build mode, open files and active file. Files that are gone are passed over, as is a
// missing session. A damaged one is a doubt: what can be read of it is restored.
LoadResult LoadSession(const std::string& path, Project& project, FilesShell& shell);

// Writes the session, unless the file holds it already. A damaged one is kept beside it with ".bad"
// appended to its name; one that can't be read stays as it is. A link in the place of either is not
// followed: a project from elsewhere must not choose which file of the user's is overwritten. An
// empty path writes nothing.
mavro::SaveResult SaveSession(const std::string& path, const Project& project, FilesShell& shell);

}  // namespace zendry
