#include "Edit.h"

#include <gtest/gtest.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QLineEdit>
#include <memory>

#include "Button.h"
#include "EditText.h"
#include "EventLog.h"
#include "Form.h"
#include "GuiDriver.h"

namespace mavro {
namespace {

struct EditForm : Form {
  test::EventLog log;
  Edit edit, other;
  Button ok;

  EditForm() {
    SetBounds(0, 0, 300, 100);
    autoDialogKeys = true;
    Add(&edit);
    other.SetLocation(100, 0);
    Add(&other);
    ok.SetLocation(10, 40);
    ok.kind = Button::cOk;
    Add(&ok);
    log.Listen("change", edit.onChange);
    log.Listen("valid", edit.onValidate);
    log.Listen("ok", ok.onClick);
  }
  // Types into the edit as a user does, from an empty text, and answers its text then.
  std::string Typed(const char* keys) {
    edit.text = "";
    edit.Focus();
    QTest::keyClicks(test::WidgetOf(edit), keys);
    return edit.text;
  }
};

TEST(EditText, CheckText_Integer) {
  struct {
    const char* text;
    TextFit fit;
  } cases[] = {{"", TextFit::cWhole},   {"0", TextFit::cWhole}, {"-12", TextFit::cWhole},
               {"+7", TextFit::cWhole}, {"-", TextFit::cSoFar}, {"+", TextFit::cSoFar},
               {"1.5", TextFit::cNo},   {"12a", TextFit::cNo},  {" 1", TextFit::cNo},
               {"--1", TextFit::cNo},   {"1-", TextFit::cNo},   {"\xFF", TextFit::cNo},
               {"0x10", TextFit::cNo}};
  for (const auto& row : cases) EXPECT_EQ(CheckText(Edit::cInteger, row.text), row.fit) << row.text;
}

TEST(EditText, CheckText_Float) {
  struct {
    const char* text;
    TextFit fit;
  } cases[] = {{"", TextFit::cWhole},       {"1", TextFit::cWhole},   {"-1.5", TextFit::cWhole},
               {".5", TextFit::cWhole},     {"5.", TextFit::cWhole},  {"1e5", TextFit::cWhole},
               {"1.5E-3", TextFit::cWhole}, {".", TextFit::cSoFar},   {"-.", TextFit::cSoFar},
               {"1e", TextFit::cSoFar},     {"1e-", TextFit::cSoFar}, {"e5", TextFit::cNo},
               {"1.2.3", TextFit::cNo},     {"1e5.", TextFit::cNo},   {"nan", TextFit::cNo},
               {"1,5", TextFit::cNo}};
  for (const auto& row : cases) EXPECT_EQ(CheckText(Edit::cFloat, row.text), row.fit) << row.text;
}

TEST(Edit, NewOne_HasTheUsualSize) {
  Edit edit;
  EXPECT_EQ(edit.Bounds(), (Rect{0, 0, 80, 24}));
  EXPECT_EQ(edit.dataType, Edit::cNormal);
  EXPECT_FALSE(edit.readOnly);
}

TEST(Edit, Typing_FiresForEachChange) {
  EditForm form;
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.Typed("ab"), "ab");
    EXPECT_EQ(form.log.Take(), "change:0 change:0 ");
  });
}

TEST(Edit, Assignment_FiresNothing) {
  EditForm form;
  test::RunForm(form, false, [&] {
    form.edit.text = "assigned";
    form.other.Focus();
    EXPECT_EQ(form.log.Take(), "");
  });
}

TEST(Edit, Typing_IsFilteredByType) {
  EditForm form;
  test::RunForm(form, false, [&] {
    form.edit.dataType = Edit::cInteger;
    EXPECT_EQ(form.Typed("a-1x2.3-"), "-123");
    form.edit.dataType = Edit::cFloat;
    EXPECT_EQ(form.Typed("1.5.e-3z"), "1.5e-3");
    form.edit.dataType = Edit::cUpperCase;
    EXPECT_EQ(form.Typed("aBc1"), "ABC1");
    form.edit.dataType = Edit::cNormal;
    EXPECT_EQ(form.Typed("aB."), "aB.");
  });
}

TEST(Edit, Paste_ThatDoesNotSuit_IsRefused) {
  EditForm form;
  form.edit.dataType = Edit::cInteger;
  test::RunForm(form, false, [&] {
    form.edit.text = "5";
    form.edit.Focus();
    QGuiApplication::clipboard()->setText("x1");
    QTest::keyClick(test::WidgetOf(form.edit), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(form.edit.text.Get(), "5");
  });
}

TEST(Edit, Assignment_IsNotFiltered_AndCanBeMended) {
  EditForm form;
  form.edit.dataType = Edit::cInteger;
  form.edit.text = "12ab";
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.edit.text.Get(), "12ab");
    form.edit.Focus();
    QTest::keyClick(test::WidgetOf(form.edit), Qt::Key_End);
    QTest::keyClick(test::WidgetOf(form.edit), Qt::Key_Backspace);
    QTest::keyClick(test::WidgetOf(form.edit), Qt::Key_Backspace);
    EXPECT_EQ(form.edit.text.Get(), "12");
    form.edit.dataType = Edit::cUpperCase;
    form.edit.text = "low";
    EXPECT_EQ(form.edit.text.Get(), "low");
  });
}

TEST(Edit, Password_ShowsNoneOfItsText) {
  EditForm form;
  form.edit.dataType = Edit::cPassword;
  form.edit.text = "secret";
  test::RunForm(form, false, [&] {
    auto* widget = qobject_cast<QLineEdit*>(test::WidgetOf(form.edit));
    EXPECT_FALSE(widget->displayText().contains("secret"));
    EXPECT_EQ(form.edit.text.Get(), "secret");
  });
}

TEST(Edit, ReadOnly_TakesNoKeys) {
  EditForm form;
  form.edit.readOnly = true;
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.Typed("ab"), "");
    form.edit.readOnly = false;
    EXPECT_EQ(form.Typed("ab"), "ab");
  });
}

TEST(Edit, Text_AnyBytes_ComeOutAsTheyWent) {
  const std::string bytes = "a\xFF\xC3(\xE2\x82 \xED\xA0\x80 \xE4\xB8\x96 tab\t";
  EditForm form;
  form.edit.text = bytes;
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.edit.text.Get(), bytes);
    form.edit.text = "\x80";
    EXPECT_EQ(form.edit.text.Get(), "\x80");
  });
  EXPECT_EQ(form.edit.text.Get(), "\x80");
}

TEST(Edit, Text_LongerThanAnyoneTypes_IsKept) {
  EditForm form;
  form.edit.text = std::string(100000, 'x');
  test::RunForm(form, false, [&] { EXPECT_EQ(form.edit.text.Get().size(), 100000U); });
}

TEST(Edit, Text_TenMegabytes_IsKept) {
  EditForm form;
  test::RunForm(form, false, [&] {
    form.edit.text = std::string(10'000'000, 'x');
    EXPECT_EQ(form.edit.text.Get().size(), 10'000'000U);
  });
}

TEST(Edit, RightToLeftText_IsTypedAndComesBack) {
  EditForm form;
  test::RunForm(form, false, [&] {
    form.edit.Focus();
    QInputMethodEvent letters;
    letters.setCommitString(QString::fromUtf8("\u05D0\u05D1"));
    QApplication::sendEvent(test::WidgetOf(form.edit), &letters);
    test::Key(form, Qt::Key_1);
    EXPECT_EQ(form.edit.text.Get(), "\u05D0\u05D11");
    form.edit.text = "\u202Emixed \u05D0 text";
    EXPECT_EQ(form.edit.text.Get(), "\u202Emixed \u05D0 text");
  });
}

TEST(Edit, FocusLost_AfterTyping_ValidatesOnce) {
  EditForm form;
  form.edit.dataType = Edit::cInteger;
  test::RunForm(form, false, [&] {
    form.Typed("12");
    form.log.Take();
    form.other.Focus();
    EXPECT_EQ(form.log.Take(), "valid:1 ");
    form.edit.Focus();
    form.other.Focus();
    EXPECT_EQ(form.log.Take(), "");
  });
}

TEST(Edit, FocusLost_WithHalfANumber_TellsThatItDoesNotSuit) {
  EditForm form;
  form.edit.dataType = Edit::cInteger;
  test::RunForm(form, false, [&] {
    form.Typed("-");
    form.log.Take();
    form.other.Focus();
    EXPECT_EQ(form.log.Take(), "valid:0 ");
  });
}

TEST(Edit, Enter_CommitsAndPressesOk) {
  EditForm form;
  test::RunForm(form, true, [&] {
    form.Typed("x");
    form.log.Take();
    test::Key(form, Qt::Key_Return);
    EXPECT_EQ(form.log.Take(), "valid:1 ok:0 ");
  });
  EXPECT_EQ(form.result, Form::cOk);
}

TEST(Edit, Close_CommitsWhatWasTyped) {
  EditForm form;
  test::RunForm(form, true, [&] {
    form.Typed("x");
    form.log.Take();
    form.Close();
    EXPECT_EQ(form.log.Take(), "valid:1 ");
  });
  EXPECT_EQ(form.edit.text.Get(), "x");
}

TEST(Edit, Valid_FollowsTheHandlers) {
  test::EventLog log;
  Edit edit;
  edit.dataType = Edit::cFloat;
  edit.text = "1.";
  EXPECT_TRUE(edit.Valid());
  edit.text = "1e";
  EXPECT_FALSE(edit.Valid());
  edit.text = "1";
  log.Listen("refuse", edit.onValidate, [](ItemArgs& args) { args.value = 0; });
  EXPECT_FALSE(edit.Valid());
  EXPECT_EQ(log.Take(), "refuse:1 ");
}

TEST(Edit, SelectAll_SelectsTheText) {
  EditForm form;
  form.edit.text = "abc";
  test::RunForm(form, false, [&] {
    form.edit.SelectAll();
    EXPECT_EQ(qobject_cast<QLineEdit*>(test::WidgetOf(form.edit))->selectedText(), "abc");
  });
}

TEST(Edit, Destroyed_InItsOwnEvents) {
  for (const bool byChange : {true, false}) {
    test::EventLog log;
    EditForm form;
    auto edit = std::make_unique<Edit>();
    if (byChange)
      log.Listen("gone", edit->onChange, [&](NotifyArgs&) { edit.reset(); });
    else
      log.Listen("gone", edit->onValidate, [&](ItemArgs&) { edit.reset(); });
    form.Add(edit.get());
    test::RunForm(form, false, [&] {
      edit->Focus();
      QTest::keyClick(test::WidgetOf(*edit), Qt::Key_A);
      if (!byChange) form.other.Focus();
      EXPECT_EQ(edit, nullptr);
    });
  }
}

TEST(Edit, Destroyed_WhileFocusedAndEdited_FiresNothing) {
  test::EventLog log;
  EditForm form;
  auto edit = std::make_unique<Edit>();
  log.Listen("valid", edit->onValidate);
  form.Add(edit.get());
  test::RunForm(form, false, [&] {
    edit->Focus();
    QTest::keyClick(test::WidgetOf(*edit), Qt::Key_A);
    edit.reset();
    EXPECT_EQ(log.Take(), "");
  });
}

}  // namespace
}  // namespace mavro
