#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Core.h"
#include "EditorLanguage.h"
#include "EditorOptions.h"
#include "EditorTip.h"
#include "FileText.h"
#include "ListNote.h"
#include "MarkType.h"
#include "SciCommands.h"
#include "SciMessages.h"
#include "TextCodec.h"

namespace mavro {

class SciText;
class TextFinder;
struct SciNotification;

// The changes that a save makes to the text before it is written.
struct SaveTidying {
  bool stripTrailing = false;   // blanks and tabs at the ends of lines go
  bool ensureLastLine = false;  // the last line gets a line end
  // Two blanks after a word stay: in some texts they break a line.
  bool keepBreaks = false;
  bool keepCaretLines = false;  // the lines of carets stay as they are
};

// When to offer words: if there are any, or only if there is exactly one.
enum class WordOffer { cAny, cSingle };

// An editor of source text: the editing component as a control. It is configured from its options
// and its language, loads and saves files byte for byte, and asks its derived class for
// completions. Lines and positions count from 0, positions in bytes. It works once its window
// exists; before that the text operations return 0 and do nothing.
class SciEditor : public Control {
 public:
  class Impl;
  SciEditor();
  ~SciEditor() override;

  // Group: overridden by derived classes. By default nothing happens and nothing is offered.
  virtual void onTextChanged() {}
  // Called before each change of the whole text, except by `load`: at `position`, `added` bytes
  // will replace `removed` bytes. `added` may be cUnknownLength. The text may be read, not changed.
  static constexpr long cUnknownLength = -1;
  virtual void onTextWillChange(long position, long removed, long added);
  virtual void onSavePointChanged() {}
  // `load` has read the first part of a text of cLargeBytes or more. A derived class may show and
  // paint the editor, and then returns true: while the rest is read nothing is painted, and after
  // that only what looks different. The text may be read, not changed.
  static constexpr long cLargeBytes = 8 << 20;
  virtual bool onFirstPart() { return false; }
  virtual void onDwell(int position);
  // The user has clicked beside a line, in the margin of the bookmarks; only with the option
  // marginClicks.
  virtual void onMarginClick(int line);
  // Lists the names that fit after `text`, the text left of the caret. The names have blanks
  // between them; each has "?" and the number of its picture after it, see cListPictures.
  virtual bool getCompletion(std::string& text, std::string& list);
  // What the list of getCompletion shows about one of its names.
  virtual ListNote getListNote(const std::string& name);
  // The name to select in that list, when `typed` has been typed of it; empty for the first one.
  virtual std::string getListChoice(const std::string& typed);
  // Called when the user has taken a name of that list.
  virtual void onListTaken(const std::string& name);
  virtual bool getCallTip(const std::string& name, std::string& tip);
  // Finds the known call around the caret and all that it may mean; false if there is none. By
  // default the line up to the caret is read, and getCallTip() gives the text.
  virtual bool findCallTip(EditorTip& tip);
  // Where the caret is in a call that findCallTip() has found; it is asked after every key.
  virtual TipPlace placeInCall(const EditorTip& tip);
  virtual void onUpdateUI() {}
  // The user has tried to change a text that is read only.
  virtual void onRefusedChange() {}
  // Called after a typed character, when indentation by the language is on. A derived class that
  // knows the language better indents the lines itself and returns true.
  virtual bool onAutoIndent(char typed);
  // Indents a line by its text. False if a derived class has no rules for it: then it is indented
  // as the line that it belongs to.
  virtual bool onIndentLine(int line);
  // Called before a text is pasted over the selection; returns the text to paste. Columns that are
  // pasted, and texts that are dropped, don't come here.
  virtual std::string onPaste(std::string pasted);

  // Sends a message to the editing component; open to every caller. `lParam` depends on the
  // message.
  std::intptr_t Send(unsigned message, std::uintptr_t wParam = 0, std::intptr_t lParam = 0) const;
  std::intptr_t Send(unsigned message, std::uintptr_t wParam, const char* text) const;

  // Group: configuration. applyOptions is called once the window exists and after each change.
  void applyOptions();
  void SetLanguage(const EditorLanguage* newLanguage);

  // Group: files.
  // Reads a file and takes its name. An error, with nothing changed, if it can't be read; with
  // `reportMissing` a message says so.
  FileResult load(const std::string& path);
  // Replaces the text with the present contents of the file, as one undo step. An error, with
  // nothing changed, if it can't be read.
  FileResult reload(const std::string& path);
  // Writes the text. An error, with the text as it is and still dirty, if that fails.
  FileResult save(const std::string& path, SaveTidying tidying = {});
  // A digest of the bytes that saving the text would write, and the digest of a file's bytes, for
  // comparison; empty if there are no such bytes.
  std::optional<size_t> TextDigest() const;
  static std::optional<size_t> DigestOfFile(const std::string& path);
  // Replaces the text with one that is in no file. The new text is unsaved, and undo restores the
  // old one. A save writes it with the given encoding and odd byte; a number that is no
  // TextEncoding means cPlainText.
  void TakeText(std::string_view newText, int newEncoding, std::string_view oddByte);
  // The last byte of a UTF-16 file with an odd number of bytes; it is after the text.
  const std::string& OddByte() const;
  // True for a text so large that it is shown without styles, folds and wrapped lines.
  bool IsHuge() const;
  // A read-only text is changed by nobody but `load`, `reload` and `TakeText`; `load` and `reload`
  // leave it writable.
  bool IsReadOnly() const { return Send(SCI_GETREADONLY) != 0; }
  void SetReadOnly(bool on) { Send(SCI_SETREADONLY, on); }
  // The end of the next line typed: "LF", "CR LF" or "CR".
  std::string LineEndName() const;
  // "UTF-8", "UTF-16 LE", ...; "8 bit" for bytes that are not UTF-8.
  std::string EncodingName() const;

  // Group: text. Lines that take long to measure are not shown: a stand-in, one character with a
  // note, replaces such a line in the text. Lengths and positions are those of the shown text.
  int Length() const { return static_cast<int>(Send(SCI_GETLENGTH)); }
  int LineCount() const { return static_cast<int>(Send(SCI_GETLINECOUNT)); }
  std::string GetRange(int start, int end) const;
  // Appends the bytes from `start` up to `end` to `to`, wherever the component has its gap.
  void AppendRange(int start, int end, std::string& to) const;
  // A line with its line end.
  std::string LineText(int line) const;
  // The whole text, as it is saved; its length; its bytes from `start` up to `end`, appended to
  // `to`.
  std::string GetText() const;
  size_t WholeLength() const;
  void AppendWhole(size_t start, size_t end, std::string& to) const;
  // LinesNotShown counts the lines that are not shown. ShowLongLine shows one of them: its stand-in
  // is beside the caret or in the caret's line. It first asks the user if that takes long. False if
  // there is no stand-in or the user refuses.
  int LinesNotShown() const;
  bool ShowLongLine();
  int CaretPosition() const { return static_cast<int>(Send(SCI_GETCURRENTPOS)); }
  int LineOf(int position) const;
  int LineStart(int line) const;
  int LineEnd(int line) const;  // before the line end
  int CaretLine() const { return LineOf(CaretPosition()); }
  int CaretColumn() const;  // in columns of the screen, from 0
  std::pair<int, int> Selection() const;
  std::string SelectedText() const;  // whole
  void Select(int anchor, int caret);
  void ReplaceSelection(std::string_view replacement);
  // Counts every change of the text, as it happens.
  unsigned long ChangeCount() const;
  // The text for the rules of typing; lives as long as the editor.
  const SciText& Reader() const;

  // Group: places.
  // Shows a line, unfolded and with a few lines above it, and puts the caret at its start.
  void goToLine(int line);
  void ToggleBookmark(int line);
  // Puts a marker of the table on a line; an exclusive marker is removed from its former line.
  void SetLineMark(int number, int line);
  void RemoveLineMarks(int number);
  // Puts the sign of a marker of the table beside a line; any number of lines may have it. Answers
  // the sign's handle, which is above 0. The sign follows its line, also when the line is moved,
  // and goes with it.
  int AddSign(int number, int line);
  // The line of a sign; -1 if it has gone with its line: then it doesn't come back.
  int SignLine(int handle);
  // Gives a sign the look of another marker.
  void ChangeSign(int handle, int number);
  void RemoveSign(int handle);

  // Group: commands. Runs a command by its id; false if it is not a command of the editor.
  bool OnCommand(int id);

  // Group: several carets.
  // Selects all places that have the selected text, or the word at the caret: if that is a whole
  // word, whole words only. Returns how many there are; if there are more than cMostCarets, it
  // changes nothing.
  int SelectOccurrences();
  // Selects the next such place too, or first the word at the caret. False if there is no other.
  bool AddNextOccurrence();

  // Group: search.
  // Marks all hits and returns their number; counts up to cMostHits of them and marks up to
  // cMostMarked, in a longer list those around the lines in view. -1 if the search was given up.
  static constexpr int cMostHits = 1'000'000;
  static constexpr int cMostMarked = 10'000;
  int MarkHits(const TextFinder& finder);
  void UnmarkHits();
  // The shown text, until the next change or message.
  std::string_view ShownText() const;

  // Group: completion, call tips, indentation.
  // Offers the names that may follow; true if a list is open.
  bool startCompletion();
  // Shows the tip of the call around the caret, and lets it follow the caret.
  void startCallTip();
  void updateCallTip();
  // Shows a text as a tip where the mouse rests, for an answer that comes some time after onDwell.
  // False, with nothing shown, if the mouse has moved meanwhile.
  bool ShowMouseTip(const std::string& text);
  // Offers the words of the text that begin with the word left of the caret; true if a list is
  // open.
  bool startWordCompletion(WordOffer offer);
  void maintainIndent(char typed);
  void autoIndent(char typed);
  int expectedIndent(int line) const;
  int Indentation(int line) const;  // in columns
  // Indents a line; the caret keeps its place in the line's text.
  void SetIndentation(int line, int columns);
  // True for a closer that was written automatically, while the caret is in its pair.
  bool IsAutomatic(int position) const;

  std::string fileName;
  bool dirty = false;
  bool tipActive = false;
  const std::unique_ptr<EditorOptions> options;
  int parenDepth = 0;  // of calls around the caret, counted from that of the tip
  bool inMacroRecord = false;
  std::vector<std::string> macro;
  bool wordCompleting = false;
  int tipStartPos = 0;
  std::string functionName, tipText;
  const EditorLanguage* language = nullptr;  // not owned
  const MarkType* markTypes = nullptr;       // not owned
  int markTypeCount = 0;
  int codePage = 0;  // 0 or 65001: how the bytes are shown
  int encoding = cPlainText;
  bool reportMissing = false;

 protected:
  explicit SciEditor(Impl* newImpl);

 private:
  Impl& ItsImpl() const;
};

}  // namespace mavro
