#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zendry {

class EditorText;
class TagData;

// The input of code intelligence; the project supplies it.
class CodeSources {
 public:
  virtual ~CodeSources() = default;

  // The stores of the project's files, in project order.
  virtual const std::vector<TagData*>& Modules() const = 0;
  // The store of the reference libraries; null when there is none.
  virtual TagData* Library() const = 0;
  // The store of an editor's file, whether or not it is one of Modules(); null when there is none.
  virtual TagData* ModuleOf(const EditorText& editor) = 0;
  // Parses the editors whose text has changed since they were last parsed.
  virtual void RefreshTags() = 0;
  // The text of a store's file; the editor's text if the file is open in one. Empty for a file that
  // can't be read or is too large to be searched while the user types.
  virtual std::string TextOf(const TagData&) { return {}; }
  // The output that a lookup logs its steps to.
  virtual void Log(std::string_view text, std::string_view detail) = 0;
};

}  // namespace zendry
