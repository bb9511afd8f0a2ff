#include "FontSubset.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace mavro {

namespace {

constexpr size_t cHeadLength = 54;
constexpr size_t cLongOffsets = 50;  // in "head": the kind of offsets in "loca"
constexpr size_t cHheaWidths = 34;   // in "hhea": how many widths "hmtx" has
constexpr size_t cHeadChecksum = 8;  // in "head": of the whole file
constexpr uint32_t cMagic = 0xB1B0AFBA;
// Tables that the file keeps, in the order of their tags.
constexpr const char* cKept[] = {"cvt ", "fpgm", "glyf", "head", "hhea",
                                 "hmtx", "loca", "maxp", "prep"};

// Numbers are stored highest byte first. Outside the bytes they are 0.
unsigned Get16(std::string_view bytes, size_t at) {
  if (at + 2 > bytes.size()) return 0;
  return static_cast<unsigned char>(bytes[at]) << 8 | static_cast<unsigned char>(bytes[at + 1]);
}
int GetSigned16(std::string_view bytes, size_t at) {
  return static_cast<int16_t>(Get16(bytes, at));
}
uint32_t Get32(std::string_view bytes, size_t at) {
  return static_cast<uint32_t>(Get16(bytes, at)) << 16 | Get16(bytes, at + 2);
}
void Put16(std::string& bytes, unsigned value) {
  bytes += static_cast<char>(value >> 8 & 0xFF);
  bytes += static_cast<char>(value & 0xFF);
}
void Put32(std::string& bytes, uint32_t value) {
  Put16(bytes, value >> 16);
  Put16(bytes, value & 0xFFFF);
}

uint32_t Checksum(std::string_view bytes) {
  uint32_t sum = 0;
  for (size_t at = 0; at < bytes.size(); at += 4) {
    uint32_t word = 0;
    for (size_t i = 0; i < 4; ++i)
      word = word << 8 | (at + i < bytes.size() ? static_cast<unsigned char>(bytes[at + i]) : 0);
    sum += word;
  }
  return sum;
}

// The outlines of a font, by glyph.
class Outlines {
 public:
  explicit Outlines(const FontTable& table)
      : glyf(table("glyf")), loca(table("loca")), isLong(Get16(table("head"), cLongOffsets) != 0) {}

  size_t Count() const {
    const size_t entries = loca.size() / (isLong ? 4 : 2);
    return entries > 0 ? entries - 1 : 0;
  }
  std::string_view Of(size_t glyph) const {
    if (glyph >= Count()) return {};
    const size_t start = Offset(glyph), end = Offset(glyph + 1);
    if (start >= end || end > glyf.size()) return {};
    return std::string_view(glyf).substr(start, end - start);
  }
  // The glyphs that a glyph is made of.
  std::vector<uint16_t> PartsOf(size_t glyph) const {
    enum Flag { cWords = 1, cScale = 8, cMore = 0x20, cTwoScales = 0x40, cMatrix = 0x80 };
    std::vector<uint16_t> parts;
    const std::string_view outline = Of(glyph);
    if (outline.size() < 10 || GetSigned16(outline, 0) >= 0) return parts;
    for (size_t at = 10; at + 4 <= outline.size();) {
      const unsigned flags = Get16(outline, at);
      parts.push_back(static_cast<uint16_t>(Get16(outline, at + 2)));
      at += flags & cWords ? 8 : 6;
      at += flags & cScale ? 2 : flags & cTwoScales ? 4 : flags & cMatrix ? 8 : 0;
      if (!(flags & cMore)) break;
    }
    return parts;
  }

 private:
  size_t Offset(size_t glyph) const {
    return isLong ? Get32(loca, glyph * 4) : size_t{Get16(loca, glyph * 2)} * 2;
  }

  const std::string glyf, loca;
  const bool isLong;
};

// Adds the glyphs that others are made of.
void AddParts(const Outlines& outlines, std::set<uint16_t>& glyphs) {
  std::vector<uint16_t> open(glyphs.begin(), glyphs.end());
  while (!open.empty()) {
    const uint16_t glyph = open.back();
    open.pop_back();
    for (const uint16_t part : outlines.PartsOf(glyph))
      if (glyphs.insert(part).second) open.push_back(part);
  }
}

std::string FontFile(std::vector<std::pair<std::string, std::string>>& tables) {
  unsigned power = 0;
  while ((2u << power) <= tables.size()) ++power;
  const unsigned range = 16u << power;
  std::string file;
  Put32(file, 0x00010000);
  Put16(file, static_cast<unsigned>(tables.size()));
  Put16(file, range);
  Put16(file, power);
  Put16(file, static_cast<unsigned>(tables.size()) * 16 - range);
  size_t offset = 12 + 16 * tables.size(), head = 0;
  for (const auto& [tag, bytes] : tables) {
    if (tag == "head") head = offset;
    file += tag;
    Put32(file, Checksum(bytes));
    Put32(file, static_cast<uint32_t>(offset));
    Put32(file, static_cast<uint32_t>(bytes.size()));
    offset += (bytes.size() + 3) / 4 * 4;
  }
  for (const auto& [tag, bytes] : tables) {
    file += bytes;
    file.resize((file.size() + 3) / 4 * 4);
  }
  std::string sum;
  Put32(sum, cMagic - Checksum(file));
  file.replace(head + cHeadChecksum, 4, sum);
  return file;
}

}  // namespace

bool ReadFontFacts(const FontTable& table, FontFacts& facts) {
  const std::string head = table("head"), hhea = table("hhea"), hmtx = table("hmtx");
  const size_t glyphs = Get16(table("maxp"), 4);
  const int unit = static_cast<int>(Get16(head, 18));
  const size_t widths = Get16(hhea, cHheaWidths);
  if (head.size() < cHeadLength || unit == 0 || widths == 0 || hmtx.size() < widths * 4)
    return false;
  const auto scaled = [unit](int length) { return length * 1000 / unit; };
  facts.left = scaled(GetSigned16(head, 36));
  facts.bottom = scaled(GetSigned16(head, 38));
  facts.right = scaled(GetSigned16(head, 40));
  facts.top = scaled(GetSigned16(head, 42));
  facts.ascent = scaled(GetSigned16(hhea, 4));
  facts.descent = scaled(GetSigned16(hhea, 6));
  facts.widths.resize(glyphs);
  // Glyphs after the last width have that one.
  for (size_t glyph = 0; glyph < glyphs; ++glyph)
    facts.widths[glyph] = scaled(static_cast<int>(Get16(hmtx, std::min(glyph, widths - 1) * 4)));
  return true;
}

std::string SubsetFont(const FontTable& table, std::set<uint16_t> glyphs) {
  const Outlines outlines(table);
  std::string head = table("head");
  if (outlines.Count() == 0 || head.size() < cHeadLength) return {};
  glyphs.insert(0);
  AddParts(outlines, glyphs);
  std::string glyf, loca;
  for (size_t glyph = 0; glyph < outlines.Count(); ++glyph) {
    Put32(loca, static_cast<uint32_t>(glyf.size()));
    if (!glyphs.contains(static_cast<uint16_t>(glyph))) continue;
    glyf += outlines.Of(glyph);
    glyf.resize((glyf.size() + 3) / 4 * 4);
  }
  Put32(loca, static_cast<uint32_t>(glyf.size()));
  head.replace(cLongOffsets, 2, std::string("\0\1", 2));
  head.replace(cHeadChecksum, 4, std::string(4, '\0'));
  std::vector<std::pair<std::string, std::string>> tables;
  for (const std::string tag : cKept) {
    std::string bytes = tag == "head"   ? head
                        : tag == "glyf" ? glyf
                        : tag == "loca" ? loca
                                        : table(tag.c_str());
    if (!bytes.empty()) tables.emplace_back(tag, std::move(bytes));
  }
  return FontFile(tables);
}

}  // namespace mavro
