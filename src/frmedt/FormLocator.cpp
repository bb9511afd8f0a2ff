#include "frmedt/FormLocator.h"

#include <algorithm>
#include <utility>

namespace zendry {

namespace {

constexpr std::string_view cMarker = "//!";

bool IsBlank(char c) {
  return static_cast<unsigned char>(c) <= ' ';
}

std::string_view WithoutLineEnd(std::string_view line) {
  while (!line.empty() && (line.back() == '\n' || line.back() == '\r')) line.remove_suffix(1);
  return line;
}

std::string_view LineEndOf(std::string_view line) {
  return line.substr(WithoutLineEnd(line).size());
}

}  // namespace

std::vector<std::string> SectionRef::Lines() const {
  std::vector<std::string> lines;
  for (int line = startLine; text && line < endLine; ++line) lines.emplace_back(text->Line(line));
  return lines;
}

FormMarker MarkerOf(std::string_view line) {
  while (!line.empty() && IsBlank(line.front())) line.remove_prefix(1);
  if (!line.starts_with(cMarker)) return FormMarker::cNone;
  line.remove_prefix(cMarker.size());
  if (line.starts_with("decl")) return FormMarker::cDecl;
  if (line.starts_with("init")) return FormMarker::cInit;
  return line.starts_with("end") ? FormMarker::cEnd : FormMarker::cOther;
}

void FormLocator::Scan(const FormTextPtr& text) {
  // Most sources have no form.
  if (text->Text().find(cMarker) == std::string::npos) return;
  FormTarget open;
  SectionRef* section = nullptr;
  // A marker in the last line doesn't count.
  for (int line = 0; line < text->LineCount() - 1; ++line) {
    const FormMarker marker = MarkerOf(text->Line(line));
    if (!section && (marker == FormMarker::cDecl || marker == FormMarker::cInit)) {
      section = marker == FormMarker::cInit ? &open.init : &open.decl;
      *section = {line, -1, text->TagAtLine(line), text};
      open.className = section->tag.className;
    } else if (section && marker == FormMarker::cEnd) {
      section->endLine = line;
      CloseRegion(open, *section);
      open = {};
      section = nullptr;
    }
  }
  if (section) {
    const std::string name = section == &open.init ? "init" : "decl";
    reports.push_back(
        {"The //!" + name + " section has no end!", section->startLine, text->Path()});
  }
}

void FormLocator::CloseRegion(const FormTarget& open, const SectionRef& section) {
  if (open.className.empty()) {
    reports.push_back({"class name error!", section.startLine, section.text->Path()});
    return;
  }
  const auto at = std::find_if(targets.begin(), targets.end(), [&](const FormTarget& one) {
    return one.className == open.className;
  });
  if (at == targets.end())
    targets.push_back(open);
  else
    (open.decl.IsFound() ? at->decl : at->init) = section;
}

bool FormLocator::Select(size_t number, const Companion& companion) {
  selected = targets[number];
  const bool isWhole = selected.decl.IsFound() && selected.init.IsFound();
  if (!isWhole) {
    const SectionRef& known = selected.decl.IsFound() ? selected.decl : selected.init;
    const FormTextPtr text = companion(known.text->Path(), !selected.decl.IsFound());
    if (text) AddCompanion(text);
  }
  const auto require = [this](const SectionRef& section, const SectionRef& other,
                              std::string_view name) {
    if (section.IsFound()) return true;
    reports.push_back({"The //!" + std::string(name) + " section not found!", other.startLine,
                       other.text->Path()});
    return false;
  };
  return require(selected.decl, selected.init, "decl") &&
         require(selected.init, selected.decl, "init");
}

// Takes the missing region only, so that the one that was chosen stays.
void FormLocator::AddCompanion(const FormTextPtr& text) {
  FormLocator other;
  other.Scan(text);
  for (const FormTarget& one : other.targets) {
    if (one.className != selected.className) continue;
    if (!selected.decl.IsFound()) selected.decl = one.decl;
    if (!selected.init.IsFound()) selected.init = one.init;
  }
}

RegionEdit ReplaceRegion(const SectionRef& section, const std::vector<std::string>& lines) {
  const FormText& text = *section.text;
  const std::string_view usual = LineEndOf(text.Line(section.startLine));
  const size_t start = text.LineStart(section.startLine);
  RegionEdit change{text.Path(), {start, text.LineStart(section.endLine + 1) - start, {}}};
  int old = section.startLine;
  for (const std::string& line : lines) {
    const std::string_view body = WithoutLineEnd(line);
    const std::string_view before = old <= section.endLine ? text.Line(old) : std::string_view();
    // A line that stays keeps its line end; a new one gets that of the region's first line.
    const bool isSame = !before.empty() && WithoutLineEnd(before) == body;
    change.edit.text += body;
    change.edit.text += isSame ? LineEndOf(before) : usual;
    ++old;
  }
  return change;
}

std::vector<RegionEdit> FormLocator::ReplaceRegions(
    const std::vector<std::string>& declLines, const std::vector<std::string>& initLines) const {
  std::vector<RegionEdit> edits = {ReplaceRegion(selected.init, initLines),
                                   ReplaceRegion(selected.decl, declLines)};
  const bool isDeclLower = selected.decl.text->Path() == selected.init.text->Path() &&
                           selected.decl.startLine > selected.init.startLine;
  if (isDeclLower) std::swap(edits[0], edits[1]);
  return edits;
}

}  // namespace zendry
