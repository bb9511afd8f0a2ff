#include "EmptyText.h"

#include <utility>

#include "Assert.h"
#include "NativeEmptyText.h"
#include "SysImpl.h"

namespace mavro {

EmptyText::EmptyText(Control& itsControl, std::string itsWords)
    : control(itsControl), words(std::move(itsWords)) {
  MAVRO_ASSERT(!control.impl->hwnd);
  control.onCreate.Add_H(this, &EmptyText::OnCreate);
}

void EmptyText::OnCreate(NotifyArgs&) {
  ShowEmptyText(*control.impl->hwnd, words);
}

}  // namespace mavro
