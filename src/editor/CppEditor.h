#pragma once

#include <array>
#include <optional>
#include <string>

#include "SciEditor.h"
#include "base/CaretText.h"
#include "base/DiskStamp.h"
#include "rescue/TextRescue.h"

namespace zendry {

class EditTab;

// Marks that lists and the debugger put beside a line: rows of the editor's table of markers. A
// file has each of them at most once, breakpoints excepted.
enum EditorMark { cNoMark = -1, cBreakpointMark = 1, cErrorMark = 2, cExecutionMark = 3 };

// The editor of one open file: connects typing to the tags of the project, keeps the flag that says
// whether they are up to date, and has the unsaved text rescued. `fileName` is the full path with
// forward slashes, empty for a file that has no name yet. It works once its window exists.
class CppEditor : public mavro::SciEditor, private RescueSource {
 public:
  explicit CppEditor(EditTab& itsTab);

  // Reads a file and takes its name; false, with nothing changed, when it can't be read.
  bool Load(const std::string& path);
  // Puts what the file holds now in place of the text, as one undo step. What was unsaved stays in
  // a copy beside as long as undoing can bring it back. False, with nothing changed, when the file
  // can't be read or there is no such copy.
  bool Reload();
  // Takes over a text that another run of the program has left behind: it is unsaved. Answers
  // whether a copy of its own is kept now, so that the old one may go.
  bool TakeRescued(const RescuedText& rescued);
  // Writes the text to `fileName` and parses it; false, and still dirty, when that fails.
  bool Save();
  // Gives the text the name that the user has chosen for it. What that file holds now may be
  // replaced: the user has been asked.
  void TakeName(const std::string& name);
  // Takes the style and typing rules from the name's extension, and options from the settings.
  void ApplySettings();

  // Lines count from 1, as lists and people do; one past the end stands for the last.
  void ShowLine(int line);
  int ShownLine() const { return CaretLine() + 1; }
  // Moves a mark to a line, or takes it away.
  void SetMark(EditorMark mark, int line);
  void RemoveMark(EditorMark mark);

  // Whether the file on disk is another one than was read or written here last. `AcceptDisk` takes
  // its present state for the known one.
  bool DiskHasChanged();
  void AcceptDisk();
  // Whether the user has been asked about the file's present state, and that they have been now: it
  // is asked about once when it is seen, and again whenever a save would replace it.
  bool WasAskedAboutDisk() const;
  void NoteAskedAboutDisk();
  // Writes the rescue copy that has become due.
  void TickRescue(TextRescue::Clock::time_point now) { rescue.Tick(now); }
  // Why the unsaved text has no rescue copy, although one was due; empty as long as all is well.
  const std::string& WhyNoRescue() const { return rescue.WhyNone(); }

  // Of all margins together, in pixels.
  int MarginWidth() const;
  // What the caret's status is: overtyping, encoding and line ends, in words.
  std::string TextNote() const;
  // The text as the tag parser and lookups read it; lives as long as the editor.
  CaretText& LiveText() { return liveText; }

  void onTextChanged() override;
  void onTextWillChange(long position, long removed, long added) override;
  void onSavePointChanged() override;
  void onDwell(int position) override;
  bool getCompletion(std::string& text, std::string& list) override;
  bool getCallTip(const std::string& name, std::string& tip) override;
  void onUpdateUI() override;

 private:
  // They leave the state of the file, the tags and the rescue copy as they are.
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

  EditTab& tab;
  LiveTextOf liveText{*this};
  TextRescue rescue{*this};
  DiskStamp stamp;                      // of the file that the text was read from or written to
  std::optional<size_t> storedDigest;   // of what that file holds, if known
  std::optional<DiskStamp> askedAbout;  // of another one that the user has been asked about
  std::array<mavro::MarkType, 4> marks;
  std::string storedName;         // under which the text was last read or written
  unsigned long seenChanges = 0;  // up to which `parsed` has been taken back
  long bytesChanged = 0;          // since the rescue copy was told
};

}  // namespace zendry
