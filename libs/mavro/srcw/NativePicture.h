#pragma once

#include <string>
#include <string_view>

#include "Picture.h"

namespace mavro {

// Decodes the bytes of a picture file into `decoded`, which stays empty unless that succeeds. A
// file that claims more pixels than a bitmap may have is refused before memory for them is
// allocated.
PictureResult DecodePicture(std::string_view bytes, Bitmap& decoded);

// The bytes of a PNG file with these pixels; empty for an empty bitmap.
std::string EncodePicture(const Bitmap& bitmap);

}  // namespace mavro
