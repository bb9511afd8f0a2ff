#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QToolButton>
#include <functional>
#include <string>
#include <vector>

#include "GuiDriver.h"
#include "ScopedHome.h"
#include "ScriptedDialogs.h"
#include "TempFolder.h"
#include "build/BuildActs.h"
#include "config/IdeSession.h"
#include "debug/Debugger.h"
#include "frame/FileActs.h"
#include "frame/IdeRun.h"
#include "frame/MainForm.h"
#include "frame/PrjActs.h"
#include "project/Project.h"

namespace test {

// Clicks the button of a tool bar's row. One that has no room is chosen as its menu does.
inline void ClickToolRow(const mavro::ToolBar& bar, int row) {
  if (!bar.GetRow(row).enabled) return;
  int place = 1;  // the first button of the bar offers those without room
  for (int i = 0; i < row; ++i)
    if (!bar.GetRow(i).separator && !bar.GetRow(i).control) ++place;
  const auto buttons =
      WidgetOf(bar)->findChildren<QToolButton*>(QString(), Qt::FindDirectChildrenOnly);
  QToolButton* button = buttons.at(place);
  if (!button->isVisible()) return button->click();
  QWidget* window = button->window();
  QTest::mouseClick(window->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                    button->mapTo(window, button->rect().center()));
}

// The whole program with a home of its own and dialogs with scripted answers.
//
//   test::IdeDriver ide;
//   std::string path = ide.Project({{"a.cpp", "int main() {}\n"}});
//   ide.Run({path}, [&] {
//     ide.Press(Qt::Key_F7);
//     EXPECT_EQ(ide.Cells(zendry::theMainForm->errorList.list), ...);
//   });
class IdeDriver {
 public:
  struct File {
    std::string name;
    std::string text;
  };

  IdeDriver() : savedFolder(std::filesystem::current_path()) {
    zendry::theProject.modified = false;
    zendry::theProject.mode = zendry::cRelease;
    zendry::theProject.programParams.clear();
    zendry::theIdeConfig = {};
    zendry::theDebugger.Reset();
  }
  ~IdeDriver() {
    zendry::theIdeConfig = {};
    std::error_code ignored;
    std::filesystem::current_path(savedFolder, ignored);
    zendry::theDebugger.running = false;
  }

  // Writes files and a project of them; answers the project file's path.
  std::string Project(const std::vector<File>& sources, const std::string& name = "p.zpj") {
    std::string list;
    for (const File& file : sources) {
      files.Write(file.name, file.text);
      list += "\t<file name=\"" + file.name + "\"/>\n";
    }
    return files.Write(name, "<ide>\n<set parse=\"y\"/></ide>\n<src>\n" + list +
                                 "</src>\n<hdr>\n</hdr>\n<opt>\n\t<gen>\n\t\t<targ id=\"0\"/>\n"
                                 "\t</gen>\n\t<dbg>\n\t\t<gcc id=\"0\"/>\n\t\t<comp opt=\"-g\"/>\n"
                                 "\t\t<link opt=\"-g\"/>\n\t</dbg>\n\t<rel>\n\t\t<gcc id=\"0\"/>\n"
                                 "\t\t<comp opt=\"-O2\"/>\n\t\t<link opt=\"-s\"/>\n\t</rel>\n"
                                 "</opt>\n");
  }

  // Runs the program from its settings to its settings; `script` is called once its window is up.
  // Afterwards the window is closed if it is still there, with a No to whatever it asks then and no
  // answer is left for.
  void Run(const mavro::ArgumentList& arguments, const std::function<void()>& script) {
    zendry::theIdeSession = zendry::IdeSession();
    bool ran = false;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, [&] {
      zendry::MainForm* form = zendry::theMainForm;
      if (!form || mavro::activeForm != form) return;
      if (!static_cast<mavro::Form::Impl*>(form->impl)->firstShowDone) return;
      poll.stop();
      ran = true;
      script();
      dialogs.otherwise = mavro::Answer::cNo;
      if (form == zendry::theMainForm && form->impl->hwnd) form->impl->OnMenuCommand(2, 0);
      dialogs.otherwise = mavro::Answer::cCancel;
    });
    poll.start(2);
    EXPECT_EQ(zendry::RunIde(arguments), 0);
    EXPECT_TRUE(ran);
  }

  // Calls `script` with the dialog that shows next above the main window.
  void OnDialog(const std::function<void(mavro::Form&)>& script) {
    auto* poll = new QTimer;
    QObject::connect(poll, &QTimer::timeout, [poll, script] {
      mavro::Form* form = mavro::activeForm;
      if (!form || form == zendry::theMainForm) return;
      if (!static_cast<mavro::Form::Impl*>(form->impl)->firstShowDone) return;
      poll->stop();
      poll->deleteLater();
      script(*form);
    });
    poll->start(2);
  }

  // Presses a key at the main window.
  static void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    Key(*zendry::theMainForm, key, modifiers);
  }

  static std::vector<std::string> Captions() {
    std::vector<std::string> captions;
    for (int i = 0; i < zendry::theMainForm->editTabs.TabCount(); ++i)
      captions.push_back(zendry::theMainForm->editTabs.GetPage(i)->text);
    return captions;
  }

  // The rows of a list, cells joined by "|".
  static std::vector<std::string> Rows(const mavro::ListView& list) {
    std::vector<std::string> rows;
    for (int row = 0; row < list.rowCount; ++row) {
      std::string cells = list.GetCell(row, 0);
      for (int column = 1; column < list.colCount; ++column)
        cells += "|" + list.GetCell(row, column);
      rows.push_back(cells);
    }
    return rows;
  }

  // The tree as "Source Files(src(a.cpp) b.cpp)".
  static std::string Tree(const mavro::TreeNode& node) {
    std::string shown = node.text;
    if (node.children.empty()) return shown;
    shown += "(";
    for (const auto& child : node.children)
      shown += (child == node.children.front() ? "" : " ") + Tree(*child);
    return shown + ")";
  }
  static std::string Tree() { return Tree(zendry::theMainForm->projectTree.Root()); }

  // The text of the status bar.
  static std::string Status(int pane = zendry::cTextPane) {
    return zendry::theMainForm->statusBar.PaneText(pane);
  }

  std::string Ini() const {
    return home.Exists(".zendry/zendry.ini") ? home.Read(".zendry/zendry.ini") : "";
  }

  // Leaves unsaved work, as a program that was killed does.
  void LeaveRescued(const std::string& kind, const std::string& path, const std::string& text) {
    const pid_t gone = fork();
    if (gone == 0) _exit(0);
    waitpid(gone, nullptr, 0);
    home.Write(".zendry/rescue/" + kind + "-" + std::to_string(gone) + "-1",
               path + std::string(1, '\0') + text);
  }

  TempFolder home;
  TempFolder files;
  ScopedHome scopedHome{home.Path()};
  ScriptedDialogs dialogs;

 private:
  std::filesystem::path savedFolder;
};

}  // namespace test
