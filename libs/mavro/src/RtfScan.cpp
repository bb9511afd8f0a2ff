#include "RtfScan.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace mavro {

namespace {

constexpr size_t cMaxWord = 32;
constexpr int cMaxNumber = 1000000;
constexpr char32_t cLost = 0xFFFD;

// Code page 1252 from 0x80 to 0x9F; 0 where it has no character.
constexpr char16_t cWindows[] = {0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                 0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
                                 0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

bool IsLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

int HexValue(char c) {
  if (IsDigit(c)) return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

std::string Utf8(char32_t code) {
  std::string text;
  if (code < 0x80) {
    text += static_cast<char>(code);
  } else if (code < 0x800) {
    text += static_cast<char>(0xC0 | code >> 6);
    text += static_cast<char>(0x80 | (code & 0x3F));
  } else if (code < 0x10000) {
    text += static_cast<char>(0xE0 | code >> 12);
    text += static_cast<char>(0x80 | (code >> 6 & 0x3F));
    text += static_cast<char>(0x80 | (code & 0x3F));
  } else {
    text += static_cast<char>(0xF0 | code >> 18);
    text += static_cast<char>(0x80 | (code >> 12 & 0x3F));
    text += static_cast<char>(0x80 | (code >> 6 & 0x3F));
    text += static_cast<char>(0x80 | (code & 0x3F));
  }
  return text;
}

bool IsHigh(int unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}
bool IsLow(int unit) {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}

}  // namespace

// Line ends between tokens have no meaning: paragraphs are marked by words.
RtfToken RtfScan::Next() {
  while (at < bytes.size() && (bytes[at] == '\r' || bytes[at] == '\n')) ++at;
  if (at >= bytes.size()) return {};
  const char c = bytes[at];
  if (c == '{' || c == '}') {
    ++at;
    return {c == '{' ? RtfToken::cOpen : RtfToken::cClose, {}, 0, false};
  }
  if (c == '\\') return Control();
  const size_t end = std::min(bytes.find_first_of("{}\\\r\n", at), bytes.size());
  const std::string_view text = bytes.substr(at, end - at);
  at = end;
  return {RtfToken::cText, text, 0, false};
}

RtfToken RtfScan::Control() {
  ++at;
  const char c = Peek();
  if (at >= bytes.size()) return {};
  if (IsLetter(c)) return Word();
  if (c == '\'') return Byte();
  const std::string_view sign = bytes.substr(at++, 1);
  if (c == '{' || c == '}' || c == '\\') return {RtfToken::cText, sign, 0, false};
  if (c == '\r' || c == '\n') return {RtfToken::cWord, "par", 0, false};
  return {RtfToken::cWord, sign, 0, false};
}

RtfToken RtfScan::Word() {
  const size_t start = at;
  while (IsLetter(Peek())) ++at;
  RtfToken token{RtfToken::cWord, bytes.substr(start, std::min(at - start, cMaxWord)), 0, false};
  const bool negative = Peek() == '-' && IsDigit(Peek(1));
  if (negative) ++at;
  for (; IsDigit(Peek()); ++at) {
    token.hasNumber = true;
    token.number = std::min(token.number * 10 + (Peek() - '0'), cMaxNumber);
  }
  if (negative) token.number = -token.number;
  if (Peek() == ' ') ++at;
  if (token.text != "bin") return token;
  at += std::min(static_cast<size_t>(std::max(token.number, 0)), bytes.size() - at);
  token.kind = RtfToken::cBinary;
  return token;
}

// "\'hh"; without two digits the quote has no meaning.
RtfToken RtfScan::Byte() {
  ++at;
  const int high = HexValue(Peek());
  const int low = HexValue(Peek(1));
  if (high < 0 || low < 0) return {RtfToken::cText, {}, 0, false};
  at += 2;
  return {RtfToken::cByte, {}, high * 16 + low, true};
}

std::string UnitJoiner::Take(int unit) {
  const int waiting = std::exchange(high, 0);
  if (IsLow(unit))
    return Utf8(waiting == 0 ? cLost
                             : static_cast<char32_t>(0x10000 + ((waiting - 0xD800) << 10) +
                                                     (unit - 0xDC00)));
  const std::string lost = waiting == 0 ? std::string() : Utf8(cLost);
  if (IsHigh(unit)) {
    high = unit;
    return lost;
  }
  const bool valid = unit > 0 && unit <= 0xFFFF;
  return lost + Utf8(valid ? static_cast<char32_t>(unit) : cLost);
}

std::string UnitJoiner::Rest() {
  return std::exchange(high, 0) == 0 ? std::string() : Utf8(cLost);
}

std::string WindowsCharacter(unsigned char byte) {
  if (byte < 0x80 || byte > 0x9F) return Utf8(byte);
  const char16_t code = cWindows[byte - 0x80];
  return Utf8(code == 0 ? cLost : code);
}

size_t CharacterBytes(std::string_view text) {
  size_t length = 1;
  while (length < text.size() && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80)
    ++length;
  return length;
}

}  // namespace mavro
