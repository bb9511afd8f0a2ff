#pragma once

#include <QApplication>
#include <QDragEnterEvent>
#include <QDragMoveEvent>
#include <QDropEvent>
#include <QMimeData>
#include <memory>
#include <string>
#include <vector>

#include "GuiDriver.h"

namespace test {

// Something that another program drags over a control and drops there, sent to the control's window
// as the window system sends it.
//
//   test::Drag drag = test::FileDrag({"/a.cpp"});
//   EXPECT_TRUE(drag.Drop(form.edit));
class Drag {
 public:
  std::unique_ptr<QMimeData> data = std::make_unique<QMimeData>();
  Qt::DropActions possible = Qt::CopyAction | Qt::MoveAction | Qt::LinkAction;
  Qt::DropAction told = Qt::IgnoreAction;  // what the last answer says was done

  // True if a drop at the middle of the control would be taken.
  bool Enter(const mavro::Control& over) {
    const QPoint at = PlaceOf(over);
    QDragEnterEvent enter(at, possible, data.get(), Qt::LeftButton, Qt::NoModifier);
    enter.ignore();
    Send(over, enter);
    if (!enter.isAccepted()) return false;
    QDragMoveEvent move(at, possible, data.get(), Qt::LeftButton, Qt::NoModifier);
    move.setDropAction(enter.dropAction());
    move.accept();
    Send(over, move);
    return move.isAccepted();
  }

  // Drops it where it may be dropped; answers whether it was.
  bool Drop(const mavro::Control& over) {
    if (!Enter(over)) {
      QDragLeaveEvent leave;
      Send(over, leave);
      return false;
    }
    QDropEvent drop(PlaceOf(over), possible, data.get(), Qt::LeftButton, Qt::NoModifier);
    Send(over, drop);
    return drop.isAccepted();
  }

 private:
  static QPoint PlaceOf(const mavro::Control& over) {
    QWidget* widget = WidgetOf(over);
    return widget->mapTo(widget->window(), widget->rect().center());
  }
  void Send(const mavro::Control& over, QEvent& event) {
    QCoreApplication::sendEvent(WidgetOf(over)->window()->windowHandle(), &event);
    if (auto* drop = dynamic_cast<QDropEvent*>(&event)) told = drop->dropAction();
  }
};

// Files as a file manager hands them over, with their names as text beside.
inline Drag FileDrag(const std::vector<std::string>& paths) {
  Drag drag;
  QByteArray list;
  QString names;
  for (const std::string& path : paths) {
    list += "file://" + QByteArray::fromStdString(path).toPercentEncoding("/") + "\r\n";
    names += QString::fromStdString(path) + "\n";
  }
  drag.data->setData("text/uri-list", list);
  drag.data->setText(names);
  return drag;
}

inline Drag TextDrag(const std::string& text) {
  Drag drag;
  drag.data->setText(QString::fromStdString(text));
  return drag;
}

}  // namespace test
