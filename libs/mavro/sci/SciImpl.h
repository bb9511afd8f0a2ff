#pragma once

#include <functional>
#include <string>
#include <vector>

#include "EditorColours.h"
#include "FirstPart.h"
#include "IndentRules.h"
#include "LineSigns.h"
#include "LongLines.h"
#include "NativeSci.h"
#include "OccurrenceRules.h"
#include "PairRules.h"
#include "SciCaret.h"
#include "SciEditor.h"
#include "SciText.h"
#include "StylePalette.h"
#include "SysImpl.h"
#include "TextCodec.h"
#include "TypingRules.h"

namespace mavro {

// The platform half of the editor: its window and the window's notifications.
class SciEditor::Impl : public SysImpl, public SciText, private SignBoard {
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
  const char* LineEndBytes() const;  // of a new line

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

  enum class Way { cNext, cPrevious };

  // Group: typing (SciTyping.cpp).
  // A key is about to be handled; true if it has been carried out.
  bool TakeKey(const SciKey& key);
  void IndentAtEach(char typed);
  void DropStrayList();
  void CharacterAdded(char typed);
  // A key that moves in the open list, or the Enter key, is about to be pressed.
  void WatchListKey(int code);
  // True if the typed character belongs to no code.
  bool IsQuietHere(char typed);
  // The names that the derived class has offered, or words of the text.
  enum class Offer { cNames, cWords };
  void ShowList(size_t typed, const std::string& list, Offer offer);
  IndentContext Context() const;
  void Indent(const std::vector<IndentChange>& changes);

  // Group: brackets and quotes in pairs (SciPairs.cpp).
  // Carries out a key at the one caret if pairs are concerned; false if the component shall.
  bool TakePairKey(const SciKey& key);
  // Writes the partner of the character that was just typed, if one was announced.
  void FinishPair(char typed);
  AutoPairs pairs;

  // Group: several carets (SciCarets.cpp).
  bool HasSeveral() const { return Send(SCI_GETSELECTIONS) > 1; }
  // A column may be so thin that it is only a caret in each of its rows.
  bool HasColumn() const {
    const Param mode = Send(SCI_GETSELECTIONMODE);
    return mode == SC_SEL_RECTANGLE || mode == SC_SEL_THIN;
  }
  CaretList Carets() const;
  static CaretList Merged(const CaretList& list);
  void SetCarets(const CaretList& list);
  void MergeCarets();
  // Carries out `act` with each caret as the only one; the carets are where it leaves them.
  void ForEachCaret(const std::function<void()>& act);
  // Carries out a key at several carets; false if the component shall.
  bool TakeKeyAtEach(const SciKey& key);
  void AddCaret(Way way);
  void AddCaretAt(int position, bool drags);
  int SelectOccurrences();
  bool AddOccurrence();
  static constexpr Param cHitIndicator = 10;  // of the hits of a search
  std::string JoinedCopy(std::string asCopied) const;
  std::string PastedAtEach(std::string pasted);

  // Group: call tips (SciTips.cpp).
  void AskTip();
  void FollowTip();
  void EndTip();
  void ShowTip();
  bool StepTip(int step);
  TipState tips;

  // Group: places and commands (SciPlaces.cpp, SciCommandTable.cpp).
  void GoToLine(int line);
  enum class Selecting { cNothing, cUpToThere };
  void GoToBookmark(Way way, Selecting selecting);
  void GoToMatch(Selecting selecting);
  void SetRecording(bool on);
  void PlayMacro();
  void FoldAll();
  void SetAllFolds(bool open);
  void CloseFolds();
  void KeepInView(const std::function<void()>& change);
  LineSigns signs{*this, *this};
  // Gives all lines the same end; new lines get it too.
  void ConvertLineEnds(int mode);
  // The kind of bytes that the text had when it was loaded, and that later changes have added.
  TextBytes bytes = TextBytes::cAscii;
  std::string oddByte;  // of UTF-16, see TextDecoder
  unsigned long changeCount = 0;
  bool huge = false;

 private:
  SciEditor& Editor() const { return *static_cast<SciEditor*>(owner); }

  int Put(int number, int line) override;
  void Take(int boardHandle) override;
  int LineOfSign(int boardHandle) const override;
  bool HasSign(int number, int line) const override;

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
  void ShowFirstPart(long size);
  void EndFirstPart(bool isRead);
  std::optional<LoadedText> FillFrom(int file, long size);
  void AddShown(std::string_view text);
  void ConvertBytesToLetters();
  TextBytes KindOfBytes() const;
  void ClassifyText(std::optional<TextBytes> known = {});
  void Tidy(SaveTidying tidying);
  void Strip(const std::vector<ByteRange>& ranges);
  void KeepBeforeCarets(std::vector<ByteRange>& ranges, bool wholeLines);
  void KeepRawLiterals(std::vector<ByteRange>& ranges);
  void EnsureLastLine();

  std::optional<LoadedText> loaded;  // none once the text is another
  FirstPart firstPart;
  int foldFlags = 0;
  int notesSent = 0;
  bool pausesOvertype = false;
  void ChooseInList();
  Offer offered = Offer::cWords;  // in the list that was opened last
  int listStart = 0;              // where its names begin in the text
  bool movedInList = false;       // the user has chosen a row of the open list

  void Replace(int start, int end, std::string_view text);
  bool CanPair() const;
  bool StepOver(char typed);
  int BlockEndBelow(char typed) const;
  int IndentBytes(int line) const;
  void LeaveBlock(int closing);
  bool Surround(char typed);
  bool DeletePair();
  bool OpenBlock();
  void AnnouncePair(char typed);
  void BeginTyping();
  void EndTyping();

  void TypeAtCaret(const std::string& text);
  void MoveVertically(Way way, bool selects);
  int PlaceBeside(int position, int x, Way way) const;
  bool ExtendColumn(int key);
  void LeaveCaretsInRows();
  void KeepMainRow();
  bool LeavesColumn(const SciKey& key);
  void FollowDone(int position, int inserted, int deleted);
  Occurrence Wanted() const;

  char pairTyped = '\0';       // a partner may follow this character, which is about to be typed
  bool pairsAnywhere = false;  // its place has been looked at
  bool typesOneStep = false;   // an undo step has begun for the key that is being typed
  std::vector<Caret>* done = nullptr;  // the carets that ForEachCaret has been at
  CaretList beforeMouse;               // the carets before the one that the mouse adds
  int mouseAnchor = 0;                 // of that one
  std::vector<int> columnsKept;        // of the carets, in pixels, while they move up and down
};

}  // namespace mavro
