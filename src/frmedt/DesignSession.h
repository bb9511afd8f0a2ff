#pragma once

#include <memory>
#include <string>
#include <vector>

#include "frmedt/FormData.h"
#include "frmedt/FormKeep.h"
#include "frmedt/FormLocator.h"

namespace zendry {

class CodeSources;
class CodeWizard;
class CppEditor;
class DesignFrame;
class EditTabs;

// One use of the designer: finds the form of the source in front, lets the user design it, and puts
// the regions back into the editors.
class DesignSession {
 public:
  DesignSession(EditTabs& itsTabs, CodeWizard& itsWizard, CodeSources& itsSources)
      : tabs(itsTabs), wizard(itsWizard), sources(itsSources) {}

  // What is refused or fails is told the user.
  void Run(CppEditor& editor);

 private:
  bool Find(CppEditor& editor);
  bool Read();
  bool AskAboutLosses();
  bool AskAboutWritten(DesignFrame& frame);
  bool MayWrite(DesignFrame& frame);
  bool FindAgain();
  void Write(const DesignFrame& frame);
  void CarryOutWish(const DesignFrame& frame);
  FormTextPtr TextOf(const CppEditor& editor) const;
  FormTextPtr Companion(const std::string& path, bool isHeader);
  // The editor of a region's text; null if its tab has been closed and can't be opened again.
  CppEditor* EditorOf(const SectionRef& section);

  EditTabs& tabs;
  CodeWizard& wizard;
  CodeSources& sources;
  FormLocator locator;
  FormTarget target;
  FormData form;
  std::vector<std::string> declLines, initLines;  // as they are read
  KeptLines kept;
  CppEditor* unnamed = nullptr;  // the editor of a text that has no name; it may be closed
};

// Opens the designer for the form of the editor in front.
void DesignForm(EditTabs& tabs, CodeWizard& wizard, CodeSources& sources);

}  // namespace zendry
