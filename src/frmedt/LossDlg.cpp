#include "frmedt/LossDlg.h"

#include "base/ControlBytes.h"
#include "base/Paths.h"

namespace zendry {

namespace {

constexpr int cWidth = 760, cHeight = 360;
constexpr int cMargin = 12, cGap = 6;
constexpr int cLabelHeight = 22;
constexpr int cButtonWidth = 96, cButtonHeight = 32;
constexpr int cPlaceWidth = 150;
constexpr int cScrollBar = 24;

std::string_view KindWord(FormLoss::Kind kind) {
  switch (kind) {
    case FormLoss::Kind::cLost:
      return "lost";
    case FormLoss::Kind::cChanged:
      return "changed";
    case FormLoss::Kind::cMoved:
      return "moved";
  }
  return "";
}

}  // namespace

LossDlg::LossDlg(const std::string& question, const std::vector<FormLoss>& losses) {
  text = "Form designer";
  SetSize(cWidth, cHeight);
  label.text = question;
  label.SetBounds(cMargin, cMargin, cWidth - 2 * cMargin, cLabelHeight);
  const int listTop = cMargin + cLabelHeight + cGap;
  const int buttonsTop = cHeight - cMargin - cButtonHeight;
  list.SetBounds(cMargin, listTop, cWidth - 2 * cMargin, buttonsTop - cGap - listTop);
  const int wide = (cWidth - 2 * cMargin - cPlaceWidth - cButtonWidth - cScrollBar) / 2;
  list.accessibleName = question;
  list.AddColumn("Place", cPlaceWidth);
  list.AddColumn("Is", cButtonWidth);
  list.AddColumn("Statement", wide);
  list.AddColumn("Becomes", wide);
  for (const FormLoss& loss : losses) {
    const std::string line = std::to_string(loss.line + 1);
    const std::string place = loss.path.empty() ? "line " + line : BaseName(loss.path) + ":" + line;
    list.AddCells({place, std::string(KindWord(loss.kind)), MarkControlBytes(loss.text),
                   MarkControlBytes(loss.becomes)});
  }
  list.Select(0);
  goOn.text = "Go on";
  keep.text = "Keep";
  keep.hint = "Moves these lines behind the end of their region";
  cancel.kind = mavro::Button::cCancel;
  int left = cWidth - cMargin;
  for (mavro::Button* button : {&cancel, &keep, &goOn}) {
    left -= cButtonWidth;
    button->SetBounds(left, buttonsTop, cButtonWidth, cButtonHeight);
    left -= cGap;
  }
  goOn.onClick.Add_H(this, &LossDlg::OnGoOn);
  keep.onClick.Add_H(this, &LossDlg::OnKeep);
  for (mavro::Control* control :
       std::initializer_list<mavro::Control*>{&label, &list, &goOn, &keep, &cancel})
    Add(control);
  resizable = false;
  focusControl = &keep;
}

LossDlg::Choice LossDlg::Choose() {
  Run(true);
  return choice;
}

void LossDlg::OnGoOn(mavro::NotifyArgs&) {
  choice = cGoOn;
  Close();
}

void LossDlg::OnKeep(mavro::NotifyArgs&) {
  choice = cKeep;
  Close();
}

}  // namespace zendry
