#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "base/DiskStamp.h"

namespace zendry {

// Headers that could be read instead of others. A compiler reads the first header of a name along
// its search folders and doesn't say where it has looked before. So a new file in one of these
// folders can change what a source reads, although no file that was read has changed.
//
// A header "inc/dir/h.h" that was found in "inc" has the rival "other/dir/h.h" if "other" is
// searched too. Folders are listed once; the next build goes on with the lists as long as the
// folders are as they were.
class HeaderRivals {
 public:
  struct Rival {
    uint32_t folder = 0;  // the number of the folder that leads to it
    std::string path;
  };

  // The path in its shortest form, relative if it is below the current folder.
  std::string Plain(const std::string& path);
  // The number of a folder, "" for the current one.
  uint32_t NumberOf(std::string_view folder);
  // The folders that a command line of a compiler searches. It ends with the source, "-o" and the
  // object.
  const std::vector<uint32_t>& SearchedBy(std::string_view command);
  // The existing rivals of a header in all folders that have a number.
  const std::vector<Rival>& Of(const std::string& header);
  // False if the current folder is another one, or if a folder may hold other files than its list.
  bool IsCurrent() const;

 private:
  struct Listing {
    std::unordered_set<std::string> names;
    DiskStamp stamp;  // of the folder, before it was read
    // A folder written to just now could be written to again within the same tick of its clock.
    bool isLasting = false;
  };

  static Listing List(const std::string& folder);
  bool Exists(const std::string& path);

  std::string here;  // the current folder with "/"
  std::map<std::string, uint32_t> numbers;
  std::map<std::string, uint32_t, std::less<>> spellings;  // of folders
  // By what comes before the source: most sources have the same switches.
  std::map<std::string, std::vector<uint32_t>, std::less<>> searched;
  std::unordered_map<std::string, std::vector<Rival>> rivals;
  std::unordered_map<std::string, Listing> listings;
};

}  // namespace zendry
