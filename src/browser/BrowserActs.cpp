#include "browser/BrowserActs.h"

#include <algorithm>

#include "SystemDialogs.h"
#include "base/ControlBytes.h"
#include "base/HelpCommands.h"
#include "base/Paths.h"
#include "browser/BrowserDlg.h"
#include "browser/ClassTree.h"
#include "code/CodeSources.h"
#include "code/WordAtCaret.h"
#include "editor/ApplyEdits.h"
#include "editor/EditTabs.h"
#include "editor/EditorHost.h"
#include "project/HeaderSearch.h"
#include "project/IncludeFile.h"
#include "project/Project.h"

namespace zendry {

namespace {

using mavro::cAltKey;
using mavro::cControlKey;
using mavro::cShiftKey;

using Want = SymbolPlaces::Want;

constexpr CommandRow cRows[] = {
    {cFindSymbolCommand, "&Find Symbol", cKeyF12},
    {cCompleteCommand, "&Compleate code", cControlKey | cKeySpace},
    {cShowTipCommand, "&Show params info", cControlKey | cShiftKey | cKeySpace},
    {cAddMemberCommand, "Add Class Member", cShiftKey | cKeyF12},
    {mavro::cSeparatorRow},
    {cSwitchFileCommand, "&Swich Src/Hdr", cControlKey | cKeySlash},
    {mavro::cSeparatorRow},
    {cFindDeclarationCommand, "Find D&eclaration", cControlKey | cShiftKey | cKeyUp},
    {cFindDefinitionCommand, "Find &Definition", cControlKey | cShiftKey | cKeyDown},
    {mavro::cSeparatorRow},
    {cOpenBrowserCommand, "Open Browser", cControlKey | cKeyF12},
    {mavro::cSeparatorRow},
    {cBackCommand, "&Back", cAltKey | cKeyLeft},
    {cForwardCommand, "F&orward", cAltKey | cKeyRight},
};

std::string LineOf(const CppEditor& editor, int line) {
  return editor.GetRange(editor.LineStart(line), editor.LineEnd(line));
}

VisitedPlace PlaceOf(const CppEditor& editor) {
  const int line = editor.CaretLine();
  return {editor.fileName, line, editor.CaretPosition() - editor.LineStart(line),
          LineOf(editor, line)};
}

std::string Files(size_t count) {
  return count == 1 ? "1 file" : std::to_string(count) + " files";
}

}  // namespace

BrowserActs theBrowserActs;

BrowserActs::BrowserActs() : CommandList(cRows) {
  deleteMember.text = "Remove";
  deleteMember.id = cDeleteMemberCommand;
  deleteMember.target = this;
  deleteMember.handler = static_cast<mavro::ActionHandler>(&BrowserActs::OnCommand);
}

void BrowserActs::Bind(const BrowserParts& newParts) {
  parts = newParts;
  history = PlaceHistory();
  if (parts.tabs) parts.tabs->onLeavePlace.Add_H(this, &BrowserActs::OnLeavePlace);
}

void BrowserActs::CarryOut(int id) {
  if (!parts.tabs) return;
  if (id == cDeleteMemberCommand) return DeleteMember();
  EditTab* tab = parts.tabs->Active();
  if (!tab) return;
  if (id == cWordHelpCommand) {
    if (onWordHelp) onWordHelp(WordAtCaret(tab->editor->LiveText()).text);
    return;
  }
  if (id == cSwitchFileCommand) return parts.tabs->GoToCounterpart();
  CarryOutInEditor(id, *tab->editor);
  if (EditTab* front = parts.tabs->Active()) front->editor->Focus();
}

void BrowserActs::CarryOutInEditor(int id, CppEditor& editor) {
  switch (id) {
    case cCompleteCommand:
      return editor.AskForList();
    case cShowTipCommand:
      return editor.startCallTip();
    case cFindSymbolCommand:
      return FindSymbol(editor);
    case cFindDeclarationCommand:
      return FindAround(editor, Want::cDeclaration);
    case cFindDefinitionCommand:
      return FindAround(editor, Want::cDefinition);
    case cAddMemberCommand:
      return parts.addMember();
    case cOpenBrowserCommand:
      return OpenBrowser(editor);
    case cBackCommand:
    case cForwardCommand:
      return Travel(editor, id);
    default:
      return;
  }
}

void BrowserActs::OnLeavePlace(mavro::NotifyArgs&) {
  const EditTab* tab = parts.tabs ? parts.tabs->Active() : nullptr;
  if (tab && !tab->editor->fileName.empty()) history.Leave(PlaceOf(*tab->editor));
}

// True if the caret's line includes a file, found or not.
bool BrowserActs::OpenInclude(const CppEditor& editor) {
  const std::optional<IncludeName> include = IncludeNameIn(LineOf(editor, editor.CaretLine()));
  if (!include) return false;
  const std::string path =
      FindIncludedFile(theProject, editor.fileName, include->name, include->isQuoted);
  if (!path.empty())
    parts.tabs->GoTo(path, 0);
  else
    parts.tabs->Host()->Say(
        MarkControlBytes("No file \"" + include->name +
                         "\" beside this one, in the project or in the folders of its compiler"));
  return true;
}

void BrowserActs::SayMissing(const std::string& what, const std::string& name,
                             const CppEditor& editor) {
  const size_t files = parts.sources->Modules().size();
  const std::string where = BaseName(editor.fileName) + ", " + Files(files) + " and the libraries";
  parts.tabs->Host()->Say(MarkControlBytes(name.empty() ? "No name at the caret to look for"
                                                        : what + " \"" + name + "\" in " + where));
}

void BrowserActs::FindSymbol(CppEditor& editor) {
  if (OpenInclude(editor)) return;
  SymbolPlaces symbols(*parts.wizard, *parts.sources);
  const SymbolAnswer answer = symbols.AtCaret(editor.LiveText(), Want::cNearest);
  if (!answer.places.empty()) return GoTo(answer.places.front());
  const auto openText = [this](const std::string& path) -> std::optional<std::string> {
    for (int i = 0; i < parts.tabs->TabCount(); ++i)
      if (const CppEditor& open = *parts.tabs->GetTab(i)->editor; open.fileName == path)
        return open.GetText();
    return std::nullopt;
  };
  const auto place = FindInHeaders(theProject, editor.fileName, answer.unplaced, openText);
  if (place) return GoTo(*place);
  if (answer.isLibrary)
    return parts.tabs->Host()->Say("\"" + answer.name +
                                   "\" is of a library: no header that this file includes has it");
  SayMissing("No symbol", answer.name.empty() ? answer.unplaced.name : answer.name, editor);
}

void BrowserActs::FindAround(CppEditor& editor, Want want) {
  SymbolPlaces symbols(*parts.wizard, *parts.sources);
  const SymbolAnswer answer = symbols.Around(editor.LiveText(), want);
  const bool isDefinition = want == Want::cDefinition;
  if (answer.places.empty())
    return SayMissing(isDefinition ? "No definition of" : "No declaration of", answer.name, editor);
  GoTo(answer.places.front());
}

// The caret goes to the name; to the beginning of the line if the name isn't in it.
void BrowserActs::GoTo(const CodePlace& place) {
  CppEditor* editor = parts.tabs->GoTo(place.path, place.line + 1);
  if (!editor) return;
  const std::string line = LineOf(*editor, place.line);
  size_t column = place.name.empty() ? line.npos : line.find(place.name);
  if (column == line.npos) column = 0;
  const int position = editor->LineStart(place.line) + static_cast<int>(column);
  editor->Select(position, position);
}

void BrowserActs::OpenBrowser(CppEditor& editor) {
  const TagItem* start = parts.wizard->currentItem(editor.LiveText());
  BrowserDlg dialog(theProject, *parts.wizard, *parts.sources, start, editor.fileName);
  if (const std::optional<CodePlace> place = dialog.Choose()) GoTo(*place);
}

void BrowserActs::DeleteMember() {
  theProject.parseOpenEditors(nullptr);
  const TagItem* item = parts.tree ? parts.tree->SelectedItem() : nullptr;
  if (!item) return parts.tabs->Host()->Say("Select a class, a member or a global to remove it");
  if (!mavro::Confirm("Remove: " + MarkControlBytes(item->name))) return;
  MemberEdits edits = EditsOfTabs(*parts.tabs, *parts.wizard, *parts.sources);
  if (!ApplyChange(*parts.tabs, edits.Remove(*item))) return;
  theProject.parseOpenEditors(nullptr);
  parts.tree->Refresh();
}

void BrowserActs::Travel(CppEditor& editor, int id) {
  const VisitedPlace now = PlaceOf(editor);
  const bool isBack = id == cBackCommand;
  const std::optional<VisitedPlace> place = isBack ? history.Back(now) : history.Forward(now);
  if (!place)
    return parts.tabs->Host()->Say(isBack ? "No place to go back to" : "No place to go forward to");
  CppEditor* shown = parts.tabs->OpenFile(place->path, EditTabs::OnFailure::cSay);
  if (!shown) return;
  const int line =
      LineOfPlace(*place, shown->LineCount(), [&](int each) { return LineOf(*shown, each); });
  shown->ShowLine(line + 1);
  const int position = std::min(shown->LineStart(line) + place->column, shown->LineEnd(line));
  shown->Select(position, position);
}

}  // namespace zendry
