#pragma once

#include <string>

#include "lsp/LspFolder.h"
#include "lsp/LspJson.h"
#include "lsp/LspText.h"

namespace zendry {

// What a question is about: a text with its caret at the place, and the folder that it belongs to.
struct LspQuestion {
  LspFolder& folder;
  LspText& text;
  LspColumns columns = LspColumns::cUtf16;
};

// The answers to the questions of a client, in the form that the protocol tells. Each is null or an
// empty list if there is nothing to say.

// `isTyped`: a character that was typed asks, not the user: there is no list in text that is no
// code.
Json CompletionAnswer(const LspQuestion& question, bool isTyped);
Json SignatureAnswer(const LspQuestion& question);
Json HoverAnswer(const LspQuestion& question);
// The places of a definition or declaration.
enum class LspTarget { cDefinition, cDeclaration };
Json TargetAnswer(const LspQuestion& question, LspTarget target);
// The symbols of the text: nested, or else as a flat list.
Json DocumentSymbols(const LspQuestion& question, bool isNested);
// Appends the symbols of a folder whose names have these letters in this order.
void AppendWorkspaceSymbols(Json& out, LspFolder& folder, const std::string& query);

}  // namespace zendry
