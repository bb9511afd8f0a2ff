#pragma once

#include <QAccessible>

class QWidget;

namespace mavro {

// Tells screen readers what a widget of ours is, where the toolkit would call it a mere area. The
// last call counts.
void SetAccessibleRole(QWidget& widget, QAccessible::Role role);

}  // namespace mavro
