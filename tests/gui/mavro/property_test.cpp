// Properties read like variables: what compiles and what it means.
#include <gtest/gtest.h>

#include <mavro>
#include <sstream>

#include "GuiDriver.h"

namespace {

std::string Taken(std::string_view text) {
  return std::string(text);
}

struct PropertyForm : Form {
  Edit edit, other;
  Label label;
  SpinEdit spin;
  CheckBox box;
  Memo memo;

  PropertyForm() {
    for (Control* control : std::initializer_list<Control*>{&edit, &other, &label, &spin, &box})
      Add(control);
    edit.text = "abc";
    other.text = "abd";
    label.hint = "abc";
    spin.value = 7;
  }
};

// Each test holds before there is a window and while there is one.
struct PropertyAsVariable : testing::TestWithParam<bool> {
  void Run(const std::function<void()>& check) {
    if (GetParam())
      test::RunForm(form, false, check);
    else
      check();
  }
  PropertyForm form;
};
INSTANTIATE_TEST_SUITE_P(, PropertyAsVariable, testing::Bool(), [](const auto& its) {
  return its.param ? "WithWindow" : "WithoutWindow";
});

TEST_P(PropertyAsVariable, Text_IsCompared) {
  Run([&] {
    EXPECT_TRUE(form.edit.text == "abc");
    EXPECT_TRUE("abc" == form.edit.text);
    EXPECT_TRUE(form.edit.text == std::string("abc"));
    EXPECT_TRUE(form.edit.text == std::string_view("abc"));
    EXPECT_TRUE(form.edit.text != "ab");
    EXPECT_TRUE(form.edit.text != form.other.text);
    EXPECT_TRUE(form.edit.text == form.label.hint);
    EXPECT_TRUE(form.edit.text < form.other.text);
    EXPECT_TRUE(form.edit.text >= "abb");
    EXPECT_EQ(form.edit.text, "abc");
  });
}

TEST_P(PropertyAsVariable, Text_IsJoined) {
  Run([&] {
    EXPECT_EQ("a " + form.edit.text, "a abc");
    EXPECT_EQ(form.edit.text + " b", "abc b");
    EXPECT_EQ(form.edit.text + form.other.text, "abcabd");
    EXPECT_EQ(form.label.hint + form.edit.text + std::string("!"), "abcabc!");
    EXPECT_EQ('<' + form.edit.text + '>', "<abc>");
    std::string sum = "x";
    sum += form.edit.text;
    EXPECT_EQ(sum, "xabc");
    std::ostringstream out;
    out << form.edit.text << '/' << form.label.hint << '/' << form.spin.value;
    EXPECT_EQ(out.str(), "abc/abc/7");
  });
}

TEST_P(PropertyAsVariable, Text_IsChangedInItsControl) {
  Run([&] {
    form.edit.text += "d";
    form.edit.text += 'e';
    form.edit.text += form.other.text;
    EXPECT_EQ(form.edit.text.Get(), "abcdeabd");
    form.label.hint += "d";
    EXPECT_EQ(form.label.toolTip.Get(), "abcd");
    form.edit.text.clear();
    EXPECT_TRUE(form.edit.text.empty());
  });
}

TEST_P(PropertyAsVariable, Text_IsReadAsAStringIs) {
  Run([&] {
    const TextProperty& text = form.edit.text;
    EXPECT_FALSE(text.empty());
    EXPECT_EQ(text.size(), 3U);
    EXPECT_EQ(text[1], 'b');
    EXPECT_EQ(text.front(), 'a');
    EXPECT_EQ(text.back(), 'c');
    EXPECT_EQ(text.find("c"), 2U);
    EXPECT_EQ(text.find("x"), std::string::npos);
    EXPECT_EQ(text.substr(1), "bc");
    EXPECT_TRUE(text.starts_with("ab"));
    EXPECT_FALSE(text.ends_with("ab"));
    EXPECT_STREQ(text.c_str(), "abc");
    EXPECT_EQ(std::string(text.begin(), text.end()), "abc");
    EXPECT_EQ(Taken(form.edit.text), "abc");
  });
}

TEST_P(PropertyAsVariable, CString_HoldsUntilTheTextChanges) {
  Run([&] {
    const char* first = form.edit.text.c_str();
    EXPECT_EQ(form.edit.text.size(), 3U);
    EXPECT_EQ(form.edit.text.c_str(), first);
    EXPECT_STREQ(first, "abc");
  });
}

TEST_P(PropertyAsVariable, Copy_IsAValueOfItsOwn) {
  Run([&] {
    auto text = form.edit.text;
    text += "x";
    EXPECT_EQ(text, "abcx");
    EXPECT_EQ(form.edit.text, "abc");
    form.edit.text = "new";
    EXPECT_EQ(text, "abcx");
    auto again = text;
    again = "y";
    EXPECT_EQ(text, "abcx");
    auto hint = form.label.hint;
    hint += "x";
    EXPECT_EQ(form.label.hint, "abc");
    auto number = form.spin.value;
    ++number;
    EXPECT_EQ(number, 8);
    EXPECT_EQ(form.spin.value, 7);
    form.spin.value = number;
    EXPECT_EQ(form.spin.value, 8);
  });
}

TEST_P(PropertyAsVariable, Copy_OutlivesItsControl) {
  auto label = std::make_unique<Label>();
  label->text = "kept";
  label->hint = "too";
  const auto text = label->text;
  const auto hint = label->hint;
  label.reset();
  EXPECT_EQ(text, "kept");
  EXPECT_EQ(hint, "too");
}

TEST_P(PropertyAsVariable, Number_IsChangedInItsControl) {
  Run([&] {
    EXPECT_EQ(form.spin.value++, 7);
    EXPECT_EQ(++form.spin.value, 9);
    EXPECT_EQ(form.spin.value--, 9);
    EXPECT_EQ(--form.spin.value, 7);
    form.spin.value += 3;
    form.spin.value -= 2;
    form.spin.value *= 9;
    form.spin.value /= 4;
    EXPECT_EQ(form.spin.value, 18);
    form.spin.value %= 10;
    form.spin.value |= 2;
    form.spin.value ^= 1;
    form.spin.value &= 11;
    EXPECT_EQ(form.spin.value, ((8 | 2) ^ 1) & 11);
    form.spin.value <<= 2;
    form.spin.value >>= 1;
    EXPECT_EQ(form.spin.value, 22);
  });
}

TEST_P(PropertyAsVariable, OtherTypes_ReadAsTheyDid) {
  Run([&] {
    form.label.font = Font("Arial", 10);
    form.other.font = Font(10, Font::cNormal, "Arial");
    EXPECT_TRUE(form.label.font == form.other.font);
    EXPECT_TRUE(form.label.font == Font("Arial", 10));
    EXPECT_TRUE(form.label.font != Font("Arial", 10, Font::cBold));
    form.box.checked = !form.box.checked;
    EXPECT_TRUE(form.box.checked && form.box.visible);
    form.box.checked &= false;
    EXPECT_FALSE(form.box.checked);
    EXPECT_TRUE(form.label.left == form.other.left);
    const int numbers[] = {1, 2, 3};
    form.spin.value = 2;
    EXPECT_EQ(numbers[form.spin.value], 3);
  });
}

TEST(PropertyAsVariableOfAWindow, EqualValue_MovesNothing) {
  PropertyForm form;
  test::RunForm(form, false, [&] {
    QWidget* widget = test::WidgetOf(form.edit);
    const QRect before = widget->geometry();
    form.edit.left += 0;
    EXPECT_EQ(widget->geometry(), before);
    form.edit.left += 5;
    EXPECT_EQ(widget->geometry().left(), before.left() + 5);
  });
}

}  // namespace
