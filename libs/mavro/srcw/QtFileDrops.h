#pragma once

#include <QObject>
#include <string>
#include <vector>

class QDropEvent;

namespace mavro {

class NativeWindow;

// Takes the files that are dropped on a form, before any widget in it is asked, and tells the form
// of them by WM_DROPFILES. Whatever else is dragged goes its usual way. Owned by the form's widget.
class QtFileDrops final : public QObject {
 public:
  explicit QtFileDrops(NativeWindow& form);
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool Answer(QDropEvent& drag) const;
  void OnDrop(std::vector<std::string> paths);

  NativeWindow* const window;  // may be gone: only what IsWindow says it exists is touched
  bool filesOverForm = false;  // what is being dragged: asking the other program takes time
};

}  // namespace mavro
