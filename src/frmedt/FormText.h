#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "frmedt/FormBlocks.h"

namespace zendry {

// The text of a source and the tags of its lines: of a file, or of an editor's text, in UTF-8. It
// doesn't change.
class FormText {
 public:
  // Finds the tags itself.
  FormText(std::string newPath, std::string newText);

  const std::string& Path() const { return path; }
  const std::string& Text() const { return text; }
  // As in an editor: a text that ends with a line end has an empty line behind it.
  int LineCount() const;
  // With its line end.
  std::string_view Line(int line) const;
  // The first byte of a line; the text's length for the line behind the last one.
  size_t LineStart(int line) const;
  // The tag around a line, from 0.
  FormTag TagAtLine(int line) const;

 private:
  const std::vector<size_t>& Starts() const;
  // Finds the blocks that begin before `end`.
  void FindBlocks(size_t end) const;

  const std::string path;
  const std::string text;
  mutable std::vector<size_t> starts;  // of the lines, found when they are first asked for
  mutable size_t known = 0;            // the bytes that `blocks` are of
  mutable std::vector<FormBlock> blocks;
};

using FormTextPtr = std::shared_ptr<const FormText>;

}  // namespace zendry
