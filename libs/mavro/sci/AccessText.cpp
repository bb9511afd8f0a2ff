#include "AccessText.h"

#include <algorithm>

#include "SciMessages.h"

namespace mavro {

int AccessText::Length() const {
  return static_cast<int>(Send(SCI_GETLENGTH));
}

// In other code pages each byte is a unit. The first question after a change of the code page makes
// the index; from then on each change of the text updates it.
bool AccessText::IsIndexed() const {
  if (Send(SCI_GETCODEPAGE) != SC_CP_UTF8) return false;
  if (!(Send(SCI_GETLINECHARACTERINDEX) & SC_LINECHARACTERINDEX_UTF16))
    Send(SCI_ALLOCATELINECHARACTERINDEX, SC_LINECHARACTERINDEX_UTF16);
  return true;
}

int AccessText::Offset(int position) const {
  position = std::clamp(position, 0, Length());
  if (!IsIndexed()) return position;
  const auto line = Send(SCI_LINEFROMPOSITION, position);
  const auto start = Send(SCI_POSITIONFROMLINE, line);
  return static_cast<int>(Send(SCI_INDEXPOSITIONFROMLINE, line, SC_LINECHARACTERINDEX_UTF16) +
                          Send(SCI_COUNTCODEUNITS, start, position));
}

int AccessText::Position(int offset) const {
  if (!IsIndexed() || offset <= 0) return std::clamp(offset, 0, Length());
  const auto line = Send(SCI_LINEFROMINDEXPOSITION, offset, SC_LINECHARACTERINDEX_UTF16);
  const auto start = Send(SCI_POSITIONFROMLINE, line);
  const auto before = Send(SCI_INDEXPOSITIONFROMLINE, line, SC_LINECHARACTERINDEX_UTF16);
  if (offset == before) return static_cast<int>(start);
  // The component answers 0 past the end, and between the two units of one letter.
  auto found = Send(SCI_POSITIONRELATIVECODEUNITS, start, offset - before);
  if (found == 0) found = Send(SCI_POSITIONRELATIVECODEUNITS, start, offset - before - 1);
  return found > 0 ? static_cast<int>(found) : Length();
}

int AccessText::CharacterCount() const {
  return Offset(Length());
}

int AccessText::CaretOffset() const {
  return Offset(static_cast<int>(Send(SCI_GETCURRENTPOS)));
}

AccessText::Span AccessText::UnitOf(int position, Unit unit) const {
  if (unit == Unit::cCharacter)
    return {position, static_cast<int>(Send(SCI_POSITIONAFTER, position))};
  if (unit == Unit::cWord)
    return {static_cast<int>(Send(SCI_WORDSTARTPOSITION, Send(SCI_POSITIONAFTER, position), 0)),
            static_cast<int>(Send(SCI_WORDENDPOSITION, position, 0))};
  const auto line = Send(SCI_LINEFROMPOSITION, position);
  const auto next = Send(SCI_POSITIONFROMLINE, line + 1);
  return {static_cast<int>(Send(SCI_POSITIONFROMLINE, line)),
          next > 0 ? static_cast<int>(next) : Length()};
}

AccessText::Span AccessText::ToOffsets(Span bytes) const {
  return {Offset(bytes.start), Offset(bytes.end)};
}

AccessText::Span AccessText::UnitAt(int offset, Unit unit) const {
  return ToOffsets(UnitOf(Position(offset), unit));
}

AccessText::Span AccessText::UnitBefore(int offset, Unit unit) const {
  const Span here = UnitOf(Position(offset), unit);
  if (here.start == 0) return {};
  const Span before = UnitOf(static_cast<int>(Send(SCI_POSITIONBEFORE, here.start)), unit);
  return ToOffsets({before.start, here.start});
}

AccessText::Span AccessText::UnitAfter(int offset, Unit unit) const {
  const Span here = UnitOf(Position(offset), unit);
  if (here.end >= Length()) return {};
  const Span after = UnitOf(here.end, unit);
  return ToOffsets({here.end, after.end});
}

std::string AccessText::Text(Span span) const {
  return door.Range(Position(span.start), Position(span.end));
}

}  // namespace mavro
