#include "help/HelpActs.h"

#include <utility>

#include "base/HelpCommands.h"
#include "help/AboutDlg.h"

namespace zendry {

namespace {

constexpr CommandRow cRows[] = {
    {cAboutCommand, "&About Zendry..."},
    {mavro::cSeparatorRow},
    {cShowHelpCommand, "&Programer help", mavro::cControlKey | cKeyF1},
    {cWordHelpCommand, "&Code word help", cKeyF1},
};

}  // namespace

HelpActs theHelpActs;

HelpActs::HelpActs() : CommandList(cRows) {}

void HelpActs::Bind(HelpFolders newFolders, std::function<void()> newWordHelp) {
  folders = std::move(newFolders);
  wordHelp = std::move(newWordHelp);
}

void HelpActs::Unbind() {
  window.reset();
  wordHelp = nullptr;
}

void HelpActs::showHelp(const char* word, const std::string& firstClass) {
  if (!window) window = std::make_unique<HelpWindow>(folders);
  window->showHelp(word, firstClass);
}

void HelpActs::CarryOut(int id) {
  if (id == cAboutCommand) AboutDlg().Run(true);
  if (id == cShowHelpCommand) showHelp(nullptr);
  if (id == cWordHelpCommand && wordHelp) wordHelp();
}

}  // namespace zendry
