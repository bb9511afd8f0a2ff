#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "SciText.h"

namespace mavro {

// The signs beside lines, as the window draws them. Handles are the window's own.
class SignBoard {
 public:
  virtual ~SignBoard() = default;
  virtual int Put(int number, int line) = 0;  // answers a handle
  virtual void Take(int boardHandle) = 0;
  virtual int LineOfSign(int boardHandle) const = 0;  // -1 if there is no such sign
  virtual bool HasSign(int number, int line) const = 0;
};

// Signs that follow their lines while the text changes. A sign goes with its line when that is
// deleted, and comes back with it: when the line is moved, or pasted elsewhere, or when the
// deletion is undone. A sign that somebody has found to be gone doesn't come back.
class LineSigns {
 public:
  LineSigns(const SciText& itsText, SignBoard& itsBoard) : text(itsText), board(itsBoard) {}

  // Puts a sign beside a line; answers its handle, which is above 0.
  int Add(int number, int line);
  // The line of a sign now, -1 if it has gone. A sign that has gone is forgotten.
  int LineOf(int handle);
  // Gives a sign another number, that is, another look.
  void Change(int handle, int number);
  void Remove(int handle);

  // Each change of the text must be told before it happens, and Settle called afterwards.
  void WillInsert(int position, int length);
  void WillDelete(int position, int length);
  void Settle();

 private:
  struct Sign {
    int handle = 0;
    int number = 0;
    int onBoard = -1;  // -1: its line has been deleted
    std::string line;  // the text of the deleted line, without the blanks around it
  };
  Sign* Find(int handle);
  bool HasAny(int line) const;
  void LoseLine(int line);
  std::string Words(int line) const;

  const SciText& text;
  SignBoard& board;
  std::vector<Sign> signs;
  int lastHandle = 0;
  int gone = 0;                    // how many of them have lost their line
  int newStart = -1, newEnd = -1;  // where text was inserted since the last call of Settle
};

}  // namespace mavro
