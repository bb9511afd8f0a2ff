#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "code/CodeWizard.h"

namespace zendry {

// What the text left of the caret asks for.
struct CompletionRequest {
  RequestKind kind = cAnyRequest;
  std::string text;         // a class name, or the letters that names must begin with
  bool typesPrefix = true;  // `text` stands in the editor as the beginning of the names

  friend bool operator==(const CompletionRequest&, const CompletionRequest&) = default;
};

// Reads the text between the last character that belongs to no expression and the caret. Nothing
// when it is too short, or ends in a part of an operator.
std::optional<CompletionRequest> RequestOf(std::string_view text);

// The items' names for the editor's list: sorted, each once, between blanks. "?1" behind a name is
// the picture of a data member, "?2" that of everything else. A name that holds a blank itself
// ("operator new") can't stand in the list.
std::string ListText(std::vector<TagItem*> items);

// Makes the lists and tips that an editor shows while somebody types.
class Completion {
 public:
  // `theSources` must outlive it.
  explicit Completion(CodeSources& theSources) : wizard(theSources), sources(theSources) {}

  // The list for the text left of the caret, and in `text` the beginning of the names that has been
  // typed already. False when there is nothing to show.
  bool getCompletion(const CaretText& editor, std::string& text, std::string& list);
  // Name and parameter list of the function whose call opens just before the caret, or of that
  // whose name stands at `offset` bytes from it. False without one.
  bool getCallTip(const CaretText& editor, std::string& tip, int offset = 0);
  // Appends what a request asks for at the caret.
  void collectCompletions(std::vector<TagItem*>& out, const CaretText& editor,
                          std::string_view text, RequestKind kind);

  CodeWizard wizard;

 private:
  void CompleteByTypes(const CaretText& editor, std::string& text, std::string& list);

  CodeSources& sources;
};

}  // namespace zendry
