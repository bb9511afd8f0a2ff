#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "code/CodeWizard.h"

namespace zendry {

// The request that the text left of the caret makes.
struct CompletionRequest {
  RequestKind kind = cAnyRequest;
  std::string text;         // a class name, or the letters that names must begin with
  bool typesPrefix = true;  // `text` is in the editor as the beginning of the names

  friend bool operator==(const CompletionRequest&, const CompletionRequest&) = default;
};

// Reads the request from the text left of the caret; the text begins after the last character that
// isn't part of an expression. Nothing when it is too short, or ends in a part of an operator.
std::optional<CompletionRequest> RequestOf(std::string_view text);

// The sentence that says why an asked list has nothing to offer. `text` is the expression left of
// the caret.
std::string WhyNoList(std::string_view text);

// The items' names for the editor's list: sorted, without duplicates, separated by blanks. "?1"
// after a name means the picture of a data member, "?2" that of everything else. A name that
// contains a blank ("operator new") can't be in the list.
std::string ListText(std::vector<TagItem*> items);

// Makes the lists and tips that an editor shows while the user types.
class Completion {
 public:
  // `theSources` must outlive it.
  explicit Completion(CodeSources& theSources) : wizard(theSources), sources(theSources) {}

  // Gives the list for the text left of the caret, and in `text` the part of the name that has been
  // typed already. False when there is nothing to show.
  bool getCompletion(const CaretText& editor, std::string& text, std::string& list);
  // The call around the caret: all declarations that it may mean, and the parameter at the caret.
  // Nothing outside of a call, or if no call around the caret is known.
  std::optional<CallTip> callTipAt(const CaretText& editor);
  // Appends the tags that a request asks for at the caret.
  void collectCompletions(std::vector<TagItem*>& out, const CaretText& editor,
                          std::string_view text, RequestKind kind);

  CodeWizard wizard;

 private:
  void CompleteByTypes(const CaretText& editor, std::string& text, std::string& list);

  CodeSources& sources;
};

}  // namespace zendry
