#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "code/CodeWizard.h"

namespace zendry {

class CaretText;
class CodeSources;
struct CaretWord;

// A line of a file where a name is declared.
struct CodePlace {
  std::string path;
  int line = 0;  // from 0
  std::string name;
  int position = -1;  // of the name, if the place is in the text that was asked about

  friend bool operator==(const CodePlace&, const CodePlace&) = default;
};

// A name whose place the tags don't tell: one of a library, or one that begins with "_".
struct UnplacedName {
  std::string name;
  std::vector<std::string> classes;  // those that may have it as a member; empty for none
  bool isMember = false;             // it can only be a member
  std::string nameSpace;  // the last word of the one written before it; empty without one
};

// What was found, or for what it was looked.
struct SymbolAnswer {
  std::vector<CodePlace> places;
  std::string name;        // empty if there is no name at the place
  bool isLibrary = false;  // the name belongs to a reference library, whose places aren't known
  UnplacedName unplaced;   // what to look for in files if there is no place
};

// The name in the "#include" of a line.
struct IncludeName {
  std::string name;
  bool isQuoted = false;
};
std::optional<IncludeName> IncludeNameIn(std::string_view line);

// True if two functions have the same parameter types, by their text, and are both const or not.
bool HaveSameTypes(const TagItem& a, const TagItem& b);

// Finds the declarations and definitions of symbols.
class SymbolPlaces {
 public:
  // Both must outlive it.
  SymbolPlaces(CodeWizard& theWizard, CodeSources& theSources)
      : wizard(theWizard), sources(theSources) {}

  // Of a function the declaration or the definition; cNearest: what a lookup meets first, but the
  // other one if the caret is at that. If there are overloads, those that fit the signature or the
  // call at the caret. A function without the wanted one has the other.
  enum class Want { cNearest, cDeclaration, cDefinition };
  // The symbol whose name is at the caret or before it.
  SymbolAnswer AtCaret(const CaretText& editor, Want want);
  // The function or other tag that the caret's line belongs to.
  SymbolAnswer Around(const CaretText& editor, Want want);
  // The declarations, or the definitions, of a function: of those with its signature if there are
  // any, else of those with as many parameters, else all. The nearest file first.
  std::vector<TagItem*> Counterparts(const TagItem& item, Want want);

  // The class that a file means by a name, which may have namespaces before it: classes don't know
  // theirs. Null without one.
  TagClass* ClassSeen(std::string_view name, const TagData* module);

 private:
  std::vector<TagItem*> Namesakes(const TagItem& item);
  TagItem* FindInScopes(const CaretText& editor, const std::string& name);
  TagItem* FindKnown(const CaretText& editor, const std::string& name);
  TagItem* CalledOf(std::vector<TagItem*> all, const TagItem& item, const CaretText& editor,
                    int arguments, int callEnd);
  bool FindInText(SymbolAnswer& answer, const CaretText& editor, const CaretWord& word,
                  bool isLabel);
  void FindOwnPlace(SymbolAnswer& answer, const CaretText& editor, const CaretWord& word);
  bool FindType(SymbolAnswer& answer, const CaretText& editor, const std::string& name,
                bool isTagged);
  bool FindNamespace(SymbolAnswer& answer, const CaretText& editor, const std::string& name);
  SymbolAnswer FindTagged(const CaretText& editor, Want want, const CaretWord& word);
  UnplacedName Unplaced(const CaretText& editor, const CaretWord& word, const SymbolAnswer& answer);
  void AddClasses(std::vector<std::string>& names, const std::string& name, int depth);
  void Choose(SymbolAnswer& answer, const TagItem& item, Want want, const CaretText& editor);

  CodeWizard& wizard;
  CodeSources& sources;
};

}  // namespace zendry
