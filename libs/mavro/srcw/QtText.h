#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace mavro {

// Bytes as the screen shows them: UTF-8, with every byte that is not part of a valid sequence kept
// as the lone surrogate U+DC00 plus the byte.
QString ToScreen(std::string_view bytes);
// The bytes that ToScreen was given: a text that passes through a control comes out unchanged.
std::string FromScreen(const QString& shown);

}  // namespace mavro
