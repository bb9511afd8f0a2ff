#pragma once

#include <array>

#include "base/FileReader.h"

namespace zendry {

class EditorText;

// Hands an editor's text to the tag parser, through a window that is slid over it: the text is
// never copied whole. The last bytes of the old window stay at the front of the new one, so that
// what was read can be pushed back across a slide.
//
// Bytes from 0x80 up come out negative; 0xFF reads as the end of the text.
class EditorReader : public FileReader {
 public:
  static constexpr int cWindow = 131072;
  static constexpr int cKept = 64;
  static constexpr int cSlide = cWindow - cKept;

  // `text` must outlive the reader.
  explicit EditorReader(EditorText& newText) : text(newText) {}
  ~EditorReader() override;

  int getc() override;
  // Goes back by one byte, whatever is pushed. Before the first byte of the text it does nothing;
  // before that of a later window it breaks a precondition.
  void ungetc(int c) override;
  // Begins at the start of the text; the path counts for nothing.
  bool open(const char* path) override;
  void close() override;
  size_t read(char* buffer, size_t size) override;

 private:
  bool Slide();
  void Fetch();

  EditorText& text;
  int baseOffset = 0;  // where in the text the window begins
  int chunkLength = 0;
  int documentLength = 0;
  int position = 0;  // in the window
  std::array<char, cWindow> window;
};

}  // namespace zendry
