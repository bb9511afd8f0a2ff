#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "SciText.h"

namespace mavro {

// The long lines of a text, kept beside it. The editing component measures a whole line before it
// shows any of it, which takes more than a second for each megabyte. So in a UTF-8 text one
// character of the last private plane replaces such a line: a stand-in. It can be moved, copied,
// deleted and restored like any character. The bytes of the line live here as long as the undo
// steps that may restore it. A character of the plane that the text itself has is ordinary text and
// is never used as a stand-in.
class LongLines {
 public:
  static constexpr int cStandInBytes = 4;

  bool IsEmpty() const { return kept == 0; }
  // Keeps a line and returns the number of its stand-in; equal lines have the same number. -1 if
  // every character of the plane is in use.
  int Keep(std::string_view line);
  // Keeps a character of the plane that the text itself has, although it is already a stand-in.
  // Returns the number of another stand-in for it; -1 as above.
  int KeepCharacter(int number);
  // The bytes of a stand-in's line; null if the character of the plane is not a stand-in.
  const std::string* Kept(int number) const;
  // One past the highest number of a stand-in.
  int End() const { return static_cast<int>(lines.size()); }
  // Reports that a text has this character of the plane: from now on no stand-in gets its number.
  void Avoid(int number);

  // The character with a number, in UTF-8.
  static std::string CharacterOf(int number);
  // The place of the next character of the plane from `at` on, and its number; npos if there is
  // none.
  struct Found {
    size_t place = std::string_view::npos;
    int number = -1;
  };
  static Found FindCharacter(std::string_view text, size_t at);

  // The note shown for a stand-in: the length of its line and the start of the line.
  std::string NoteOf(int number) const;

  // The given text with stand-ins in place of the lines that take long to measure.
  std::string Fold(std::string_view text);
  // The shown text with the lines in place of their stand-ins.
  std::string Unfold(std::string_view shown) const;
  // True if Unfold would change the text.
  bool AreIn(std::string_view shown) const;

 private:
  int KeepBelow(int end, std::string_view line);

  std::vector<std::shared_ptr<const std::string>> lines;  // by number; null: not a stand-in
  std::vector<bool> avoided;
  std::map<int, int> characters;       // kept for themselves, and their stand-ins
  std::multimap<size_t, int> numbers;  // of lines, by a digest
  int kept = 0;
};

// Folds a text that comes in chunks. Ordinary lines stay in the text. Longer lines stay while the
// component can measure those on one screen in about half a second; otherwise they are replaced.
class LongLineFolder {
 public:
  static constexpr size_t cOrdinaryBytes = 4096;
  static constexpr size_t cMostOnScreen = 512 * 1024;
  static constexpr long cScreenLines = 100;

  // `newAdd` gets the folded text, piece by piece.
  LongLineFolder(LongLines& newLines, std::function<void(std::string_view)> newAdd)
      : lines(newLines), add(std::move(newAdd)) {}

  void Take(std::string_view chunk);
  // Adds the rest at the end of the text.
  void Finish();

 private:
  void TakeLines(std::string_view text);
  void Add(std::string_view text);
  void Pass(std::string_view text);
  bool MayStay(size_t length);

  struct Stayed {
    long line = 0;
    size_t length = 0;
  };
  LongLines& lines;
  std::function<void(std::string_view)> add;
  std::string rest;           // of a line whose end has not come yet
  std::deque<Stayed> stayed;  // longer lines that may be on a screen with the next one
  size_t stayedBytes = 0;
  long line = 0;  // counted while `stayed` holds any
};

// Knows where the stand-ins of a shown text are, and converts its positions to those in the whole
// text. It must hear of each change before the change happens; it looks at inserted text at the
// next question.
class StandIns {
 public:
  StandIns(const SciText& newText, LongLines& newLines) : text(newText), lines(newLines) {}

  void WillInsert(int position, int length);
  void WillDelete(int position, int length);
  // Starts over with another text.
  void Reset();

  // The number of the stand-in at a position of the shown text; -1 if there is none.
  int At(int position);
  // The number of lines that are not shown.
  int Count();
  size_t WholeLength() { return WholePosition(text.Length()); }
  size_t WholePosition(int position);
  // Appends the bytes of the whole text from `start` up to `end` to `to`; both are clipped to the
  // text.
  void AppendWhole(size_t start, size_t end, std::string& to);

 private:
  struct Place {
    int position = 0;
    int number = 0;
  };
  // The first place at or after a position.
  std::vector<Place>::iterator Lower(int position);
  void DropBroken(int start, int end);
  void LookAt(int start, int end);
  void Settle();
  void Look(int start, int end);

  const SciText& text;
  LongLines& lines;
  std::vector<Place> places;  // in the order of the text
  bool isNew = false;         // the text from newStart to newEnd has not been looked at yet
  int newStart = 0, newEnd = 0;
};

}  // namespace mavro
