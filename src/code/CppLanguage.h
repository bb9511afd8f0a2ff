#pragma once

#include "EditorLanguage.h"

namespace zendry {

// The editors' description of C and C++.
extern const mavro::EditorLanguage cCppLanguage;

}  // namespace zendry
