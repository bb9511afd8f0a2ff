#pragma once

#include <string_view>

#include "Picture.h"

namespace mavro {

// Decodes the bytes of a picture file into `decoded`, which stays empty unless that succeeds. What
// claims more pixels than a bitmap may have is refused before room for them is made.
PictureResult DecodePicture(std::string_view bytes, Bitmap& decoded);

}  // namespace mavro
