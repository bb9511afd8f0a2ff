#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "code/CodeTokens.h"
#include "code/CppIndent.h"

namespace zendry {

// The declarations and blocks of a source text, found without its meaning: enough to say where a
// declaration begins and ends, in broken text too.
class SourceShape {
 public:
  explicit SourceShape(std::string theText);

  // A declaration, an access label or a block of a namespace: tokens from `begin` up to `end`.
  struct Statement {
    int begin = 0;
    int end = 0;
  };

  // The token of a name that is declared in a line from 1, or up to two lines after it; -1 without
  // one. A name may have several tokens, as "operator ==" has.
  int NameIn(int line, std::string_view name) const;
  // The "{" of the class whose name is this token; -1 without one.
  int BodyOf(int name) const;
  // The "{" that is open at a token; -1 outside of all.
  int BlockAround(int token) const;
  // The statement that begins at a token and ends before `end` at the latest. `isWhole` becomes
  // false if its end can't be told.
  Statement Next(int begin, int end, bool& isWhole) const;
  // The statement directly within a block that a token is in; -1 is the block of the whole text.
  // None if that can't be told.
  std::optional<Statement> Around(int token, int block) const;
  // The last statement of a block; an empty one at its beginning if it has none.
  Statement LastOf(int block) const;
  // The names of the namespaces around a token, the outermost first.
  std::vector<std::string> NamespacesAround(int token) const;
  // The "{" of the last block of these namespaces; -1 without one.
  int NamespaceBlock(const std::vector<std::string>& names) const;
  // The words that qualify the name at a token: "n::A::"; empty without them.
  std::string Qualifier(int name) const;

  // Group: the lines of the text.
  size_t LineStart(size_t offset) const;
  // The end of the offset's line, before its line end.
  size_t LineEnd(size_t offset) const;
  std::string Indentation(size_t offset) const;
  // The line end that the text uses; "\n" without one.
  std::string_view NewLine() const;
  // True if functions have their "{" at the end of their head's line, as far as the text shows it.
  bool HasAttachedBraces(const IndentHabits& habits) const;

  const std::string text;
  const CodeTokens tokens;

 private:
  int BlockEnd(int block) const;
  int FirstIn(int block) const { return block + 1; }
  int NamespaceIn(int begin, int end, const std::vector<std::string>& names, size_t known) const;
  std::vector<std::string> NamespaceNames(int begin, int brace) const;
};

}  // namespace zendry
