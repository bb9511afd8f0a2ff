#include "QtSciAccess.h"

#include <Qsci/qsciscintillabase.h>

#include <QAccessible>
#include <QAccessibleWidget>

#include "AccessText.h"
#include "QtText.h"
#include "SciMessages.h"

namespace mavro {

namespace {

// Longer deleted texts are not read out.
constexpr int cMostReported = 64 * 1024;

class SciDoor final : public AccessText::Door {
 public:
  explicit SciDoor(const QsciScintillaBase& itsSci) : sci(itsSci) {}

  std::intptr_t Send(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) override {
    return sci.SendScintilla(message, static_cast<unsigned long>(wParam),
                             static_cast<long>(lParam));
  }

  std::string Range(int start, int end) override {
    if (end <= start) return {};
    std::string bytes(static_cast<size_t>(end - start) + 1, '\0');
    sci.SendScintilla(SCI_GETTEXTRANGE, start, end, bytes.data());
    bytes.pop_back();
    return bytes;
  }

  // Converts bytes as they are shown: bytes that are not UTF-8 are letters of Latin-1.
  QString ToShown(const std::string& bytes) {
    if (Send(SCI_GETCODEPAGE, 0, 0) == SC_CP_UTF8) return ToScreen(bytes);
    return QString::fromLatin1(bytes.data(), static_cast<qsizetype>(bytes.size()));
  }

 private:
  const QsciScintillaBase& sci;
};

class SciAccess final : public QAccessibleWidget,
                        public QAccessibleTextInterface,
                        public QAccessibleEditableTextInterface {
 public:
  explicit SciAccess(QWidget* widget)
      : QAccessibleWidget(widget, QAccessible::EditableText),
        sci(*static_cast<QsciScintillaBase*>(widget)),
        door(sci),
        reader(door) {}

  void* interface_cast(QAccessible::InterfaceType type) override {
    if (type == QAccessible::TextInterface) return static_cast<QAccessibleTextInterface*>(this);
    if (type == QAccessible::EditableTextInterface)
      return static_cast<QAccessibleEditableTextInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
  }

  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.multiLine = true;
    state.selectableText = true;
    state.editable = sci.SendScintilla(SCI_GETREADONLY) == 0;
    state.readOnly = !state.editable;
    return state;
  }

  int characterCount() const override { return reader.CharacterCount(); }
  int cursorPosition() const override { return reader.CaretOffset(); }
  void setCursorPosition(int offset) override {
    sci.SendScintilla(SCI_GOTOPOS, static_cast<unsigned long>(reader.Position(offset)));
  }

  QString text(int start, int end) const override { return Shown({start, end}); }

  QString textAtOffset(int offset, QAccessible::TextBoundaryType type, int* start,
                       int* end) const override {
    return Answer(reader.UnitAt(offset, UnitOf(type)), start, end);
  }
  QString textBeforeOffset(int offset, QAccessible::TextBoundaryType type, int* start,
                           int* end) const override {
    return Answer(reader.UnitBefore(offset, UnitOf(type)), start, end);
  }
  QString textAfterOffset(int offset, QAccessible::TextBoundaryType type, int* start,
                          int* end) const override {
    return Answer(reader.UnitAfter(offset, UnitOf(type)), start, end);
  }

  void selection(int index, int* start, int* end) const override {
    *start = *end = 0;
    if (index != 0 || selectionCount() == 0) return;
    *start = reader.Offset(static_cast<int>(sci.SendScintilla(SCI_GETSELECTIONSTART)));
    *end = reader.Offset(static_cast<int>(sci.SendScintilla(SCI_GETSELECTIONEND)));
  }
  int selectionCount() const override {
    return sci.SendScintilla(SCI_GETSELECTIONEMPTY) == 0 ? 1 : 0;
  }
  void addSelection(int start, int end) override { setSelection(0, start, end); }
  void removeSelection(int) override {
    sci.SendScintilla(SCI_SETEMPTYSELECTION,
                      static_cast<unsigned long>(sci.SendScintilla(SCI_GETCURRENTPOS)));
  }
  void setSelection(int, int start, int end) override {
    sci.SendScintilla(SCI_SETSEL, static_cast<unsigned long>(reader.Position(start)),
                      static_cast<long>(reader.Position(end)));
  }

  QRect characterRect(int offset) const override {
    const long position = reader.Position(offset);
    const auto next = sci.SendScintilla(SCI_POSITIONAFTER, static_cast<unsigned long>(position));
    const int x = X(position), right = X(next);
    const int y = static_cast<int>(sci.SendScintilla(SCI_POINTYFROMPOSITION, 0UL, position));
    const int height = static_cast<int>(sci.SendScintilla(SCI_TEXTHEIGHT, 0UL));
    const QPoint corner = sci.viewport()->mapToGlobal(QPoint(x, y));
    return QRect(corner, QSize(std::max(1, right - x), height));
  }
  int offsetAtPoint(const QPoint& point) const override {
    const QPoint at = sci.viewport()->mapFromGlobal(point);
    const auto position = sci.SendScintilla(SCI_POSITIONFROMPOINTCLOSE,
                                            static_cast<unsigned long>(at.x()), long(at.y()));
    return position < 0 ? -1 : reader.Offset(static_cast<int>(position));
  }
  void scrollToSubstring(int start, int) override {
    const auto line =
        sci.SendScintilla(SCI_LINEFROMPOSITION, static_cast<unsigned long>(reader.Position(start)));
    sci.SendScintilla(SCI_ENSUREVISIBLEENFORCEPOLICY, static_cast<unsigned long>(line));
  }
  QString attributes(int offset, int* start, int* end) const override {
    const AccessText::Span word = reader.UnitAt(offset, AccessText::Unit::cWord);
    *start = word.start;
    *end = word.end;
    return QString();
  }

  void deleteText(int start, int end) override { replaceText(start, end, QString()); }
  void insertText(int offset, const QString& text) override { replaceText(offset, offset, text); }
  void replaceText(int start, int end, const QString& text) override {
    setSelection(0, start, end);
    const QByteArray bytes =
        sci.SendScintilla(SCI_GETCODEPAGE) == SC_CP_UTF8 ? text.toUtf8() : text.toLatin1();
    sci.SendScintilla(SCI_REPLACESEL, 0UL, bytes.constData());
  }

 private:
  static AccessText::Unit UnitOf(QAccessible::TextBoundaryType type) {
    if (type == QAccessible::CharBoundary) return AccessText::Unit::cCharacter;
    if (type == QAccessible::WordBoundary) return AccessText::Unit::cWord;
    return AccessText::Unit::cLine;
  }
  int X(long position) const {
    return static_cast<int>(sci.SendScintilla(SCI_POINTXFROMPOSITION, 0UL, position));
  }
  QString Shown(AccessText::Span span) const { return door.ToShown(reader.Text(span)); }
  QString Answer(AccessText::Span span, int* start, int* end) const {
    *start = span.start;
    *end = span.end;
    return Shown(span);
  }

  QsciScintillaBase& sci;
  mutable SciDoor door;
  const AccessText reader;
};

QAccessibleInterface* MakeAccess(const QString&, QObject* object) {
  auto* sci = qobject_cast<QsciScintillaBase*>(object);
  return sci ? new SciAccess(sci) : nullptr;
}

// The interface of an editor for screen readers; null if no screen reader listens.
SciAccess* AccessOf(QsciScintillaBase& sci) {
  if (!QAccessible::isActive()) return nullptr;
  return dynamic_cast<SciAccess*>(QAccessible::queryAccessibleInterface(&sci));
}

}  // namespace

void InstallSciAccess() {
  static const bool installed = [] {
    QAccessible::installFactory(MakeAccess);
    return true;
  }();
  static_cast<void>(installed);
}

void NotifyAccessCaret(QsciScintillaBase& sci) {
  SciAccess* access = AccessOf(sci);
  if (!access) return;
  QAccessibleTextCursorEvent event(&sci, access->cursorPosition());
  QAccessible::updateAccessibility(&event);
}

void NotifyAccessChange(QsciScintillaBase& sci, int position, int modification, const char* text,
                        int length) {
  SciAccess* access = AccessOf(sci);
  if (!access || length > cMostReported) return;
  SciDoor door(sci);
  const AccessText reader(door);
  const int offset = reader.Offset(position);
  if ((modification & SC_MOD_BEFOREINSERT) && text) {
    const QString added = door.ToShown({text, static_cast<size_t>(length)});
    QAccessibleTextInsertEvent event(&sci, offset, added);
    QAccessible::updateAccessibility(&event);
  } else if (modification & SC_MOD_BEFOREDELETE) {
    const QString gone = door.ToShown(door.Range(position, position + length));
    QAccessibleTextRemoveEvent event(&sci, offset, gone);
    QAccessible::updateAccessibility(&event);
  }
}

}  // namespace mavro
