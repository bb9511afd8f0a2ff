#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace zendry {

// A text in memory that elements are read from, and the position up to which it has been read. The
// bytes must outlive it.
struct TagSource {
  std::string_view text;
  size_t position = 0;
};

// The names under which the four text attributes are written. A reader needs their first letters
// only, so these may differ from file format to file format.
struct TagLabels {
  const char* n = "n";
  const char* o = "o";
  const char* p = "p";
  const char* v = "v";
};

// A token of an element is at most this long; one character more breaks the precondition idx<512 of
// XmlTag::read.
constexpr size_t cMaxTagToken = 511;

// One element of the program's tag-shaped files: the configuration, the project, its session and
// the tag files. There is no nesting, no escaping and no text between elements: a file is a
// sequence of elements, of which each has a name and at most five attributes.
class XmlTag {
 public:
  XmlTag() = default;
  explicit XmlTag(const TagLabels& useLabels) : labels(useLabels) {}

  std::string indent;  // TAB characters before the "<"
  bool closed = false;
  std::string element;
  std::string n;
  std::string o;
  std::string p;
  std::string v;
  int id = -1;  // -1 when absent
  TagLabels labels;

  // True if the element ends at once, by "/>".
  enum class Ends { cLater, cAtOnce };
  // Starts an element without attributes.
  void begin(std::string_view newElement, int indentCount, Ends ends);
  void set(std::string_view newN, std::string_view newO, std::string_view newP,
           std::string_view newV, int newId);

  // Appends the element as one line. Empty values are left out, as is an id of -1.
  void write(std::string& out) const;

  // Reads the next element. False at the end of the text, and for an element without a name. Only
  // the first letter of an attribute's name counts; the first token after "NAME=" is its value, cut
  // at its last double quote and without its first character; everything else in an element is
  // ignored. Every byte value is allowed, NUL included. Keeps `indent` and `closed`.
  bool read(TagSource* xf);

  // True if the line that write() appends is read back as the same element: no value is lost or
  // spills over into the text after it. A value with a double quote or of some five hundred
  // characters may fail; all other values are safe.
  bool ReadsBack() const;

 private:
  void ClearValues();
  void Store(char key, std::string_view value);
};

// True if every element of a text can be read: no token is longer than cMaxTagToken.
bool TokensFit(std::string_view text);

// A text from outside, made safe for XmlTag::read.
struct FittingTags {
  std::string text;        // without the elements that hold a token that is too long
  std::string passedOver;  // the beginning of the first such element; empty when there is none
};
FittingTags PassOverTooLong(std::string_view text);

// A message about what PassOverTooLong has passed over: "a value of more than some 500 characters:
// ...".
std::string TooLongWords(const FittingTags& tags);

}  // namespace zendry
