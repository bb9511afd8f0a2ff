// SPDX-License-Identifier: MIT-0
#pragma once

#include <mavro>
#include <string>

// The window of a small text editor: one file, with a menu, a tool bar and the caret's place.
class EditForm : public Form {
 public:
  typedef EditForm This;
  EditForm();

  void Open(const std::string& path);

 private:
  class Commands : public ActionList {
   public:
    explicit Commands(EditForm* form);
  };
  enum CommandId { cNew = 200, cOpen, cSave, cSaveAs, cFind, cFindNext, cQuit };

  void Initialize();
  void Command(int id);
  void New();
  void AskAndOpen();
  bool Save(bool underAnotherName);
  void AskAndFind();
  void FindNext();
  // Offers to save; false if the user wants to go on editing.
  bool MayLose();
  void ShowName();

  void Changed(NotifyArgs& args);
  void CaretMoved(NotifyArgs& args);
  void Closing(NotifyArgs& args);

  Commands commands{this};
  MenuBar bar;
  Menu menu;
  ToolBar tools;
  StatusBar status;
  Memo memo;
  std::string fileName;
  std::string lastFound;
  bool isChanged = false;
};
