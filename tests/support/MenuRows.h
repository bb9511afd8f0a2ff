#pragma once

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <string>
#include <vector>

#include "GuiDriver.h"

namespace test {

// The row of a menu bar by the captions that lead to it, without their mnemonics and keys; null if
// there is none.
//
//   Row(form, {"Edit", "Line ends", "LF (Unix)"})->trigger();
inline QAction* Row(const mavro::Form& form, const std::vector<std::string>& captions) {
  QList<QAction*> rows = WidgetOf(form)->findChild<QMenuBar*>()->actions();
  QAction* found = nullptr;
  for (const std::string& caption : captions) {
    if (found && !found->menu()) return nullptr;
    if (found) rows = found->menu()->actions();
    found = nullptr;
    for (QAction* row : rows)
      if (row->text().section('\t', 0, 0).remove('&').toStdString() == caption) found = row;
    if (!found) return nullptr;
  }
  return found;
}

}  // namespace test
