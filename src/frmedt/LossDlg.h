#pragma once

#include <mavro>
#include <string>
#include <vector>

#include "frmedt/FormCheck.h"

namespace zendry {

// Lists the statements of a form that the designer would not write back as they are, and asks what
// is to become of them.
class LossDlg : public mavro::Form {
  typedef LossDlg This;

 public:
  enum Choice { cGoOn, cKeep, cCancelled };

  // `question` is the sentence above the list.
  LossDlg(const std::string& question, const std::vector<FormLoss>& losses);

  // Escape and the close box mean cCancelled.
  Choice Choose();

  // clang-format off
	//!decl
	mavro::Label label;
	mavro::ListView list;
	mavro::Button goOn, keep, cancel;
	//!end
  // clang-format on

 private:
  void Initialize();
  void OnGoOn(mavro::NotifyArgs& args);
  void OnKeep(mavro::NotifyArgs& args);

  Choice choice = cCancelled;
};

}  // namespace zendry
