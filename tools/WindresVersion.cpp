#include "WindresVersion.h"

#include <array>

#include "WindresExpression.h"
#include "WindresText.h"

namespace zendry {

namespace {

constexpr uint32_t cSignature = 0xFEEF04BD;
constexpr uint32_t cLayoutVersion = 0x10000;
constexpr size_t cLongestNode = 0xFFFF;
constexpr int cDeepestBlock = 10;
constexpr size_t cHeaderSize = 6;

// The fixed part: 13 numbers of 32 bits. A statement of `count` numbers fills them from `index`, or
// with two numbers of 16 bits each if it is a version.
struct FixedRow {
  std::string_view word;
  size_t index;
  bool isVersion;
};
constexpr FixedRow cFixedRows[] = {{"FILEVERSION", 2, true},    {"PRODUCTVERSION", 4, true},
                                   {"FILEFLAGSMASK", 6, false}, {"FILEFLAGS", 7, false},
                                   {"FILEOS", 8, false},        {"FILETYPE", 9, false},
                                   {"FILESUBTYPE", 10, false}};
using FixedPart = std::array<uint32_t, 13>;

struct Value {
  std::string bytes;
  bool isText = false;
};

void Pad(std::string& bytes) {
  while (bytes.size() % 4 != 0) bytes += '\0';
}

class VersionReader {
 public:
  explicit VersionReader(RcCursor& cursor) : cursor(cursor) {}

  std::string Read() {
    const Place start = cursor.Peek().place;
    FixedPart fixed = {cSignature, cLayoutVersion};
    while (ReadFixed(fixed)) {
    }
    Value value;
    for (uint32_t number : fixed) AppendNumber(value.bytes, number, 4);
    return Node("VS_VERSION_INFO", value, ReadChildren(), start);
  }

 private:
  bool ReadFixed(FixedPart& fixed) {
    for (const FixedRow& row : cFixedRows) {
      if (!cursor.Peek().IsWord(row.word)) continue;
      cursor.Next();
      if (row.isVersion)
        ReadVersion(&fixed[row.index]);
      else
        fixed[row.index] = static_cast<uint32_t>(ReadExpression(cursor).value);
      return true;
    }
    return false;
  }

  // One to four numbers; the first of a pair is the upper half.
  void ReadVersion(uint32_t* pair) {
    for (int i = 0; i < 4; ++i) {
      const Place place = cursor.Peek().place;
      const int64_t number = ReadExpression(cursor).value;
      if (number < 0 || number > 0xFFFF) cursor.Fail(place, "a part of a version is 0 to 65535");
      pair[i / 2] |= static_cast<uint32_t>(number) << (i % 2 ? 0 : 16);
      if (!cursor.Match(',')) return;
    }
  }

  std::string ReadChildren() {
    if (!cursor.Peek().IsBegin()) cursor.FailExpected("BEGIN");
    if (++depth > cDeepestBlock) cursor.Fail(cursor.Peek().place, "blocks are nested too deeply");
    cursor.Next();
    std::string children;
    while (!cursor.Peek().IsEnd()) {
      Pad(children);
      children += ReadChild();
    }
    cursor.Next();
    --depth;
    return children;
  }

  std::string ReadChild() {
    const bool isBlock = cursor.Peek().IsWord("BLOCK");
    if (!isBlock && !cursor.Peek().IsWord("VALUE")) cursor.FailExpected("BLOCK, VALUE or END");
    const Place place = cursor.Next().place;
    if (!cursor.Peek().IsString()) cursor.FailExpected("a name in quotes");
    const std::string key = cursor.Next().text;
    if (isBlock) return Node(key, {"", true}, ReadChildren(), place);
    cursor.Match(',');
    return Node(key, ReadValue(), "", place);
  }

  // Adjacent texts are one text; numbers have 16 bits, or 32 bits with L.
  Value ReadValue() {
    Value value;
    while (true) {
      const RcToken token = cursor.Peek();
      if (token.IsString()) {
        value.isText = true;
        AppendText(value.bytes, cursor.Next());
      } else if (BeginsExpression(token)) {
        const RcNumber number = ReadExpression(cursor);
        AppendNumber(value.bytes, static_cast<uint64_t>(number.value), number.isLong ? 4 : 2);
      } else {
        break;
      }
      cursor.Match(',');
    }
    if (value.isText) AppendNumber(value.bytes, 0, 2);
    return value;
  }

  void AppendText(std::string& bytes, const RcToken& token) {
    if (!AppendUtf16(bytes, token.text)) cursor.Fail(token.place, "the text is no UTF-8");
  }

  std::string Node(const std::string& key, const Value& value, const std::string& children,
                   const Place& place) {
    std::string rest;
    if (!AppendUtf16(rest, key)) cursor.Fail(place, "the name is no UTF-8");
    AppendNumber(rest, 0, 2);
    rest.insert(0, cHeaderSize, '\0');  // so that the padding is that of the whole block
    Pad(rest);
    rest += value.bytes;
    if (!children.empty()) Pad(rest);
    rest += children;
    if (rest.size() > cLongestNode) cursor.Fail(place, "the version block is longer than 64 KB");
    std::string node;
    AppendNumber(node, rest.size(), 2);
    AppendNumber(node, value.isText ? value.bytes.size() / 2 : value.bytes.size(), 2);
    AppendNumber(node, value.isText ? 1 : 0, 2);
    return node + rest.substr(cHeaderSize);
  }

  RcCursor& cursor;
  int depth = 0;
};

}  // namespace

std::string ReadVersionBlock(RcCursor& cursor) {
  return VersionReader(cursor).Read();
}

}  // namespace zendry
