#pragma once

namespace mavro {

// Pictures as XPM text, in colours that show on light and dark grounds.
extern const char* const cBookmarkImage;
extern const char* const cErrorImage;
extern const char* const cArrowImage;
extern const char* const cMemberImage;  // a data member, "?1" in lists
extern const char* const cNameImage;    // any other name, "?2"

}  // namespace mavro
