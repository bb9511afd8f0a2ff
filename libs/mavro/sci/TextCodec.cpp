#include "TextCodec.h"

#include <array>
#include <cstdint>
#include <cstring>

namespace mavro {

namespace {

constexpr std::string_view cMarks[] = {"", "\xFE\xFF", "\xFF\xFE", "\xEF\xBB\xBF", "", ""};
constexpr int cCookieLines = 2;

bool IsCodingChar(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
         c == '_' || c == '.';
}

// Removes the first line with its line end and returns the line alone.
std::string_view TakeLine(std::string_view& rest) {
  const size_t end = std::min(rest.find_first_of("\r\n"), rest.size());
  const std::string_view line = rest.substr(0, end);
  rest.remove_prefix(end);
  if (rest.starts_with("\r\n"))
    rest.remove_prefix(2);
  else if (!rest.empty())
    rest.remove_prefix(1);
  return line;
}

bool IsHigh(unsigned unit) {
  return unit >= 0xD800 && unit < 0xDC00;
}
bool IsLow(unsigned unit) {
  return unit >= 0xDC00 && unit < 0xE000;
}

void AppendUtf8(std::string& out, unsigned point) {
  const auto add = [&out](unsigned byte) { out += static_cast<char>(byte); };
  if (point < 0x80) return add(point);
  if (point < 0x800) {
    add(0xC0 | point >> 6);
  } else if (point < 0x10000) {
    add(0xE0 | point >> 12);
    add(0x80 | (point >> 6 & 0x3F));
  } else {
    add(0xF0 | point >> 18);
    add(0x80 | (point >> 12 & 0x3F));
    add(0x80 | (point >> 6 & 0x3F));
  }
  add(0x80 | (point & 0x3F));
}

// One character of UTF-8: its length is 0 if the bytes are not UTF-8. Surrogates are accepted.
struct Utf8Char {
  size_t length = 0;
  unsigned point = 0;
};

struct Utf8Lead {
  unsigned mask, value, least;
};
constexpr Utf8Lead cLeads[] = {
    {0xE0, 0xC0, 0x80}, {0xF0, 0xE0, 0x800}, {0xF8, 0xF0, 0x10000}};  // of two to four bytes

Utf8Char ReadUtf8(std::string_view text) {
  const auto byte = [text](size_t i) { return static_cast<unsigned char>(text[i]); };
  if (byte(0) < 0x80) return {1, byte(0)};
  for (size_t more = 1; more <= 3; ++more) {
    const Utf8Lead& lead = cLeads[more - 1];
    if ((byte(0) & lead.mask) != lead.value) continue;
    if (text.size() <= more) return {};
    unsigned point = byte(0) & ~lead.mask;
    for (size_t i = 1; i <= more; ++i) {
      if ((byte(i) & 0xC0) != 0x80) return {};
      point = point << 6 | (byte(i) & 0x3F);
    }
    return point < lead.least || point > 0x10FFFF ? Utf8Char() : Utf8Char{more + 1, point};
  }
  return {};
}

void AppendUnit(std::string& out, unsigned unit, TextEncoding encoding) {
  const char bytes[] = {static_cast<char>(unit >> 8), static_cast<char>(unit)};
  const int first = encoding == cUtf16Big ? 0 : 1;
  out += bytes[first];
  out += bytes[1 - first];
}

bool AppendUtf16(std::string& out, std::string_view text, TextEncoding encoding) {
  while (!text.empty()) {
    const Utf8Char one = ReadUtf8(text);
    if (one.length == 0) return false;
    text.remove_prefix(one.length);
    if (one.point < 0x10000) {
      AppendUnit(out, one.point, encoding);
    } else {
      AppendUnit(out, 0xD800 + ((one.point - 0x10000) >> 10), encoding);
      AppendUnit(out, 0xDC00 + ((one.point - 0x10000) & 0x3FF), encoding);
    }
  }
  return true;
}

bool AppendByteLetters(std::string& out, std::string_view text) {
  while (!text.empty()) {
    const Utf8Char one = ReadUtf8(text);
    if (one.length == 0 || one.point > 0xFF) return false;
    text.remove_prefix(one.length);
    out += static_cast<char>(one.point);
  }
  return true;
}

bool IsUtf16(TextEncoding encoding) {
  return encoding == cUtf16Big || encoding == cUtf16Little;
}

// The number of ASCII bytes that the text begins with; looks at several words at a time.
size_t AsciiLength(std::string_view text) {
  constexpr uint64_t cHighBits = 0x8080808080808080;
  std::array<uint64_t, 8> words;
  size_t i = 0;
  for (; i + sizeof words <= text.size(); i += sizeof words) {
    std::memcpy(words.data(), text.data() + i, sizeof words);
    uint64_t all = 0;
    for (const uint64_t word : words) all |= word;
    if (all & cHighBits) break;
  }
  for (uint64_t word; i + sizeof word <= text.size(); i += sizeof word) {
    std::memcpy(&word, text.data() + i, sizeof word);
    if (word & cHighBits) break;
  }
  while (i < text.size() && static_cast<unsigned char>(text[i]) < 0x80) ++i;
  return i;
}

}  // namespace

std::string CodingCookie(std::string_view line) {
  constexpr std::string_view cWord = "coding";
  const size_t at = line.find(cWord);
  if (at == std::string_view::npos) return {};
  line.remove_prefix(at + cWord.size());
  if (!line.starts_with(':') && !line.starts_with('=')) return {};
  line.remove_prefix(1);
  if (line.starts_with('"') || line.starts_with('\'')) line.remove_prefix(1);
  while (line.starts_with(' ') || line.starts_with('\t')) line.remove_prefix(1);
  std::string name;
  for (; !line.empty() && IsCodingChar(line[0]); line.remove_prefix(1)) {
    const bool capital = line[0] >= 'A' && line[0] <= 'Z';
    name += capital ? static_cast<char>(line[0] - 'A' + 'a') : line[0];
  }
  return name;
}

std::string_view ByteOrderMark(TextEncoding encoding) {
  return cMarks[encoding];
}

TextEncoding DetectEncoding(std::string_view head) {
  for (const TextEncoding encoding : {cUtf16Big, cUtf16Little, cUtf8Mark})
    if (head.starts_with(ByteOrderMark(encoding))) return encoding;
  for (int line = 0; line < cCookieLines; ++line)
    if (CodingCookie(TakeLine(head)) == "utf-8") return cUtf8Cookie;
  return cPlainText;
}

// The mark is in the first chunk, which DetectEncoding has seen.
std::string_view TextDecoder::Decode(std::string_view chunk) {
  if (atStart) chunk.remove_prefix(ByteOrderMark(encoding).size());
  atStart = false;
  if (!IsUtf16(encoding)) return chunk;
  decoded.clear();
  const size_t highByte = encoding == cUtf16Big ? 0 : 1;
  char pair[2];
  for (const char c : chunk) {
    if (oddByte.empty()) {
      oddByte = c;
      continue;
    }
    pair[0] = oddByte[0];
    pair[1] = c;
    oddByte.clear();
    TakeUnit(static_cast<unsigned char>(pair[highByte]) << 8 |
             static_cast<unsigned char>(pair[1 - highByte]));
  }
  return decoded;
}

void TextDecoder::TakeUnit(unsigned unit) {
  if (high != 0 && IsLow(unit)) {
    AppendUtf8(decoded, 0x10000 + ((high - 0xD800) << 10) + (unit - 0xDC00));
    high = 0;
    return;
  }
  if (high != 0) AppendUtf8(decoded, high);
  high = IsHigh(unit) ? unit : 0;
  if (high == 0) AppendUtf8(decoded, unit);
}

std::string_view TextDecoder::Finish() {
  decoded.clear();
  if (high != 0) AppendUtf8(decoded, high);
  high = 0;
  return decoded;
}

std::optional<std::string> EncodeText(std::string_view text, TextEncoding encoding,
                                      std::string_view oddByte) {
  std::string bytes(ByteOrderMark(encoding));
  if (IsUtf16(encoding)) {
    bytes.reserve(text.size() * 2 + 4);
    if (!AppendUtf16(bytes, text, encoding)) return std::nullopt;
  } else if (encoding == cByteLetters) {
    bytes.reserve(text.size());
    if (!AppendByteLetters(bytes, text)) return std::nullopt;
  } else {
    bytes += text;
  }
  bytes += oddByte;
  return bytes;
}

std::string TextOfByteLetters(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size() + bytes.size() / 8);
  for (const char c : bytes) AppendUtf8(text, static_cast<unsigned char>(c));
  return text;
}

TextBytes ClassifyBytes(std::string_view text) {
  text.remove_prefix(AsciiLength(text));
  if (text.empty()) return TextBytes::cAscii;
  while (!text.empty()) {
    const Utf8Char one = ReadUtf8(text);
    if (one.length == 0 || IsHigh(one.point) || IsLow(one.point)) return TextBytes::cOther;
    text.remove_prefix(one.length);
    text.remove_prefix(AsciiLength(text));
  }
  return TextBytes::cUtf8;
}

LineEnding FirstLineEnding(std::string_view text) {
  const size_t at = text.find_first_of("\r\n");
  if (at == std::string_view::npos || text[at] == '\n') return LineEnding::cLf;
  return text.substr(at).starts_with("\r\n") ? LineEnding::cCrLf : LineEnding::cCr;
}

bool HasOtherLineEnds(std::string_view text, LineEnding ending) {
  for (size_t at = text.find_first_of("\r\n"); at != std::string_view::npos;
       at = text.find_first_of("\r\n", at)) {
    const std::string_view rest = text.substr(at);
    if (FirstLineEnding(rest) != ending) return true;
    at += ending == LineEnding::cCrLf ? 2 : 1;
  }
  return false;
}

std::vector<ByteRange> TrailingBlanks(std::string_view text, LineBreaks breaks) {
  std::vector<ByteRange> ranges;
  size_t start = 0;  // of the blanks that end at i
  for (size_t i = 0; i <= text.size(); ++i) {
    const bool atEnd = i == text.size() || text[i] == '\n' || text[i] == '\r';
    const bool breaksLine = breaks == LineBreaks::cKept && start > 0 && start + 2 <= i &&
                            text.substr(start, 2) == "  " && text[start - 1] != '\n' &&
                            text[start - 1] != '\r';
    const size_t kept = breaksLine ? start + 2 : start;
    if (atEnd && kept < i) ranges.push_back({kept, i});
    if (atEnd || (text[i] != ' ' && text[i] != '\t')) start = i + 1;
  }
  return ranges;
}

}  // namespace mavro
