#pragma once

#include <array>

#include "base/FileReader.h"

namespace zendry {

class EditorText;

// Hands an editor's text to the tag parser, through a window that slides over it: the text is never
// copied whole. The last bytes of the old window stay at the beginning of the new one, so that a
// byte can be pushed back across a slide.
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
  // Goes back by one byte, whatever byte is pushed. It does nothing at the first byte of the text,
  // and breaks a precondition at the first byte of a later window.
  void ungetc(int c) override;
  // Begins at the start of the text; the path is ignored.
  mavro::FileResult open(const char* path) override;
  void close() override;
  size_t read(char* buffer, size_t size) override;

 private:
  bool Slide();
  void Fetch();

  EditorText& text;
  int baseOffset = 0;  // the window's beginning in the text
  int chunkLength = 0;
  int documentLength = 0;
  int position = 0;  // in the window
  std::array<char, cWindow> window;
};

}  // namespace zendry
