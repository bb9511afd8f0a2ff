#pragma once

#include <string_view>
#include <vector>

#include "EditorLanguage.h"
#include "SciText.h"

namespace mavro {

// The closer of an opening bracket or of a quote; '\0' for any other character.
char PartnerOf(char opening);

// The way to a partner for a character that is about to be typed at a position.
enum class PairChance {
  cNone,        // none is written
  cIfInCode,    // one is written if the typed character turns out to belong to code
  cAtAnyPlace,  // the place is looked at: one is written
};

// The chance of a partner for `typed` at `caret`: a blank, a line end or a closer is after it, and
// it opens something there. The text has its styles up to the caret.
PairChance ChanceOfPair(const SciText& text, int caret, char typed, const EditorLanguage& language);

// True if a closer typed at `caret` is part of the literal that the one after it ends: "\" is
// before it.
bool IsEscaped(const SciText& text, int caret, char closer);

// The pairs whose closers were written automatically, with the caret still between the two. The
// places follow the text: each change must be told before it happens.
class AutoPairs {
 public:
  void Add(int opening, int closing) { pairs.push_back({opening, closing}); }
  void Clear() { pairs.clear(); }
  // Forgets the pairs that the caret is not in.
  void KeepAround(int caret);
  // Forgets the pair of this closer.
  void Remove(int closing);
  void WillInsert(int position, int length);
  void WillDelete(int position, int length);

  bool IsEmpty() const { return pairs.empty(); }
  // The place of the opening character whose closer is at a position; -1 if there is none.
  int OpeningOf(int closing) const;

 private:
  struct Pair {
    int opening = 0;
    int closing = 0;
  };
  std::vector<Pair> pairs;
};

}  // namespace mavro
