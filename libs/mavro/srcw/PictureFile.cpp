#include "FileText.h"
#include "NativePicture.h"
#include "Picture.h"
#include "Resource.h"

namespace mavro {

PictureResult Picture::Load(const std::string& path) {
  const FileText file = ReadFileText(path);
  if (file.Ok()) return LoadData(file.text);
  Clear();
  return PictureResult::cUnreadable;
}

PictureResult Picture::LoadData(std::string_view bytes) {
  Bitmap decoded;
  const PictureResult result = DecodePicture(bytes, decoded);
  Assign(decoded);
  return result;
}

FileResult Picture::Save(const std::string& path) const {
  const std::string bytes = EncodePicture(bitmap);
  if (bytes.empty()) return {path + ": there is no picture to write"};
  return SaveFileText(path, bytes);
}

namespace {

PictureResult LoadEntry(Picture& picture, std::string_view bytes) {
  if (bytes.data()) return picture.LoadData(bytes);
  picture.Clear();
  return PictureResult::cUnreadable;
}

}  // namespace

PictureResult Picture::LoadResource(std::string_view type, uint64_t id) {
  return LoadEntry(*this, FindResource(type, id));
}

PictureResult Picture::LoadResource(std::string_view type, std::string_view name) {
  return LoadEntry(*this, FindResource(type, name));
}

void Picture::Assign(const Bitmap& pixels) {
  if (bitmap == pixels) return;
  bitmap = pixels;
  NotifyArgs args{this, 0};
  onChange.Fire(args);
}

}  // namespace mavro
