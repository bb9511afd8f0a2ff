#include <optional>

#include "FileText.h"
#include "code/CallTip.h"
#include "code/SymbolPlaces.h"
#include "code/TextScanner.h"
#include "lsp/LspAnswers.h"
#include "lsp/LspUri.h"
#include "project/HeaderSearch.h"
#include "project/IncludeFile.h"

namespace zendry {

namespace {

Json PlaceJson(LspPlace place) {
  return {{"line", place.line}, {"character", place.column}};
}

Json RangeJson(LspPlace begin, LspPlace end) {
  return {{"start", PlaceJson(begin)}, {"end", PlaceJson(end)}};
}

bool IsWordAt(const LspText& text, int position) {
  return position >= 0 && position < text.Length() &&
         IsWordChar(static_cast<unsigned char>(text.View()[static_cast<size_t>(position)]));
}

// The bytes of the word at a position or directly before it; nothing without one.
struct WordRange {
  int begin = 0;
  int end = 0;
};
std::optional<WordRange> WordAt(const LspText& text, int position) {
  WordRange word{position, position};
  while (IsWordAt(text, word.begin - 1)) --word.begin;
  while (IsWordAt(text, word.end)) ++word.end;
  if (word.begin == word.end) return std::nullopt;
  return word;
}

// The meaning of the word at the caret.
std::optional<ResolveInfo> Resolve(const LspQuestion& question, const WordRange& word) {
  ResolveInfo info;
  question.text.SetCaret(word.end - 1);
  question.folder.sources.RefreshTags();
  if (!question.folder.completion.wizard.resolveAt(question.text, info, 0)) return std::nullopt;
  return info;
}

// The text of a file of the project, as it is shown now.
std::string TextOfFile(LspFolder& folder, const std::string& path) {
  if (const LspText* open = folder.FindText(path)) return std::string(open->View());
  const mavro::FileText file = mavro::ReadFileText(path);
  return file.text;
}

// The range of a name in a line of a file; the beginning of the line if the name isn't there.
Json NameRange(const LspText& text, int line, std::string_view name, LspColumns columns) {
  const std::string_view lineText = text.LineText(line);
  size_t found = name.empty() ? lineText.npos : lineText.find(name);
  const size_t length = found == lineText.npos ? 0 : name.size();
  if (found == lineText.npos) found = 0;
  const int start = text.PositionFromLine(line) + static_cast<int>(found);
  return RangeJson(text.PlaceOf(start, columns),
                   text.PlaceOf(start + static_cast<int>(length), columns));
}

Json Location(const LspQuestion& question, const std::string& path, int line,
              std::string_view name) {
  if (const LspText* open = question.folder.FindText(path))
    return {{"uri", open->uri}, {"range", NameRange(*open, line, name, question.columns)}};
  const std::string uri = UriOfPath(path);
  const LspText text(uri, path, TextOfFile(question.folder, path));
  return {{"uri", uri}, {"range", NameRange(text, line, name, question.columns)}};
}

// The file that the caret's line includes; empty if it includes none, or one that isn't known.
std::string IncludedFile(const LspQuestion& question) {
  const std::string_view line =
      question.text.LineText(question.text.LineFromPosition(question.text.CaretPosition()));
  const std::optional<IncludeName> include = IncludeNameIn(line);
  if (!include) return "";
  return FindIncludedFile(question.folder.project, question.text.Path(), include->name,
                          include->isQuoted);
}

std::optional<CodePlace> FindUnplaced(const LspQuestion& question, const UnplacedName& sought) {
  return FindInHeaders(question.folder.project, question.text.Path(), sought,
                       [&](const std::string& path) -> std::optional<std::string> {
                         const LspText* open = question.folder.FindText(path);
                         return open ? std::optional<std::string>(open->View()) : std::nullopt;
                       });
}

std::string Declared(const ResolveInfo& info) {
  std::string text;
  if (!info.type.empty() && info.type != info.name) text = info.type + " ";
  if (!info.className.empty() && info.className != info.name) text += info.className + "::";
  return text + info.name + info.signature;
}

// The declaration that begins in a line, as it is written: without its body, its blanks as one.
std::string WrittenAt(const LspText& text, int line) {
  constexpr int cMostLines = 12;
  std::string written;
  int depth = 0;
  for (int last = line + cMostLines; line < last; ++line) {
    for (const char c : text.LineText(line)) {
      if (c == '(') ++depth;
      if (c == ')') --depth;
      if (depth == 0 && (c == ';' || c == '{')) return written;
      const bool isBlank = c == ' ' || c == '\t';
      if (!isBlank || !(written.empty() || written.back() == ' ')) written += isBlank ? ' ' : c;
    }
    if (written.starts_with('#')) return written;
    if (!written.empty() && written.back() != ' ') written += ' ';
  }
  return "";
}

// The declaration that was found: as it is written if that names it, else as its tag has it.
std::string DeclarationText(const LspQuestion& question, const ResolveInfo& info) {
  const std::string path = info.file.empty() ? question.text.Path() : info.file;
  const int line = info.file.empty() ? info.line : info.targetLine;
  const LspText text("", path, TextOfFile(question.folder, path));
  std::string written = WrittenAt(info.file.empty() ? question.text : text, line);
  while (written.ends_with(' ')) written.pop_back();
  return written.find(info.name) == written.npos ? Declared(info) : written;
}

// The ranges of parameters count as columns do.
Json SignatureJson(const CallSignature& signature, LspColumns columns) {
  const LspText label("", "", signature.label);
  Json parameters = Json::array();
  for (const auto& [start, end] : signature.parameters)
    parameters.push_back(
        {{"label", {label.PlaceOf(start, columns).column, label.PlaceOf(end, columns).column}}});
  return {{"label", signature.label}, {"parameters", std::move(parameters)}};
}

}  // namespace

Json SignatureAnswer(const LspQuestion& question) {
  const std::optional<CallTip> tip = question.folder.completion.callTipAt(question.text);
  if (!tip) return nullptr;
  Json signatures = Json::array();
  for (const CallSignature& overload : tip->overloads)
    signatures.push_back(SignatureJson(overload, question.columns));
  Json answer = {{"signatures", std::move(signatures)}, {"activeSignature", 0}};
  // A number after the last one means that none is active.
  const int parameter = tip->Parameter();
  answer["activeParameter"] =
      parameter >= 0 ? parameter : static_cast<int>(tip->overloads.front().parameters.size());
  return answer;
}

Json HoverAnswer(const LspQuestion& question) {
  const std::optional<WordRange> word = WordAt(question.text, question.text.CaretPosition());
  if (!word) return nullptr;
  const std::optional<ResolveInfo> info = Resolve(question, *word);
  if (!info) return nullptr;
  std::string value = "```cpp\n" + DeclarationText(question, *info) + "\n```";
  if (!info->file.empty()) value += "\n" + info->file + ":" + std::to_string(info->targetLine + 1);
  return {{"contents", {{"kind", "markdown"}, {"value", value}}},
          {"range", RangeJson(question.text.PlaceOf(word->begin, question.columns),
                              question.text.PlaceOf(word->end, question.columns))}};
}

Json TargetAnswer(const LspQuestion& question, LspTarget target) {
  if (const std::string file = IncludedFile(question); !file.empty())
    return {Location(question, file, 0, "")};
  Json places = Json::array();
  const std::optional<WordRange> word = WordAt(question.text, question.text.CaretPosition());
  if (!word) return places;
  question.text.SetCaret(word->end - 1);
  question.folder.sources.RefreshTags();
  SymbolPlaces symbols(question.folder.completion.wizard, question.folder.sources);
  const auto want = target == LspTarget::cDefinition ? SymbolPlaces::Want::cDefinition
                                                     : SymbolPlaces::Want::cDeclaration;
  SymbolAnswer answer = symbols.AtCaret(question.text, want);
  if (answer.places.empty())
    if (const auto place = FindUnplaced(question, answer.unplaced)) answer.places.push_back(*place);
  for (const CodePlace& place : answer.places)
    places.push_back(Location(question, place.path, place.line, place.name));
  return places;
}

}  // namespace zendry
