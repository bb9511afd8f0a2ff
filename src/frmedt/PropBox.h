#pragma once

#include <functional>
#include <mavro>
#include <string>
#include <string_view>
#include <vector>

#include "frmedt/CtrlReg.h"
#include "frmedt/FormData.h"

namespace zendry {

// The page of the designer that shows the properties of the selected controls and takes new values
// for them.
class PropBox : public mavro::TabPage {
 public:
  // `itsForm` outlives it.
  explicit PropBox(const FormData& itsForm);

  // Shows a control: its class, its name unless it is the form, and its properties.
  void Show(CtrlRec& rec) { Show(std::vector<CtrlRec*>{&rec}); }
  // Shows what several controls have in common: rows of one name and type. A value in which they
  // differ is empty. Without any control the box is empty.
  void Show(std::vector<CtrlRec*> newRecs);
  // Sets the value of the row of a property, and the text that it shows, without onCommit: for
  // controls that are being moved. Only while one control is shown.
  void SetValue(std::string_view property, const std::string& text);

  // Shows the values anew: a step has changed them by another road.
  void Renew();

  // The user has changed a value, which is in the model already. For the rows of class and name,
  // the value is the box's own and its row has the kind cClassKind or cNameKind.
  std::function<void(CtrlRec&, PropValue&)> onCommit;
  // Called once after the last control of a change.
  std::function<void()> onDone;
  // A name can't be taken; the text says why.
  std::function<void(const std::string&)> onRefused;

  mavro::PropertyBox box;

 private:
  // A row and the values it stands for, one for each control.
  struct Row {
    const PropDef* pd = nullptr;
    std::vector<PropValue*> values;

    std::string Common() const;
  };

  void AddRows();
  void AddCommonRow(const PropDef& pd);
  void ShowRow(int number);
  std::string ShownText(const Row& row) const;
  void OnChange(mavro::ItemArgs& args);
  void SetNameOrClass(const Row& row, const std::string& text, int number);
  void SetValues(const Row& row, const std::string& text, int number);

  const FormData& form;
  PropValue classValue, nameValue;
  std::vector<CtrlRec*> recs;
  std::vector<Row> rows;
  bool updating = false;
};

}  // namespace zendry
