#pragma once

#include "base/CommandTable.h"

namespace zendry {

// The editor's commands in the menu "&View": what is shown of a text, not the text itself. They act
// as those of theEditorActs do.
class EditorViewActs : public CommandList {
 public:
  EditorViewActs();

 private:
  void CarryOut(int id) override;
};

extern EditorViewActs theEditorViewActs;

}  // namespace zendry
