#include "frmedt/RegionMarks.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "EditorColours.h"
#include "editor/CppEditor.h"
#include "editor/OwnFolds.h"
#include "frmedt/FormCheck.h"
#include "frmedt/FormFolds.h"

namespace zendry {

namespace {

constexpr std::string_view cMark = "//!";
constexpr int cTintMask = 1 << RegionMarks::cTintMarker;
// Both colours can be seen on light grounds and on dark ones; the tint is a veil over either.
constexpr int cTint = mavro::FromRgb(0x4A90E2);
constexpr int cTintStrength = 26;  // of 255
constexpr int cWave = mavro::FromRgb(0xE05A50);
constexpr std::uintptr_t cSquiggle = 1;  // a style of indicators

// The starts of the lines with a marker, in a part of the text that is whole lines. The component
// keeps its text in two pieces with a gap between them.
std::vector<int> MarkersIn(const CppEditor& editor, FollowedPlaces::Part part) {
  std::vector<int> places;
  const auto take = [&](int at) {
    const int line = editor.LineOf(at), start = editor.LineStart(line);
    const FormMarker marker = MarkerOf(editor.LineText(line));
    const bool isOne = marker != FormMarker::cNone && marker != FormMarker::cOther;
    if (isOne && (places.empty() || places.back() != start)) places.push_back(start);
  };
  const auto search = [&](int from, int to) {
    if (to - from < static_cast<int>(cMark.size())) return;
    const auto* bytes = reinterpret_cast<const char*>(
        editor.Send(mavro::SCI_GETRANGEPOINTER, static_cast<std::uintptr_t>(from), to - from));
    const std::string_view piece(bytes, static_cast<size_t>(to - from));
    // A source has fewer of the mark's last letter than of its first one.
    const size_t before = cMark.size() - 1;
    for (size_t end = piece.find(cMark.back(), before); end != piece.npos;
         end = piece.find(cMark.back(), end + 1))
      if (piece.substr(end - before, cMark.size()) == cMark)
        take(from + static_cast<int>(end - before));
  };
  const int gap =
      std::clamp(static_cast<int>(editor.Send(mavro::SCI_GETGAPPOSITION)), part.start, part.end);
  const int around = static_cast<int>(cMark.size()) - 1;
  search(part.start, gap);
  const int seamStart = std::max(gap - around, part.start);
  const size_t inSeam = editor.GetRange(seamStart, std::min(gap + around, part.end)).find(cMark);
  if (inSeam != std::string::npos) take(seamStart + static_cast<int>(inSeam));
  search(gap, part.end);
  return places;
}

// Only lines that have changed are read.
void FollowMarkers(const CppEditor& editor) {
  const int length = editor.Length();
  FollowedPlaces::Part part = editor.regionMarkers.Changed(length);
  if (part.end < part.start) return;
  const int last = editor.LineOf(std::min(part.end, length));
  part = {editor.LineStart(editor.LineOf(part.start)), editor.LineEnd(last)};
  editor.regionMarkers.Put(part, MarkersIn(editor, part));
}

void Define(const CppEditor& editor) {
  using namespace mavro;
  editor.Send(SCI_MARKERDEFINE, RegionMarks::cTintMarker, SC_MARK_BACKGROUND);
  editor.Send(SCI_MARKERSETBACK, RegionMarks::cTintMarker, cTint);
  editor.Send(SCI_MARKERSETALPHA, RegionMarks::cTintMarker, cTintStrength);
  editor.Send(SCI_INDICSETSTYLE, RegionMarks::cWaveIndicator,
              static_cast<std::intptr_t>(cSquiggle));
  editor.Send(SCI_INDICSETFORE, RegionMarks::cWaveIndicator, cWave);
}

bool IsTinted(const CppEditor& editor, int line) {
  return editor.Send(mavro::SCI_MARKERGET, static_cast<std::uintptr_t>(line)) & cTintMask;
}

// The lines of a replaced region have left their marks on the line behind them, one of each.
void RemoveTint(const CppEditor& editor, int line) {
  while (IsTinted(editor, line))
    editor.Send(mavro::SCI_MARKERDELETE, static_cast<std::uintptr_t>(line),
                RegionMarks::cTintMarker);
}

// Only the lines that have to change are touched.
void Tint(const CppEditor& editor, const std::vector<RegionMarks::Region>& regions) {
  const auto isInside = [&](int line) {
    return std::any_of(regions.begin(), regions.end(),
                       [line](const RegionMarks::Region& region) { return region.Has(line); });
  };
  for (auto line = editor.Send(mavro::SCI_MARKERNEXT, 0, cTintMask); line >= 0;
       line = editor.Send(mavro::SCI_MARKERNEXT, static_cast<std::uintptr_t>(line + 1), cTintMask))
    if (!isInside(static_cast<int>(line))) RemoveTint(editor, static_cast<int>(line));
  for (const RegionMarks::Region& region : regions)
    for (int line = region.first; line <= region.last; ++line)
      if (!IsTinted(editor, line))
        editor.Send(mavro::SCI_MARKERADD, static_cast<std::uintptr_t>(line),
                    RegionMarks::cTintMarker);
}

bool Fits(const CppEditor& editor, const RegionMarks::Region& region, int line) {
  const bool isMarker = line == region.first || line == region.last;
  return isMarker || FitsRegion(editor.LineText(line), region.isDecl);
}

// Under the words of a line, not under its indentation.
void Wave(const CppEditor& editor, const std::vector<RegionMarks::Region>& regions) {
  editor.Send(mavro::SCI_SETINDICATORCURRENT, RegionMarks::cWaveIndicator);
  editor.Send(mavro::SCI_INDICATORCLEARRANGE, 0, editor.Length());
  for (const RegionMarks::Region& region : regions)
    for (int line = region.first; line <= region.last; ++line) {
      if (Fits(editor, region, line)) continue;
      const std::string text = editor.GetRange(editor.LineStart(line), editor.LineEnd(line));
      const size_t indent = std::min(text.find_first_not_of(" \t"), text.size());
      const size_t end = text.find_last_not_of(" \t") + 1;
      if (end > indent)
        editor.Send(mavro::SCI_INDICATORFILLRANGE,
                    static_cast<std::uintptr_t>(editor.LineStart(line)) + indent,
                    static_cast<std::intptr_t>(end - indent));
    }
}

bool MayFold(const CppEditor& editor, const std::vector<RegionMarks::Region>& regions) {
  return !regions.empty() && editor.Length() <= RegionMarks::cMostFolded;
}

// The component's lexer knows one pair of words that begin and end a block; the regions have two.
// A level that is already right isn't set: the component would open a closed fold.
void Fold(const CppEditor& editor, const std::vector<RegionMarks::Region>& regions) {
  SetOwnFolds(editor, MayFold(editor, regions));
  if (!HasOwnFolds(editor)) return;
  std::vector<FoldRegion> blocks;
  for (const RegionMarks::Region& region : regions) blocks.push_back({region.first, region.last});
  constexpr int cMeaning = 0xFFFF;  // what is above it is the lexer's own
  std::uintptr_t line = 0;
  for (const int level : FoldLevels(editor.GetRange(0, editor.Length()), blocks)) {
    if ((editor.Send(mavro::SCI_GETFOLDLEVEL, line) & cMeaning) != level)
      editor.Send(mavro::SCI_SETFOLDLEVEL, line, level);
    ++line;
  }
}

}  // namespace

std::vector<RegionMarks::Region> RegionMarks::RegionsOf(const CppEditor& editor) {
  std::vector<Region> regions;
  std::optional<Region> open;
  FollowMarkers(editor);
  for (const int place : editor.regionMarkers.Places()) {
    const int line = editor.LineOf(place);
    const FormMarker marker = MarkerOf(editor.LineText(line));
    if (!open && (marker == FormMarker::cDecl || marker == FormMarker::cInit))
      open = Region{marker == FormMarker::cDecl, line, line};
    if (!open || marker != FormMarker::cEnd) continue;
    open->last = line;
    regions.push_back(*open);
    open.reset();
  }
  return regions;
}

std::string RegionMarks::Update(const CppEditor& editor) {
  const unsigned long changes = editor.ChangeCount();
  const bool isFirst = editor.regionsSeen == CppEditor::cNeverSeen;
  if (changes == editor.regionsSeen || !editor.language || editor.IsHuge()) return {};
  editor.regionsSeen = changes;
  const std::vector<Region> regions = RegionsOf(editor);
  const bool wasPlain = editor.Send(mavro::SCI_MARKERNEXT, 0, cTintMask) < 0;
  if (regions.empty() && wasPlain && !HasOwnFolds(editor)) return {};
  Define(editor);
  Tint(editor, regions);
  Fold(editor, regions);
  Wave(editor, regions);
  const int line = editor.CaretLine();
  const auto found = std::find_if(regions.begin(), regions.end(),
                                  [line](const Region& region) { return region.Has(line); });
  if (isFirst || found == regions.end()) return {};
  return Fits(editor, *found, line)
             ? "The form designer writes these lines: it replaces them when it saves"
             : "The form designer can't take this line: it would be lost when it saves";
}

}  // namespace zendry
