#include "frmedt/LossDlg.h"

#include "base/ControlBytes.h"
#include "base/Paths.h"

namespace zendry {

namespace {

constexpr int cPlaceWidth = 150;
constexpr int cKindWidth = 72;
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
  Initialize();
  label.text = question;
  const int wide = (list.width - cPlaceWidth - cKindWidth - cScrollBar) / 2;
  list.accessibleName = question;
  list.AddColumn("Place", cPlaceWidth);
  list.AddColumn("Is", cKindWidth);
  list.AddColumn("Statement", wide);
  list.AddColumn("Becomes", wide);
  for (const FormLoss& loss : losses) {
    const std::string line = std::to_string(loss.line + 1);
    const std::string place = loss.path.empty() ? "line " + line : BaseName(loss.path) + ":" + line;
    list.AddCells({place, std::string(KindWord(loss.kind)), MarkControlBytes(loss.text),
                   MarkControlBytes(loss.becomes)});
  }
  list.Select(0);
  focusControl = &keep;
}

void LossDlg::Initialize() {
  using mavro::Button;
  // clang-format off
	//!init
	this->SetBounds(0, 0, 860, 360);
	this->text = "Form designer";
	this->resizable = false;
	//!<Label>
	label.SetBounds(12, 12, 836, 22);
	this->Add(&label);
	//!<ListView>
	list.SetBounds(12, 40, 836, 270);
	this->Add(&list);
	//!<Button>
	goOn.SetBounds(548, 316, 96, 32);
	goOn.text = "Go on";
	goOn.onClick.Add_H(this, &This::OnGoOn);
	this->Add(&goOn);
	//!<Button>
	keep.SetBounds(650, 316, 96, 32);
	keep.text = "Keep";
	keep.toolTip = "Moves these lines behind the end of their region";
	keep.onClick.Add_H(this, &This::OnKeep);
	this->Add(&keep);
	//!<Button>
	cancel.SetBounds(752, 316, 96, 32);
	cancel.kind = Button::cCancel;
	this->Add(&cancel);
	//!end
  // clang-format on
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
