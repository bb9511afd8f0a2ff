#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace mavro {

// How a file's bytes hold its text.
enum TextEncoding {
  cPlainText = 0,  // as they are
  cUtf16Big = 1,
  cUtf16Little = 2,
  cUtf8Mark = 3,    // UTF-8 after a byte order mark
  cUtf8Cookie = 4,  // "coding: utf-8" is in one of the first two lines
  cByteLetters = 5  // each byte is the letter with its number; never detected
};

// The encoding by the head of a file: by a byte order mark, else by a cookie.
TextEncoding DetectEncoding(std::string_view head);

// The name after "coding:" or "coding=" in a line, in lower case; empty if there is none.
std::string CodingCookie(std::string_view line);

// The bytes of an encoding's byte order mark; empty for none.
std::string_view ByteOrderMark(TextEncoding encoding);

// Turns the bytes of a file into text, chunk by chunk: removes the mark and converts UTF-16 to
// UTF-8. A lone surrogate becomes the three bytes that its number gives, so that encoding restores
// it.
class TextDecoder {
 public:
  explicit TextDecoder(TextEncoding itsEncoding) : encoding(itsEncoding) {}

  // The text of the next bytes. The result is valid until the next call, and only as long as
  // `chunk` is.
  std::string_view Decode(std::string_view chunk);
  // The rest at the end: the text of a high surrogate that nothing follows.
  std::string_view Finish();
  // The last byte of UTF-16 with an odd number of bytes: it belongs after the text.
  std::string oddByte;

 private:
  void TakeUnit(unsigned unit);

  const TextEncoding encoding;
  bool atStart = true;
  unsigned high = 0;  // a high surrogate that waits for its low one
  std::string decoded;
};

// The bytes of a file for a text: the mark and the text, or nothing if the text holds bytes that
// the encoding can't express. `oddByte` is what the decoder kept.
std::optional<std::string> EncodeText(std::string_view text, TextEncoding encoding,
                                      std::string_view oddByte = {});

// The text of a file in which each byte is the letter with its number (cByteLetters).
std::string TextOfByteLetters(std::string_view bytes);

// The kind of bytes in a text.
enum class TextBytes { cAscii, cUtf8, cOther };
TextBytes ClassifyBytes(std::string_view text);

// A text that was loaded from a file.
struct LoadedText {
  size_t digest = 0;          // of the file's bytes
  bool isAscii = false;       // the text has letters of ASCII only
  unsigned long changes = 0;  // those that the text had then
};

enum class LineEnding { cCrLf = 0, cCr = 1, cLf = 2 };
// The end of the first line; LF if there is only one line.
LineEnding FirstLineEnding(std::string_view text);
// True if a line ends otherwise.
bool HasOtherLineEnds(std::string_view text, LineEnding ending);

// Blanks and tabs before line ends and at the end of the text, in order.
struct ByteRange {
  size_t start = 0;
  size_t end = 0;
  friend bool operator==(const ByteRange&, const ByteRange&) = default;
};
// With cKept, two blanks after a word stay: in some texts they break a line.
enum class LineBreaks { cNone, cKept };
std::vector<ByteRange> TrailingBlanks(std::string_view text, LineBreaks breaks = LineBreaks::cNone);

}  // namespace mavro
