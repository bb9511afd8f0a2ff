#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <QPalette>

#include "Button.h"
#include "DarkPalette.h"
#include "Edit.h"
#include "Form.h"
#include "GuiDriver.h"
#include "Label.h"
#include "ListBox.h"
#include "ListView.h"
#include "StatusBar.h"
#include "Strips.h"

namespace mavro {
namespace {

// Every control of the standard family once or twice, at its usual size.
struct Gallery : Form {
  Label name, centered;
  Edit typed, number, secret, locked, grayed;
  Button ok, cancel, setup, hot, off, save, image;
  CheckBox checked, open;
  ComboBox mode, free;
  ListBox list;
  Memo output, source;
  ListView table, plain;
  StatusBar status;

  Gallery() {
    text = "Gallery";
    SetBounds(0, 0, 760, 560);
    PlaceEdits();
    PlaceButtons();
    PlaceLists();
    PlaceTexts();
    status.SetBounds(0, 536, 760);
    status.AddPane(0, "Compiling src/a_rather_long_file_name_that_needs_room.cpp");
    status.AddPane(200, "Ln 120   Col 7");
    status.AddPane(200, "Macro recording that is too long for its pane");
    Add(&status);
  }

 private:
  void Place(Control& control, int x, int y, int w, int h, const std::string& caption = "") {
    control.SetBounds(x, y, w, h);
    if (!caption.empty()) control.text = caption;
    Add(&control);
  }

  void PlaceEdits() {
    Place(name, 8, 10, 80, 18, "&Name of it:");
    Place(typed, 96, 8, 120, 24, "Grüße, 世界 gjpqy");
    Place(number, 224, 8, 60, 24, "-12.5e3");
    number.dataType = Edit::cFloat;
    Place(secret, 292, 8, 80, 24, "secret");
    secret.dataType = Edit::cPassword;
    Place(locked, 380, 8, 80, 24, "read only");
    locked.readOnly = true;
    Place(grayed, 468, 8, 80, 24, "disabled");
    grayed.enabled = false;
    Place(centered, 556, 10, 190, 18, "Centered && bold");
    centered.align = Align::cCenter;
    centered.font = Font(0, Font::cBold);
  }

  void PlaceButtons() {
    Place(ok, 8, 40, 84, 34);
    ok.kind = Button::cOk;
    Place(cancel, 100, 40, 84, 34);
    cancel.kind = Button::cCancel;
    Place(setup, 192, 40, 84, 34);
    setup.kind = Button::cSetup;
    Place(hot, 284, 40, 84, 34, "Hot");
    hot.hot = true;
    Place(off, 376, 40, 84, 34, "Disabled");
    off.enabled = false;
    save.icon = 4;
    save.kind = Button::cSave;
    Place(save, 264, 78, 84, 34);
    image.SetImage(0x6F, 2);
    Place(image, 356, 85, 20, 20, "Close");
    Place(checked, 468, 46, 120, 22, "&Parse project");
    checked.checked = true;
    Place(open, 596, 46, 120, 22, "Show gjpqy");
  }

  void PlaceLists() {
    for (const char* item : {"Release", "Debug"}) mode.items.Add(item);
    mode.chooseOnly = true;
    mode.selectedIndex = 1;
    Place(mode, 8, 82, 100, 24);
    for (const char* item : {"-O2", "-O3 -march=native"}) free.items.Add(item);
    Place(free, 116, 82, 140, 24, "-O2 -g typed");
    for (int i = 0; i < 12; ++i) list.items.Add("Entry gjpqy " + std::to_string(i));
    list.selectedIndex = 2;
    Place(list, 8, 114, 140, 110);
    FillTable(table);
    table.showSelection = true;
    Place(table, 156, 114, 596, 110);
    FillTable(plain);
    plain.gridLines = false;
    plain.headerVisible = false;
    Place(plain, 156, 230, 596, 70);
  }

  static void FillTable(ListView& view) {
    view.AddColumn("file", 150);
    view.AddColumn("line", 50);
    view.AddColumn("message", 100);
    for (int i = 0; i < 8; ++i) {
      const int row = view.AddRow("src/gjpqy" + std::to_string(i) + ".cpp");
      view.SetCell(row, 1, std::to_string(i * 17));
      view.SetCell(row, 2, "error: expected ';' before '}' token in a message of some length");
    }
    view.Select(1);
  }

  void PlaceTexts() {
    output.monospaced = true;
    output.readOnly = true;
    Place(output, 8, 306, 370, 222);
    output.Append("g++ -O2 -c src/a.cpp\r\nsrc/a.cpp:3:1: error: gjpqy\r\n");
    output.Append("\tbehind a tab\r\nbyte \xFF kept\r\n" + std::string(5000, 'x') + "\r\nend\r\n");
    source.monospaced = true;
    Place(source, 386, 306, 366, 222, "int main() {\n  return 0;\n}\n");
    source.MarkLine(2);
  }
};

double MeanBrightness(const QImage& image) {
  double sum = 0;
  for (int y = 0; y < image.height(); y += 3)
    for (int x = 0; x < image.width(); x += 3) sum += qGray(image.pixel(x, y));
  return sum / ((image.height() / 3 + 1) * (image.width() / 3 + 1));
}

TEST(Gallery, EveryControl_FollowsTheLightAndTheDarkPalette) {
  test::RegisterStrips();
  const QPalette light = QApplication::palette();
  for (const bool isDark : {false, true}) {
    QApplication::setPalette(isDark ? test::DarkPalette() : light);
    Gallery gallery;
    test::RunForm(gallery, false, [&] {
      const std::string name = isDark ? "controls-dark" : "controls-light";
      gallery.table.Focus();
      test::Shot(gallery, name);
      const QImage shown = test::WidgetOf(gallery)->grab().toImage();
      EXPECT_EQ(MeanBrightness(shown) < 128, isDark);
    });
  }
  QApplication::setPalette(light);
}

}  // namespace
}  // namespace mavro
