#include <algorithm>
#include <optional>

#include "base/EditorText.h"
#include "base/Shell.h"
#include "base/TraceLog.h"
#include "project/Project.h"
#include "tags/EditorReader.h"
#include "tags/TagParser.h"

// The tags of a project: those of its files, of open editors and of the reference libraries.

namespace zendry {

namespace {

// How much of an editor's text is read for its includes while the user types.
constexpr int cMostTypedText = 1 << 20;

std::string TextOf(const EditorText& editor, int length) {
  std::string text(static_cast<size_t>(length), '\0');
  editor.CopyRange(0, length, text.data());
  return text;
}

// Such texts are data or made by programs: their tags would take longer than all else that opens
// them, and more memory than the text.
bool IsTooLongForTags(const EditorText* editor, const Project& project) {
  return editor && editor->Length() > Project::cMostTextAlone && !project.FindFile(editor->Path());
}

bool IsLarge(const EditorText& editor) {
  return editor.Length() > cMostTypedText;
}

// Builds depend on every include of a file, even if the file is too long for tags.
void CompleteIncludes(TagData& module, const EditorText* editor) {
  if (editor) {
    module.includes = ScanIncludes(TextOf(*editor, editor->Length()));
  } else if (const mavro::FileText file = mavro::ReadFileText(module.fileName); file.Ok()) {
    module.includes = ScanIncludes(file.text);
  }
}

// The same at a cost that doesn't grow with the text: only its first part is read. The known
// includes after that part stay until the file is saved.
void RefreshIncludes(TagData& module, const EditorText& editor, std::vector<IncludeRec> known) {
  if (!IsLarge(editor)) return CompleteIncludes(module, &editor);
  module.includes = ScanIncludes(TextOf(editor, cMostTypedText));
  for (IncludeRec& include : known) {
    const auto isSame = [&](const IncludeRec& other) {
      return other.name == include.name && other.quoted == include.quoted;
    };
    if (std::none_of(module.includes.begin(), module.includes.end(), isSame))
      module.includes.push_back(std::move(include));
  }
}

void NoteParsed(EditorText& editor, const TagData& module, std::vector<TextPart> bodies) {
  editor.parsed = true;
  editor.parsedAs = module.Generation();
  editor.bodies.Put(std::move(bodies));
}

// The tags of a project stay for hours: no room is kept for more of them.
void DropRoom(TagData& module) {
  module.globals.shrink_to_fit();
  module.includes.shrink_to_fit();
  for (auto& [name, record] : module.classes) record.members.shrink_to_fit();
}

// While it lives, the parser logs to a shell, or without one to the trace log.
class ParserLog {
 public:
  explicit ParserLog(OutputShell* shell) { theTagParser.shell = shell; }
  ~ParserLog() { theTagParser.shell = nullptr; }
  ParserLog(const ParserLog&) = delete;
  ParserLog& operator=(const ParserLog&) = delete;
};

}  // namespace

// A file in a language that the parser doesn't know has no tags and no includes.
void Project::ReadTags(ProjectFile& file) {
  shell->SetStatus("parse", file.name);
  bool isHeader = false;
  if (!TagParser::languageOf(file.name, isHeader)) return;
  if (storesTags) return parseModule(file.tags, nullptr);
  file.readsIncludesLate = true;
}

const std::vector<IncludeRec>& ProjectFile::Includes() const {
  if (!readsIncludesLate) return tags.includes;
  if (!lateIncludes) {
    const mavro::FileText read = mavro::ReadFileText(name);
    lateIncludes = read.Ok() ? ScanIncludes(read.text) : std::vector<IncludeRec>();
  }
  return *lateIncludes;
}

EditorText* Project::FindEditor(const TagData& module) const {
  for (EditorText* editor : shell->OpenTexts())
    if (IsFileOf(editor->Path(), module)) return editor;
  return nullptr;
}

void Project::parseModule(TagData& module, EditorText* editor) {
  if (!parse) return;
  const bool isTyped = editor != nullptr;
  // A text that somebody types is unfinished at nearly every key: that is no news for the shell.
  const ParserLog log(isTyped ? nullptr : shell);
  const ReservedNamesKept allNames;
  if (!editor) editor = FindEditor(module);
  std::vector<IncludeRec> known = std::move(module.includes);
  module.clear();
  if (IsTooLongForTags(editor, *this)) {
    RefreshIncludes(module, *editor, std::move(known));
    theTagParser.logMessage("no tags of so long a text", module.fileName);
    module.Changed();
    return NoteParsed(*editor, module, {});
  }
  if (editor) {
    EditorReader reader(*editor);
    theTagParser.parseBuffer(module, &reader, false);
    theTagParser.Bind(module);
  } else {
    theTagParser.parseBuffer(module, nullptr, false);
  }
  if (theTagParser.gaveUp && isTyped)
    RefreshIncludes(module, *editor, std::move(known));
  else if (theTagParser.gaveUp)
    CompleteIncludes(module, editor);
  if (theTagParser.gaveUp && !isTyped)
    theTagParser.logMessage("tags end before the end of", module.fileName);
  if (!isTyped) DropRoom(module);
  module.Changed();
  if (!editor) return;
  NoteParsed(*editor, module,
             theTagParser.gaveUp ? std::vector<TextPart>() : theTagParser.bodies.Take());
}

void Project::parseOpenEditors(EditorText* editor) {
  std::vector<EditorText*> editors = {editor};
  if (!editor) editors = shell->OpenTexts();
  bool anyParsed = false;
  for (EditorText* open : editors) {
    // Builds need the includes of the project's files.
    const bool isSavedWhole = editor && IsLarge(*open) && FindFile(open->Path());
    if (HasTagsOf(*open) && !isSavedWhole) continue;
    TraceMessage("Parse", open->Path());
    TagData& module = ModuleOf(open->Path());
    parseModule(module, open);
    if (isSavedWhole && theTagParser.gaveUp) CompleteIncludes(module, open);
    anyParsed = true;
  }
  if (anyParsed) shell->TagsChanged();
}

// Tags that a change of the text has left as they were may be gone from the store: files outside
// the project share one.
bool Project::HasTagsOf(const EditorText& editor) const {
  if (!editor.parsed || !editor.bodies.HasChanged()) return editor.parsed;
  const ProjectFile* file = FindFile(editor.Path());
  const TagData& module = file ? file->tags : scratchModule;
  return module.Generation() == editor.parsedAs && !IsTooLongForTags(&editor, *this);
}

TagData& Project::ModuleOf(const std::string& path) {
  if (ProjectFile* file = FindFile(path)) return file->tags;
  if (scratchModule.fileName != path) {
    scratchModule.clear();
    scratchModule.fileName = path;
    scratchModule.Changed();
  }
  return scratchModule;
}

void Project::LoadReferences() {
  if (!storesTags) return;
  const ParserLog log(shell);
  tags.loadReference(cRefFile);
  tags.loadReference(stlRefFile);
  if (type == cFormApplication) tags.loadReference(mavroRefFile);
}

}  // namespace zendry
