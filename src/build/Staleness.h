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

// Whether something must be made again, and why, as in "src/a.h is newer than out-rel/a.o by 2 s"
// or "out-rel/a.o is missing". The reason of what is up to date is empty.
struct Staleness {
  bool stale = false;
  std::string reason;
};

// Stale when `path` can be opened and `target` can't, or is strictly older. A `path` that can't be
// opened is never newer. `project` only shortens the names in the reason.
Staleness IsNewer(FileTimes& times, const Project& project, const std::string& path,
                  const std::string& target);

// Decides which sources of a project are stale. A source is, when it or a project header that it
// includes, directly or through at most cMaxIncludeDepth further headers, is newer than its object.
//
// The rule walks every path through the includes. Since a header is newer than an object exactly if
// the newest header in its reach is, it is enough to know, per header and levels left, the newest
// time within reach: the cost grows with the include entries and not with the paths, and cycles end
// by the levels. The reason names that newest header.
//
// Holds on to the project's files: make a new one when the list of files has changed.
class StaleCheck {
 public:
  static constexpr int cMaxIncludeDepth = 10;

  StaleCheck(const Project& project, FileTimes& times) : project(project), times(times) {}

  // `object`: the source's object file, as a path from the current folder.
  Staleness NeedsCompile(const ProjectFile& file, const std::string& object);
  // The same for one include name that was met `depth` includes deep.
  Staleness IncludeIsNewer(std::string_view name, const std::string& object, int depth);

  // Include entries looked at so far: what the check costs.
  size_t EntriesVisited() const { return entriesVisited; }

 private:
  struct Header;
  // The newest of some headers; no header when none of them can be opened.
  struct Newest {
    FileTimes::Time time = 0;
    const Header* header = nullptr;
  };
  struct Header {
    const ProjectFile* file = nullptr;
    // By the levels of includes that may still be followed.
    std::array<std::optional<Newest>, cMaxIncludeDepth + 1> newest;
  };

  Header* Resolve(std::string_view name);
  Newest NewestWithin(Header& header, int levels);
  Newest FindNewest(const Header& header, int levels);

  const Project& project;
  FileTimes& times;
  std::map<const ProjectFile*, Header> headers;
  std::map<std::string, Header*, std::less<>> byName;  // null: no file of the project
  size_t entriesVisited = 0;
};

}  // namespace zendry
