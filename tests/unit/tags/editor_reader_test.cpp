#include "tags/EditorReader.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "TextInMemory.h"

namespace zendry {
namespace {

constexpr int cWindow = EditorReader::cWindow;
constexpr int cSlide = EditorReader::cSlide;

// Bytes of which no two nearby ones are mistaken for each other; none reads as the end.
std::string Bytes(int length) {
  std::string bytes(static_cast<size_t>(length), '\0');
  for (size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>((i * 7 + i / 251) % 251);
  return bytes;
}

// The bytes of a reader up to its end, one by one.
std::string ReadAll(EditorReader& reader) {
  std::string read;
  for (int c = reader.getc(); c != -1; c = reader.getc()) read += static_cast<char>(c);
  return read;
}

std::unique_ptr<EditorReader> Opened(test::TextInMemory& text) {
  auto reader = std::make_unique<EditorReader>(text);
  EXPECT_TRUE(reader->open("any name").Ok());
  return reader;
}

void SkipTo(EditorReader& reader, int offset) {
  for (int i = 0; i < offset; ++i) reader.getc();
}

TEST(EditorReader, Window_HasTheToldSizes) {
  EXPECT_EQ(EditorReader::cWindow, 0x20000);
  EXPECT_EQ(EditorReader::cSlide, 131008);
  EXPECT_EQ(EditorReader::cKept, 64);
}

TEST(EditorReader, TextAroundAWindow_IsReadOnceAndEnds) {
  for (const int length : {0, 1, 2, cSlide, cWindow - 65, cWindow - 64, cWindow - 1, cWindow,
                           cWindow + 1, cWindow + 64, cSlide + cWindow - 1, cSlide + cWindow,
                           cSlide + cWindow + 1, 3 * cSlide + 64, 3 * cSlide + 65, 400000}) {
    test::TextInMemory text(Bytes(length));
    const auto reader = Opened(text);
    EXPECT_EQ(ReadAll(*reader), text.text) << length;
    EXPECT_EQ(reader->getc(), -1) << length;
  }
}

TEST(EditorReader, TextOf131072Bytes_GivesEveryByteOnceAndEnds) {
  test::TextInMemory text(Bytes(131072));
  const auto reader = Opened(text);
  EXPECT_EQ(ReadAll(*reader), text.text);
  EXPECT_EQ(reader->getc(), -1);
  EXPECT_EQ(text.copies, 1);
}

TEST(EditorReader, TextOf131073Bytes_GivesEveryByteOnceAndEnds) {
  test::TextInMemory text(Bytes(131073));
  const auto reader = Opened(text);
  EXPECT_EQ(ReadAll(*reader), text.text);
  EXPECT_EQ(reader->getc(), -1);
  EXPECT_EQ(text.copies, 2);
}

TEST(EditorReader, Text_IsNeverCopiedWhole) {
  test::TextInMemory text(Bytes(1000000));
  const auto reader = Opened(text);
  EXPECT_EQ(ReadAll(*reader), text.text);
  EXPECT_EQ(text.longestCopy, cWindow);
}

TEST(EditorReader, PushBackAtEveryWindowBorder_GivesTheSameByteAgain) {
  const int borders[] = {1,
                         64,
                         65,
                         cSlide - 1,
                         cSlide,
                         cWindow - 1,
                         cWindow,
                         cWindow + 1,
                         cSlide + cWindow,
                         cSlide + cWindow + 1,
                         2 * cSlide + cWindow + 1};
  test::TextInMemory text(Bytes(500000));
  for (const int border : borders) {
    const auto reader = Opened(text);
    SkipTo(*reader, border - 1);
    const int c = reader->getc();
    reader->ungetc('x');
    EXPECT_EQ(reader->getc(), c) << border;
    EXPECT_EQ(static_cast<char>(reader->getc()), text.text[static_cast<size_t>(border)]) << border;
  }
}

TEST(EditorReader, PushBackAcrossASlide_ReachesTheKeptBytes) {
  test::TextInMemory text(Bytes(300000));
  const auto reader = Opened(text);
  SkipTo(*reader, cWindow + 1);  // the last one made the window slide
  for (int i = 0; i < 65; ++i) reader->ungetc(0);
  EXPECT_EQ(ReadAll(*reader), text.text.substr(static_cast<size_t>(cWindow + 1 - 65)));
}

TEST(EditorReader, PushBackBeforeTheFirstByte_DoesNothing) {
  test::TextInMemory text("ab");
  const auto reader = Opened(text);
  reader->ungetc('x');
  EXPECT_EQ(reader->getc(), 'a');
  reader->ungetc('a');
  reader->ungetc('a');
  EXPECT_EQ(ReadAll(*reader), "ab");
}

TEST(EditorReader, PushBackAtTheEnd_GivesTheLastByteAgain) {
  test::TextInMemory text("ab");
  const auto reader = Opened(text);
  ReadAll(*reader);
  reader->ungetc('b');
  EXPECT_EQ(reader->getc(), 'b');
  EXPECT_EQ(reader->getc(), -1);
}

TEST(EditorReaderDeathTest, PushBackBeforeALaterWindow_BreaksThePrecondition) {
  test::TextInMemory text(Bytes(300000));
  const auto reader = Opened(text);
  SkipTo(*reader, cWindow + 1);
  for (int i = 0; i < 65; ++i) reader->ungetc(0);
  EXPECT_DEATH(reader->ungetc(0), "assertion failed");
}

TEST(EditorReader, BytesFrom0x80Up_AreNegative) {
  test::TextInMemory text("\x7f\x80\xfe");
  const auto reader = Opened(text);
  EXPECT_EQ(reader->getc(), 127);
  EXPECT_EQ(reader->getc(), -128);
  EXPECT_EQ(reader->getc(), -2);
}

TEST(EditorReader, Byte0xFF_ReadsAsTheEnd) {
  test::TextInMemory text(
      "a\xff"
      "b");
  const auto reader = Opened(text);
  EXPECT_EQ(reader->getc(), 'a');
  EXPECT_EQ(reader->getc(), -1);
  EXPECT_EQ(reader->getc(), 'b');
}

TEST(EditorReader, NulBytes_AreBytes) {
  test::TextInMemory text(std::string("a\0b", 3));
  const auto reader = Opened(text);
  EXPECT_EQ(ReadAll(*reader), std::string("a\0b", 3));
}

TEST(EditorReader, OpenAgain_BeginsAgain) {
  test::TextInMemory text(Bytes(200000));
  const auto reader = Opened(text);
  ReadAll(*reader);
  text.text = "new";
  EXPECT_TRUE(reader->open(nullptr).Ok());
  EXPECT_EQ(ReadAll(*reader), "new");
}

TEST(EditorReader, Close_MarksItClosed) {
  test::TextInMemory text("a");
  EditorReader reader(text);
  EXPECT_FALSE(reader.IsOpen());
  EXPECT_TRUE(reader.open("").Ok());
  EXPECT_TRUE(reader.IsOpen());
  reader.close();
  EXPECT_FALSE(reader.IsOpen());
  reader.close();
}

// Group: whole pieces, of which the bytes are those of as many single reads.

std::string ReadPieces(EditorReader& reader, size_t size) {
  std::string read, piece(size, '\0');
  while (const size_t count = reader.read(piece.data(), size)) read.append(piece, 0, count);
  return read;
}

TEST(EditorReader, Pieces_GiveTheSameBytes) {
  for (const int length : {0, 1, cWindow - 1, cWindow, cWindow + 1, cSlide + cWindow + 1, 500000})
    for (const size_t size : {1000ul, 4096ul, 131072ul, 1000000ul}) {
      test::TextInMemory text(Bytes(length));
      const auto reader = Opened(text);
      EXPECT_EQ(ReadPieces(*reader, size), text.text) << length << " " << size;
      EXPECT_EQ(reader->getc(), -1);
    }
}

TEST(EditorReader, PieceBeforeByte0xFF_StopsThere) {
  test::TextInMemory text(
      "ab\xff"
      "cd");
  const auto reader = Opened(text);
  EXPECT_EQ(ReadPieces(*reader, 100), "ab");
  EXPECT_EQ(reader->getc(), -1);
}

TEST(EditorReader, PushBackAfterAPiece_GivesItsLastByte) {
  test::TextInMemory text(Bytes(cWindow + 10));
  const auto reader = Opened(text);
  SkipTo(*reader, cWindow);
  char piece[4];
  ASSERT_EQ(reader->read(piece, sizeof piece), sizeof piece);
  reader->ungetc(0);
  EXPECT_EQ(static_cast<char>(reader->getc()), piece[3]);
}

}  // namespace
}  // namespace zendry
