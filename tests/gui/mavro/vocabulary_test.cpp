// Every word that designed forms are written in is used once in this program, as they write it:
// each control's properties in the order of the designer's table, then its events.
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QSlider>
#include <QSpinBox>
#include <QTabBar>
#include <QTableView>
#include <QTreeView>
#include <mavro>

#include "GuiDriver.h"

namespace {

struct NumberSource : DataSource {
  void Get(std::string& out) override { out = "1"; }
  void Set(const std::string&) override {}
};

class VocabularyForm : public Form {
  typedef VocabularyForm This;

 public:
  //! decl
  Label label1, docked1, docked2, docked3, docked4;
  Label docked5;
  Edit edit1, edit2, edit3, edit4;
  Memo memo1;
  ComboBox comboBox1;
  Button button1, button2;
  CheckBox checkBox1;
  RichView richView1;
  GroupBox groupBox1;
  RadioGroup radioGroup1;
  Panel panel1;
  ListBox listBox1;
  TabCtrl tabCtrl1;
  TabPage tabPage1, tabPage2;
  ListView listView1;
  DataGrid dataGrid1;
  TreeView treeView1;
  ToolBar toolBar1;
  StatusBar statusBar1;
  ProgressBar progressBar1;
  TrackBar trackBar1;
  SpinEdit spinEdit1;
  CheckGroup checkGroup1;
  Image image1;
  DialCtrl dialCtrl1;
  PaintBox paintBox1;
  PlotXY plotXY1;
  //! end
  VocabularyForm() { Initialize(); }

  NumberSource number;
  int fired = 0;

  void OnNotify(NotifyArgs&) { ++fired; }
  void OnKey(KeyArgs&) { ++fired; }
  void OnMouse(MouseArgs&) { ++fired; }
  void OnItem(ItemArgs&) { ++fired; }
  void OnTree(TreeArgs&) { ++fired; }
  void OnPaint(PaintArgs&) { ++fired; }

 private:
  void Initialize() {
    //! init
    this->SetBounds(20, 30, 700, 600);
    this->borderStyle = BorderStyle::cFrame;
    this->backColor = Color::cWindow;
    this->foreColor = Color::cWindowText;
    this->font = Font(11);
    this->text = "Vocabulary";
    this->toolTip = "the form";
    this->tag = 7;
    this->resizable = false;
    this->center = false;
    this->windowType = Form::cToolWindow;
    this->onDblClick.Add_H(this, &This::OnNotify);
    this->onCreate.Add_H(this, &This::OnNotify);
    this->onContextMenu.Add_H(this, &This::OnMouse);
    this->onMouseDown.Add_H(this, &This::OnMouse);
    this->onMouseUp.Add_H(this, &This::OnMouse);
    this->onMouseMove.Add_H(this, &This::OnMouse);
    this->onMouseLeave.Add_H(this, &This::OnMouse);
    this->onMouseEnter.Add_H(this, &This::OnMouse);
    this->onMouseWeel.Add_H(this, &This::OnMouse);
    this->onKeyDown.Add_H(this, &This::OnKey);
    this->onKeyUp.Add_H(this, &This::OnKey);
    this->onChar.Add_H(this, &This::OnKey);
    this->onMove.Add_H(this, &This::OnNotify);
    this->onResize.Add_H(this, &This::OnNotify);
    this->onGotFocus.Add_H(this, &This::OnNotify);
    this->onActivate.Add_H(this, &This::OnNotify);
    this->onChangeState.Add_H(this, &This::OnNotify);
    this->onShow.Add_H(this, &This::OnNotify);
    this->onClose.Add_H(this, &This::OnNotify);
    this->onDestroy.Add_H(this, &This::OnNotify);
    this->onKeyPreview.Add_H(this, &This::OnNotify);
    //!< Label>
    label1.SetBounds(10, 40, 150, 30);
    label1.borderStyle = BorderStyle::cFixed3d;
    label1.backColor = Color::cYellow;
    label1.foreColor = Color::cBlue;
    label1.font = Font(12, Font::cBold | Font::cItalic);
    label1.text = "Label";
    label1.toolTip = "a tip";
    label1.tag = 5;
    label1.align = Align::cRight;
    label1.onDblClick.Add_H(this, &This::OnNotify);
    label1.onContextMenu.Add_H(this, &This::OnMouse);
    label1.onMove.Add_H(this, &This::OnNotify);
    label1.onResize.Add_H(this, &This::OnNotify);
    this->Add(&label1);
    docked1.dock = Dock::cTop;
    docked1.height = 20;
    docked1.borderStyle = BorderStyle::cStatic;
    panel1.Add(&docked1);
    docked2.dock = Dock::cBootom;
    docked2.height = 10;
    docked2.borderStyle = BorderStyle::cRised;
    panel1.Add(&docked2);
    docked3.dock = Dock::cLeft;
    docked3.width = 15;
    panel1.Add(&docked3);
    docked4.dock = Dock::cRight;
    docked4.width = 15;
    panel1.Add(&docked4);
    docked5.dock = Dock::cFill;
    panel1.Add(&docked5);
    //!< Edit>
    edit1.SetLocation(10, 80);
    edit1.SetSize(100, 24);
    edit1.borderStyle = BorderStyle::cNone;
    edit1.text = "1.5";
    edit1.dataType = Edit::cFloat;
    edit1.readOnly = true;
    edit1.onChange.Add_H(this, &This::OnNotify);
    edit1.onValidate.Add_H(this, &This::OnItem);
    edit1.onGotFocus.Add_H(this, &This::OnNotify);
    edit1.onLostFocus.Add_H(this, &This::OnNotify);
    this->Add(&edit1);
    edit2.dataType = Edit::cInteger;
    edit3.dataType = Edit::cUpperCase;
    edit4.dataType = Edit::cPassword;
    panel1.Add(&edit2);
    panel1.Add(&edit3);
    panel1.Add(&edit4);
    memo1.SetBounds(10, 110, 100, 40);
    memo1.text = "lines";
    this->Add(&memo1);
    //!< ComboBox>
    comboBox1.SetBounds(120, 80, 100, 24);
    comboBox1.items.Add("x");
    comboBox1.items.Add("y");
    comboBox1.selectedIndex = 1;
    comboBox1.chooseOnly = true;
    comboBox1.onSelChanged.Add_H(this, &This::OnItem);
    this->Add(&comboBox1);
    //!< Button>
    button1.SetBounds(10, 160, 84, 34);
    button1.kind = Button::cOk;
    button1.cmd = 12;
    button1.hot = true;
    button1.icon = Icons::icoNew;
    button1.onClick.Add_H(this, &This::OnNotify);
    this->Add(&button1);
    for (const int kind :
         {Button::cCancel, Button::cNo, Button::cOpen, Button::cSave, Button::cPrint, Button::cRun,
          Button::cGo, Button::cEdit, Button::cSetup, Button::cClose, Button::cNone})
      button2.kind = kind;
    panel1.Add(&button2);
    checkBox1.SetBounds(100, 160, 100, 22);
    checkBox1.checked = true;
    checkBox1.onKeyDown.Add_H(this, &This::OnKey);
    this->Add(&checkBox1);
    richView1.SetBounds(10, 200, 100, 50);
    richView1.text = "{\\rtf1 rich}";
    this->Add(&richView1);
    groupBox1.SetBounds(120, 200, 100, 50);
    groupBox1.text = "Group";
    this->Add(&groupBox1);
    //!< RadioGroup>
    radioGroup1.SetBounds(230, 40, 120, 80);
    radioGroup1.items.Add("x");
    radioGroup1.items.Add("y");
    radioGroup1.itemIndex = 1;
    radioGroup1.onChange.Add_H(this, &This::OnNotify);
    this->Add(&radioGroup1);
    panel1.SetBounds(360, 40, 120, 120);
    panel1.borderStyle = BorderStyle::cFrame;
    panel1.backColor = Color::cLightGray;
    panel1.onMouseDown.Add_H(this, &This::OnMouse);
    panel1.onMouseLeave.Add_H(this, &This::OnNotify);
    panel1.onMouseEnter.Add_H(this, &This::OnNotify);
    this->Add(&panel1);
    listBox1.SetBounds(230, 130, 100, 60);
    listBox1.items.Add("x");
    listBox1.items.Add("y");
    listBox1.selectedIndex = 1;
    listBox1.onSelChanged.Add_H(this, &This::OnNotify);
    this->Add(&listBox1);
    //!< TabCtrl>
    tabCtrl1.SetBounds(230, 200, 150, 60);
    tabCtrl1.selectedIndex = 1;
    tabCtrl1.onChange.Add_H(this, &This::OnNotify);
    this->Add(&tabCtrl1);
    //!< TabPage>
    tabPage1.text = "Page1";
    tabCtrl1.Add(&tabPage1);
    tabPage2.text = "Page2";
    tabPage2.tag = 3;
    tabCtrl1.Add(&tabPage2);
    //!< ListView>
    listView1.SetBounds(10, 260, 200, 100);
    listView1.colCount = 3;
    listView1.rowCount = 5;
    listView1.fullRowSelect = false;
    listView1.editLabels = true;
    listView1.gridLines = false;
    listView1.headerVisible = false;
    listView1.showSelection = true;
    listView1.onCreate.Add_H(this, &This::OnNotify);
    listView1.onChoose.Add_H(this, &This::OnNotify);
    listView1.onChangeText.Add_H(this, &This::OnNotify);
    listView1.onChangeSel.Add_H(this, &This::OnNotify);
    listView1.onPostEdit.Add_H(this, &This::OnItem);
    this->Add(&listView1);
    //!< DataGrid>
    dataGrid1.SetBounds(330, 400, 200, 100);
    dataGrid1.text = "Grid";
    dataGrid1.colCount = 3;
    dataGrid1.rowCount = 5;
    dataGrid1.fullRowSelect = false;
    dataGrid1.editLabels = true;
    dataGrid1.gridLines = false;
    dataGrid1.headerVisible = false;
    dataGrid1.showSelection = true;
    dataGrid1.lockCol = 1;
    dataGrid1.rowHeight = 30;
    dataGrid1.onClick.Add_H(this, &This::OnNotify);
    dataGrid1.onDblClick.Add_H(this, &This::OnNotify);
    dataGrid1.onCreate.Add_H(this, &This::OnNotify);
    dataGrid1.onMouseWeel.Add_H(this, &This::OnMouse);
    dataGrid1.onChar.Add_H(this, &This::OnKey);
    dataGrid1.onLostFocus.Add_H(this, &This::OnNotify);
    dataGrid1.onChoose.Add_H(this, &This::OnNotify);
    dataGrid1.onChangeText.Add_H(this, &This::OnNotify);
    dataGrid1.onChangeSel.Add_H(this, &This::OnNotify);
    dataGrid1.onPostEdit.Add_H(this, &This::OnItem);
    dataGrid1.onStartEdit.Add_H(this, &This::OnItem);
    this->Add(&dataGrid1);
    treeView1.SetBounds(220, 270, 100, 90);
    treeView1.onChoose.Add_H(this, &This::OnTree);
    treeView1.onExpand.Add_H(this, &This::OnTree);
    this->Add(&treeView1);
    //!< ToolBar>
    toolBar1.dock = Dock::cTop;
    toolBar1.height = 32;
    toolBar1.items.Add(Icons::icoNew, "New");
    toolBar1.items.Add(_separator_);
    toolBar1.items.Add(Icons::icoOpen, "Open");
    toolBar1.onClick.Add_H(this, &This::OnNotify);
    this->Add(&toolBar1);
    statusBar1.dock = Dock::cBootom;
    statusBar1.height = 24;
    statusBar1.AddPane(0, "stretching");
    statusBar1.AddPane(200, "fixed");
    statusBar1.SetPane(1, "changed");
    this->Add(&statusBar1);
    progressBar1.SetBounds(10, 370, 100, 20);
    progressBar1.value = 30;
    this->Add(&progressBar1);
    //!< TrackBar>
    trackBar1.SetBounds(120, 370, 30, 100);
    trackBar1.min = 5;
    trackBar1.max = 50;
    trackBar1.value = 20;
    trackBar1.orientation = cVertical;
    trackBar1.onChange.Add_H(this, &This::OnNotify);
    this->Add(&trackBar1);
    //!< SpinEdit>
    spinEdit1.SetBounds(160, 370, 80, 24);
    spinEdit1.min = 1;
    spinEdit1.max = 9;
    spinEdit1.value = 4;
    spinEdit1.onChange.Add_H(this, &This::OnNotify);
    this->Add(&spinEdit1);
    //!< CheckGroup>
    checkGroup1.SetBounds(330, 270, 120, 80);
    checkGroup1.dataLink = &number;
    checkGroup1.items.Add("x");
    checkGroup1.items.Add("y");
    checkGroup1.itemFlags = 2;
    checkGroup1.onChange.Add_H(this, &This::OnNotify);
    this->Add(&checkGroup1);
    image1.SetBounds(10, 420, 60, 60);
    image1.stretch = true;
    image1.autosize = true;
    image1.proportional = true;
    this->Add(&image1);
    //!< DialCtrl>
    dialCtrl1.SetBounds(460, 270, 120, 120);
    dialCtrl1.pos = 72.5;
    dialCtrl1.min = 10;
    dialCtrl1.max = 100;
    dialCtrl1.steps = 180;
    dialCtrl1.showPos = false;
    dialCtrl1.labels = DialCtrl::cView;
    dialCtrl1.text = "Dial";
    dialCtrl1.onChange.Add_H(this, &This::OnNotify);
    this->Add(&dialCtrl1);
    //!< PaintBox>
    paintBox1.SetBounds(590, 270, 100, 60);
    paintBox1.borderStyle = BorderStyle::cFrame;
    paintBox1.backColor = Color::cYellow;
    paintBox1.foreColor = Color::cBlue;
    paintBox1.toolTip = "a drawing";
    paintBox1.tag = 8;
    paintBox1.onClick.Add_H(this, &This::OnNotify);
    paintBox1.onDblClick.Add_H(this, &This::OnNotify);
    paintBox1.onCreate.Add_H(this, &This::OnNotify);
    paintBox1.onContextMenu.Add_H(this, &This::OnMouse);
    paintBox1.onMouseDown.Add_H(this, &This::OnMouse);
    paintBox1.onMouseUp.Add_H(this, &This::OnMouse);
    paintBox1.onMouseMove.Add_H(this, &This::OnMouse);
    paintBox1.onMouseLeave.Add_H(this, &This::OnMouse);
    paintBox1.onMouseEnter.Add_H(this, &This::OnMouse);
    paintBox1.onMouseWeel.Add_H(this, &This::OnMouse);
    paintBox1.onKeyDown.Add_H(this, &This::OnKey);
    paintBox1.onKeyUp.Add_H(this, &This::OnKey);
    paintBox1.onChar.Add_H(this, &This::OnKey);
    paintBox1.onMove.Add_H(this, &This::OnNotify);
    paintBox1.onResize.Add_H(this, &This::OnNotify);
    paintBox1.onGotFocus.Add_H(this, &This::OnNotify);
    paintBox1.onDraw.Add_H(this, &This::OnNotify);
    paintBox1.onPaint.Add_H(this, &This::OnPaint);
    this->Add(&paintBox1);
    //!< PlotXY>
    plotXY1.SetBounds(590, 340, 100, 80);
    plotXY1.borderStyle = BorderStyle::cFrame;
    plotXY1.backColor = Color::cYellow;
    plotXY1.foreColor = Color::cBlue;
    plotXY1.toolTip = "a plot";
    plotXY1.tag = 9;
    plotXY1.onClick.Add_H(this, &This::OnNotify);
    plotXY1.onDblClick.Add_H(this, &This::OnNotify);
    plotXY1.onCreate.Add_H(this, &This::OnNotify);
    plotXY1.onContextMenu.Add_H(this, &This::OnMouse);
    plotXY1.onMouseDown.Add_H(this, &This::OnMouse);
    plotXY1.onMouseUp.Add_H(this, &This::OnMouse);
    plotXY1.onMouseMove.Add_H(this, &This::OnMouse);
    plotXY1.onMouseLeave.Add_H(this, &This::OnMouse);
    plotXY1.onMouseEnter.Add_H(this, &This::OnMouse);
    plotXY1.onMouseWeel.Add_H(this, &This::OnMouse);
    plotXY1.onKeyDown.Add_H(this, &This::OnKey);
    plotXY1.onKeyUp.Add_H(this, &This::OnKey);
    plotXY1.onChar.Add_H(this, &This::OnKey);
    plotXY1.onMove.Add_H(this, &This::OnNotify);
    plotXY1.onResize.Add_H(this, &This::OnNotify);
    plotXY1.onGotFocus.Add_H(this, &This::OnNotify);
    this->Add(&plotXY1);
    //! end
  }
};

template <class Widget>
Widget* As(const Control& control) {
  return qobject_cast<Widget*>(test::WidgetOf(control));
}

struct Vocabulary : testing::Test {
  // Runs the form and calls `look` while its windows stand.
  void Run(const std::function<void()>& look) { test::RunForm(form, true, look); }
  VocabularyForm form;
};

TEST_F(Vocabulary, GenericRows_AreReadBackFromTheWindow) {
  Run([&] {
    const Label& label = form.label1;
    auto* widget = As<QLabel>(label);
    EXPECT_EQ(widget->geometry(), QRect(10, 40, 150, 30));
    EXPECT_EQ(label.Bounds(), (Rect{10, 40, 150, 30}));
    EXPECT_EQ(widget->frameShape(), QFrame::StyledPanel);
    EXPECT_EQ(label.borderStyle, BorderStyle::cFixed3d);
    EXPECT_EQ(widget->palette().color(QPalette::Window), QColor(255, 255, 0));
    EXPECT_EQ(widget->palette().color(QPalette::WindowText), QColor(0, 0, 255));
    EXPECT_EQ(widget->font().pointSize(), 12);
    EXPECT_TRUE(widget->font().bold() && widget->font().italic());
    EXPECT_EQ(label.font, Font(12, Font::cBold | Font::cItalic));
    EXPECT_EQ(widget->text(), "Label");
    EXPECT_EQ(label.text.Get(), "Label");
    EXPECT_EQ(widget->toolTip(), "a tip");
    EXPECT_EQ(label.hint.Get(), "a tip");
    EXPECT_EQ(label.tag, 5);
    EXPECT_TRUE(widget->alignment() & Qt::AlignRight);
    EXPECT_EQ(form.checkGroup1.dataLink.Get(), &form.number);
    test::Shot(form, "vocabulary");
  });
}

TEST_F(Vocabulary, Dock_PlacesByEachWord) {
  Run([&] {
    EXPECT_EQ(form.docked1.Bounds(), (Rect{0, 0, 118, 20}));
    EXPECT_EQ(form.docked2.Bounds(), (Rect{0, 108, 118, 10}));
    EXPECT_EQ(form.docked3.Bounds(), (Rect{0, 20, 15, 88}));
    EXPECT_EQ(form.docked4.Bounds(), (Rect{103, 20, 15, 88}));
    EXPECT_EQ(form.docked5.Bounds(), (Rect{15, 20, 88, 88}));
  });
}

TEST_F(Vocabulary, Form_RowsOfItsOwn) {
  Run([&] {
    const QWidget* window = test::WidgetOf(form);
    EXPECT_EQ(window->minimumSize(), window->maximumSize());
    EXPECT_EQ(window->windowType(), Qt::Tool);
    EXPECT_EQ(window->windowTitle(), "Vocabulary");
    EXPECT_FALSE(form.center);
    EXPECT_EQ(form.tag, 7);
    EXPECT_GT(form.fired, 3) << "onCreate, onShow, onActivate, onResize";
  });
}

TEST_F(Vocabulary, TextControls) {
  Run([&] {
    EXPECT_TRUE(As<QLineEdit>(form.edit1)->isReadOnly());
    EXPECT_EQ(form.edit1.text.Get(), "1.5");
    EXPECT_EQ(form.edit1.dataType, Edit::cFloat);
    EXPECT_FALSE(As<QLineEdit>(form.edit1)->hasFrame());
    EXPECT_EQ(As<QLineEdit>(form.edit4)->echoMode(), QLineEdit::Password);
    EXPECT_EQ(form.memo1.text.Get(), "lines");
    EXPECT_EQ(form.richView1.PlainText(), "rich");
    form.edit3.readOnly = false;
    form.edit3.Focus();
    QTest::keyClicks(test::WidgetOf(form.edit3), "ab");
    EXPECT_EQ(form.edit3.text.Get(), "AB");
    form.edit2.Focus();
    QTest::keyClicks(test::WidgetOf(form.edit2), "1x2");
    EXPECT_EQ(form.edit2.text.Get(), "12");
  });
}

TEST_F(Vocabulary, ButtonsAndBoxes) {
  Run([&] {
    EXPECT_EQ(As<QAbstractButton>(form.button1)->text(), "OK");
    EXPECT_FALSE(As<QAbstractButton>(form.button1)->icon().isNull());
    EXPECT_EQ(form.button1.cmd, 12);
    EXPECT_TRUE(form.button1.hot);
    EXPECT_TRUE(As<QAbstractButton>(form.checkBox1)->isChecked());
    EXPECT_EQ(As<QGroupBox>(form.groupBox1)->title(), "Group");
    const auto radios = As<QGroupBox>(form.radioGroup1)->findChildren<QAbstractButton*>();
    EXPECT_EQ(radios.size(), 2);
    EXPECT_TRUE(radios[1]->isChecked());
    EXPECT_EQ(form.checkGroup1.itemFlags, 1) << "the data link's value";
  });
}

TEST_F(Vocabulary, Lists) {
  Run([&] {
    EXPECT_EQ(As<QComboBox>(form.comboBox1)->currentText(), "y");
    EXPECT_FALSE(As<QComboBox>(form.comboBox1)->isEditable());
    EXPECT_EQ(As<QListWidget>(form.listBox1)->currentRow(), 1);
    auto* list = As<QTreeView>(form.listView1);
    EXPECT_EQ(list->model()->columnCount(), 3);
    EXPECT_EQ(list->model()->rowCount(), 5);
    EXPECT_EQ(list->selectionBehavior(), QAbstractItemView::SelectItems);
    EXPECT_NE(list->editTriggers(), QAbstractItemView::NoEditTriggers);
    EXPECT_FALSE(list->header()->isVisible());
    EXPECT_FALSE(form.listView1.gridLines);
    EXPECT_TRUE(form.listView1.showSelection);
    auto* grid = As<QTableView>(form.dataGrid1);
    EXPECT_EQ(grid->model()->columnCount(), 3);
    EXPECT_EQ(grid->model()->rowCount(), 5);
    EXPECT_EQ(grid->rowHeight(0), 30);
    EXPECT_FALSE(grid->horizontalHeader()->isVisible());
    EXPECT_FALSE(form.dataGrid1.fullRowSelect || form.dataGrid1.gridLines);
    EXPECT_TRUE(form.dataGrid1.editLabels && form.dataGrid1.showSelection);
    EXPECT_EQ(form.dataGrid1.lockCol, 1);
    EXPECT_EQ(form.dataGrid1.text.Get(), "Grid");
    EXPECT_EQ(form.tabCtrl1.selectedIndex, 1);
    EXPECT_EQ(test::WidgetOf(form.tabCtrl1)->findChild<QTabBar*>()->tabText(0), "Page1");
    EXPECT_EQ(form.tabPage2.tag, 3);
  });
}

TEST_F(Vocabulary, BarsAndNumbers) {
  Run([&] {
    EXPECT_EQ(form.toolBar1.items.GetCount(), 3);
    EXPECT_TRUE(form.toolBar1.GetRow(1).separator);
    EXPECT_EQ(form.toolBar1.GetRow(2).image, Icons::icoOpen);
    EXPECT_EQ(form.statusBar1.PaneText(1), "changed");
    EXPECT_EQ(form.progressBar1.value, 30);
    auto* slider = As<QSlider>(form.trackBar1);
    EXPECT_EQ(slider->minimum(), 5);
    EXPECT_EQ(slider->maximum(), 50);
    EXPECT_EQ(slider->value(), 20);
    EXPECT_EQ(slider->orientation(), Qt::Vertical);
    auto* spin = As<QSpinBox>(form.spinEdit1);
    EXPECT_EQ(spin->minimum(), 1);
    EXPECT_EQ(spin->maximum(), 9);
    EXPECT_EQ(spin->value(), 4);
  });
}

TEST_F(Vocabulary, PicturesAndDials) {
  Run([&] {
    EXPECT_TRUE(form.image1.stretch && form.image1.autosize && form.image1.proportional);
    EXPECT_EQ(form.dialCtrl1.min, 10);
    EXPECT_EQ(form.dialCtrl1.max, 100);
    EXPECT_EQ(form.dialCtrl1.steps, 180);
    EXPECT_EQ(form.dialCtrl1.pos, 72.5) << "set before the scale it lies on";
    EXPECT_FALSE(form.dialCtrl1.showPos);
    EXPECT_EQ(form.dialCtrl1.labels, DialCtrl::cView);
    EXPECT_EQ(form.dialCtrl1.text.Get(), "Dial");
  });
}

TEST_F(Vocabulary, DrawingsAndPlots) {
  Run([&] {
    for (const Control* control : {(Control*)&form.paintBox1, (Control*)&form.plotXY1}) {
      const QWidget* widget = test::WidgetOf(*control);
      EXPECT_EQ(widget->geometry().left(), 590);
      EXPECT_EQ(control->borderStyle, BorderStyle::cFrame);
      EXPECT_EQ(control->backColor, Color(Color::cYellow));
      EXPECT_EQ(control->foreColor, Color(Color::cBlue));
    }
    EXPECT_EQ(test::WidgetOf(form.paintBox1)->toolTip(), "a drawing");
    EXPECT_EQ(test::WidgetOf(form.plotXY1)->toolTip(), "a plot");
    EXPECT_EQ(form.paintBox1.tag, 8);
    EXPECT_EQ(form.plotXY1.tag, 9);
    form.fired = 0;
    form.paintBox1.Redraw();
    EXPECT_EQ(form.fired, 1) << "onDraw";
    test::WidgetOf(form.paintBox1)->grab();
    EXPECT_EQ(form.fired, 2) << "onPaint";
    form.fired = 0;
    test::Click(form.plotXY1);
    EXPECT_GE(form.fired, 3) << "onMouseDown, onMouseUp, onClick";
  });
}

TEST(VocabularyColors, EveryName) {
  const Color all[] = {Color::cBlack,     Color::cBlue,        Color::cCyan,
                       Color::cDarkGray,  Color::cGray,        Color::cGreen,
                       Color::cLightGray, Color::cMagenta,     Color::cOrange,
                       Color::cPink,      Color::cRed,         Color::cWhite,
                       Color::cYellow,    Color::cWindow,      Color::cWindowText,
                       Color::cControl,   Color::cControlText, Color::cControlShadow};
  Label label;
  for (const Color color : all) {
    label.backColor = color;
    EXPECT_EQ(label.backColor, color);
    EXPECT_FALSE(label.backColor.Get().IsDefault());
  }
}

TEST(VocabularyIcons, EveryNumber_HasAPicture) {
  Form form;
  Button button;
  form.Add(&button);
  test::RunForm(form, false, [&] {
    for (int icon = Icons::icoNew; icon <= Icons::icoDown; ++icon) {
      button.icon = icon;
      EXPECT_FALSE(As<QAbstractButton>(button)->icon().isNull()) << icon;
    }
  });
}

}  // namespace
