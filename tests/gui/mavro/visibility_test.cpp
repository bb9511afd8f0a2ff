// `visible`, the state and what the screen shows agree, in any tree, after anything in any order.
#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <string>
#include <vector>

#include "EventLog.h"
#include "Form.h"
#include "GroupBox.h"
#include "GuiDriver.h"
#include "Label.h"
#include "Scroller.h"

namespace mavro {
namespace {

// A tree of containers with labels at its leaves, made from a number.
struct RandomTree {
  RandomTree(Form& itsForm, unsigned seed) : form(itsForm), random(seed) {
    Fill(form, 0);
    for (const auto& control : controls) shape += control->parent == &form ? "|" : ".";
  }

  int Below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random); }

  std::unique_ptr<Control> Make(int depth) {
    if (depth == 4 || Below(4) == 0) return std::make_unique<Label>();
    switch (Below(3)) {
      case 0:
        return std::make_unique<GroupBox>();
      case 1:
        return std::make_unique<Scroller>();
      default:
        return std::make_unique<Panel>();
    }
  }

  void Fill(Container& into, int depth) {
    const int count = 1 + Below(3);
    for (int i = 0; i < count; ++i) {
      controls.push_back(Make(depth));
      Control* made = controls.back().get();
      made->SetBounds(0, 0, 100, 60);
      made->visible = Below(3) != 0;
      into.Add(made);
      if (auto* inner = dynamic_cast<Container*>(made)) Fill(*inner, depth + 1);
    }
  }

  Control& Any() {
    return *controls[static_cast<size_t>(Below(static_cast<int>(controls.size())))];
  }

  // One thing that a program may do.
  std::string Step() {
    Control& control = Any();
    switch (Below(6)) {
      case 0: {
        Container* parent = dynamic_cast<Container*>(control.parent);
        if (!parent) return "nothing";
        parent->Remove(&control);
        parent->Add(&control);
        return "taken out and put back";
      }
      case 1:
        control.visible = true;
        control.visible = false;
        return "shown and hidden";
      case 2:
        form.visible = !form.visible;
        return "form switched";
      default:
        control.visible = !control.visible;
        return "switched";
    }
  }

  // The first control whose property, state and window disagree; "" for none.
  std::string Disagreement() {
    for (size_t i = 0; i < controls.size(); ++i) {
      Control& control = *controls[i];
      bool shows = true;
      for (const Control* up = &control; up; up = up->parent) shows = shows && up->visible;
      const bool seen = control.impl->hwnd->IsShown();
      if (seen != shows || (control.state == cShown) != shows)
        return std::to_string(i) + ": wanted " + std::to_string(shows) + ", seen " +
               std::to_string(seen) + ", state " + std::to_string(control.state);
    }
    return "";
  }

  Form& form;
  std::mt19937 random;
  std::vector<std::unique_ptr<Control>> controls;
  std::string shape;
};

TEST(Visibility, AgreesWithWhatIsShown_InAnyTreeAfterAnySteps) {
  for (unsigned seed = 1; seed <= 40; ++seed) {
    Form form;
    form.SetBounds(0, 0, 300, 200);
    RandomTree tree(form, seed);
    test::RunForm(form, false, [&] {
      ASSERT_EQ(tree.Disagreement(), "") << "seed " << seed << " at the start, " << tree.shape;
      for (int step = 0; step < 60; ++step) {
        const std::string what = tree.Step();
        ASSERT_EQ(tree.Disagreement(), "")
            << "seed " << seed << " step " << step << " " << what << ", " << tree.shape;
      }
    });
    if (testing::Test::HasFatalFailure()) return;
  }
}

struct Nested : testing::Test {
  Nested() {
    form.SetBounds(0, 0, 300, 200);
    outer.SetBounds(0, 0, 300, 200);
    inner.SetBounds(0, 0, 200, 100);
    inner.Add(&leaf);
    outer.Add(&inner);
    form.Add(&outer);
  }
  Form form;
  Panel outer, inner;
  Label leaf;
};

TEST_F(Nested, HiddenWhileItsContainerIs_StaysHiddenWhenItComesBack) {
  test::RunForm(form, false, [&] {
    outer.visible = false;
    inner.visible = false;
    outer.visible = true;
    EXPECT_FALSE(inner.impl->hwnd->IsShown());
    inner.visible = true;
    EXPECT_TRUE(leaf.impl->hwnd->IsShown());
  });
}

TEST_F(Nested, ShownWhileItsContainerIsHidden_ComesWithIt) {
  inner.visible = false;
  test::RunForm(form, false, [&] {
    outer.visible = false;
    inner.visible = true;
    EXPECT_FALSE(inner.impl->hwnd->IsShown());
    EXPECT_EQ(inner.state, cHidden);
    outer.visible = true;
    EXPECT_TRUE(leaf.impl->hwnd->IsShown());
  });
}

TEST(Visible, OnVisible_TellsEachComingAndGoingOnce) {
  test::EventLog log;
  Form form;
  Panel outer;
  Label leaf, hidden;
  hidden.visible = false;
  outer.Add(&leaf);
  outer.Add(&hidden);
  form.Add(&outer);
  log.Listen("outer", outer.onVisible);
  log.Listen("leaf", leaf.onVisible);
  log.Listen("hidden", hidden.onVisible);
  test::RunForm(form, false, [&] {
    EXPECT_EQ(log.Take(), "outer:1 leaf:1 ");
    outer.visible = false;
    EXPECT_EQ(log.Take(), "outer:0 leaf:0 ");
    leaf.visible = false;
    hidden.visible = true;
    EXPECT_EQ(log.Take(), "");
    outer.visible = true;
    EXPECT_EQ(log.Take(), "outer:1 hidden:1 ");
    hidden.visible = false;
    EXPECT_EQ(log.Take(), "hidden:0 ");
  });
}

// Handlers that change the tree while it is being shown or hidden.
TEST(Visible, HandlersThatSwitchOrDestroy_LeaveTheTreeAgreeing) {
  for (const int deed : {0, 1, 2}) {
    test::EventLog log;
    Form form;
    Panel outer;
    auto first = std::make_unique<Panel>();
    Label second;
    outer.Add(first.get());
    outer.Add(&second);
    form.Add(&outer);
    test::RunForm(form, false, [&] {
      outer.visible = false;
      log.Listen("first", first->onVisible, [&](NotifyArgs& args) {
        if (!args.value) return;
        if (deed == 0) outer.visible = false;
        if (deed == 1) first.reset();
        if (deed == 2) outer.Remove(&second);
      });
      outer.visible = true;
      EXPECT_EQ(outer.impl->hwnd->IsShown(), deed != 0);
      if (second.impl->hwnd) {
        EXPECT_EQ(second.impl->hwnd->IsShown(), deed != 0);
        EXPECT_EQ(second.state == cShown, deed != 0);
      }
    });
  }
}

}  // namespace
}  // namespace mavro
