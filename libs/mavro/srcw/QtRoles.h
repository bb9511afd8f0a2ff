#pragma once

#include <QAccessible>

class QWidget;

namespace mavro {

// Tells screen readers the role of one of our widgets, which the toolkit would only call an area.
// The last call counts.
void SetAccessibleRole(QWidget& widget, QAccessible::Role role);

}  // namespace mavro
