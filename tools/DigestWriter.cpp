#include "DigestWriter.h"

#include <algorithm>
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

std::vector<DigestPart> WriteDigest(const Library& library) {
  return Digest(library).Write();
}

}  // namespace zendry
