#include "frmedt/FormReader.h"

#include <algorithm>

#include "base/ParseInt.h"
#include "frmedt/CtrlReg.h"
#include "frmedt/FormStatement.h"
#include "frmedt/FormTokens.h"
#include "frmedt/FormWriter.h"
#include "frmedt/PropClass.h"

namespace zendry {

namespace {

constexpr std::string_view cMarker = "//!";
// Stands in the marker of a control for which no class is named at all.
constexpr std::string_view cNoClass = "?";

int IndentOf(const std::vector<std::string>& lines) {
  const size_t place = lines.empty() ? std::string::npos : lines[0].find('/');
  if (place == std::string::npos) return 0;
  return static_cast<int>(std::min<size_t>(place, FormWriter::cMostTabs));
}

// The handler that a statement binds, as in `button1.onClick.Add_H(this, &This::Handler);`. Empty
// if it binds none.
std::string HandlerIn(const LineTokens& tokens) {
  if (tokens.Word(2) != "Add_H" || tokens.Word(3) != "this" || tokens.HasQuoted(5)) return {};
  const std::string_view method = tokens.Word(4);
  const size_t scope = method.find("::");
  return scope == std::string_view::npos ? std::string() : std::string(method.substr(scope + 2));
}

// A value that begins with these words would be read as a handler once it is written.
bool ReadsAsHandler(const std::string& value) {
  if (value.find("Add_H") == std::string::npos) return false;
  return !HandlerIn(Tokenize("x.x = " + value + ";\n", 2)).empty();
}

bool IsBounds(std::string_view name) {
  return name == "SetBounds" || name == "SetLocation" || name == "SetSize";
}

// Writes the numbers of a record's geometry, and its dock, as they are going to be written.
void TidyGeometry(CtrlRec& rec) {
  for (PropValue& prop : rec.props) {
    if (!prop.pd) return;
    if (prop.value.empty() || prop.pd->kind > cHeightKind) continue;
    const int number = ValueNumber(*prop.pd->cvt, prop.value);
    if (prop.pd->kind == cDockKind)
      prop.value = SplitOptions(prop.pd->cvt->ref)[static_cast<size_t>(number)];
    else
      prop.value = std::to_string(number);
  }
}

}  // namespace

FormReader::FormReader(FormData& theForm) : form(theForm) {
  for (CtrlRec* rec : form.controls) byName.emplace(rec->name, rec);
}

CtrlRec& FormReader::FindOrAdd(std::string_view name, std::string_view className) {
  const auto [at, isNew] = byName.try_emplace(std::string(name), nullptr);
  if (isNew) at->second = &form.Append(name, className);
  return *at->second;
}

void FormReader::Report(const std::string& text) {
  form.reports.push_back({text, lineNumber, {}});
}

void FormReader::ReadDecl(const std::vector<std::string>& lines) {
  form.declIndent = IndentOf(lines);
  for (size_t i = 1; i < lines.size(); ++i) ReadDeclLine(lines[i]);
}

void FormReader::ReadDeclLine(const std::string& line) {
  const LineTokens tokens = Tokenize(line, LineTokens::cMost);
  // A marker that means nothing here is passed over, and quotes are in no declaration.
  if (tokens.words.size() < 2 || tokens.HasQuoted(LineTokens::cMost) ||
      tokens.Word(0).starts_with(cMarker))
    return;
  for (size_t i = 1; i < tokens.words.size(); ++i) {
    if (tokens.words[i] == FormData::cRootName) continue;
    FindOrAdd(tokens.words[i], tokens.words[0]).declClass = tokens.words[0];
  }
}

void FormReader::ReadInit(const std::vector<std::string>& lines) {
  form.initIndent = IndentOf(lines);
  for (const std::string& line : lines) {
    ++lineNumber;
    ReadInitLine(line);
  }
  EndAdditions();
  lineNumber = -1;
  for (CtrlRec* rec : form.controls) {
    Resolve(*rec, {});
    TidyGeometry(*rec);
  }
}

void FormReader::ReadInitLine(const std::string& line) {
  LineTokens tokens = Tokenize(line, 2);
  if (tokens.words.size() < 2 || tokens.Word(0).size() < cShortestName || tokens.HasQuoted(2))
    return;
  if (tokens.Word(0).starts_with(cMarker)) {
    pending = tokens.words[1];
    return;
  }
  if (tokens.Word(1) == "Add" && HandlerIn(tokens).empty()) return ReadAdd(tokens);
  CtrlRec& rec = FindOrAdd(tokens.words[0], pending);
  Resolve(rec, pending);
  if (!rec.classDef) {
    if (IsWholeStatement(line)) rec.kept.emplace_back(Trimmed(line));
    return;
  }
  TrimValue(tokens.rest);
  ReadStatement(rec, tokens, tokens.rest);
}

// What can't be told by the statement's text once it is written is passed over.
void FormReader::ReadStatement(CtrlRec& rec, const LineTokens& tokens, std::string value) {
  const std::string handler = HandlerIn(tokens);
  if (!handler.empty())
    rec.events.push_back({tokens.words[1], handler});
  else if (IsBounds(tokens.words[1]))
    ReadBounds(rec, tokens.words[1], value);
  else if (!ReadsAsHandler(value))
    rec.SetProperty(tokens.words[1], value);
}

void FormReader::ReadAdd(const LineTokens& tokens) {
  const std::string_view child = tokens.Word(2);
  const bool isName = child.starts_with('&') && child.size() > 1 && !tokens.HasQuoted(3) &&
                      child.substr(1) != FormData::cRootName &&
                      !child.substr(1).starts_with(cMarker);
  if (!isName) return Report("Wrong Add statment");
  CtrlRec& rec = FindOrAdd(child.substr(1), {});
  rec.hasAdd = true;
  additions[&rec] = {tokens.words[0], pending, lineNumber};
}

// The fourth letter tells the three statements apart, as "SetB", "SetL" and "SetS".
void FormReader::ReadBounds(CtrlRec& rec, std::string_view name, const std::string& value) {
  const LineTokens numbers = Tokenize(value, 4);
  size_t next = 0;
  const auto set = [&](std::string_view property) {
    if (numbers.Has(next) && !numbers.isQuoted[next])
      rec.SetProperty(property, numbers.words[next]);
    ++next;
  };
  if (name[3] != 'S') {
    set("left");
    set("top");
  }
  if (name[3] != 'L') {
    set("width");
    set("height");
  }
}

// Finds a record's class: the declared one, else that of a marker. A class that isn't known is kept
// as the marker's, so that the same text is written again.
void FormReader::Resolve(CtrlRec& rec, std::string_view marker) {
  if (rec.classDef || unknown.contains(&rec)) return;
  for (const std::string_view name :
       {std::string_view(rec.declClass), marker, std::string_view(rec.className)}) {
    if (const CtrlClass* found = FindClass(name)) {
      rec.className = found->name;
      rec.SetClass(*found);
      return;
    }
  }
  unknown.insert(&rec);
  if (!marker.empty()) rec.className = marker;
  if (rec.className.empty()) rec.className = rec.declClass.empty() ? cNoClass : rec.declClass;
  Report("Control " + rec.name + " class not defined");
}

// The last addition of a control counts. Containers that nothing else names are made here.
void FormReader::EndAdditions() {
  for (size_t i = 0; i < form.controls.size(); ++i) {
    CtrlRec& child = *form.controls[i];
    const auto at = additions.find(&child);
    if (at == additions.end()) continue;
    lineNumber = at->second.line;
    Resolve(child, at->second.pending);
    child.parent = &FindOrAdd(at->second.parent, {});
  }
}

}  // namespace zendry
