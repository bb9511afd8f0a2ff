#pragma once

#include "Core.h"

namespace mavro {

// Shows rich text: letters of several looks, paragraphs and links, to read, to select and to copy.
// Its text is RTF as a program stores it; one that doesn't begin as RTF does is shown as it is.
class RichView : public Control {
 public:
  class Impl;
  RichView();

  // Selects all that is shown.
  void SelectAll();
  // What is selected, without its looks.
  std::string SelectedText() const;
  // All that is shown, without its looks; empty before the window exists.
  std::string PlainText() const;

  ItemEvent onLink;  // a link was clicked or chosen by Enter; text: where it leads
};

}  // namespace mavro
