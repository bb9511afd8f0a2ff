#include <QClipboard>
#include <QGuiApplication>
#include <QImage>

#include "Clipboard.h"
#include "QtOverlay.h"
#include "QtText.h"

namespace mavro {

std::string ClipboardText() {
  return qGuiApp ? FromScreen(QGuiApplication::clipboard()->text()) : std::string();
}

void SetClipboardText(const std::string& text) {
  if (qGuiApp) QGuiApplication::clipboard()->setText(ToScreen(text));
}

// The pixels are the bitmap's own; the clipboard needs a copy.
void SetClipboardPicture(const Bitmap& bitmap) {
  if (qGuiApp && !bitmap.IsEmpty()) QGuiApplication::clipboard()->setImage(ImageOf(bitmap).copy());
}

}  // namespace mavro
