// Types texts without their leading blanks into the editor of the program, key by key, and keeps
// the result, for indent_accuracy.py.
//
//   indent_typist FOLDER COUNT
//
// For each number N below COUNT, FOLDER holds "N.cpp" (a file), "N.line" (the line to type after,
// from 0, and the tab width to use in a file that doesn't tell) and "N.typed"; the file is written
// to "N.out" afterwards.

#include <QApplication>
#include <QTest>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "Application.h"
#include "Entry.h"
#include "Form.h"
#include "SysImpl.h"
#include "code/CodeSources.h"
#include "code/Completion.h"
#include "config/EditorSettings.h"
#include "editor/EditTabs.h"
#include "editor/EditorHost.h"

namespace {

struct NoSources : zendry::CodeSources {
  const std::vector<zendry::TagData*>& Modules() const override { return none; }
  zendry::TagData* Library() const override { return nullptr; }
  zendry::TagData* ModuleOf(const zendry::EditorText&) override { return nullptr; }
  void RefreshTags() override {}
  void Log(std::string_view, std::string_view) override {}

  std::vector<zendry::TagData*> none;
};

struct NoHost : zendry::EditorHost {
  void Say(const std::string&) override {}
  void ShowWhyNoCopy(const std::string&) override {}
  void FrontChanged() override {}
  void ShowCaretOf(const zendry::CppEditor&) override {}
  void SetEditorCommandsEnabled(bool) override {}
  void SetMacroRecording(bool) override {}
  void FileOpened(const std::string&) override {}
  void TabOpened(const std::string&) override {}
  void TabClosing(const std::string&) override {}
  void MarginClicked(const zendry::CppEditor&, int) override {}
  void SaveProject() override {}
  void SaveSession() override {}
  void AskForNewFile() override {}
  mavro::ContextMenu& TextMenu() override { std::abort(); }
  mavro::ContextMenu& MarginMenu() override { std::abort(); }
  zendry::Completion& CodeCompletion() override { return completion; }
  bool WantsValueTips() override { return false; }
  void ShowValueTip(const std::string&) override {}

  NoSources sources;
  zendry::Completion completion{sources};
};

std::string ReadAll(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

struct TypistForm : mavro::Form {
  NoHost host;
  zendry::EditTabs tabs{host};
  std::string folder;
  int count = 0;

  TypistForm(std::string itsFolder, int itsCount) : folder(std::move(itsFolder)), count(itsCount) {
    SetBounds(0, 0, 1000, 700);
    tabs.dock = mavro::Dock::cFill;
    Add(&tabs);
    onShow.Add_H(this, &TypistForm::Shown);
  }

  // An open list of names would take the Enter.
  static void TypeInto(zendry::CppEditor& editor, const std::string& text) {
    QWidget* widget = editor.impl->hwnd->widget;
    for (const char c : text) {
      if (c != '\n') {
        QTest::keyClick(widget, c);
        continue;
      }
      editor.Send(mavro::SCI_AUTOCCANCEL);
      QTest::keyClick(widget, Qt::Key_Return);
    }
  }

  void TypeOne(const std::string& stem) {
    int line = 0, tabWidth = 8;
    if (std::sscanf(ReadAll(stem + ".line").c_str(), "%d %d", &line, &tabWidth) != 2) return;
    zendry::theEditorSettings.tabSize = tabWidth;
    zendry::CppEditor* editor = tabs.NewTab(stem + ".cpp");
    if (!editor) return;
    editor->Focus();
    editor->Select(editor->LineEnd(line), editor->LineEnd(line));
    TypeInto(*editor, ReadAll(stem + ".typed"));
    std::ofstream(stem + ".out", std::ios::binary) << editor->GetText();
    tabs.CloseTab(tabs.TabCount() - 1, zendry::EditTabs::Unsaved::cDrop);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }

  void Shown(mavro::NotifyArgs&) {
    for (int i = 0; i < count; ++i) TypeOne(folder + "/" + std::to_string(i));
    Close();
  }
};

}  // namespace

int mavro::Application::Main(ArgumentList& arguments) {
  if (arguments.size() != 2) return 2;
  TypistForm form(arguments[0], std::atoi(arguments[1].c_str()));
  form.Run(false);
  return 0;
}

int main(int argc, char** argv) {
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  return mavro::RunApplication(argc, argv);
}
