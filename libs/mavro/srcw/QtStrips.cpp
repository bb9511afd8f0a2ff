#include "QtStrips.h"

#include <QBuffer>
#include <QHash>
#include <QImage>
#include <QImageReader>
#include <QPixmap>
#include <cmath>

#include "Application.h"
#include "Resource.h"

// The stock icons. Naming them here takes them out of the framework's archive into every program
// that shows pictures and has none of its own with their id.
extern "C" const mavro::ResourceEntry theStockIcons __asm__("mavro_resource_PNG_1")
    __attribute__((visibility("hidden")));

namespace mavro {

const ResourceEntry* const theUsedStockIcons __attribute__((used)) = &theStockIcons;

namespace {

// A picture drawn for a scaled screen has this times its width in device pixels added to its id.
constexpr uint64_t cVariant = 0x10000;
constexpr double cStripScales[] = {1, 1.5, 2, 3};
constexpr int cIconSides[] = {16, 24, 32, 48, 64, 128};
constexpr double cDisabledOpacity = 0.5;
constexpr int cMostIconPictures = 64;

QByteArray ResourceBytes(const char* type, uint64_t id) {
  const std::string_view bytes = FindResource(type, id);
  return QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

// A strip of the format that knows no transparency: what has the color of the first pixel is
// ground.
QImage BitmapPicture(uint64_t id) {
  const QImage picture = QImage::fromData(ResourceBytes("BITMAP", id));
  if (picture.isNull() || picture.hasAlphaChannel()) return picture;
  QImage result = picture.convertToFormat(QImage::Format_ARGB32);
  const QImage mask = result.createMaskFromColor(result.pixel(0, 0), Qt::MaskOutColor);
  result.setAlphaChannel(mask.convertToFormat(QImage::Format_Alpha8));
  return result;
}

// Decoded at its first use and kept.
const QImage& ResourcePicture(uint64_t id) {
  static QHash<quint64, QImage> pictures;
  const auto found = pictures.constFind(id);
  if (found != pictures.constEnd()) return *found;
  QImage picture = QImage::fromData(ResourceBytes("PNG", id), "PNG");
  if (picture.isNull()) picture = BitmapPicture(id);
  return *pictures.insert(id, picture.convertToFormat(QImage::Format_ARGB32_Premultiplied));
}

// Gray and half transparent, so that it recedes on any ground.
QImage Disabled(const QImage& picture) {
  QImage result = picture.convertToFormat(QImage::Format_ARGB32);
  for (int y = 0; y < result.height(); ++y) {
    auto* line = reinterpret_cast<QRgb*>(result.scanLine(y));
    for (int x = 0; x < result.width(); ++x) {
      const int gray = qGray(line[x]);
      const int alpha = static_cast<int>(std::lround(qAlpha(line[x]) * cDisabledOpacity));
      line[x] = qRgba(gray, gray, gray, alpha);
    }
  }
  return result;
}

void AddPicture(QIcon& icon, QImage picture, double scale) {
  picture.setDevicePixelRatio(scale);
  QImage disabled = Disabled(picture);
  disabled.setDevicePixelRatio(scale);
  icon.addPixmap(QPixmap::fromImage(picture), QIcon::Normal);
  icon.addPixmap(QPixmap::fromImage(disabled), QIcon::Disabled);
}

// The cell of one index; null when the strip ends before it.
QImage Cell(const QImage& strip, int cellWidth, int index) {
  if (index < 0 || (index + 1) * cellWidth > strip.width()) return QImage();
  return strip.copy(index * cellWidth, 0, cellWidth, strip.height());
}

// All pictures of an icon file.
QIcon FileIcon(uint64_t id) {
  QIcon icon;
  QByteArray bytes = ResourceBytes("ICON", id);
  QBuffer buffer(&bytes);
  QImageReader reader(&buffer);
  for (int i = 0; i < cMostIconPictures; ++i) {
    const QImage picture = reader.read();
    if (!picture.isNull()) icon.addPixmap(QPixmap::fromImage(picture));
    if (!reader.jumpToNextImage()) break;
  }
  return icon;
}

}  // namespace

QIcon StripIcon(int stripId, int index) {
  QIcon icon;
  const ImageStrip* strip = theApplication.FindImageList(stripId);
  if (!strip) return icon;
  for (const double scale : cStripScales) {
    const int width = static_cast<int>(strip->width * scale);
    const auto id = static_cast<uint64_t>(stripId);
    const uint64_t variant = scale == 1 ? id : id + cVariant * static_cast<uint64_t>(width);
    const QImage cell = Cell(ResourcePicture(variant), width, index);
    if (!cell.isNull()) AddPicture(icon, cell, scale);
  }
  return icon;
}

QSize StripPictureSize(int stripId) {
  const ImageStrip* strip = theApplication.FindImageList(stripId);
  return strip ? QSize(strip->width, strip->height) : QSize(0, 0);
}

QIcon ResourceIcon(int id) {
  QIcon icon;
  for (const int side : cIconSides) {
    const QImage& variant =
        ResourcePicture(static_cast<uint64_t>(id) + cVariant * static_cast<uint64_t>(side));
    if (!variant.isNull()) icon.addPixmap(QPixmap::fromImage(variant));
  }
  const QImage& largest = ResourcePicture(static_cast<uint64_t>(id));
  if (!largest.isNull()) icon.addPixmap(QPixmap::fromImage(largest));
  return icon.isNull() ? FileIcon(static_cast<uint64_t>(id)) : icon;
}

}  // namespace mavro
