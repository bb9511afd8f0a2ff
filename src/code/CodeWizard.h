#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "code/ExprTypes.h"
#include "code/TagLookup.h"

namespace zendry {

class CodeSources;
class CaretText;
class TextScanner;

// The purpose of a resolution.
enum RequestKind {
  cClassRequest = 'C',   // the members of a named class
  cMemberRequest = 'm',  // the members of an expression's value
  cPrefixRequest = 'P',  // names that begin with some letters
  cAnyRequest = '?'      // everything that is possible at the caret
};

// The meaning of the expression at a place of an editor.
struct ResolveInfo {
  int kind = 0;            // the RequestKind; of a resolved tag the letter of its kind
  std::string name;        // head of the expression, or name of the resolved tag
  std::string className;   // owner of the resolved tag
  std::string signature;   // argument text of the call, or signature of the tag
  std::string type;        // the type found
  std::string file;        // of the resolved tag; empty if found in the editor's text
  std::string memberPath;  // the text after the first dot of the expression
  int line = 0;            // of a declaration found in the editor, from 0
  int position = 0;        // the same as a position
  int reserved = 0;
  int targetLine = 0;  // line to jump to, from 0
};

// Copies a tag's data into `info`. `line`, `position` and `memberPath` stay as they are, and so
// does `className` if the tag has no owner.
void fill(ResolveInfo& info, const TagItem& item);

// Finds the meaning of the expression at a place of an editor. It reads the expression backward in
// the text. The type of its first name comes from the nearest declaration before it in the
// enclosing function, else from a member of the enclosing class, else from a global of the file or
// of any file. The rest is resolved through members and bases. If that finds nothing for a name at
// a place, ExprTypes reads the expression in full. A failure only leaves lines in the log.
class CodeWizard {
 public:
  // `theSources` must outlive it.
  explicit CodeWizard(CodeSources& theSources) : tags(theSources), sources(theSources) {}

  // Resolves the expression at `offset` bytes from the caret. Only `kind` of `info` is read. False
  // when nothing is found.
  bool resolveAt(const CaretText& editor, ResolveInfo& info, int offset);
  // The operand of the member operator at the caret. To be called when resolveAt() and the members
  // of its result give nothing: it reads the declarations and expressions of the text.
  std::optional<ExprOperand> operandAt(const CaretText& editor);
  // The declarations that the innermost known call around the caret may mean, the best fitting
  // first. Nothing if there is none.
  std::optional<CallTip> callTipAt(const CaretText& editor);
  // The position where the functions around a position declare a name; -1 if they don't, and for a
  // position outside of functions.
  int localPlace(const CaretText& editor, int position, std::string_view name);
  // True if the word that ends at a position is declared there.
  bool isDeclaredAt(const CaretText& editor, int wordEnd);
  // The function that fits the arguments of a call best; the first of several, null if the text at
  // `callEnd`, the place of the call's closing bracket, can't be read.
  TagItem* bestOverload(const CaretText& editor, int callEnd,
                        const std::vector<TagItem*>& functions);
  // The tag which the caret's line belongs to: the global or member that begins nearest above it,
  // or the class around it when nothing begins above; null without one. If it is a class, its
  // `owner` is the class itself.
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

  std::optional<CallTip> FindCallTip(const CaretText& editor, const TagItem* scopeItem,
                                     int earliest);

  CodeSources& sources;
};

}  // namespace zendry
