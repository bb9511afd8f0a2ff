#pragma once

namespace mavro {

// The editing commands that an editor carries out itself, by the ids of the menu's table. The rows
// of find, replace and print belong to their dialogs.
enum SciCommand {
  cSciGoToLine = 807,
  cSciToggleBookmark = 808,
  cSciNextBookmark = 809,
  cSciPrevBookmark = 810,
  cSciSelectToNextBookmark = 811,
  cSciSelectToPrevBookmark = 812,
  cSciClearBookmarks = 813,
  cSciCut = 814,
  cSciCopy = 815,
  cSciPaste = 816,
  cSciUndo = 817,
  cSciDeleteLine = 819,
  cSciSelectToMatch = 821,
  cSciLowerCase = 822,
  cSciUpperCase = 823,
  cSciShowLineNumbers = 826,
  cSciSwitchFontType = 827,
  cSciShowWhiteSpace = 830,
  cSciShowLineEnds = 831,
  cSciWrapLines = 832,
  cSciReadOnly = 833,
  cSciFoldAll = 834,  // closes all folds, or opens them if the first one is closed
  cSciShowLongLine = 835,
  cSciCloseFolds = 836,
  cSciOpenFolds = 837,
  cSciEndsLf = 838,
  cSciEndsCrLf = 839,
  cSciEndsCr = 840,
  cSciStripBlanks = 841,
  cSciGoToMatch = 842,
  cSciPlayMacro = 844,
  cSciRecordMacro = 845,
  cSciRedo = 848,
  cSciToggleComment = 860,
  cSciMoveLinesUp = 861,
  cSciMoveLinesDown = 862,
  cSciDuplicate = 863,
  cSciJoinLines = 864,
  cSciSortLines = 865,
  cSciZoomIn = 866,
  cSciZoomOut = 867,
  cSciZoomNone = 868,
  cSciSelectOccurrences = 875,
  cSciNextOccurrence = 876,
  cSciCaretAbove = 877,
  cSciCaretBelow = 878
};

}  // namespace mavro
