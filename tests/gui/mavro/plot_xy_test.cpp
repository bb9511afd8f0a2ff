#include "PlotXY.h"

#include <gtest/gtest.h>

#include <QClipboard>
#include <QImage>
#include <cmath>
#include <limits>
#include <memory>

#include "Button.h"
#include "DarkPalette.h"
#include "EventLog.h"
#include "Form.h"
#include "GuiDriver.h"
#include "Looks.h"
#include "TempFolder.h"
#include "Wheel.h"

namespace mavro {
namespace {

const double cNan = std::nan("");
const double cInfinite = std::numeric_limits<double>::infinity();

struct PlotForm : Form {
  std::unique_ptr<PlotXY> plot = std::make_unique<PlotXY>();
  PlotForm() {
    SetBounds(0, 0, 520, 360);
    plot->SetBounds(10, 10, 500, 340);
    Add(plot.get());
  }
};

// A straight line from (0, 0) to (100, 50).
PlotSeries Slope(const std::string& name = "") {
  return {name, PlotStyle::cLines, Color::cRed, {0, 100}, {0, 50}};
}

struct PlotXYTest : testing::Test {
  PlotXYTest() {
    log.Listen("zoom", plot.onZoom);
    log.Listen("click", plot.onClick);
  }
  void Run(const std::function<void()>& script) { test::RunForm(form, false, script); }
  QPoint OnForm(QPoint at) const { return at + QPoint(10, 10); }
  // Drags with the left button, from place to place of the control.
  void Press(QPoint at) { QTest::mousePress(Window(), Qt::LeftButton, Qt::NoModifier, OnForm(at)); }
  void Move(QPoint at) { QTest::mouseMove(Window(), OnForm(at)); }
  void Release(QPoint at) {
    QTest::mouseRelease(Window(), Qt::LeftButton, Qt::NoModifier, OnForm(at));
  }
  void Drag(QPoint from, QPoint to) {
    Press(from);
    Move((from + to) / 2);
    Move(to);
    Release(to);
  }
  QWindow* Window() { return test::WidgetOf(form)->windowHandle(); }
  // A place by its shares of the area, from the bottom left.
  QPoint At(double x, double y) {
    const Rect area = plot.PlotArea();
    return {area.left + static_cast<int>(x * (area.width - 1)),
            area.top + static_cast<int>((1 - y) * (area.height - 1))};
  }
  QColor Shown(QPoint at) {
    const QImage image = test::Pixels(plot);
    const double ratio = image.devicePixelRatio();
    return image.pixelColor(int((at.x() + 0.5) * ratio), int((at.y() + 0.5) * ratio));
  }

  test::EventLog log;
  PlotForm form;
  PlotXY& plot = *form.plot;
};

TEST_F(PlotXYTest, New_IsEmptyAndShowsZeroToOne) {
  EXPECT_EQ(plot.SeriesCount(), 0);
  EXPECT_EQ(plot.XRange(), (PlotRange{0, 1}));
  EXPECT_EQ(plot.YRange(), (PlotRange{0, 1}));
  EXPECT_FALSE(plot.IsZoomed());
  EXPECT_EQ(plot.PlotArea(), Rect()) << "no window";
  EXPECT_EQ(plot.XAt(30), 0);
  Run([&] { EXPECT_GT(plot.PlotArea().width, 400); });
}

TEST_F(PlotXYTest, Series_AreWhatWasSet) {
  EXPECT_EQ(plot.AddSeries(Slope("a")), 0);
  EXPECT_EQ(plot.AddSeries("b", PlotStyle::cBoth, Color::cBlue), 1);
  plot.AddPoint(1, 3, 4);
  plot.SetPoints(0, {}, {7, 8, 9});
  plot.AddPoint(0, 10, 5);
  EXPECT_EQ(plot.Series(0).x, (std::vector<double>{0, 1, 2, 10}));
  EXPECT_EQ(plot.Series(0).y, (std::vector<double>{7, 8, 9, 5}));
  EXPECT_EQ(plot.Series(1).x, std::vector<double>{3});
  EXPECT_EQ(plot.XRange(), (PlotRange{-0.4, 10.4}));
  plot.RemoveSeries(0);
  EXPECT_EQ(plot.Series(0).name, "b");
  EXPECT_EQ(plot.SeriesColor(0), Color(Color::cBlue));
  plot.Clear();
  EXPECT_EQ(plot.SeriesCount(), 0);
}

TEST_F(PlotXYTest, Curve_IsAtItsPlaces) {
  plot.AddSeries(Slope());
  Run([&] {
    for (const double share : {0.1, 0.5, 0.9})
      EXPECT_EQ(Shown(At(share, share)).hue(), QColor(Qt::red).hue()) << share;
    EXPECT_NE(Shown(At(0.3, 0.7)).hue(), QColor(Qt::red).hue());
    EXPECT_NEAR(plot.XAt(At(0.5, 0).x()), 50, 0.5);
    EXPECT_NEAR(plot.YAt(At(0, 0.5).y()), 25, 0.5);
  });
}

TEST_F(PlotXYTest, ManyCalls_AreOneDrawing) {
  test::EventLog draws;
  draws.Listen("draw", plot.onDraw);
  plot.AddSeries("live");
  Run([&] {
    test::Pixels(plot);
    draws.Take();
    for (int i = 0; i < 1000; ++i) plot.AddPoint(0, i, i % 7);
    EXPECT_EQ(draws.Take(), "");
    test::Pixels(plot);
    EXPECT_EQ(draws.Take(), "draw:0 ");
    test::Pixels(plot);
    EXPECT_EQ(draws.Take(), "");
  });
}

TEST_F(PlotXYTest, Drag_ZoomsToTheRectangle) {
  plot.AddSeries(Slope());
  Run([&] {
    const double left = plot.XAt(At(0.25, 0).x()), right = plot.XAt(At(0.75, 0).x());
    Drag(At(0.75, 0.2), At(0.25, 0.6));
    EXPECT_NEAR(plot.XRange().min, left, 1);
    EXPECT_NEAR(plot.XRange().max, right, 1);
    EXPECT_NEAR(plot.YRange().Span(), 54 * 0.4, 1);
    EXPECT_TRUE(plot.IsZoomed());
    EXPECT_EQ(log.Take(), "zoom:1 ") << "a drag is no click";
    plot.AddPoint(0, 1000, 1000);
    EXPECT_NEAR(plot.XRange().max, right, 1) << "new points leave the zoom";
    test::Key(form, Qt::Key_Escape);
    EXPECT_FALSE(plot.IsZoomed());
    EXPECT_GT(plot.XRange().max, 1000);
    EXPECT_EQ(log.Take(), "zoom:0 ");
  });
}

TEST_F(PlotXYTest, DragInOneDirection_ZoomsThisAxisOnly) {
  plot.AddSeries(Slope());
  Run([&] {
    const PlotRange y = plot.YRange();
    Drag(At(0.2, 0.5), At(0.4, 0.5) + QPoint(0, 4));
    EXPECT_EQ(plot.YRange(), y);
    EXPECT_NEAR(plot.XRange().Span(), 108 * 0.2, 1);
    const PlotRange x = plot.XRange();
    Drag(At(0.5, 0.2), At(0.5, 0.6) - QPoint(4, 0));
    EXPECT_EQ(plot.XRange(), x);
    EXPECT_NEAR(plot.YRange().Span(), 54 * 0.4, 1);
  });
}

TEST_F(PlotXYTest, SmallDrag_IsAClick) {
  plot.AddSeries(Slope());
  Run([&] {
    const QPoint at = At(0.5, 0.5);
    Drag(at, at + QPoint(4, 4));
    EXPECT_EQ(log.Take(), "click:0 ");
    Drag(at, at + QPoint(5, 4));
    EXPECT_EQ(log.Take(), "zoom:1 ");
  });
}

TEST_F(PlotXYTest, Drag_StartsInTheAreaOnlyAndEndsAtItsEdges) {
  plot.AddSeries(Slope());
  Run([&] {
    Drag(QPoint(2, 2), At(0.5, 0.5));
    EXPECT_FALSE(plot.IsZoomed());
    const PlotRange x = plot.XRange(), y = plot.YRange();
    Drag(At(0.5, 0.5), QPoint(2000, -2000));
    EXPECT_NEAR(plot.XRange().max, x.max, 1e-9);
    EXPECT_NEAR(plot.YRange().max, y.max, 1e-9);
    EXPECT_NEAR(plot.XRange().Span(), x.Span() / 2, 1);
  });
}

TEST_F(PlotXYTest, Escape_EndsADragFirst) {
  plot.AddSeries(Slope());
  Run([&] {
    plot.Zoom({10, 20}, {0, 50});
    log.Take();
    Press(At(0.2, 0.2));
    Move(At(0.6, 0.6));
    test::Key(form, Qt::Key_Escape);
    Move(At(0.7, 0.7));
    Release(At(0.7, 0.7));
    EXPECT_EQ(plot.XRange(), (PlotRange{10, 20}));
    EXPECT_EQ(log.Take(), "") << "neither a zoom nor a click";
    test::Key(form, Qt::Key_Escape);
    EXPECT_FALSE(plot.IsZoomed());
  });
}

TEST_F(PlotXYTest, EscapeWithoutAZoom_IsTheDialogs) {
  Button cancel;
  cancel.kind = Button::cCancel;
  form.Add(&cancel);
  test::EventLog closed;
  closed.Listen("cancel", cancel.onClick);
  test::RunForm(form, true, [&] {
    plot.Focus();
    plot.Zoom({0, 1}, {0, 1});
    test::Key(form, Qt::Key_Escape);
    EXPECT_EQ(closed.Take(), "");
    test::Key(form, Qt::Key_Escape);
    EXPECT_EQ(closed.Take(), "cancel:0 ");
  });
}

TEST_F(PlotXYTest, DoubleClick_ShowsAll) {
  plot.AddSeries(Slope());
  Run([&] {
    plot.Zoom({10, 20}, {0, 50});
    QTest::mouseDClick(Window(), Qt::LeftButton, Qt::NoModifier, OnForm(At(0.5, 0.5)));
    EXPECT_FALSE(plot.IsZoomed());
  });
}

TEST_F(PlotXYTest, PressThatAHandlerTook_ZoomsNothing) {
  struct Taker : object {
    void On(MouseArgs& args) { args.handled = true; }
  } taker;
  plot.onMouseDown.Add_H(&taker, &Taker::On);
  plot.onMouseWeel.Add_H(&taker, &Taker::On);
  plot.AddSeries(Slope());
  Run([&] {
    Drag(At(0.2, 0.2), At(0.6, 0.6));
    test::TurnWheel(plot, At(0.5, 0.5), 120);
    EXPECT_FALSE(plot.IsZoomed());
  });
}

TEST_F(PlotXYTest, OtherButtons_ZoomNothing) {
  plot.AddSeries(Slope());
  Run([&] {
    QTest::mousePress(Window(), Qt::RightButton, Qt::NoModifier, OnForm(At(0.2, 0.2)));
    Move(At(0.6, 0.6));
    QTest::mouseRelease(Window(), Qt::RightButton, Qt::NoModifier, OnForm(At(0.6, 0.6)));
    EXPECT_FALSE(plot.IsZoomed());
  });
}

TEST_F(PlotXYTest, Wheel_ZoomsAtTheMouseAndBack) {
  plot.AddSeries(Slope());
  Run([&] {
    const QPoint at = At(0.3, 0.8);
    const double x = plot.XAt(at.x()), y = plot.YAt(at.y());
    const PlotRange all = plot.XRange();
    test::TurnWheel(plot, at, 120);
    EXPECT_NEAR(plot.XRange().Span(), all.Span() / 1.25, 1e-9);
    EXPECT_NEAR(plot.XAt(at.x()), x, 0.3);
    EXPECT_NEAR(plot.YAt(at.y()), y, 0.3);
    test::TurnWheel(plot, At(0.9, 0.1), -120);
    EXPECT_TRUE(plot.IsZoomed()) << "another place: not all yet";
    EXPECT_GE(plot.XRange().min, all.min);
    for (int i = 0; i < 3; ++i) test::TurnWheel(plot, at, -120);
    EXPECT_FALSE(plot.IsZoomed());
    EXPECT_EQ(plot.XRange(), all);
  });
}

TEST_F(PlotXYTest, WheelWithoutUse_IsTheContainers) {
  plot.AddSeries(Slope());
  struct Counter : object {
    int count = 0;
    void On(MouseArgs&) { ++count; }
  } outer;
  form.onMouseWeel.Add_H(&outer, &Counter::On);
  Run([&] {
    test::TurnWheel(plot, At(0.5, 0.5), 120);
    EXPECT_EQ(outer.count, 0);
    plot.ShowAll();
    test::TurnWheel(plot, At(0.5, 0.5), -120);
    EXPECT_EQ(outer.count, 1);
    for (int i = 0; i < 400; ++i) test::TurnWheel(plot, At(0.5, 0.5), 120);
    EXPECT_GT(outer.count, 1) << "the numbers end somewhere";
    EXPECT_GT(plot.XRange().Span(), 0);
    test::Pixels(plot);
  });
}

TEST_F(PlotXYTest, Keys_ZoomAndMove) {
  plot.AddSeries(Slope());
  Run([&] {
    plot.Focus();
    const PlotRange all = plot.XRange();
    test::Key(form, Qt::Key_Left);
    EXPECT_EQ(plot.XRange(), all);
    test::Key(form, Qt::Key_Plus);
    const PlotRange zoomed = plot.XRange();
    EXPECT_NEAR(zoomed.Span(), all.Span() / 1.25, 1e-9);
    test::Key(form, Qt::Key_Left);
    EXPECT_NEAR(plot.XRange().min, zoomed.min - zoomed.Span() / 10, 1e-9);
    for (int i = 0; i < 9; ++i) test::Key(form, Qt::Key_Left);
    EXPECT_NEAR(plot.XRange().min, all.min, 1e-9);
    const PlotRange y = plot.YRange();
    test::Key(form, Qt::Key_Up);
    EXPECT_GT(plot.YRange().min, y.min);
    for (int i = 0; i < 3; ++i) test::Key(form, Qt::Key_Minus);
    EXPECT_FALSE(plot.IsZoomed());
  });
}

TEST_F(PlotXYTest, Zoom_TakesRangesAsTheyCome) {
  plot.Zoom({5, 1}, {-1e308, 1e308});
  EXPECT_EQ(plot.XRange(), (PlotRange{1, 5}));
  EXPECT_EQ(plot.YRange(), (PlotRange{-1e300, 1e300}));
  plot.Zoom({0, cNan}, {0, 1});
  plot.Zoom({0, 1}, {0, cInfinite});
  EXPECT_EQ(plot.XRange(), (PlotRange{1, 5}));
  plot.Zoom({3, 3}, {0, 1});
  EXPECT_LT(plot.XRange().min, 3);
  EXPECT_GT(plot.XRange().max, 3);
}

TEST_F(PlotXYTest, OddNumbersAndSizes_AreDrawn) {
  const std::vector<std::vector<double>> all = {{},
                                                {5},
                                                {cNan},
                                                {cNan, cNan},
                                                {1, cNan, 3},
                                                {7, 7, 7},
                                                {cInfinite},
                                                {1, cInfinite},
                                                {-1e308, 1e308},
                                                {5e-324, 0},
                                                {0, 0},
                                                {1e-300, 1e300},
                                                {-cInfinite, 2, cNan, 4, cInfinite, 6}};
  plot.title = "A title that is longer than most of the plots that are drawn here";
  plot.yTitle = "Grüße";
  Run([&] {
    for (const PlotStyle style : {PlotStyle::cLines, PlotStyle::cPoints, PlotStyle::cBoth})
      for (const auto& values : all) {
        plot.Clear();
        plot.AddSeries({"named", style, Color(), {}, values});
        plot.AddSeries({"other", style, Color(), values, values});
        test::Pixels(plot);
      }
    for (int width = -1; width < 300; width += 7)
      for (const int height : {-1, 0, 1, 30, 80, 120, 300}) plot.ToBitmap(width, height);
  });
}

TEST_F(PlotXYTest, Handlers_MayDeleteThePlot) {
  plot.AddSeries(Slope());
  test::EventLog events;
  events.Listen("zoom", plot.onZoom, [&](NotifyArgs&) { form.plot.reset(); });
  Run([&] {
    Drag(At(0.2, 0.2), At(0.6, 0.6));
    EXPECT_FALSE(form.plot);
    EXPECT_EQ(events.Take(), "zoom:1 ");
  });
}

TEST_F(PlotXYTest, Picture_IsWhatIsShown) {
  const test::TempFolder folder;
  plot.AddSeries(Slope("slope"));
  Run([&] {
    const std::string path = folder.Path() + "/plot.png";
    EXPECT_EQ(plot.SavePicture(path).Words(), "");
    const QImage shown = test::Pixels(plot).convertToFormat(QImage::Format_RGB32);
    const QImage saved = QImage(QString::fromStdString(path)).convertToFormat(QImage::Format_RGB32);
    EXPECT_EQ(saved.size(), shown.size());
    EXPECT_EQ(saved.pixelColor(saved.width() / 2, saved.height() / 2),
              shown.pixelColor(shown.width() / 2, shown.height() / 2));
    Picture back;
    EXPECT_EQ(back.Load(path), PictureResult::cLoaded);
    plot.CopyPicture();
    const QImage copied =
        QGuiApplication::clipboard()->image().convertToFormat(QImage::Format_RGB32);
    EXPECT_TRUE(copied == saved);
    QGuiApplication::clipboard()->clear();
    plot.Focus();
    test::Key(form, Qt::Key_C);
    EXPECT_TRUE(QGuiApplication::clipboard()->image().isNull());
    test::Key(form, Qt::Key_C, Qt::ControlModifier);
    EXPECT_FALSE(QGuiApplication::clipboard()->image().isNull());
  });
  EXPECT_NE(plot.SavePicture(folder.Path() + "/none/plot.png").Words(), "");
}

TEST_F(PlotXYTest, Bitmap_NeedsNoWindow) {
  plot.AddSeries(Slope());
  const Bitmap bitmap = plot.ToBitmap(300, 200, 2);
  EXPECT_EQ(bitmap.Width(), 600);
  EXPECT_EQ(bitmap.Height(), 400);
  bool hasCurve = false;
  for (int y = 0; y < 400; ++y)
    for (int x = 0; x < 600; ++x) hasCurve |= bitmap.Row(y)[x] == 0xFFFF0000U;
  EXPECT_TRUE(hasCurve);
  EXPECT_TRUE(plot.ToBitmap(0, 100).IsEmpty());
  EXPECT_TRUE(plot.ToBitmap(100, 100, 0).IsEmpty());
  EXPECT_TRUE(plot.ToBitmap(100, 100, cNan).IsEmpty());
  EXPECT_TRUE(plot.ToBitmap(1 << 30, 1 << 30).IsEmpty());
}

double Luminance(Color color) {
  double sum = 0;
  const double weights[] = {0.2126, 0.7152, 0.0722};
  for (int i = 0; i < 3; ++i) {
    const double channel = (color.Value() >> (16 - 8 * i) & 0xFF) / 255.0;
    sum += weights[i] *
           (channel <= 0.03928 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4));
  }
  return sum;
}

double Contrast(Color a, Color b) {
  const double one = Luminance(a) + 0.05, other = Luminance(b) + 0.05;
  return std::max(one, other) / std::min(one, other);
}

TEST_F(PlotXYTest, ColoursOfSeries_DifferAndCanBeSeen) {
  for (int i = 0; i < 8; ++i) plot.AddSeries("");
  for (const Color ground : {Color(0xFFFFFF), Color(0x232323), Color(0x353535)}) {
    plot.backColor = ground;
    for (int i = 0; i < 8; ++i) {
      EXPECT_GE(Contrast(plot.SeriesColor(i), ground), 3) << i;
      for (int other = 0; other < i; ++other)
        EXPECT_NE(plot.SeriesColor(i), plot.SeriesColor(other));
    }
  }
}

TEST_F(PlotXYTest, Name_IsTheTitleForScreenReaders) {
  plot.title = "Heat";
  Run([&] {
    EXPECT_EQ(test::WidgetOf(plot)->accessibleName(), "Heat");
    plot.title = "Cold";
    EXPECT_EQ(test::WidgetOf(plot)->accessibleName(), "Cold");
    plot.accessibleName = "Own";
    plot.title = "Other";
    EXPECT_EQ(test::WidgetOf(plot)->accessibleName(), "Own");
  });
}

TEST_F(PlotXYTest, NameOfTheUprightAxis_IsAboveItsHighestLabel) {
  plot.yTitle = "y";
  plot.Zoom({0, 1}, {0, 1});
  Run([&] {
    const QImage image = test::Pixels(plot);
    const Rect area = plot.PlotArea();
    const QColor ground = test::GroundOf(image);
    constexpr int cFocusMark = 4;  // pixels at the edges
    int texts = 0;
    bool wasInk = false;
    for (int row = cFocusMark; row < area.top + 20; ++row) {
      bool isInk = false;
      for (int column = cFocusMark; column < area.left - 8; ++column)
        isInk =
            isInk || std::abs(image.pixelColor(column, row).lightness() - ground.lightness()) > 60;
      texts += isInk && !wasInk;
      wasInk = isInk;
    }
    EXPECT_EQ(texts, 2);
  });
}

// For people to look at: build/shots/plot-*.png.
TEST_F(PlotXYTest, LightAndDark_CanBeRead) {
  plot.title = "Damped waves";
  plot.xTitle = "time in s";
  plot.yTitle = "height in m";
  PlotSeries wave{"wave", PlotStyle::cLines, Color(), {}, {}};
  PlotSeries dots{"measured", PlotStyle::cPoints, Color(), {}, {}};
  PlotSeries noise{"noise", PlotStyle::cLines, Color(), {}, {}};
  for (int i = 0; i < 2000; ++i) {
    const double x = i / 100.0;
    wave.x.push_back(x);
    wave.y.push_back(std::sin(x * 2) * std::exp(-x / 8));
    noise.x.push_back(x);
    noise.y.push_back(-1.4 + 0.2 * std::sin(i * 12.9898 + std::cos(i * 78.233) * 3));
    if (i % 60 == 0) {
      dots.x.push_back(x);
      dots.y.push_back(wave.y.back() + 0.08 * std::sin(i * 7.0));
    }
  }
  plot.AddSeries(wave);
  plot.AddSeries(dots);
  plot.AddSeries(noise);
  plot.AddSeries({"both", PlotStyle::cBoth, Color(), {1, 5, 9, 13}, {0.9, 1.1, 0.7, 1.0}});
  const QPalette light = QApplication::palette();
  Run([&] {
    const std::string scale = qEnvironmentVariable("QT_SCALE_FACTOR", "1").toStdString();
    for (const bool isDark : {false, true}) {
      QApplication::setPalette(isDark ? test::DarkPalette() : light);
      QApplication::processEvents();
      const QImage image = test::Pixels(plot);
      EXPECT_EQ(qGray(test::GroundOf(image)) < 128, isDark);
      EXPECT_GT(test::InkStrength(image), 150);
      Press(At(0.3, 0.3));
      Move(At(0.6, 0.8));
      test::Shot(form, std::string("plot-") + (isDark ? "dark-" : "light-") + scale);
      test::Key(form, Qt::Key_Escape);
      Release(At(0.6, 0.8));
    }
  });
  QApplication::setPalette(light);
}

}  // namespace
}  // namespace mavro
