#include <QBuffer>
#include <QImage>
#include <QImageReader>
#include <algorithm>
#include <cstring>

#include "NativePicture.h"
#include "PictureHeader.h"
#include "QtOverlay.h"

namespace mavro {

namespace {

// The file formats of pictures; other formats that the toolkit can decode are refused.
constexpr const char* cFormats[] = {"bmp", "jpeg", "jpg", "png", "xpm", "gif", "ico"};
constexpr int cBytesPerPixel = 4;

bool IsKnown(const QByteArray& format) {
  return std::any_of(std::begin(cFormats), std::end(cFormats),
                     [&](const char* known) { return format == known; });
}

Bitmap BitmapOf(const QImage& image) {
  const QImage pixels = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
  Bitmap bitmap(pixels.width(), pixels.height());
  if (bitmap.IsEmpty()) return bitmap;
  for (int y = 0; y < pixels.height(); ++y)
    std::memcpy(bitmap.Row(y), pixels.constScanLine(y),
                static_cast<size_t>(pixels.width()) * cBytesPerPixel);
  return bitmap;
}

}  // namespace

PictureResult DecodePicture(std::string_view bytes, Bitmap& decoded) {
  const auto claimed = ReadClaimedSize(bytes);
  if (claimed && claimed->width > 0 && claimed->height > 0 &&
      !Bitmap::IsPossible(claimed->width, claimed->height))
    return PictureResult::cTooLarge;
  QByteArray data = QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size()));
  QBuffer buffer(&data);
  buffer.open(QIODevice::ReadOnly);
  QImageReader::setAllocationLimit(Bitmap::cMaxPixels * cBytesPerPixel >> 20);
  QImageReader reader(&buffer);
  reader.setAutoTransform(true);
  if (!IsKnown(reader.format())) return PictureResult::cNotAPicture;
  const QSize size = reader.size();
  if (size.isValid() && !Bitmap::IsPossible(size.width(), size.height()))
    return PictureResult::cTooLarge;
  const QImage image = reader.read();
  if (image.isNull()) return PictureResult::cNotAPicture;
  if (!Bitmap::IsPossible(image.width(), image.height())) return PictureResult::cTooLarge;
  decoded = BitmapOf(image);
  return PictureResult::cLoaded;
}

std::string EncodePicture(const Bitmap& bitmap) {
  if (bitmap.IsEmpty()) return {};
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  return ImageOf(bitmap).save(&buffer, "PNG") ? bytes.toStdString() : std::string();
}

}  // namespace mavro
