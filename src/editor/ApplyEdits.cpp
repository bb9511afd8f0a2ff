#include "editor/ApplyEdits.h"

#include "FileText.h"
#include "UndoStep.h"
#include "base/TextDigest.h"
#include "config/EditorSettings.h"
#include "editor/EditTabs.h"
#include "editor/EditorHost.h"
#include "project/Counterpart.h"
#include "project/Project.h"

namespace zendry {

namespace {

constexpr std::string_view cByteOrderMark = "\xEF\xBB\xBF";

std::string TextOf(const CppEditor& editor) {
  return editor.GetRange(0, editor.Length());
}

// An editor doesn't show the mark at the beginning of a file.
std::optional<std::string> ReadText(EditTabs& tabs, const std::string& path) {
  if (const CppEditor* open = tabs.Activate(path, false)) return TextOf(*open);
  mavro::FileText file = mavro::ReadFileText(path);
  if (!file.Ok()) return std::nullopt;
  if (file.text.starts_with(cByteOrderMark)) file.text.erase(0, cByteOrderMark.size());
  return std::move(file.text);
}

// Why an edit can't be made in an editor; empty if it can.
std::string WhyNot(const CppEditor* editor, const FileEdits& file) {
  if (!editor) return "Could not open file \"" + file.path + "\"";
  if (editor->IsReadOnly()) return file.path + " - " + editor->WhyReadOnly();
  if (editor->LinesNotShown() > 0) return file.path + " has lines that are not shown";
  if (DigestOf(TextOf(*editor)) != file.digest)
    return file.path + " is shown in another form than it was read; now that it is open, try again";
  return "";
}

}  // namespace

// From the first to the last: the component's gap moves over the text once.
void ApplyTextEdits(const mavro::SciEditor& editor, const std::vector<TextEdit>& edits) {
  const mavro::UndoStep step(editor);
  size_t grown = 0;  // may wrap around
  for (const TextEdit& edit : edits) {
    editor.Send(mavro::SCI_SETTARGETRANGE, edit.offset + grown,
                static_cast<std::intptr_t>(edit.offset + edit.length + grown));
    editor.Send(mavro::SCI_REPLACETARGET, edit.text.size(), edit.text.c_str());
    grown += edit.text.size() - edit.length;
  }
}

MemberEdits EditsOfTabs(EditTabs& tabs, CodeWizard& wizard, CodeSources& sources) {
  const EditorSettings& settings = theEditorSettings;
  return {wizard, sources, [&tabs](const std::string& path) { return ReadText(tabs, path); },
          [](const std::string& header) { return FindCounterpart(header, theProject); },
          UsualHabits(settings.indentSize, settings.tabSize, settings.useTabs != 0)};
}

bool ApplyChange(EditTabs& tabs, const MemberChange& change) {
  if (!change.error.empty()) {
    tabs.Host()->Say(change.error);
    return false;
  }
  tabs.LeavePlace();
  const FileEdits* shown = nullptr;
  for (const FileEdits& file : change.files) {
    const CppEditor* editor = tabs.OpenFile(file.path, EditTabs::OnFailure::cSay);
    if (const std::string reason = WhyNot(editor, file); !reason.empty()) {
      tabs.Host()->Say(reason);
      return false;
    }
    if (!file.edits.empty() && (!shown || file.caret)) shown = &file;
  }
  for (const FileEdits& file : change.files)
    if (const CppEditor* editor = tabs.Activate(file.path, false))
      ApplyTextEdits(*editor, file.edits);
  if (!shown) return false;
  CppEditor* editor = tabs.OpenFile(shown->path);
  if (!editor) return true;
  const int place = static_cast<int>(shown->caret.value_or(shown->edits.front().offset));
  editor->ShowLine(editor->LineOf(place) + 1);
  editor->Select(place, place);
  editor->Focus();
  return true;
}

}  // namespace zendry
