#include "Picture.h"

namespace mavro {

std::string_view Explain(PictureResult result) {
  switch (result) {
    case PictureResult::cLoaded:
      return "";
    case PictureResult::cUnreadable:
      return "The picture can't be read.";
    case PictureResult::cNotAPicture:
      return "This is not a picture, or it is damaged.";
    case PictureResult::cTooLarge:
      return "The picture is too large.";
  }
  return "";
}

PictureSize FitProportional(PictureSize picture, PictureSize box) {
  if (picture.width <= 0 || picture.height <= 0 || box.width <= 0 || box.height <= 0) return {};
  // Integer arithmetic: the products show which ratio is larger, and the quotients round towards
  // zero.
  const int64_t width = picture.width;
  const int64_t height = picture.height;
  if (width * box.height <= height * box.width)
    return {static_cast<int>(box.height * width / height), box.height};
  return {box.width, static_cast<int>(box.width * height / width)};
}

}  // namespace mavro
