#pragma once

#include <string>
#include <string_view>

#include "Bitmap.h"
#include "FileText.h"
#include "Handlers.h"

namespace mavro {

// The result of loading a picture.
enum class PictureResult {
  cLoaded,
  cUnreadable,   // no such file or resource, or no right to read it
  cNotAPicture,  // empty, cut off, or in no known format
  cTooLarge      // more pixels than a bitmap may have; refused before memory is allocated
};

// A sentence for the user that explains the result; empty for cLoaded.
std::string_view Explain(PictureResult result);

// A decoded image: bitmap, JPEG, PNG, XPM, GIF and icon files. Empty until an image has been
// loaded.
class Picture : public object {
 public:
  // Each replaces the present image; if it fails, the picture is empty.
  PictureResult Load(const std::string& path);
  PictureResult LoadData(std::string_view bytes);
  // From the program's resources.
  PictureResult LoadResource(std::string_view type, uint64_t id);
  PictureResult LoadResource(std::string_view type, std::string_view name);
  // Writes the image as a PNG file, replacing an old one as SaveFileText does. An error for an
  // empty picture and for a file that can't be written.
  FileResult Save(const std::string& path) const;
  // Shows these pixels, which stay shared with the caller.
  void Assign(const Bitmap& pixels);
  void Clear() { Assign(Bitmap()); }

  bool IsEmpty() const { return bitmap.IsEmpty(); }
  int Width() const { return bitmap.Width(); }
  int Height() const { return bitmap.Height(); }
  const Bitmap& Pixels() const { return bitmap; }

  NotifyEvent onChange;  // the pixels have been replaced

 private:
  Bitmap bitmap;
};

// The size of a picture that fills a box and keeps its ratio, rounded towards zero; the picture is
// at the box's top left. If either size is zero, the result is empty.
struct PictureSize {
  int width = 0, height = 0;
  friend bool operator==(const PictureSize&, const PictureSize&) = default;
};
PictureSize FitProportional(PictureSize picture, PictureSize box);

}  // namespace mavro
