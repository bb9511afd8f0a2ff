#include "DigestWriter.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <set>
#include <utility>

#include "DigestText.h"

namespace zendry {

namespace {

constexpr size_t cMostTags = 1000;  // the parser takes 1025 from a file
constexpr size_t cLongestLine = 1000;
constexpr int cDeepestBase = 8;

bool IsHidden(const std::string& name) {
  return name.empty() || name.front() == '_' || name.starts_with("~_");
}

// "string" for each alias "string" of "basic_string<...>".
std::set<std::string, std::less<>> FamiliesOf(const Library& library) {
  std::set<std::string, std::less<>> families;
  for (const LibraryAlias& alias : library.aliases)
    for (const CppToken& token : alias.type)
      if (token.text.starts_with(cFamilyPrefix) &&
          token.text.substr(cFamilyPrefix.size()) == alias.name)
        families.insert(alias.name);
  return families;
}

class ClassWriter {
 public:
  ClassWriter(const Library& library, const DigestText& words) : library(library), words(words) {}

  // The lines of a class; none for a class without anything to show. Counts its tags.
  std::string Write(const LibraryClass& written, const std::string& indent) {
    const std::string name = words.Name(written.name);
    std::vector<std::string> bases;
    std::string body;
    Seen seen;
    WriteMembers(written, name, indent + "  ", body, bases, seen, 0);
    if (body.empty() && bases.empty()) return "";
    ++tags;
    return Head(name, bases, indent) + body + indent + "};\n";
  }

  // A class of this name that inherits all members from `base`.
  std::string WriteDerived(const std::string& name, const std::string& base) {
    ++tags;
    return Head(name, {base}, "") + "};\n";
  }

  size_t tags = 0;

 private:
  struct Seen {
    std::set<std::string> names;  // of classes on the way to a base
    std::set<std::string> lines;
  };

  using HiddenTypes = std::map<std::string_view, const CppTokens*>;

  // Types that a class names for its own use only.
  static HiddenTypes HiddenTypesOf(const LibraryClass& from) {
    HiddenTypes types;
    for (const LibraryMember& member : from.members)
      if (member.kind == LibraryMember::cType && IsHidden(member.name))
        types[member.name] = &member.type;
    return types;
  }

  // The tokens with each such name replaced by its type.
  static CppTokens Shown(const CppTokens& tokens, const HiddenTypes& types) {
    CppTokens shown;
    for (const CppToken& token : tokens) {
      const auto found = types.find(token.text);
      if (found == types.end())
        shown.push_back(token);
      else
        shown.insert(shown.end(), found->second->begin(), found->second->end());
    }
    return shown;
  }

  static std::string Head(const std::string& name, const std::vector<std::string>& bases,
                          const std::string& indent) {
    std::string head = indent + "class " + name;
    for (size_t i = 0; i < bases.size(); ++i) head += (i ? ", public " : " : public ") + bases[i];
    return head + " {\n" + indent + "public:\n";
  }

  // Members of a class and, as if they were its own, of its hidden bases. A declaration of a class
  // hides those of its bases with the same name.
  void WriteMembers(const LibraryClass& from, const std::string& owner, const std::string& indent,
                    std::string& body, std::vector<std::string>& bases, Seen& seen, int depth) {
    std::set<std::string> declared;
    const HiddenTypes types = HiddenTypesOf(from);
    for (const LibraryMember& member : from.members) {
      if (IsHidden(member.name) || (depth > 0 && seen.names.contains(member.name))) continue;
      declared.insert(member.name);
      AddLine(Line(member, types, from, owner, depth), indent, body, seen);
    }
    for (const LibraryClass& inner : from.nested)
      if (!IsHidden(inner.name) && declared.insert(inner.name).second) body += Write(inner, indent);
    seen.names.merge(declared);
    for (const LibraryBase& base : from.bases) {
      if (!IsHidden(base.name)) {
        const std::string name = words.Name(base.name);
        // A specialisation's base of its own name, or a type that a template computes.
        if (name == owner || !library.byName.contains(base.name)) continue;
        if (std::find(bases.begin(), bases.end(), name) == bases.end()) bases.push_back(name);
      } else if (const auto found = library.byName.find(base.name);
                 found != library.byName.end() && depth < cDeepestBase) {
        WriteMembers(library.classes[found->second], owner, indent, body, bases, seen, depth + 1);
      }
    }
  }

  // The line of a member; empty for constructors and assignments of a base, which the class doesn't
  // have.
  std::string Line(const LibraryMember& member, const HiddenTypes& types, const LibraryClass& from,
                   const std::string& owner, int depth) const {
    const std::string& name = from.name;
    std::string shown = member.name == name ? owner : member.name;
    const bool isMaking = member.name == name || member.name == "~" + name;
    if (depth > 0 && (isMaking || member.name == "operator =")) return "";
    if (member.kind == LibraryMember::cType)
      return "typedef " + words.Type(Shown(member.type, types)) + " " + shown + ";";
    std::string line = member.isStatic ? "static " : "";
    if (shown.starts_with("operator _")) shown = "operator " + words.Name(shown.substr(9));
    const bool isConversion = shown.starts_with("operator ") && member.type.empty();
    if (!isMaking && !isConversion) line += words.Type(Shown(member.type, types)) + " ";
    line += member.name == "~" + name ? "~" + owner : shown;
    if (member.kind == LibraryMember::cFunction) {
      line += words.Parameters(Shown(member.parameters, types));
      if (member.isConst) line += " const";
    }
    return line + ";";
  }

  void AddLine(const std::string& line, const std::string& indent, std::string& body, Seen& seen) {
    if (line.empty() || line.size() > cLongestLine || !seen.lines.insert(line).second) return;
    body += indent + line + "\n";
    ++tags;
  }

  const Library& library;
  const DigestText& words;
};

class Digest {
 public:
  explicit Digest(const Library& library)
      : library(library), words(FamiliesOf(library)), writer(library, words) {}

  std::vector<DigestPart> Write() {
    for (const LibraryClass& written : library.classes)
      if (!IsHidden(written.name))
        Add(written.header, writer.Write(written, ""), words.Name(written.name));
    for (const LibraryAlias& alias : library.aliases) WriteAlias(alias);
    std::stable_sort(parts.begin(), parts.end(),
                     [](const DigestPart& a, const DigestPart& b) { return a.header < b.header; });
    return std::move(parts);
  }

 private:
  void WriteAlias(const LibraryAlias& alias) {
    std::string base;
    for (const CppToken& token : alias.type) {
      if (token.Is("<")) break;
      if (token.kind == CppToken::Kind::cWord) base = words.Name(token.text);
    }
    if (IsHidden(alias.name) || !names.contains(base) || names.contains(alias.name)) return;
    Add(alias.header, writer.WriteDerived(alias.name, base), alias.name);
  }

  void Add(int header, const std::string& text, const std::string& name) {
    const size_t tags = std::exchange(writer.tags, 0);
    if (text.empty() || !names.insert(name).second) return;
    const auto [place, isNew] = open.try_emplace(header, parts.size());
    if (isNew || tagsOf[place->second] + tags > cMostTags) {
      place->second = parts.size();
      parts.push_back({header, ""});
      tagsOf.push_back(0);
    }
    parts[place->second].text += text;
    tagsOf[place->second] += tags;
  }

  const Library& library;
  const DigestText words;
  ClassWriter writer;
  std::set<std::string> names;  // classes written
  std::vector<DigestPart> parts;
  std::vector<size_t> tagsOf;  // each of `parts`
  std::map<int, size_t> open;  // the part of each header that is being filled
};

}  // namespace

namespace {

// "sinf32x", "M_PIf128".
bool IsFloatingVariant(std::string_view name) {
  constexpr std::string_view cEndings[] = {"f16", "f32", "f64", "f128", "f32x", "f64x", "f128x"};
  return std::any_of(std::begin(cEndings), std::end(cEndings), [&](std::string_view ending) {
    return name.size() > ending.size() + 2 && name.ends_with(ending);
  });
}

char KindOf(const LibraryName& name) {
  switch (name.kind) {
    case LibraryName::cType:
      return 't';
    case LibraryName::cEnumerator:
      return 'e';
    case LibraryName::cMacro:
      return 'd';
    default:
      return name.member.kind == LibraryMember::cFunction ? 'p' : 'x';
  }
}

class NameWriter {
 public:
  explicit NameWriter(const Library& theLibrary, bool isC)
      : library(theLibrary), words(FamiliesOf(theLibrary), isC) {
    for (const LibraryName& name : library.names)
      if (name.space.empty() && name.kind != LibraryName::cElsewhere)
        outside[name.member.name].push_back(&name);
  }

  std::string Write(const std::string& space) {
    for (const LibraryName& name : library.names) {
      if (!name.isInside || IsFloatingVariant(name.member.name)) continue;
      if (name.kind == LibraryName::cElsewhere) {
        for (const LibraryName* meant : outside[name.member.name]) Add(name.space, *meant);
      } else {
        Add(name.space, name);
      }
    }
    for (const LibraryClass& inner : library.classes)
      if ((space.empty() || inner.space != space) && !IsHidden(inner.name))
        lines[inner.space + " " + words.Name(inner.name)].insert("c\t\t");
    std::string text;
    for (const auto& [key, rests] : lines)
      for (const std::string& rest : rests)
        if (!IsForeshadowed(rest, rests)) text += key + "\t" + rest + "\n";
    return text;
  }

 private:
  using Rests = std::set<std::string>;

  static std::string_view ParametersOf(std::string_view rest) {
    return rest.substr(rest.rfind('\t') + 1);
  }

  // True if there is another declaration with as many parameters, and only that one names them; or
  // without the policy of execution.
  static bool IsForeshadowed(const std::string& rest, const Rests& rests) {
    constexpr std::string_view cPolicy = "(ExecutionPolicy&&";
    const std::string_view own = ParametersOf(rest);
    if (own.starts_with(cPolicy)) return rests.size() > 1;
    if (own.size() < 3 || NamesParameters(own)) return false;
    return std::any_of(rests.begin(), rests.end(), [&](const std::string& other) {
      const std::string_view parameters = ParametersOf(other);
      return NamesParameters(parameters) && CountOf(parameters) == CountOf(own);
    });
  }

  // Names of parameters are written small here; types that stand alone are not.
  static bool NamesParameters(std::string_view parameters) {
    const size_t end = parameters.find_last_not_of(")");
    const size_t blank = parameters.rfind(' ', end);
    if (end == parameters.npos || blank == parameters.npos) return false;
    const std::string_view last = parameters.substr(blank + 1, end - blank);
    const bool isOneOfSeveral = parameters[blank - 1] == ',';
    return !isOneOfSeveral && std::all_of(last.begin(), last.end(), [](unsigned char c) {
      return std::isalnum(c) || c == '_';
    });
  }

  static std::ptrdiff_t CountOf(std::string_view parameters) {
    return std::count(parameters.begin(), parameters.end(), ',');
  }

  // The type that a name with a leading underscore stands for, and "auto" for one of the library's
  // own namespaces.
  std::string TypeOf(CppTokens type) const {
    for (int depth = 0; depth < cDeepestBase && type.size() == 1; ++depth) {
      const auto hidden = library.hiddenTypes.find(std::string(type[0].text));
      if (hidden == library.hiddenTypes.end()) break;
      type = hidden->second;
    }
    for (size_t i = 0; i + 1 < type.size(); ++i)
      if (type[i].text.starts_with("__") && type[i + 1].Is("::")) return "auto";
    return words.Type(type);
  }

  // A macro stands back for a declaration: "stdin" is both.
  void Add(const std::string& space, const LibraryName& name) {
    const LibraryMember& member = name.member;
    const bool isFunction = member.kind == LibraryMember::cFunction;
    const bool isMacro = name.kind == LibraryName::cMacro;
    const bool isClass =
        library.byName.contains(member.name) || words.Name(member.name) != member.name;
    if (isClass && !isMacro && !isFunction) return;
    Rests& rests = lines[space + " " + member.name];
    if (isMacro && !rests.empty()) return;
    const std::string type = isMacro ? "" : TypeOf(member.type);
    if (name.kind == LibraryName::cType && type == member.name) return;
    std::string parameters;
    if (isFunction)
      parameters = isMacro ? std::string(member.parameters.front().text)
                           : words.Parameters(member.parameters);
    rests.insert(std::string(1, KindOf(name)) + "\t" + type + "\t" + parameters);
  }

  const Library& library;
  const DigestText words;
  std::map<std::string, std::vector<const LibraryName*>> outside;
  std::map<std::string, Rests> lines;  // by namespace and name
};

}  // namespace

std::string WriteNames(const Library& library, const std::string& space) {
  return NameWriter(library, space.empty()).Write(space);
}

std::vector<DigestPart> WriteDigest(const Library& library) {
  return Digest(library).Write();
}

}  // namespace zendry
