#pragma once

#include <cstdint>
#include <string>

namespace mavro {

// What a screen reader asks about a text. It counts in UTF-16 units, the editing component in
// bytes; the component's index of lines carries one into the other, so that no answer costs more
// at the end of a text than at its start.
class AccessText {
 public:
  // The way to the component.
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
  // The unit around a place, and those beside it, as offsets; empty where there is none.
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
  // True for UTF-8, which the component then has an index of lines for.
  bool IsIndexed() const;
  Span UnitOf(int position, Unit unit) const;  // in bytes
  Span ToOffsets(Span bytes) const;

  Door& door;
};

}  // namespace mavro
