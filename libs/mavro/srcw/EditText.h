#pragma once

#include <string_view>

namespace mavro {

// How a text suits what an edit takes.
enum class TextFit {
  cNo,     // nothing that is typed behind it makes it suit
  cSoFar,  // the start of a text that does
  cWhole
};

// Checks a text against an Edit::DataType. An empty text suits every type: nothing is entered.
TextFit CheckText(int dataType, std::string_view text);

}  // namespace mavro
