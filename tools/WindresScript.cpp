#include "WindresScript.h"

#include <algorithm>
#include <map>
#include <tuple>

#include "WindresCursor.h"
#include "WindresExpression.h"
#include "WindresText.h"
#include "WindresVersion.h"

namespace zendry {

namespace {

constexpr int64_t cLargestId = 0xFFFFFFFF;

// Words between a type and its data. They say how memory holds a resource, which has no meaning
// here.
constexpr std::string_view cAttributes[] = {"PRELOAD", "LOADONCALL", "FIXED",       "MOVEABLE",
                                            "PURE",    "IMPURE",     "DISCARDABLE", "SHARED"};
// Statements before the data that are followed by one or two numbers.
struct OptionRow {
  std::string_view word;
  bool hasPair;
};
constexpr OptionRow cOptions[] = {
    {"CHARACTERISTICS", false}, {"VERSION", false}, {"LANGUAGE", true}};

// Types that describe windows and menus of another system.
constexpr std::string_view cForeignTypes[] = {"ACCELERATORS", "DIALOG", "DIALOGEX",     "FONT",
                                              "MENU",         "MENUEX", "MESSAGETABLE", "TOOLBAR"};

// Types by number.
struct TypeRow {
  int64_t number;
  std::string_view type;
};
constexpr TypeRow cTypes[] = {{2, "BITMAP"},  {3, "ICON"},         {6, "STRINGTABLE"},
                              {10, "RCDATA"}, {16, "VERSIONINFO"}, {24, "MANIFEST"}};

class ScriptReader {
 public:
  ScriptReader(std::string_view text, const std::string& file) : cursor(text, file) {}

  void Read(ResourceList& list) {
    while (cursor.Peek().kind != RcToken::cEnd) {
      if (cursor.Peek().IsWord("LANGUAGE"))
        SkipOption(true);
      else if (cursor.Peek().IsWord("STRINGTABLE"))
        ReadStrings(list);
      else
        ReadResource(list);
    }
  }

 private:
  void Add(ResourceList& list, Resource resource) {
    const Key key{resource.type, resource.id, resource.name};
    const auto [first, isNew] = places.emplace(key, resource.place);
    if (!isNew)
      throw ScriptError{AtPlace(resource.place, Named(resource) + " is there already") + "\n" +
                        AtPlace(first->second, "here it is for the first time")};
    list.resources.push_back(std::move(resource));
  }

  static std::string Named(const Resource& resource) {
    return resource.type + " " +
           (resource.name.empty() ? std::to_string(resource.id) : '"' + resource.name + '"');
  }

  void SkipOption(bool hasPair) {
    cursor.Next();
    ReadExpression(cursor);
    if (!hasPair) return;
    if (!cursor.Match(',')) cursor.FailExpected("','");
    ReadExpression(cursor);
  }

  // Skips attributes and options up to the data.
  void SkipAttributes() {
    while (true) {
      const RcToken& token = cursor.Peek();
      const auto is = [&token](std::string_view word) { return token.IsWord(word); };
      const auto option = std::find_if(std::begin(cOptions), std::end(cOptions),
                                       [&](const OptionRow& row) { return is(row.word); });
      if (option != std::end(cOptions))
        SkipOption(option->hasPair);
      else if (std::any_of(std::begin(cAttributes), std::end(cAttributes), is))
        cursor.Next();
      else
        return;
    }
  }

  uint64_t ReadId() {
    const Place place = cursor.Peek().place;
    const int64_t id = ReadExpression(cursor).value;
    if (id < 0 || id > cLargestId) cursor.Fail(place, "an id is 0 to 4294967295");
    return static_cast<uint64_t>(id);
  }

  void ReadResource(ResourceList& list) {
    Resource resource;
    resource.place = cursor.Peek().place;
    if (BeginsExpression(cursor.Peek()))
      resource.id = ReadId();
    else
      resource.name = ReadName("an id or a name");
    resource.type = ReadType();
    if (resource.type == "VERSIONINFO") {
      SkipAttributes();
      resource.bytes = ReadVersionBlock(cursor);
    } else {
      ReadContent(resource);
    }
    Add(list, std::move(resource));
  }

  std::string ReadName(const std::string& what) {
    const RcToken& token = cursor.Peek();
    const bool isName = token.kind == RcToken::cWord || token.IsString();
    if (!isName || token.text.empty() || token.IsBegin() || token.IsEnd())
      cursor.FailExpected(what);
    if (token.text.find('\0') != std::string::npos) cursor.Fail(token.place, "a name holds no NUL");
    return cursor.Next().text;
  }

  std::string ReadType() {
    const Place place = cursor.Peek().place;
    if (BeginsExpression(cursor.Peek())) {
      const int64_t number = ReadExpression(cursor).value;
      for (const TypeRow& row : cTypes)
        if (row.number == number) return std::string(row.type);
      return "#" + std::to_string(number);
    }
    const std::string type = Capitals(ReadName("a type"));
    for (std::string_view foreign : cForeignTypes)
      if (type == foreign)
        cursor.Fail(place, type + " resources have no meaning here; forms are made by classes");
    return type;
  }

  void ReadContent(Resource& resource) {
    SkipAttributes();
    if (cursor.Peek().kind == RcToken::cEnd) cursor.FailExpected("BEGIN or a file's name");
    if (cursor.Peek().IsBegin()) {
      resource.bytes = ReadData();
      return;
    }
    const Place place = cursor.Peek().place;
    resource.file = cursor.TakeFileName();
    if (resource.file.empty()) cursor.Fail(place, "the file's name is empty");
    if (resource.file.find('\0') != std::string::npos)
      cursor.Fail(place, "a file's name holds no NUL");
  }

  std::string ReadData() {
    cursor.Next();
    std::string bytes;
    while (!cursor.Peek().IsEnd()) {
      const RcToken token = cursor.Peek();
      if (token.kind == RcToken::cString)
        bytes += cursor.Next().text;
      else if (token.kind == RcToken::cWideString)
        AppendWide(bytes, cursor.Next());
      else if (BeginsExpression(token))
        AppendInteger(bytes, token.place);
      else
        cursor.FailExpected("a number, a text or END");
      cursor.Match(',');
    }
    cursor.Next();
    return bytes;
  }

  void AppendWide(std::string& bytes, const RcToken& token) {
    if (!AppendUtf16(bytes, token.text)) cursor.Fail(token.place, "the text is no UTF-8");
  }

  void AppendInteger(std::string& bytes, const Place& place) {
    const RcNumber number = ReadExpression(cursor);
    if (!number.isLong && (number.value < -0x8000 || number.value > 0xFFFF))
      cursor.Fail(place, std::to_string(number.value) + " needs 32 bits: write it with an L");
    AppendNumber(bytes, static_cast<uint64_t>(number.value), number.isLong ? 4 : 2);
  }

  // Each text is a resource of its own, so that it is found by its id.
  void ReadStrings(ResourceList& list) {
    cursor.Next();
    SkipAttributes();
    if (!cursor.Peek().IsBegin()) cursor.FailExpected("BEGIN");
    cursor.Next();
    while (!cursor.Peek().IsEnd()) {
      Resource resource;
      resource.type = "STRINGTABLE";
      resource.place = cursor.Peek().place;
      resource.id = ReadId();
      cursor.Match(',');
      if (!cursor.Peek().IsString()) cursor.FailExpected("a text in quotes");
      while (cursor.Peek().IsString()) resource.bytes += cursor.Next().text;
      cursor.Match(',');
      Add(list, std::move(resource));
    }
    cursor.Next();
  }

  using Key = std::tuple<std::string, uint64_t, std::string>;

  RcCursor cursor;
  std::map<Key, Place> places;  // of the resources read so far
};

}  // namespace

ResourceList ReadScript(std::string_view text, const std::string& file) {
  ResourceList list;
  try {
    ScriptReader(text, file).Read(list);
  } catch (const ScriptError& error) {
    list.error = error.message;
  }
  return list;
}

}  // namespace zendry
