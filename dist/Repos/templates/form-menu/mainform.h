// SPDX-License-Identifier: MIT-0
#pragma once

#include <mavro>

// The window of a program with a menu, a tool bar and a status bar.
class MainForm : public Form {
 public:
  typedef MainForm This;
  MainForm();

 private:
  class Commands : public ActionList {
   public:
    explicit Commands(MainForm* form);
  };
  enum CommandId { cAdd = 200, cRemove, cQuit };

  void Initialize();
  void Command(int id);
  void ShowCount();

  Commands commands{this};
  MenuBar bar;
  Menu menu;
  ToolBar tools;
  StatusBar status;
  ListBox list;
  int added = 0;
};
