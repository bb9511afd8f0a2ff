#include "help/HelpPage.h"

#include <algorithm>
#include <charconv>

namespace zendry {

const char cHelpHeader[] =
    "{\\rtf1\\ansi\\deff0{\\fonttbl{\\f0\\fswiss\\fcharset238 Arial CE;}"
    "{\\f1\\fswiss\\fcharset238 Phonetic;}{\\f2\\fswiss\\fcharset238 Arial CE;}"
    "{\\f4\\fswiss\\fcharset238 Arial CE;}{\\f5\\fswiss\\fcharset238 Arial CE;}}\n"
    "{\\colortbl \\red0\\green0\\blue0;\\red0\\green0\\blue200;\\red180\\green0\\blue0;"
    "\\red255\\green200\\blue64;\\red0\\green180\\blue0;\\red0\\green0\\blue0;"
    "\\red255\\green0\\blue255;}\n"
    "\\viewkind4\\uc1\\pard\\f0\\fs24\n";

const char cHelpFooter[] = "\\ulnone\\par}";

namespace {

constexpr std::string_view cTitleRow =
    "\\par\\trowd\\trql\\trgaph108\\trrh600\\trleft36\\clbrdrt\\brdrdb\\clbrdrl\\brdrth"
    "\\clbrdrb\\brdrsh\\brdrs\\clbrdrr\\brdrdb\\clcbpat3\\clvertalc";
constexpr std::string_view cLinkTarget = "help:";

// A control word ends at a character that can't be part of it, and takes one blank with it.
bool GoesOnAfterWord(char next) {
  return (next >= 'a' && next <= 'z') || (next >= 'A' && next <= 'Z') ||
         (next >= '0' && next <= '9') || next == '-' || next == ' ';
}

// The name of a class without namespaces and template arguments.
std::string_view OwnName(std::string_view name) {
  name = name.substr(0, name.find('<'));
  const size_t colons = name.rfind("::");
  return colons == std::string_view::npos ? name : name.substr(colons + 2);
}

bool Answers(const HelpEntry& entry, const HelpQuestion& question) {
  if (!question.word.empty() && entry.Name() != question.word) return false;
  return question.module.empty() || entry.Module() == question.module;
}

// The name of a class, and of the class that it is another name of: "string" is "basic_string".
std::vector<std::string_view> NamesOfClass(const HelpIndex& index, std::string_view name) {
  std::vector<std::string_view> names = {name};
  for (const HelpEntry& entry : index.Topics())
    if (entry.state == HelpEntry::cAlias && OwnName(entry.Name()) == name)
      if (const HelpEntry* source = index.Source(entry)) names.push_back(OwnName(source->Name()));
  return names;
}

std::vector<const HelpEntry*> Answers(const HelpIndex& index, const HelpQuestion& question) {
  std::vector<const HelpEntry*> answers;
  for (const HelpEntry& entry : index.Topics())
    if (Answers(entry, question)) answers.push_back(&entry);
  const std::string_view first = OwnName(question.firstClass);
  if (first.empty() || answers.size() < 2) return answers;
  const std::vector<std::string_view> classes = NamesOfClass(index, first);
  // The texts that answer to the word with that class or namespace before it too.
  const std::string qualified = question.firstClass + "::" + question.word;
  std::vector<const HelpEntry*> texts;
  for (const HelpEntry& entry : index.Topics())
    if (entry.Name() == qualified) texts.push_back(index.Source(entry));
  const auto holds = [](const auto& some, const auto& one) {
    return std::find(some.begin(), some.end(), one) != some.end();
  };
  std::stable_partition(answers.begin(), answers.end(), [&](const HelpEntry* entry) {
    return holds(classes, OwnName(entry->Module())) || holds(texts, index.Source(*entry));
  });
  return answers;
}

}  // namespace

std::string EscapedForRtf(std::string_view text) {
  std::string escaped;
  escaped.reserve(text.size() + text.size() / 8);
  for (size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '\n') {
      escaped += "\\line";
      if (i + 1 < text.size() && GoesOnAfterWord(text[i + 1])) escaped += ' ';
      continue;
    }
    if (c == '\\' || c == '{' || c == '}') escaped += '\\';
    escaped += c;
  }
  return escaped;
}

void writeEntry(std::string& rtf, const HelpEntry& entry, const HelpEntry* source, int twips) {
  static const HelpEntry cNothing;
  const HelpEntry& texts = source ? *source : cNothing;
  rtf += cTitleRow;
  rtf += "\\cellx" + std::to_string(twips) + "\\pard\\intbl {\\f0\\fs28\\cf0 ";
  rtf += EscapedForRtf(entry.Name());
  rtf += "}\\cell\\pard\\intbl \\row\\pard\\line";
  if (!texts.brief.empty()) rtf += "{\\f1\\cf1\\i " + EscapedForRtf(texts.brief) + "}";
  if (!texts.type.empty()) rtf += "\\line{\\f2\\cf2 " + EscapedForRtf(texts.type) + "}";
  if (!texts.params.empty()) rtf += "\\line{\\f2\\cf4 " + EscapedForRtf(texts.params) + "}";
  if (!texts.returns.empty()) rtf += "\\line{\\f2\\cf5 " + EscapedForRtf(texts.returns) + "}";
  rtf += "\\line\\par\\pard {\\f1\\cf0\\i " + EscapedForRtf(texts.body) + "}";
}

HelpPage search(const HelpIndex& index, const HelpQuestion& question, int twips) {
  HelpPage page;
  page.rtf = cHelpHeader;
  size_t firsts = 0;
  const std::vector<const HelpEntry*> answers = Answers(index, question);
  for (const HelpEntry* entry : answers) {
    writeEntry(page.rtf, *entry, index.Source(*entry), twips);
    if (entry->state == HelpEntry::cFirst) ++firsts;
  }
  page.rtf += cHelpFooter;
  page.found = !answers.empty();
  page.foundAliases = answers.size() > firsts;
  return page;
}

std::string NotFoundPage(std::string_view word, std::string_view module,
                         const std::vector<std::string>& nearest) {
  std::string rtf = cHelpHeader;
  rtf += "\\b " + EscapedForRtf(word.empty() ? module : word) + "\\b0  is in none of the indexes";
  if (!word.empty() && !module.empty())
    rtf.replace(rtf.rfind("in none"), std::string::npos,
                "not in \\b " + EscapedForRtf(module) + "\\b0 ");
  rtf += ".";
  if (!nearest.empty()) rtf += "\\par\\par Near to it:";
  for (size_t i = 0; i < nearest.size(); ++i)
    rtf += "\\par\\li360 {\\field{\\*\\fldinst HYPERLINK \"" + std::string(cLinkTarget) +
           std::to_string(i) + "\"}{\\fldrslt " + EscapedForRtf(nearest[i]) + "}}";
  return rtf + cHelpFooter;
}

int NumberOfHelpLink(std::string_view target) {
  if (!target.starts_with(cLinkTarget)) return -1;
  target.remove_prefix(cLinkTarget.size());
  int number = -1;
  const char* end = target.data() + target.size();
  const auto [stop, error] = std::from_chars(target.data(), end, number);
  return error == std::errc() && stop == end ? number : -1;
}

}  // namespace zendry
