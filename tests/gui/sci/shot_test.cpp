#include <gtest/gtest.h>

#include "DarkPalette.h"
#include "EditorColours.h"
#include "EditorForm.h"
#include "Looks.h"

namespace mavro {
namespace {

using test::AsPixel;
using test::EditorForm;
using test::RunEditor;

constexpr const char* cSample = R"(// What the demo does. -*- coding: utf-8 -*-
#include <string>
#include "shape.h"

class Circle : public Shape {
 public:
	explicit Circle(int newRadius) : radius(newRadius) {}
	int Area() const { return 3 * radius * radius; }
	std::string Name() const { return "circle\n"; }  // with a tab

 private:
	int radius = 'r';
};

/* Sums up what is given.
   Two lines of it. */
int Sum(const Circle* first, const Circle* last) {
	int sum = 0;
	for (; first != last; ++first) {
		if (first->Area() > 0) sum += first->Area();
	}
	return sum;
}

/** What is documented. */
#ifdef NOBODY_KNOWS
int leftOut = 42;  // by the preprocessor
const char* name = "left out";
#endif
const char letter = 'x', *open = "without end
int closed() {
	return 1;
}
}
)";

constexpr StyleRow cStyles[] = {
    {0, ColourOf(cTextInk)},
    {1, ColourOf(cCommentInk)},
    {2, ColourOf(cCommentInk)},
    {3, ColourOf(cDocumentationInk)},
    {4, ColourOf(cNumberInk)},
    {5, ColourOf(cKeywordInk), StyleRow::cBold},
    {6, ColourOf(cStringInk)},
    {7, ColourOf(cCharacterInk)},
    {9, ColourOf(cPreprocessorInk)},
    {10, ColourOf(cTextInk), StyleRow::cBold},
    {12, ColourOf(cStringInk), StyleRow::cEolFilled, ColourOf(cUnfinishedGround)},
    {StyleRow::cEnd}};

// The windows above the editor's: lists and tips.
std::vector<QWidget*> Popups(const EditorForm& form) {
  std::vector<QWidget*> found;
  for (QWidget* window : QApplication::topLevelWidgets())
    if (window->isVisible() && window != test::WidgetOf(form)) found.push_back(window);
  return found;
}

// Saves the one popup as a picture, and answers it.
QImage PopupShot(const EditorForm& form, const std::string& name) {
  const std::vector<QWidget*> popups = Popups(form);
  EXPECT_EQ(popups.size(), 1u) << name;
  if (popups.empty()) return {};
  const QPixmap shown = popups[0]->grab();
  EXPECT_TRUE(shown.save(QString::fromStdString(SHOTS_FOLDER "/" + name + ".png")));
  return shown.toImage();
}

// Each kind of line has its ground, each kind of word its ink.
void ExpectColours(const EditorForm& form, bool isDark) {
  const QImage image = test::Pixels(form.editor);
  EXPECT_EQ(test::GroundOf(image), AsPixel(cTextGround, isDark));
  for (const EditorColour ground : {cMarginGround, cExecutionGround, cErrorGround, cLeftOutGround,
                                    cUnfinishedGround, cSelectionGround})
    EXPECT_GT(test::CountPixels(image, AsPixel(ground, isDark)), 200) << "ground " << ground;
  for (const EditorColour ink : {cTextInk, cCommentInk, cDocumentationInk, cNumberInk, cKeywordInk,
                                 cStringInk, cPreprocessorInk})
    EXPECT_GT(test::CountPixels(image, AsPixel(ink, isDark)), 0) << "ink " << ink;
}

void ShowEditor(const std::string& name, bool isDark) {
  EditorForm form;
  EditorOptions& options = *form.editor.options;
  options.monospaced = true;
  options.fontSize = 11;
  options.lineNumbers = true;
  options.foldMargin = true;
  options.foldComment = true;
  options.edgeColumn = 70;
  form.editor.offered =
      "Area?2 Circle?3 Colour?4 LIMIT?7 Red?5 Size?6 length?10 radius?1 shapes?8 while?9";
  form.editor.notes = {{"Area", {"int", ""}},           {"Circle", {"class", ""}},
                       {"Colour", {"enum", ""}},        {"LIMIT", {"macro", ""}},
                       {"Red", {"Colour", ""}},         {"Size", {"unsigned long", ""}},
                       {"length", {"std::string", ""}}, {"radius", {"int", ""}},
                       {"shapes", {"namespace", ""}},   {"while", {"keyword", ""}}};
  form.editor.offeredTip = "int foo(const Circle* first, const Circle* last)";
  static constexpr MarkType cMarks[] = {{2, ColourOf(cExecutionGround), MarkSign::cArrow},
                                        {4, ColourOf(cErrorGround), MarkSign::cError}};
  form.editor.markTypes = cMarks;
  form.editor.markTypeCount = 2;
  form.editor.small.styles = cStyles;
  form.editor.small.leftOutStyles = 64;
  form.SetBounds(0, 0, 700, 700);
  RunEditor(form, [&] {
    form.Fill(cSample);
    form.editor.Send(SCI_INSERTTEXT, 0, "");
    form.editor.ToggleBookmark(4);
    form.editor.ToggleBookmark(16);
    form.editor.SetLineMark(2, 7);
    form.editor.SetLineMark(4, 20);
    form.editor.Send(SCI_COLOURISE, 0, static_cast<std::intptr_t>(-1));
    form.editor.Send(SCI_TOGGLEFOLD, 30);
    form.editor.Select(form.editor.LineStart(17) + 5, form.editor.LineStart(17) + 8);
    form.Settle();
    test::Shot(form, name);
    ExpectColours(form, isDark);
    form.editor.goToLine(22);
    form.Type("first.");
    form.Settle();
    test::Shot(form, name + "-list");
    EXPECT_GT(test::InkStrength(PopupShot(form, name + "-popup")), 60);
    test::Key(form, Qt::Key_Escape);
    form.Type(" foo(1, ");
    form.Settle();
    EXPECT_EQ(test::GroundOf(PopupShot(form, name + "-tip")), AsPixel(cTipGround, isDark));
    test::Key(form, Qt::Key_Escape);
    form.editor.furtherTips = {
        "void foo(const std::vector<Circle>& circles, const std::map<std::string, int>& names, "
        "double radius = 1.5, bool isFilled = false)"};
    form.Type("foo(1, 2, ");
    form.Settle();
    EXPECT_EQ(test::GroundOf(PopupShot(form, name + "-overloads")), AsPixel(cTipGround, isDark));
    test::Shot(form, name + "-tips");
  });
}

TEST(SciShots, Editor_Light_HasEachGroundAndInk) {
  ShowEditor("sci-editor-light", false);
}

TEST(SciShots, Editor_Dark_HasEachGroundAndInk) {
  const QPalette before = QApplication::palette();
  QApplication::setPalette(test::DarkPalette());
  ShowEditor("sci-editor-dark", true);
  QApplication::setPalette(before);
}

// Several selections with their carets, and a column that goes on after the ends of lines.
void ShowCarets(const std::string& name, bool isDark) {
  EditorForm form;
  form.editor.options->monospaced = true;
  form.editor.small.styles = cStyles;
  form.SetBounds(0, 0, 700, 700);
  RunEditor(form, [&] {
    form.Fill(cSample);
    form.editor.Send(SCI_COLOURISE, 0, static_cast<std::intptr_t>(-1));
    form.editor.Select(form.editor.LineEnd(6) - 3, form.editor.LineEnd(6) - 3);
    form.Settle();
    const int plain =
        test::CountPixels(test::Pixels(form.editor), AsPixel(cSelectionGround, isDark));
    EXPECT_EQ(plain, 0);
    const auto at = form.editor.GetText().find("radius *");
    form.editor.Select(static_cast<int>(at), static_cast<int>(at));
    EXPECT_EQ(form.editor.SelectOccurrences(), 4);
    form.Settle();
    test::Shot(form, name + "-carets");
    const int several =
        test::CountPixels(test::Pixels(form.editor), AsPixel(cSelectionGround, isDark));
    EXPECT_GT(several, 1000);
    form.editor.Select(form.editor.LineStart(15) + 8, form.editor.LineStart(15) + 8);
    for (int i = 0; i < 6; ++i) test::Key(form, Qt::Key_Down, Qt::AltModifier | Qt::ShiftModifier);
    for (int i = 0; i < 5; ++i) test::Key(form, Qt::Key_Right, Qt::AltModifier | Qt::ShiftModifier);
    form.Settle();
    test::Shot(form, name + "-column");
    EXPECT_GT(test::CountPixels(test::Pixels(form.editor), AsPixel(cSelectionGround, isDark)),
              several);
  });
}

TEST(SciShots, CaretsAndAColumn_AreSelectedAsOneIs) {
  ShowCarets("sci-light", false);
  const QPalette before = QApplication::palette();
  QApplication::setPalette(test::DarkPalette());
  ShowCarets("sci-dark", true);
  QApplication::setPalette(before);
}

TEST(SciShots, HiddenCharacters_AreBoxes) {
  EditorForm form;
  form.editor.options->monospaced = true;
  RunEditor(form, [&] {
    form.editor.codePage = 65001;
    form.editor.applyOptions();
    form.Fill(
        "if (level != \"user\u202E \u2066// Check\u2069 \u2066\") {\u200B}\n"
        "nbsp\u00A0soft\u00ADhyphen\uFEFF\x01\x7F\n\xFF bytes\n");
    form.editor.OnCommand(cSciShowWhiteSpace);
    form.editor.OnCommand(cSciShowLineEnds);
    form.Settle();
    test::Shot(form, "sci-editor-hidden");
    EXPECT_GT(form.editor.Send(SCI_POINTXFROMPOSITION, 0, static_cast<std::intptr_t>(21)), 200);
  });
}

}  // namespace
}  // namespace mavro
