#pragma once

#include <QString>
#include <QTextBlock>
#include <QTextCursor>
#include <string>
#include <string_view>

class QTextDocument;

namespace mavro {

// The lines of a memo in a document of one block each. How a line ends is kept with its block, so
// that the bytes come out as they went in. A line too long to be laid out in one go stands in
// several blocks, its parts. Lines count from 1.
class MemoText {
 public:
  // `its` is not owned.
  explicit MemoText(QTextDocument& its) : document(its) {}

  void Assign(std::string_view bytes);
  void Append(std::string_view bytes);
  // Puts typed or pasted text in the place of the cursor's selection; its lines end as those of the
  // document.
  void Insert(QTextCursor cursor, const QString& typed);
  std::string Bytes() const;
  // What is selected, lines ending with LF.
  QString Selected(const QTextCursor& cursor) const;

  int LineCount() const;
  int LineOf(const QTextBlock& block) const;
  // Code points before the cursor in its line, and one.
  int ColumnOf(const QTextCursor& cursor) const;
  // The first block of a line; the last line's for a number above.
  QTextBlock BlockOfLine(int line) const;
  // True for a block whose line began in an earlier one.
  bool IsLaterPart(const QTextBlock& block) const;
  // Removes all lines but the last ones; answers how many blocks went.
  int KeepLast(int lines);

 private:
  enum LineEnd { cDefault = -1, cPart, cLf, cCrLf, cCr };
  struct Cut;

  Cut CutLines(const QString& raw, int column, bool typed);
  void InsertCut(QTextCursor& cursor, const Cut& cut);
  void RemoveSelected(QTextCursor& cursor);
  LineEnd EndOf(const QTextBlock& block) const;

  QTextDocument& document;
  LineEnd defaultEnd = cDefault;  // cDefault until the first line end tells
  bool hasParts = false;
};

// How much of `bytes` can be shown: all but a character or a line end that may be cut at the end.
size_t ShowableLength(std::string_view bytes);

}  // namespace mavro
