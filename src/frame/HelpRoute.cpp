#include "frame/HelpRoute.h"

#include "FileText.h"
#include "base/HelpCommands.h"
#include "browser/BrowserActs.h"
#include "code/WordAtCaret.h"
#include "config/IdeConfig.h"
#include "frame/MainForm.h"
#include "help/HelpActs.h"

namespace zendry {

namespace {

std::string ClassAtCaret(MainForm& form) {
  const EditTab* tab = form.editTabs.Active();
  if (!tab) return {};
  const CaretText& text = tab->editor->LiveText();
  form.sources.RefreshTags();
  return ClassOfWord(form.completion.wizard, text, WordAtCaret(text));
}

}  // namespace

void BindHelp(MainForm& form) {
  theHelpActs.Bind({theIdeConfig.appDir + "Help", mavro::ProfileFolder() + "/.zendry/Help"},
                   [] { theBrowserActs.OnCommand(cWordHelpCommand); });
  theBrowserActs.onWordHelp = [&form](const std::string& word) {
    theHelpActs.showHelp(word.c_str(), ClassAtCaret(form));
  };
}

void UnbindHelp() {
  theBrowserActs.onWordHelp = nullptr;
  theHelpActs.Unbind();
}

}  // namespace zendry
