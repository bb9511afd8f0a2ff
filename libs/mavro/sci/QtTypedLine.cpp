#include "QtTypedLine.h"

#include <Qsci/qsciscintillabase.h>

#include <QRect>
#include <algorithm>
#include <iterator>
#include <utility>

#include "SciMessages.h"

namespace mavro {

namespace {

constexpr unsigned long cMargins = 5;
constexpr long cLongestLetter = 4;  // bytes

// Those that come while a letter is typed.
constexpr unsigned cQuestions[] = {SCI_AUTOCACTIVE,        SCI_AUTOCPOSSTART,
                                   SCI_CALLTIPACTIVE,      SCI_GETANCHOR,
                                   SCI_GETCODEPAGE,        SCI_GETCURRENTPOS,
                                   SCI_GETENDSTYLED,       SCI_GETEOLMODE,
                                   SCI_GETFOCUS,           SCI_GETGAPPOSITION,
                                   SCI_GETINDENT,          SCI_GETLENGTH,
                                   SCI_GETLINECOUNT,       SCI_GETLINEENDPOSITION,
                                   SCI_GETLINEINDENTATION, SCI_GETRANGEPOINTER,
                                   SCI_GETREADONLY,        SCI_GETSELECTIONEMPTY,
                                   SCI_GETSELECTIONEND,    SCI_GETSELECTIONS,
                                   SCI_GETSELECTIONSTART,  SCI_GETSTYLEAT,
                                   SCI_GETTABWIDTH,        SCI_LINEFROMPOSITION,
                                   SCI_POSITIONFROMLINE,   SCI_GETCOLUMN,
                                   SCI_GETUNDOCOLLECTION,  SCI_GETLINEINDENTPOSITION};

}  // namespace

bool TypedLine::IsQuestion(unsigned message) {
  return std::find(std::begin(cQuestions), std::end(cQuestions), message) != std::end(cQuestions);
}

long TypedLine::Ask(unsigned message, unsigned long wParam) const {
  return editor.SendScintilla(message, wParam);
}

TypedLine::State TypedLine::Now() const {
  return {Ask(SCI_GETLENGTH), Ask(SCI_GETCURRENTPOS), Ask(SCI_GETLINECOUNT),
          Ask(SCI_GETFIRSTVISIBLELINE), Ask(QsciScintillaBase::SCI_GETXOFFSET)};
}

// One caret without a selection in lines that aren't wrapped, and no window at the caret.
bool TypedLine::IsPlain() const {
  return Ask(SCI_GETSELECTIONS) == 1 && Ask(SCI_GETSELECTIONEMPTY) && !Ask(SCI_GETWRAPMODE) &&
         !Ask(SCI_GETOVERTYPE) && !Ask(SCI_AUTOCACTIVE) && !Ask(SCI_CALLTIPACTIVE);
}

void TypedLine::Begin() {
  if (!editor.viewport()->updatesEnabled() || !IsPlain()) return;
  before = Now();
  // Enabling by the toolkit's function would repaint all.
  editor.viewport()->setAttribute(Qt::WA_UpdatesDisabled, true);
}

void TypedLine::End() {
  if (!before) return;
  editor.viewport()->setAttribute(Qt::WA_UpdatesDisabled, false);
  const State old = *std::exchange(before, std::nullopt), now = Now();
  if (now == old) return;
  const long added = now.length - old.length, moved = now.caret - old.caret;
  const bool isLetter = added > 0 && added <= cLongestLetter && moved >= 0 && moved <= added;
  const bool stays =
      now.lines == old.lines && now.firstLine == old.firstLine && now.left == old.left;
  if (isLetter && stays)
    PaintLine();
  else
    editor.viewport()->update();
}

// The margins show nothing that a letter changes.
void TypedLine::PaintLine() {
  const long caret = Ask(SCI_GETCURRENTPOS);
  const long top = editor.SendScintilla(SCI_POINTYFROMPOSITION, 0UL, caret);
  const long height =
      Ask(SCI_TEXTHEIGHT,
          static_cast<unsigned long>(Ask(SCI_LINEFROMPOSITION, static_cast<unsigned long>(caret))));
  long left = 0;
  for (unsigned long margin = 0; margin < cMargins; ++margin)
    left += Ask(SCI_GETMARGINWIDTHN, margin);
  const QRect all = editor.viewport()->rect();
  editor.viewport()->update(all & QRect(static_cast<int>(left), static_cast<int>(top), all.width(),
                                        static_cast<int>(height)));
}

}  // namespace mavro
