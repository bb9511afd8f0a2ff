#include "frame/NewFileDlg.h"

#include <algorithm>

#include "FileText.h"
#include "SystemDialogs.h"
#include "base/ErrorBox.h"
#include "base/Paths.h"
#include "base/ReasonFirst.h"
#include "frame/FileActs.h"
#include "frame/MainForm.h"
#include "frame/PrjActs.h"
#include "project/Project.h"

namespace zendry {

namespace {

// Writes a new file and shows it. An existing file is never overwritten.
bool MakeAndOpen(const std::string& path, const std::string& content, bool append) {
  if (mavro::FileExists(path)) {
    if (!mavro::Confirm("File:   " + path + "\n\nis there already!\tOpen it?")) return false;
  } else if (const mavro::FileResult result = mavro::SaveFileText(path, content); !result.Ok()) {
    theMainForm->SetStatus(ReasonFirst(result.error), "");
    ShowError("Error on save file:" + path);
    return false;
  }
  if (!theMainForm->editTabs.OpenFile(path)) return false;
  if (append) thePrjActs.AddMade(path);
  return true;
}

}  // namespace

NewFileDlg::NewFileDlg(const std::string& title, NewFileWish& newWish)
    : wish(newWish),
      folderSource(newWish.folder),
      nameSource(newWish.name),
      pathLink(&pathEdit),
      nameLink(&nameEdit) {
  Initialize();
  text = title;
  append.checked = wish.append;
  action.itemIndex = static_cast<int>(wish.kind);
  pathLink.source = &folderSource;
  nameLink.source = &nameSource;
  focusControl = &nameEdit;
}

void NewFileDlg::Initialize() {
  using mavro::Button;
  // clang-format off
	//!init
	this->SetBounds(0, 0, 407, 261);
	this->resizable = false;
	this->onDestroy.Add_H(this, &This::OnDestroyed);
	//!<Label>
	pathLabel.SetBounds(15, 4, 200, 18);
	pathLabel.text = "File path:";
	this->Add(&pathLabel);
	//!<Edit>
	pathEdit.SetBounds(15, 22, 335, 24);
	this->Add(&pathEdit);
	//!<Button>
	browse.SetBounds(355, 22, 36, 24);
	browse.text = "...";
	browse.toolTip = "Choose the folder";
	browse.onClick.Add_H(this, &This::OnBrowse);
	this->Add(&browse);
	//!<Label>
	nameLabel.SetBounds(15, 48, 200, 18);
	nameLabel.text = "File name:";
	this->Add(&nameLabel);
	//!<Edit>
	nameEdit.SetBounds(15, 66, 335, 24);
	this->Add(&nameEdit);
	//!<CheckBox>
	append.SetBounds(20, 93, 330, 22);
	append.text = "Append files to the project";
	this->Add(&append);
	//!<RadioGroup>
	action.SetBounds(15, 118, 376, 96);
	action.text = "Action:";
	action.items.Add("Create new module (*.h) and (*.cpp)");
	action.items.Add("Create header file  (*.h)");
	action.items.Add("Create source file  (*.cpp)");
	this->Add(&action);
	//!<Button>
	okButton.SetBounds(213, 221, 84, 30);
	okButton.kind = Button::cOk;
	this->Add(&okButton);
	//!<Button>
	cancel.SetBounds(307, 221, 84, 30);
	cancel.kind = Button::cCancel;
	this->Add(&cancel);
	//!end
  // clang-format on
}

void NewFileDlg::OnBrowse(mavro::NotifyArgs&) {
  const std::string chosen = mavro::Dialogs().chooseFolder("File path:", pathEdit.text);
  if (!chosen.empty()) pathEdit.text = chosen;
}

void NewFileDlg::OnDestroyed(mavro::NotifyArgs&) {
  wish.append = append.checked;
  wish.kind = static_cast<NewFileKind>(std::max(0, action.itemIndex.Get()));
}

void AskForNewFile() {
  NewFileWish wish;
  wish.folder = theProject.folder;
  if (NewFileDlg("New..." + BaseName(theProject.name), wish).Run(true) != mavro::Form::cOk) return;
  if (wish.name.empty()) return ShowError("Error: no file name!");
  const std::string base = AbsolutePath(TidyPath(wish.folder + "/" + wish.name));
  const bool makesHeader = wish.kind != NewFileKind::cSourceOnly;
  if (makesHeader && !MakeAndOpen(base + ".h", "#pragma once\n\n", wish.append)) return;
  if (wish.kind == NewFileKind::cHeaderOnly) return;
  // A source alone also includes a header of its name, which may be created later.
  const std::string include = "#include \"" + BaseName(base) + ".h\"\n\n";
  if (!MakeAndOpen(base + ".cpp", include, wish.append)) return;
  if (wish.append) theFileActs.SaveProject();
}

}  // namespace zendry
