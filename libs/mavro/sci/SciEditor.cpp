#include "SciEditor.h"

#include "SciImpl.h"

namespace mavro {

SciEditor::SciEditor() : SciEditor(new Impl) {}

SciEditor::SciEditor(Impl* newImpl)
    : Control(newImpl), options(std::make_unique<EditorOptions>()) {}

SciEditor::~SciEditor() {
  impl->Destroy();
}

SciEditor::Impl& SciEditor::ItsImpl() const {
  return *static_cast<Impl*>(impl);
}

void SciEditor::onTextWillChange(long, long, long) {}

void SciEditor::onDwell(int) {}

void SciEditor::onMarginClick(int) {}

ListNote SciEditor::getListNote(const std::string&) {
  return {};
}

std::string SciEditor::getListChoice(const std::string&) {
  return {};
}

void SciEditor::onListTaken(const std::string&) {}

bool SciEditor::getCompletion(std::string&, std::string&) {
  return false;
}

bool SciEditor::getCallTip(const std::string&, std::string&) {
  return false;
}

bool SciEditor::onAutoIndent(char) {
  return false;
}

bool SciEditor::onIndentLine(int) {
  return false;
}

std::string SciEditor::onPaste(std::string pasted) {
  return pasted;
}

std::intptr_t SciEditor::Send(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) const {
  return ItsImpl().Send(message, static_cast<Param>(wParam), lParam);
}

std::intptr_t SciEditor::Send(unsigned message, std::uintptr_t wParam, const char* text) const {
  return ItsImpl().SendText(message, static_cast<Param>(wParam), text);
}

void SciEditor::applyOptions() {
  ItsImpl().ApplyOptions();
}

void SciEditor::SetLanguage(const EditorLanguage* newLanguage) {
  language = newLanguage;
  applyOptions();
}

FileResult SciEditor::reload(const std::string& path) {
  return ItsImpl().Reload(path);
}

FileResult SciEditor::load(const std::string& path) {
  return ItsImpl().Load(path);
}

FileResult SciEditor::save(const std::string& path, SaveTidying tidying) {
  return ItsImpl().Save(path, tidying);
}

void SciEditor::TakeText(std::string_view newText, int newEncoding, std::string_view oddByte) {
  ItsImpl().TakeText(newText, newEncoding, oddByte);
}

const std::string& SciEditor::OddByte() const {
  return ItsImpl().oddByte;
}

bool SciEditor::IsHuge() const {
  return ItsImpl().huge;
}

std::string SciEditor::LineEndName() const {
  static constexpr const char* cNames[] = {"CR LF", "CR", "LF"};
  return cNames[Send(SCI_GETEOLMODE)];
}

std::string SciEditor::EncodingName() const {
  switch (encoding) {
    case cUtf16Big:
      return "UTF-16 BE";
    case cUtf16Little:
      return "UTF-16 LE";
    case cUtf8Mark:
      return "UTF-8 BOM";
    case cByteLetters:
      return "8 bit";
    default:
      return codePage == SC_CP_UTF8 || ItsImpl().bytes == TextBytes::cAscii ? "UTF-8" : "8 bit";
  }
}

std::string SciEditor::GetRange(int start, int end) const {
  return ItsImpl().Range(start, end);
}

void SciEditor::AppendRange(int start, int end, std::string& to) const {
  ItsImpl().AppendRange(start, end, to);
}

std::string SciEditor::LineText(int line) const {
  const int next = line + 1 < LineCount() ? LineStart(line + 1) : Length();
  return GetRange(LineStart(line), next);
}

std::string SciEditor::GetText() const {
  std::string text;
  AppendWhole(0, WholeLength(), text);
  return text;
}

size_t SciEditor::WholeLength() const {
  return ItsImpl().standIns.WholeLength();
}

void SciEditor::AppendWhole(size_t start, size_t end, std::string& to) const {
  ItsImpl().standIns.AppendWhole(start, end, to);
}

int SciEditor::LinesNotShown() const {
  return ItsImpl().standIns.Count();
}

bool SciEditor::ShowLongLine() {
  return ItsImpl().ShowLongLineAt(CaretPosition());
}

int SciEditor::LineOf(int position) const {
  return ItsImpl().LineOf(position);
}

int SciEditor::LineStart(int line) const {
  return ItsImpl().LineStart(line);
}

int SciEditor::LineEnd(int line) const {
  return ItsImpl().LineEnd(line);
}

int SciEditor::CaretColumn() const {
  return static_cast<int>(Send(SCI_GETCOLUMN, static_cast<std::uintptr_t>(CaretPosition())));
}

std::pair<int, int> SciEditor::Selection() const {
  return {static_cast<int>(Send(SCI_GETSELECTIONSTART)),
          static_cast<int>(Send(SCI_GETSELECTIONEND))};
}

std::string SciEditor::SelectedText() const {
  const auto [start, end] = Selection();
  return ItsImpl().longLines.Unfold(GetRange(start, end));
}

void SciEditor::Select(int anchor, int caret) {
  Send(SCI_SETSEL, static_cast<std::uintptr_t>(anchor), caret);
}

void SciEditor::ReplaceSelection(std::string_view replacement) {
  ItsImpl().PutText(ItsImpl().FoldNew(replacement));
}

unsigned long SciEditor::ChangeCount() const {
  return ItsImpl().changeCount;
}

const SciText& SciEditor::Reader() const {
  return ItsImpl();
}

int SciEditor::SelectOccurrences() {
  return ItsImpl().SelectOccurrences();
}

bool SciEditor::AddNextOccurrence() {
  return ItsImpl().AddOccurrence();
}

bool SciEditor::IsAutomatic(int position) const {
  return ItsImpl().pairs.OpeningOf(position) >= 0;
}

void SciEditor::goToLine(int line) {
  ItsImpl().GoToLine(line);
}

}  // namespace mavro
