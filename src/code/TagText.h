#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "code/CallTip.h"
#include "code/CodeTokens.h"
#include "code/TypeText.h"

namespace zendry {

class CaretText;
class CodeSources;
class TagData;
struct TagClass;
struct TagItem;

// Reads facts that the tags leave out from the source texts: the template arguments and pointers of
// a declared type, the parameters of a class template, and aliases made with "using". Only a few
// lines of each file are read, and only files of the project.
class TagText {
 public:
  // All must outlive it. The text of `editor` is used in place of the file of its module `current`,
  // which may be null.
  TagText(CodeSources& theSources, const CaretText& theEditor, const TagData* theCurrent)
      : sources(theSources), editor(theEditor), current(theCurrent) {}

  // The type of a tag as written in its declaration; the bare type name from the tag if that can't
  // be read. Empty for a tag without a type.
  TypeText TypeOf(const TagItem& item, StepBudget& budget);
  // The same with all its words, as text.
  std::string DeclaredType(const TagItem& item, StepBudget& budget);
  // A function, macro, pointer to a function or lambda as it is declared, with the class that it
  // belongs to. Nothing for other tags, and for a function that is deleted.
  std::optional<Callable> CallableOf(const TagItem& item, StepBudget& budget);
  // What a macro stands for with these arguments. Nothing if it takes another number of them, or
  // if `takesArguments` isn't what it does.
  std::optional<std::string> Expansion(const TagItem& macro, bool takesArguments,
                                       const std::vector<std::string>& arguments);
  // The names of the template parameters of a class.
  std::vector<std::string> ParametersOf(const TagClass& record);
  // The bases of a class as its head names them, with their arguments.
  std::vector<TypeText> BasesOf(const TagClass& record);
  // The default of a parameter of the template that a function is.
  std::optional<TypeText> DefaultOf(const TagItem& function, std::string_view parameter);
  // The type of an alias that is made with "using" in a project file that the current one includes.
  std::optional<TypeText> IncludedAlias(std::string_view name, StepBudget& budget);

 private:
  struct Source {
    std::string text;
    std::vector<size_t> lines;  // where they begin
  };
  struct Piece {
    std::string text;
    int lineStart = 0;  // beginning of the requested line in it
  };

  std::optional<Callable> FunctionOf(const TagItem& item, StepBudget& budget);
  Piece Around(const TagItem& item);
  Piece AroundInEditor(int line) const;
  const Source& SourceOf(const TagData& module);

  CodeSources& sources;
  const CaretText& editor;
  const TagData* current;
  std::map<const TagData*, Source> read;
};

}  // namespace zendry
