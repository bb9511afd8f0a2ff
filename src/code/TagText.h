#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "code/CodeTokens.h"
#include "code/TypeText.h"

namespace zendry {

class CaretText;
class CodeSources;
class TagData;
struct TagClass;
struct TagItem;

// Reads in the source texts what the tags leave out: the template arguments and pointers of a
// declared type, the parameters of a class template, and aliases made with "using". Only a few
// lines of each file are read, and files of the project only.
class TagText {
 public:
  // All must outlive it. The text of `editor` stands for its module `current`, which may be null.
  TagText(CodeSources& theSources, const CaretText& theEditor, const TagData* theCurrent)
      : sources(theSources), editor(theEditor), current(theCurrent) {}

  // The type of a tag as its declaration has it; the bare name that the tag knows where that can't
  // be read. Empty for a tag without type.
  TypeText TypeOf(const TagItem& item, StepBudget& budget);
  // The names of the template parameters of a class.
  std::vector<std::string> ParametersOf(const TagClass& record);
  // What an alias stands for that a file of the project, included by the current one, makes with
  // "using".
  std::optional<TypeText> IncludedAlias(std::string_view name, StepBudget& budget);

 private:
  struct Piece {
    std::string text;
    int lineStart = 0;  // where the line that was asked for begins in it
  };

  Piece Around(const TagItem& item);
  Piece AroundInEditor(int line) const;
  const std::string& WholeText(const TagData& module);

  CodeSources& sources;
  const CaretText& editor;
  const TagData* current;
  std::map<const TagData*, std::string> texts;
};

}  // namespace zendry
