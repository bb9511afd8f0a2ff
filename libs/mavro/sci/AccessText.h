#pragma once

#include <cstdint>
#include <string>

namespace mavro {

// Answers the questions of a screen reader about a text. The reader counts in UTF-16 units, the
// editing component in bytes. The component's index of lines converts one into the other, so that
// an answer costs the same at the end of a text as at its start.
class AccessText {
 public:
  // Access to the component.
  class Door {
   public:
    virtual ~Door() = default;
    virtual std::intptr_t Send(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) = 0;
    virtual std::string Range(int start, int end) = 0;
  };
  enum class Unit { cCharacter, cWord, cLine };
  struct Span {
    int start = 0;
    int end = 0;
    friend bool operator==(const Span&, const Span&) = default;
  };

  explicit AccessText(Door& itsDoor) : door(itsDoor) {}

  int Offset(int position) const;
  int Position(int offset) const;
  int CharacterCount() const;
  int CaretOffset() const;
  // The unit around a place, and the units before and after it, as offsets; empty if there is none.
  Span UnitAt(int offset, Unit unit) const;
  Span UnitBefore(int offset, Unit unit) const;
  Span UnitAfter(int offset, Unit unit) const;
  // Bytes of a span.
  std::string Text(Span span) const;

 private:
  std::intptr_t Send(unsigned message, std::intptr_t wParam = 0, std::intptr_t lParam = 0) const {
    return door.Send(message, static_cast<std::uintptr_t>(wParam), lParam);
  }
  int Length() const;
  // True for UTF-8: the component then has an index of lines.
  bool IsIndexed() const;
  Span UnitOf(int position, Unit unit) const;  // in bytes
  Span ToOffsets(Span bytes) const;

  Door& door;
};

}  // namespace mavro
