#pragma once

#include <optional>

class QsciScintillaBase;

namespace mavro {

// While a letter is typed, keeps the component from repainting more than its line: at the end of a
// line it would repaint the next one too, which often holds more text than is being typed.
//
// The component's own requests are dropped between Begin and End, as it has no others for a letter
// within a line that stays where it is.
class TypedLine {
 public:
  explicit TypedLine(QsciScintillaBase& itsEditor) : editor(itsEditor) {}

  // Does nothing where a letter may change more than its line.
  void Begin();
  // Requests what has to be painted. May be called again.
  void End();
  // Called before each message of ours: it may ask for more.
  void Before(unsigned message) {
    if (before && !IsQuestion(message)) End();
  }

 private:
  struct State {
    long length = 0, caret = 0, lines = 0, firstLine = 0, left = 0;
    bool operator==(const State&) const = default;
  };

  static bool IsQuestion(unsigned message);
  long Ask(unsigned message, unsigned long wParam = 0) const;
  State Now() const;
  bool IsPlain() const;
  void PaintLine();

  QsciScintillaBase& editor;
  std::optional<State> before;  // while a letter is typed
};

}  // namespace mavro
