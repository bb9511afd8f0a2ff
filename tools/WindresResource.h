#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace zendry {

// A place in a script, for messages.
struct Place {
  std::string file;
  int line = 0;
};
std::string AtPlace(const Place& place, const std::string& message);

// One resource of a script. Its content is `bytes`, or the content of `file` if that is not empty.
struct Resource {
  std::string type;  // in capitals: "ICON", "RCDATA", "STRINGTABLE", a type of the user's own ...
  uint64_t id = 0;
  std::string name;  // empty for a resource that has an id
  std::string bytes;
  std::string file;  // as the script names it; relative to the script's folder or a search folder
  Place place;
};

// The result of reading: the resources, or the one message that ended it.
struct ResourceList {
  std::vector<Resource> resources;
  std::string error;  // "file:line: text"; empty when there was no error
};

// Thrown inside the readers of windres and caught by them: the message with its place.
struct ScriptError {
  std::string message;
};

}  // namespace zendry
