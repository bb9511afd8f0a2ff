#pragma once

#include <QTimer>
#include <functional>

#include "GuiDriver.h"

namespace test {

// Calls `script` with the form that next comes to the front above `below`, once it is up.
//
//   test::OnNextDialog(form, [&](mavro::Form& dialog) { test::Key(dialog, Qt::Key_Return); });
//   ... something that opens a dialog ...
inline void OnNextDialog(const mavro::Form& below,
                         const std::function<void(mavro::Form&)>& script) {
  auto* poll = new QTimer;
  const mavro::Form* under = &below;
  QObject::connect(poll, &QTimer::timeout, [poll, under, script] {
    mavro::Form* form = mavro::activeForm;
    if (!form || form == under) return;
    if (!static_cast<mavro::Form::Impl*>(form->impl)->firstShowDone) return;
    poll->stop();
    poll->deleteLater();
    script(*form);
  });
  poll->start(2);
}

}  // namespace test
