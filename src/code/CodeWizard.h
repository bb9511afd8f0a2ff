#pragma once

#include <optional>
#include <string>

#include "code/ExprTypes.h"
#include "code/TagLookup.h"

namespace zendry {

class CodeSources;
class CaretText;
class TextScanner;

// What the caller of a resolution is about to do with it.
enum RequestKind {
  cClassRequest = 'C',   // the members of a class that is named
  cMemberRequest = 'm',  // the members of what an expression stands for
  cPrefixRequest = 'P',  // those that begin with some letters
  cAnyRequest = '?'      // everything that can stand at the caret
};

// What the expression at a place of an editor stands for.
struct ResolveInfo {
  int kind = 0;            // the RequestKind; of a resolved tag the letter of its kind
  std::string name;        // head of the expression, or name of the resolved tag
  std::string className;   // owner of the resolved tag
  std::string signature;   // argument text of the call, or signature of the tag
  std::string type;        // the type found
  std::string file;        // of the resolved tag; empty for what was found in the editor's text
  std::string memberPath;  // what follows the first dot of the expression
  int line = 0;            // of a declaration found in the editor, from 0
  int position = 0;        // the same as a position
  int reserved = 0;
  int targetLine = 0;  // line to jump to, from 0
};

// Takes over what a tag says of itself. `line`, `position` and `memberPath` stay, and `className`
// where the tag has no owner.
void fill(ResolveInfo& info, const TagItem& item);

// Finds out what the expression at a place of an editor stands for. It reads the expression
// backward in the text; the type of its first name is that of the declaration nearest before it
// in the enclosing function, else of a member of the enclosing class, else of a global of the file
// or of any file; the rest is walked through members and bases. Where that finds nothing for a name
// at a place, ExprTypes reads the expression in full. What can't be resolved leaves no more than
// lines in the log.
class CodeWizard {
 public:
  // `theSources` must outlive it.
  explicit CodeWizard(CodeSources& theSources) : tags(theSources), sources(theSources) {}

  // Resolves the expression at `offset` bytes from the caret. Of `info` only `kind` is read. False
  // when nothing is found.
  bool resolveAt(const CaretText& editor, ResolveInfo& info, int offset);
  // What stands before the member operator at the caret, where resolveAt() and the members of its
  // answer give nothing: the declarations and expressions of the text are read for it.
  std::optional<ExprOperand> operandAt(const CaretText& editor);
  // The tag which the caret's line belongs to: the global or member that begins nearest above it,
  // or the class around it when nothing begins above; null without one. `owner` of a class found so
  // is the class itself.
  TagItem* currentItem(const CaretText& editor);

  TagLookup tags;

 private:
  bool resolveChain(TextScanner& scanner, const TagItem* scopeItem, ResolveInfo& info);
  void findLocalDecl(TextScanner& scanner, int from, const TagItem* scopeItem, ResolveInfo& info);
  bool ResolveThis(const TagItem* scopeItem, ResolveInfo& info);
  bool ResolveTag(const TagItem* scopeItem, ResolveInfo& info);
  TagItem* FindMemberOrGlobal(const TagItem* scopeItem, const std::string& name);
  bool WalkMemberPath(ResolveInfo& info);
  bool ResolveNames(const CaretText& editor, TagItem* scopeItem, ResolveInfo& info, int offset);
  bool ResolveByTypes(const CaretText& editor, const TagItem* scopeItem, ResolveInfo& info,
                      int place);

  CodeSources& sources;
};

}  // namespace zendry
