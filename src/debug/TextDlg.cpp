#include "debug/TextDlg.h"

namespace zendry {

namespace {

constexpr int cWidth = 300;
constexpr int cHeight = 118;
constexpr int cPlace = 200;
constexpr int cMargin = 15;
constexpr int cEditHeight = 26;
constexpr int cButtonWidth = 84;
constexpr int cButtonHeight = 30;

}  // namespace

TextDlg::TextDlg(const std::string& caption, const std::string& preset) {
  text = caption;
  center = false;
  resizable = false;
  SetBounds(cPlace, cPlace, cWidth, cHeight);
  edit.text = preset;
  edit.accessibleName = caption;
  edit.SetBounds(cMargin, cMargin, cWidth - 2 * cMargin, cEditHeight);
  const int top = cHeight - cMargin - cButtonHeight;
  ok.kind = mavro::Button::cOk;
  ok.SetBounds(cWidth - cMargin - 2 * cButtonWidth - 10, top, cButtonWidth, cButtonHeight);
  ok.onClick.Add_H(this, &TextDlg::OnOk);
  cancel.kind = mavro::Button::cCancel;
  cancel.SetBounds(cWidth - cMargin - cButtonWidth, top, cButtonWidth, cButtonHeight);
  Add(&edit);
  Add(&ok);
  Add(&cancel);
  onShow.Add_H(this, &TextDlg::OnShown);
  focusControl = &edit;
}

bool TextDlg::Ask() {
  return Run(true) == cOk;
}

void TextDlg::OnShown(mavro::NotifyArgs&) {
  edit.SelectAll();
}

void TextDlg::OnOk(mavro::NotifyArgs&) {
  accepted = edit.text;
}

}  // namespace zendry
