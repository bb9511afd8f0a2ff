#include <Qsci/qsciscintillabase.h>

#include <QDragMoveEvent>
#include <QDropEvent>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QPixmap>
#include <QScreen>
#include <QWheelEvent>

#include "NativeSci.h"
#include "QtFactories.h"
#include "QtSciAccess.h"
#include "SciMessages.h"
#include "Virtual.h"

namespace mavro {

namespace {

constexpr int cWheelStep = 120;
constexpr int cDarkBelow = 128;

int ToBgr(const QColor& color) {
  return color.red() | color.green() << 8 | color.blue() << 16;
}

bool IsForeign(const QString& text) {
  return std::any_of(text.begin(), text.end(), [](QChar c) { return c.unicode() >= 0x80; });
}

// The component with what an editor of ours adds: zooming by the wheel, and no interest in dropped
// files, which are the window's.
class SciWidget final : public QsciScintillaBase {
 public:
  explicit SciWidget(QWidget* parent) : QsciScintillaBase(parent) { InstallSciAccess(); }

  std::function<void()> onForeignText;
  std::function<void()> onPalette;

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    AnnounceText(event->text());
    QsciScintillaBase::keyPressEvent(event);
  }

  void inputMethodEvent(QInputMethodEvent* event) override {
    AnnounceText(event->commitString() + event->preeditString());
    QsciScintillaBase::inputMethodEvent(event);
  }

  QByteArray fromMimeData(const QMimeData* source, bool& rectangular) const override {
    AnnounceText(source->text());
    return QsciScintillaBase::fromMimeData(source, rectangular);
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
    if (event->mimeData()->hasUrls())
      event->ignore();
    else
      QsciScintillaBase::dropEvent(event);
  }

  void changeEvent(QEvent* event) override {
    QsciScintillaBase::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && onPalette) onPalette();
  }

 private:
  void AnnounceText(const QString& text) const {
    if (onForeignText && IsForeign(text)) onForeignText();
  }

  int turned = 0;  // of the wheel, and not yet a step
};

class SciWindow final : public NativeSci {
 public:
  SciWindow(const CreateInfo& info, SciWidget* itsSci) : NativeSci(info, itsSci), sci(itsSci) {
    sci->onForeignText = [this] { TellCode(cSciForeignText); };
    sci->onPalette = [this] { TellCode(cSciPaletteChanged); };
    Connect();
  }
  ~SciWindow() override {
    sci->onForeignText = nullptr;
    sci->onPalette = nullptr;
  }

  Param Send(unsigned message, Param wParam, Param lParam) const override {
    return sci->SendScintilla(message, static_cast<unsigned long>(wParam),
                              static_cast<long>(lParam));
  }

  // The component of this toolkit takes pixmaps where others take the text.
  void SendImage(unsigned message, int number, const char* xpm) const override {
    QPixmap picture;
    picture.loadFromData(QByteArray(xpm), "XPM");
    sci->SendScintilla(message, static_cast<unsigned long>(number), picture);
  }

  bool IsOnScreen(int position) const override {
    const QPoint at(static_cast<int>(Send(SCI_POINTXFROMPOSITION, 0, position)),
                    static_cast<int>(Send(SCI_POINTYFROMPOSITION, 0, position)));
    return sci->viewport()->rect().contains(at) && QGuiApplication::screenAt(at) &&
           QGuiApplication::screenAt(sci->viewport()->mapToGlobal(at));
  }

  std::string Text() const override {
    const auto* bytes = reinterpret_cast<const char*>(Send(SCI_GETCHARACTERPOINTER, 0, 0));
    return std::string(bytes, static_cast<size_t>(Send(SCI_GETLENGTH, 0, 0)));
  }

  void SetText(const std::string& newText) override {
    Send(SCI_CLEARALL, 0, 0);
    Send(SCI_ADDTEXT, static_cast<Param>(newText.size()), reinterpret_cast<Param>(newText.data()));
    Send(SCI_GOTOPOS, 0, 0);
  }

  // Fonts and colours of a text are those of its styles.
  void SetFont(const Font&) override {}
  void SetColors(Color, Color) override {}

  bool WantsKey(int virtualKey) const override {
    return virtualKey == VK_TAB || virtualKey == VK_RETURN || virtualKey == VK_ESCAPE;
  }

  SciPalette Palette() const override {
    const QPalette palette = sci->palette();
    return {ToBgr(palette.color(QPalette::Base)), ToBgr(palette.color(QPalette::Text)),
            ToBgr(palette.color(QPalette::Highlight)),
            ToBgr(palette.color(QPalette::HighlightedText)),
            ToBgr(palette.color(QPalette::Window))};
  }

  std::string DefaultFace(bool fixed) const override {
    const auto font =
        QFontDatabase::systemFont(fixed ? QFontDatabase::FixedFont : QFontDatabase::GeneralFont);
    return font.family().toStdString();
  }

 private:
  void Connect() {
    using Sci = QsciScintillaBase;
    QObject::connect(sci, &Sci::SCN_CHARADDED, &life, [this](int character) {
      SciNotification n;
      n.character = character;
      Tell(SCN_CHARADDED, n);
    });
    QObject::connect(sci, &Sci::SCN_SAVEPOINTREACHED, &life,
                     [this] { TellCode(SCN_SAVEPOINTREACHED); });
    QObject::connect(sci, &Sci::SCN_SAVEPOINTLEFT, &life, [this] { TellCode(SCN_SAVEPOINTLEFT); });
    QObject::connect(sci, &Sci::SCN_ZOOM, &life, [this] { TellCode(SCN_ZOOM); });
    QObject::connect(sci, &Sci::SCN_UPDATEUI, &life, [this](int updated) {
      if (updated & SC_UPDATE_SELECTION) TellAccessCaret(*sci);
      SciNotification n;
      n.updated = updated;
      Tell(SCN_UPDATEUI, n);
    });
    QObject::connect(sci, &Sci::SCN_MACRORECORD, &life,
                     [this](unsigned message, unsigned long wParam, void* lParam) {
                       SciNotification n;
                       n.message = message;
                       n.wParam = wParam;
                       n.text = static_cast<const char*>(lParam);
                       Tell(SCN_MACRORECORD, n);
                     });
    QObject::connect(sci, &Sci::SCN_MARGINCLICK, &life, [this](int position, int, int margin) {
      SciNotification n;
      n.position = position;
      n.margin = margin;
      Tell(SCN_MARGINCLICK, n);
    });
    QObject::connect(sci, &Sci::SCN_DWELLSTART, &life,
                     [this](int position, int x, int y) { Dwell(SCN_DWELLSTART, position, x, y); });
    QObject::connect(sci, &Sci::SCN_DWELLEND, &life,
                     [this](int position, int x, int y) { Dwell(SCN_DWELLEND, position, x, y); });
    QObject::connect(sci, &Sci::SCN_MODIFIED, &life,
                     [this](int position, int kind, const char* text, int length) {
                       TellAccessChange(*sci, position, kind, text, length);
                       SciNotification n;
                       n.position = position;
                       n.modification = kind;
                       n.text = text;
                       n.length = length;
                       Tell(SCN_MODIFIED, n);
                     });
  }

  void Dwell(int code, int position, int x, int y) {
    SciNotification n;
    n.position = position;
    n.x = x;
    n.y = y;
    Tell(code, n);
  }

  void TellCode(int code) {
    SciNotification n;
    Tell(code, n);
  }

  void Tell(int code, SciNotification& n) {
    n.from = this;
    n.id = id;
    n.code = code;
    Notify(n);
  }

  SciWidget* const sci;
  QObject life;  // what the widget tells ends with it
};

NativeWindow* MakeSci(const CreateInfo& info) {
  return new SciWindow(info, new SciWidget(ParentWidget(info)));
}

}  // namespace

bool SciPalette::IsDark() const {
  return QColor(ground & 0xFF, ground >> 8 & 0xFF, ground >> 16 & 0xFF).lightness() < cDarkBelow;
}

void RegisterSciClass() {
  RegisterNativeClass(cSciClass, MakeSci);
}

}  // namespace mavro
