#include <gtest/gtest.h>

#include "AllocationCount.h"
#include "CustomCtrl.h"
#include "DialCtrl.h"
#include "Form.h"
#include "GuiDriver.h"
#include "Label.h"

namespace mavro {
namespace {

template <class Kind>
long AllocationsOfMoves() {
  Form form;
  Kind control;
  form.SetBounds(0, 0, 200, 150);
  control.SetBounds(10, 10, 100, 80);
  form.Add(&control);
  long made = -1;
  test::RunForm(form, false, [&] {
    NativeWindow* window = control.impl->hwnd;
    SendMessage(window, WM_MOUSEMOVE, 0, PackPoint(4, 4));
    const long before = test::AllocationCount();
    for (int x = 0; x < 100; ++x) SendMessage(window, WM_MOUSEMOVE, 0, PackPoint(x, 5));
    made = test::AllocationCount() - before;
  });
  return made;
}

TEST(MouseMove, WithoutHandlers_AllocatesNothing) {
  EXPECT_EQ(AllocationsOfMoves<CustomCtrl>(), 0);
  EXPECT_EQ(AllocationsOfMoves<DialCtrl>(), 0);
  EXPECT_EQ(AllocationsOfMoves<Label>(), 0);
  EXPECT_EQ(AllocationsOfMoves<Panel>(), 0);
}

TEST(MouseMove, Counter_Counts) {
  const long before = test::AllocationCount();
  delete new std::string(100, 'x');
  if (!test::cCountsAllocations) GTEST_SKIP() << "the sanitizer has operators of its own";
  EXPECT_GE(test::AllocationCount() - before, 2);
}

}  // namespace
}  // namespace mavro
