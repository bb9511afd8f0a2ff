#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "code/TidyEdits.h"

namespace zendry {

// The text of an open editor, as searches in files see it.
class OpenText {
 public:
  virtual ~OpenText() = default;
  // Why the text can't be changed; empty if it can.
  virtual std::string WhyFixed() const = 0;
  // The text with all its lines; and the text whose places edits have, in which some lines may be
  // replaced by notes.
  virtual std::string Whole() const = 0;
  virtual std::string Shown() const = 0;
  // The bytes that a save would write; none if there are no such bytes.
  virtual std::optional<std::string> Bytes() const = 0;
  // Both are one undo step. Edits are in the order of the text.
  virtual void Apply(const std::vector<TextEdit>& edits) = 0;
  virtual void TakeBytes(std::string_view bytes) = 0;
};

// The open editors.
class OpenTexts {
 public:
  virtual ~OpenTexts() = default;
  // The editor of a file; null if it isn't open. Valid until the message queue runs.
  virtual OpenText* At(const std::string& path) = 0;
};

}  // namespace zendry
