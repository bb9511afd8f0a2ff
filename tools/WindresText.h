#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace zendry {

// Texts of scripts are UTF-8; a UTF-16 surrogate without a partner is kept as three bytes.

// Appends one code point.
void AppendUtf8(std::string& text, uint32_t codePoint);
// Appends a number's low bytes, the lowest first.
void AppendNumber(std::string& bytes, uint64_t number, int size);
// Appends the text as UTF-16, low bytes first. False when the text is not valid UTF-8.
bool AppendUtf16(std::string& bytes, std::string_view text);

// The word in capitals; changes only ASCII letters.
std::string Capitals(std::string_view word);

}  // namespace zendry
