#include "frmedt/NewForm.h"

#include <algorithm>
#include <vector>

#include "base/ErrorBox.h"
#include "base/Paths.h"
#include "base/ReasonFirst.h"
#include "editor/ApplyEdits.h"
#include "editor/EditTabs.h"
#include "editor/EditorHost.h"
#include "frmedt/FormLocator.h"
#include "frmedt/FormSkeleton.h"
#include "frmedt/NewFormDlg.h"
#include "project/Project.h"

namespace zendry {

namespace {

// A block that begins at most this far above the caret, and not at the file's beginning, is left.
constexpr int cFarBlock = 10;
constexpr int cFirstLines = 4;

// The text with the line ends of an editor.
std::string WithEndsOf(const CppEditor& editor, const std::string& text) {
  const std::string name = editor.LineEndName();
  const char* end = name == "CR" ? "\r" : name == "LF" ? "\n" : "\r\n";
  std::string changed;
  for (const char c : text)
    if (c == '\n')
      changed += end;
    else
      changed += c;
  return changed;
}

int FoldParent(const CppEditor& editor, int line) {
  return static_cast<int>(editor.Send(mavro::SCI_GETFOLDPARENT, static_cast<size_t>(line)));
}

// Where a class goes: at the caret, or above the block that the caret is just inside of.
int PlaceFor(const CppEditor& editor) {
  const int line = editor.CaretLine();
  int block = FoldParent(editor, line);
  // A region of a form is no block of the language.
  if (block >= 0 && MarkerOf(editor.LineText(block)) != FormMarker::cNone)
    block = FoldParent(editor, block);
  const bool leaves = block > cFirstLines && line - block < cFarBlock;
  return leaves ? editor.LineStart(block - 1) : editor.CaretPosition();
}

bool InsertForm(const FormSkeleton& skeleton, CppEditor& editor, EditorHost& host) {
  if (editor.IsReadOnly()) {
    host.Say(editor.WhyReadOnly());
    return false;
  }
  const std::string text = WithEndsOf(editor, FormSkeleton::FileOf(skeleton.Header()));
  const int place = PlaceFor(editor);
  ApplyTextEdits(editor, {{static_cast<size_t>(place), 0, text}});
  editor.goToLine(editor.LineOf(place));
  theProject.parseOpenEditors(&editor.LiveText());
  return true;
}

// The project's folder; without a project, that of the file in front.
std::string FolderFor(const EditTabs& tabs) {
  if (theProject.isOpen && !theProject.folder.empty()) return theProject.folder;
  const EditTab* tab = tabs.Active();
  const std::string path = tab ? tab->editor->fileName : std::string();
  const size_t slash = path.rfind('/');
  return slash == std::string::npos ? std::string(".") : path.substr(0, slash);
}

bool MakeFiles(FormSkeleton& skeleton, const std::string& name, EditTabs& tabs,
               const std::function<void(const std::string& path)>& addToProject) {
  const std::string base = AbsolutePath(TidyPath(FolderFor(tabs) + "/" + name));
  if (const std::string path = base + ".h";
      mavro::FileExists(path) &&
      !mavro::ConfirmLoss("File:   " + path + "\n\nis there already!\tReplace it?"))
    return false;
  if (const mavro::FileResult result = skeleton.WriteFiles(base); !result.Ok()) {
    tabs.Host()->Say(ReasonFirst(result.error));
    ShowError("Error on save file:" + skeleton.headerPath);
    return false;
  }
  for (const std::string& path : {skeleton.headerPath, skeleton.sourcePath})
    if (!path.empty()) addToProject(path);
  CppEditor* editor = tabs.OpenFile(skeleton.headerPath);
  if (editor) theProject.parseOpenEditors(&editor->LiveText());
  return true;
}

}  // namespace

bool NewForm(EditTabs& tabs, const std::function<void(const std::string& path)>& addToProject) {
  EditTab* tab = tabs.Active();
  NewFormDlg dialog(tab != nullptr);
  if (!dialog.Ask() || !tabs.Host()) return false;
  FormSkeleton skeleton;
  skeleton.className = dialog.ClassName();
  if (tab && dialog.IsForCurrentFile()) return InsertForm(skeleton, *tab->editor, *tabs.Host());
  return MakeFiles(skeleton, dialog.FileName(), tabs, addToProject);
}

}  // namespace zendry
