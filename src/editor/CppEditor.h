#pragma once

#include <array>
#include <optional>
#include <string>

#include "SciEditor.h"
#include "base/CaretText.h"
#include "base/DiskStamp.h"
#include "code/CompletionList.h"
#include "editor/CodeIndent.h"
#include "editor/FollowedPlaces.h"
#include "rescue/TextRescue.h"

namespace zendry {

class EditTab;

// Marks that lists and the debugger put beside a line: rows of the editor's table of markers. A
// file has each mark at most once, except breakpoints.
enum EditorMark {
  cNoMark = -1,
  cBreakpointMark = 1,
  cErrorMark = 2,
  cExecutionMark = 3,
  cIdleBreakpointMark = 4
};

// The editor of one open file. It connects typing to the tags of the project, keeps the flag that
// says if the tags are up to date, and has the unsaved text rescued. `fileName` is the full path
// with forward slashes; empty for a file that has no name yet. The window must exist before other
// members are used.
class CppEditor : public mavro::SciEditor, private RescueSource {
 public:
  explicit CppEditor(EditTab& itsTab);

  // Reads a file and takes its name; an error, with nothing changed, when it can't be read.
  mavro::FileResult Load(const std::string& path);
  // Replaces the text by the present content of the file, as one undo step. The unsaved text stays
  // in an extra rescue copy as long as undo can bring it back. An error, with nothing changed, when
  // the file can't be read or the copy can't be written.
  mavro::FileResult Reload();
  // Takes over a text that another run of the program has left in the rescue folder; the text
  // counts as unsaved. True if the text now has a copy of its own, so that the old copy may be
  // removed.
  bool TakeRescued(const RescuedText& rescued);
  // Writes the text to `fileName` and parses it. After an error the text stays dirty. The settings
  // say what is tidied first; a save that the user has not asked for leaves the caret's line alone.
  enum class SavedBy { cUser, cProgram };
  mavro::FileResult Save(SavedBy by);
  // Gives the text the name that the user has chosen for it. The file's present content may be
  // replaced: the user has been asked.
  void TakeName(const std::string& name);
  // Takes the style and typing rules from the name's extension, and options from the settings.
  void ApplySettings();

  // Makes the text read only if its file has become one that may not be written, and writable if
  // the file has. In between, the user decides.
  void FollowPermission();
  // The sentence that says why the text can't be changed.
  std::string WhyReadOnly() const;

  // Lines count from 1, as in lists; a line after the end means the last line.
  void ShowLine(int line);
  int ShownLine() const { return CaretLine() + 1; }
  // Moves a mark to a line, or removes it.
  void SetMark(EditorMark mark, int line);
  void RemoveMark(EditorMark mark);
  // Adds the mark of a breakpoint; `line` counts from 0. The answer is the sign's handle, for
  // SignLine and RemoveSign; -1 if there is no such line.
  int AddBreakMark(int line);
  // A breakpoint that the debugger can't stop at has a mark of its own.
  enum class BreakLook { cActive, cIdle };
  void ShowBreakMark(int handle, BreakLook look);
  // The line at a height of the window, from 0.
  int LineAt(int y) const;

  // The file's state on disk, if that has changed since this editor last read or wrote the file.
  // `AcceptDisk` makes the present state the known one.
  std::optional<DiskStamp> ChangeOnDisk();
  void AcceptDisk();
  // The first says if the user has been asked about a state of the file, the second notes that they
  // have been. The user is asked once when a change is seen, and again whenever a save would
  // replace the changed file.
  bool WasAskedAbout(const DiskStamp& change) const { return askedAbout == change; }
  void NoteAskedAbout(const DiskStamp& change) { askedAbout = change; }
  // Writes the rescue copy if it is due.
  void TickRescue(TextRescue::Clock::time_point now) { rescue.Tick(now); }
  // Why the unsaved text has no rescue copy, although one was due; empty as long as there is no
  // error.
  const std::string& WhyNoRescue() const { return rescue.WhyNone(); }

  // Opens the list of names at the caret, or says in the status line why there is none.
  void AskForList();

  // The expression at a place, as a debugger can print it; empty if there is none. The caret's is
  // the selection if there is one, in one line.
  std::string ExpressionAtPosition(int position) const;
  std::string ExpressionAtCaret() const;

  // How the text indents its lines.
  IndentHabits Habits() const { return indent.Habits(); }
  // The width of all margins together, in pixels.
  int MarginWidth() const;
  // Words for the status bar: overtyping, encoding, line ends.
  std::string TextNote() const;
  // The text for the tag parser and lookups; lives as long as the editor.
  CaretText& LiveText() { return liveText; }

  // Group: what marks the regions of forms keeps here: the change count that it has seen, and
  // the places of their markers.
  static constexpr unsigned long cNeverSeen = static_cast<unsigned long>(-1);
  mutable unsigned long regionsSeen = cNeverSeen;
  mutable FollowedPlaces regionMarkers;  // starts of the lines with their markers

  void onTextChanged() override;
  bool onFirstPart() override;
  void onTextWillChange(long position, long removed, long added) override;
  void onSavePointChanged() override;
  void onDwell(int position) override;
  void onMarginClick(int line) override;
  bool getCompletion(std::string& text, std::string& list) override;
  mavro::ListNote getListNote(const std::string& name) override;
  std::string getListChoice(const std::string& typed) override;
  void onListTaken(const std::string& name) override;
  bool findCallTip(mavro::EditorTip& tip) override;
  mavro::TipPlace placeInCall(const mavro::EditorTip& tip) override;
  void onUpdateUI() override;
  void onRefusedChange() override;
  bool onAutoIndent(char typed) override;
  bool onIndentLine(int line) override;
  std::string onPaste(std::string pasted) override;

 private:
  // Hidden, because they don't update the state of the file, the tags and the rescue copy.
  using SciEditor::load;
  using SciEditor::reload;
  using SciEditor::save;

  class LiveTextOf final : public CaretText {
   public:
    explicit LiveTextOf(const CppEditor& itsEditor) : editor(itsEditor) {}
    std::string Path() const override { return editor.fileName; }
    int Length() const override { return editor.Length(); }
    void CopyRange(int start, int end, char* to) const override;
    int CaretPosition() const override { return editor.CaretPosition(); }
    int LineFromPosition(int position) const override { return editor.LineOf(position); }
    int PositionFromLine(int line) const override;

   private:
    const CppEditor& editor;
  };

  std::string RescuePath() const override { return fileName; }
  TextFacts RescueFacts() const override { return {encoding, OddByte(), stamp}; }
  size_t PieceLength() const override { return WholeLength(); }
  void AppendPiece(size_t start, size_t end, std::string& to) const override {
    AppendWhole(start, end, to);
  }
  void FollowChanges();
  // Clears `parsed` if the text no longer has the tags that were found in it.
  void FollowTags();
  bool IndentsCode() const;

  EditTab& tab;
  LiveTextOf liveText{*this};
  CodeIndent indent{*this};
  TextRescue rescue{*this};
  DiskStamp stamp;                      // of the file that the text was read from or written to
  std::optional<size_t> storedDigest;   // of what that file holds, if known
  std::optional<DiskStamp> askedAbout;  // of another one that the user has been asked about
  std::array<mavro::MarkType, 5> marks;
  CompletionList names;           // in the list that was opened last
  bool isProtected = false;       // the file may not be written
  std::string storedName;         // name under which the text was last read or written
  unsigned long seenChanges = 0;  // change count when `parsed` was last reset
  long bytesChanged = 0;          // since the last call of rescue.Changed
};

}  // namespace zendry
