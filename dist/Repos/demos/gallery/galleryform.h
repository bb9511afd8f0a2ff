// SPDX-License-Identifier: MIT-0
#pragma once

#include "dialogpage.h"
#include "drawpage.h"
#include "gridpage.h"
#include "inputpage.h"
#include "listpage.h"
#include "plotpage.h"

// The window: pages at the left, switches for the controls of the page at the right, the log of
// events below.
class GalleryForm : public Form {
 public:
  typedef GalleryForm This;
  GalleryForm();

 private:
  class Commands : public ActionList {
   public:
    explicit Commands(GalleryForm* form);
  };
  enum CommandId { cClear = 200, cNextPage, cQuit };
  enum Switch { cEnabled = 1, cVisible = 2, cFramed = 4, cYellow = 8, cLarge = 16 };

  void Initialize();
  void InitializeBars();
  void InitializeSwitches();
  void Command(int id);
  void Switched(NotifyArgs& args);
  void PageChanged(NotifyArgs& args);
  void Write(const std::string& line);

  Commands commands{this};
  MenuBar bar;
  Menu menu;
  ContextMenu logMenu;
  ToolBar tools;
  StatusBar status;
  GalleryPage::Log log = [this](const std::string& line) { Write(line); };
  TabCtrl tabs;
  InputPage input{log};
  ListPage lists{log};
  DrawPage drawing{log};
  DialogPage dialogs{log};
  GridPage grid{log};
  PlotPage plots{log};
  Panel side;
  CheckGroup switches;
  ListBox events;
  SplitContainer upper, whole;
};
