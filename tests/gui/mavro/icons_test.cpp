#include "Icons.h"

#include <gtest/gtest.h>

#include <QImage>
#include <fstream>
#include <sstream>

#include "Button.h"
#include "Form.h"
#include "GuiDriver.h"
#include "QtStrips.h"

namespace mavro {
namespace {

constexpr const char* cNames =
    "cNone|icoNew|icoOpen|icoOpenPrj|icoSave|icoSaveAll|icoCut|icoCopy|icoPaste|icoRedBall|icoGo|"
    "icoDesign|icoClear|icoBuild|icoNo|icoRun|icoPoint|icoIndex|icoCloseAll|icoStar|icoOk|"
    "icoCancel|"
    "icoColor|icoConvert|icoHome|icoEdit|icoFind|icoSetup|icoPrint|icoRetry|icoAdd|icoRemove|"
    "icoPicker|icoReplace|icoInfo|icoForward|icoBack|icoGreenBall|icoRedo|icoUndo|icoNet|icoQuit|"
    "icoUp|icoDown";

std::vector<std::string> Names() {
  std::vector<std::string> names;
  std::istringstream list(cNames);
  for (std::string name; std::getline(list, name, '|');) names.push_back(name);
  return names;
}

TEST(Icons, Numbers_GoFromNoneToDown) {
  EXPECT_EQ(Icons::cNone, 0);
  EXPECT_EQ(Icons::icoNew, 1);
  EXPECT_EQ(Icons::icoRedBall, 9);
  EXPECT_EQ(Icons::icoOk, 20);
  EXPECT_EQ(Icons::icoAdd, 30);
  EXPECT_EQ(Icons::icoNet, 40);
  EXPECT_EQ(Icons::icoDown, 43);
  EXPECT_EQ(Names().size(), 44u);
}

// The list that the strip is composed from names each picture's constant after its number.
TEST(Icons, Strip_HoldsThePicturesInThatOrder) {
  std::ifstream list(TEST_DATA "/../../dist/pictures/strip-1.list");
  const std::vector<std::string> names = Names();
  size_t rows = 0;
  for (std::string line; std::getline(list, line);) {
    if (line.rfind("0x", 0) != 0) continue;
    const auto number = static_cast<size_t>(std::stol(line, nullptr, 16));
    EXPECT_EQ(line.substr(line.rfind(' ') + 1), names.at(number));
    ++rows;
  }
  EXPECT_EQ(rows, 43u);
}

QImage PictureOf(int icon) {
  return StripIcon(Icons::cStrip, icon).pixmap(24, 24).toImage();
}

TEST(Icons, EveryPicture_DiffersFromEveryOther) {
  for (int a = Icons::icoNew; a <= Icons::icoDown; ++a)
    for (int b = a + 1; b <= Icons::icoDown; ++b) EXPECT_NE(PictureOf(a), PictureOf(b)) << a << b;
}

// All buttons with their icons, for people to look at; each shows something beside its caption.
TEST(Icons, Button_ShowsThePictureOfItsNumber) {
  Form form;
  form.SetBounds(0, 0, 760, 280);
  Button buttons[44];
  const std::vector<std::string> names = Names();
  for (int i = 0; i < 44; ++i) {
    buttons[i].SetBounds(6 + i % 8 * 94, 6 + i / 8 * 45, 92, 40);
    buttons[i].icon = i;
    buttons[i].font = Font(7);
    buttons[i].text = names[static_cast<size_t>(i)].substr(i ? 3 : 1);
    form.Add(&buttons[i]);
  }
  test::RunForm(form, false, [&] {
    const QString scale = qEnvironmentVariable("QT_SCALE_FACTOR", "1");
    test::Shot(form, "icons-" + scale.toStdString());
    for (int i = 1; i < 44; ++i) {
      const QImage with = test::WidgetOf(buttons[i])->grab().toImage();
      buttons[i].icon = Icons::cNone;
      EXPECT_NE(test::WidgetOf(buttons[i])->grab().toImage(), with) << i;
    }
  });
}

}  // namespace
}  // namespace mavro
