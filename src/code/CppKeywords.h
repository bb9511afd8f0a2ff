#pragma once

#include <string_view>

namespace zendry {

// The keywords of a language, separated by blanks, those of the preprocessor left out.
std::string_view KeywordsOfC();
std::string_view KeywordsOfCpp();

}  // namespace zendry
