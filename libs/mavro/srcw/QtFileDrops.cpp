#include "QtFileDrops.h"

#include <QApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QSysInfo>
#include <QTimer>
#include <QWidget>
#include <QWindow>
#include <utility>

#include "NativeWindow.h"
#include "QtInput.h"
#include "UriList.h"

namespace mavro {

namespace {

// Not 0: that would be a posted event, which also arrives while a tool run holds timers back.
constexpr int cSoon = 1;  // milliseconds

// Reads names as bytes: the toolkit might fail to decode a name as text.
std::vector<std::string> LocalFilesIn(const QMimeData& data) {
  if (!data.hasUrls()) return {};
  const QByteArray list = data.data("text/uri-list");
  return LocalPathsOf(std::string_view(list.constData(), static_cast<size_t>(list.size())),
                      QSysInfo::machineHostName().toStdString());
}

// The files stay where they are: a program that hears of a move deletes them.
Qt::DropAction ActionFor(Qt::DropActions possible) {
  for (const Qt::DropAction action : {Qt::CopyAction, Qt::LinkAction})
    if (possible & action) return action;
  return Qt::IgnoreAction;
}

bool IsBlocked(const NativeWindow& window) {
  return window.inputBlocked || QApplication::activeModalWidget();
}

}  // namespace

QtFileDrops::QtFileDrops(NativeWindow& form) : QObject(form.widget), window(&form) {
  form.widget->winId();
  form.widget->windowHandle()->installEventFilter(this);
}

bool QtFileDrops::eventFilter(QObject*, QEvent* event) {
  const QEvent::Type type = event->type();
  if (type != QEvent::DragEnter && type != QEvent::DragMove && type != QEvent::Drop) return false;
  auto& drag = static_cast<QDropEvent&>(*event);
  if (type == QEvent::DragEnter) filesOverForm = !LocalFilesIn(*drag.mimeData()).empty();
  if (type != QEvent::Drop) return filesOverForm && Answer(drag);
  std::vector<std::string> paths = LocalFilesIn(*drag.mimeData());
  if (paths.empty() || !Answer(drag)) return false;
  if (drag.isAccepted()) {
    const QWidget* under = window->widget->childAt(drag.position().toPoint());
    OnDrop(std::move(paths), under ? WindowOf(under) : window);
  }
  return true;
}

// Tells the drag whether the files may be dropped here. True if no other widget is to be asked.
bool QtFileDrops::Answer(QDropEvent& drag) const {
  if (!IsWindow(window)) return false;
  const Qt::DropAction action =
      IsBlocked(*window) ? Qt::IgnoreAction : ActionFor(drag.possibleActions());
  drag.setDropAction(action);
  drag.setAccepted(action != Qt::IgnoreAction);
  return true;
}

// The program that the files come from waits until the drop is over, so the form is notified later.
void QtFileDrops::OnDrop(std::vector<std::string> paths, NativeWindow* over) {
  QTimer::singleShot(cSoon, this, [form = window, over, paths = std::move(paths)]() mutable {
    if (IsWindow(form) && !IsBlocked(*form))
      SendMessage(form, WM_DROPFILES, reinterpret_cast<Param>(&paths),
                  reinterpret_cast<Param>(over));
  });
}

}  // namespace mavro
