#pragma once

#include <functional>
#include <memory>
#include <unordered_map>
#include <vector>

#include "frmedt/FormData.h"

namespace zendry {

// The states that a form has had while it was designed, for undo and redo without limit. A step
// costs the records that it has changed; the others are shared with the step before.
class FormHistory {
 public:
  // The present state of the form is the first one.
  explicit FormHistory(FormData& itsForm);
  FormHistory(const FormHistory&) = delete;
  FormHistory& operator=(const FormHistory&) = delete;

  // Ends a step: the present state follows the one before, and what was undone is gone. False if
  // nothing has changed.
  bool Commit();
  bool CanUndo() const { return now > 0; }
  bool CanRedo() const { return now + 1 < states.size(); }
  // True if the form is not as it was at first.
  bool IsChanged() const;

  // What has become of the model.
  struct Outcome {
    bool isRebuilt = false;         // all records but the form's are new ones
    std::vector<CtrlRec*> changed;  // otherwise: the records with other values
  };
  // Puts the form into the state one step before or after the present one; there must be one.
  // `beforeRebuild` is called while the records that are about to be destroyed still exist.
  Outcome Undo(const std::function<void()>& beforeRebuild) { return GoTo(now - 1, beforeRebuild); }
  Outcome Redo(const std::function<void()>& beforeRebuild) { return GoTo(now + 1, beforeRebuild); }

 private:
  // A record's data at one time. `parent` is an id; that of the form is 0, none is -1.
  struct RecState {
    int id = 0;
    int parent = -1;
    std::string name, className, declClass;
    const CtrlClass* classDef = nullptr;
    bool hasAdd = false;
    std::vector<PropValue> props;
    std::vector<EventBinding> events;
    std::vector<std::string> kept;

    friend bool operator==(const RecState&, const RecState&) = default;
  };
  using State = std::vector<std::shared_ptr<const RecState>>;  // in the order of the records

  State Take(const State* before);
  int IdOf(const CtrlRec* rec);
  Outcome GoTo(size_t step, const std::function<void()>& beforeRebuild);
  void Rebuild(const State& state);
  static bool SameShape(const State& left, const State& right);
  static bool SameState(const State& left, const State& right);
  static void Fill(CtrlRec& rec, const RecState& from);

  FormData& form;
  std::vector<State> states;
  size_t now = 0;
  int lastId = 0;
  std::unordered_map<const CtrlRec*, int> ids;
};

}  // namespace zendry
