#include "QtStrips.h"

#include <QBuffer>
#include <QHash>
#include <QIconEngine>
#include <QImage>
#include <QImageReader>
#include <QPainter>
#include <QPixmap>
#include <cmath>
#include <map>

#include "Application.h"
#include "Resource.h"

// The stock icons. Naming them here links them from the framework's archive into every program that
// shows pictures and has no stock icons of its own with their id.
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

// Reads a strip of a format without transparency: pixels with the color of the first one become
// transparent.
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

// Returns the picture gray and half transparent, so that it is faint on any ground.
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

// The size of a picture, read from its first bytes; empty if there is no picture.
QSize ResourcePictureSize(uint64_t id) {
  static QHash<quint64, QSize> sizes;
  const auto found = sizes.constFind(id);
  if (found != sizes.constEnd()) return *found;
  QSize size(0, 0);
  for (const char* type : {"PNG", "BITMAP"}) {
    QByteArray bytes = ResourceBytes(type, id);
    if (bytes.isEmpty() || !size.isEmpty()) continue;
    QBuffer buffer(&bytes);
    const QSize read = QImageReader(&buffer).size();
    size = read.isValid() ? read : ResourcePicture(id).size();
  }
  return *sizes.insert(id, size);
}

// A picture of a strip. Only the sizes that the screen asks for are decoded.
class StripEngine final : public QIconEngine {
 public:
  StripEngine(const ImageStrip& strip, int index) : strip(strip), index(index) {}

  static bool Has(const ImageStrip& strip, int index) {
    for (const double scale : cStripScales)
      if (HasCell(strip, scale, index)) return true;
    return false;
  }

  // `size` is in device pixels.
  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    return Drawn(ScaleFor(size)).pixmap(size, 1, mode, state);
  }

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
    const double ratio = painter->device()->devicePixelRatio();
    painter->drawPixmap(rect, pixmap((QSizeF(rect.size()) * ratio).toSize(), mode, state));
  }

  QSize actualSize(const QSize& size, QIcon::Mode, QIcon::State) override {
    const double scale = ScaleFor(size);
    const QSize own(WidthAt(strip, scale), ResourcePictureSize(VariantId(strip, scale)).height());
    const bool fits = own.width() <= size.width() && own.height() <= size.height();
    return fits ? own : own.scaled(size, Qt::KeepAspectRatio);
  }

  QList<QSize> availableSizes(QIcon::Mode, QIcon::State) override {
    return {QSize(strip.width, strip.height)};
  }

  QIconEngine* clone() const override { return new StripEngine(*this); }
  QString key() const override { return "mavro-strip"; }
  bool isNull() override { return false; }

 private:
  static int WidthAt(const ImageStrip& strip, double scale) {
    return static_cast<int>(strip.width * scale);
  }

  static uint64_t VariantId(const ImageStrip& strip, double scale) {
    const auto id = static_cast<uint64_t>(strip.resourceId);
    return scale == 1 ? id : id + cVariant * static_cast<uint64_t>(WidthAt(strip, scale));
  }

  static bool HasCell(const ImageStrip& strip, double scale, int index) {
    const int strips = ResourcePictureSize(VariantId(strip, scale)).width();
    return index >= 0 && index < strips / std::max(WidthAt(strip, scale), 1);
  }

  // The scale of the smallest picture that need not be enlarged, else of the largest one.
  double ScaleFor(const QSize& size) const {
    double best = 0;
    for (const double scale : cStripScales) {
      if (!HasCell(strip, scale, index)) continue;
      best = scale;
      if (WidthAt(strip, scale) >= size.width()) break;
    }
    return best;
  }

  const QIcon& Drawn(double scale) {
    QIcon& icon = drawn[scale];
    if (!icon.isNull()) return icon;
    const QImage& all = ResourcePicture(VariantId(strip, scale));
    const int width = WidthAt(strip, scale);
    const QImage cell = all.copy(index * width, 0, width, all.height());
    icon.addPixmap(QPixmap::fromImage(cell), QIcon::Normal);
    icon.addPixmap(QPixmap::fromImage(Disabled(cell)), QIcon::Disabled);
    return icon;
  }

  const ImageStrip strip;
  const int index;
  std::map<double, QIcon> drawn;  // by scale
};

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
  const ImageStrip* strip = theApplication.FindImageList(stripId);
  if (!strip || !StripEngine::Has(*strip, index)) return QIcon();
  return QIcon(new StripEngine(*strip, index));
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
  if (!icon.isNull()) return icon;
  const QImage& only = ResourcePicture(static_cast<uint64_t>(id));
  if (!only.isNull()) return QPixmap::fromImage(only);
  return FileIcon(static_cast<uint64_t>(id));
}

}  // namespace mavro
