#include "QtRoles.h"

#include <QAccessibleWidget>
#include <QVariant>
#include <QWidget>

namespace mavro {

namespace {

constexpr char cRoleProperty[] = "mavroRole";

class RoleAccess final : public QAccessibleWidget {
 public:
  explicit RoleAccess(QWidget* its) : QAccessibleWidget(its) {}

  QAccessible::Role role() const override {
    return static_cast<QAccessible::Role>(object()->property(cRoleProperty).toInt());
  }
};

QAccessibleInterface* MakeAccess(const QString&, QObject* object) {
  if (!object->isWidgetType() || !object->property(cRoleProperty).isValid()) return nullptr;
  return new RoleAccess(static_cast<QWidget*>(object));
}

}  // namespace

void SetAccessibleRole(QWidget& widget, QAccessible::Role role) {
  static const bool installed = (QAccessible::installFactory(MakeAccess), true);
  static_cast<void>(installed);
  widget.setProperty(cRoleProperty, static_cast<int>(role));
}

}  // namespace mavro
