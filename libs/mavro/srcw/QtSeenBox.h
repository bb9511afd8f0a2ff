#pragma once

#include <QStyleOptionButton>

namespace mavro {

// On a dark ground, gives the frame of an unticked box another colour: the toolkit's is darker than
// the ground.
void LightenFrame(QPalette& palette);

// A check box or radio button that can be seen on any ground.
template <class Box>
class SeenBox final : public Box {
 public:
  using Box::Box;

 protected:
  void initStyleOption(QStyleOptionButton* option) const override {
    Box::initStyleOption(option);
    LightenFrame(option->palette);
  }
};

}  // namespace mavro
