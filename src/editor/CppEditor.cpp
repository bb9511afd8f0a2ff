#include "editor/CppEditor.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "EditorColours.h"
#include "TipRules.h"
#include "base/Paths.h"
#include "code/Completion.h"
#include "code/CppLanguage.h"
#include "code/ExpressionAt.h"
#include "config/EditorSettings.h"
#include "editor/EditTabs.h"
#include "editor/EditorHost.h"
#include "editor/OwnFolds.h"
#include "project/Project.h"

namespace zendry {

namespace {

// Indexed by EditorMark.
constexpr std::array<mavro::MarkType, 5> cMarks = {{
    {0, mavro::ColourOf(mavro::cPlaceGround)},
    {1, {}, mavro::MarkSign::cDisc, true, false, false},
    {4, mavro::ColourOf(mavro::cErrorGround), mavro::MarkSign::cError},
    {2, mavro::ColourOf(mavro::cExecutionGround), mavro::MarkSign::cArrow},
    {5, {}, mavro::MarkSign::cRing, true, false, false},
}};

constexpr int cKeywordStyle = 5;  // of the lexer: "if" and "for" decide about indentation

// Null for plain text. A text without a name is treated as a source.
const mavro::EditorLanguage* LanguageOf(const std::string& path) {
  const int kind = FileKind(path);
  const bool isSource = kind == cCppSource || kind == cCSource || kind == cHeader;
  return path.empty() || isSource ? &cCppLanguage : nullptr;
}

// In a text that is no source, two blanks at the end of a line may break it. In a list of changes
// all blanks are part of the lines that it is about.
mavro::SaveTidying TidyingOf(const std::string& path, CppEditor::SavedBy by) {
  const std::string_view extension = std::string_view(path).substr(path.rfind('.') + 1);
  const bool isOfChanges = extension == "diff" || extension == "patch";
  mavro::SaveTidying tidying;
  tidying.stripTrailing = theEditorSettings.stripBlanks != 0 && !isOfChanges;
  tidying.ensureLastLine = theEditorSettings.endLastLine != 0;
  tidying.keepBreaks = !LanguageOf(path);
  tidying.keepCaretLines = by == CppEditor::SavedBy::cProgram;
  return tidying;
}

// True if two states differ at most in the time of the last change of any kind.
bool OnlyTouched(const DiskStamp& before, DiskStamp now) {
  now.touched = before.touched;
  return before == now;
}

}  // namespace

CppEditor::CppEditor(EditTab& itsTab) : tab(itsTab), marks(cMarks) {
  markTypes = marks.data();
  markTypeCount = static_cast<int>(marks.size());
  dock = mavro::Dock::cFill;
}

void CppEditor::ApplySettings() {
  const EditorSettings& settings = theEditorSettings;
  options->useTabs = settings.useTabs != 0;
  options->tabWidth = settings.tabSize;
  options->indentSize = settings.indentSize;
  options->monospaced = settings.useMonoFont != 0;
  options->lineNumbers = settings.lineNumbers != 0;
  const FontRec& font = settings.fonts[options->monospaced ? cFixedFont : cVariableFont];
  options->monoFace = settings.fonts[cFixedFont].name;
  options->fontFace = settings.fonts[cVariableFont].name;
  options->fontSize = font.size;
  options->fontStyle = font.style;
  options->foldMargin = true;
  options->marginClicks = true;
  options->wrapLines = settings.wrapLines != 0;
  options->showWhiteSpace = settings.showWhiteSpace != 0;
  options->showLineEnds = settings.showLineEnds != 0;
  options->lineAboveOpenFolds = settings.lineAboveOpenFolds != 0;
  options->closePairs = settings.closePairs != 0;
  options->keywordStyle = cKeywordStyle;
  language = LanguageOf(fileName);
  // What the file doesn't show of its habits is as the settings say now.
  if (language && !storedName.empty()) indent.Learn();
  // The lexer would open closed folds that it doesn't know.
  const bool hasOwnFolds = HasOwnFolds(*this);
  applyOptions();
  if (hasOwnFolds) SetOwnFolds(*this, true);
  regionsSeen = cNeverSeen;
}

mavro::FileResult CppEditor::Load(const std::string& path) {
  const DiskStamp before = ReadDiskStamp(path);
  language = LanguageOf(path);
  const std::string nameBefore = std::exchange(storedName, path);
  mavro::FileResult result = load(path);
  if (!result.Ok()) {
    storedName = nameBefore;
    return result;
  }
  regionMarkers.Lose();
  stamp = before;
  storedDigest = TextDigest();
  if (language) indent.Learn();
  liveText.parsed = false;
  seenChanges = ChangeCount();
  bytesChanged = 0;
  rescue.Drop();
  isProtected = false;
  FollowPermission();
  return result;
}

// The beginning of the text shows how it indents.
bool CppEditor::onFirstPart() {
  if (language) indent.Learn();
  return tab.ShowFirstPart();
}

mavro::FileResult CppEditor::Reload() {
  const DiskStamp before = ReadDiskStamp(fileName);
  mavro::FileResult result;
  if (dirty) result = rescue.LeaveReplaced();
  const bool wasReadOnly = IsReadOnly();
  if (result.Ok()) result = reload(fileName);
  SetReadOnly(wasReadOnly);
  if (!result.Ok()) return result;
  stamp = before;
  storedDigest = TextDigest();
  liveText.parsed = false;
  return result;
}

// The text belongs to the state of the file that it was made from: if the file is different now,
// others have changed it.
bool CppEditor::TakeRescued(const RescuedText& rescued) {
  fileName = rescued.path;
  TakeText(rescued.content, rescued.facts.encoding, rescued.facts.oddByte);
  if (rescued.facts.disk.exists) stamp = rescued.facts.disk;
  storedDigest.reset();
  rescue.Changed(1, TextRescue::Clock::now());
  return rescue.KeepNow();
}

void CppEditor::TakeName(const std::string& name) {
  fileName = name;
  AcceptDisk();
}

// A write in place that fails changes the file's time; that is not a change by another program. A
// text that isn't stored under its name is unsaved.
mavro::FileResult CppEditor::Save(SavedBy by) {
  const bool diskIsOurs = ReadDiskStamp(fileName) == stamp;
  const std::string nameBefore = std::exchange(storedName, fileName);
  mavro::FileResult result = save(fileName, TidyingOf(fileName, by));
  if (!result.Ok()) {
    storedName = nameBefore;
    if (diskIsOurs) AcceptDisk();
    if (storedName != fileName) onSavePointChanged();
    return result;
  }
  if (language != LanguageOf(fileName)) SetLanguage(LanguageOf(fileName));
  stamp = ReadDiskStamp(fileName);
  storedDigest = TextDigest();
  FollowPermission();
  rescue.DropReplaced();
  liveText.parsed = false;
  theProject.parseOpenEditors(&liveText);
  return result;
}

// Unsaved changes of a file that may no longer be written can be worked on and saved elsewhere.
void CppEditor::FollowPermission() {
  const bool isNow = !fileName.empty() && IsWriteProtected(fileName);
  if (isNow == isProtected) return;
  isProtected = isNow;
  SetReadOnly(isNow && !dirty);
  if (EditorHost* host = tab.Host()) host->ShowCaretOf(*this);
}

std::string CppEditor::WhyReadOnly() const {
  const std::string fact =
      isProtected ? "Read only: you may not write this file." : "Read only: this text is locked.";
  return fact + " \"Read only\" in the Edit menu lets you type";
}

void CppEditor::ShowLine(int line) {
  goToLine(std::clamp(line, 1, std::max(1, LineCount())) - 1);
  if (EditorHost* host = tab.Host()) host->ShowCaretOf(*this);
}

void CppEditor::SetMark(EditorMark mark, int line) {
  SetLineMark(marks[static_cast<size_t>(mark)].number, line - 1);
}

void CppEditor::RemoveMark(EditorMark mark) {
  RemoveLineMarks(marks[static_cast<size_t>(mark)].number);
}

int CppEditor::AddBreakMark(int line) {
  const bool hasLine = line >= 0 && line < LineCount();
  return hasLine ? AddSign(marks[cBreakpointMark].number, line) : -1;
}

void CppEditor::ShowBreakMark(int handle, BreakLook look) {
  const EditorMark mark = look == BreakLook::cActive ? cBreakpointMark : cIdleBreakpointMark;
  ChangeSign(handle, marks[static_cast<size_t>(mark)].number);
}

int CppEditor::LineAt(int y) const {
  return LineOf(static_cast<int>(Send(mavro::SCI_POSITIONFROMPOINT, 0, y)));
}

// An unchanged file is not read: this is asked whenever the window comes to the front.
//
// A file of the same size with its time set back may hold another text or the same; so may a file
// with only its mode changed. The digest of its content decides.
//
// A file whose state is unknown now doesn't count as changed. If the state was unknown when the
// text was read or written, the first known state counts as that one. If the text was only given
// this name, the file counts as changed: the user has not agreed to replace it.
std::optional<DiskStamp> CppEditor::ChangeOnDisk() {
  if (fileName.empty()) return {};
  const DiskStamp now = ReadDiskStamp(fileName);
  if (!now.isKnown || now == stamp) return {};
  if (!stamp.isKnown && storedName == fileName) stamp = now;
  if (OnlyTouched(stamp, now) && storedDigest && DigestOfFile(fileName) == storedDigest)
    stamp = now;
  return now == stamp ? std::nullopt : std::optional(now);
}

// An unknown state is not accepted: the user is asked once the state is known.
void CppEditor::AcceptDisk() {
  const DiskStamp now = ReadDiskStamp(fileName);
  if (!now.isKnown) return;
  stamp = now;
  storedDigest = DigestOfFile(fileName);
}

int CppEditor::MarginWidth() const {
  constexpr std::uintptr_t cMargins = 3;
  std::intptr_t width = 0;
  for (std::uintptr_t i = 0; i < cMargins; ++i) width += Send(mavro::SCI_GETMARGINWIDTHN, i);
  return static_cast<int>(width);
}

std::string CppEditor::TextNote() const {
  std::string note = EncodingName() + "   " + LineEndName();
  if (Send(mavro::SCI_GETOVERTYPE)) note = "OVR   " + note;
  if (IsReadOnly()) note = "Read only   " + note;
  if (IsHuge()) note += "   large file: plain";
  if (const int lines = LinesNotShown(); lines > 0)
    note += "   " + std::to_string(lines) + (lines == 1 ? " line not shown" : " lines not shown");
  return note;
}

void CppEditor::LiveTextOf::CopyRange(int start, int end, char* to) const {
  const auto* bytes = reinterpret_cast<const char*>(
      editor.Send(mavro::SCI_GETRANGEPOINTER, static_cast<std::uintptr_t>(start), end - start));
  if (bytes && end > start) std::memcpy(to, bytes, static_cast<size_t>(end - start));
}

int CppEditor::LiveTextOf::PositionFromLine(int line) const {
  return line < editor.LineCount() ? editor.LineStart(line) : editor.Length();
}

void CppEditor::onTextChanged() {
  FollowTags();
}

void CppEditor::FollowTags() {
  liveText.parsed = liveText.parsed && liveText.bodies.Hold(liveText);
}

// Steps of the rescue copy have places of 32 bits.
void CppEditor::onTextWillChange(long position, long removed, long added) {
  const bool isTracked = added != cUnknownLength && WholeLength() <= UINT32_MAX;
  bytesChanged += isTracked ? std::max(removed, added) : TextRescue::cMostBytesBehind;
  if (isTracked)
    rescue.WillChange(position, removed, added);
  else
    rescue.LoseTrack();
  // Lines that are not shown have no place in the shown text.
  if (!isTracked || LinesNotShown() != 0) {
    regionMarkers.Lose();
    liveText.bodies.Lose();
    return;
  }
  const auto start = static_cast<int>(position);
  regionMarkers.WillChange(start, static_cast<int>(removed), static_cast<int>(added));
  liveText.bodies.WillChange(liveText, start, static_cast<int>(removed), static_cast<int>(added));
}

void CppEditor::onSavePointChanged() {
  if (storedName != fileName) {
    dirty = true;
    rescue.Changed(1, TextRescue::Clock::now());
  }
  if (dirty)
    FollowTags();
  else
    rescue.Drop();
  tab.SetModified(dirty);
}

// During a debug session, asks for the value of the expression under the mouse.
void CppEditor::onDwell(int position) {
  EditorHost* host = tab.Host();
  if (!host || !host->WantsValueTips()) return;
  Send(mavro::SCI_CALLTIPCANCEL);
  const std::string expression = ExpressionAtPosition(position);
  host->ShowValueTip(expression);
}

std::string CppEditor::ExpressionAtPosition(int position) const {
  const int line = LineOf(position);
  const int column = position - LineStart(line);
  const std::string text = GetRange(LineStart(line), LineEnd(line));
  return column < static_cast<int>(text.size()) ? ExpressionAt(text, column) : std::string();
}

// The caret may be after the last letter of a line.
std::string CppEditor::ExpressionAtCaret() const {
  const auto [start, end] = Selection();
  if (start != end && LineOf(start) == LineOf(end)) return SelectedText();
  const int caret = CaretPosition();
  const std::string expression = ExpressionAtPosition(caret);
  return expression.empty() && caret > LineStart(LineOf(caret)) ? ExpressionAtPosition(caret - 1)
                                                                : expression;
}

void CppEditor::onMarginClick(int line) {
  if (EditorHost* host = tab.Host()) host->MarginClicked(*this, line);
}

void CppEditor::AskForList() {
  EditorHost* host = tab.Host();
  if (startCompletion() || !host) return;
  if (!language) return host->Say("No list: names are known in C and C++ only");
  const std::string line = GetRange(LineStart(CaretLine()), CaretPosition());
  host->Say(WhyNoList(mavro::CompletionText(line, *language)));
}

bool CppEditor::getCompletion(std::string& text, std::string& list) {
  EditorHost* host = tab.Host();
  if (!host) return false;
  names = host->CodeCompletion().Complete(liveText, text);
  text = names.typed;
  list = ListText(names.rows);
  return !list.empty();
}

mavro::ListNote CppEditor::getListNote(const std::string& name) {
  const CompletionRow* row = names.Find(name);
  return row ? mavro::ListNote{ShortNote(*row), LongNote(*row)} : mavro::ListNote();
}

std::string CppEditor::getListChoice(const std::string& typed) {
  EditorHost* host = tab.Host();
  const CompletionRow* row = host ? host->CodeCompletion().LastTaken(names, typed) : nullptr;
  return row ? row->name : std::string();
}

void CppEditor::onListTaken(const std::string& name) {
  EditorHost* host = tab.Host();
  const CompletionRow* row = names.Find(name);
  if (host && row) host->CodeCompletion().NoteTaken(*row);
}

bool CppEditor::findCallTip(mavro::EditorTip& tip) {
  EditorHost* host = tab.Host();
  const std::optional<CallTip> found =
      host ? host->CodeCompletion().callTipAt(liveText) : std::nullopt;
  if (!found) return false;
  for (const CallSignature& signature : found->overloads) {
    mavro::TipOverload& overload = tip.overloads.emplace_back();
    overload.text = signature.label;
    overload.takesMore = signature.takesMore;
    for (const auto& [start, end] : signature.parameters)
      overload.parameters.push_back({start, end});
  }
  tip.name = found->name;
  tip.bracket = found->bracket;
  tip.innermost = found->innermost;
  tip.argument = found->argument;
  tip.arguments = found->arguments;
  return true;
}

mavro::TipPlace CppEditor::placeInCall(const mavro::EditorTip& tip) {
  const CallPlace place = PlaceInCall(liveText, tip.bracket);
  return {place.depth, place.innermost, place.argument, place.arguments};
}

// Called after every change and every move of the caret.
void CppEditor::onUpdateUI() {
  FollowChanges();
  if (EditorHost* host = tab.Host()) host->ShowCaretOf(*this);
}

void CppEditor::onRefusedChange() {
  if (EditorHost* host = tab.Host()) host->Say(WhyReadOnly());
}

// Indented braces are a matter of the editor's own rules.
bool CppEditor::IndentsCode() const {
  return language && options->smartIndent && !options->simpleIndent && !options->indentOpening &&
         !options->indentClosing;
}

bool CppEditor::onAutoIndent(char typed) {
  if (!IndentsCode()) return false;
  indent.Typed(typed);
  return true;
}

bool CppEditor::onIndentLine(int line) {
  if (!IndentsCode()) return false;
  indent.IndentLine(line);
  return true;
}

std::string CppEditor::onPaste(std::string pasted) {
  return IndentsCode() ? indent.Moved(pasted) : pasted;
}

void CppEditor::FollowChanges() {
  const unsigned long changes = ChangeCount();
  if (changes == seenChanges) return;
  FollowTags();
  seenChanges = changes;
  const long bytes = std::min<long>(std::exchange(bytesChanged, 0), TextRescue::cMostBytesBehind);
  if (dirty) rescue.Changed(static_cast<int>(bytes), TextRescue::Clock::now());
}

}  // namespace zendry
