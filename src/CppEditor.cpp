#include "CppEditor.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "CppLanguage.h"
#include "EditTabs.h"
#include "EditorSettings.h"
#include "MainForm.h"
#include "Paths.h"
#include "Project.h"
#include "TipRules.h"

namespace zendry {

namespace {

// By EditorMark. Colours are blue-green-red.
constexpr std::array<mavro::MarkType, 4> cMarks = {{
    {0, 127, 0xFF0000},
    {1, 127, 0x0000FF},
    {4, 127, 0xFF0000},
    {2, 127, 0x00FF00},
}};

constexpr int cKeywordStyle = 5;  // of the lexer: "if" and "for" decide about indentation

// Null for plain text. What has no name yet is going to be a source.
const mavro::EditorLanguage* LanguageOf(const std::string& path) {
  const int kind = FileKind(path);
  const bool isSource = kind == cCppSource || kind == cCSource || kind == cHeader;
  return path.empty() || isSource ? &cCppLanguage : nullptr;
}

}  // namespace

CppEditor::CppEditor(EditTab& itsTab) : tab(itsTab), marks(cMarks) {
  marks[cBreakpointMark].enabled = false;
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
  options->monoFace = settings.fonts[1].name;
  options->fontFace = settings.fonts[2].name;
  options->fontSize = settings.fonts[options->monospaced ? 1 : 2].size;
  options->foldMargin = true;
  options->keywordStyle = cKeywordStyle;
  language = LanguageOf(fileName);
  applyOptions();
}

bool CppEditor::Load(const std::string& path) {
  const DiskStamp before = ReadDiskStamp(path);
  language = LanguageOf(path);
  if (!load(path)) return false;
  stamp = before;
  liveText.parsed = false;
  seenChanges = ChangeCount();
  seenLength = Length();
  rescue.Drop();
  return true;
}

bool CppEditor::TakeRescued(const RescueCopy& rescued) {
  fileName = rescued.path;
  Send(mavro::SCI_SELECTALL);
  ReplaceSelection(rescued.content);
  Select(0, 0);
  rescue.Changed(1, TextRescue::Clock::now());
  return rescue.KeepNow();
}

bool CppEditor::Save() {
  if (!save(fileName)) return false;
  if (language != LanguageOf(fileName)) SetLanguage(LanguageOf(fileName));
  stamp = ReadDiskStamp(fileName);
  liveText.parsed = false;
  theProject.parseOpenEditors(&liveText);
  return true;
}

void CppEditor::ShowLine(int line) {
  goToLine(std::clamp(line, 1, std::max(1, LineCount())) - 1);
  if (theMainForm) theMainForm->ShowCaretOf(*this);
}

void CppEditor::SetMark(EditorMark mark, int line) {
  SetLineMark(marks[static_cast<size_t>(mark)].number, line - 1);
}

void CppEditor::RemoveMark(EditorMark mark) {
  Send(mavro::SCI_MARKERDELETEALL,
       static_cast<std::uintptr_t>(marks[static_cast<size_t>(mark)].number));
}

bool CppEditor::DiskHasChanged() const {
  return !fileName.empty() && stamp.exists && ReadDiskStamp(fileName) != stamp;
}

void CppEditor::AcceptDisk() {
  stamp = ReadDiskStamp(fileName);
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
  if (IsHuge()) note += "   large file: plain";
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

std::string CppEditor::RescueContent() const {
  return GetText();
}

void CppEditor::onTextChanged() {
  liveText.parsed = false;
}

void CppEditor::onSavePointChanged() {
  if (dirty)
    liveText.parsed = false;
  else
    rescue.Drop();
  tab.SetModified(dirty);
}

bool CppEditor::getCompletion(std::string& text, std::string& list) {
  return theMainForm && theMainForm->completion.getCompletion(liveText, text, list);
}

// The name may stand some way left of the caret, with the arguments typed so far behind it.
bool CppEditor::getCallTip(const std::string&, std::string& tip) {
  if (!theMainForm) return false;
  const std::string line = GetRange(LineStart(CaretLine()), CaretPosition());
  const mavro::TipName call = mavro::FindTipName(line, *language);
  const int end = call.start + static_cast<int>(call.name.size());
  return theMainForm->completion.getCallTip(liveText, tip, end - static_cast<int>(line.size()));
}

// Comes after every change and every move of the caret.
void CppEditor::onUpdateUI() {
  FollowChanges();
  if (theMainForm) theMainForm->ShowCaretOf(*this);
}

void CppEditor::FollowChanges() {
  const unsigned long changes = ChangeCount();
  if (changes == seenChanges) return;
  liveText.parsed = false;
  const int length = Length();
  const long bytes = std::max<long>(static_cast<long>(changes - seenChanges),
                                    std::labs(static_cast<long>(length) - seenLength));
  seenChanges = changes;
  seenLength = length;
  if (dirty)
    rescue.Changed(static_cast<int>(std::min<long>(bytes, TextRescue::cMostBytesBehind)),
                   TextRescue::Clock::now());
}

}  // namespace zendry
