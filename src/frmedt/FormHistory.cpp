#include "frmedt/FormHistory.h"

#include <algorithm>

namespace zendry {

FormHistory::FormHistory(FormData& itsForm) : form(itsForm) {
  ids[&form.root] = 0;
  states.push_back(Take(nullptr));
}

int FormHistory::IdOf(const CtrlRec* rec) {
  if (!rec) return -1;
  const auto [place, isNew] = ids.emplace(rec, lastId + 1);
  if (isNew) ++lastId;
  return place->second;
}

FormHistory::State FormHistory::Take(const State* before) {
  std::unordered_map<int, std::shared_ptr<const RecState>> known;
  if (before)
    for (const auto& each : *before) known[each->id] = each;
  State state;
  std::unordered_map<const CtrlRec*, int> present;
  for (const CtrlRec* rec : form.controls) {
    const int id = IdOf(rec);
    present[rec] = id;
    RecState taken{
        id,          IdOf(rec->parent), rec->name,   rec->className, rec->declClass, rec->classDef,
        rec->hasAdd, rec->props,        rec->events, rec->kept};
    const auto found = known.find(id);
    if (found != known.end() && *found->second == taken)
      state.push_back(found->second);
    else
      state.push_back(std::make_shared<const RecState>(std::move(taken)));
  }
  // A record made later may get the address of one that is gone.
  ids = std::move(present);
  return state;
}

bool FormHistory::SameState(const State& left, const State& right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](const auto& a, const auto& b) { return a == b || *a == *b; });
}

bool FormHistory::SameShape(const State& left, const State& right) {
  return std::equal(
      left.begin(), left.end(), right.begin(), right.end(), [](const auto& a, const auto& b) {
        return a == b || (a->id == b->id && a->parent == b->parent && a->classDef == b->classDef);
      });
}

bool FormHistory::Commit() {
  State state = Take(&states[now]);
  if (SameState(state, states[now])) return false;
  states.resize(now + 1);
  states.push_back(std::move(state));
  ++now;
  return true;
}

bool FormHistory::IsChanged() const {
  return !SameState(states[now], states.front());
}

void FormHistory::Fill(CtrlRec& rec, const RecState& from) {
  rec.name = from.name;
  rec.className = from.className;
  rec.declClass = from.declClass;
  rec.classDef = from.classDef;
  rec.hasAdd = from.hasAdd;
  rec.props = from.props;
  rec.events = from.events;
  rec.kept = from.kept;
}

FormHistory::Outcome FormHistory::GoTo(size_t step, const std::function<void()>& beforeRebuild) {
  const State& from = states[now];
  const State& to = states[step];
  now = step;
  Outcome outcome;
  if (!SameShape(from, to)) {
    beforeRebuild();
    Rebuild(to);
    outcome.isRebuilt = true;
    return outcome;
  }
  for (size_t i = 0; i < to.size(); ++i) {
    if (from[i] == to[i]) continue;
    Fill(*form.controls[i], *to[i]);
    outcome.changed.push_back(form.controls[i]);
  }
  return outcome;
}

void FormHistory::Rebuild(const State& state) {
  while (form.controls.size() > 1) form.DeleteRecord(*form.controls.back());
  ids.clear();
  std::unordered_map<int, CtrlRec*> made;
  for (const auto& each : state) {
    CtrlRec* rec = &form.root;
    if (each->id != 0) {
      const bool isTaken = form.Find(each->name) != nullptr;
      rec = isTaken && each->classDef ? &form.AddControl(*each->classDef, form.root, each->name)
                                      : &form.FindOrAdd(each->name, each->className);
    }
    Fill(*rec, *each);
    made[each->id] = rec;
    ids[rec] = each->id;
  }
  for (const auto& each : state) {
    const auto parent = made.find(each->parent);
    made[each->id]->parent = parent == made.end() ? nullptr : parent->second;
  }
}

}  // namespace zendry
