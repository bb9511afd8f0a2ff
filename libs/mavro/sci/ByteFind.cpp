#include "ByteFind.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

#include "AsciiCase.h"
#include "ByteBlock.h"

namespace mavro {

namespace {

constexpr size_t cBlock = cByteBlock;
constexpr size_t cBlocks = 4;
constexpr size_t cBackward = 64 * 1024;  // bytes that a search backward looks at together

using Block = ByteBlock;

Block Filled(unsigned char byte) {
  Block block = {};
  return block + byte;
}

bool IsLetter(unsigned char byte) {
  return (byte | 0x20) >= 'a' && (byte | 0x20) <= 'z';
}

// The less often a byte is in sources, the lower.
int Frequency(unsigned char byte) {
  constexpr std::string_view cMostFrequent = " etrasinocldup_mf();,hg.b=y*v->w:x0&kT1{}";
  const size_t at = cMostFrequent.find(static_cast<char>(byte));
  return at == cMostFrequent.npos ? 0 : static_cast<int>(cMostFrequent.size() - at);
}

}  // namespace

ByteFind::ByteFind(std::string_view newWanted, LetterCase newLetters)
    : wanted(newWanted), letters(newLetters) {
  if (wanted.empty()) return;
  if (letters == LetterCase::cFolded)
    std::transform(wanted.begin(), wanted.end(), wanted.begin(), AsciiLower);
  const auto frequency = [&](size_t i) { return Frequency(static_cast<unsigned char>(wanted[i])); };
  size_t first = 0, second = wanted.size() - 1;
  for (size_t i = 0; i < wanted.size(); ++i)
    if (frequency(i) < frequency(first)) first = i;
  if (second == first) second = 0;
  for (size_t i = 0; i < wanted.size(); ++i)
    if (i != first && wanted[i] != wanted[first] && frequency(i) < frequency(second)) second = i;
  rare = ProbeAt(first);
  other = ProbeAt(second);
}

ByteFind::Probe ByteFind::ProbeAt(size_t offset) const {
  const auto byte = static_cast<unsigned char>(wanted[offset]);
  const bool folds = letters == LetterCase::cFolded && IsLetter(byte);
  const unsigned char mask = folds ? 0x20 : 0;
  return {offset, mask, byte};
}

bool ByteFind::IsAt(const char* place) const {
  if (letters == LetterCase::cExact) return std::memcmp(place, wanted.data(), wanted.size()) == 0;
  for (size_t i = 0; i < wanted.size(); ++i)
    if (AsciiLower(place[i]) != wanted[i]) return false;
  return true;
}

size_t ByteFind::Next(std::string_view text, size_t from) const {
  if (wanted.empty() || text.size() < wanted.size() || from > text.size() - wanted.size())
    return text.npos;
  const size_t end = text.size() - wanted.size() + 1;  // of the places where it may begin
  const char* bytes = text.data();
  const Block rareByte = Filled(rare.byte), rareMask = Filled(rare.mask);
  const Block otherByte = Filled(other.byte), otherMask = Filled(other.mask);
  size_t at = from;
  const auto probed = [&](size_t place) {
    return ((LoadBlock(bytes + place + rare.offset) | rareMask) == rareByte) &
           ((LoadBlock(bytes + place + other.offset) | otherMask) == otherByte);
  };
  for (; at + cBlock * cBlocks <= end; at += cBlock * cBlocks) {
    std::array<Block, cBlocks> found;
    for (size_t i = 0; i < cBlocks; ++i)
      found[i] = reinterpret_cast<Block>(probed(at + i * cBlock));
    if (!HasAny((found[0] | found[1]) | (found[2] | found[3]))) continue;
    for (size_t i = 0; i < cBlocks; ++i) {
      if (!HasAny(found[i])) continue;
      for (size_t lane = 0; lane < cBlock; ++lane)
        if (found[i][lane] && IsAt(bytes + at + i * cBlock + lane)) return at + i * cBlock + lane;
    }
  }
  for (; at < end; ++at)
    if ((static_cast<unsigned char>(bytes[at + rare.offset]) | rare.mask) == rare.byte &&
        IsAt(bytes + at))
      return at;
  return text.npos;
}

// Each lane counts up to 255 blocks.
size_t CountBytes(std::string_view text, char byte) {
  constexpr size_t cMostBlocks = 255;
  const Block wanted = Filled(static_cast<unsigned char>(byte));
  size_t count = 0, at = 0;
  while (at + cBlock <= text.size()) {
    Block lanes = {};
    const size_t end = std::min(at + cMostBlocks * cBlock, text.size() - cBlock + 1);
    for (; at < end; at += cBlock)
      lanes -= reinterpret_cast<Block>(LoadBlock(text.data() + at) == wanted);
    for (size_t lane = 0; lane < cBlock; ++lane) count += lanes[lane];
  }
  for (; at < text.size(); ++at) count += text[at] == byte;
  return count;
}

size_t ByteFind::Last(std::string_view text, size_t from, size_t before) const {
  before = std::min(before, text.size());
  if (wanted.empty() || before < wanted.size()) return text.npos;
  size_t end = before - wanted.size() + 1;  // places from here on have been looked at
  while (end > from) {
    const size_t start = end - from > cBackward ? end - cBackward : from;
    const std::string_view part = text.substr(0, end + wanted.size() - 1);
    size_t last = text.npos;
    for (size_t at = Next(part, start); at != text.npos; at = Next(part, at + 1)) last = at;
    if (last != text.npos) return last;
    end = start;
  }
  return text.npos;
}

}  // namespace mavro
