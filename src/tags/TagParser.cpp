#include "tags/TagParser.h"

#include <algorithm>
#include <functional>
#include <iterator>

#include "AsciiCase.h"
#include "Assert.h"
#include "base/Paths.h"
#include "base/Shell.h"
#include "base/TraceLog.h"
#include "tags/TagC.h"
#include "tags/TagChars.h"
#include "tags/TagData.h"

namespace zendry {

TagParser theTagParser;

namespace {

constexpr size_t cLongestExtension = 3;
constexpr int cPrivateLetter = 'i', cProtectedLetter = 'o';
constexpr size_t cAccessLetter = 2;  // the letter that is different in each access text

bool IsClassLike(char kind) {
  return kind == 's' || kind == 'c' || kind == 'u';
}

// True for data members and functions.
bool MayBeMember(const TagItem& item) {
  return item.kind == 'm' || item.kind == 'p' || item.kind == 'f';
}

// The class that an enumerator's enumeration is in, or the enumeration's own name.
std::string_view ClassName(const TagFacts& entry) {
  MAVRO_ASSERT_AS(entry.scopeName.data() != nullptr, "clsN!=NULL");
  const size_t last = entry.kind == 'e' ? entry.scopeName.rfind("::") : std::string_view::npos;
  return entry.scopeName.substr(0, last);
}

}  // namespace

bool TagParser::parseBuffer(TagData& newTagData, FileReader* newReader, bool includeLocals) {
  EnableKind(Language::cC, TagType::cLocal, includeLocals);
  Bind(newTagData, newReader);
  parseFile(tagData->fileName, 0);
  return true;
}

void TagParser::Bind(TagData& newTagData, FileReader* newReader) {
  tagData = &newTagData;
  reader = newReader == nullptr ? &defaultReader : newReader;
}

bool TagParser::parseFile(const std::string& path, int newFileId) {
  MAVRO_ASSERT(tagData != nullptr);
  fileId = newFileId;
  bodies.Start();
  bool isHeader = false;
  const std::optional<Language> named = languageOf(path, isHeader);
  const std::optional<Language> told = language ? language : named;
  if (!told) return false;
  bool isAgainWanted = false;
  for (int passCount = 1; OpenSource(path); ++passCount) {
    const bool isAgain = theTagC.runPass(passCount, *told, isHeader);
    isAgainWanted = isAgainWanted || isAgain;
    if (!isAgain) break;
  }
  reader->close();
  return isAgainWanted;
}

std::optional<Language> TagParser::languageOf(std::string_view path, bool& isHeader) {
  isHeader = false;
  const size_t stop = path.find_last_of("./\\");
  if (stop != path.npos && path[stop] != '.') {
    isHeader = true;
    return Language::cCpp;
  }
  const int kind = FileKind(path);
  isHeader = kind == cHeader;
  if (isHeader || kind == cCppSource) return Language::cCpp;
  const size_t start = stop == path.npos ? std::min<size_t>(1, path.size()) : stop + 1;
  const std::string_view extension = path.substr(start, cLongestExtension);
  for (const LanguageRecord& record : Languages())
    for (const std::string_view each : record.extensions) {
      if (!mavro::EqualNoCase(each, extension)) continue;
      isHeader = record.language == Language::cCpp && (extension[0] == 'h' || extension[0] == 'H');
      return record.language;
    }
  return {};
}

bool TagParser::OpenSource(const std::string& path) {
  gaveUp = false;
  const bool isOpen = reader->IsOpen();
  if (!(isOpen ? reader->Rewind(path.c_str()) : reader->open(path.c_str())).Ok()) {
    logMessage("cannot open:", path);
    return false;
  }
  tagData->Changed();
  theCpp.lines.Start(*reader, storesTags ? tagData : nullptr);
  tagCount = 0;
  blockCount = 0;
  source = path;
  lastType.clear();
  lastClass = nullptr;
  return true;
}

void TagParser::logMessage(std::string_view text, std::string_view detail) {
  shell ? LogMessage(*shell, text, detail) : TraceMessage(text, detail);
}

void TagParser::addTag(const TagFacts& entry) {
  const bool isDropped = entry.name.empty() || (entry.name.front() == '_' && !keepReserved);
  if (isDropped || tagCount > mostTags) return;
  CountTag();
  TagFacts told = entry;
  if (entry.typeRef == "@")
    told.typeRef = lastType;
  else if (entry.typeRef.data() != nullptr)
    lastType = entry.typeRef;
  if (storesTags && IsClassLike(entry.kind))
    StoreClass(told);
  else if (storesTags)
    StoreItem(told);
  if (found) found(told);
}

void TagParser::NoteLook(const char* end) {
  bodies.LookAhead(theCpp.lines.PlaceOf(theCpp.lines.lineStart), theCpp.lines.PlaceOf(end));
}

void TagParser::SetLimits(int newMostTags, size_t longestLine) {
  mostTags = newMostTags;
  theCpp.lines.longestLine = longestLine;
}

size_t TagParser::MemberCount(std::string_view className) const {
  if (className.empty()) return tagData->globals.size();
  const auto found = tagData->classes.find(className);
  return found == tagData->classes.end() ? 0 : found->second.members.size();
}

void TagParser::AddMemberMacro(std::string_view className, std::string_view name) {
  const auto found = tagData->classes.find(className);
  if (found == tagData->classes.end()) return;
  std::vector<std::string>& macros = found->second.macros;
  if (macros.empty() || macros.back() != name) macros.emplace_back(name);
}

void TagParser::AddReopened(std::string_view className, std::string_view name) {
  const auto found = tagData->classes.find(className);
  if (found != tagData->classes.end()) found->second.reopened.emplace_back(name);
}

void TagParser::AddFriend(std::string_view className, std::string_view name) {
  const auto found = tagData->classes.find(className);
  if (found != tagData->classes.end()) found->second.friends.emplace_back(name);
}

void TagParser::MoveMembers(std::string_view from, size_t first, std::string_view to, int access) {
  const auto target = tagData->classes.find(to);
  if (target == tagData->classes.end() || from == to || first >= MemberCount(from)) return;
  std::vector<TagItem>& members = EnsureClass(from).members;
  const auto begin = members.begin() + static_cast<std::ptrdiff_t>(first);
  const bool isHidden = access == cPrivateLetter || access == cProtectedLetter;
  for (auto member = begin; isHidden && member != members.end(); ++member) member->access = access;
  std::move(begin, members.end(), std::back_inserter(target->second.members));
  members.erase(begin, members.end());
}

std::string TagParser::NameBlock(std::string_view from, size_t first, char kind, int line) {
  const std::string name = "<anonymous " + std::to_string(++blockCount) + " of " + source + ">";
  if (first >= MemberCount(from)) return name;
  std::vector<TagItem>& items = from.empty() ? tagData->globals : EnsureClass(from).members;
  TagClass& record = EnsureClass(name);
  record.name = name;
  record.line = line;
  record.fileId = HeaderId(fileId);
  record.kind = kind;
  const auto begin = items.begin() + static_cast<std::ptrdiff_t>(first);
  const auto moved = std::stable_partition(begin, items.end(), std::not_fn(MayBeMember));
  std::move(moved, items.end(), std::back_inserter(record.members));
  items.erase(moved, items.end());
  return name;
}

void TagParser::CountTag() {
  if (++tagCount <= mostTags) return;
  logMessage("To many tags");
  gaveUp = true;
  theCpp.Stop();
}

// The class of this name, created when there is none. Tags of one class follow each other, so the
// class of the last tag is tried first.
TagClass& TagParser::EnsureClass(std::string_view name) {
  if (lastClass != nullptr && lastClassName == name) return *lastClass;
  auto at = tagData->classes.lower_bound(name);
  if (at == tagData->classes.end() || at->first != name)
    at = tagData->classes.emplace_hint(at, std::string(name), TagClass());
  lastClass = &at->second;
  lastClassName = at->first;
  return *lastClass;
}

// The members of the class of this name, which is known only from them when it is new.
std::vector<TagItem>& TagParser::MembersOf(std::string_view className) {
  TagClass& record = EnsureClass(className);
  if (record.name.empty()) {
    record.name = className;
    record.line = -1;
    record.fileId = HeaderId(fileId);
    record.kind = 0;
    record.owner = nullptr;
  }
  return record.members;
}

void TagParser::StoreItem(const TagFacts& facts) {
  const bool isMember = facts.scopeKind.data() != nullptr;
  TagItem& item = (isMember ? MembersOf(ClassName(facts)) : tagData->globals).emplace_back();
  item.line = facts.lineNumber;
  item.fileId = HeaderId(fileId);
  item.kind = facts.kind;
  item.name = facts.name;
  item.signature = facts.signature;
  item.type = facts.blockType.empty() ? facts.typeRef : facts.blockType;
  if (isMember && facts.access.size() > cAccessLetter) item.access = facts.access[cAccessLetter];
  item.isFriend = isMember && facts.access == cFriendAccess;
}

void TagParser::StoreClass(const TagFacts& facts) {
  const std::string_view className = ClassName(facts);
  TagClass& record = EnsureClass(className);
  record.name = className;
  record.line = facts.lineNumber;
  record.type = facts.typeRef;
  record.kind = facts.kind;
  record.fileId = HeaderId(fileId);
  record.serial = ++tagData->classCount;
  record.nameSpace = facts.namespaceName;
  if (facts.inheritance.data() == nullptr) return;
  record.inheritance = facts.inheritance;
  record.hiddenBases = facts.hiddenBases;
}

}  // namespace zendry
