#include "code/MemberEdits.h"

#include <algorithm>
#include <memory>

#include "base/FileKinds.h"
#include "base/TextDigest.h"
#include "code/CodeSources.h"
#include "code/OuterDefinition.h"
#include "code/PrototypeText.h"
#include "code/SourceShape.h"

namespace zendry {

namespace {

constexpr int cFunction = 'f';
constexpr int cPrototype = 'p';
constexpr int cMacro = 'd';
constexpr int cTypedef = 't';
constexpr int cEnumeration = 'g';

using Want = SymbolPlaces::Want;

std::string_view LastName(std::string_view name) {
  const size_t colon = name.rfind("::");
  return colon == name.npos ? name : name.substr(colon + 2);
}

// The name of a path's file without its extension.
std::string_view StemOf(std::string_view path) {
  path.remove_prefix(path.rfind('/') + 1);
  return path.substr(0, path.rfind('.'));
}

bool IsBlankText(std::string_view text) {
  return text.find_first_not_of(" \t\r\n") == text.npos;
}

// The lines of a macro, with those that continue it.
std::optional<TextRange> MacroRange(const std::string& text, int line, std::string_view name) {
  size_t start = 0;
  for (int i = 1; i < line && start != text.npos; ++i) {
    start = text.find('\n', start);
    if (start != text.npos) ++start;
  }
  if (start == text.npos) return std::nullopt;
  size_t end = start;
  for (bool goesOn = true; goesOn && end < text.size();) {
    const size_t next = std::min(text.find('\n', end), text.size());
    const std::string_view its = std::string_view(text).substr(end, next - end);
    goesOn = its.ends_with('\\') || its.ends_with("\\\r");
    end = std::min(next + 1, text.size());
  }
  const std::string_view found = std::string_view(text).substr(start, end - start);
  const bool isIt = found.find("define") != found.npos && found.find(name) != found.npos;
  return isIt ? std::optional(TextRange{start, end}) : std::nullopt;
}

// True if a statement has a comma that separates names.
bool DeclaresMore(const CodeTokens& tokens, const SourceShape::Statement& statement) {
  for (int at = statement.begin; at < statement.end; ++at) {
    // What follows a ":" are bit fields, bases or member values.
    if (tokens.IsOneOf(at, ": {")) return false;
    if (tokens.Is(at, "<")) at = std::max(at, tokens.AngleEnd(at));
    if (tokens.IsOpening(at)) at = tokens.Partner(at);
    if (tokens.Is(at, ",")) return true;
  }
  return false;
}

// True if one of two functions that are no members may be the other's declaration: a file may have
// a static function of the same name.
bool IsSeenFrom(const TagItem& a, const TagItem& b) {
  const std::string& first = a.module->fileName;
  const std::string& second = b.module->fileName;
  if (StemOf(first) == StemOf(second)) return true;
  const auto includes = [](const TagData& module, const std::string& header) {
    const std::string_view name = std::string_view(header).substr(header.rfind('/') + 1);
    return std::any_of(module.includes.begin(), module.includes.end(), [&](const IncludeRec& rec) {
      return std::string_view(rec.name).substr(rec.name.rfind('/') + 1) == name;
    });
  };
  return includes(*a.module, second) || includes(*b.module, first);
}

// Grows a range to whole lines, if nothing else is in them. A blank line goes with it if there is
// another one before.
TextRange WholeLines(const SourceShape& shape, TextRange range) {
  const std::string_view text = shape.text;
  const size_t lineStart = shape.LineStart(range.start);
  if (!IsBlankText(text.substr(lineStart, range.start - lineStart))) return range;
  size_t end = shape.LineEnd(range.end);
  const std::string_view after = text.substr(range.end, end - range.end);
  const size_t word = after.find_first_not_of(" \t");
  if (word != after.npos && !after.substr(word).starts_with("//")) return range;
  end = std::min(text.find('\n', end), text.size());
  range = {lineStart, std::min(end + 1, text.size())};
  const size_t nextEnd = std::min(text.find('\n', range.end), text.size());
  const bool isBlankAfter = IsBlankText(text.substr(range.end, nextEnd - range.end));
  const size_t before = range.start == 0 ? 0 : shape.LineStart(range.start - 1);
  const bool isBlankBefore = IsBlankText(text.substr(before, range.start - before));
  if (isBlankAfter && isBlankBefore) range.end = std::min(nextEnd + 1, text.size());
  return range;
}

}  // namespace

struct MemberEdits::File {
  File(std::string path, std::string text, const IndentHabits& usual)
      : shape(std::make_unique<SourceShape>(std::move(text))),
        habits(LearnHabits(shape->text, usual)),
        isAttached(shape->HasAttachedBraces(habits)) {
    edits.path = std::move(path);
    edits.digest = DigestOf(shape->text);
  }

  std::string Deeper(const std::string& indent, IndentHabit habit) const {
    int columns = 0;
    for (const char c : indent)
      columns = c == '\t' ? (columns / habits.tabWidth + 1) * habits.tabWidth : columns + 1;
    const int more = habits.Of(habit) > 0 ? habits.Of(habit) : habits.unit;
    return indent + BlanksOf(columns, columns + more, habits);
  }
  // The braces after a head, with an empty line in them. `caret` becomes the end of that line.
  std::string WithBody(std::string head, const std::string& indent, size_t& caret) const {
    const std::string newLine(shape->NewLine());
    head += isAttached ? " {" + newLine : newLine + indent + "{" + newLine;
    head += Deeper(indent, IndentHabit::cBlock);
    caret = head.size();
    return head + newLine + indent + "}";
  }
  // `caretIn`: of the caret in the text.
  void Insert(size_t offset, std::string text, std::optional<size_t> caretIn = {}) {
    size_t moved = offset;
    for (const TextEdit& edit : edits.edits) moved = moved - edit.length + edit.text.size();
    if (caretIn) edits.caret = moved + *caretIn;
    edits.edits.push_back({offset, 0, std::move(text)});
  }
  // The place after a statement and the comment beside it. `isLine` becomes false if more follows
  // in the line.
  size_t After(const SourceShape::Statement& statement, bool& isLine) const {
    const size_t end = static_cast<size_t>(shape->tokens.End(statement.end - 1));
    const size_t lineEnd = shape->LineEnd(end);
    const bool hasMore = statement.end < shape->tokens.Count() &&
                         static_cast<size_t>(shape->tokens.Start(statement.end)) < lineEnd;
    const std::string_view rest = std::string_view(shape->text).substr(end, lineEnd - end);
    const bool hasOpenComment =
        rest.rfind("/*") != rest.npos &&
        (rest.rfind("*/") == rest.npos || rest.rfind("*/") < rest.rfind("/*"));
    isLine = !hasMore && !hasOpenComment;
    return isLine ? lineEnd : end;
  }

  std::unique_ptr<SourceShape> shape;
  IndentHabits habits;
  bool isAttached;
  FileEdits edits;
};

std::optional<MemberEdits::File> MemberEdits::Open(const std::string& path) {
  std::optional<std::string> text = read(path);
  if (!text) return std::nullopt;
  return File(path, std::move(*text), usual);
}

std::optional<MemberEdits::Target> MemberEdits::TargetAfter(const TagItem& after,
                                                            std::string& error) {
  Target target;
  const std::string owner = OwnerName(after);
  target.record = owner.empty() ? nullptr : symbols.ClassSeen(owner, after.module);
  if (!target.record || !target.record->module || target.record->line < 0) {
    error = "No class \"" + owner + "\" in the files of the project";
    return std::nullopt;
  }
  const bool isClass = after.owner == &after ||
                       (after.name == owner && after.kind != cFunction && after.kind != cPrototype);
  if (isClass) return target;
  target.declaration = &after;
  if (IsOuterDefinition(after)) {
    target.definition = &after;
    const std::vector<TagItem*> found = symbols.Counterparts(after, Want::cDeclaration);
    target.declaration = found.empty() ? nullptr : found.front();
  } else if (after.kind == cPrototype) {
    const std::vector<TagItem*> found = symbols.Counterparts(after, Want::cDefinition);
    for (TagItem* item : found)
      if (IsOuterDefinition(*item) && !target.definition) target.definition = item;
  }
  return target;
}

// The types that a class and its bases hold.
std::vector<std::string> MemberEdits::TypesOf(const TagClass& record) {
  std::vector<TagItem*> items;
  std::vector<std::string> names;
  wizard.tags.listNestedClasses(items, record.name, "");
  for (const TagItem* item : items) names.emplace_back(LastName(item->name));
  items.clear();
  wizard.tags.listMembers(items, record.name, "", 0, record.module);
  for (const TagItem* item : items)
    if (item->kind == cTypedef || item->kind == cEnumeration) names.push_back(item->name);
  return names;
}

bool MemberEdits::Declare(File& header, const Target& target, const PrototypeText& prototype,
                          bool isInline, std::string& error) {
  const SourceShape& shape = *header.shape;
  const CodeTokens& tokens = shape.tokens;
  const std::string newLine(shape.NewLine());
  const int className = shape.NameIn(target.record->line, LastName(target.record->name));
  const int body = className < 0 ? -1 : shape.BodyOf(className);
  std::optional<SourceShape::Statement> after;
  if (target.declaration) {
    const int name = shape.NameIn(target.declaration->line, target.declaration->name);
    const int block = name >= 0 ? shape.BlockAround(name) : -1;
    const bool isInBody =
        body >= 0 && name > body && (!tokens.IsOpening(body) || name < tokens.Partner(body));
    if (name >= 0) after = shape.Around(name, isInBody ? body : block);
  } else if (body >= 0) {
    const SourceShape::Statement last = shape.LastOf(body);
    if (last.end > last.begin) after = last;
  }
  if (!after && (target.declaration || body < 0)) {
    error = "It can't be told where the class \"" + target.record->name + "\" takes a new member";
    return false;
  }
  const std::string classIndent =
      shape.Indentation(static_cast<size_t>(tokens.Start(std::max(className, 0))));
  const size_t first = after ? static_cast<size_t>(tokens.Start(after->begin)) : 0;
  const bool hasOwnLine =
      after && IsBlankText(std::string_view(shape.text)
                               .substr(shape.LineStart(first), first - shape.LineStart(first)));
  const bool isLabel = after && tokens.Is(after->end - 1, ":");
  const std::string indent = hasOwnLine && !isLabel
                                 ? shape.Indentation(first)
                                 : header.Deeper(classIndent, IndentHabit::cClass);
  std::string added = newLine;
  // What begins an empty class is private.
  const bool isEmptyClass = !after && tokens.Is(className - 1, "class");
  if (isEmptyClass) added += classIndent + "public:" + newLine;
  added += indent;
  std::optional<size_t> caret;
  if (isInline && !prototype.HasBody()) {
    size_t inBody = 0;
    const std::string written = header.WithBody(prototype.Text(), indent, inBody);
    caret = added.size() + inBody;
    added += written;
  } else {
    added += prototype.Text() + (prototype.HasBody() ? "" : ";");
  }
  bool isLine = true;
  const size_t place =
      header.After(after ? *after : SourceShape::Statement{body, body + 1}, isLine);
  if (!isLine) {
    const int next = after ? after->end : body + 1;
    added += newLine + (tokens.Is(next, "}") ? classIndent : indent);
    // The blanks before what follows become the new line.
    const size_t start = static_cast<size_t>(tokens.Start(next));
    header.Insert(place, added, caret);
    if (IsBlankText(std::string_view(shape.text).substr(place, start - place)))
      header.edits.edits.back().length = start - place;
    return true;
  }
  header.Insert(place, added, caret);
  return true;
}

void MemberEdits::Define(File& source, const SourceShape& header, const Target& target,
                         const PrototypeText& prototype) {
  const SourceShape& shape = *source.shape;
  const CodeTokens& tokens = shape.tokens;
  const std::string newLine(shape.NewLine());
  std::string owner = target.record->name;
  std::string indent, before, after;
  size_t place = shape.text.size();
  const int known = target.definition && target.definition->module->fileName == source.edits.path
                        ? shape.NameIn(target.definition->line, target.definition->name)
                        : -1;
  const std::optional<SourceShape::Statement> definition =
      known >= 0 ? shape.Around(known, shape.BlockAround(known)) : std::nullopt;
  if (definition) {
    bool isLine = true;
    place = source.After(*definition, isLine);
    indent = shape.Indentation(static_cast<size_t>(tokens.Start(definition->begin)));
    before = newLine + newLine;
    const std::string qualifier = shape.Qualifier(known);
    if (qualifier.size() > 2) owner = qualifier.substr(0, qualifier.size() - 2);
  } else {
    const int className = header.NameIn(target.record->line, LastName(target.record->name));
    const std::vector<std::string> spaces =
        className < 0 ? std::vector<std::string>() : header.NamespacesAround(className);
    const int block = shape.NamespaceBlock(spaces);
    if (block >= 0) {
      const SourceShape::Statement last = shape.LastOf(block);
      bool isLine = true;
      const bool isEmpty = last.end == last.begin;
      place = source.After(isEmpty ? SourceShape::Statement{block, block + 1} : last, isLine);
      if (!isEmpty) indent = shape.Indentation(static_cast<size_t>(tokens.Start(last.begin)));
      before = newLine + newLine;
      if (!isLine) after = newLine;
    } else {
      if (!shape.text.empty()) before = shape.text.ends_with('\n') ? newLine : newLine + newLine;
      for (const std::string& space : spaces) {
        before += (space == spaces.front() ? "namespace " : " namespace ") + space;
        before += space.empty() ? "{" : " {";
        after += after.empty() ? newLine + newLine + "}" : " }";
      }
      if (!spaces.empty()) before += newLine + newLine;
      after += newLine;
    }
  }
  size_t inBody = 0;
  const std::string written = source.WithBody(
      indent + prototype.DefinitionHead(owner, TypesOf(*target.record)), indent, inBody);
  source.Insert(place, before + written + after, before.size() + inBody);
}

MemberChange MemberEdits::InsertMember(const TagItem& after, std::string_view written) {
  MemberChange change;
  const PrototypeText prototype(written);
  if (IsBlankText(prototype.Text())) return change;
  const std::optional<Target> target = TargetAfter(after, change.error);
  if (!target) return change;
  const std::string path = target->record->module->fileName;
  std::optional<File> header = Open(path);
  if (!header) {
    change.error = "Could not open file \"" + path + "\"";
    return change;
  }
  const TagItem* declaration = target->declaration;
  const bool isAfterInline =
      declaration && declaration->kind == cFunction && !IsOuterDefinition(*declaration);
  const int className = header->shape->NameIn(target->record->line, LastName(target->record->name));
  bool isInline = prototype.Body() == BodyPlace::cInClass;
  bool isDefined = prototype.Body() == BodyPlace::cOutside;
  std::string source = target->definition ? target->definition->module->fileName : "";
  if (source.empty()) source = FileKind(path) == cHeader ? findSource(path) : path;
  std::optional<File> other;
  if (isDefined && source != path) other = source.empty() ? std::nullopt : Open(source);
  const bool isTemplate = [&] {
    for (int at = className; at > 0;) {
      int begin = at;
      while (begin > 0 && !header->shape->tokens.IsOneOf(begin - 1, "; { } :")) --begin;
      if (header->shape->tokens.Is(begin, "template")) return true;
      at = header->shape->BlockAround(at);
    }
    return false;
  }();
  if (isDefined && (isAfterInline || isTemplate || (source != path && !other))) {
    isInline = true;
    isDefined = false;
  }
  if (!Declare(*header, *target, prototype, isInline, change.error)) return change;
  if (isDefined) Define(other ? *other : *header, *header->shape, *target, prototype);
  std::sort(header->edits.edits.begin(), header->edits.edits.end(),
            [](const TextEdit& a, const TextEdit& b) { return a.offset < b.offset; });
  change.files.push_back(std::move(header->edits));
  if (other) change.files.push_back(std::move(other->edits));
  return change;
}

HandlerPlace MemberEdits::GoToOrAddHandler(std::string_view className, const std::string& name,
                                           const std::string& type, const std::string& arguments) {
  HandlerPlace result;
  TagClass* record = wizard.tags.findClass(className);
  const TagData* module = record ? record->module : nullptr;
  using enum TagLookup::Want;
  TagItem* found = wizard.tags.findMember(className, name, cDefinition, 0, module);
  if (!found) found = wizard.tags.findMember(className, name, cDeclaration, 0, module);
  if (found && found->module) {
    result.place = CodePlace{found->module->fileName, std::max(found->line - 1, 0), name};
    return result;
  }
  if (!record || !record->module) {
    result.change.error = "No class \"" + std::string(className) + "\" in the project's files";
    return result;
  }
  TagItem* after = record;
  for (TagItem& member : record->members)
    if (!IsOuterDefinition(member)) after = &member;
  after->owner = record;
  after->module = record->module;
  result.change = InsertMember(*after, type + " " + name + "(" + arguments + ")");
  return result;
}

std::optional<TextRange> FindMemberRange(const std::string& text, int line, std::string_view name) {
  const SourceShape shape(text);
  const int token = shape.NameIn(line, name);
  if (token < 0) return std::nullopt;
  const int block = shape.BlockAround(token);
  const std::optional<SourceShape::Statement> statement = shape.Around(token, block);
  if (!statement || DeclaresMore(shape.tokens, *statement)) return std::nullopt;
  return WholeLines(shape, {static_cast<size_t>(shape.tokens.Start(statement->begin)),
                            static_cast<size_t>(shape.tokens.End(statement->end - 1))});
}

bool MemberEdits::RemoveFrom(File& file, const TagItem& item) {
  const std::string& text = file.shape->text;
  const std::string_view name = LastName(item.name);
  const std::optional<TextRange> range = item.kind == cMacro
                                             ? MacroRange(text, item.line, name)
                                             : FindMemberRange(text, item.line, name);
  if (!range) return false;
  file.edits.edits.push_back({range->start, range->end - range->start, ""});
  return true;
}

MemberChange MemberEdits::Remove(const TagItem& item) {
  MemberChange change;
  std::vector<const TagItem*> all = {&item};
  if (item.kind == cFunction || item.kind == cPrototype) {
    const Want other = item.kind == cFunction ? Want::cDeclaration : Want::cDefinition;
    for (const TagItem* each : symbols.Counterparts(item, other))
      if (HaveSameTypes(*each, item) && (item.owner || IsSeenFrom(*each, item)))
        all.push_back(each);
  }
  std::vector<File> files;
  for (const TagItem* each : all) {
    const std::string& path = each->module->fileName;
    auto file = std::find_if(files.begin(), files.end(),
                             [&](const File& open) { return open.edits.path == path; });
    if (file == files.end()) {
      std::optional<File> opened = Open(path);
      if (!opened) {
        change.error = "Could not open file \"" + path + "\"";
        return change;
      }
      files.push_back(std::move(*opened));
      file = files.end() - 1;
    }
    if (RemoveFrom(*file, *each)) continue;
    change.error = "It can't be told where \"" + item.name + "\" begins and ends in " + path;
    return change;
  }
  for (File& file : files) {
    auto& edits = file.edits.edits;
    std::sort(edits.begin(), edits.end(),
              [](const TextEdit& a, const TextEdit& b) { return a.offset < b.offset; });
    change.files.push_back(std::move(file.edits));
  }
  return change;
}

}  // namespace zendry
