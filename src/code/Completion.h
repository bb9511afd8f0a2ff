#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "code/CodeWizard.h"
#include "code/CompletionList.h"

namespace zendry {

// The request that the text left of the caret makes.
struct CompletionRequest {
  RequestKind kind = cAnyRequest;
  std::string text;         // a class name, or the letters that names must begin with
  bool typesPrefix = true;  // `text` is in the editor as the beginning of the names

  friend bool operator==(const CompletionRequest&, const CompletionRequest&) = default;
};

// Reads the request from the text left of the caret; the text begins after the last character that
// isn't part of an expression. Nothing when it ends in a part of an operator, or is no more than
// an operator of one character.
std::optional<CompletionRequest> RequestOf(std::string_view text);

// The sentence that says why an asked list has nothing to offer. `text` is the expression left of
// the caret.
std::string WhyNoList(std::string_view text);

// The text to complete: names and the operators between them that end at the caret.
std::string ExpressionLeftOf(const CaretText& editor);

// Makes the lists and tips that an editor shows while the user types.
class Completion {
 public:
  // `theSources` must outlive it.
  explicit Completion(CodeSources& theSources) : wizard(theSources), sources(theSources) {}

  // The names that fit at the caret. `leftOfCaret` is ExpressionLeftOf the editor. No rows when
  // there is nothing to show.
  CompletionList Complete(const CaretText& editor, std::string_view leftOfCaret);
  // Notes that the user has taken a row of a list. Until the end of the session, lists that have
  // this row select it first.
  void NoteTaken(const CompletionRow& row);
  // The row of these names taken last among those that begin with `typed`; null without one.
  const CompletionRow* LastTaken(const CompletionList& list, std::string_view typed) const;
  // The list as the editor's text: gives it for the text left of the caret, and in `text` the part
  // of the name that has been typed already. False when there is nothing to show.
  bool getCompletion(const CaretText& editor, std::string& text, std::string& list);
  // The call around the caret: all declarations that it may mean, and the parameter at the caret.
  // Nothing outside of a call, or if no call around the caret is known.
  std::optional<CallTip> callTipAt(const CaretText& editor);
  // Appends the tags that a request asks for at the caret.
  void collectCompletions(std::vector<TagItem*>& out, const CaretText& editor,
                          std::string_view text, RequestKind kind);

  CodeWizard wizard;

 private:
  using Items = std::vector<TagItem*>;
  struct Place {
    std::string_view operand;  // the text up to the last operator before the caret
    std::string scope;         // the class that the code there belongs to
  };

  // As collectCompletions, for code that belongs to that class.
  void Collect(Items& out, const CaretText& editor, std::string_view text, RequestKind kind,
               const std::string& scope);
  CompletionList CompleteFreely(const CaretText& editor, const std::string& typed,
                                const Place& place);
  void CompleteByTypes(const CaretText& editor, const Place& place, CompletionList& list);
  std::string ScopeAt(const CaretText& editor);
  std::vector<CompletionRow> RowsOf(const CaretText& editor, Items items, const Place& place,
                                    std::string_view prefix);
  void ReadTypes(const CaretText& editor, const Items& items, std::vector<CompletionRow>& rows);
  void AddNestedClasses(Items& items, std::string_view scope, std::string_view prefix);
  void Finish(CompletionList& list) const;

  CodeSources& sources;
  std::vector<CompletionRow> taken;  // the last one last
};

}  // namespace zendry
