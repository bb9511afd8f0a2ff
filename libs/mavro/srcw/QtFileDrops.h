#pragma once

#include <QObject>
#include <string>
#include <vector>

class QDropEvent;

namespace mavro {

class NativeWindow;

// Takes the files that are dropped on a form, before any widget in it is asked, and notifies the
// form by WM_DROPFILES. Other drags are handled as usual. Owned by the form's widget.
class QtFileDrops final : public QObject {
 public:
  explicit QtFileDrops(NativeWindow& form);
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool Answer(QDropEvent& drag) const;
  void OnDrop(std::vector<std::string> paths, NativeWindow* over);

  NativeWindow* const window;  // may be gone: test with IsWindow before each use
  bool filesOverForm = false;  // kept: asking the other program takes time
};

}  // namespace mavro
