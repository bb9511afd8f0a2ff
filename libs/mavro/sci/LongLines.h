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
// shows any of it, which takes more than a second for each megabyte. So in a text in UTF-8 one
// character of the last private plane stands for such a line: a stand-in, which can be moved,
// copied, deleted and brought back as any character can. Its bytes live here as long as the undo
// steps that may bring it back. A character of the plane that stands for nothing is text as any
// other and is never used as a stand-in.
class LongLines {
 public:
  static constexpr int cStandInBytes = 4;

  bool IsEmpty() const { return kept == 0; }
  // Keeps a line and answers the number of its stand-in, for the same line the same one; -1 when
  // every character of the plane is in use.
  int Keep(std::string_view line);
  // Keeps a character of the plane that the text has for itself, although it is a stand-in by now:
  // answers the number of another one; -1 as above.
  int KeepCharacter(int number);
  // The bytes that a stand-in stands for; null when the character of the plane is none.
  const std::string* Kept(int number) const;
  // One past the highest number of a stand-in.
  int End() const { return static_cast<int>(lines.size()); }
  // A text has this character of the plane: no stand-in gets its number from here on.
  void Avoid(int number);

  // The character with a number, in UTF-8.
  static std::string CharacterOf(int number);
  // The place of the next character of the plane from `at` on, and its number; npos without one.
  struct Found {
    size_t place = std::string_view::npos;
    int number = -1;
  };
  static Found FindCharacter(std::string_view text, size_t at);

  // What is shown for a stand-in: the length of its line and how it begins.
  std::string NoteOf(int number) const;

  // Text that comes from elsewhere, with stand-ins for the lines that take long to measure.
  std::string Fold(std::string_view text);
  // The same text with its lines.
  std::string Unfold(std::string_view shown) const;
  // True when Unfold would change the text.
  bool AreIn(std::string_view shown) const;

 private:
  int KeepBelow(int end, std::string_view line);

  std::vector<std::shared_ptr<const std::string>> lines;  // by number; null: not a stand-in
  std::vector<bool> avoided;
  std::map<int, int> characters;       // kept for themselves, and their stand-ins
  std::multimap<size_t, int> numbers;  // of lines, by a digest
  int kept = 0;
};

// Folds a text that comes in chunks. An ordinary line stays in the text; longer ones stay while
// those on one screen are measured in about half a second, and are replaced otherwise.
class LongLineFolder {
 public:
  static constexpr size_t cOrdinaryBytes = 4096;
  static constexpr size_t cMostOnScreen = 512 * 1024;
  static constexpr long cScreenLines = 100;

  // `newAdd` gets the folded text, piece by piece.
  LongLineFolder(LongLines& newLines, std::function<void(std::string_view)> newAdd)
      : lines(newLines), add(std::move(newAdd)) {}

  void Take(std::string_view chunk);
  // What is left when the text is at its end.
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

// Where the stand-ins of a shown text are, and what its positions are in the whole text. It is told
// of each change before it happens; what an insertion brought is looked at when it is next asked.
class StandIns {
 public:
  StandIns(const SciText& newText, LongLines& newLines) : text(newText), lines(newLines) {}

  void WillInsert(int position, int length);
  void WillDelete(int position, int length);
  // The text is another one.
  void Reset();

  // The number of the stand-in at a position of the shown text; -1 without one.
  int At(int position);
  // How many lines are not shown.
  int Count();
  size_t WholeLength() { return WholePosition(text.Length()); }
  size_t WholePosition(int position);
  // Puts the bytes of the whole text from `start` up to `end` behind `to`; both are clipped to it.
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
  bool isNew = false;         // what is between the two was not looked at yet
  int newStart = 0, newEnd = 0;
};

}  // namespace mavro
