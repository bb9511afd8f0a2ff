#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <new>

#include "CustomCtrl.h"
#include "DialCtrl.h"
#include "Form.h"
#include "GuiDriver.h"
#include "Label.h"

// The sanitizers bring an operator of their own, which watches more than it counts.
#ifndef __SANITIZE_ADDRESS__

namespace {

std::atomic<long> allocations{0};

}  // namespace

void* operator new(std::size_t size) {
  ++allocations;
  if (void* memory = std::malloc(size ? size : 1)) return memory;
  throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
  std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}

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
    const long before = allocations;
    for (int x = 0; x < 100; ++x) SendMessage(window, WM_MOUSEMOVE, 0, PackPoint(x, 5));
    made = allocations - before;
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
  const long before = allocations;
  delete new std::string(100, 'x');
  EXPECT_GE(allocations - before, 2);
}

}  // namespace
}  // namespace mavro

#endif
