#pragma once

#include "EditorLanguage.h"

namespace zendry {

// What editors know of C and C++.
extern const mavro::EditorLanguage cCppLanguage;

}  // namespace zendry
