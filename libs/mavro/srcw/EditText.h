#pragma once

#include <string_view>

namespace mavro {

// How well a text suits the data type of an edit.
enum class TextFit {
  cNo,     // no text typed at its end can make it suit
  cSoFar,  // the start of a text that suits
  cWhole
};

// Checks a text against an Edit::DataType. An empty text suits every type: it means no entry.
TextFit CheckText(int dataType, std::string_view text);

}  // namespace mavro
