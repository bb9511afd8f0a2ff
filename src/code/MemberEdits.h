#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "code/CppIndent.h"
#include "code/SymbolPlaces.h"
#include "code/TidyEdits.h"

namespace zendry {

class PrototypeText;
class SourceShape;

// The edits of one file's text, in order, and where the caret goes in it afterwards.
struct FileEdits {
  std::string path;
  std::vector<TextEdit> edits;
  std::optional<size_t> caret;
  uint64_t digest = 0;  // DigestOf() the text that is to be changed
};

// A change of one or two files. With an error, which is a sentence for the user, nothing is to be
// changed. Edits without an error may be empty: there is nothing to do.
struct MemberChange {
  std::vector<FileEdits> files;  // each file once
  std::string error;
};

// A function's place, or the change that makes it.
struct HandlerPlace {
  std::optional<CodePlace> place;
  MemberChange change;
};

// Adds members to classes and removes them, as edits of texts. It writes as the files are written:
// their indentation, braces and line ends. The tags must be up to date.
class MemberEdits {
 public:
  // The text of a file, unsaved text first; none if it can't be read.
  using ReadText = std::function<std::optional<std::string>(const std::string& path)>;
  // The source that belongs to a header; empty without one.
  using FindSource = std::function<std::string(const std::string& header)>;

  // The wizard and the sources must outlive it. `theUsual`: the habits of files that show none.
  MemberEdits(CodeWizard& theWizard, CodeSources& theSources, ReadText theRead,
              FindSource theFindSource, const IndentHabits& theUsual)
      : wizard(theWizard),
        symbols(theWizard, theSources),
        read(std::move(theRead)),
        findSource(std::move(theFindSource)),
        usual(theUsual) {}

  // Declares a function after a member of a class, or as the last one if `after` is the class
  // itself, and adds an empty definition: after that of the member, else at the end of the source.
  // A template, a function that goes after one with its body in the class, and a class whose source
  // isn't known get the body in the class. The caret goes into the body.
  MemberChange InsertMember(const TagItem& after, std::string_view prototype);
  // The place of a class's member, or the change that adds it after the last one.
  HandlerPlace GoToOrAddHandler(std::string_view className, const std::string& name,
                                const std::string& type, const std::string& arguments);
  // Removes a member, global or class: its declaration, and the definition of a function.
  MemberChange Remove(const TagItem& item);

 private:
  // A text to be changed.
  struct File;
  // Where a new member goes, and what decides about it.
  struct Target {
    TagClass* record = nullptr;
    const TagItem* declaration = nullptr;  // null for the class itself
    const TagItem* definition = nullptr;
  };

  std::optional<Target> TargetAfter(const TagItem& after, std::string& error);
  bool Declare(File& header, const Target& target, const PrototypeText& prototype, bool isInline,
               std::string& error);
  void Define(File& source, const SourceShape& header, const Target& target,
              const PrototypeText& prototype);
  std::vector<std::string> TypesOf(const TagClass& record);
  std::optional<File> Open(const std::string& path);
  bool RemoveFrom(File& file, const TagItem& item);

  CodeWizard& wizard;
  SymbolPlaces symbols;
  ReadText read;
  FindSource findSource;
  const IndentHabits usual;
};

// The bytes of a declaration or definition in a text, whole lines if nothing else is in them; none
// if its end can't be told, or if it declares other names too. `line`: of its tag, from 1.
struct TextRange {
  size_t start = 0;
  size_t end = 0;

  friend bool operator==(const TextRange&, const TextRange&) = default;
};
std::optional<TextRange> FindMemberRange(const std::string& text, int line, std::string_view name);

}  // namespace zendry
