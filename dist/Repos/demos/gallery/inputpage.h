// SPDX-License-Identifier: MIT-0
#pragma once

#include "gallerypage.h"

// Labels, edits, buttons, groups and numbers.
class InputPage : public GalleryPage {
 public:
  typedef InputPage This;
  explicit InputPage(Log log);

 private:
  void PlaceEdits();
  void PlaceButtons();
  void PlaceGroups();
  void PlaceNumbers();
  void Changed(NotifyArgs& args);
  void Clicked(NotifyArgs& args);
  void Grouped(NotifyArgs& args);
  void Numbered(NotifyArgs& args);

  Label nameLabel, numberLabel, secretLabel, upperLabel;
  Edit name, number, secret, upper;
  Memo memo;
  Button save, run, hot, disabled;
  CheckBox check;
  RadioGroup radio;
  CheckGroup checks;
  GroupBox box;
  ComboBox choose, type;
  SpinEdit spin;
  TrackBar track;
  ProgressBar progress;
};
