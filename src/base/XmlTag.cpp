#include "base/XmlTag.h"

#include "Assert.h"
#include "base/ControlBytes.h"
#include "base/ParseInt.h"

namespace zendry {

namespace {

constexpr char cElementKey = '<';  // the element's name is being read
constexpr size_t cShownOfElement = 40;
constexpr char cNoKey = '\0';  // a value would belong to no attribute

bool EndsToken(char c) {
  return std::string_view(" \t\n\v\f\r=>").find(c) != std::string_view::npos;
}

// Cuts the text between "<" and ">" into tokens. Quotes are part of a token, and no character
// within them ends it; a token is never empty.
class TokenCursor {
 public:
  explicit TokenCursor(TagSource& readFrom) : source(readFrom) {}

  // Moves to the next token; false after the ">" or at the end of the text.
  bool Next() {
    while (!atEnd) {
      const size_t start = source.position;
      FindTokenEnd();
      token = source.text.substr(start, source.position - start);
      atEnd = source.position == source.text.size() || source.text[source.position] == '>';
      isName = !AtTextEnd() && source.text[source.position] == '=';
      if (!AtTextEnd()) ++source.position;
      if (!token.empty()) return true;
    }
    return false;
  }

  std::string_view token;
  bool isName = false;  // ended by "="

 private:
  bool AtTextEnd() const { return source.position == source.text.size(); }

  void FindTokenEnd() {
    bool inQuotes = false;
    for (; !AtTextEnd(); ++source.position) {
      const char c = source.text[source.position];
      if (c == '"')
        inQuotes = !inQuotes;
      else if (!inQuotes && EndsToken(c))
        return;
    }
  }

  TagSource& source;
  bool atEnd = false;
};

// Moves to the place after the next "<"; false when there is none.
bool SkipToElement(TagSource& source) {
  const size_t start = source.text.find('<', source.position);
  source.position = start == std::string_view::npos ? source.text.size() : start + 1;
  return start != std::string_view::npos;
}

// Moves to the place after the element that begins here; false when one of its tokens is too long.
bool ElementFits(TagSource& source) {
  bool fits = true;
  for (TokenCursor cursor(source); cursor.Next();) fits &= cursor.token.size() <= cMaxTagToken;
  return fits;
}

// The text between the first character, which is the opening quote, and the last quote.
std::string_view Unquoted(std::string_view token) {
  token = token.substr(0, token.rfind('"'));
  return token.substr(token.empty() ? 0 : 1);
}

void AppendAttribute(std::string& out, const char* label, std::string_view value) {
  if (value.empty()) return;
  out += ' ';
  out += label;
  out += "=\"";
  out += value;
  out += '"';
}

}  // namespace

void XmlTag::ClearValues() {
  element.clear();
  n.clear();
  o.clear();
  p.clear();
  v.clear();
  id = -1;
}

void XmlTag::begin(std::string_view newElement, int indentCount, Ends ends) {
  ClearValues();
  element = newElement;
  indent.assign(static_cast<size_t>(indentCount), '\t');
  closed = ends == Ends::cAtOnce;
}

void XmlTag::set(std::string_view newN, std::string_view newO, std::string_view newP,
                 std::string_view newV, int newId) {
  n = newN;
  o = newO;
  p = newP;
  v = newV;
  id = newId;
}

void XmlTag::write(std::string& out) const {
  out += indent;
  out += '<';
  out += element;
  AppendAttribute(out, labels.n, n);
  if (id != -1) AppendAttribute(out, "id", std::to_string(id));
  AppendAttribute(out, labels.o, o);
  AppendAttribute(out, labels.p, p);
  AppendAttribute(out, labels.v, v);
  if (closed) out += '/';
  out += ">\n";
}

void XmlTag::Store(char key, std::string_view value) {
  switch (key) {
    case 'i':
      id = ParseInt(value);
      break;
    case 'n':
      n = value;
      break;
    case 'o':
      o = value;
      break;
    case 'p':
      p = value;
      break;
    case 'v':
      v = value;
      break;
    default:
      break;
  }
}

bool XmlTag::read(TagSource* xf) {
  // clang-format off
  MAVRO_ASSERT(xf!=NULL);  // NOLINT(modernize-use-nullptr): the message is the expression
  // clang-format on
  ClearValues();
  if (!SkipToElement(*xf)) return false;
  char key = cElementKey;
  for (TokenCursor cursor(*xf); cursor.Next();) {
    const size_t idx = cursor.token.size();
    // clang-format off
    MAVRO_ASSERT(idx<512);
    // clang-format on
    if (key == cElementKey) {
      element = cursor.token;
      key = cNoKey;
    } else if (cursor.isName) {
      key = cursor.token.front();
    } else {
      Store(key, Unquoted(cursor.token));
      key = cNoKey;  // so that the "/" in <file name="a.c" /> is not taken for the name
    }
  }
  return !element.empty();
}

bool XmlTag::ReadsBack() const {
  std::string line;
  write(line);
  if (!TokensFit(line)) return false;
  TagSource source{line};
  XmlTag again;
  if (!again.read(&source)) return false;
  // The end of the line must be the end of the element; otherwise it runs on into the next one.
  if (source.position + 1 != line.size()) return false;
  const bool slashInName = closed && n.empty() && o.empty() && p.empty() && v.empty() && id == -1;
  return again.element == (slashInName ? element + '/' : element) && again.n == n && again.o == o &&
         again.p == p && again.v == v && again.id == id;
}

bool TokensFit(std::string_view text) {
  TagSource source{text};
  while (SkipToElement(source))
    if (!ElementFits(source)) return false;
  return true;
}

FittingTags PassOverTooLong(std::string_view text) {
  FittingTags fitting;
  TagSource source{text};
  size_t kept = 0;
  while (SkipToElement(source)) {
    const size_t start = source.position - 1;
    if (ElementFits(source)) continue;
    if (fitting.passedOver.empty()) fitting.passedOver = text.substr(start, cShownOfElement);
    fitting.text += text.substr(kept, start - kept);
    kept = source.position;
  }
  fitting.text += text.substr(kept);
  return fitting;
}

std::string TooLongWords(const FittingTags& tags) {
  const std::string_view begins = tags.passedOver;
  return "a value of more than some 500 characters: " +
         MarkControlBytes(begins.substr(0, begins.find_first_of("\r\n"))) + "...";
}

}  // namespace zendry
