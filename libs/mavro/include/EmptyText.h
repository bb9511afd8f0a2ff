#pragma once

#include <string>

#include "Core.h"

namespace mavro {

// Gray words in a list, a tree or a memo that is empty: what will be there, and which key brings
// it. They go with the first text and can't be selected. They are no content: screen readers have
// them as the control's description only, so they should be true of a full control too.
//
//   ListView errors;
//   EmptyText noErrors{errors, "Errors of the last build are listed here. F7 builds."};
class EmptyText : public object {
 public:
  // `itsControl` is a ListView with columns, a TreeView or a Memo. It is not owned, and has no
  // window yet. This must exist whenever it gets one.
  EmptyText(Control& itsControl, std::string itsWords);
  EmptyText(const EmptyText&) = delete;
  EmptyText& operator=(const EmptyText&) = delete;

 private:
  void OnCreate(NotifyArgs& args);

  Control& control;
  const std::string words;
};

}  // namespace mavro
