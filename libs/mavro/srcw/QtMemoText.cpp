#include "QtMemoText.h"

#include <QTextDocument>
#include <algorithm>
#include <vector>

#include "QtText.h"

namespace mavro {

namespace {

// Longest piece of a line that is laid out in one go: laying out and painting cost its whole
// length, and a window full of such pieces must still paint within a few milliseconds.
constexpr int cPartLength = 2048;

// Characters that a document would take for block marks. They are shown as the bytes they are
// made of.
bool IsBlockMark(QChar c) {
  constexpr char16_t cMarks[] = {QChar::LineSeparator, QChar::ParagraphSeparator, 0xFDD0, 0xFDD1};
  return std::find(std::begin(cMarks), std::end(cMarks), c.unicode()) != std::end(cMarks);
}

QString AsKeptBytes(QChar mark) {
  QString kept;
  for (const char byte : QString(mark).toUtf8()) kept += ToScreen(std::string_view(&byte, 1));
  return kept;
}

int CodePoints(const QString& text) {
  return static_cast<int>(
      std::count_if(text.begin(), text.end(), [](QChar c) { return !c.isHighSurrogate(); }));
}

}  // namespace

// Text ready for a document: "\n" is the end of a block.
struct MemoText::Cut {
  struct End {
    int block;  // counted from the first block of the text
    LineEnd end;
  };
  QString text;
  std::vector<End> ends;  // those that are not the default
  int breaks = 0;

  void Break(LineEnd end, LineEnd usual) {
    text += '\n';
    if (end != usual) ends.push_back({breaks, end});
    ++breaks;
  }
};

MemoText::Cut MemoText::CutLines(const QString& raw, int column, bool typed) {
  Cut cut;
  cut.text.reserve(raw.size());
  qsizetype start = 0;
  const auto copyUpTo = [&](qsizetype end) {
    cut.text += QStringView(raw).mid(start, end - start);
    start = end;
  };
  for (qsizetype i = 0; i < raw.size(); ++i) {
    const QChar c = raw[i];
    if (c == '\n' || c == '\r') {
      copyUpTo(i);
      const bool both = c == '\r' && i + 1 < raw.size() && raw[i + 1] == '\n';
      if (both) ++i;
      start = i + 1;
      const LineEnd end = both ? cCrLf : c == '\n' ? cLf : cCr;
      if (defaultEnd == cDefault) defaultEnd = typed ? cCrLf : end;
      cut.Break(typed ? defaultEnd : end, defaultEnd);
      column = 0;
      continue;
    }
    if (column >= cPartLength && !c.isLowSurrogate()) {
      copyUpTo(i);
      cut.Break(cPart, defaultEnd);
      hasParts = true;
      column = 0;
    }
    if (IsBlockMark(c)) {
      copyUpTo(i);
      cut.text += AsKeptBytes(c);
      start = i + 1;
    }
    ++column;
  }
  copyUpTo(raw.size());
  return cut;
}

// The block of the cursor gets the end of the first new block; the text after the cursor keeps its
// end.
void MemoText::InsertCut(QTextCursor& cursor, const Cut& cut) {
  const int first = cursor.blockNumber();
  const int oldState = cursor.block().userState();
  cursor.insertText(cut.text);
  if (cut.breaks == 0) return;
  document.findBlockByNumber(first).setUserState(cDefault);
  for (const Cut::End& row : cut.ends)
    document.findBlockByNumber(first + row.block).setUserState(row.end);
  document.findBlockByNumber(first + cut.breaks).setUserState(oldState);
}

void MemoText::RemoveSelected(QTextCursor& cursor) {
  if (!cursor.hasSelection()) return;
  const int lastState = document.findBlock(cursor.selectionEnd()).userState();
  cursor.removeSelectedText();
  cursor.block().setUserState(lastState);
}

void MemoText::Assign(std::string_view bytes) {
  document.clear();
  document.begin().setUserState(cDefault);
  defaultEnd = cDefault;
  hasParts = false;
  Append(bytes);
}

void MemoText::Append(std::string_view bytes) {
  QTextCursor cursor(&document);
  cursor.movePosition(QTextCursor::End);
  const Cut cut = CutLines(ToScreen(bytes), cursor.positionInBlock(), false);
  cursor.beginEditBlock();
  InsertCut(cursor, cut);
  cursor.endEditBlock();
}

void MemoText::Insert(QTextCursor cursor, const QString& typed) {
  cursor.beginEditBlock();
  RemoveSelected(cursor);
  InsertCut(cursor, CutLines(typed, cursor.positionInBlock(), true));
  cursor.endEditBlock();
}

MemoText::LineEnd MemoText::EndOf(const QTextBlock& block) const {
  const auto end = static_cast<LineEnd>(block.userState());
  if (end != cDefault) return end;
  return defaultEnd == cDefault ? cCrLf : defaultEnd;
}

std::string MemoText::Bytes() const {
  static constexpr const char* cEnds[] = {"", "\n", "\r\n", "\r"};
  std::string bytes;
  bytes.reserve(static_cast<size_t>(document.characterCount()));
  for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
    bytes += FromScreen(block.text());
    if (block.next().isValid()) bytes += cEnds[EndOf(block)];
  }
  return bytes;
}

QString MemoText::Selected(const QTextCursor& cursor) const {
  QString selected;
  const int end = cursor.selectionEnd();
  QTextBlock block = document.findBlock(cursor.selectionStart());
  int from = cursor.selectionStart() - block.position();
  for (; block.isValid(); block = block.next(), from = 0) {
    const int length = std::min(end - block.position(), block.length() - 1) - from;
    selected += QStringView(block.text()).mid(from, length);
    if (end < block.position() + block.length()) break;
    if (EndOf(block) != cPart) selected += '\n';
  }
  return selected;
}

int MemoText::LineCount() const {
  return LineOf(document.lastBlock());
}

int MemoText::LineOf(const QTextBlock& block) const {
  int line = block.blockNumber() + 1;
  if (!hasParts) return line;
  for (QTextBlock other = block.previous(); other.isValid(); other = other.previous())
    if (EndOf(other) == cPart) --line;
  return line;
}

int MemoText::ColumnOf(const QTextCursor& cursor) const {
  QTextBlock block = cursor.block();
  int column = 1 + CodePoints(block.text().left(cursor.positionInBlock()));
  while (IsLaterPart(block)) {
    block = block.previous();
    column += CodePoints(block.text());
  }
  return column;
}

QTextBlock MemoText::BlockOfLine(int line) const {
  if (!hasParts) {
    const QTextBlock block = document.findBlockByNumber(std::max(line, 1) - 1);
    return block.isValid() ? block : document.lastBlock();
  }
  QTextBlock found = document.begin();
  int count = 1;
  for (QTextBlock block = found.next(); block.isValid() && count < line; block = block.next())
    if (!IsLaterPart(block)) {
      found = block;
      ++count;
    }
  return found;
}

bool MemoText::IsLaterPart(const QTextBlock& block) const {
  return hasParts && block.previous().isValid() && EndOf(block.previous()) == cPart;
}

int MemoText::KeepLast(int lines) {
  const int superfluous = LineCount() - lines;
  if (superfluous <= 0) return 0;
  const QTextBlock kept = BlockOfLine(superfluous + 1);
  const int removed = kept.blockNumber();
  QTextCursor cursor(&document);
  cursor.setPosition(kept.position(), QTextCursor::KeepAnchor);
  const int state = kept.userState();
  cursor.removeSelectedText();
  document.begin().setUserState(state);
  return removed;
}

size_t ShowableLength(std::string_view bytes) {
  if (!bytes.empty() && bytes.back() == '\r') return bytes.size() - 1;
  constexpr size_t cLongestSequence = 4;
  for (size_t back = 1; back < cLongestSequence && back <= bytes.size(); ++back) {
    const auto byte = static_cast<unsigned char>(bytes[bytes.size() - back]);
    if (byte < 0x80) break;
    if (byte < 0xC0) continue;
    const size_t wanted = byte >= 0xF0 ? 4 : byte >= 0xE0 ? 3 : 2;
    return back < wanted ? bytes.size() - back : bytes.size();
  }
  return bytes.size();
}

}  // namespace mavro
