#include "SciImpl.h"

#include <algorithm>

#include "MacroLines.h"
#include "WordRules.h"

namespace mavro {

namespace {

constexpr int cBookmarkMargin = 1;
constexpr int cFoldMargin = 2;
constexpr int cUpperArrow = 1;  // of a tip
// The changes that the component reports. The two notifications after an insertion and a deletion
// are left out: on the way to their receiver they count the characters of the whole text.
constexpr Param cReportedChanges = SC_MOD_BEFOREINSERT | SC_MOD_BEFOREDELETE | SC_MOD_CONTAINER;

bool IsTextStep(unsigned message) {
  switch (message) {
    case SCI_REPLACESEL:
    case SCI_ADDTEXT:
    case SCI_INSERTTEXT:
    case SCI_APPENDTEXT:
    case SCI_SEARCHNEXT:
    case SCI_SEARCHPREV:
      return true;
    default:
      return false;
  }
}

bool IsCountedStep(unsigned message) {
  return message == SCI_ADDTEXT || message == SCI_APPENDTEXT;
}

}  // namespace

void SciEditor::Impl::Create() {
  RegisterSciClass();
  CreateNative(cSciClass, cWantsKeys);
  Send(SCI_EMPTYUNDOBUFFER);
  Send(SCI_SETMODEVENTMASK, cReportedChanges);
  Send(SCI_USEPOPUP, 0);
  Send(SCI_SETEOLMODE, SC_EOL_LF);
  SetHooks();
  ApplyOptions();
}

int SciEditor::Impl::LineOf(int position) const {
  return static_cast<int>(Send(SCI_LINEFROMPOSITION, position));
}

int SciEditor::Impl::LineStart(int line) const {
  const Param start = Send(SCI_POSITIONFROMLINE, std::max(line, 0));
  return start < 0 ? Length() : static_cast<int>(start);
}

int SciEditor::Impl::LineEnd(int line) const {
  return static_cast<int>(Send(SCI_GETLINEENDPOSITION, std::max(line, 0)));
}

std::string SciEditor::Impl::Range(int start, int end) const {
  std::string range;
  AppendRange(start, end, range);
  return range;
}

// Copies two pieces if the component's gap is within the range: a pointer to both would move the
// gap, and the next key press would move it back.
void SciEditor::Impl::AppendRange(int start, int end, std::string& to) const {
  start = std::max(start, 0);
  end = std::min(end, Length());
  if (start >= end) return;
  const int middle = std::clamp(static_cast<int>(Send(SCI_GETGAPPOSITION)), start, end);
  for (const auto& [from, till] : {std::pair(start, middle), std::pair(middle, end)}) {
    if (from == till) continue;
    const Param bytes = Send(SCI_GETRANGEPOINTER, from, till - from);
    to.append(reinterpret_cast<const char*>(bytes), static_cast<size_t>(till - from));
  }
}

int SciEditor::Impl::StyleAt(int position) const {
  return static_cast<int>(Send(SCI_GETSTYLEAT, position) & 0xFF);
}

int SciEditor::Impl::Indentation(int line) const {
  return static_cast<int>(Send(SCI_GETLINEINDENTATION, line));
}

std::string_view SciEditor::Impl::Bytes() const {
  const Param all = Send(SCI_GETCHARACTERPOINTER);
  return all ? std::string_view(reinterpret_cast<const char*>(all), static_cast<size_t>(Length()))
             : std::string_view();
}

std::string SciEditor::Impl::LineToCaret() const {
  const int caret = Editor().CaretPosition();
  return Range(LineStart(LineOf(caret)), caret);
}

Param SciEditor::Impl::OnNotify(NotifyHeader* header) {
  const auto& n = *static_cast<const SciNotification*>(header);
  SciEditor& editor = Editor();
  switch (n.code) {
    case SCN_CHARADDED:
      CharacterAdded(static_cast<char>(n.character));
      break;
    case SCN_SAVEPOINTREACHED:
    case SCN_SAVEPOINTLEFT:
      editor.dirty = n.code == SCN_SAVEPOINTLEFT;
      editor.onSavePointChanged();
      break;
    case SCN_MODIFYATTEMPTRO:
      editor.onRefusedChange();
      break;
    case SCN_UPDATEUI:
      UpdateUi(n);
      break;
    case SCN_MODIFIED:
      if (n.modification & SC_MOD_CONTAINER)
        FollowLineEnds(n);
      else
        BeforeChange(n);
      break;
    case SCN_MACRORECORD:
      RecordStep(n);
      break;
    case SCN_MARGINCLICK:
      if (n.margin == cFoldMargin) ToggleFold(LineOf(n.position));
      if (n.margin == cBookmarkMargin) editor.onMarginClick(LineOf(n.position));
      break;
    case SCN_DOUBLECLICK:
      if (standIns.At(n.position) >= 0) ShowLongLineAt(n.position);
      break;
    case SCN_DWELLSTART:
      mouseX = n.x;
      mouseY = n.y;
      tips.mouseRests = n.position > 0 ? n.position : -1;
      if (n.position > 0) editor.onDwell(n.position);
      tips.isReplaced = tips.open && !Send(SCI_CALLTIPACTIVE);
      break;
    case SCN_DWELLEND:
      tips.mouseRests = -1;
      // A value that was shown under the mouse has taken the tip's window.
      if (tips.isReplaced) tips.shownText.clear();
      if (tips.open) FollowTip();
      if (!tips.open) Send(SCI_CALLTIPCANCEL);
      editor.tipActive = tips.open.has_value();
      tips.isReplaced = false;
      break;
    case SCN_CALLTIPCLICK:
      if (n.position != 0) StepTip(n.position == cUpperArrow ? -1 : 1);
      break;
    case cSciWillStep:
      return StepTip(n.step) ? 1 : 0;
    case cSciWillCancel:
      // The first Escape closes the list, the next one the tip.
      if (!tips.open || Send(SCI_AUTOCACTIVE)) break;
      tips.closedCall = tips.open->bracket;
      EndTip();
      break;
    case cSciKeyDone:
      FollowTip();
      break;
    case SCN_AUTOCCOMPLETED:
      if (offered == Offer::cNames && n.text) editor.onListTaken(n.text);
      break;
    case SCN_ZOOM:
      ApplyLineNumbers();
      break;
    case cSciForeignText:
      if (editor.codePage == 0 && bytes == TextBytes::cAscii) SetCodePage(SC_CP_UTF8);
      break;
    case cSciWillType:
    case cSciTyped:
      WatchTyping(n.code);
      if (n.code == cSciTyped) ChooseInList();
      break;
    case cSciWillEnter:
    case cSciWillMove:
      WatchListKey(n.code);
      break;
    case cSciPaletteChanged:
      ApplyStyles();
      break;
    default:
      break;
  }
  return 0;
}

// The notification of an insertion has only its length: a longer one may bring lines that are not
// shown.
void SciEditor::Impl::BeforeChange(const SciNotification& n) {
  if (!(n.modification & (SC_MOD_BEFOREINSERT | SC_MOD_BEFOREDELETE))) return;
  ++changeCount;
  const auto start = static_cast<long>(standIns.WholePosition(n.position));
  if (n.modification & SC_MOD_BEFOREINSERT) {
    const bool isKnown = longLines.IsEmpty() || n.length < LongLines::cStandInBytes;
    Editor().onTextWillChange(start, 0, isKnown ? n.length : cUnknownLength);
    standIns.WillInsert(n.position, n.length);
    pairs.WillInsert(n.position, n.length);
    signs.WillInsert(n.position, n.length);
    FollowDone(n.position, n.length, 0);
  } else {
    const auto end = static_cast<long>(standIns.WholePosition(n.position + n.length));
    Editor().onTextWillChange(start, end - start, 0);
    standIns.WillDelete(n.position, n.length);
    pairs.WillDelete(n.position, n.length);
    signs.WillDelete(n.position, n.length);
    FollowDone(n.position, 0, n.length);
  }
}

// An ASCII text is shown as UTF-8 after the first letter that needs it.
void SciEditor::Impl::UpdateUi(const SciNotification& n) {
  if (Editor().codePage == 0 && bytes == TextBytes::cUtf8) SetCodePage(SC_CP_UTF8);
  if (n.updated & SC_UPDATE_CONTENT) {
    ApplyLineNumbers();
    signs.Settle();
  }
  if (n.updated & (SC_UPDATE_CONTENT | SC_UPDATE_SELECTION)) {
    pairs.KeepAround(Editor().CaretPosition());
    MarkBraces();
    ShowCaretLine();
    FollowTip();
  }
  Editor().onUpdateUI();
}

void SciEditor::Impl::MarkBraces() {
  const int caret = Editor().CaretPosition();
  const BraceAtCaret brace = FindBrace(*this, caret, *Editor().options, Editor().language);
  const bool guided = Send(SCI_GETINDENTATIONGUIDES) != 0;
  if (brace.position < 0) {
    Send(SCI_BRACEHIGHLIGHT, -1, -1);
    if (guided) Send(SCI_SETHIGHLIGHTGUIDE, 0);
    return;
  }
  const Param partner =
      brace.colon ? LineEnd(LineOf(caret)) : Send(SCI_BRACEMATCH, brace.position, 0);
  if (partner < 0) {
    Send(SCI_BRACEBADLIGHT, brace.position);
    if (guided) Send(SCI_SETHIGHLIGHTGUIDE, 0);
    return;
  }
  Send(SCI_BRACEHIGHLIGHT, brace.position, partner);
  if (guided)
    Send(SCI_SETHIGHLIGHTGUIDE,
         std::min(Send(SCI_GETCOLUMN, brace.position), Send(SCI_GETCOLUMN, partner)));
}

void SciEditor::Impl::RecordStep(const SciNotification& n) {
  if (!Editor().inMacroRecord) return;
  MacroStep step;
  step.message = static_cast<int>(n.message);
  step.wParam = static_cast<long>(n.wParam);
  if (IsTextStep(n.message) && n.text) {
    step.hasText = true;
    step.text = IsCountedStep(n.message) ? std::string(n.text, n.wParam) : std::string(n.text);
  }
  Editor().macro.push_back(FormatMacroLine(step));
}

void SciEditor::Impl::ToggleFold(int line) {
  if (Send(SCI_GETFOLDLEVEL, line) & SC_FOLDLEVELHEADERFLAG) Send(SCI_TOGGLEFOLD, line);
}

}  // namespace mavro
