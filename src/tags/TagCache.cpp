#include "tags/TagCache.h"

#include <iterator>
#include <utility>
#include <vector>

#include "base/TextMark.h"
#include "base/XmlTag.h"
#include "tags/TagData.h"

namespace zendry {

namespace {

constexpr std::string_view cStampStart = "<stamp ";
constexpr std::string_view cHeadersStart = "<reference ";
constexpr std::string_view cHeadersEnd = "</reference>\n";
constexpr std::string_view cGlobalsEnd = "</globals>\n";
constexpr std::string_view cClassEnd = "</class>\n";
constexpr size_t cFamilyPrefix = 6;  // of "basic_string"
constexpr int cReadBackAccess = 1;

// Group: writing.

// Says if an element may be written that a reader would read as another one.
enum class Misread { cAllowed, cMended };

// Only three letters are compared: the whole family of names is meant.
bool IsOfStringFamily(const std::string& name) {
  return name.size() > cFamilyPrefix && name[0] == 'b' && name[4] == 'c' && name[5] == '_';
}

std::string KindAndLine(const TagItem& item) {
  return item.kind == 0 ? "" : static_cast<char>(item.kind) + std::to_string(item.line);
}

class CacheWriter {
 public:
  explicit CacheWriter(Misread newMisread) : misread(newMisread) {}

  std::string Write(const TagData& data) {
    Line("reference", 0, {.n = "lib"});
    for (const HeaderRec& header : data.headers)
      Line("hdr", 1, {header.name, header.options, header.path, "", header.id});
    text += cHeadersEnd;
    Line("globals", 0, {.n = std::to_string(data.globals.size())});
    for (const TagItem& item : data.globals) WriteItem(item);
    text += cGlobalsEnd;
    for (const auto& [name, tagClass] : data.classes) WriteClass(tagClass);
    return std::move(text);
  }

 private:
  struct Values {
    std::string n = {}, o = {}, p = {}, v = {};
    int id = -1;
  };

  void WriteItem(const TagItem& item) {
    Line("itm", 1, {item.name, KindAndLine(item), item.signature, item.type, item.fileId});
  }

  void WriteClass(const TagClass& tagClass) {
    const std::string name = tagClass.name;
    if (name.starts_with('_')) return;
    const bool isShortened = IsOfStringFamily(name);
    const bool written =
        Line("class", 0,
             {isShortened ? name.substr(cFamilyPrefix) : name, KindAndLine(tagClass),
              tagClass.inheritance, isShortened ? name : "", tagClass.fileId});
    if (!written) return;
    for (const TagItem& member : tagClass.members) WriteItem(member);
    text += cClassEnd;
  }

  bool IsGood(const XmlTag& tag) const {
    std::string line;
    tag.write(line);
    return misread == Misread::cAllowed ? TokensFit(line) : tag.ReadsBack();
  }

  // Only an element that closes itself has a slash. False when it was left out.
  bool Line(std::string_view element, int depth, const Values& values) {
    XmlTag tag;
    tag.begin(element, depth, depth > 0 ? XmlTag::Ends::cAtOnce : XmlTag::Ends::cLater);
    tag.set(values.n, values.o, values.p, values.v, values.id);
    for (std::string* leastNeeded : {&tag.p, &tag.v}) {
      if (IsGood(tag)) break;
      leastNeeded->clear();
    }
    if (!IsGood(tag)) return false;
    tag.write(text);
    return true;
  }

  const Misread misread;
  std::string text;
};

// Group: the stamp.

std::string Stamp(std::string_view definitionMark, std::string_view text) {
  XmlTag tag;
  tag.begin("stamp", 0, XmlTag::Ends::cAtOnce);
  tag.set(definitionMark, HexadecimalMark(TextMark(text)), "", "", -1);
  std::string line;
  tag.write(line);
  return line;
}

// Group: reading.

class CacheReader {
 public:
  explicit CacheReader(TagData& readInto) : data(readInto) {}

  void Read(std::string_view text) {
    TagSource source{text};
    for (XmlTag tag; tag.read(&source);) ReadElement(tag);
    EndClass();
  }

 private:
  void ReadElement(const XmlTag& tag) {
    switch (tag.element.front()) {
      case 'g':
        EndClass();
        break;
      case 'c':
        StartClass(tag);
        break;
      case 'h':
        data.headers.push_back({tag.id, tag.o, tag.n, tag.p});
        break;
      case 'i':
        if (tagClass) AddMember(tag);
        break;
      default:
        break;
    }
  }

  void StartClass(const XmlTag& tag) {
    EndClass();
    tagClass = &data.classes[tag.n];
    *tagClass = TagClass();
    tagClass->name = tag.n;
    tagClass->inheritance = tag.p;
    tagClass->signature = tag.v;
  }

  void AddMember(const XmlTag& tag) {
    TagItem& item = members.emplace_back();
    item.name = tag.n;
    item.signature = tag.p;
    item.type = tag.v;
    item.fileId = HeaderId(tag.id);
    item.kind = tag.o.empty() ? 0 : tag.o.front();
    item.access = cReadBackAccess;
  }

  // A library stays for hours: its classes have no room for more members.
  void EndClass() {
    if (tagClass)
      tagClass->members.assign(std::make_move_iterator(members.begin()),
                               std::make_move_iterator(members.end()));
    members.clear();
    tagClass = nullptr;
  }

  TagData& data;
  TagClass* tagClass = nullptr;  // the class whose members follow
  std::vector<TagItem> members;  // those of it that were read
};

}  // namespace

std::string CacheText(const TagData& data, uint64_t definitionMark) {
  const auto write = [&](Misread misread) {
    std::string text = CacheWriter(misread).Write(data);
    return text + Stamp(HexadecimalMark(definitionMark), text);
  };
  // A quote in a value may hide the end of every element after it, the stamp's too.
  const std::string text = write(Misread::cAllowed);
  return TokensFit(text) ? text : write(Misread::cMended);
}

bool IsCacheTrue(std::string_view text, const uint64_t* definitionMark) {
  const size_t start = text.rfind(cStampStart);
  if (start == std::string_view::npos) return false;
  TagSource source{text.substr(start)};
  XmlTag tag;
  if (!TokensFit(source.text) || !tag.read(&source)) return false;
  if (text.substr(start) != Stamp(tag.n, text.substr(0, start))) return false;
  return !definitionMark || tag.n == HexadecimalMark(*definitionMark);
}

bool IsUnstampedCache(std::string_view text) {
  const size_t headers = text.find(cHeadersEnd);
  const size_t globals = text.find(cGlobalsEnd, headers == text.npos ? text.size() : headers);
  const bool hasBoth = text.starts_with(cHeadersStart) && globals != text.npos;
  return hasBoth && text.ends_with(cClassEnd) && text.find(cStampStart) == text.npos &&
         TokensFit(text);
}

void ReadCacheText(std::string_view text, TagData& data) {
  if (TokensFit(text)) CacheReader(data).Read(text);
}

}  // namespace zendry
