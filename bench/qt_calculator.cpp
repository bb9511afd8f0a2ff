// The window of the demo "calculator" made of the toolkit directly: the same widgets at the same
// places. What starts beside it measures its own part.

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>

namespace {

constexpr int cMargin = 12, cButtonWidth = 62, cButtonHeight = 42, cGap = 6, cKeysTop = 96;
constexpr int cColumns = 4, cRows = 5;
constexpr int cKeysWidth = cColumns * cButtonWidth + (cColumns - 1) * cGap;
constexpr int cTapeWidth = 180;
constexpr int cWidth = cKeysWidth + cTapeWidth + 3 * cMargin;
constexpr int cHeight = cKeysTop + cRows * cButtonHeight + (cRows - 1) * cGap + cMargin;
constexpr const char* cCaptions[] = {"C",
                                     "\302\261",
                                     "%",
                                     "\303\267",
                                     "7",
                                     "8",
                                     "9",
                                     "\303\227",
                                     "4",
                                     "5",
                                     "6",
                                     "\342\210\222",
                                     "1",
                                     "2",
                                     "3",
                                     "+",
                                     "0",
                                     ".",
                                     "\342\214\253",
                                     "="};

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QDialog window;
  window.setWindowTitle("calculator");
  window.setFixedSize(cWidth, cHeight);
  auto* screen = new QFrame(&window);
  screen->setFrameStyle(QFrame::Panel | QFrame::Sunken);
  screen->setAutoFillBackground(true);
  screen->setBackgroundRole(QPalette::Base);
  screen->setGeometry(cMargin, cMargin, cKeysWidth, cKeysTop - 2 * cMargin);
  auto* pending = new QLabel(screen);
  pending->setGeometry(8, 6, cKeysWidth - 20, 18);
  auto* number = new QLabel("0", screen);
  number->setGeometry(8, 26, cKeysWidth - 20, 38);
  number->setAlignment(Qt::AlignRight);
  number->setFont(QFont(QString(), 20, QFont::Bold));
  for (int i = 0; i < cColumns * cRows; ++i) {
    auto* button = new QPushButton(QString::fromUtf8(cCaptions[i]), &window);
    button->setGeometry(cMargin + i % cColumns * (cButtonWidth + cGap),
                        cKeysTop + i / cColumns * (cButtonHeight + cGap), cButtonWidth,
                        cButtonHeight);
  }
  auto* tape = new QListWidget(&window);
  tape->setGeometry(cKeysWidth + 2 * cMargin, cMargin, cTapeWidth, cHeight - 2 * cMargin);
  window.show();
  return application.exec();
}
