#pragma once

#include <mavro>
#include <optional>
#include <string>
#include <vector>

#include "browser/ModuleList.h"
#include "code/SymbolPlaces.h"

namespace zendry {

class CodeSources;
class Project;

// The declarations of a file, of all files or of the libraries: its classes, the members of one, or
// the globals. The form closes when the user has chosen a place. The tags must not be parsed again
// while it is shown.
class BrowserDlg : public mavro::Form {
  typedef BrowserDlg This;

 public:
  enum Scope { cModuleScope = 0, cProjectScope = 1, cLibraryScope = 2 };

  // `start`: the tag at the caret, which is selected at first; null for none. `path`: of the file
  // in front.
  BrowserDlg(const Project& itsProject, CodeWizard& itsWizard, CodeSources& itsSources,
             const TagItem* start, const std::string& path);

  // The place that the user wants to see; none after Cancel.
  std::optional<CodePlace> Choose();

  // clang-format off
	//!decl
	mavro::RadioGroup scope;
	mavro::Label modulesLabel;
	ModuleList modules;
	mavro::Label classesLabel;
	mavro::ListBox classList;
	mavro::Label membersLabel;
	mavro::ListBox memberList;
	mavro::Button declaration, definition, cancel;
	//!end
  // clang-format on

 private:
  void Initialize();
  void FillClasses();
  void FillMembers();
  void SelectItem(const TagItem& item);
  const TagItem* Current() const;
  void UpdateButtons();
  bool Find(SymbolPlaces::Want want);

  void OnScope(mavro::NotifyArgs& args);
  void OnModule(mavro::NotifyArgs& args);
  void OnClass(mavro::NotifyArgs& args);
  void OnMember(mavro::NotifyArgs& args);
  void OnMembersFocused(mavro::NotifyArgs& args);
  void OnMemberDoubleClick(mavro::NotifyArgs& args);
  void OnDeclaration(mavro::NotifyArgs& args);
  void OnDefinition(mavro::NotifyArgs& args);

  CodeWizard& wizard;
  CodeSources& sources;
  std::vector<TagItem*> classes;  // behind the rows of classList after the first one
  std::vector<TagItem*> members;
  std::optional<CodePlace> chosen;
};

}  // namespace zendry
