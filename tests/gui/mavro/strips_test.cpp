#include "QtStrips.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <QPalette>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "Strips.h"

namespace mavro {
namespace {

struct Strips : testing::Test {
  Strips() { test::RegisterStrips(); }
};

struct StripRow {
  int id;
  int size;
  const char* list;  // in dist/pictures
  int first;         // where index 0 means "no picture", 1
  int count = 0;     // one more than the list's last index
};

std::vector<StripRow> AllStrips() {
  std::vector<StripRow> strips = {{1, 24, "strip-1", 1},     {0x6A, 16, "strip-6a", 0},
                                  {0x6D, 28, "strip-6e", 1}, {0x6E, 22, "strip-6e", 1},
                                  {0x6F, 16, "strip-6f", 0}, {0x70, 22, "strip-70", 0},
                                  {0x71, 22, "strip-71", 1}};
  for (StripRow& strip : strips) {
    std::ifstream list(std::string(TEST_DATA "/../../dist/pictures/") + strip.list + ".list");
    for (std::string line; std::getline(list, line);)
      if (!line.empty() && std::isdigit(static_cast<unsigned char>(line[0])))
        strip.count = std::max(strip.count, static_cast<int>(std::stol(line, nullptr, 0)) + 1);
  }
  return strips;
}

int VisiblePixels(const QImage& image) {
  int visible = 0;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x)
      if (qAlpha(image.pixel(x, y)) > 128) ++visible;
  return visible;
}

QImage Picture(int id, int index, double scale, QIcon::Mode mode = QIcon::Normal) {
  return StripIcon(id, index).pixmap(StripPictureSize(id), scale, mode).toImage();
}

// The pixels that stand out from a ground of this colour: what a picture is recognised by. A white
// page on a light ground lives by its outline.
int StandingOut(const QImage& picture, QColor ground) {
  int count = 0;
  for (int y = 0; y < picture.height(); ++y)
    for (int x = 0; x < picture.width(); ++x) {
      const QColor color = picture.pixelColor(x, y);
      if (color.alpha() < 128) continue;
      if (std::abs(color.lightnessF() - ground.lightnessF()) > 0.3 || color.hslSaturationF() > 0.5)
        ++count;
    }
  return count;
}

TEST_F(Strips, EveryIndexHasAPictureAtEveryScale) {
  for (const StripRow& strip : AllStrips())
    for (int i = strip.first; i < strip.count; ++i)
      for (const double scale : {1.0, 1.5, 2.0, 3.0})
        EXPECT_GT(VisiblePixels(Picture(strip.id, i, scale)), 8)
            << std::hex << strip.id << " " << i << " " << scale;
}

TEST_F(Strips, IndexAfterTheEnd_HasNone) {
  for (const StripRow& strip : AllStrips()) {
    ASSERT_GT(strip.count, 5);
    EXPECT_FALSE(StripIcon(strip.id, strip.count - 1).isNull());
    EXPECT_TRUE(StripIcon(strip.id, strip.count).isNull()) << std::hex << strip.id;
  }
  EXPECT_TRUE(StripIcon(0x6E, -1).isNull());
  EXPECT_TRUE(StripIcon(0x6E, 1 << 20).isNull());
}

TEST_F(Strips, UnknownStrip_HasNoPicturesAndNoSize) {
  EXPECT_TRUE(StripIcon(0x77, 1).isNull());
  EXPECT_TRUE(StripPictureSize(0x77).isEmpty());
}

TEST_F(Strips, PicturesComeInTheSizeAskedFor) {
  for (const double scale : {1.0, 1.5, 2.0, 3.0})
    EXPECT_EQ(Picture(0x6E, 1, scale).width(), static_cast<int>(22 * scale)) << scale;
}

// A picture drawn for its scale has more detail than the smallest one blown up.
TEST_F(Strips, ScaledPictures_AreDrawnForTheirScale) {
  for (const double scale : {1.5, 2.0, 3.0}) {
    const QImage drawn = Picture(0x6E, 0x0F, scale);
    const QImage blownUp = Picture(0x6E, 0x0F, 1).scaled(drawn.size());
    EXPECT_NE(drawn.convertToFormat(QImage::Format_ARGB32),
              blownUp.convertToFormat(QImage::Format_ARGB32));
  }
}

TEST_F(Strips, Disabled_IsGrayAndPaler) {
  const QImage picture = Picture(0x6E, 0x0F, 1, QIcon::Disabled);
  for (int y = 0; y < picture.height(); ++y)
    for (int x = 0; x < picture.width(); ++x) {
      const QColor color = picture.pixelColor(x, y);
      EXPECT_LE(color.alpha(), 128);
      if (color.alpha() < 32) continue;
      EXPECT_LT(color.hslSaturation(), 16);
    }
}

TEST_F(Strips, PicturesCanBeSeenOnLightAndDark) {
  for (const StripRow& strip : AllStrips())
    for (int i = strip.first; i < strip.count; ++i)
      for (const QColor& ground : {QColor("#efefef"), QColor("#2b2b2b")})
        EXPECT_GT(StandingOut(Picture(strip.id, i, 1), ground), 24)
            << std::hex << strip.id << " " << i << " " << ground.name().toStdString();
}

TEST_F(Strips, ApplicationIcon_HasItsOwnDrawingForSmallSizes) {
  const QIcon icon = ResourceIcon(100);
  EXPECT_TRUE(icon.availableSizes().contains(QSize(16, 16)));
  EXPECT_TRUE(icon.availableSizes().contains(QSize(128, 128)));
  EXPECT_TRUE(ResourceIcon(101).isNull());
}

// All pictures of all strips on a light and on a dark ground, for people to look at.
TEST_F(Strips, ContactSheets) {
  std::filesystem::create_directories(SHOTS_FOLDER);
  constexpr int cPerRow = 16;
  for (const StripRow& strip : AllStrips()) {
    const int cell = strip.size * 2 + 8;
    const int rows = (strip.count + cPerRow - 1) / cPerRow;
    QImage sheet(cPerRow * cell, 4 * rows * cell, QImage::Format_RGB32);
    QPainter painter(&sheet);
    for (int part = 0; part < 4; ++part) {
      painter.fillRect(0, part * rows * cell, sheet.width(), rows * cell,
                       part < 2 ? QColor("#efefef") : QColor("#2b2b2b"));
      for (int i = 0; i < strip.count; ++i)
        painter.drawPixmap(
            (i % cPerRow) * cell + 4, (part * rows + i / cPerRow) * cell + 4,
            QPixmap::fromImage(Picture(strip.id, i, 2, part % 2 ? QIcon::Disabled : QIcon::Normal)
                                   .scaledToWidth(strip.size * 2)));
    }
    painter.end();
    const QString file = QString("%1/strip-%2.png").arg(SHOTS_FOLDER).arg(strip.id, 0, 16);
    EXPECT_TRUE(sheet.save(file));
  }
}

}  // namespace
}  // namespace mavro
