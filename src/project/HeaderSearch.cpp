#include "project/HeaderSearch.h"

#include <algorithm>
#include <chrono>
#include <limits>
#include <list>
#include <map>
#include <set>
#include <utility>

#include "FilePath.h"
#include "FileText.h"
#include "base/TextReader.h"
#include "project/IncludeFile.h"
#include "tags/IncludeScan.h"
#include "tags/TagData.h"
#include "tags/TagLanguages.h"
#include "tags/TagParser.h"

namespace zendry {

namespace {

constexpr size_t cMostFiles = 2000;
constexpr size_t cLargestFile = 4 << 20;
constexpr auto cPatience = std::chrono::seconds(1);

// How well a tag fits what is sought; the best is 0.
enum Rank { cExactly, cNotMember, cInOtherNamespace, cNotAtAll };

// While it lives, the parser keeps all names, those of variables that are defined elsewhere too,
// says nothing, and hands its tags to a function.
class PatientParser {
 public:
  explicit PatientParser(std::function<void(const TagFacts&)> found)
      : keptMost(theTagParser.mostTags),
        keptFound(std::exchange(theTagParser.found, std::move(found))),
        keptShell(std::exchange(theTagParser.shell, nullptr)) {
    theTagParser.mostTags = std::numeric_limits<int>::max() - 1;
    EnableKind(Language::cCpp, TagType::cExternVar, true);
  }
  ~PatientParser() {
    theTagParser.mostTags = keptMost;
    theTagParser.found = std::move(keptFound);
    theTagParser.shell = keptShell;
    EnableKind(Language::cCpp, TagType::cExternVar, hadExtern);
  }
  PatientParser(const PatientParser&) = delete;
  PatientParser& operator=(const PatientParser&) = delete;

 private:
  const ReservedNamesKept allNames;
  const bool hadExtern = IsKindEnabled(Language::cCpp, TagType::cExternVar);
  int keptMost;
  std::function<void(const TagFacts&)> keptFound;
  OutputShell* keptShell;
};

bool IsWordLetter(char c) {
  return c == '_' || (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool HasWord(std::string_view text, std::string_view word) {
  for (size_t at = text.find(word); at != text.npos; at = text.find(word, at + 1)) {
    const size_t end = at + word.size();
    const bool isWord = (at == 0 || !IsWordLetter(text[at - 1])) &&
                        (end == text.size() || !IsWordLetter(text[end]));
    if (isWord) return true;
  }
  return false;
}

std::string_view LastName(std::string_view name) {
  const size_t colon = name.rfind("::");
  return colon == name.npos ? name : name.substr(colon + 2);
}

bool IsClassLike(const TagFacts& facts) {
  return facts.kind == 'c' || facts.kind == 's' || facts.kind == 'u';
}

// The class that a tag is in; empty for a tag in none.
std::string_view ClassAround(const TagFacts& facts) {
  std::string_view scope = facts.scopeName;
  if (!facts.namespaceName.empty() && scope.starts_with(facts.namespaceName))
    scope.remove_prefix(std::min(facts.namespaceName.size() + 2, scope.size()));
  if (!IsClassLike(facts)) return scope;
  const size_t colon = scope.rfind("::");
  return colon == scope.npos ? std::string_view() : scope.substr(0, colon);
}

// The parts of a namespace but for those that the library hides, such as "__cxx11".
std::vector<std::string_view> PartsOf(std::string_view nameSpace) {
  std::vector<std::string_view> parts;
  while (!nameSpace.empty()) {
    const std::string_view part = nameSpace.substr(0, nameSpace.find("::"));
    nameSpace.remove_prefix(std::min(part.size() + 2, nameSpace.size()));
    if (!part.starts_with('_')) parts.push_back(part);
  }
  return parts;
}

Rank RankOf(const TagFacts& facts, const UnplacedName& sought) {
  if (facts.name != sought.name) return cNotAtAll;
  const std::string_view around = ClassAround(facts);
  const bool isMember = !around.empty() && std::any_of(sought.classes.begin(), sought.classes.end(),
                                                       [&](const std::string& each) {
                                                         return LastName(each) == LastName(around);
                                                       });
  if (isMember) return cExactly;
  if (!around.empty() || sought.isMember) return cNotAtAll;
  const std::vector<std::string_view> parts = PartsOf(facts.namespaceName);
  const bool isThere = sought.nameSpace.empty()
                           ? parts.size() <= 1
                           : !parts.empty() && parts.back() == sought.nameSpace;
  if (!isThere) return cInOtherNamespace;
  return sought.classes.empty() || !sought.nameSpace.empty() ? cExactly : cNotMember;
}

// True for the tag of an "#undef".
bool IsUndefined(const TagFacts& facts, std::string_view text) {
  if (facts.kind != 'd') return false;
  for (int line = 1; line < facts.lineNumber && !text.empty(); ++line)
    text.remove_prefix(std::min(text.find('\n'), text.size() - 1) + 1);
  return text.substr(0, text.find('\n')).find("undef") != text.npos;
}

// The search in progress: files in the order in which they are reached.
class HeaderSearch {
 public:
  HeaderSearch(const Project& project, const UnplacedName& itsName, const OpenTextOf& itsOpenText)
      : includes(project), sought(itsName), openText(itsOpenText) {}

  std::optional<CodePlace> Run(const std::string& path) {
    const auto end = std::chrono::steady_clock::now() + cPatience;
    Reach(path, files.end());
    while (!files.empty() && best != cExactly && std::chrono::steady_clock::now() < end) {
      const std::string next = std::move(files.front());
      files.pop_front();
      Read(next);
    }
    return place;
  }

 private:
  using Files = std::list<std::string>;

  void Reach(const std::string& path, Files::const_iterator before) {
    if (!path.empty() && reached.size() < cMostFiles && reached.insert(path).second)
      files.insert(before, path);
  }

  // Each name is looked for once: the system's headers include each other all the time.
  const std::string& FileOf(const IncludeRec& include, const std::string& from) {
    const std::string folder = include.quoted ? mavro::FolderOf(from) + "\n" : "";
    const auto [known, isNew] = found.try_emplace(folder + include.name);
    if (isNew) known->second = includes.Find(from, include.name, include.quoted);
    return known->second;
  }

  void Read(const std::string& path) {
    std::optional<std::string> text = openText ? openText(path) : std::nullopt;
    if (!text) {
      mavro::FileText file = mavro::ReadFileText(path);
      if (!file.Ok() || file.text.size() > cLargestFile) return;
      text = std::move(file.text);
    }
    const Rank before = best;
    if (HasWord(*text, sought.name)) Parse(path, *text);
    if (best == cExactly) return;
    // A header that has nearly what is sought often includes the one that has it: "pmr::string".
    const Files::const_iterator next = best < before ? files.cbegin() : files.cend();
    for (const IncludeRec& include : ScanIncludes(*text)) Reach(FileOf(include, path), next);
  }

  void Parse(const std::string& path, std::string_view text) {
    const PatientParser parser([&](const TagFacts& facts) {
      const Rank rank = RankOf(facts, sought);
      if (rank >= best || IsUndefined(facts, text)) return;
      best = rank;
      place = CodePlace{path, std::max(facts.lineNumber - 1, 0), sought.name};
    });
    TagData tags;
    tags.fileName = path;
    TextReader reader(text);
    theTagParser.parseBuffer(tags, &reader, false);
    theTagParser.Bind(tags);
  }

  IncludeSearch includes;
  const UnplacedName& sought;
  const OpenTextOf& openText;
  Files files;  // that are still to be read
  std::set<std::string> reached;
  std::map<std::string, std::string> found;  // the files of includes
  Rank best = cNotAtAll;
  std::optional<CodePlace> place;
};

}  // namespace

std::optional<CodePlace> FindInHeaders(const Project& project, const std::string& path,
                                       const UnplacedName& sought, const OpenTextOf& openText) {
  if (sought.name.empty()) return std::nullopt;
  return HeaderSearch(project, sought, openText).Run(path);
}

}  // namespace zendry
