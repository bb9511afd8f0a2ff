#include "frmedt/LiveControls.h"

#include <gtest/gtest.h>

#include <mavro>
#include <string>

#include "frmedt/CtrlReg.h"

namespace zendry {
namespace {

// A form with one control of a class.
struct OneControl {
  OneControl(const char* className, LiveControls::Purpose purpose) : live(form, purpose) {
    live.Bind(form.root, surface);
    rec = &form.AddControl(*FindClass(className), form.root, "one");
  }
  template <class Kind>
  Kind* As() const {
    return dynamic_cast<Kind*>(rec->ctrl);
  }

  FormData form;
  mavro::Form surface;
  LiveControls live;
  CtrlRec* rec;
};

TEST(LiveControls, DrawingsAndPlots_ArePlaceholdersWithTheirNameOnTheSurface) {
  for (const char* name : {"PaintBox", "PlotXY"}) {
    OneControl one(name, LiveControls::Purpose::cSurface);
    ASSERT_TRUE(one.live.Create(*one.rec)) << name;
    ASSERT_TRUE(one.As<mavro::ChildCtrl>()) << name;
    EXPECT_EQ(one.rec->ctrl->text, name);
  }
}

TEST(LiveControls, DrawingsAndPlots_AreRealInAPreview) {
  OneControl box("PaintBox", LiveControls::Purpose::cPreview);
  ASSERT_TRUE(box.live.Create(*box.rec));
  EXPECT_TRUE(box.As<mavro::PaintBox>());
  EXPECT_FALSE(box.As<mavro::PlotXY>());
  OneControl plot("PlotXY", LiveControls::Purpose::cPreview);
  ASSERT_TRUE(plot.live.Create(*plot.rec));
  EXPECT_TRUE(plot.As<mavro::PlotXY>());
}

TEST(LiveControls, GroundOfAPreview_IsTheProgramsUnlessTheFormSaysAnother) {
  OneControl plot("PlotXY", LiveControls::Purpose::cPreview);
  plot.rec->FillDefaults();
  ASSERT_TRUE(plot.live.Create(*plot.rec));
  EXPECT_EQ(plot.rec->ctrl->backColor, mavro::PlotXY().backColor.Get());
  OneControl yellow("PlotXY", LiveControls::Purpose::cPreview);
  yellow.rec->SetValueText("backColor", "cYellow");
  ASSERT_TRUE(yellow.live.Create(*yellow.rec));
  EXPECT_EQ(yellow.rec->ctrl->backColor, mavro::Color(mavro::Color::cYellow));
}

TEST(LiveControls, GroundOnTheSurface_GoesBackToTheDefault) {
  OneControl box("PaintBox", LiveControls::Purpose::cSurface);
  box.rec->SetValueText("backColor", "cYellow");
  ASSERT_TRUE(box.live.Create(*box.rec));
  box.rec->SetValueText("backColor", "<default>");
  box.live.ReapplyAll(*box.rec);
  EXPECT_TRUE(box.rec->ctrl->backColor.Get().IsDefault());
}

}  // namespace
}  // namespace zendry
