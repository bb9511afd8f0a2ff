#pragma once

#include <functional>
#include <set>
#include <string>
#include <vector>

#include "TextCodec.h"
#include "frmedt/FormCheck.h"

namespace zendry {

// A source on the disk, with what is needed to make its bytes of a text again.
struct FormFile {
  // A file of more than cLargest bytes isn't read.
  static constexpr size_t cLargest = size_t{64} << 20;

  static FormFile Read(const std::string& path);
  // Replaces the file's content, if it is another one. An error in words.
  std::string Write(const std::string& newText) const;

  std::string error;  // why it can't be read; then the rest is empty
  FormTextPtr text;
  std::string bytes;
  mavro::TextEncoding encoding = mavro::cPlainText;
  std::string oddByte;
};

// Checks and rewrites the forms of files without a window. The other file of a form is looked for
// beside it.
class FormFiles {
 public:
  // Takes each line of what there is to tell: "file:line: text".
  using Tell = std::function<void(const std::string& line)>;
  // What becomes of statements that the designer can't keep: it loses them, or they go behind the
  // end of their region.
  enum class Losses { cDrop, cKeep };

  explicit FormFiles(Tell theTell) : tell(std::move(theTell)) {}

  // Tells each statement between markers that would not come back, and why a form can't be opened.
  // False if there is one, or the file can't be read.
  bool Check(const std::string& path);
  // Writes the regions of the file's forms, wherever they are, as the designer would that nobody
  // has used; everything else stays byte for byte. Tells the same as Check. False if a form
  // couldn't be opened or a file not be written.
  bool Rewrite(const std::string& path, Losses losses);

 private:
  bool TellOnce(const std::string& path, int line, const std::string& text);
  bool TellReports(const std::vector<FormReport>& reports, const std::string& path);
  bool Select(FormLocator& locator, size_t number);
  bool CheckSelected(const FormTarget& target);
  static std::vector<RegionEdit> EditsOf(const FormLocator& locator, Losses losses);
  bool WriteEdits(std::vector<RegionEdit> edits);

  const Tell tell;
  std::set<std::string> told;
};

}  // namespace zendry
