#pragma once

#include <string>
#include <vector>

#include "WindresResource.h"

namespace zendry {

// An object file as pieces in the order in which they are written: bytes, or the content of the
// file that one resource names.
struct ObjectPiece {
  std::string bytes;
  const Resource* content = nullptr;  // not owned
};

// Lays out a relocatable ELF object of this machine. Its section "mavro_resources" is a table of
// mavro::ResourceEntry, which the linker joins with those of other objects and the framework finds
// at run time. Each entry with an id gets the weak symbol "mavro_resource_TYPE_ID": so a program's
// own resources can replace those of an archive. `sizes` are the lengths of the resources'
// contents. The object is written directly, because that needs no second tool, no temporary file
// and less code than assembler text.
std::vector<ObjectPiece> LayOutObject(const std::vector<Resource>& resources,
                                      const std::vector<uint64_t>& sizes);

}  // namespace zendry
