#pragma once

#include "Core.h"

namespace mavro {

// Shows rich text, that is fonts, paragraphs and links, to read, to select and to copy. Its text is
// RTF; a text that doesn't begin like RTF is shown as plain text.
class RichView : public Control {
 public:
  class Impl;
  RichView();

  // Selects the whole text.
  void SelectAll();
  // The selected text, without its formatting.
  std::string SelectedText() const;
  // The whole text, without its formatting; empty before the window exists.
  std::string PlainText() const;

  ItemEvent onLink;  // a link was clicked or chosen with Enter; text: the link's target
};

}  // namespace mavro
