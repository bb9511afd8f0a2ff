#include <QCheckBox>
#include <QKeyEvent>
#include <QPushButton>
#include <QStyleOptionButton>
#include <QStylePainter>

#include "NativeButtons.h"
#include "QtFactories.h"
#include "QtRowDelegate.h"
#include "QtSeenBox.h"
#include "QtStrips.h"
#include "QtText.h"
#include "Virtual.h"

namespace mavro {

namespace {

// A push button that Enter presses too, and that can be flat until the mouse is over it.
class PushButton final : public QPushButton {
 public:
  explicit PushButton(QWidget* parent) : QPushButton(parent) { setAutoDefault(false); }

  void SetHot(bool on) {
    hot = on;
    update();
  }
  void SetPictureOnly(bool on) {
    pictureOnly = on;
    update();
  }
  bool IsPictureOnly() const { return pictureOnly; }

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
      click();
    else
      QPushButton::keyPressEvent(event);
  }

  void enterEvent(QEnterEvent* event) override {
    QPushButton::enterEvent(event);
    if (hot || pictureOnly) update();
  }
  void leaveEvent(QEvent* event) override {
    QPushButton::leaveEvent(event);
    if (hot || pictureOnly) update();
  }

  void paintEvent(QPaintEvent*) override {
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    if (pictureOnly) option.text.clear();
    if ((hot || pictureOnly) && !(isEnabled() && underMouse()) && !isDown())
      option.features |= QStyleOptionButton::Flat;
    painter.drawControl(QStyle::CE_PushButton, option);
  }

 private:
  bool hot = false;
  bool pictureOnly = false;
};

class ButtonWindow final : public NativeButton {
 public:
  ButtonWindow(const CreateInfo& info, PushButton* itsButton)
      : NativeButton(info, itsButton), button(itsButton) {
    QObject::connect(button, &QPushButton::clicked, &context,
                     [this] { NotifyCommand(this, BN_CLICKED); });
  }

  void SetText(const std::string& newText) override {
    NativeButton::SetText(newText);
    button->setText(ToScreen(newText));
    if (button->IsPictureOnly()) SetAccessibleName(newText);
  }

  bool WantsKey(int virtualKey) const override { return virtualKey == VK_RETURN; }

  void SetDefault(bool on) override { button->setDefault(on); }
  void SetHot(bool on) override { button->SetHot(on); }

  void SetPicture(int stripId, int index, bool alone) override {
    QIcon picture;
    if (index >= 0) picture = StripIcon(stripId, index);
    if (!picture.isNull()) button->setIconSize(StripPictureSize(stripId));
    button->setIcon(picture);
    button->SetPictureOnly(alone && !picture.isNull());
    SetAccessibleName(alone ? text : std::string());
  }

 private:
  PushButton* const button;
  QObject context;  // ends the connections with this window
};

class CheckBoxWindow final : public NativeCheckBox {
 public:
  CheckBoxWindow(const CreateInfo& info, QCheckBox* itsBox)
      : NativeCheckBox(info, itsBox), box(itsBox) {
    QObject::connect(box, &QCheckBox::clicked, &context,
                     [this] { NotifyCommand(this, BN_CLICKED); });
  }

  void SetText(const std::string& newText) override {
    NativeCheckBox::SetText(newText);
    box->setText(ToScreen(newText));
  }

  void SetChecked(bool on) override { box->setChecked(on); }
  bool IsChecked() const override { return box->isChecked(); }

 private:
  QCheckBox* const box;
  QObject context;
};

}  // namespace

// The toolkit makes the frame from the colour of the ground, which nothing else of the box has.
void LightenFrame(QPalette& palette) {
  constexpr int cDark = 128, cShareOfText = 80;  // of 255, and in percent
  if (palette.color(QPalette::Window).lightness() < cDark)
    palette.setColor(QPalette::Window, GridColor(palette, cShareOfText));
}

NativeWindow* MakeButton(const CreateInfo& info) {
  const uint32_t kind = info.style & BS_TYPEMASK;
  if (kind == BS_GROUPBOX) return MakeGroupBox(info);
  if (kind == BS_AUTOCHECKBOX)
    return new CheckBoxWindow(info, new SeenBox<QCheckBox>(ParentWidget(info)));
  return new ButtonWindow(info, new PushButton(ParentWidget(info)));
}

}  // namespace mavro
