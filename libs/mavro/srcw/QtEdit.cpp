#include <QLineEdit>
#include <QValidator>
#include <climits>

#include "Edit.h"
#include "EditText.h"
#include "NativeEdits.h"
#include "QtFactories.h"
#include "QtMemo.h"
#include "QtText.h"

namespace mavro {

namespace {

// Accepts the text that may be typed into an edit of a data type. A text that the program sets is
// not changed; if it doesn't suit, the user may edit it freely until it does.
class TypingFilter final : public QValidator {
 public:
  explicit TypingFilter(QObject* parent) : QValidator(parent) {}

  State validate(QString& input, int&) const override {
    if (dataType == Edit::cUpperCase && typing)
      for (QChar& character : input) character = character.toUpper();
    return CheckText(dataType, FromScreen(input)) == TextFit::cNo ? Invalid : Acceptable;
  }

  int dataType = Edit::cNormal;
  bool typing = true;
};

class EditWindow final : public NativeEdit {
 public:
  EditWindow(const CreateInfo& info, QLineEdit* itsEdit)
      : NativeEdit(info, itsEdit), edit(itsEdit), filter(new TypingFilter(itsEdit)) {
    edit->setMaxLength(INT_MAX);
    edit->setValidator(filter);
    QObject::connect(edit, &QLineEdit::textEdited, &context,
                     [this] { NotifyCommand(this, EN_CHANGE); });
  }

  std::string Text() const override { return FromScreen(edit->text()); }
  void SetText(const std::string& newText) override {
    filter->typing = false;
    edit->setText(ToScreen(newText));
    filter->typing = true;
  }

  void SetReadOnly(bool on) override { edit->setReadOnly(on); }
  void SetDataType(int dataType) override {
    filter->dataType = dataType;
    edit->setEchoMode(dataType == Edit::cPassword ? QLineEdit::Password : QLineEdit::Normal);
    // The toolkit checks a text only when it changes.
    const std::string kept = Text();
    edit->clear();
    SetText(kept);
  }
  void SetBorder(BorderStyle border) override { edit->setFrame(border != BorderStyle::cNone); }
  void SelectAll() override { edit->selectAll(); }

 private:
  QLineEdit* const edit;
  TypingFilter* const filter;
  QObject context;  // ends the connections with this window
};

}  // namespace

NativeWindow* MakeEdit(const CreateInfo& info) {
  if (info.style & ES_MULTILINE) return MakeMemo(info);
  return new EditWindow(info, new QLineEdit(ParentWidget(info)));
}

}  // namespace mavro
