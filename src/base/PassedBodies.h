#pragma once

#include <string>
#include <vector>

namespace zendry {

class EditorText;

// A part of a text: positions count bytes from 0, `end` is after its last byte.
struct TextPart {
  int start = 0;
  int end = 0;
  friend bool operator==(const TextPart&, const TextPart&) = default;
};

// The parts of an editor's text that the tag parser has passed over, looking for braces only:
// bodies of functions without their directives. They follow the changes of the text and say when a
// change can't have changed the tags: one of plain characters within one line of such a part.
//
// Plain are all characters but those of line ends, braces, literals, comments, directives,
// trigraphs and spliced lines. Some characters around the change can make plain ones matter: a
// letter before a quote, a byte between the two of "*/", a word before a "#". Then, and whenever
// the line can't be judged, the tags don't hold.
class PassedBodies {
 public:
  // A longer line may be too long for the parser: it is not judged.
  static constexpr int cLongestLine = 1000;

  // The text has been parsed, with these parts, in their order.
  void Put(std::vector<TextPart> passed);
  // At `start`, `removed` bytes are about to be replaced by `added` other bytes. Must be called
  // before each change.
  void WillChange(const EditorText& text, int start, int removed, int added);
  // The text changes in an unknown way.
  void Lose();
  // True if the tags are still those of the text. The changes told of must have been made.
  bool Hold(const EditorText& text);
  // True if the text has changed since it was parsed.
  bool HasChanged() const { return hasChanged; }

  const std::vector<TextPart>& Parts() const { return parts; }

 private:
  // A change whose new line has not been looked at.
  struct Pending {
    int line = 0;  // position
    int start = 0;
    int added = 0;
    int after = 0;  // bytes of the line after the change
  };

  bool MayChange(const EditorText& text, int start, int removed, int added);
  void LookAtPending(const EditorText& text);

  std::vector<TextPart> parts;
  Pending pending;
  bool isPending = false;
  bool hasChanged = false;
  bool holds = false;
};

}  // namespace zendry
