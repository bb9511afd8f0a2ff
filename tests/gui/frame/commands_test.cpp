#include <gtest/gtest.h>

#include <map>
#include <sstream>

#include "Golden.h"
#include "base/CommandTable.h"
#include "browser/BrowserActs.h"
#include "build/BuildActs.h"
#include "debug/Debugger.h"
#include "editor/EditorActs.h"
#include "editor/EditorViewActs.h"
#include "frame/FileActs.h"
#include "frame/PrjActs.h"
#include "frame/ToolActs.h"
#include "help/HelpActs.h"

namespace zendry {
namespace {

struct NamedList {
  const char* name;
  const mavro::ActionList& list;
};

const NamedList cLists[] = {{"FileActs", theFileActs},
                            {"EditorActs", theEditorActs},
                            {"EditorViewActs", theEditorViewActs},
                            {"BrowserActs", theBrowserActs},
                            {"BuildActs", theBuildActs},
                            {"PrjActs", thePrjActs},
                            {"Debugger", theDebugger},
                            {"ToolActs", theToolActs},
                            {"HelpActs", theHelpActs}};

std::string RowText(const mavro::Action& row) {
  if (row.id == mavro::cSeparatorRow) return "  --";
  if (row.id == mavro::cSubmenuRow) return "  > " + row.text;
  if (row.id == mavro::cEndSubmenuRow) return "  <";
  return "  " + std::to_string(row.id) + " \"" + row.text + "\"" + mavro::HotKeyText(row.hotkey);
}

TEST(Commands, Tables_KeepTheirIdsCaptionsAndKeys) {
  std::ostringstream tables;
  for (const NamedList& named : cLists) {
    tables << named.name << "\n";
    for (const mavro::Action* row : named.list.Rows()) tables << RowText(*row) << "\n";
  }
  EXPECT_TRUE(test::MatchesGolden(TEST_DATA "/commands.golden", tables.str()));
}

TEST(Commands, Hotkeys_BelongToOneRowEach) {
  std::map<int, std::string> owners;
  for (const NamedList& named : cLists)
    for (const auto& action : named.list.Actions()) {
      if (action->hotkey == 0) continue;
      const auto [owner, isNew] = owners.try_emplace(action->hotkey, action->text);
      EXPECT_TRUE(isNew) << owner->second << " and " << action->text << " share"
                         << mavro::HotKeyText(action->hotkey);
    }
}

TEST(Commands, Ids_LieInTheRangeOfCommandsAndAreUnique) {
  std::map<int, std::string> owners;
  for (const NamedList& named : cLists)
    for (const auto& action : named.list.Actions()) {
      EXPECT_GT(action->id, 2);
      EXPECT_LT(action->id, 0x1000);
      const auto [owner, isNew] = owners.try_emplace(action->id, action->text);
      EXPECT_TRUE(isNew) << owner->second << " and " << action->text;
    }
}

}  // namespace
}  // namespace zendry
