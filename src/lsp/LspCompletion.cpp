#include <array>

#include "code/CodeScan.h"
#include "lsp/LspAnswers.h"

namespace zendry {

namespace {

// The protocol's numbers for the kinds of rows, by RowKind; the first one is never used.
constexpr std::array<int, 11> cItemKinds = {1, 5, 3, 7, 13, 20, 7, 21, 9, 14, 6};
constexpr int cMethodItem = 2, cVariableItem = 6;

int ItemKindOf(const CompletionRow& row) {
  const bool isMember = !row.owner.empty();
  if (row.kind == RowKind::cFunction && isMember) return cMethodItem;
  if (row.kind == RowKind::cData && !isMember) return cVariableItem;
  return cItemKinds[static_cast<size_t>(row.kind)];
}

// A row as "int Shape::area(int unit)"; empty if there is nothing to say beyond its name.
std::string DeclarationOf(const CompletionRow& row) {
  if (row.signature.empty() && row.type.empty()) return "";
  const std::string scope = row.owner.empty() ? "" : row.owner + "::";
  return row.type + (row.type.empty() ? "" : " ") + scope + row.name + row.signature;
}

Json ItemOf(const CompletionRow& row) {
  Json item = {{"label", row.name}, {"kind", ItemKindOf(row)}};
  if (!row.type.empty()) item["detail"] = row.type;
  if (!row.signature.empty()) item["labelDetails"] = {{"detail", row.signature}};
  if (const std::string declaration = DeclarationOf(row); !declaration.empty())
    item["documentation"] = declaration;
  return item;
}

Json AnswerWith(Json items, bool isIncomplete) {
  return {{"isIncomplete", isIncomplete}, {"items", std::move(items)}};
}

}  // namespace

// A list that can't be made yet may be possible with the next letter: the client has to ask again.
Json CompletionAnswer(const LspQuestion& question, bool isTyped) {
  Json items = Json::array();
  const LspText& text = question.text;
  const auto caret = static_cast<size_t>(text.CaretPosition());
  if (isTyped && !IsCodeAt(text.View().substr(0, caret)))
    return AnswerWith(std::move(items), false);
  const std::string left = ExpressionLeftOf(text);
  const CompletionList list = question.folder.completion.Complete(text, left);
  for (size_t i = 0; i < list.rows.size(); ++i) {
    items.push_back(ItemOf(list.rows[i]));
    if (i == list.selected && i > 0) items.back()["preselect"] = true;
  }
  const bool isTooShort = list.rows.empty() && !RequestOf(left);
  return AnswerWith(std::move(items), isTooShort);
}

}  // namespace zendry
