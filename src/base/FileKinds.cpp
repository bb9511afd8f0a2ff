#include "base/FileKinds.h"

#include <algorithm>

#include "AsciiCase.h"

namespace zendry {

namespace {

struct Extension {
  std::string_view text;
  FileKinds kind;
};

constexpr Extension cExtensions[] = {
    {"cpp", cCppSource}, {"cp", cCppSource},      {"c", cCSource},
    {"h", cHeader},      {"rc", cResourceScript}, {"zpj", cProjectFile},
};

struct AddedExtension {
  std::string text;
  int kind;
};

std::vector<AddedExtension>& Added() {
  static std::vector<AddedExtension> added;
  return added;
}

}  // namespace

// The last row for an extension counts.
void AddFileKind(std::string_view extension, int kind) {
  if (extension.empty() || kind < cCppSource || kind > cHeader) return;
  std::erase_if(Added(), [&](const AddedExtension& row) { return row.text == extension; });
  Added().push_back({std::string(extension), kind});
}

int FileKind(std::string_view path) {
  const size_t dot = path.rfind('.');
  if (dot == std::string_view::npos) return cUnknownKind;
  const std::string_view ending = path.substr(dot + 1);
  for (const AddedExtension& row : Added())
    if (ending == row.text) return row.kind;
  for (const Extension& row : cExtensions)
    if (mavro::EqualNoCase(ending, row.text)) return row.kind;
  return cUnknownKind;
}

std::vector<std::string> ExtensionsOf(int kind) {
  std::vector<std::string> found;
  for (const Extension& row : cExtensions)
    if (row.kind == kind) found.emplace_back(row.text);
  for (const AddedExtension& row : Added())
    if (row.kind == kind) found.push_back(row.text);
  return found;
}

std::string SourcePatterns() {
  std::string patterns;
  for (const int kind : {cCppSource, cCSource, cHeader})
    for (const std::string& extension : ExtensionsOf(kind))
      patterns += (patterns.empty() ? "*." : ";*.") + extension;
  return patterns;
}

void ForgetAddedFileKinds() {
  Added().clear();
}

}  // namespace zendry
