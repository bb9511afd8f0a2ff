#pragma once

#include <QString>
#include <QTextBlock>
#include <QTextCursor>
#include <string>
#include <string_view>

class QTextDocument;

namespace mavro {

// The lines of a memo in a document of one block each. The line end is kept with its block, so that
// the bytes come out as they went in. A line too long to be laid out in one go is in several
// blocks, its parts. Lines count from 1.
class MemoText {
 public:
  // `its` is not owned.
  explicit MemoText(QTextDocument& its) : document(its) {}

  void Assign(std::string_view bytes);
  void Append(std::string_view bytes);
  // Replaces the cursor's selection with typed or pasted text; its lines get the line end of the
  // document.
  void Insert(QTextCursor cursor, const QString& typed);
  std::string Bytes() const;
  // The selected text, with LF as the line end.
  QString Selected(const QTextCursor& cursor) const;

  int LineCount() const;
  int LineOf(const QTextBlock& block) const;
  // One plus the number of code points before the cursor in its line.
  int ColumnOf(const QTextCursor& cursor) const;
  // The first block of a line; the last line's for a greater number.
  QTextBlock BlockOfLine(int line) const;
  // True for a block whose line began in an earlier one.
  bool IsLaterPart(const QTextBlock& block) const;
  // Removes all lines but the last ones; returns the number of blocks removed.
  int KeepLast(int lines);

 private:
  enum LineEnd { cDefault = -1, cPart, cLf, cCrLf, cCr };
  struct Cut;

  Cut CutLines(const QString& raw, int column, bool typed);
  void InsertCut(QTextCursor& cursor, const Cut& cut);
  void RemoveSelected(QTextCursor& cursor);
  LineEnd EndOf(const QTextBlock& block) const;

  QTextDocument& document;
  LineEnd defaultEnd = cDefault;  // cDefault until the first line end is known
  bool hasParts = false;
};

// The number of `bytes` that can be shown: all but a character or a line end that may be cut at the
// end.
size_t ShowableLength(std::string_view bytes);

}  // namespace mavro
