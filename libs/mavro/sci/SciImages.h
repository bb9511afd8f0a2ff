#pragma once

#include <string>

namespace mavro {

// Pictures as XPM text, in colours that show on light and dark grounds.
extern const char* const cBookmarkImage;
extern const char* const cErrorImage;
extern const char* const cArrowImage;
extern const char* const cDiscImage;
extern const char* const cRingImage;

// The pictures of a list's rows as XPM text, by the number after "?": 1 data, 2 function, 3 class,
// 4 enum, 5 enumerator, 6 other type, 7 macro, 8 namespace, 9 keyword, 10 local variable.
constexpr int cListPictures = 10;
std::string ListPicture(int number);

}  // namespace mavro
