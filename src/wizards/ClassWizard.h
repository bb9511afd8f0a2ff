#pragma once

#include <mavro>
#include <optional>
#include <string>
#include <vector>

#include "code/MemberEdits.h"

namespace zendry {

class CodeSources;
class EditTabs;

// What the wizard begins with: the tag at the caret, its file, and the caret's line, from 1.
struct ClassWizardContext {
  const TagItem* item = nullptr;
  const TagData* module = nullptr;
  int line = 0;
};

// Asks for a new method of a class. The tags must not be parsed again while it is shown.
class ClassWizard : public mavro::Form {
  typedef ClassWizard This;

 public:
  ClassWizard(CodeWizard& wizard, CodeSources& sources, const ClassWizardContext& context);

  // The member to add it after, or the class; null if the user cancels.
  const TagItem* Choose();
  std::string Prototype() const { return prototype.text; }
  bool HasClasses() const { return !classes.empty(); }

  // clang-format off
	//!decl
	mavro::Label targetLabel;
	mavro::ComboBox target;
	mavro::Label afterLabel;
	mavro::ListBox after;
	mavro::Label prototypeLabel;
	mavro::Edit prototype;
	mavro::Button okButton, cancel;
	//!end
  // clang-format on

 private:
  void Initialize();
  void FillClasses(CodeWizard& wizard, CodeSources& sources, const ClassWizardContext& context);
  void FillMembers();
  void SelectMember(const TagItem& item);
  void OnTarget(mavro::ItemArgs& args);

  std::vector<TagItem*> classes;
  std::vector<TagItem*> members;
};

// Asks for a new method, and adds its declaration and definition to the editors.
void AddClassMember(EditTabs& tabs, CodeWizard& wizard, CodeSources& sources);

}  // namespace zendry
