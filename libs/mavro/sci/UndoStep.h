#pragma once

#include "SciEditor.h"

namespace mavro {

// Makes the changes of a text one undo step, as long as it lives.
class UndoStep {
 public:
  explicit UndoStep(const SciEditor& itsEditor) : editor(itsEditor) {
    editor.Send(SCI_BEGINUNDOACTION);
  }
  ~UndoStep() { editor.Send(SCI_ENDUNDOACTION); }
  UndoStep(const UndoStep&) = delete;
  UndoStep& operator=(const UndoStep&) = delete;

 private:
  const SciEditor& editor;
};

}  // namespace mavro
