#include <QLabel>

#include "NativeButtons.h"
#include "QtFactories.h"
#include "QtText.h"

namespace mavro {

namespace {

// A text without its mnemonic mark; "&&" means the sign itself.
QString WithoutMnemonic(const QString& text) {
  QString plain;
  for (qsizetype i = 0; i < text.size(); ++i) {
    if (text[i] == '&' && i + 1 < text.size()) ++i;
    plain += text[i];
  }
  return plain;
}

class LabelWindow final : public NativeLabel {
 public:
  LabelWindow(const CreateInfo& info, QLabel* itsLabel)
      : NativeLabel(info, itsLabel), label(itsLabel) {
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    SetAlign(info.style & SS_CENTER  ? Align::cCenter
             : info.style & SS_RIGHT ? Align::cRight
                                     : Align::cLeft);
  }

  void SetText(const std::string& newText) override {
    NativeLabel::SetText(newText);
    ShowText();
  }

  void SetAlign(Align align) override {
    static constexpr Qt::AlignmentFlag cAligns[] = {Qt::AlignLeft, Qt::AlignHCenter,
                                                    Qt::AlignRight};
    label->setAlignment(cAligns[static_cast<int>(align)] | Qt::AlignTop);
  }

  void SetBuddy(NativeWindow* buddy) override {
    label->setBuddy(buddy ? buddy->FocusWidget() : nullptr);
    if (buddy) buddy->SetAccessibleName(std::string());  // by the label's text, not the hint
    ShowText();
  }

 private:
  // Without a buddy the toolkit would show the mnemonic mark as a letter.
  void ShowText() {
    const QString shown = ToScreen(text);
    label->setText(label->buddy() ? shown : WithoutMnemonic(shown));
  }

  QLabel* const label;
};

}  // namespace

NativeWindow* MakeLabel(const CreateInfo& info) {
  return new LabelWindow(info, new QLabel(ParentWidget(info)));
}

}  // namespace mavro
