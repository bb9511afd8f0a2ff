#include <QClipboard>
#include <QGuiApplication>

#include "Clipboard.h"
#include "QtText.h"

namespace mavro {

std::string ClipboardText() {
  return qGuiApp ? FromScreen(QGuiApplication::clipboard()->text()) : std::string();
}

void SetClipboardText(const std::string& text) {
  if (qGuiApp) QGuiApplication::clipboard()->setText(ToScreen(text));
}

}  // namespace mavro
