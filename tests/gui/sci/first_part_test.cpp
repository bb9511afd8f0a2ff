#include <gtest/gtest.h>

#include "EditorForm.h"
#include "PaintWatch.h"
#include "TempFolder.h"

// The first screen of a large text is painted before the rest is read.

namespace mavro {
namespace {

using test::EditorForm;
using test::PaintWatch;
using test::RunEditor;

constexpr size_t cLarge = 8 << 20;

// Lines that fill a text of `size` bytes, with `end` at its end.
std::string Lines(size_t size, const std::string& end = "\n") {
  const std::string line = "int number = 0;\n";
  std::string text;
  while (text.size() + line.size() + end.size() <= size) text += line;
  return text.append(size - text.size() - end.size(), ' ') + end;
}

// Loads a text, and paints its first part if it comes early.
struct Loaded {
  Loaded(EditorForm& form, const std::string& text) : path(folder.Write("large.cpp", text)) {
    form.editor.firstPart = [&] {
      early = form.editor.Length();
      caret = form.editor.CaretPosition();
      form.editor.Update();
      QTest::qWait(0);
      test::TextWidget(form.editor).installEventFilter(&after);
      return true;
    };
    EXPECT_TRUE(form.editor.load(path).Ok());
    form.editor.firstPart = nullptr;
    QTest::qWait(0);
    EXPECT_EQ(form.editor.GetText(), text);
    EXPECT_FALSE(form.editor.dirty);
    EXPECT_EQ(form.editor.CaretPosition(), 0);
    EXPECT_TRUE(form.editor.save(path).Ok());
    EXPECT_EQ(folder.Read("large.cpp"), text);
  }

  test::TempFolder folder;
  std::string path;
  int early = 0;   // bytes of the text when its first part was shown
  int caret = -1;  // then
  PaintWatch after;
};

TEST(SciFirstPart, LargeText_IsShownEarlyAndNotPaintedAgain) {
  EditorForm form;
  RunEditor(form, [&] {
    form.editor.options->lineNumbers = true;
    form.editor.applyOptions();
    const std::string text = Lines(cLarge);
    Loaded loaded(form, text);
    EXPECT_GT(loaded.early, 100'000);
    EXPECT_LT(loaded.early, 1'000'000);
    EXPECT_EQ(loaded.caret, 0);
    const QRect painted = loaded.after.painted.boundingRect();
    EXPECT_TRUE(painted.isEmpty()) << painted.width() << " x " << painted.height();
    form.Type("x");
    QTest::qWait(0);
    EXPECT_FALSE(loaded.after.painted.isEmpty());
    EXPECT_EQ(form.editor.GetText(), "x" + text);
  });
}

TEST(SciFirstPart, TextThatIsNotLarge_IsShownAtOnce) {
  EditorForm form;
  RunEditor(form, [&] { EXPECT_EQ(Loaded(form, Lines(cLarge - 1)).early, 0); });
}

TEST(SciFirstPart, EndThatMakesTheTextUnicode_IsPaintedAgain) {
  const std::string cUtf8 = "\u00E4\n", cOtherByte = "\xE4\n";
  for (const std::string& end : {cUtf8, cOtherByte}) {
    EditorForm form;
    RunEditor(form, [&] {
      Loaded loaded(form, Lines(cLarge, end));
      EXPECT_GT(loaded.early, 0);
      EXPECT_EQ(loaded.after.painted.isEmpty(), end == cOtherByte);
    });
  }
}

TEST(SciFirstPart, ManyShortLinesAtTheEnd_WidenTheNumbers) {
  EditorForm form;
  RunEditor(form, [&] {
    form.editor.options->lineNumbers = true;
    form.editor.applyOptions();
    Loaded loaded(form, Lines(cLarge, std::string(4'000'000, '\n')));
    EXPECT_FALSE(loaded.after.painted.isEmpty());
    const auto width = form.editor.Send(SCI_GETMARGINWIDTHN, 0);
    EXPECT_EQ(width, form.editor.Send(SCI_TEXTWIDTH, STYLE_LINENUMBER, "_4262144"));
  });
}

TEST(SciFirstPart, EditorThatDoesNotShowIt_IsPaintedWhenAllIsRead) {
  test::TempFolder folder;
  const std::string path = folder.Write("large.cpp", Lines(cLarge));
  EditorForm form;
  RunEditor(form, [&] {
    form.editor.firstPart = [] { return false; };
    PaintWatch watch;
    test::TextWidget(form.editor).installEventFilter(&watch);
    EXPECT_TRUE(form.editor.load(path).Ok());
    QTest::qWait(0);
    EXPECT_EQ(watch.painted.boundingRect(), test::TextWidget(form.editor).rect());
  });
}

}  // namespace
}  // namespace mavro
