#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "FindCommands.h"
#include "FindTextDlg.h"
#include "SciImpl.h"
#include "SearchState.h"
#include "SystemDialogs.h"
#include "TextFinder.h"
#include "UndoStep.h"

// Searches in one editor.

namespace mavro {

namespace {

using Hit = TextFinder::Hit;

constexpr char cTakesTooLong[] = "This expression takes too long in a line of this text";

size_t AsPlace(int position) {
  return static_cast<size_t>(std::max(position, 0));
}

// A hit without any letter at the caret is the one that was found before.
std::optional<Hit> Look(const SciEditor& editor, const TextFinder& finder, FindWay way) {
  const std::string_view text = editor.ShownText();
  const size_t start = AsPlace(editor.Selection().first), end = AsPlace(editor.Selection().second);
  const auto isStill = [&](const std::optional<Hit>& hit) {
    return hit && hit->start == hit->end && start == end && hit->start == start;
  };
  if (way == FindWay::cForward) {
    std::optional<Hit> hit = finder.Next(text, end, text.size());
    return isStill(hit) ? finder.Next(text, end + 1, text.size()) : hit;
  }
  std::optional<Hit> hit = finder.Last(text, 0, start);
  if (!isStill(hit)) return hit;
  return start > 0 ? finder.Last(text, 0, start - 1) : std::nullopt;
}

std::optional<Hit> LookFromFarEnd(const SciEditor& editor, const TextFinder& finder, FindWay way) {
  const std::string_view text = editor.ShownText();
  return way == FindWay::cForward ? finder.Next(text, 0, text.size())
                                  : finder.Last(text, 0, text.size());
}

void Show(SciEditor& editor, const Hit& hit) {
  const auto start = static_cast<int>(hit.start), end = static_cast<int>(hit.end);
  for (const int place : {end, start})
    editor.Send(SCI_ENSUREVISIBLE, static_cast<std::uintptr_t>(editor.LineOf(place)));
  editor.Select(start, end);
}

const char* LineEndOf(const SciEditor& editor) {
  static constexpr const char* cEnds[] = {"\r\n", "\r", "\n"};
  return cEnds[editor.Send(SCI_GETEOLMODE)];
}

void Replace(SciEditor& editor, size_t start, size_t end, const std::string& with) {
  editor.Send(SCI_SETTARGETRANGE, start, static_cast<std::intptr_t>(end));
  editor.Send(SCI_REPLACETARGET, with.size(), with.c_str());
}

// The hit that is selected as a whole, if there is one.
std::optional<Hit> SelectedHit(const SciEditor& editor, const TextFinder& finder) {
  const auto [start, end] = editor.Selection();
  const std::optional<Hit> hit = finder.Next(editor.ShownText(), AsPlace(start), AsPlace(end));
  const bool isIt = hit && hit->start == AsPlace(start) && hit->end == AsPlace(end);
  return isIt ? hit : std::nullopt;
}

struct Change {
  size_t start = 0;
  size_t end = 0;
  std::string with;
};

}  // namespace

FindWay FindWayOfDialog() {
  return theSearch.backward ? FindWay::cBackward : FindWay::cForward;
}

void FindNext(SciEditor& editor, FindWay way) {
  if (theSearch.findText.empty()) return AskAndFind(editor);
  const TextFinder finder(theSearch.Term());
  theSearch.found = false;
  theSearch.whyNot = finder.Error();
  if (!finder.Error().empty()) return;
  std::optional<Hit> hit = Look(editor, finder, way);
  if (!hit && !finder.GaveUp() && theSearch.wrap) {
    Beep();
    hit = LookFromFarEnd(editor, finder, way);
  }
  theSearch.found = hit.has_value();
  if (hit)
    Show(editor, *hit);
  else
    theSearch.whyNot = finder.GaveUp() ? cTakesTooLong : "Not found: " + theSearch.findText;
}

std::string SelectionInLine(const SciEditor& editor) {
  const auto [start, end] = editor.Selection();
  if (editor.LineOf(start) != editor.LineOf(end)) return {};
  return editor.GetRange(start, end);
}

void FindSelection(SciEditor& editor, FindWay way) {
  std::string wanted = SelectionInLine(editor);
  const bool isSelected = !wanted.empty();
  if (!isSelected) {
    const auto caret = static_cast<std::uintptr_t>(editor.CaretPosition());
    wanted = editor.GetRange(static_cast<int>(editor.Send(SCI_WORDSTARTPOSITION, caret, 1)),
                             static_cast<int>(editor.Send(SCI_WORDENDPOSITION, caret, 1)));
  }
  if (wanted.empty()) return AskAndFind(editor);
  theSearch.findText = wanted;
  theSearch.matchCase = theSearch.wholeWord = true;
  theSearch.regExp = false;
  // The selected part of a word, which may be the last search's hit, stands nowhere as a whole one.
  if (isSelected)
    theSearch.wholeWord = SelectedHit(editor, TextFinder(theSearch.Term())).has_value();
  theSearch.Remember();
  FindNext(editor, way);
}

void ReplaceOne(SciEditor& editor) {
  const TextFinder finder(theSearch.Term());
  const std::optional<Hit> hit = SelectedHit(editor, finder);
  const FindWay way = FindWayOfDialog();
  if (theSearch.found && hit && !editor.IsReadOnly()) {
    const std::string with =
        finder.Replacement(editor.ShownText(), *hit, theSearch.replaceText, LineEndOf(editor));
    const UndoStep step(editor);
    Replace(editor, hit->start, hit->end, with);
    const int after =
        static_cast<int>(hit->start) + static_cast<int>(way == FindWay::cForward ? with.size() : 0);
    editor.Select(after, after);
  }
  FindNext(editor, way);
}

// From the first to the last: the component's gap moves over the text once.
int ReplaceAll(SciEditor& editor, ReplaceIn where) {
  const TextFinder finder(theSearch.Term());
  if (editor.IsReadOnly() || !finder.Error().empty()) return 0;
  const auto [start, end] = editor.Selection();
  const bool isInSelection = where == ReplaceIn::cSelection;
  const std::string_view text = editor.ShownText();
  const size_t last = isInSelection ? AsPlace(end) : text.size();
  std::vector<Change> edits;
  for (auto hit = finder.Next(text, isInSelection ? AsPlace(start) : 0, last);
       hit && hit->start < hit->end; hit = finder.Next(text, hit->end, last))
    edits.push_back({hit->start, hit->end,
                     finder.Replacement(text, *hit, theSearch.replaceText, LineEndOf(editor))});
  if (finder.GaveUp()) return -1;
  if (edits.empty()) return 0;
  const UndoStep step(editor);
  size_t grown = 0;  // may wrap around
  for (const Change& edit : edits) {
    Replace(editor, edit.start + grown, edit.end + grown, edit.with);
    grown += edit.with.size() - (edit.end - edit.start);
  }
  if (isInSelection) editor.Select(start, static_cast<int>(AsPlace(end) + grown));
  return static_cast<int>(edits.size());
}

std::string_view SciEditor::ShownText() const {
  return ItsImpl().Bytes();
}

void SciEditor::UnmarkHits() {
  Send(SCI_SETINDICATORCURRENT, Impl::cHitIndicator);
  Send(SCI_INDICATORCLEARRANGE, 0, Length());
}

int SciEditor::MarkHits(const TextFinder& finder) {
  UnmarkHits();
  const std::string_view text = ShownText();
  const auto lines = static_cast<int>(Send(SCI_LINESONSCREEN)) + 1;
  const auto top = static_cast<int>(
      Send(SCI_DOCLINEFROMVISIBLE, static_cast<std::uintptr_t>(Send(SCI_GETFIRSTVISIBLELINE))));
  const size_t inView = AsPlace(LineStart(std::max(top - lines, 0)));
  std::vector<Hit> hits;
  int count = 0;
  for (auto hit = finder.Next(text, 0, text.size()); hit && count < cMostHits;
       hit = finder.Next(text, hit->end > hit->start ? hit->end : hit->end + 1, text.size())) {
    ++count;
    const bool isMarked = hit->start < hit->end && (hits.size() < cMostMarked);
    // Of more hits than are marked, those above the view give their places to those in view.
    if (hits.size() == cMostMarked && hits.back().start < inView) hits.clear();
    if (isMarked || hits.empty()) hits.push_back(*hit);
  }
  if (finder.GaveUp()) return -1;
  for (const Hit& hit : hits)
    Send(SCI_INDICATORFILLRANGE, hit.start, static_cast<std::intptr_t>(hit.end - hit.start));
  return count;
}

}  // namespace mavro
