#pragma once

#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "Core.h"
#include "frmedt/FormData.h"

namespace zendry {

// The controls of a form that exist while it is designed or tried: makes them from records, gives
// them the values of records, and destroys them. Owns the controls.
class LiveControls {
 public:
  // On the surface some controls are painted placeholders, because they would misbehave there. In a
  // preview all classes that the framework has are real, and look as in the program.
  enum class Purpose { cSurface, cPreview };

  explicit LiveControls(FormData& itsForm, Purpose itsPurpose = Purpose::cSurface)
      : form(itsForm), purpose(itsPurpose) {}
  ~LiveControls();
  LiveControls(const LiveControls&) = delete;
  LiveControls& operator=(const LiveControls&) = delete;

  // Makes the control of a record from its class and its values, and those of its parents, and adds
  // it to its parent's. False, with a sentence in `failures`, if that can't be done.
  bool Create(CtrlRec& rec);
  // Makes the controls of all records that have none.
  void CreateAll();
  // Makes a control of the record's class without values and without a parent; null if the class
  // has none.
  mavro::Control* Make(CtrlRec& rec);
  // Adds a record's control to that of its parent; false if that one can't hold it.
  bool Attach(CtrlRec& rec);
  // Destroys the controls of a record and of all that are in it.
  void Destroy(CtrlRec& rec);
  // Destroys all.
  void Clear();

  // Gives the control a value, or its default if the value is empty. Nothing happens for raw
  // entries and without a control.
  void Apply(CtrlRec& rec, const PropValue& prop);
  // The same for all values: those that aren't empty, or all of them.
  void ApplyAll(CtrlRec& rec);
  void ReapplyAll(CtrlRec& rec);
  // Copies place and size of the control into the values, and fills in defaults. A value stays as
  // it is while the control has not moved, even if its window refuses this size: what nobody has
  // touched is written as it was read.
  void Refresh(CtrlRec& rec);
  void RefreshAll();

  // Adds a page with a name of its own to a tab control; null if the record is of another class.
  CtrlRec* AddPage(CtrlRec& tabs);
  // The page in front of a tab control; null without one.
  CtrlRec* CurrentPage(const CtrlRec& tabs) const;

  // The record of a control; null for controls that aren't of the form.
  CtrlRec* RecordOf(const mavro::Control* control) const;
  // Says that a control made elsewhere is that of a record: the surface is that of the form.
  void Bind(CtrlRec& rec, mavro::Control& control);

  // Sentences about controls that could not be made.
  std::vector<std::string> failures;

 private:
  mavro::Color GroundOf(const CtrlRec& rec, const std::string& value) const;
  void SetGround(const CtrlRec& rec, mavro::Control& control, const std::string& value);
  void ApplyGeneral(CtrlRec& rec, const PropValue& prop, const std::string& value);
  void ApplyToClass(CtrlRec& rec, const PropValue& prop, const std::string& value);
  void ApplyGeometry(CtrlRec& rec, int kind, int number);
  void ApplyText(CtrlRec& rec, const std::string& value);

  FormData& form;
  const Purpose purpose;
  std::unordered_map<const CtrlRec*, std::unique_ptr<mavro::Control>> controls;
  std::unordered_map<const mavro::Control*, CtrlRec*> records;
  std::unordered_map<const CtrlRec*, mavro::Rect> places;  // when they were last copied
};

// The colour with a name of the colour list; the default one for any other text.
mavro::Color ColorOf(std::string_view name);
// The font that a font text tells.
mavro::Font FontOf(std::string_view text);

}  // namespace zendry
