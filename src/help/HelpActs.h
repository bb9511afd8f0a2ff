#pragma once

#include <functional>
#include <memory>
#include <string>

#include "base/CommandTable.h"
#include "help/HelpWindow.h"

namespace zendry {

// The commands of the menu "&Help". Owns the help window, which is made when it is first shown.
class HelpActs : public CommandList {
 public:
  HelpActs();

  // Where the indexes are, and what the command for the word at the caret goes on to.
  void Bind(HelpFolders newFolders, std::function<void()> newWordHelp);
  // Closes the window for good.
  void Unbind();

  // As HelpWindow::showHelp.
  void showHelp(const char* word, const std::string& firstClass = {});
  // Null before it is first shown.
  HelpWindow* Window() const { return window.get(); }

 private:
  void CarryOut(int id) override;

  HelpFolders folders;
  std::function<void()> wordHelp;
  std::unique_ptr<HelpWindow> window;
};

extern HelpActs theHelpActs;

}  // namespace zendry
