#include "RichView.h"

#include <gtest/gtest.h>

#include <QScrollBar>
#include <QTextBlock>
#include <QTextBrowser>
#include <memory>

#include "EventLog.h"
#include "Form.h"
#include "GuiDriver.h"

namespace mavro {
namespace {

constexpr char cHelp[] =
    "{\\rtf1\\ansi{\\fonttbl{\\f0 Sans;}}{\\colortbl;\\red200\\green0\\blue0;}"
    "\\b\\fs32 Title\\b0\\fs24\\par plain \\cf1 red\\cf0  \\'e9\\par"
    "\\li360\\fi-180\\bullet\\tab point\\par\\pard "
    "{\\field{\\*\\fldinst HYPERLINK \"topic:1\"}{\\fldrslt a link}}\\par}";

struct RichForm : Form {
  RichView view;
  std::string links;

  RichForm() {
    SetBounds(0, 0, 360, 220);
    view.SetBounds(10, 10, 320, 180);
    view.text = cHelp;
    view.onLink.Add_H(this, &RichForm::OnLink);
    Add(&view);
  }
  void OnLink(ItemArgs& args) { links += args.text + " "; }
  QTextBrowser* Widget() { return qobject_cast<QTextBrowser*>(test::WidgetOf(view)); }
  QTextCharFormat FormatAt(const char* word) {
    QTextCursor found = Widget()->document()->find(word);
    return found.charFormat();
  }
};

TEST(RichView, ShowsTextAndLooks) {
  RichForm form;
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.view.PlainText(), "Title\nplain red \xC3\xA9\n\xE2\x80\xA2\tpoint\na link");
    EXPECT_EQ(form.FormatAt("Title").fontWeight(), QFont::Bold);
    EXPECT_EQ(form.FormatAt("Title").fontPointSize(), 16);
    EXPECT_EQ(form.FormatAt("red").foreground().color(), QColor(200, 0, 0));
    EXPECT_EQ(form.view.text.Get(), cHelp);
    test::Shot(form, "rich_view");
  });
}

TEST(RichView, Link_ByEnterAndByClick) {
  RichForm form;
  test::RunForm(form, false, [&] {
    form.view.Focus();
    QTest::keyClick(form.Widget(), Qt::Key_Tab);
    test::Key(form, Qt::Key_Return);
    EXPECT_EQ(form.links, "topic:1 ");
    const QTextCursor link = form.Widget()->document()->find("a link");
    const QPoint at = form.Widget()->cursorRect(link).center() - QPoint(4, 0);
    QTest::mouseClick(form.Widget()->viewport(), Qt::LeftButton, {}, at);
    EXPECT_EQ(form.links, "topic:1 topic:1 ");
  });
}

TEST(RichView, IsToReadOnly_AndCanBeSelected) {
  RichForm form;
  test::RunForm(form, false, [&] {
    form.view.Focus();
    QTest::keyClick(form.Widget(), Qt::Key_X);
    EXPECT_EQ(form.view.PlainText().find('x'), std::string::npos);
    form.view.SelectAll();
    EXPECT_EQ(form.view.SelectedText(), form.view.PlainText());
  });
}

TEST(RichView, OtherTexts_AreShownAsTheyAre) {
  RichForm form;
  test::RunForm(form, false, [&] {
    form.view.text = "<b>no</b>\nrich \xFF text";
    EXPECT_EQ(form.view.PlainText(), "<b>no</b>\nrich \xFF text");
    form.view.text = "";
    EXPECT_EQ(form.view.PlainText(), "");
    form.view.text = "{\\rtf1 cut {\\b of";
    EXPECT_EQ(form.view.PlainText(), "cut of");
  });
}

TEST(RichView, NewText_IsShownFromItsStart) {
  RichForm form;
  test::RunForm(form, false, [&] {
    std::string many = "{\\rtf1 ";
    for (int i = 0; i < 200; ++i) many += "line\\par ";
    form.view.text = many + "}";
    EXPECT_EQ(form.Widget()->verticalScrollBar()->value(), 0);
  });
}

TEST(RichView, Destroyed_InOnLink) {
  struct DoomedForm : RichForm {
    std::unique_ptr<RichView> doomed = std::make_unique<RichView>();
    void Doom(ItemArgs&) { doomed.reset(); }
  } form;
  form.doomed->text = cHelp;
  form.doomed->onLink.Add_H(&form, &DoomedForm::Doom);
  form.Add(form.doomed.get());
  test::RunForm(form, false, [&] {
    form.doomed->Focus();
    QTest::keyClick(test::WidgetOf(*form.doomed), Qt::Key_Tab);
    test::Key(form, Qt::Key_Return);
    EXPECT_EQ(form.doomed, nullptr);
  });
}

}  // namespace
}  // namespace mavro
