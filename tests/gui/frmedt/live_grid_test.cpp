// A grid while its form is designed, and when the form is tried.
#include <gtest/gtest.h>

#include <QTableView>
#include <mavro>

#include "GuiDriver.h"
#include "Looks.h"
#include "frmedt/CtrlReg.h"
#include "frmedt/LiveControls.h"

namespace zendry {
namespace {

using Purpose = LiveControls::Purpose;

// A form with a grid of the values that are set before Run.
struct GridDesign {
  FormData model;
  mavro::Form window;
  LiveControls live;
  CtrlRec* rec = nullptr;

  explicit GridDesign(Purpose purpose) : live(model, purpose) {
    rec = &model.AddControl(*FindClass("DataGrid"), model.root, "dataGrid1");
    Set("width", "300");
    Set("height", "150");
  }
  ~GridDesign() { live.Clear(); }

  void Set(const char* row, const char* value) { rec->SetValueText(row, value); }
  void Run(const std::function<void(mavro::Control&)>& look) {
    live.Bind(model.root, window);
    live.CreateAll();
    test::RunForm(window, false, [&] { look(*rec->ctrl); });
  }
};

TEST(LiveGrid, OnTheSurface_LinesShowWhatItIs) {
  GridDesign design(Purpose::cSurface);
  design.Set("colCount", "3");
  design.Run([](mavro::Control& control) {
    EXPECT_NE(dynamic_cast<mavro::ChildCtrl*>(&control), nullptr);
    const QImage pixels = test::Pixels(control);
    const QRgb line = pixels.pixel(150, 20);
    EXPECT_EQ(pixels.pixel(10, 20), line);
    EXPECT_EQ(pixels.pixel(90, 130), line);
    EXPECT_NE(pixels.pixel(45, 130), line);
  });
}

TEST(LiveGrid, InThePreview_ItIsReal) {
  GridDesign design(Purpose::cPreview);
  const std::pair<const char*, const char*> values[] = {
      {"colCount", "3"},      {"rowCount", "7"},          {"editLabels", "true"},
      {"lockCol", "1"},       {"rowHeight", "31"},        {"headerVisible", "false"},
      {"gridLines", "false"}, {"fullRowSelect", "false"}, {"showSelection", "true"}};
  for (const auto& [row, value] : values) design.Set(row, value);
  design.Run([](mavro::Control& control) {
    auto* grid = dynamic_cast<mavro::DataGrid*>(&control);
    ASSERT_NE(grid, nullptr);
    EXPECT_EQ(grid->columns.GetCount(), 3);
    EXPECT_EQ(grid->rowCount, 7);
    EXPECT_EQ(grid->lockCol, 1);
    EXPECT_TRUE(grid->editLabels && grid->showSelection);
    EXPECT_FALSE(grid->headerVisible || grid->gridLines || grid->fullRowSelect);
    EXPECT_EQ(qobject_cast<QTableView*>(test::WidgetOf(*grid))->rowHeight(0), 31);
  });
}

TEST(LiveGrid, InThePreview_NumbersOutOfRangeAreCut) {
  GridDesign design(Purpose::cPreview);
  design.Set("colCount", "-3");
  design.Set("rowCount", "2000000000");
  design.Run([](mavro::Control& control) {
    const auto& grid = dynamic_cast<mavro::DataGrid&>(control);
    EXPECT_EQ(grid.columns.GetCount(), 0);
    EXPECT_EQ(grid.rowCount, 10000);
  });
}

}  // namespace
}  // namespace zendry
