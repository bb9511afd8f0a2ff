#pragma once

#include <string>
#include <vector>

#include "EditorColours.h"
#include "IndentRules.h"
#include "LongLines.h"
#include "NativeSci.h"
#include "SciEditor.h"
#include "SciText.h"
#include "StylePalette.h"
#include "SysImpl.h"
#include "TextCodec.h"
#include "TypingRules.h"

namespace mavro {

// The platform half of the editor: its window and the window's notifications.
class SciEditor::Impl : public SysImpl, public SciText {
 public:
  void Create() override;
  Param OnNotify(NotifyHeader* header) override;

  NativeSci* Window() const { return static_cast<NativeSci*>(hwnd); }
  Param Send(unsigned message, Param wParam = 0, Param lParam = 0) const {
    return hwnd ? Window()->Send(message, wParam, lParam) : 0;
  }
  Param SendText(unsigned message, Param wParam, const char* text) const {
    return Send(message, wParam, reinterpret_cast<Param>(text));
  }

  // Group: the text for the rules of typing.
  int Length() const override { return static_cast<int>(Send(SCI_GETLENGTH)); }
  int LineOf(int position) const override;
  int LineStart(int line) const override;
  int LineEnd(int line) const override;
  std::string Range(int start, int end) const override;
  int StyleAt(int position) const override;
  int Indentation(int line) const override;
  void AppendRange(int start, int end, std::string& to) const override;
  // All of it, until the next change.
  std::string_view Bytes() const;
  std::string LineToCaret() const;

  // Group: look (SciLook.cpp).
  void ApplyOptions();
  void ApplyStyles();
  void SetCodePage(int codePage);
  void DropLineIndex();
  void ApplyLineNumbers();
  // The changes of an option that the user switches.
  void ApplyToggles();
  // The caret's line has a ground of its own, unless a mark gives it one.
  void ShowCaretLine();
  // The marker that draws the sign of a mark.
  static constexpr int SignOf(int mark) { return mark + 8; }

  // Group: files (SciFiles.cpp).
  FileResult Load(const std::string& path);
  FileResult Reload(const std::string& path);
  std::optional<size_t> FileDigest();
  std::string ShownForm(std::string_view whole, int& textEncoding);
  FileResult Save(const std::string& path, SaveTidying tidying);
  // Removes the blanks at the ends of the selected lines, or of all lines.
  void StripLines();
  void TakeText(std::string_view newText, int newEncoding, std::string_view newOddByte);

  // Group: lines that are not shown (SciLongLines.cpp).
  // The shown form of a text that is about to be inserted.
  std::string FoldNew(std::string_view text);
  // Replaces the selection with shown text.
  void PutText(std::string_view shown);
  bool ShowLongLineAt(int position);
  LongLines longLines;
  StandIns standIns{*this, longLines};

  // Group: typing (SciTyping.cpp).
  void CharacterAdded(char typed);
  // A key that moves in the open list, or the Enter key, is about to be pressed.
  void WatchListKey(int code);
  // True if the typed character belongs to no code.
  bool IsQuietHere(char typed);
  // The names that the derived class has offered, or words of the text.
  enum class Offer { cNames, cWords };
  void ShowList(size_t typed, const std::string& list, Offer offer);
  void ShowTip(int position);
  IndentContext Context() const;
  void Indent(const std::vector<IndentChange>& changes);

  // Group: places and commands (SciPlaces.cpp, SciCommandTable.cpp).
  void GoToLine(int line);
  enum class Way { cNext, cPrevious };
  enum class Selecting { cNothing, cUpToThere };
  void GoToBookmark(Way way, Selecting selecting);
  void GoToMatch(Selecting selecting);
  void SetRecording(bool on);
  void PlayMacro();
  void FoldAll();
  void SetAllFolds(bool open);
  // Gives all lines the same end; new lines get it too.
  void ConvertLineEnds(int mode);
  // The kind of bytes that the text had when it was loaded, and that later changes have added.
  TextBytes bytes = TextBytes::cAscii;
  std::string oddByte;  // of UTF-16, see TextDecoder
  unsigned long changeCount = 0;
  bool huge = false;

 private:
  SciEditor& Editor() const { return *static_cast<SciEditor*>(owner); }

  void BeforeChange(const SciNotification& n);
  void WatchTyping(int code);
  void FollowLineEnds(const SciNotification& n);
  void UpdateUi(const SciNotification& n);
  void MarkBraces();
  void RecordStep(const SciNotification& n);
  void ToggleFold(int line);

  void ApplyLexer();
  void ApplyLayout();
  void ApplyView();
  void ApplyCompletion();
  void ApplyMargins();
  void ApplyFoldSymbols();
  void ApplyMarkers();
  void ApplyProperties();
  void ApplyColours();
  void ApplyTextStyles();
  Desktop ItsDesktop() const;
  int Colour(EditorColour colour) const { return GroundOf(ColourOf(colour), ItsDesktop()); }
  void SendStyle(const StyleRow& row);
  void ApplyRepresentations();

  void SetHooks();
  void SendNotes();
  void ForgetLongLines();
  int StandInNear(int position);

  bool FillFrom(int file, long size);
  void AddShown(std::string_view text);
  void ConvertBytesToLetters();
  TextBytes KindOfBytes() const;
  void ClassifyText();
  void Tidy(SaveTidying tidying);
  void Strip(const std::vector<ByteRange>& ranges);
  void KeepBeforeCarets(std::vector<ByteRange>& ranges, bool wholeLines);
  void KeepRawLiterals(std::vector<ByteRange>& ranges);
  void EnsureLastLine();

  int foldFlags = 0;
  int notesSent = 0;
  bool pausesOvertype = false;
  void ChooseInList();
  Offer offered = Offer::cWords;  // in the list that was opened last
  int listStart = 0;              // where its names begin in the text
  bool movedInList = false;       // the user has chosen a row of the open list
};

}  // namespace mavro
