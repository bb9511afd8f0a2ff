// Before the toolkit, which has a macro "emit".
#include "frmedt/CtrlReg.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <set>

#include "DarkPalette.h"
#include "DesignTest.h"
#include "Looks.h"

// What the surface shows is what the program shows: one text of statements is compiled into a form
// and read by the designer, and the controls of both are compared by place and by pixel.

namespace zendry {
namespace {

using namespace mavro;

#define STATEMENTS                            \
  this->SetBounds(0, 0, 600, 420);            \
  this->text = "Sample";                      \
  bar1.dock = Dock::cTop;                     \
  bar1.height = 32;                           \
  bar1.items.Add(Icons::icoNew, "New");       \
  bar1.items.Add(Icons::icoOpen, "Open");     \
  this->Add(&bar1);                           \
  status1.dock = Dock::cBootom;               \
  status1.height = 24;                        \
  this->Add(&status1);                        \
  label1.SetBounds(12, 44, 120, 20);          \
  label1.text = "A caption";                  \
  label1.align = Align::cRight;               \
  label1.foreColor = Color::cBlue;            \
  this->Add(&label1);                         \
  label2.SetBounds(12, 68, 120, 30);          \
  label2.text = "Large";                      \
  label2.font = Font(14, Font::cBold);        \
  label2.borderStyle = BorderStyle::cFrame;   \
  this->Add(&label2);                         \
  edit1.SetBounds(150, 44, 120, 24);          \
  edit1.text = "Words";                       \
  this->Add(&edit1);                          \
  edit2.SetBounds(150, 74, 120, 24);          \
  edit2.text = "fixed";                       \
  edit2.readOnly = true;                      \
  this->Add(&edit2);                          \
  button1.SetBounds(290, 44, 84, 34);         \
  button1.text = "Press";                     \
  this->Add(&button1);                        \
  button2.SetBounds(384, 44, 100, 34);        \
  button2.kind = Button::cCancel;             \
  this->Add(&button2);                        \
  button3.SetBounds(494, 44, 84, 34);         \
  button3.text = "Icon";                      \
  button3.icon = Icons::icoSave;              \
  button3.backColor = Color::cYellow;         \
  this->Add(&button3);                        \
  check1.SetBounds(290, 86, 120, 22);         \
  check1.text = "Checked";                    \
  check1.checked = true;                      \
  this->Add(&check1);                         \
  group1.SetBounds(12, 110, 180, 90);         \
  group1.text = "Group";                      \
  this->Add(&group1);                         \
  check2.SetBounds(12, 30, 120, 22);          \
  check2.text = "Inside";                     \
  group1.Add(&check2);                        \
  radio1.SetBounds(200, 110, 140, 90);        \
  radio1.text = "One of";                     \
  radio1.items.Add("First");                  \
  radio1.items.Add("Second");                 \
  radio1.itemIndex = 1;                       \
  this->Add(&radio1);                         \
  checks1.SetBounds(350, 110, 140, 90);       \
  checks1.text = "Some of";                   \
  checks1.items.Add("First");                 \
  checks1.items.Add("Second");                \
  this->Add(&checks1);                        \
  panel1.SetBounds(500, 110, 80, 90);         \
  panel1.borderStyle = BorderStyle::cFixed3d; \
  panel1.backColor = Color::cWindow;          \
  this->Add(&panel1);                         \
  button4.SetBounds(8, 8, 56, 28);            \
  button4.text = "In";                        \
  panel1.Add(&button4);                       \
  tabs1.SetBounds(12, 210, 180, 90);          \
  this->Add(&tabs1);                          \
  page1.text = "Front";                       \
  tabs1.Add(&page1);                          \
  page2.text = "Back";                        \
  tabs1.Add(&page2);                          \
  label3.SetBounds(8, 8, 100, 20);            \
  label3.text = "On a page";                  \
  page1.Add(&label3);                         \
  progress1.SetBounds(200, 210, 140, 20);     \
  this->Add(&progress1);                      \
  track1.SetBounds(200, 240, 140, 30);        \
  track1.max = 10;                            \
  track1.value = 4;                           \
  this->Add(&track1);                         \
  track2.SetBounds(350, 210, 30, 90);         \
  track2.orientation = cVertical;             \
  this->Add(&track2);                         \
  dial1.SetBounds(390, 210, 90, 90);          \
  dial1.pos = 20;                             \
  dial1.labels = DialCtrl::cView;             \
  this->Add(&dial1);                          \
  memo1.SetBounds(12, 310, 100, 60);          \
  memo1.text = "Lines";                       \
  this->Add(&memo1);                          \
  combo1.SetBounds(120, 310, 100, 24);        \
  this->Add(&combo1);                         \
  spin1.SetBounds(120, 340, 100, 24);         \
  this->Add(&spin1);                          \
  list1.SetBounds(230, 310, 80, 60);          \
  this->Add(&list1);                          \
  table1.SetBounds(320, 310, 80, 60);         \
  this->Add(&table1);                         \
  tree1.SetBounds(410, 310, 80, 60);          \
  this->Add(&tree1);                          \
  image1.SetBounds(500, 310, 40, 60);         \
  this->Add(&image1);                         \
  view1.SetBounds(550, 310, 40, 60);          \
  this->Add(&view1);

#define TEXT_OF(...) #__VA_ARGS__
#define TEXT(...) TEXT_OF(__VA_ARGS__)

constexpr const char* cDeclarations =
    "ToolBar bar1;\nStatusBar status1;\nLabel label1, label2, label3;\nEdit edit1, edit2;\n"
    "Button button1, button2, button3, button4;\nCheckBox check1, check2;\nGroupBox group1;\n"
    "RadioGroup radio1;\nCheckGroup checks1;\nPanel panel1;\nTabCtrl tabs1;\n"
    "TabPage page1, page2;\nProgressBar progress1;\nTrackBar track1, track2;\nDialCtrl dial1;\n"
    "Memo memo1;\nComboBox combo1;\nSpinEdit spin1;\nListBox list1;\nListView table1;\n"
    "TreeView tree1;\nImage image1;\nRichView view1;\n";

// The program's form. Each control is found by its name.
class SampleForm : public Form {
 public:
  SampleForm() { STATEMENTS }
  const std::map<std::string, Control*>& Named() const { return named; }

 private:
  ToolBar bar1;
  StatusBar status1;
  Label label1, label2, label3;
  Edit edit1, edit2;
  Button button1, button2, button3, button4;
  CheckBox check1, check2;
  GroupBox group1;
  RadioGroup radio1;
  CheckGroup checks1;
  Panel panel1;
  TabCtrl tabs1;
  TabPage page1, page2;
  ProgressBar progress1;
  TrackBar track1, track2;
  DialCtrl dial1;
  Memo memo1;
  ComboBox combo1;
  SpinEdit spin1;
  ListBox list1;
  ListView table1;
  TreeView tree1;
  Image image1;
  RichView view1;
  const std::map<std::string, Control*> named = {
      {"bar1", &bar1},       {"status1", &status1},     {"label1", &label1},
      {"label2", &label2},   {"label3", &label3},       {"edit1", &edit1},
      {"edit2", &edit2},     {"button1", &button1},     {"button2", &button2},
      {"button3", &button3}, {"button4", &button4},     {"check1", &check1},
      {"check2", &check2},   {"group1", &group1},       {"radio1", &radio1},
      {"checks1", &checks1}, {"panel1", &panel1},       {"tabs1", &tabs1},
      {"page1", &page1},     {"progress1", &progress1}, {"track1", &track1},
      {"track2", &track2},   {"dial1", &dial1},         {"memo1", &memo1},
      {"combo1", &combo1},   {"spin1", &spin1},         {"list1", &list1},
      {"table1", &table1},   {"tree1", &tree1},         {"image1", &image1},
      {"view1", &view1}};
};

// The bar of the surface shows a pane that the program's has only when it is filled; the others are
// drawn as plain fields there.
const std::set<std::string> cStandIns = {"status1", "memo1", "combo1", "spin1", "list1",
                                         "table1",  "tree1", "image1", "view1"};

struct Seen {
  Rect place;  // from the form's corner
  QImage image;
};
using Picture = std::map<std::string, Seen>;

// As it is seen while the mouse is elsewhere.
Seen See(const Control& control, const Control& form) {
  QWidget* widget = test::WidgetOf(control);
  widget->setAttribute(Qt::WA_UnderMouse, false);
  for (QWidget* part : widget->findChildren<QWidget*>())
    part->setAttribute(Qt::WA_UnderMouse, false);
  const QPoint corner = widget->mapTo(test::WidgetOf(form), QPoint(0, 0));
  return {{corner.x(), corner.y(), widget->width(), widget->height()}, test::Pixels(control)};
}

constexpr int cMostDifference = 5;

// The share of pixels that differ by more than a shade, in thousandths.
int Difference(const QImage& a, const QImage& b) {
  constexpr int cShade = 24;
  if (a.size() != b.size()) return 1000;
  int count = 0;
  for (int y = 0; y < a.height(); ++y)
    for (int x = 0; x < a.width(); ++x) {
      const QRgb p = a.pixel(x, y), q = b.pixel(x, y);
      const int most = std::max({std::abs(qRed(p) - qRed(q)), std::abs(qGreen(p) - qGreen(q)),
                                 std::abs(qBlue(p) - qBlue(q))});
      count += most > cShade;
    }
  return count * 1000 / std::max(1, a.width() * a.height());
}

class SurfacePictureTest : public test::DesignTest {
 protected:
  // The statements, one in a line.
  static std::string Statements() {
    std::string text = TEXT(STATEMENTS);
    for (size_t at = 0; (at = text.find("; ", at)) != std::string::npos;)
      text.replace(at, 2, ";\n");
    return text + '\n';
  }
  Picture OnSurface(const std::string& shot) {
    Picture seen;
    Design(cDeclarations, Statements(), [&] {
      for (const auto& rec : form.controls)
        if (rec->parent && rec->name != "page2") seen[rec->name] = See(*rec->ctrl, Surface());
      test::Shot(*frame, "designer-sample-" + shot);
    });
    return seen;
  }
  static Picture InProgram(const std::string& shot) {
    Picture seen;
    SampleForm sample;
    test::RunForm(sample, false, [&] {
      if (QWidget* focused = QApplication::focusWidget()) focused->clearFocus();
      for (const auto& [name, control] : sample.Named()) seen[name] = See(*control, sample);
      test::Shot(sample, "designer-sample-program-" + shot);
    });
    return seen;
  }
  void Compare(const std::string& shot) {
    const Picture surface = OnSurface(shot), program = InProgram(shot);
    EXPECT_EQ(surface.size(), program.size());
    for (const auto& [name, seen] : program) {
      SCOPED_TRACE(name);
      ASSERT_TRUE(surface.contains(name));
      EXPECT_EQ(surface.at(name).place, seen.place);
      if (cStandIns.contains(name)) continue;
      EXPECT_LE(Difference(surface.at(name).image, seen.image), cMostDifference);
    }
  }
};

TEST_F(SurfacePictureTest, Light_ControlsAreWhereAndWhatTheProgramShows) {
  Compare("light");
}

TEST_F(SurfacePictureTest, Dark_ControlsAreWhereAndWhatTheProgramShows) {
  const QPalette light = QApplication::palette();
  QApplication::setPalette(test::DarkPalette());
  Compare("dark");
  QApplication::setPalette(light);
}

}  // namespace
}  // namespace zendry
