#pragma once

#include <string>

namespace mavro {

class SciEditor;

// Searches in one editor, for theSearch. They change `found` and `whyNot` of it.

enum class FindWay { cForward, cBackward };
constexpr FindWay Opposite(FindWay way) {
  return way == FindWay::cForward ? FindWay::cBackward : FindWay::cForward;
}
// The direction that was last chosen in the dialog.
FindWay FindWayOfDialog();

// Selects the next hit after the selection, or the last one before it. At the end of the text it
// beeps and goes on at the other end, if `wrap` says so. Shows the dialog if there is no text to
// look for.
void FindNext(SciEditor& editor, FindWay way);
// Looks for the selected text, or for the word at the caret: as a whole word, with the case of its
// letters. Shows the dialog if there is neither.
void FindSelection(SciEditor& editor, FindWay way);

// Replaces the selection if it is a hit, then selects the next one.
void ReplaceOne(SciEditor& editor);
// Replaces all hits of the whole text, or of the selection, in one undo step. Returns how many; -1
// if the search was given up, and then nothing is changed. The hits are those of the text as it
// is; the first one without any letter ends the search.
enum class ReplaceIn { cSelection, cWholeFile };
int ReplaceAll(SciEditor& editor, ReplaceIn where);

// The selected text if it is within one line, else nothing.
std::string SelectionInLine(const SciEditor& editor);

}  // namespace mavro
