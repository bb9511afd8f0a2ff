#pragma once

#include <string>

#include "Menu.h"

namespace zendry {

class Completion;
class CppEditor;

// What the tabs, their editors and the lists of places ask of the window that they stand in. The
// frame implements it.
class EditorHost {
 public:
  virtual ~EditorHost() = default;

  // Says something in the status line.
  virtual void Say(const std::string& text) = 0;
  // Unsaved text has no copy for a start after this one, and why; empty: all of it has.
  virtual void ShowWhyNoCopy(const std::string& reason) = 0;
  // Another tab is in front, or the one in front has another name: it is in the window's title.
  virtual void FrontChanged() = 0;
  // Shows the caret's place, if its file is the one in front.
  virtual void ShowCaretOf(const CppEditor& editor) = 0;
  // The first tab has come or the last one gone.
  virtual void SetEditorCommandsEnabled(bool on) = 0;
  virtual void SetMacroRecording(bool on) = 0;

  // A file has been opened by hand, or by a list.
  virtual void FileOpened(const std::string& path) = 0;
  // The project, or its session, is to be written.
  virtual void SaveProject() = 0;
  virtual void SaveSession() = 0;
  // Asks for a new file of the project, makes and opens it.
  virtual void AskForNewFile() = 0;

  // The popup menus of an editor's text and of its margins; they live as long as the window.
  virtual mavro::ContextMenu& TextMenu() = 0;
  virtual mavro::ContextMenu& MarginMenu() = 0;

  // Completion and call tips.
  virtual Completion& CodeCompletion() = 0;

  // Whether the value of what the mouse rests on is wanted now, and the request for it.
  virtual bool WantsValueTips() = 0;
  virtual void ShowValueTip(const std::string& expression) = 0;
};

}  // namespace zendry
