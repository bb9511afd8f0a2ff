#include "frmedt/FormCheck.h"

#include <algorithm>
#include <map>
#include <set>
#include <unordered_map>

#include "code/CppLexer.h"
#include "frmedt/CtrlReg.h"
#include "frmedt/FormData.h"
#include "frmedt/FormStatement.h"
#include "frmedt/FormTokens.h"
#include "frmedt/FormWriter.h"
#include "frmedt/PropClass.h"

namespace zendry {

namespace {

using Lines = std::vector<std::string>;
using Kind = FormLoss::Kind;

constexpr std::string_view cMarker = "//!";

// What is compared: a statement, or one name of a declaration.
struct Element {
  int line = 0;
  std::string key;   // equal for equal statements
  std::string name;  // of the control that is declared
};

std::string_view WithoutLineEnd(std::string_view line) {
  while (!line.empty() && (line.back() == '\n' || line.back() == '\r')) line.remove_suffix(1);
  return line;
}

std::string SubjectOfStatement(const std::string& line) {
  static const std::set<std::string_view> cBounds = {"SetBounds", "SetLocation", "SetSize", "left",
                                                     "top",       "width",       "height"};
  const LineTokens tokens = Tokenize(line + "\n", 2);
  if (tokens.words.size() < 2) return {};
  const std::string_view what = cBounds.contains(tokens.Word(1)) ? "left" : tokens.Word(1);
  return tokens.words[0] + '\n' + std::string(what);
}

void AddDeclElements(std::vector<Element>& elements, const std::string& line, int number) {
  const FormDeclaration read = ReadDeclaration(line);
  for (const std::string& name : read.names)
    elements.push_back({number, read.className + ' ' + name + ';', name});
  if (read.names.empty()) elements.push_back({number, PlainStatement(line), {}});
}

std::vector<Element> ElementsOf(const Lines& lines, bool isInDecl) {
  std::vector<Element> elements;
  for (size_t i = 0; i < lines.size(); ++i) {
    const std::string_view text = Trimmed(lines[i]);
    // The closing marker is no statement.
    if (text.empty() || (i > 0 && i + 1 == lines.size() && text == "//!end")) continue;
    const int number = static_cast<int>(i);
    if (isInDecl && i > 0)
      AddDeclElements(elements, lines[i], number);
    else
      elements.push_back({number, PlainStatement(lines[i]), {}});
  }
  return elements;
}

// For each element of `before` the place of the equal one in `after`, the first to the first and so
// on; -1 without one.
std::vector<int> MatchElements(const std::vector<Element>& before,
                               const std::vector<Element>& after) {
  std::unordered_map<std::string_view, std::vector<int>> places;
  for (size_t i = after.size(); i-- > 0;) places[after[i].key].push_back(static_cast<int>(i));
  std::vector<int> matches;
  for (const Element& one : before) {
    const auto at = places.find(one.key);
    if (at == places.end() || at->second.empty()) {
      matches.push_back(-1);
    } else {
      matches.push_back(at->second.back());
      at->second.pop_back();
    }
  }
  return matches;
}

// True for each match that is in the longest rising sequence: the others have moved.
std::vector<bool> InOrder(const std::vector<int>& matches) {
  std::vector<size_t> ends;  // of the best sequence of each length
  std::vector<size_t> previous(matches.size());
  for (size_t i = 0; i < matches.size(); ++i) {
    if (matches[i] < 0) continue;
    const auto at = std::lower_bound(ends.begin(), ends.end(), matches[i],
                                     [&](size_t end, int m) { return matches[end] < m; });
    previous[i] = at == ends.begin() ? i : *(at - 1);
    if (at == ends.end())
      ends.push_back(i);
    else
      *at = i;
  }
  std::vector<bool> isInOrder(matches.size());
  for (size_t i = ends.empty() ? 0 : ends.back(); !ends.empty(); i = previous[i]) {
    isInOrder[i] = true;
    if (previous[i] == i) break;
  }
  return isInOrder;
}

// Why a statement has no successor.
std::string ReasonOf(const std::string& line, const FormData& form) {
  const LineTokens tokens = Tokenize(line + "\n", 2);
  if (tokens.words.size() < 2) return {};
  const std::string& name = tokens.words[0];
  if (name.size() < cShortestName && !name.starts_with("//"))
    return "names of one or two characters are not read";
  const CtrlRec* rec = name == FormData::cRootName ? &form.root : form.Find(name);
  const PropValue* prop = rec ? rec->FindValue(tokens.words[1]) : nullptr;
  if (!prop) return {};
  const std::string_view standard = prop->pd->defaultValue ? prop->pd->defaultValue : "";
  return !prop->value.empty() && prop->value == standard ? "it is the default" : "";
}

// Compares a region with what is written of it.
class RegionCheck {
 public:
  RegionCheck(const FormData& theForm, bool theIsInDecl, const Lines& theLines,
              const Lines& theWritten)
      : form(theForm), isInDecl(theIsInDecl), lines(theLines), written(theWritten) {}

  std::vector<FormLoss> Run() {
    if (IsSame()) return {};
    const std::vector<Element> before = ElementsOf(lines, isInDecl);
    const std::vector<Element> after = ElementsOf(written, isInDecl);
    const std::vector<int> matches = MatchElements(before, after);
    const std::vector<bool> isInOrder = InOrder(matches);
    const bool isAllThere = std::find(matches.begin(), matches.end(), -1) == matches.end();
    if (!isAllThere) NoteSuccessors(after, matches);
    for (size_t i = 0; i < before.size(); ++i) {
      if (matches[i] < 0)
        AddLost(before[i]);
      else if (!isInOrder[i])
        Add({Kind::cMoved, isInDecl, before[i].line, {}, {}, {}});
    }
    return std::move(losses);
  }

 private:
  // What the designer wrote comes back as it is.
  bool IsSame() const {
    return std::equal(lines.begin(), lines.end(), written.begin(), written.end(),
                      [](std::string_view left, std::string_view right) {
                        return WithoutLineEnd(left) == WithoutLineEnd(right);
                      });
  }

  // The same for statements that take each other's place; empty if that can't be told.
  std::string SubjectOf(const Element& element, const Lines& from) const {
    if (!element.name.empty()) return element.name;
    if (element.line == 0) return std::string(cMarker);
    return isInDecl ? std::string() : SubjectOfStatement(from[static_cast<size_t>(element.line)]);
  }

  // Statements that are new go before those that have been there.
  void NoteSuccessors(const std::vector<Element>& after, const std::vector<int>& matches) {
    const std::set<int> matched(matches.begin(), matches.end());
    for (const bool wantsNew : {true, false})
      for (size_t i = 0; i < after.size(); ++i)
        if (matched.contains(static_cast<int>(i)) != wantsNew)
          successors.try_emplace(SubjectOf(after[i], written), after[i].line);
    successors.erase(std::string());
  }

  void AddLost(const Element& element) {
    FormLoss loss{Kind::cLost, isInDecl, element.line, {}, {}, {}};
    const auto next = successors.find(SubjectOf(element, lines));
    const std::string text(Trimmed(lines[static_cast<size_t>(element.line)]));
    if (next != successors.end()) {
      loss.kind = Kind::cChanged;
      loss.becomes = Trimmed(written[static_cast<size_t>(next->second)]);
    } else if (!isInDecl) {
      loss.becomes = ReasonOf(text, form);
    }
    Add(std::move(loss));
  }

  // A line with several names is told of once.
  void Add(FormLoss loss) {
    if (!losses.empty() && losses.back().line == loss.line) return;
    loss.text = Trimmed(lines[static_cast<size_t>(loss.line)]);
    losses.push_back(std::move(loss));
  }

  const FormData& form;
  const bool isInDecl;
  const Lines& lines;
  const Lines& written;
  std::map<std::string, int> successors;  // lines in `written` by subject
  std::vector<FormLoss> losses;
};

// The closing marker is written anew, too.
void CheckEnd(const SectionRef& section, bool isInDecl, std::vector<FormLoss>& losses) {
  const std::string line(Trimmed(section.text->Line(section.endLine)));
  if (line == "//!end") return;
  losses.push_back(
      {Kind::cChanged, isInDecl, section.endLine - section.startLine, line, "//!end", {}});
}

// Group: statements as they are typed.

using Pieces = std::vector<CppPiece>;

// The pieces of a line; none if anything but blanks is between them, or after the last.
Pieces PiecesOf(std::string_view line) {
  Pieces pieces;
  CppLexer lexer(line);
  size_t at = 0;
  const auto isBlank = [&](size_t end) { return Trimmed(line.substr(at, end - at)).empty(); };
  for (CppPiece piece = lexer.Next(); piece.kind != CppPiece::Kind::cEnd; piece = lexer.Next()) {
    const size_t start = static_cast<size_t>(piece.text.data() - line.data());
    if (!isBlank(start)) return {};
    at = start + piece.text.size();
    pieces.push_back(piece);
  }
  return isBlank(line.size()) ? pieces : Pieces();
}

// True if the pieces from `at` on are these texts; an empty text is any word, "0" any number.
bool AreTexts(const Pieces& pieces, size_t at, std::initializer_list<std::string_view> texts) {
  if (pieces.size() != at + texts.size()) return false;
  for (const std::string_view text : texts) {
    const CppPiece& piece = pieces[at++];
    const bool fits = text.empty()  ? piece.kind == CppPiece::Kind::cWord
                      : text == "0" ? piece.kind == CppPiece::Kind::cNumber
                                    : piece.text == text;
    if (!fits) return false;
  }
  return true;
}

// Negative numbers are two pieces.
Pieces WithoutMinus(const Pieces& pieces) {
  Pieces plain;
  std::copy_if(pieces.begin(), pieces.end(), std::back_inserter(plain),
               [](const CppPiece& piece) { return piece.text != "-"; });
  return plain;
}

// The value types of the rows of that name, of all classes.
std::set<const PropClass*> TypesOf(std::string_view row) {
  std::set<const PropClass*> types;
  const auto look = [&](const CtrlClass& one) {
    if (const int at = one.FindRow(row); at >= 0) types.insert(one.props[at].cvt);
  };
  for (const CtrlClass& one : Registry()) look(one);
  look(WindowRegClass);
  return types;
}

// True if a value comes back by one of the types; a name without types is kept as it is.
bool ComesBack(std::string_view row, const std::string& value, const std::string& statement) {
  const std::set<const PropClass*> types = TypesOf(row);
  return types.empty() || std::any_of(types.begin(), types.end(), [&](const PropClass* type) {
           PropValue prop;
           PropContext context{nullptr, &prop, 0, value};
           type->ToValue(context);
           type->ToSource(context);
           const std::string text =
               type->type < cItemsType
                   ? context.text
                   : context.text.substr(0, context.text.find('\0')).erase(0, 1);
           return PlainStatement(text) == PlainStatement(statement);
         });
}

bool FitsInit(std::string_view line) {
  const Pieces pieces = PiecesOf(line);
  if (pieces.size() < 5 || pieces[0].kind != CppPiece::Kind::cWord || pieces.back().text != ";" ||
      std::count_if(pieces.begin(), pieces.end(),
                    [](const CppPiece& p) { return p.text == ";"; }) != 1)
    return false;
  const bool isRoot = pieces[0].text == "this";
  if (pieces[1].text != (isRoot ? "->" : ".") || pieces[2].kind != CppPiece::Kind::cWord)
    return false;
  if (!isRoot && pieces[0].text.size() < cShortestName) return false;
  const std::string_view what = pieces[2].text;
  const Pieces numbers = WithoutMinus(pieces);
  if (what == "SetBounds")
    return AreTexts(numbers, 3, {"(", "0", ",", "0", ",", "0", ",", "0", ")", ";"});
  if (what == "SetLocation" || what == "SetSize")
    return AreTexts(numbers, 3, {"(", "0", ",", "0", ")", ";"});
  if (what == "Add") return AreTexts(pieces, 3, {"(", "&", "", ")", ";"});
  if (pieces[3].text == "." && pieces[4].text == "Add_H")
    return AreTexts(pieces, 5, {"(", "this", ",", "&", "This", "::", "", ")", ";"});
  const bool isItem = pieces[3].text == "." && pieces[4].text == "Add";
  if (pieces[3].text != "=" && !isItem) return false;
  std::string value = Tokenize(std::string(line) + "\n", 2).rest;
  TrimValue(value);
  return ComesBack(what, value, value);
}

}  // namespace

std::string FormLoss::Words() const {
  if (kind == Kind::cMoved) return "moved: " + text;
  if (kind == Kind::cChanged) return "changed: " + text + " becomes " + becomes;
  return "lost: " + text + (becomes.empty() ? "" : " (" + becomes + ")");
}

std::vector<FormLoss> CheckRegions(const Lines& declLines, const Lines& initLines) {
  FormData form;
  form.ReadDecl(declLines);
  form.ReadInit(initLines);
  return CompareRegions(form, declLines, initLines);
}

std::vector<FormLoss> CompareRegions(const FormData& form, const Lines& declLines,
                                     const Lines& initLines) {
  FormWriter writer(form);
  Lines decl, init;
  writer.WriteDecl(decl);
  writer.WriteInit(init);
  // The closing markers are not in the lines that were read.
  decl.pop_back();
  init.pop_back();
  std::vector<FormLoss> losses = RegionCheck(form, true, declLines, decl).Run();
  const std::vector<FormLoss> more = RegionCheck(form, false, initLines, init).Run();
  losses.insert(losses.end(), more.begin(), more.end());
  return losses;
}

FormCheckup CheckupOf(const FormTarget& target) {
  const Lines decl = target.decl.Lines();
  const Lines init = target.init.Lines();
  FormData form;
  form.ReadDecl(decl);
  form.ReadInit(init);
  FormCheckup result;
  result.losses = CompareRegions(form, decl, init);
  CheckEnd(target.decl, true, result.losses);
  CheckEnd(target.init, false, result.losses);
  for (FormLoss& loss : result.losses) {
    const SectionRef& section = loss.isInDecl ? target.decl : target.init;
    loss.line += section.startLine;
    loss.path = section.text->Path();
  }
  result.canOpen = form.CheckParents();
  result.reports = std::move(form.reports);
  for (FormReport& report : result.reports) {
    const SectionRef& section = report.line < 0 ? target.decl : target.init;
    report.path = section.text->Path();
    report.line = section.startLine + std::max(report.line, 0);
  }
  return result;
}

std::vector<FormLoss> CheckForm(const FormTarget& target) {
  return CheckupOf(target).losses;
}

bool FitsRegion(std::string_view line, bool isInDecl) {
  const std::string_view plain = Trimmed(line);
  if (plain.empty() || plain.starts_with(cMarker)) return true;
  if (!isInDecl) return FitsInit(plain);
  const size_t names = ReadDeclaration(plain).names.size();
  return names > 0 && names < LineTokens::cMost;
}

}  // namespace zendry
