#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace mavro {

// What a file's bytes are beside its text.
enum TextEncoding {
  cPlainText = 0,  // as they are
  cUtf16Big = 1,
  cUtf16Little = 2,
  cUtf8Mark = 3,    // UTF-8 behind a byte order mark
  cUtf8Cookie = 4,  // "coding: utf-8" stands in one of the first two lines
  cByteLetters = 5  // each byte is the letter with its number; never detected
};

// What the head of a file says: its encoding by a byte order mark, else by a cookie.
TextEncoding DetectEncoding(std::string_view head);

// The name behind "coding:" or "coding=" in a line, in small letters; empty without one.
std::string CodingCookie(std::string_view line);

// The bytes of an encoding's byte order mark; empty for none.
std::string_view ByteOrderMark(TextEncoding encoding);

// Turns the bytes of a file into text, chunk by chunk: takes the mark off and makes UTF-8 of
// UTF-16. A surrogate that stands alone becomes the three bytes that its number gives, so that
// encoding gives it back.
class TextDecoder {
 public:
  explicit TextDecoder(TextEncoding itsEncoding) : encoding(itsEncoding) {}

  // The text of the next bytes. The answer lives until the next call, and not longer than `chunk`.
  std::string_view Decode(std::string_view chunk);
  // What is left at the end: text of a high surrogate that nothing followed.
  std::string_view Finish();
  // The last byte of UTF-16 with an odd number of them: it belongs behind the text.
  std::string oddByte;

 private:
  void TakeUnit(unsigned unit);

  const TextEncoding encoding;
  bool atStart = true;
  unsigned high = 0;  // a high surrogate that waits for its low one
  std::string decoded;
};

// The bytes of a file for a text: the mark and the text, or nothing when the text holds bytes that
// the encoding has no place for. `oddByte` is what the decoder kept.
std::optional<std::string> EncodeText(std::string_view text, TextEncoding encoding,
                                      std::string_view oddByte = {});

// The text of a file in which each byte is the letter with its number (cByteLetters).
std::string TextOfByteLetters(std::string_view bytes);

// What kind of bytes a text has.
enum class TextBytes { cAscii, cUtf8, cOther };
TextBytes ClassifyBytes(std::string_view text);

enum class LineEnding { cCrLf = 0, cCr = 1, cLf = 2 };
// How the first line ends; LF when there is one only.
LineEnding FirstLineEnding(std::string_view text);

// Blanks and tabs before line ends and at the end of the text, in order.
struct ByteRange {
  size_t start = 0;
  size_t end = 0;
  friend bool operator==(const ByteRange&, const ByteRange&) = default;
};
std::vector<ByteRange> TrailingBlanks(std::string_view text);

}  // namespace mavro
