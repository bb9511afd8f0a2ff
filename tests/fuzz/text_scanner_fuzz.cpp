#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "CodeText.h"
#include "code/Completion.h"
#include "code/ContainerTypes.h"
#include "code/DeclRead.h"
#include "code/DeclScan.h"
#include "code/ExprRead.h"
#include "code/TextScanner.h"

// Reads chains, declarations, types and expressions at a caret of any text, and completes there:
// what is found consists of names, lies in the text, and what is read forward and backward ends.
// The caret is the first
// '@' of the text, or its end.

namespace {

void Require(bool condition) {
  if (!condition) std::abort();
}

bool IsName(const std::string& text, bool dots) {
  return std::all_of(text.begin(), text.end(), [dots](unsigned char c) {
    return zendry::IsWordChar(c) || (dots && c == '.');
  });
}

void ReadAround(const test::CodeText& editor) {
  zendry::TextScanner scanner(editor);
  const int length = editor.Length();
  const int caret = scanner.position;
  const zendry::Chain chain = zendry::readChain(scanner, caret);
  Require(chain.text.size() <= 512 && IsName(chain.text, true));
  Require(chain.start >= 0 && chain.start <= length && chain.wordEnd <= length);
  const int operand = zendry::operandEnd(scanner, caret);
  Require(operand >= 0 && operand <= caret);
  zendry::ScanBudget budget;
  Require(IsName(zendry::findDeclType(scanner, caret, budget), false));
  const std::string head = chain.text.substr(0, chain.text.find('.'));
  if (const auto decl = zendry::findTextDecl(scanner, head, chain.start, caret / 2)) {
    Require(IsName(decl->type, false) && !decl->type.empty());
    Require(decl->position > 0 && decl->position < length);
    Require(editor.text[decl->position] == head[0]);
  }
  zendry::declarationAt(scanner, chain.wordEnd);
  for (scanner.position = 0; scanner.position < length;) {
    const int before = scanner.position;
    scanner.readForward();
    Require(scanner.position > before && scanner.position <= length);
  }
  while (scanner.position > 0) {
    const int before = scanner.position;
    scanner.readBack();
    Require(scanner.position < before && scanner.position >= 0);
  }
}

// The parameters of a tip are in its labels one after the other, and its places in the text.
void CheckTip(const test::CodeText& editor, const std::optional<zendry::CallTip>& tip) {
  for (int i = 0; i < editor.Length(); i += 1 + editor.Length() / 16)
    zendry::PlaceInCall(editor, i);
  if (!tip) return;
  Require(!tip->overloads.empty() && tip->argument >= 0 && tip->argument <= tip->arguments);
  Require(tip->name >= 0 && tip->name <= tip->bracket && tip->bracket <= tip->innermost);
  Require(tip->innermost < editor.CaretPosition());
  for (const zendry::CallSignature& overload : tip->overloads) {
    int last = 0;
    for (const auto& [start, end] : overload.parameters) {
      Require(start >= last && start < end);
      last = end;
    }
    Require(last <= static_cast<int>(overload.label.size()));
  }
}

// Tokens are in the text one after the other; the words of a type can be read again.
void ReadTokens(const test::CodeText& editor) {
  const zendry::CodeTokens tokens = zendry::CodeTokens::Before(editor, editor.CaretPosition());
  zendry::StepBudget budget;
  for (int i = 0; i < tokens.Count(); ++i) {
    Require(tokens.Start(i) >= tokens.End(i - 1) && tokens.Start(i) <= tokens.End(i));
    const int partner = tokens.Partner(i);
    Require(partner < 0 || tokens.Partner(partner) == i);
    if (const auto decl = zendry::DeclarationAt(tokens, i, budget)) {
      Require(decl->name == i && !decl->type.IsEmpty());
      Require(decl->initBegin <= decl->initEnd && decl->initEnd <= tokens.Count());
      zendry::ElementOf(decl->type);
      zendry::MemberOf(decl->type, "begin");
    }
    int at = i;
    if (const auto type = zendry::ReadType(tokens, at)) {
      Require(at > i && at <= tokens.Count() && !type->IsEmpty());
      Require(!zendry::Print(*type).empty());
    }
    const int start = zendry::OperandStart(tokens, i, budget);
    Require(start < i);
    if (start >= 0) zendry::ReadExpr(tokens, start, i, budget);
  }
  Require(budget.steps >= 0);
}

void CompleteAt(const test::CodeText& editor) {
  test::CodeStores stores;
  stores.Class("A", 1, "B,A").members = {test::Tag("a", 'm', "A", 2), test::Tag("b", 'p', "B", 3)};
  stores.Class("B", 2, "A").members = {test::Tag("c", 'm', "A", 3)};
  stores.current->globals = {test::Tag("f", 'v', "A", 2), test::Tag("T", 't', "A", 1),
                             test::Tag("n", 'n', "", 1)};
  zendry::TagClass& vector = test::CodeStores::AddClass(stores.libraryStore, "vector", 0);
  vector.members = {test::Tag("begin", 'p', "iterator"), test::Tag("operator []", 'p', "A")};
  stores.Changed();
  zendry::Completion completion(stores);
  std::string text = editor.LeftOfCaret();
  std::string list;
  const bool shown = completion.getCompletion(editor, text, list);
  Require(shown == !list.empty());
  CheckTip(editor, completion.callTipAt(editor));
  completion.wizard.operandAt(editor);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const test::CodeText editor(std::string(reinterpret_cast<const char*>(data), size));
  ReadAround(editor);
  ReadTokens(editor);
  CompleteAt(editor);
  return 0;
}
