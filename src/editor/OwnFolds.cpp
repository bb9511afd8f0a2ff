#include "editor/OwnFolds.h"

#include <cstdint>

#include "editor/CppEditor.h"

namespace zendry {

namespace {

constexpr char cProperty[] = "fold";  // of the lexer

std::uintptr_t Name() {
  return reinterpret_cast<std::uintptr_t>(cProperty);
}

}  // namespace

bool HasOwnFolds(const CppEditor& editor) {
  if (editor.Send(mavro::SCI_GETPROPERTY, Name()) != 1) return false;
  char value[2] = {};
  editor.Send(mavro::SCI_GETPROPERTY, Name(), reinterpret_cast<std::intptr_t>(value));
  return value[0] == '0';
}

void SetOwnFolds(const CppEditor& editor, bool on) {
  if (HasOwnFolds(editor) == on) return;
  editor.Send(mavro::SCI_SETPROPERTY, Name(), reinterpret_cast<std::intptr_t>(on ? "0" : "1"));
}

}  // namespace zendry
