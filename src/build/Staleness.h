#pragma once

#include <array>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "base/FileTimes.h"

namespace zendry {

class Project;
struct ProjectFile;

// Says if a file must be made again, and why, as in "src/a.h is newer than out-rel/a.o by 2 s" or
// "out-rel/a.o is missing". The reason is empty for a file that is up to date.
struct Staleness {
  bool stale = false;
  std::string reason;
};

// Stale if `path` can be opened, and `target` can't be opened or is strictly older. A `path` that
// can't be opened is never newer. `project` is only used to shorten the names in the reason.
Staleness IsNewer(FileTimes& times, const Project& project, const std::string& path,
                  const std::string& target);

// Decides which sources of a project are stale. A source is stale if the source itself, or a
// project header that it includes directly or through at most cMaxIncludeDepth further headers, is
// newer than its object.
//
// The rule walks every path through the includes. Some header within reach is newer than the object
// exactly if the newest one is. So it is enough to know, per header and number of levels left, the
// newest time within reach. The cost grows with the include entries and not with the paths, and the
// levels end cycles. The reason names that newest header. While no file of the project is newer
// than the object, the includes aren't looked at.
//
// Keeps pointers to the project's files: make a new StaleCheck when the list of files has changed.
class StaleCheck {
 public:
  static constexpr int cMaxIncludeDepth = 10;

  StaleCheck(const Project& project, FileTimes& times) : project(project), times(times) {}

  // `object`: the source's object file, as a path from the current folder.
  Staleness NeedsCompile(const ProjectFile& file, const std::string& object);
  // The same for one include name that was found `depth` includes deep.
  Staleness IncludeIsNewer(std::string_view name, const std::string& object, int depth);

  // Number of include entries looked at so far; a measure of the check's cost.
  size_t EntriesVisited() const { return entriesVisited; }

 private:
  struct Header;
  // The newest of some headers; `header` is null when none of them can be opened.
  struct Newest {
    FileTimes::Time time = 0;
    const Header* header = nullptr;
  };
  struct Header {
    const ProjectFile* file = nullptr;
    // Indexed by the levels of includes that may still be followed.
    std::array<std::optional<Newest>, cMaxIncludeDepth + 1> newest;
  };

  bool NoFileIsNewer(const std::string& object);
  Header* Resolve(std::string_view name);
  Newest NewestWithin(Header& header, int levels);
  Newest FindNewest(const Header& header, int levels);

  const Project& project;
  FileTimes& times;
  std::map<const ProjectFile*, Header> headers;
  std::map<std::string, Header*, std::less<>> byName;  // null: not a file of the project
  std::optional<FileTimes::Time> newestFile;  // of the project, as far as they can be opened
  size_t entriesVisited = 0;
};

}  // namespace zendry
