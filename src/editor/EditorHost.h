#pragma once

#include <string>

#include "Menu.h"

namespace zendry {

class Completion;
class CppEditor;

// The window as the tabs, their editors and the lists of places see it. The frame implements it.
class EditorHost {
 public:
  virtual ~EditorHost() = default;

  // Shows a text in the status line.
  virtual void Say(const std::string& text) = 0;
  // Unsaved text has no rescue copy; `reason` says why. Empty: all unsaved text has one.
  virtual void ShowWhyNoCopy(const std::string& reason) = 0;
  // Another tab is in front, or the tab in front has a new name: the window's title shows the name.
  virtual void FrontChanged() = 0;
  // Shows the position of the editor's caret, if its file is in front.
  virtual void ShowCaretOf(const CppEditor& editor) = 0;
  // The first tab has been opened, or the last tab has been closed.
  virtual void SetEditorCommandsEnabled(bool on) = 0;
  virtual void SetMacroRecording(bool on) = 0;

  // A file has been opened by the user, or by a list.
  virtual void FileOpened(const std::string& path) = 0;
  // A file is in a tab now, under its name; a tab is about to lose the file or its name.
  virtual void TabOpened(const std::string& path) = 0;
  virtual void TabClosing(const std::string& path) = 0;
  // The user has clicked beside a line, counted from 0, in the margin of marks.
  virtual void MarginClicked(const CppEditor& editor, int line) = 0;
  // Writes the project, or its session.
  virtual void SaveProject() = 0;
  virtual void SaveSession() = 0;
  // Asks for a new file of the project, makes and opens it.
  virtual void AskForNewFile() = 0;

  // The popup menus of an editor's text and of its margins; they live as long as the window.
  virtual mavro::ContextMenu& TextMenu() = 0;
  virtual mavro::ContextMenu& MarginMenu() = 0;

  // Completion and call tips.
  virtual Completion& CodeCompletion() = 0;

  // The first says if the value of the expression under the mouse is wanted now; the second asks
  // for it, or says by an empty text that none is there.
  virtual bool WantsValueTips() = 0;
  virtual void ShowValueTip(const std::string& expression) = 0;
};

}  // namespace zendry
