#include "PdfFile.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <set>
#include <utility>

namespace mavro {

namespace {

constexpr char cDigits[] = "0123456789ABCDEF";
constexpr int cPointsInInch = 72;
constexpr double cSameDistance = 1.2;  // dots; more can't be seen
constexpr int cTextWeight = 80;        // of stems, which readers only use without the font
constexpr size_t cMostInMap = 100;     // lines in one part of a table of letters

void PutHex(std::string& to, unsigned value) {
  for (int shift = 12; shift >= 0; shift -= 4) to += cDigits[value >> shift & 0xF];
}

// A glyph's number as two bytes of a text; some bytes mean something there.
void PutGlyph(std::string& to, uint16_t number) {
  for (const int byte : {number >> 8, number & 0xFF}) {
    const char letter = static_cast<char>(byte);
    if (letter == '(' || letter == ')' || letter == '\\')
      to += '\\';
    else if (letter == '\r') {
      to += "\\r";
      continue;
    }
    to += letter;
  }
}

void PutUtf16(std::string& to, char32_t code) {
  if (code >= 0x10000) {
    PutHex(to, 0xD800 + ((code - 0x10000) >> 10));
    PutHex(to, 0xDC00 + ((code - 0x10000) & 0x3FF));
  } else {
    PutHex(to, code);
  }
}

void PutNumber(std::string& to, long number) {
  char digits[24];
  const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
  to.append(digits, end);
  to += ' ';
}

std::string Real(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.4f", value);
  return text;
}

std::string Reference(int object) {
  return std::to_string(object) + " 0 R";
}

std::string Channel(int value) {
  return Real((value & 0xFF) / 255.0);
}

// The letters of each glyph, so that readers can find and copy text.
std::string LettersOf(const std::map<uint16_t, std::u32string>& glyphs) {
  std::string map =
      "/CIDInit /ProcSet findresource begin\n12 dict begin\nbegincmap\n"
      "/CIDSystemInfo << /Registry (Adobe) /Ordering (UCS) /Supplement 0 >> def\n"
      "/CMapName /Adobe-Identity-UCS def\n/CMapType 2 def\n"
      "1 begincodespacerange\n<0000> <FFFF>\nendcodespacerange\n";
  std::vector<std::string> lines;
  for (const auto& [glyph, letters] : glyphs) {
    if (letters.empty()) continue;
    std::string line = "<";
    PutHex(line, glyph);
    line += "> <";
    for (const char32_t letter : letters) PutUtf16(line, letter);
    lines.push_back(line + ">\n");
  }
  for (size_t at = 0; at < lines.size(); at += cMostInMap) {
    const size_t count = std::min(cMostInMap, lines.size() - at);
    map += std::to_string(count) + " beginbfchar\n";
    for (size_t i = 0; i < count; ++i) map += lines[at + i];
    map += "endbfchar\n";
  }
  return map + "endcmap\nCMapName currentdict /CMap defineresource pop\nend\nend\n";
}

}  // namespace

std::string PdfText(std::string_view utf8) {
  std::string text = "<FEFF";
  for (size_t at = 0; at < utf8.size();) {
    const auto lead = static_cast<unsigned char>(utf8[at]);
    const size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 1;
    char32_t code = length == 1 ? lead : lead & (0x7F >> length);
    bool isWhole = lead < 0x80 || (length > 1 && at + length <= utf8.size());
    for (size_t i = 1; isWhole && i < length; ++i) {
      isWhole = (utf8[at + i] & 0xC0) == 0x80;
      code = code << 6 | (utf8[at + i] & 0x3F);
    }
    isWhole = isWhole && code <= 0x10FFFF;
    PutUtf16(text, isWhole ? code : 0xFFFD);
    at += isWhole ? length : 1;
  }
  return text + ">";
}

PdfFile::PdfFile(Deflate itsDeflate)
    : deflate(std::move(itsDeflate)),
      out("%PDF-1.5\n%\xE2\xE3\xCF\xD3\n"),
      offsets(1),
      catalog(NewObject()),
      tree(NewObject()),
      info(NewObject()),
      resources(NewObject()) {}

void PdfFile::BeginPage(int width, int height, int dpi) {
  scale = double(cPointsInInch) / dpi;
  Page& page = pages.emplace_back();
  page.width = width * scale;
  page.height = height * scale;
  char matrix[96];
  std::snprintf(matrix, sizeof matrix, "%.8f 0 0 %.8f 0 %.4f cm\n", scale, -scale, page.height);
  page.object = NewObject();
  content = matrix;
  ink = font = size = -1;
}

void PdfFile::EndPage() {
  EndText();
  const Page& page = pages.back();
  const int stream = NewObject();
  PutStream(stream, "", Compressed(content));
  Put(page.object, "<< /Type /Page /Parent " + Reference(tree) + " /MediaBox [0 0 " +
                       Real(page.width) + " " + Real(page.height) + "] /Resources " +
                       Reference(resources) + " /Contents " + Reference(stream) + " >>");
}

int PdfFile::AddFont(PdfFont newFont) {
  UsedFont& used = fonts.emplace_back();
  used.font = std::move(newFont);
  ReadFontFacts(used.font.table, used.facts);
  return static_cast<int>(fonts.size()) - 1;
}

void PdfFile::SetInk(int colour) {
  if (ink == colour) return;
  ink = colour;
  std::string& words = inks[colour];
  if (words.empty())
    words = Channel(colour) + " " + Channel(colour >> 8) + " " + Channel(colour >> 16) + " rg\n";
  content += words;
}

void PdfFile::Fill(int left, int top, int right, int bottom, int colour) {
  EndText();
  SetInk(colour);
  for (const int number : {left, top, right - left, bottom - top}) PutNumber(content, number);
  content += "re f\n";
}

void PdfFile::EndText() {
  if (std::exchange(isInText, false)) content += "ET\n";
}

// Nothing moves the pen to a place where it is already: most words of a line follow each other.
void PdfFile::MoveTo(double x, double y) {
  const long row = std::lround(y);
  if (isInText && row == penRow && std::abs(x - pen) <= cSameDistance) return;
  if (!std::exchange(isInText, true)) content += "BT\n";
  const long column = std::lround(x);
  content += "1 0 0 -1 ";
  PutNumber(content, column);
  PutNumber(content, row);
  content += "Tm ";
  pen = static_cast<double>(column);
  penRow = row;
}

void PdfFile::Glyphs(int newFont, int newSize, int newInk, double baseline,
                     const std::vector<PdfGlyph>& glyphs) {
  UsedFont& used = fonts[static_cast<size_t>(newFont)];
  SetInk(newInk);
  if (newFont != font || newSize != size) {
    content += "/F" + std::to_string(newFont) + " ";
    PutNumber(content, newSize);
    content += "Tf ";
    font = newFont;
    size = newSize;
  }
  const double unit = newSize / 1000.0;
  bool isOpen = false;
  for (const PdfGlyph& glyph : glyphs) {
    if (glyph.number >= used.isKnown.size()) used.isKnown.resize(glyph.number + size_t{1});
    if (!used.isKnown[glyph.number]) {
      used.isKnown[glyph.number] = true;
      used.glyphs.emplace(glyph.number, glyph.text);
    }
    const bool isFar = std::abs(glyph.x - pen) > cSameDistance;
    if (isOpen && isFar) content += ") Tj ";
    if (!isOpen || isFar) {
      MoveTo(glyph.x, baseline);
      content += '(';
      isOpen = true;
    }
    PutGlyph(content, glyph.number);
    if (glyph.number < used.facts.widths.size()) pen += used.facts.widths[glyph.number] * unit;
  }
  if (isOpen) content += ") Tj\n";
}

void PdfFile::AddOutline(std::string_view title, int y) {
  outline.push_back({std::string(title), pages.size() - 1, pages.back().height - y * scale});
}

std::string PdfFile::Compressed(std::string_view bytes) const {
  return deflate ? deflate(bytes) : std::string(bytes);
}

int PdfFile::NewObject() {
  offsets.push_back(0);
  return static_cast<int>(offsets.size()) - 1;
}

void PdfFile::Put(int object, const std::string& body) {
  offsets[static_cast<size_t>(object)] = out.size();
  out += std::to_string(object) + " 0 obj\n" + body + "\nendobj\n";
}

void PdfFile::PutStream(int object, const std::string& entries, const std::string& bytes) {
  offsets[static_cast<size_t>(object)] = out.size();
  out += std::to_string(object) + " 0 obj\n<< " + entries;
  if (deflate) out += "/Filter /FlateDecode ";
  out += "/Length " + std::to_string(bytes.size()) + " >>\nstream\n";
  out += bytes;
  out += "\nendstream\nendobj\n";
}

std::string PdfFile::WidthsOf(const UsedFont& used) const {
  std::string widths = "[";
  for (const auto& [glyph, letters] : used.glyphs) {
    const bool isKnown = glyph < used.facts.widths.size();
    widths += std::to_string(glyph) + " [" +
              std::to_string(isKnown ? used.facts.widths[glyph] : 0) + "] ";
  }
  return widths + "]";
}

void PdfFile::WriteFont(const UsedFont& used, int object) {
  std::set<uint16_t> glyphs;
  for (const auto& [glyph, letters] : used.glyphs) glyphs.insert(glyph);
  std::string file = SubsetFont(used.font.table, glyphs);
  const bool isOutlines = !file.empty();
  if (!isOutlines) file = used.font.table("CFF ");
  // Six letters before the name tell that this is a part of the font.
  const std::string name = "/ZENDRY+" + used.font.name;
  const int descendant = NewObject(), descriptor = NewObject(), letters = NewObject();
  const int fileObject = file.empty() ? 0 : NewObject();
  Put(object, "<< /Type /Font /Subtype /Type0 /BaseFont " + name +
                  " /Encoding /Identity-H /DescendantFonts [" + Reference(descendant) +
                  "] /ToUnicode " + Reference(letters) + " >>");
  Put(descendant, std::string("<< /Type /Font /Subtype /CIDFontType") + (isOutlines ? "2" : "0") +
                      " /BaseFont " + name +
                      " /CIDSystemInfo << /Registry (Adobe) /Ordering (Identity) /Supplement 0 >>"
                      " /FontDescriptor " +
                      Reference(descriptor) + (isOutlines ? " /CIDToGIDMap /Identity" : "") +
                      " /W " + WidthsOf(used) + " >>");
  constexpr int cFixed = 1, cSymbols = 4, cItalic = 64;
  const FontFacts& facts = used.facts;
  const int flags =
      cSymbols | (used.font.isFixed ? cFixed : 0) | (used.font.isItalic ? cItalic : 0);
  std::string body = "<< /Type /FontDescriptor /FontName " + name + " /Flags " +
                     std::to_string(flags) + " /FontBBox [";
  for (const int edge : {facts.left, facts.bottom, facts.right, facts.top})
    body += std::to_string(edge) + " ";
  body += "] /ItalicAngle " + std::string(used.font.isItalic ? "-12" : "0") + " /Ascent " +
          std::to_string(facts.ascent) + " /Descent " + std::to_string(facts.descent) +
          " /CapHeight " + std::to_string(facts.ascent) + " /StemV " + std::to_string(cTextWeight);
  if (fileObject) body += (isOutlines ? " /FontFile2 " : " /FontFile3 ") + Reference(fileObject);
  Put(descriptor, body + " >>");
  PutStream(letters, "", Compressed(LettersOf(used.glyphs)));
  if (!fileObject) return;
  PutStream(
      fileObject,
      isOutlines ? "/Length1 " + std::to_string(file.size()) + " " : "/Subtype /CIDFontType0C ",
      Compressed(file));
}

// All entries on one level, in the order of the pages. Answers the object of the table.
int PdfFile::WriteOutlines() {
  const int root = NewObject();
  const int first = root + 1;
  const int count = static_cast<int>(outline.size());
  for (int i = 0; i < count; ++i) NewObject();
  Put(root, "<< /Type /Outlines /First " + Reference(first) + " /Last " +
                Reference(first + count - 1) + " /Count " + std::to_string(count) + " >>");
  for (int i = 0; i < count; ++i) {
    const Entry& entry = outline[static_cast<size_t>(i)];
    std::string body = "<< /Title " + PdfText(entry.title) + " /Parent " + Reference(root);
    if (i > 0) body += " /Prev " + Reference(first + i - 1);
    if (i + 1 < count) body += " /Next " + Reference(first + i + 1);
    const int page = pages[entry.page].object;
    Put(first + i,
        body + " /Dest [" + Reference(page) + " /XYZ null " + Real(entry.y) + " null] >>");
  }
  return root;
}

std::string PdfFile::Finish(std::string_view title) {
  std::string fontList;
  for (size_t i = 0; i < fonts.size(); ++i) {
    if (fonts[i].glyphs.empty()) continue;
    const int object = NewObject();
    WriteFont(fonts[i], object);
    fontList += "/F" + std::to_string(i) + " " + Reference(object) + " ";
  }
  Put(resources, "<< /Font << " + fontList + ">> >>");
  std::string kids;
  for (const Page& page : pages) kids += Reference(page.object) + " ";
  std::string more;
  if (!outline.empty())
    more = " /Outlines " + Reference(WriteOutlines()) + " /PageMode /UseOutlines";
  Put(tree, "<< /Type /Pages /Kids [" + kids + "] /Count " + std::to_string(pages.size()) + " >>");
  Put(catalog, "<< /Type /Catalog /Pages " + Reference(tree) + more + " >>");
  Put(info, "<< /Title " + PdfText(title) + " /Producer (Zendry) >>");
  const size_t table = out.size();
  out += "xref\n0 " + std::to_string(offsets.size()) + "\n0000000000 65535 f \n";
  for (size_t i = 1; i < offsets.size(); ++i) {
    char line[24];
    std::snprintf(line, sizeof line, "%010zu 00000 n \n", offsets[i]);
    out += line;
  }
  out += "trailer\n<< /Size " + std::to_string(offsets.size()) + " /Root " + Reference(catalog) +
         " /Info " + Reference(info) + " >>\nstartxref\n" + std::to_string(table) + "\n%%EOF\n";
  return std::move(out);
}

}  // namespace mavro
