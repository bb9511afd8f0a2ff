#pragma once

#include <functional>
#include <mavro>
#include <string>
#include <vector>

#include "frmedt/CtrlReg.h"
#include "frmedt/FormData.h"

namespace zendry {

// The page of the designer that shows the events of the selected control and the methods that
// handle them.
class EventBox : public mavro::TabPage {
 public:
  // `itsForm` outlives it.
  explicit EventBox(const FormData& itsForm);

  void Show(CtrlRec& rec);
  // Shows no control.
  void Clear();

  // Binds the event of a row to a method, which need not exist.
  void SetHandler(int row, const std::string& name);
  // Takes the binding away; the method stays.
  void Disconnect(int row);
  // Binds the event, to a method of a new name if it has none, and asks for the method to be shown:
  // it is made if the class doesn't have it.
  void AddHandler(int row);
  // Takes the binding away and asks for the method to be removed.
  void RemoveHandler(int row);

  // A binding has changed, in the model already.
  std::function<void(CtrlRec&)> onBind;
  // A method of the form's class is wanted, or wanted no more. This ends the session.
  using Request = std::function<void(const std::string& className, const std::string& method,
                                     const std::string& argType)>;
  Request onRequestHandler, onRequestRemoval;

  mavro::PropertyBox box;

 private:
  void OnChange(mavro::ItemArgs& args);
  void OnDoubleClick(mavro::ItemArgs& args);
  void AskFor(int row);
  bool HasRow(int row) const;
  const EventDef& EventOf(int row) const { return *rows[static_cast<size_t>(row)]; }
  std::string HandlerName(int row) const;
  void Bind(int row, const std::string& name);

  const FormData& form;
  std::vector<const EventDef*> rows;
  CtrlRec* rec = nullptr;
};

// The name of a new method for an event of a control: "Button1DoOnClick".
std::string NewHandlerName(const CtrlRec& rec, std::string event);

}  // namespace zendry
