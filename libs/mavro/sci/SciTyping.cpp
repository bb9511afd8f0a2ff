#include <algorithm>

#include "CharSets.h"
#include "Keys.h"
#include "SciImpl.h"
#include "TipRules.h"
#include "WordRules.h"

// The actions after a typed character: messages carry out the plan of the rules.

namespace mavro {

namespace {

constexpr char cLineEndChars[] = {'\n', '\r', '\n'};  // by the component's line end mode

}  // namespace

void SciEditor::Impl::CharacterAdded(char typed) {
  SciEditor& editor = Editor();
  editor.onTextChanged();
  TypingState state;
  if (HasSeveral()) return IndentAtEach(typed);
  state.recording = editor.inMacroRecord;
  state.hasSeveral = done != nullptr;
  const auto [start, end] = editor.Selection();
  state.hasCaret = start > 0 && start == end;
  state.tipActive = tips.open.has_value();
  state.listActive = Send(SCI_AUTOCACTIVE) != 0;
  state.wordCompleting = editor.wordCompleting;
  state.isQuiet = editor.language &&
                  PlaceMatters(typed, state, *editor.language, *editor.options) &&
                  IsQuietHere(typed);
  for (const TypingStep step : PlanTyping(typed, state, editor.language, *editor.options))
    switch (step) {
      case TypingStep::cStartTip:
        // A new call stands where one was whose tip the user has closed.
        if (tips.closedCall == start - 1 && IsInSet(editor.language->tipStart, typed))
          tips.closedCall = -1;
        AskTip();
        break;
      case TypingStep::cUpdateTip:
        editor.updateCallTip();
        break;
      case TypingStep::cCancelList:
        Send(SCI_AUTOCCANCEL);
        break;
      case TypingStep::cStartCompletion:
        editor.startCompletion();
        break;
      case TypingStep::cStartWords:
        if (!editor.startWordCompletion(WordOffer::cSingle)) Send(SCI_AUTOCCANCEL);
        break;
      case TypingStep::cOfferWords:
        editor.wordCompleting = editor.startWordCompletion(WordOffer::cSingle);
        break;
      case TypingStep::cForgetWords:
        editor.wordCompleting = false;
        break;
      case TypingStep::cMaintainIndent:
        editor.maintainIndent(typed);
        break;
      case TypingStep::cAutoIndent:
        editor.autoIndent(typed);
        break;
    }
  FinishPair(typed);
}

// Only signs and line ends change the place of a line; letters may be typed at many carets.
void SciEditor::Impl::IndentAtEach(char typed) {
  const EditorLanguage* language = Editor().language;
  if (!language || HasColumn() || IsInSet(language->wordChars, typed)) return;
  ForEachCaret([this, typed] { CharacterAdded(typed); });
}

// A command may have taken the caret away from an open list. Accepting a row would replace all
// that is between the two.
void SciEditor::Impl::DropStrayList() {
  const EditorLanguage* language = Editor().language;
  if (!Send(SCI_AUTOCACTIVE)) return;
  const auto opened = static_cast<int>(Send(SCI_AUTOCPOSSTART));
  const int caret = Editor().CaretPosition();
  const std::string between = Range(std::min(opened, caret), std::max(opened, caret));
  const char* inWords =
      language && language->wordChars ? language->wordChars : Editor().options->wordChars.c_str();
  const bool isWord =
      std::all_of(between.begin(), between.end(), [&](char c) { return IsInSet(inWords, c); });
  if (!isWord) Send(SCI_AUTOCCANCEL);
}

bool SciEditor::Impl::TakeKey(const SciKey& key) {
  DropStrayList();
  const bool isHeldKey = key.key == Key::cShift || key.key == Key::cControl || key.key == Key::cAlt;
  if (isHeldKey) return false;
  if (key.isColumn && ExtendColumn(key.key)) return true;
  const bool isRow = HasColumn() && !HasSeveral();
  if (isRow || (HasColumn() && key.key == Key::cEnter)) KeepMainRow();
  if (LeavesColumn(key)) return key.key == Key::cEscape;
  if (key.key != Key::cUp && key.key != Key::cDown) columnsKept.clear();
  if (!HasSeveral()) return TakePairKey(key);
  pairs.Clear();
  return !HasColumn() && !Send(SCI_AUTOCACTIVE) && TakeKeyAtEach(key);
}

// The Enter key ends the line as long as the user has chosen nothing from a list of words that
// nobody asked for.
void SciEditor::Impl::WatchListKey(int code) {
  DropStrayList();
  if (!Send(SCI_AUTOCACTIVE)) return;
  if (code == cSciWillMove)
    movedInList = true;
  else if (Editor().wordCompleting && !movedInList)
    Send(SCI_AUTOCCANCEL);
}

// The typed character may not have its style yet. Giving styles repaints the window, so that is
// left out where the character before decides.
bool SciEditor::Impl::IsQuietHere(char typed) {
  const SciEditor& editor = Editor();
  if (huge) return false;
  const int caret = editor.CaretPosition(), before = caret - 2;
  const int start = LineStart(LineOf(caret));
  const auto styled = static_cast<int>(Send(SCI_GETENDSTYLED));
  if (before >= start && styled > before) {
    const bool isQuiet = IsQuietPlace(*this, before, *editor.language);
    const bool inWord = IsInSet(editor.language->wordChars, typed) &&
                        IsInSet(editor.language->wordChars, Range(before, before + 1)[0]);
    const bool isDirective = StyleAt(before) == editor.language->directiveStyle;
    if ((!isQuiet && !isDirective) || inWord) return isQuiet;
  }
  Send(SCI_COLOURISE, std::min(styled, start), caret);
  return IsQuietPlace(*this, caret - 1, *editor.language);
}

bool SciEditor::startCompletion() {
  wordCompleting = false;
  if (!language) return false;
  std::string text = CompletionText(ItsImpl().LineToCaret(), *language);
  std::string list;
  if (!getCompletion(text, list)) return false;
  ItsImpl().ShowList(text.size(), list, Impl::Offer::cNames);
  return Send(SCI_AUTOCACTIVE) != 0;
}

// Offers names; their first `typed` bytes are already before the caret.
void SciEditor::Impl::ShowList(size_t typed, const std::string& list, Offer offer) {
  listStart = Editor().CaretPosition() - static_cast<int>(typed);
  movedInList = false;
  offered = offer;
  if (!Window()->IsOnScreen(listStart)) return;
  std::function<ListNote(const std::string&)> noteOf;
  if (offer == Offer::cNames)
    noteOf = [this](const std::string& name) { return Editor().getListNote(name); };
  Window()->SetListNotes(std::move(noteOf));
  SendText(SCI_AUTOCSHOW, static_cast<Param>(typed), list.c_str());
  if (Send(SCI_AUTOCACTIVE)) ChooseInList();
}

// After each letter the component selects the first name that begins with what is typed.
void SciEditor::Impl::ChooseInList() {
  if (offered != Offer::cNames || !Send(SCI_AUTOCACTIVE)) return;
  const std::string choice = Editor().getListChoice(Range(listStart, Editor().CaretPosition()));
  if (!choice.empty()) SendText(SCI_AUTOCSELECT, 0, choice.c_str());
}

namespace {

// A text without the rest of the word that it begins with: the word at the caret is not offered.
std::string AfterWord(const std::string& text, const std::string& wordChars) {
  return text.substr(std::min(text.find_first_not_of(wordChars), text.size()));
}

}  // namespace

bool SciEditor::startWordCompletion(WordOffer offer) {
  const std::string line = ItsImpl().LineToCaret();
  const std::string word = WordToComplete(line, options->wordChars.c_str());
  if (word.empty()) return false;
  if (offer == WordOffer::cSingle && !IsOfferedUnasked(word, language)) return false;
  const int caret = CaretPosition();
  const std::string around = GetRange(caret - cWordReach, caret) +
                             AfterWord(GetRange(caret, caret + cWordReach), options->wordChars);
  const std::string_view lineToWord(line.data(), line.size() - word.size());
  const FoundWords found =
      CollectWords(around, word, options->wordChars.c_str(),
                   language && language->ignoreCase ? LetterCase::cIgnored : LetterCase::cCounts,
                   NamesMember(lineToWord, language) ? language->keywords : nullptr);
  if (found.count == 0 || (offer == WordOffer::cSingle && found.count > 1)) return false;
  ItsImpl().ShowList(word.size(), found.list, Impl::Offer::cWords);
  return Send(SCI_AUTOCACTIVE) != 0;
}

IndentContext SciEditor::Impl::Context() const {
  const SciEditor& editor = Editor();
  IndentContext context{*this, *editor.options, *editor.language};
  const int size = static_cast<int>(Send(SCI_GETINDENT));
  context.indentSize = size > 0 ? size : static_cast<int>(Send(SCI_GETTABWIDTH));
  context.lineEnd = cLineEndChars[Send(SCI_GETEOLMODE)];
  return context;
}

// The caret keeps its place in the line's text.
void SciEditor::Impl::Indent(const std::vector<IndentChange>& changes) {
  for (const IndentChange& change : changes) {
    const int caret = Editor().CaretPosition();
    const int before = static_cast<int>(Send(SCI_GETLINEINDENTPOSITION, change.line));
    Send(SCI_SETLINEINDENTATION, change.line, change.columns);
    const int after = static_cast<int>(Send(SCI_GETLINEINDENTPOSITION, change.line));
    if (LineOf(Editor().CaretPosition()) != change.line && LineOf(caret) != change.line) continue;
    Send(SCI_SETEMPTYSELECTION, caret >= before ? caret + after - before : after);
  }
}

void SciEditor::maintainIndent(char typed) {
  if (!language) return;
  const IndentContext context = ItsImpl().Context();
  ItsImpl().Indent(MaintainIndentChanges(context, CaretPosition(), typed));
}

// The typed text may not have its styles yet.
void SciEditor::autoIndent(char typed) {
  if (!language || onAutoIndent(typed)) return;
  const IndentContext context = ItsImpl().Context();
  const bool mayIndent = typed == context.lineEnd || typed == ' ' ||
                         IsInSet(language->blockStart, typed) || IsInSet(language->blockEnd, typed);
  if (!mayIndent) return;
  const int caret = CaretPosition();
  const int first = FirstLineLookedAt(context, LineOf(caret) - 2);
  if (typed != ' ' || IsWordList(language->blockEnd))
    Send(SCI_COLOURISE, static_cast<std::uintptr_t>(LineStart(first)), caret);
  ItsImpl().Indent(AutoIndentChanges(context, caret, typed));
}

int SciEditor::Indentation(int line) const {
  return ItsImpl().Indentation(line);
}

void SciEditor::SetIndentation(int line, int columns) {
  ItsImpl().Indent({{line, columns}});
}

int SciEditor::expectedIndent(int line) const {
  return language ? ExpectedIndent(ItsImpl().Context(), line) : 0;
}

}  // namespace mavro
