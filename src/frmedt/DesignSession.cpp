#include "frmedt/DesignSession.h"

#include <algorithm>
#include <map>

#include "base/TextDigest.h"
#include "code/CodeSources.h"
#include "code/CodeWizard.h"
#include "code/MemberEdits.h"
#include "editor/ApplyEdits.h"
#include "editor/EditTabs.h"
#include "editor/EditorHost.h"
#include "frmedt/DesignFrame.h"
#include "frmedt/FormCheck.h"
#include "frmedt/FormHandlers.h"
#include "frmedt/LossDlg.h"
#include "frmedt/SelectDlg.h"
#include "project/Counterpart.h"
#include "project/Project.h"

namespace zendry {

namespace {

std::string Joined(const std::vector<FormReport>& reports) {
  std::string text;
  for (const FormReport& report : reports) text += (text.empty() ? "" : "\n") + report.text;
  return text;
}

std::string TextIn(const CppEditor& editor) {
  return editor.GetRange(0, editor.Length());
}

// Why the regions can't be written into an editor; empty if they can.
std::string WhyNot(const CppEditor& editor) {
  if (editor.IsHuge())
    return editor.fileName + " has more than 64 MB, the designer does not open it";
  if (editor.IsReadOnly()) return editor.fileName + "\n" + editor.WhyReadOnly();
  if (editor.LinesNotShown() > 0) return editor.fileName + " has lines that are not shown";
  return "";
}

}  // namespace

FormTextPtr DesignSession::TextOf(const CppEditor& editor) const {
  return std::make_shared<const FormText>(editor.fileName, TextIn(editor));
}

FormTextPtr DesignSession::Companion(const std::string& path, bool) {
  const std::string other = path.empty() ? "" : FindCounterpart(path, theProject);
  if (other.empty()) return nullptr;
  const CppEditor* editor = tabs.OpenFile(other);
  return editor ? TextOf(*editor) : nullptr;
}

CppEditor* DesignSession::EditorOf(const SectionRef& section) {
  if (!section.text->Path().empty())
    return tabs.OpenFile(section.text->Path(), EditTabs::OnFailure::cSay);
  for (int i = 0; i < tabs.TabCount(); ++i)
    if (tabs.GetTab(i)->editor.get() == unnamed) return unnamed;
  return nullptr;
}

bool DesignSession::Find(CppEditor& editor) {
  if (editor.fileName.empty()) unnamed = &editor;
  if (editor.IsHuge()) {
    mavro::Information(WhyNot(editor));
    return false;
  }
  locator.Scan(TextOf(editor));
  size_t chosen = 0;
  if (locator.targets.size() > 1) {
    std::vector<std::string> names;
    for (const FormTarget& each : locator.targets) names.push_back(each.className);
    const int row = SelectDlg(names).Choose();
    if (row < 0) return false;
    chosen = static_cast<size_t>(row);
  }
  const bool hasTargets = !locator.targets.empty();
  const bool found = hasTargets && locator.Select(chosen, [this](const std::string& path, bool is) {
    return Companion(path, is);
  });
  if (!locator.reports.empty()) mavro::Information(Joined(locator.reports));
  if (!hasTargets) tabs.Host()->Say("There is no form in this text");
  if (!found) return false;
  target = locator.Selected();
  for (const SectionRef* section : {&target.decl, &target.init}) {
    const CppEditor* its = EditorOf(*section);
    const std::string reason = its ? WhyNot(*its) : "Designer error";
    if (reason.empty()) continue;
    mavro::Information(reason);
    return false;
  }
  return true;
}

// A line that is kept isn't read: it stands behind its region afterwards.
bool DesignSession::AskAboutLosses() {
  const std::vector<FormLoss> losses = CheckForm(target);
  if (losses.empty()) return true;
  LossDlg dialog("The designer would not write these statements back as they are:", losses);
  const LossDlg::Choice choice = dialog.Choose();
  if (choice == LossDlg::cKeep) kept = TakeKept(declLines, initLines);
  return choice != LossDlg::cCancelled;
}

bool DesignSession::Read() {
  declLines = target.decl.Lines();
  initLines = target.init.Lines();
  if (!AskAboutLosses()) return false;
  form.root.declClass = target.className;
  form.ReadDecl(declLines);
  form.ReadInit(initLines);
  if (!form.reports.empty()) mavro::Information(Joined(form.reports));
  const CppEditor* editor = EditorOf(target.decl);
  const TagData* module =
      editor ? sources.ModuleOf(const_cast<CppEditor*>(editor)->LiveText()) : nullptr;
  if (const TagClass* record = wizard.tags.findClass(target.className, module))
    CollectHandlers(*record, form.handlers);
  form.reports.clear();
  if (form.CheckParents()) return true;
  mavro::Information(Joined(form.reports));
  return false;
}

// The check reads regions without their closing markers.
bool DesignSession::AskAboutWritten(DesignFrame& frame) {
  std::vector<std::string> decl = frame.declLines, init = frame.initLines;
  const std::string declEnd = decl.back(), initEnd = init.back();
  decl.pop_back();
  init.pop_back();
  const std::vector<FormLoss> losses = CheckRegions(decl, init);
  if (losses.empty()) return true;
  LossDlg dialog("The designer will not read these statements back as they are:", losses);
  const LossDlg::Choice choice = dialog.Choose();
  if (choice == LossDlg::cKeep) {
    const KeptLines more = TakeKept(decl, init);
    decl.push_back(declEnd);
    init.push_back(initEnd);
    AppendKept(decl, more.decl);
    AppendKept(init, more.init);
    frame.declLines = decl;
    frame.initLines = init;
  }
  return choice != LossDlg::cCancelled;
}

// The texts may have changed by another road: another program has written a file and the user has
// loaded it. The regions are then looked for again. They must be as they were read.
bool DesignSession::FindAgain() {
  bool isSame = true;
  for (const SectionRef* section : {&target.decl, &target.init}) {
    const CppEditor* editor = EditorOf(*section);
    if (!editor) {
      mavro::Information("The file of the form can't be opened: " + section->text->Path());
      return false;
    }
    if (const std::string reason = WhyNot(*editor); !reason.empty()) {
      mavro::Information(reason);
      return false;
    }
    isSame &= TextIn(*editor) == section->text->Text();
  }
  if (isSame) return true;
  FormLocator again;
  again.Scan(TextOf(*EditorOf(target.decl)));
  const auto its =
      std::find_if(again.targets.begin(), again.targets.end(),
                   [this](const FormTarget& each) { return each.className == target.className; });
  const bool found =
      its != again.targets.end() &&
      again.Select(static_cast<size_t>(its - again.targets.begin()),
                   [this](const std::string& path, bool is) { return Companion(path, is); });
  if (!found) {
    mavro::Information("The form is no longer in the text: it has been changed by another program");
    return false;
  }
  const FormTarget& now = again.Selected();
  const bool hasSameRegions =
      now.decl.Lines() == target.decl.Lines() && now.init.Lines() == target.init.Lines();
  if (!hasSameRegions &&
      !mavro::ConfirmLoss(
          "The form has been changed by another program while it was designed here. "
          "Replace what is in the text now?"))
    return false;
  locator = again;
  target = now;
  return true;
}

bool DesignSession::MayWrite(DesignFrame& frame) {
  if (!AskAboutWritten(frame)) return false;
  tabs.CheckDisk();
  if (!FindAgain()) return false;
  AppendKept(frame.declLines, kept.decl);
  AppendKept(frame.initLines, kept.init);
  return true;
}

// Regions that have not changed are left alone. In the order of the text.
void DesignSession::Write(const DesignFrame& frame) {
  std::map<std::string, std::vector<TextEdit>> edits;
  const std::vector<RegionEdit> all = locator.ReplaceRegions(frame.declLines, frame.initLines);
  for (const SectionRef* section : {&target.decl, &target.init}) {
    CppEditor* editor = EditorOf(*section);
    if (!editor || edits.contains(section->text->Path())) continue;
    std::vector<TextEdit>& its = edits[section->text->Path()];
    for (const RegionEdit& each : all) {
      if (each.path != section->text->Path()) continue;
      const TextEdit& edit = each.edit;
      if (section->text->Text().compare(edit.offset, edit.length, edit.text) != 0)
        its.push_back(edit);
    }
    std::sort(its.begin(), its.end(),
              [](const TextEdit& a, const TextEdit& b) { return a.offset < b.offset; });
    if (!its.empty()) ApplyTextEdits(*editor, its);
  }
  theProject.parseOpenEditors(nullptr);
  if (CppEditor* editor = EditorOf(target.decl)) editor->Focus();
}

// The method is in front afterwards.
void DesignSession::CarryOutWish(const DesignFrame& frame) {
  if (frame.handlerAction == 0) return;
  MemberEdits edits = EditsOfTabs(tabs, wizard, sources);
  if (frame.handlerAction < 0) {
    const TagItem* item = wizard.tags.findMember(frame.handlerClass, frame.handlerName,
                                                 TagLookup::Want::cDeclaration);
    if (item && ApplyChange(tabs, edits.Remove(*item))) theProject.parseOpenEditors(nullptr);
    return;
  }
  const HandlerPlace found = edits.GoToOrAddHandler(frame.handlerClass, frame.handlerName, "void",
                                                    frame.handlerArgs + " &e");
  if (found.place)
    tabs.GoTo(found.place->path, found.place->line + 1);
  else if (ApplyChange(tabs, found.change))
    theProject.parseOpenEditors(nullptr);
}

void DesignSession::Run(CppEditor& editor) {
  theProject.parseOpenEditors(nullptr);
  if (!Find(editor) || !Read()) return;
  DesignFrame frame(form);
  if (const mavro::Form* main = mavro::theApplication.mainForm)
    frame.SetBounds(main->left, main->top, main->width, main->height);
  frame.maySave = [&] { return MayWrite(frame); };
  const int result = frame.Run(true);
  if (result != mavro::Form::cOk) return;
  Write(frame);
  CarryOutWish(frame);
}

void DesignForm(EditTabs& tabs, CodeWizard& wizard, CodeSources& sources) {
  EditTab* tab = tabs.Active();
  if (!tab) return;
  try {
    DesignSession(tabs, wizard, sources).Run(*tab->editor);
  } catch (const std::exception&) {
    mavro::Information("Designer error");
  }
}

}  // namespace zendry
