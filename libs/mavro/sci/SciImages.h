#pragma once

namespace mavro {

// Pictures as XPM text, in colours that show on light and dark grounds.
extern const char* const cBookmarkImage;
extern const char* const cMemberImage;  // a function, "?1" in lists
extern const char* const cNameImage;    // another name, "?2"

}  // namespace mavro
