#pragma once

#include <string_view>
#include <vector>

#include "code/CompletionList.h"

namespace zendry {

class CaretText;
class CodeTokens;
class TagLookup;

// The names of the text itself that begin with `prefix` and fit where an expression or a statement
// begins: what the functions around the caret declare. `tokens` are those before the caret.
void AddLocalNames(std::vector<CompletionRow>& rows, const CodeTokens& tokens,
                   std::string_view prefix);

// The names with this prefix that neither the text nor the project's globals declare: classes
// inside of the class `scope`, the names of the libraries whose namespaces the text uses, the
// keywords of the language of `path`, and with a prefix those of C's library.
void AddKnownNames(std::vector<CompletionRow>& rows, TagLookup& tags, const CodeTokens& tokens,
                   std::string_view path, std::string_view scope, std::string_view prefix);

}  // namespace zendry
