#include <Qsci/qsciscintillabase.h>

#include <QDragMoveEvent>
#include <QDropEvent>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPixmap>
#include <QScreen>
#include <QWheelEvent>
#include <utility>

#include "NativeSci.h"
#include "QtFactories.h"
#include "QtSciAccess.h"
#include "QtSciList.h"
#include "QtTypedLine.h"
#include "SciMessages.h"
#include "Virtual.h"

namespace mavro {

namespace {

constexpr int cWheelStep = 120;
constexpr int cDarkBelow = 128;

// Letters are never typed with these keys held: that of the third level of a keyboard is none of
// them.
constexpr auto cCommandModifiers = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
// Keys that move in an open list.
constexpr int cListKeys[] = {Qt::Key_Up,       Qt::Key_Down, Qt::Key_PageUp,
                             Qt::Key_PageDown, Qt::Key_Home, Qt::Key_End};

bool IsForeign(const QString& text) {
  return std::any_of(text.begin(), text.end(), [](QChar c) { return c.unicode() >= 0x80; });
}

// The notifications of the component while it inserts a letter.
bool IsOfLetter(int code) {
  return code == SCN_MODIFIED || code == SCN_CHARADDED || code == SCN_SAVEPOINTLEFT ||
         code == SCN_SAVEPOINTREACHED;
}

// Text for the clipboard that is made when a program asks for it: a selection may be a large part
// of a large file, and is announced again at each step of the mouse.
class LateText final : public QMimeData {
 public:
  explicit LateText(std::function<std::string()> newMake) : make(std::move(newMake)) {}

  bool hasFormat(const QString& type) const override { return type == Format(); }
  QStringList formats() const override { return {Format()}; }

 protected:
  QVariant retrieveData(const QString& type, QMetaType) const override {
    return type == Format() ? QVariant(QString::fromStdString(make())) : QVariant();
  }

 private:
  static QString Format() { return QStringLiteral("text/plain"); }

  const std::function<std::string()> make;
};

// The component with our additions: the wheel zooms, and dropped files are left to the window.
class SciWidget final : public QsciScintillaBase {
 public:
  explicit SciWidget(QWidget* parent) : QsciScintillaBase(parent) { InstallSciAccess(); }

  NativeSci* window = nullptr;
  TypedLine typedLine{*this};
  SciList list{*this, [this] { SendScintilla(SCI_AUTOCCOMPLETE); }};
  std::function<void()> onForeignText;
  std::function<void()> onPalette;
  std::function<void(int code)> onTyping;  // the codes of keys
  std::function<bool(int step)> onStep;    // cSciWillStep

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    const bool prints = !event->text().isEmpty() && event->text().at(0).isPrint();
    if (prints && (event->modifiers() & cCommandModifiers)) return PassWithoutText(*event);
    AnnounceText(event->text());
    if (onTyping) AnnounceListKey(event->key());
    if (TakesStep(*event)) return event->accept();
    if (TakesKey(event->key(), event->modifiers(), prints ? event->text() : QString())) {
      if (onTyping) onTyping(cSciKeyDone);
      return event->accept();
    }
    if (prints && onTyping) onTyping(cSciWillType);
    if (prints) typedLine.Begin();
    QsciScintillaBase::keyPressEvent(event);
    typedLine.End();
    if (prints && onTyping) onTyping(cSciTyped);
    if (onTyping) onTyping(cSciKeyDone);
  }

  void inputMethodEvent(QInputMethodEvent* event) override {
    AnnounceText(event->commitString() + event->preeditString());
    const bool wasComposing = std::exchange(isComposing, !event->preeditString().isEmpty());
    if (!wasComposing && TakesKey(0, Qt::NoModifier, event->commitString())) return event->accept();
    if (onTyping) onTyping(cSciWillType);
    QsciScintillaBase::inputMethodEvent(event);
    if (onTyping) onTyping(cSciTyped);
  }

  QByteArray fromMimeData(const QMimeData* source, bool& rectangular) const override {
    AnnounceText(source->text());
    const QByteArray text = QsciScintillaBase::fromMimeData(source, rectangular);
    if (!window || !window->fold) return text;
    std::string pasted = text.toStdString();
    if (!rectangular && !drops && window->pasted) pasted = window->pasted(std::move(pasted));
    return QByteArray::fromStdString(window->fold(pasted));
  }

  QMimeData* toMimeData(const QByteArray& text, bool rectangular) const override {
    std::string shown = text.toStdString();
    if (window && window->copied) shown = window->copied(std::move(shown));
    const auto whole = window && window->wholeOf ? window->wholeOf(shown) : nullptr;
    if (!whole) return QsciScintillaBase::toMimeData(QByteArray::fromStdString(shown), rectangular);
    if (!rectangular) return new LateText(whole);
    return QsciScintillaBase::toMimeData(QByteArray::fromStdString(whole()), rectangular);
  }

  // On X11 the component takes the Ctrl key for the Alt key. Here Alt selects a column and Ctrl
  // adds a caret.
  void mousePressEvent(QMouseEvent* event) override {
    const auto time = static_cast<unsigned long>(event->timestamp());
    if (list.IsRestOfClick(event->globalPosition().toPoint(), time)) return event->accept();
    list.ForgetClick();
    const bool isLeft = event->button() == Qt::LeftButton;
    if (isLeft && (event->modifiers() & Qt::AltModifier)) return PressForColumn(*event);
    addsCaret = isLeft && event->modifiers() == Qt::ControlModifier && !IsInMargins(*event);
    if (!addsCaret) return QsciScintillaBase::mousePressEvent(event);
    AddCaret(*event, false);
  }

  void mouseDoubleClickEvent(QMouseEvent* event) override {
    if (list.HasClicked()) return event->accept();
    if (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) return mousePressEvent(event);
    QsciScintillaBase::mouseDoubleClickEvent(event);
  }

  void mouseMoveEvent(QMouseEvent* event) override {
    if (!addsCaret) return QsciScintillaBase::mouseMoveEvent(event);
    AddCaret(*event, true);
  }

  void mouseReleaseEvent(QMouseEvent* event) override {
    if (!addsCaret) return QsciScintillaBase::mouseReleaseEvent(event);
    addsCaret = false;
    event->accept();
  }

  void wheelEvent(QWheelEvent* event) override {
    if (!(event->modifiers() & Qt::ControlModifier)) {
      turned = 0;
      QsciScintillaBase::wheelEvent(event);
      return;
    }
    turned += event->angleDelta().y();
    for (; turned >= cWheelStep; turned -= cWheelStep) SendScintilla(SCI_ZOOMIN);
    for (; turned <= -cWheelStep; turned += cWheelStep) SendScintilla(SCI_ZOOMOUT);
    event->accept();
  }

  void dragEnterEvent(QDragEnterEvent* event) override {
    if (event->mimeData()->hasUrls())
      event->ignore();
    else
      QsciScintillaBase::dragEnterEvent(event);
  }

  void dragMoveEvent(QDragMoveEvent* event) override {
    if (event->mimeData()->hasUrls())
      event->ignore();
    else
      QsciScintillaBase::dragMoveEvent(event);
  }

  void dropEvent(QDropEvent* event) override {
    if (event->mimeData()->hasUrls()) return event->ignore();
    drops = true;
    QsciScintillaBase::dropEvent(event);
    drops = false;
  }

  void changeEvent(QEvent* event) override {
    QsciScintillaBase::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && onPalette) onPalette();
  }

 private:
  void AnnounceText(const QString& text) const {
    if (onForeignText && IsForeign(text)) onForeignText();
  }

  // A key that is no command of the component is no letter either.
  void PassWithoutText(QKeyEvent& event) {
    // The plus of most keyboards needs the Shift key, so no hotkey of "Ctrl" and plus matches.
    const bool isPlus = event.key() == Qt::Key_Plus && (event.modifiers() & Qt::ControlModifier);
    if (isPlus) SendScintilla(SCI_ZOOMIN);
    if (isPlus) return event.accept();
    QKeyEvent bare(event.type(), event.key(), event.modifiers(), event.nativeScanCode(),
                   event.nativeVirtualKey(), event.nativeModifiers(), QString(),
                   event.isAutoRepeat());
    QsciScintillaBase::keyPressEvent(&bare);
    event.setAccepted(bare.isAccepted());
  }

  void PressForColumn(const QMouseEvent& event) {
    const auto held = (event.modifiers() & Qt::ShiftModifier) | Qt::ControlModifier;
    QMouseEvent press(QEvent::MouseButtonPress, event.position(), event.globalPosition(),
                      event.button(), event.buttons(), held);
    addsCaret = false;
    QsciScintillaBase::mousePressEvent(&press);
  }

  bool IsInMargins(const QMouseEvent& event) const {
    constexpr unsigned long cMargins = 5;
    long width = 0;
    for (unsigned long i = 0; i < cMargins; ++i) width += SendScintilla(SCI_GETMARGINWIDTHN, i);
    return event.position().x() < static_cast<qreal>(width);
  }

  void AddCaret(QMouseEvent& event, bool drags) {
    const QPoint at = event.position().toPoint();
    const long place = SendScintilla(SCI_POSITIONFROMPOINT, static_cast<unsigned long>(at.x()),
                                     static_cast<long>(at.y()));
    if (window && window->caretAdded) window->caretAdded(static_cast<int>(place), drags);
    event.accept();
  }

  bool TakesKey(int key, Qt::KeyboardModifiers modifiers, const QString& text) const {
    if (!window || !window->keyed) return false;
    const QByteArray typed = text.toUtf8();
    return window->keyed({VirtualKeyOf(key), modifiers.testFlag(Qt::ShiftModifier),
                          (modifiers & cCommandModifiers) != 0,
                          modifiers == (Qt::AltModifier | Qt::ShiftModifier),
                          std::string_view(typed.data(), static_cast<size_t>(typed.size()))});
  }

  void AnnounceListKey(int key) const {
    if (key == Qt::Key_Return || key == Qt::Key_Enter) onTyping(cSciWillEnter);
    if (key == Qt::Key_Escape) onTyping(cSciWillCancel);
    if (std::find(std::begin(cListKeys), std::end(cListKeys), key) != std::end(cListKeys))
      onTyping(cSciWillMove);
  }

  // The arrows change the signature of a tip that has several, unless a list is open.
  bool TakesStep(const QKeyEvent& event) const {
    const bool isUp = event.key() == Qt::Key_Up;
    const auto modifiers = event.modifiers() & ~Qt::KeypadModifier;
    if ((!isUp && event.key() != Qt::Key_Down) || modifiers != Qt::NoModifier) return false;
    return onStep && onStep(isUp ? -1 : 1);
  }

  bool drops = false;
  bool addsCaret = false;    // the mouse is held for one
  bool isComposing = false;  // a letter of several keys is shown and not yet typed
  int turned = 0;            // of the wheel, and not yet a step
};

class SciWindow final : public NativeSci {
 public:
  SciWindow(const CreateInfo& info, SciWidget* itsSci) : NativeSci(info, itsSci), sci(itsSci) {
    sci->window = this;
    sci->onTyping = [this](int code) { SendCode(code); };
    sci->onStep = [this](int step) {
      SciNotification n;
      n.step = step;
      return Report(cSciWillStep, n) != 0;
    };
    sci->onForeignText = [this] { SendCode(cSciForeignText); };
    sci->onPalette = [this] { SendCode(cSciPaletteChanged); };
    Connect();
  }
  ~SciWindow() override {
    sci->window = nullptr;
    sci->onTyping = nullptr;
    sci->onStep = nullptr;
    sci->onForeignText = nullptr;
    sci->onPalette = nullptr;
    sci->list.SetNotes(nullptr);
  }

  Param Send(unsigned message, Param wParam, Param lParam) const override {
    sci->typedLine.Before(message);
    return sci->SendScintilla(message, static_cast<unsigned long>(wParam),
                              static_cast<long>(lParam));
  }

  // This toolkit's version of the component takes pixmaps; other versions take the text.
  void SendImage(unsigned message, int number, const char* xpm) const override {
    sci->typedLine.End();
    QPixmap picture;
    picture.loadFromData(QByteArray(xpm), "XPM");
    sci->SendScintilla(message, static_cast<unsigned long>(number), picture);
  }

  void SetListNotes(std::function<ListNote(const std::string&)> noteOf) override {
    sci->list.SetNotes(std::move(noteOf));
  }

  bool IsOnScreen(int position) const override {
    const QPoint at(static_cast<int>(Send(SCI_POINTXFROMPOSITION, 0, position)),
                    static_cast<int>(Send(SCI_POINTYFROMPOSITION, 0, position)));
    return sci->viewport()->rect().contains(at) && QGuiApplication::screenAt(at) &&
           QGuiApplication::screenAt(sci->viewport()->mapToGlobal(at));
  }

  // Unlike the property of the widget, the attribute asks for no painting when it goes.
  void SetPainting(Painting painting) override {
    sci->viewport()->setAttribute(Qt::WA_UpdatesDisabled, painting == Painting::cHeld);
    if (painting == Painting::cGoesOnWithAll) sci->viewport()->update();
  }

  std::string Text() const override {
    const auto* bytes = reinterpret_cast<const char*>(Send(SCI_GETCHARACTERPOINTER, 0, 0));
    std::string shown(bytes, static_cast<size_t>(Send(SCI_GETLENGTH, 0, 0)));
    const auto whole = wholeOf ? wholeOf(shown) : nullptr;
    return whole ? whole() : shown;
  }

  void SetText(const std::string& newText) override {
    const std::string shown = fold ? fold(newText) : newText;
    Send(SCI_CLEARALL, 0, 0);
    Send(SCI_ADDTEXT, static_cast<Param>(shown.size()), reinterpret_cast<Param>(shown.data()));
    Send(SCI_GOTOPOS, 0, 0);
  }

  // The styles decide the fonts and colours of a text.
  void SetFont(const Font&) override {}
  void SetColors(Color, Color) override {}

  bool WantsKey(int virtualKey) const override {
    return virtualKey == VK_TAB || virtualKey == VK_RETURN || virtualKey == VK_ESCAPE;
  }

  bool IsDark() const override {
    return sci->palette().color(QPalette::Base).lightness() < cDarkBelow;
  }

  std::string DefaultFace(FaceKind kind) const override {
    const auto font = QFontDatabase::systemFont(
        kind == FaceKind::cFixed ? QFontDatabase::FixedFont : QFontDatabase::GeneralFont);
    return font.family().toStdString();
  }

 private:
  void Connect() {
    using Sci = QsciScintillaBase;
    QObject::connect(sci, &Sci::SCN_CHARADDED, &life, [this](int character) {
      SciNotification n;
      n.character = character;
      Report(SCN_CHARADDED, n);
    });
    QObject::connect(sci, &Sci::SCN_SAVEPOINTREACHED, &life,
                     [this] { SendCode(SCN_SAVEPOINTREACHED); });
    QObject::connect(sci, &Sci::SCN_SAVEPOINTLEFT, &life, [this] { SendCode(SCN_SAVEPOINTLEFT); });
    QObject::connect(sci, &Sci::SCN_AUTOCCOMPLETED, &life,
                     [this](const char* taken, int position, int, int) {
                       SciNotification n;
                       n.position = position;
                       n.text = taken;
                       Report(SCN_AUTOCCOMPLETED, n);
                     });
    QObject::connect(sci, &Sci::SCN_MODIFYATTEMPTRO, &life,
                     [this] { SendCode(SCN_MODIFYATTEMPTRO); });
    QObject::connect(sci, &Sci::SCN_ZOOM, &life, [this] { SendCode(SCN_ZOOM); });
    QObject::connect(sci, &Sci::SCN_UPDATEUI, &life, [this](int updated) {
      if (updated & SC_UPDATE_SELECTION) NotifyAccessCaret(*sci);
      SciNotification n;
      n.updated = updated;
      Report(SCN_UPDATEUI, n);
    });
    QObject::connect(sci, &Sci::SCN_MACRORECORD, &life,
                     [this](unsigned message, unsigned long wParam, void* lParam) {
                       SciNotification n;
                       n.message = message;
                       n.wParam = wParam;
                       n.text = static_cast<const char*>(lParam);
                       Report(SCN_MACRORECORD, n);
                     });
    QObject::connect(sci, &Sci::SCN_MARGINCLICK, &life, [this](int position, int, int margin) {
      SciNotification n;
      n.position = position;
      n.margin = margin;
      Report(SCN_MARGINCLICK, n);
    });
    QObject::connect(sci, &Sci::SCN_DOUBLECLICK, &life, [this](int position, int, int) {
      SciNotification n;
      n.position = position;
      Report(SCN_DOUBLECLICK, n);
    });
    QObject::connect(sci, &Sci::SCN_CALLTIPCLICK, &life, [this](int place) {
      SciNotification n;
      n.position = place;
      Report(SCN_CALLTIPCLICK, n);
    });
    QObject::connect(sci, &Sci::SCN_DWELLSTART, &life,
                     [this](int position, int x, int y) { Dwell(SCN_DWELLSTART, position, x, y); });
    QObject::connect(sci, &Sci::SCN_DWELLEND, &life,
                     [this](int position, int x, int y) { Dwell(SCN_DWELLEND, position, x, y); });
    QObject::connect(sci, &Sci::SCN_MODIFIED, &life,
                     [this](int position, int kind, const char* text, int length, int, int, int,
                            int, int token) {
                       NotifyAccessChange(*sci, position, kind, text, length);
                       SciNotification n;
                       n.position = position;
                       n.modification = kind;
                       n.length = length;
                       n.token = token;
                       Report(SCN_MODIFIED, n);
                     });
  }

  void Dwell(int code, int position, int x, int y) {
    SciNotification n;
    n.position = position;
    n.x = x;
    n.y = y;
    Report(code, n);
  }

  void SendCode(int code) {
    SciNotification n;
    Report(code, n);
  }

  Param Report(int code, SciNotification& n) {
    if (!IsOfLetter(code)) sci->typedLine.End();
    n.from = this;
    n.id = id;
    n.code = code;
    return Notify(n);
  }

  SciWidget* const sci;
  QObject life;  // the widget's signals are connected until it is destroyed
};

NativeWindow* MakeSci(const CreateInfo& info) {
  return new SciWindow(info, new SciWidget(ParentWidget(info)));
}

}  // namespace

void RegisterSciClass() {
  RegisterNativeClass(cSciClass, MakeSci);
}

}  // namespace mavro
