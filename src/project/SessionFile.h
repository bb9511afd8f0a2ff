#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "FileText.h"
#include "base/Shell.h"

namespace zendry {

class Project;

// The content of a session file.
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

// The steps that a session file describes. Unknown elements are ignored.
struct SessionReading {
  std::vector<SessionStep> steps;
  std::string damage;  // what this program can't have written; empty if there is nothing
};
SessionReading ReadSessionText(std::string_view text);

// Restores build mode, open files and active file. Skips files that no longer exist; a missing
// session does nothing. A damaged session is a doubt: its readable part is restored.
mavro::FileResult LoadSession(const std::string& path, Project& project, FilesShell& shell);

// Writes the session, unless the file holds it already. A damaged file is kept in the same folder,
// with ".bad" appended to its name. A file that can't be read stays as it is. If either path is a
// link, the link is not followed: a project from elsewhere must not choose which of the user's
// files is overwritten. An empty path writes nothing.
mavro::FileResult SaveSession(const std::string& path, const Project& project, FilesShell& shell);

}  // namespace zendry
