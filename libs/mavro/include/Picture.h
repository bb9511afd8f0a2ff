#pragma once

#include <string>
#include <string_view>

#include "Bitmap.h"
#include "Handlers.h"

namespace mavro {

// What became of the wish to load a picture.
enum class PictureResult {
  cLoaded,
  cUnreadable,   // no such file or resource, or no right to read it
  cNotAPicture,  // empty, cut off, or nothing that can be decoded
  cTooLarge      // more pixels than a bitmap may have; refused before room for them is made
};

// The sentence to tell a person about a result; empty for cLoaded.
std::string_view Explain(PictureResult result);

// A decoded image: bitmap, JPEG, PNG, XPM, GIF and icon files. Empty until one has been loaded.
class Picture : public object {
 public:
  // Each replaces what was there; when it fails the picture is empty.
  PictureResult Load(const std::string& path);
  PictureResult LoadData(std::string_view bytes);
  // From the program's resources.
  PictureResult LoadResource(std::string_view type, uint64_t id);
  PictureResult LoadResource(std::string_view type, std::string_view name);
  // Shows these pixels, which stay shared with the caller.
  void Assign(const Bitmap& pixels);
  void Clear() { Assign(Bitmap()); }

  bool IsEmpty() const { return bitmap.IsEmpty(); }
  int Width() const { return bitmap.Width(); }
  int Height() const { return bitmap.Height(); }
  const Bitmap& Pixels() const { return bitmap; }

  NotifyEvent onChange;  // other pixels are shown

 private:
  Bitmap bitmap;
};

// The size in which a picture fills a box and keeps its ratio, rounded towards zero; it stands at
// the box's top left. Zero sizes of either give an empty size.
struct PictureSize {
  int width = 0, height = 0;
  friend bool operator==(const PictureSize&, const PictureSize&) = default;
};
PictureSize FitProportional(PictureSize picture, PictureSize box);

}  // namespace mavro
