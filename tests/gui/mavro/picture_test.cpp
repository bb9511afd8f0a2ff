#include "Picture.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QImage>

#include "DarkPalette.h"
#include "EventLog.h"
#include "Form.h"
#include "GuiDriver.h"
#include "Image.h"
#include "TempFolder.h"

namespace mavro {
namespace {

// The bytes of a picture file of one colour.
std::string Encoded(const char* format, int width = 6, int height = 4) {
  QImage image(width, height, QImage::Format_RGB32);
  image.fill(QColor(200, 100, 50));
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  image.save(&buffer, format);
  return bytes.toStdString();
}

std::string LittleEndian(uint32_t value) {
  std::string bytes;
  for (int shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(value >> shift & 0xFF);
  return bytes;
}

std::string BigEndian(uint32_t value) {
  const std::string bytes = LittleEndian(value);
  return {bytes.rbegin(), bytes.rend()};
}

// Headers that claim a size, with nothing or nonsense after them.
std::string BmpOf(uint32_t width, uint32_t height) {
  return "BM" + LittleEndian(1000) + LittleEndian(0) + LittleEndian(54) + LittleEndian(40) +
         LittleEndian(width) + LittleEndian(height) + std::string("\1\0\x18\0", 4) +
         std::string(24, '\0') + std::string(900, 'x');
}

std::string PngOf(uint32_t width, uint32_t height) {
  std::string png = Encoded("PNG");
  png.replace(16, 8, BigEndian(width) + BigEndian(height));
  // The checksum of the header chunk, over its type and data.
  uint32_t sum = 0xFFFFFFFF;
  for (size_t i = 12; i < 29; ++i) {
    sum ^= static_cast<unsigned char>(png[i]);
    for (int bit = 0; bit < 8; ++bit) sum = sum >> 1 ^ (sum & 1 ? 0xEDB88320 : 0);
  }
  return png.replace(29, 4, BigEndian(~sum));
}

std::string JpegOf(int width, int height) {
  std::string jpeg = Encoded("JPG", 16, 16);
  const size_t frame = jpeg.find("\xFF\xC0");
  const auto word = [](int value) {
    return std::string{static_cast<char>(value >> 8), static_cast<char>(value & 0xFF)};
  };
  return jpeg.replace(frame + 5, 4, word(height) + word(width));
}

std::string XpmOf(int width, int height) {
  return "/* XPM */\nstatic char* x[] = {\n\"" + std::to_string(width) + " " +
         std::to_string(height) + " 2 1\",\n\"a c #FF0000\",\n\"b c None\",\n\"aabb\"};\n";
}

constexpr int cHuge = 50000;

TEST(Picture, Saved_IsTheSameAfterwards) {
  const test::TempFolder folder;
  const std::string path = folder.Path() + "/saved.png";
  const Bitmap bitmap(3, 2);
  bitmap.Row(0)[1] = 0xFF102030;
  bitmap.Row(1)[2] = 0x80404040;
  Picture picture, back;
  picture.Assign(bitmap);
  EXPECT_EQ(picture.Save(path).Words(), "");
  EXPECT_EQ(back.Load(path), PictureResult::cLoaded);
  ASSERT_EQ(back.Width(), 3);
  for (int y = 0; y < 2; ++y)
    for (int x = 0; x < 3; ++x) EXPECT_EQ(back.Pixels().Row(y)[x], bitmap.Row(y)[x]);
  EXPECT_NE(Picture().Save(path).Words(), "");
  EXPECT_EQ(back.Load(path), PictureResult::cLoaded) << "nothing replaces it with nothing";
  EXPECT_NE(picture.Save(folder.Path() + "/none/saved.png").Words(), "");
}

TEST(Picture, EveryKindOfFile_IsDecoded) {
  for (const char* format : {"BMP", "JPG", "PNG", "XPM"}) {
    Picture picture;
    EXPECT_EQ(picture.LoadData(Encoded(format)), PictureResult::cLoaded) << format;
    EXPECT_EQ(picture.Width(), 6);
    EXPECT_EQ(picture.Height(), 4);
    EXPECT_NEAR(static_cast<int>(picture.Pixels().Row(0)[0] >> 16 & 0xFF), 200, 4) << format;
  }
}

TEST(Picture, SizesOfFiftyThousand_AreTooLarge) {
  for (const std::string& bytes :
       {BmpOf(cHuge, cHuge), PngOf(cHuge, cHuge), JpegOf(cHuge, cHuge), XpmOf(cHuge, cHuge)}) {
    Picture picture;
    EXPECT_EQ(picture.LoadData(bytes), PictureResult::cTooLarge) << bytes.substr(0, 4);
    EXPECT_TRUE(picture.IsEmpty());
  }
}

TEST(Picture, SizesBeyondAnyNumber_AreRefused) {
  for (const std::string& bytes :
       {BmpOf(0x7FFFFFFF, 0x7FFFFFFF), BmpOf(0x80000000, 5), PngOf(0x7FFFFFFF, 0x7FFFFFFF),
        PngOf(0xFFFFFFFF, 1), XpmOf(-5, 5), XpmOf(2147483647, 2147483647), BmpOf(0, 0)}) {
    Picture picture;
    EXPECT_NE(picture.LoadData(bytes), PictureResult::cLoaded);
    EXPECT_TRUE(picture.IsEmpty());
  }
}

TEST(Picture, EmptyData_IsNotAPicture) {
  Picture picture;
  EXPECT_EQ(picture.LoadData(""), PictureResult::cNotAPicture);
}

TEST(Picture, OtherData_IsNotAPicture) {
  for (const std::string& bytes :
       {std::string("int main() {}\n"), std::string("<svg xmlns='http://www.w3.org/2000/svg'/>"),
        std::string("BM"), std::string("\x89PNG\r\n\x1a\n"), std::string("\xFF\xD8\xFF"),
        std::string(5000, '\0'), std::string("/* XPM */")}) {
    Picture picture;
    EXPECT_EQ(picture.LoadData(bytes), PictureResult::cNotAPicture) << bytes.substr(0, 10);
  }
}

// A part of a cut file may be shown; no length may crash.
TEST(Picture, CutFiles_NeverCrash) {
  for (const char* format : {"BMP", "JPG", "PNG", "XPM"}) {
    const std::string whole = Encoded(format, 40, 30);
    for (size_t length = 0; length < whole.size(); length += whole.size() / 60 + 1) {
      Picture picture;
      const PictureResult result = picture.LoadData(whole.substr(0, length));
      EXPECT_EQ(picture.IsEmpty(), result != PictureResult::cLoaded) << format << length;
    }
  }
}

TEST(Picture, BrokenBytes_NeverCrash) {
  for (const char* format : {"BMP", "JPG", "PNG", "XPM"}) {
    const std::string whole = Encoded(format, 40, 30);
    for (size_t at = 0; at < whole.size(); at += whole.size() / 80 + 1) {
      std::string broken = whole;
      broken[at] = static_cast<char>(~broken[at]);
      Picture picture;
      const bool isLoaded = picture.LoadData(broken) == PictureResult::cLoaded;
      EXPECT_EQ(picture.IsEmpty(), !isLoaded) << format << " " << at;
    }
  }
}

TEST(Picture, MissingFileOrFolder_IsUnreadable) {
  test::TempFolder folder;
  Picture picture;
  picture.LoadData(Encoded("PNG"));
  EXPECT_EQ(picture.Load(folder.Path("none.png")), PictureResult::cUnreadable);
  EXPECT_TRUE(picture.IsEmpty());
  EXPECT_EQ(picture.Load(folder.Path("")), PictureResult::cUnreadable);
  EXPECT_EQ(picture.Load("/dev/zero"), PictureResult::cUnreadable);
}

TEST(Picture, File_IsLoaded) {
  test::TempFolder folder;
  Picture picture;
  EXPECT_EQ(picture.Load(folder.Write("a.bmp", Encoded("BMP"))), PictureResult::cLoaded);
  EXPECT_EQ(picture.Width(), 6);
}

TEST(Picture, Resources_AreFoundByTypeAndId) {
  Picture picture;
  EXPECT_EQ(picture.LoadResource("PNG", 1), PictureResult::cLoaded);
  EXPECT_EQ(picture.Height(), 24);
  EXPECT_EQ(picture.LoadResource("PNG", 0xABCDEF), PictureResult::cUnreadable);
  EXPECT_EQ(picture.LoadResource("PNG", "nothing"), PictureResult::cUnreadable);
  EXPECT_TRUE(picture.IsEmpty());
}

TEST(Picture, Changes_AreReported) {
  test::EventLog log;
  Picture picture;
  log.Listen("change", picture.onChange);
  picture.LoadData(Encoded("PNG"));
  EXPECT_EQ(log.Take(), "change:0 ");
  picture.Assign(picture.Pixels());
  EXPECT_EQ(log.Take(), "");
  picture.Clear();
  picture.Clear();
  EXPECT_EQ(log.Take(), "change:0 ");
}

// The control.

struct ImageForm : Form {
  Image image;
  ImageForm() {
    SetBounds(0, 0, 220, 220);
    image.SetBounds(10, 10, 200, 200);
    Add(&image);
  }
  // The size of what is painted in the picture's colour, in logical pixels.
  std::string Painted() const {
    const QImage shown = test::WidgetOf(image)->grab().toImage();
    int right = 0, bottom = 0;
    for (int y = 0; y < shown.height(); ++y)
      for (int x = 0; x < shown.width(); ++x)
        if (shown.pixelColor(x, y) == QColor(200, 100, 50)) {
          right = std::max(right, x + 1);
          bottom = std::max(bottom, y + 1);
        }
    const double ratio = shown.devicePixelRatio();
    return std::to_string(int(right / ratio)) + "x" + std::to_string(int(bottom / ratio));
  }
};

struct FlagRow {
  bool stretch, autosize, proportional;
  const char* painted;
};

TEST(Image, Flags_DecideTheSize) {
  const FlagRow rows[] = {
      {false, false, false, "60x40"}, {true, false, false, "200x200"},
      {true, false, true, "200x133"}, {true, true, false, "60x40"},
      {true, true, true, "60x40"},    {false, true, false, "60x40"},
      {false, false, true, "60x40"},
  };
  ImageForm form;
  form.image.picture.LoadData(Encoded("PNG", 60, 40));
  test::RunForm(form, false, [&] {
    for (const FlagRow& row : rows) {
      form.image.stretch = row.stretch;
      form.image.autosize = row.autosize;
      form.image.proportional = row.proportional;
      EXPECT_EQ(form.Painted(), row.painted);
    }
  });
}

TEST(Image, TallPicture_TakesTheHeight) {
  ImageForm form;
  form.image.stretch = true;
  form.image.proportional = true;
  form.image.picture.LoadData(Encoded("PNG", 10, 40));
  test::RunForm(form, false, [&] { EXPECT_EQ(form.Painted(), "50x200"); });
}

TEST(Image, WithoutAPicture_OnlyTheGroundIsDrawn) {
  ImageForm form;
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.Painted(), "0x0");
    form.image.picture.LoadData(Encoded("PNG", 60, 40));
    EXPECT_EQ(form.Painted(), "60x40");
    form.image.picture.LoadData("broken");
    EXPECT_EQ(form.Painted(), "0x0");
  });
}

TEST(Image, PictureThatChanges_IsShown) {
  ImageForm form;
  form.image.picture.LoadData(Encoded("PNG", 60, 40));
  test::RunForm(form, false, [&] {
    form.image.picture.LoadData(Encoded("PNG", 30, 20));
    EXPECT_EQ(form.Painted(), "30x20");
    form.image.SetSize(10, 10);
    EXPECT_EQ(form.Painted(), "10x10");
  });
}

}  // namespace
}  // namespace mavro
