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

void SciEditor::onTextWillChange(int, int, int) {}

void SciEditor::onDwell(int) {}

bool SciEditor::getCompletion(std::string&, std::string&) {
  return false;
}

bool SciEditor::getCallTip(const std::string&, std::string&) {
  return false;
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

bool SciEditor::reload(const std::string& path) {
  return ItsImpl().Reload(path);
}

bool SciEditor::load(const std::string& path) {
  return ItsImpl().Load(path);
}

bool SciEditor::save(const std::string& path, bool stripTrailing, bool ensureLastLine) {
  return ItsImpl().Save(path, stripTrailing, ensureLastLine);
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
  return GetRange(start, end);
}

void SciEditor::Select(int anchor, int caret) {
  Send(SCI_SETSEL, static_cast<std::uintptr_t>(anchor), caret);
}

// By a target, so that NUL bytes go in as well.
void SciEditor::ReplaceSelection(std::string_view replacement) {
  Send(SCI_TARGETFROMSELECTION);
  Send(SCI_REPLACETARGET, replacement.size(), reinterpret_cast<std::intptr_t>(replacement.data()));
  const auto end = Send(SCI_GETTARGETEND);
  Select(static_cast<int>(end), static_cast<int>(end));
}

unsigned long SciEditor::ChangeCount() const {
  return ItsImpl().changeCount;
}

const SciText& SciEditor::Reader() const {
  return ItsImpl();
}

void SciEditor::goToLine(int line) {
  ItsImpl().GoToLine(line);
}

}  // namespace mavro
