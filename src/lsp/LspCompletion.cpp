#include <algorithm>
#include <sstream>

#include "TipRules.h"
#include "code/CodeScan.h"
#include "code/CppLanguage.h"
#include "lsp/LspAnswers.h"

namespace zendry {

namespace {

// Of the protocol.
enum CompletionKind { cFunctionItem = 3, cFieldItem = 5 };

}  // namespace

Json CompletionAnswer(const LspQuestion& question, bool isTyped) {
  Json items = Json::array();
  Json answer = {{"isIncomplete", false}, {"items", items}};
  const LspText& text = question.text;
  const auto caret = static_cast<size_t>(text.CaretPosition());
  if (isTyped && !IsCodeAt(text.View().substr(0, caret))) return answer;
  std::string typed = mavro::CompletionText(text.LineToCaret(), cCppLanguage);
  std::string list;
  // What is too short for a list now may be long enough with the next letter.
  answer["isIncomplete"] = !RequestOf(typed).has_value();
  if (!question.folder.completion.getCompletion(text, typed, list)) return answer;
  std::istringstream names(list);
  for (std::string name; names >> name;) {
    const size_t mark = name.rfind('?');
    const bool isData = name.substr(mark) == "?1";
    items.push_back(
        {{"label", name.substr(0, mark)}, {"kind", isData ? cFieldItem : cFunctionItem}});
  }
  answer["items"] = std::move(items);
  answer["isIncomplete"] = false;
  return answer;
}

}  // namespace zendry
