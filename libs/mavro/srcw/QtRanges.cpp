#include <QLineEdit>
#include <QProgressBar>
#include <QSignalBlocker>
#include <QSlider>
#include <QSpinBox>
#include <QWheelEvent>
#include <charconv>
#include <climits>
#include <utility>

#include "NativeRanges.h"
#include "QtFactories.h"
#include "QtText.h"

namespace mavro {

namespace {

// Reads a whole number from a text. A number outside the range of int becomes the nearest int; a
// text that is not a number is zero.
int NumberOf(const QString& text) {
  const std::string bytes = FromScreen(text.trimmed());
  const char* start = bytes.c_str() + (bytes.starts_with('+') ? 1 : 0);
  int number = 0;
  const auto read = std::from_chars(start, bytes.c_str() + bytes.size(), number);
  if (read.ec != std::errc::result_out_of_range) return number;
  return *start == '-' ? INT_MIN : INT_MAX;
}

// Takes any whole number while it is typed and brings it into the range when it is committed.
// Without the focus the wheel changes nothing: the user may only be scrolling the form.
class SpinWidget final : public QSpinBox {
 public:
  explicit SpinWidget(QWidget* parent) : QSpinBox(parent) { setFocusPolicy(Qt::StrongFocus); }

  QLineEdit* Line() const { return lineEdit(); }

 protected:
  QValidator::State validate(QString& input, int&) const override {
    qsizetype at = input.startsWith('-') || input.startsWith('+') ? 1 : 0;
    for (; at < input.size(); ++at)
      if (!input[at].isDigit() || input[at].unicode() > '9') return QValidator::Invalid;
    if (input.isEmpty() || !input.back().isDigit()) return QValidator::Intermediate;
    const int number = NumberOf(input);
    const bool inside =
        number >= minimum() && number <= maximum() && textFromValue(number) == input;
    return inside ? QValidator::Acceptable : QValidator::Intermediate;
  }
  void fixup(QString& input) const override {
    input = textFromValue(std::clamp(NumberOf(input), minimum(), maximum()));
  }
  int valueFromText(const QString& input) const override {
    return std::clamp(NumberOf(input), minimum(), maximum());
  }
  // In the field that a dialog begins with, typing replaces the number, as it does after a Tab.
  void focusInEvent(QFocusEvent* event) override {
    QSpinBox::focusInEvent(event);
    const bool isFirst = !std::exchange(wasFocused, true);
    if (isFirst && event->reason() == Qt::ActiveWindowFocusReason) selectAll();
  }
  void wheelEvent(QWheelEvent* event) override {
    if (hasFocus())
      QSpinBox::wheelEvent(event);
    else
      event->ignore();
  }

 private:
  bool wasFocused = false;
};

class SliderWidget final : public QSlider {
 public:
  using QSlider::QSlider;

 protected:
  void wheelEvent(QWheelEvent* event) override {
    if (hasFocus())
      QSlider::wheelEvent(event);
    else
      event->ignore();
  }
};

class SpinWindow final : public NativeRange {
 public:
  SpinWindow(const CreateInfo& info, SpinWidget* itsBox) : NativeRange(info, itsBox), box(itsBox) {
    QObject::connect(box, &QSpinBox::valueChanged, &context,
                     [this] { NotifyCommand(this, RN_CHANGE); });
  }

  std::string Text() const override { return FromScreen(box->text()); }
  void SetText(const std::string& newText) override {
    const QSignalBlocker quiet(box);
    box->setValue(NumberOf(ToScreen(newText)));
  }
  void SetBorder(BorderStyle border) override { box->setFrame(border != BorderStyle::cNone); }

  void SetRange(int low, int high, int value) override {
    const QSignalBlocker quiet(box);
    box->setRange(low, high);
    box->setValue(value);
  }
  int Value() const override { return box->value(); }
  void Commit() override { box->interpretText(); }

 private:
  SpinWidget* const box;
  QObject context;  // ends the connections with this window
};

class TrackWindow final : public NativeRange {
 public:
  TrackWindow(const CreateInfo& info, QSlider* itsSlider)
      : NativeRange(info, itsSlider), slider(itsSlider) {
    QObject::connect(slider, &QSlider::valueChanged, &context,
                     [this] { NotifyCommand(this, RN_CHANGE); });
  }

  void SetRange(int low, int high, int value) override {
    const QSignalBlocker quiet(slider);
    slider->setRange(low, high);
    slider->setValue(value);
  }
  int Value() const override { return slider->value(); }
  void SetOrientation(Orientation orientation) override {
    slider->setOrientation(orientation == cHorizontal ? Qt::Horizontal : Qt::Vertical);
    slider->setInvertedAppearance(orientation == cVertical);
    slider->setInvertedControls(orientation == cVertical);
  }

 private:
  QSlider* const slider;
  QObject context;
};

class ProgressWindow final : public NativeRange {
 public:
  ProgressWindow(const CreateInfo& info, QProgressBar* itsBar)
      : NativeRange(info, itsBar), bar(itsBar) {
    bar->setTextVisible(false);
  }

  void SetRange(int low, int high, int value) override {
    const bool endless = low == high;
    bar->setRange(endless ? 0 : low, endless ? 0 : high);
    bar->setValue(value);
    shown = value;
  }
  int Value() const override { return shown; }

 private:
  QProgressBar* const bar;
  int shown = 0;
};

}  // namespace

NativeWindow* MakeSpinEdit(const CreateInfo& info) {
  return new SpinWindow(info, new SpinWidget(ParentWidget(info)));
}

NativeWindow* MakeTrackBar(const CreateInfo& info) {
  return new TrackWindow(info, new SliderWidget(Qt::Horizontal, ParentWidget(info)));
}

NativeWindow* MakeProgressBar(const CreateInfo& info) {
  return new ProgressWindow(info, new QProgressBar(ParentWidget(info)));
}

}  // namespace mavro
