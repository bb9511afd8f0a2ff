#pragma once

#include <functional>
#include <string>

#include "base/CommandTable.h"
#include "browser/PlaceHistory.h"
#include "code/SymbolPlaces.h"

namespace zendry {

// Ids that other files use.
enum BrowserCommand {
  cSwitchFileCommand = 1101,
  cFindDeclarationCommand = 1104,
  cFindDefinitionCommand = 1105,
  cFindSymbolCommand = 1106,
  cCompleteCommand = 1107,
  cShowTipCommand = 1108,
  cAddMemberCommand = 1109,
  cDeleteMemberCommand = 1110,
  cOpenBrowserCommand = 1111,
  cBackCommand = 1113,
  cForwardCommand = 1114
};

class ClassTree;
class CodeSources;
class CppEditor;
class EditTabs;

// What the commands act on; nothing of it is owned.
struct BrowserParts {
  EditTabs* tabs = nullptr;  // null: commands do nothing
  ClassTree* tree = nullptr;
  CodeWizard* wizard = nullptr;
  CodeSources* sources = nullptr;
  std::function<void()> addMember;  // asks for a new member of a class
};

// The commands on symbols of the source, and the places that the user came from.
class BrowserActs : public CommandList {
 public:
  BrowserActs();
  void Bind(const BrowserParts& newParts);

  // Deletes the tag that is selected in the class tree; it is in no menu.
  mavro::Action deleteMember;

  // Group: true if the command can act now.
  bool CanGoBack() const { return history.CanGoBack(); }
  bool CanGoForward() const { return history.CanGoForward(); }

  // Shows help on the word at the caret of the active editor.
  std::function<void(const std::string& word)> onWordHelp;

 private:
  void CarryOut(int id) override;
  void CarryOutInEditor(int id, CppEditor& editor);

  void OnLeavePlace(mavro::NotifyArgs& args);
  bool OpenInclude(const CppEditor& editor);
  void FindSymbol(CppEditor& editor);
  void FindAround(CppEditor& editor, SymbolPlaces::Want want);
  void GoTo(const CodePlace& place);
  void OpenBrowser(CppEditor& editor);
  void DeleteMember();
  void Travel(CppEditor& editor, int id);
  void SayMissing(const std::string& what, const std::string& name, const CppEditor& editor);

  BrowserParts parts;
  PlaceHistory history;
};

extern BrowserActs theBrowserActs;

}  // namespace zendry
