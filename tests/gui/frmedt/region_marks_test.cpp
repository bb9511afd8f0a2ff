#include "frmedt/RegionMarks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

#include "DarkPalette.h"
#include "EditorFixture.h"
#include "editor/ApplyEdits.h"
#include "frmedt/FormFolds.h"

// The regions of forms, as the editor shows them.

namespace zendry {
namespace {

using test::IdeDriver;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr char cForm[] =
    "class MyForm : public Form {\n"           // 0
    "\ttypedef MyForm This;\n"                 // 1
    "public:\n"                                // 2
    "\t//!decl\n"                              // 3
    "\tButton okButton;\n"                     // 4
    "\t//!end\n"                               // 5
    "\tMyForm() { Initialize(); }\n"           // 6
    "private:\n"                               // 7
    "\tvoid Initialize() {\n"                  // 8
    "\t\t//!init\n"                            // 9
    "\t\tthis->SetBounds(0, 0, 300, 200);\n"   // 10
    "\t\t//!<Button>\n"                        // 11
    "\t\tokButton.SetBounds(1, 2, 84, 30);\n"  // 12
    "\t\tthis->Add(&okButton);\n"              // 13
    "\t\t//!end\n"                             // 14
    "\t}\n"                                    // 15
    "};\n";

class IdeRegions : public test::EditorFixture {
 protected:
  static std::vector<int> TintedLines(const CppEditor& editor) {
    std::vector<int> lines;
    const int mask = 1 << RegionMarks::cTintMarker;
    for (auto line = editor.Send(mavro::SCI_MARKERNEXT, 0, mask); line >= 0;
         line = editor.Send(mavro::SCI_MARKERNEXT, static_cast<std::uintptr_t>(line + 1), mask))
      lines.push_back(static_cast<int>(line));
    return lines;
  }
  // The lines that begin a fold.
  static std::vector<int> FoldPoints(const CppEditor& editor) {
    std::vector<int> lines;
    for (int line = 0; line < editor.LineCount(); ++line)
      if (editor.Send(mavro::SCI_GETFOLDLEVEL, static_cast<std::uintptr_t>(line)) & cFoldHeader)
        lines.push_back(line);
    return lines;
  }
  static std::vector<int> HiddenLines(const CppEditor& editor) {
    std::vector<int> lines;
    for (int line = 0; line < editor.LineCount(); ++line)
      if (!editor.Send(mavro::SCI_GETLINEVISIBLE, static_cast<std::uintptr_t>(line)))
        lines.push_back(line);
    return lines;
  }
  // The texts that have a wave line.
  static std::vector<std::string> Waves(const CppEditor& editor) {
    std::vector<std::string> found;
    std::string wave;
    for (int at = 0; at <= editor.Length(); ++at) {
      const bool on = at < editor.Length() &&
                      editor.Send(mavro::SCI_INDICATORVALUEAT, RegionMarks::cWaveIndicator, at);
      if (on) wave += editor.GetRange(at, at + 1);
      if (!on && !wave.empty()) found.push_back(std::exchange(wave, ""));
    }
    return found;
  }
  // Waits for the marks that follow a change.
  static void Settle(const CppEditor& editor) {
    EXPECT_TRUE(test::WaitFor([&] { return editor.regionsSeen == editor.ChangeCount(); }));
  }
  CppEditor& OpenForm(const std::string& text = cForm) {
    CppEditor& editor = Open("form.h", text);
    Settle(editor);
    return editor;
  }
};

TEST_F(IdeRegions, LinesOfBothRegions_AreTinted) {
  ide.Run({}, [&] {
    EXPECT_THAT(TintedLines(OpenForm()), ElementsAre(3, 4, 5, 9, 10, 11, 12, 13, 14));
    EXPECT_THAT(Waves(Front()), IsEmpty());
  });
}

TEST_F(IdeRegions, TintFollowsEdits_AndGoesWithItsMarker) {
  ide.Run({}, [&] {
    CppEditor& editor = OpenForm();
    editor.ShowLine(1);
    editor.ReplaceSelection("// one\n// two\n");
    Settle(editor);
    EXPECT_THAT(TintedLines(editor), ElementsAre(5, 6, 7, 11, 12, 13, 14, 15, 16));
    const int end = editor.LineStart(7);
    editor.Select(end, end + 4);
    editor.ReplaceSelection("");
    Settle(editor);
    EXPECT_THAT(TintedLines(editor), ElementsAre(5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16))
        << "up to the next end";
    editor.Send(mavro::SCI_UNDO);
    editor.Send(mavro::SCI_UNDO);
    Settle(editor);
    EXPECT_THAT(TintedLines(editor), ElementsAre(3, 4, 5, 9, 10, 11, 12, 13, 14));
    editor.Select(0, editor.Length());
    editor.ReplaceSelection("int a;\n");
    Settle(editor);
    EXPECT_THAT(TintedLines(editor), IsEmpty());
  });
}

// As the designer does when it saves.
TEST_F(IdeRegions, ReplacedRegions_LeaveNoTintBehindTheirEnd) {
  ide.Run({}, [&] {
    CppEditor& editor = OpenForm();
    const std::string decl = "\t//!decl\n\tButton okButton, cancelButton;\n\t//!end\n";
    ApplyTextEdits(editor, {{static_cast<size_t>(editor.LineStart(3)),
                             static_cast<size_t>(editor.LineStart(6) - editor.LineStart(3)), decl},
                            {static_cast<size_t>(editor.LineStart(9)),
                             static_cast<size_t>(editor.LineStart(15) - editor.LineStart(9)),
                             "\t\t//!init\n\t\t//!end\n"}});
    Settle(editor);
    EXPECT_THAT(TintedLines(editor), ElementsAre(3, 4, 5, 9, 10));
  });
}

TEST_F(IdeRegions, ARegionWithoutAnEnd_IsNone) {
  ide.Run({}, [&] {
    EXPECT_THAT(TintedLines(OpenForm("class A {\n//!decl\nButton b;\n};\n")), IsEmpty());
  });
}

TEST_F(IdeRegions, AMarkInTheMiddleOfALine_IsNone) {
  ide.Run({}, [&] {
    EXPECT_THAT(TintedLines(OpenForm("int a; //!decl\nint b;\n//!end\n")), IsEmpty());
  });
}

TEST_F(IdeRegions, AStatementThatDoesNotFit_HasAWaveLineWhileItIsTyped) {
  ide.Run({}, [&] {
    CppEditor& editor = OpenForm();
    const int line = 12;
    editor.Select(editor.LineEnd(line), editor.LineEnd(line));
    editor.Focus();
    editor.ReplaceSelection("\n");
    Type("if (a) b();");
    Settle(editor);
    EXPECT_THAT(Waves(editor), ElementsAre("if (a) b();"));
    EXPECT_THAT(IdeDriver::Status(), HasSubstr("can't take this line"));
    editor.Select(editor.LineStart(line + 1), editor.LineEnd(line + 1));
    Type("okButton.text = \"x\";");
    Settle(editor);
    EXPECT_THAT(Waves(editor), IsEmpty());
    EXPECT_THAT(IdeDriver::Status(), HasSubstr("The form designer writes these lines"));
  });
}

TEST_F(IdeRegions, TypingElsewhere_SaysNothing) {
  ide.Run({}, [&] {
    CppEditor& editor = OpenForm();
    editor.ShowLine(7);
    editor.Focus();
    Type("x");
    Settle(editor);
    EXPECT_THAT(IdeDriver::Status(), Not(HasSubstr("designer")));
  });
}

TEST_F(IdeRegions, WhereverTheGapIs_TheMarksAreFound) {
  ide.Run({}, [&] {
    CppEditor& editor = OpenForm();
    for (int at = 0; at < editor.Length(); ++at) {
      editor.Select(at, at);
      editor.ReplaceSelection("x");
      editor.Send(mavro::SCI_UNDO);
      ASSERT_EQ(RegionMarks::RegionsOf(editor).size(), 2u) << at;
    }
  });
}

TEST_F(IdeRegions, AKeyInALongText_LooksAtItsLineOnly) {
  ide.Run({}, [&] {
    std::string text(cForm);
    while (text.size() < 1'000'000) text += "// A line of a long text.\n";
    CppEditor& editor = OpenForm(text + "\n" + cForm);
    ASSERT_EQ(RegionMarks::RegionsOf(editor).size(), 4u);
    editor.Focus();
    for (const int at : {editor.Length(), editor.Length() / 2, 0}) {
      const size_t before = editor.regionMarkers.BytesSeen();
      editor.Select(at, at);
      Type("x");
      Settle(editor);
      const size_t seen = editor.regionMarkers.BytesSeen() - before;
      EXPECT_GT(seen, 0u);
      EXPECT_LT(seen, 200u) << "at " << at;
      EXPECT_EQ(RegionMarks::RegionsOf(editor).size(), 4u);
    }
  });
}

// What is followed is what a look at the whole text finds.
TEST_F(IdeRegions, AfterAnyEdits_TheMarkersAreThoseOfTheText) {
  ide.Run({}, [&] {
    CppEditor& editor = OpenForm();
    constexpr const char* cParts[] = {"//!decl\n", "//!end\n", "//!init", "\n",   "//!", "\t",
                                      "/",         "!end",     "x",       "\r\n", "dec", ""};
    std::mt19937 random(1);
    const auto below = [&](int end) { return static_cast<int>(random() % unsigned(end)); };
    for (int i = 0; i < 2000; ++i) {
      const int start = below(editor.Length() + 1);
      editor.Select(start, std::min(start + (below(2) ? below(12) : 0), editor.Length()));
      if (below(8) == 0)
        editor.Send(below(3) ? mavro::SCI_UNDO : mavro::SCI_REDO);
      else
        editor.ReplaceSelection(cParts[below(std::size(cParts))]);
      if (below(3) == 0) continue;
      RegionMarks::RegionsOf(editor);
      const std::vector<int> followed = editor.regionMarkers.Places();
      editor.regionMarkers.Lose();
      RegionMarks::RegionsOf(editor);
      ASSERT_EQ(followed, editor.regionMarkers.Places()) << i << '\n' << editor.GetText();
    }
  });
}

TEST_F(IdeRegions, PlainTexts_AreLeftAlone) {
  ide.Run({}, [&] {
    CppEditor& editor = Open("form.txt", cForm);
    RegionMarks::Update(editor);
    EXPECT_THAT(TintedLines(editor), IsEmpty());
  });
}

TEST_F(IdeRegions, BothRegions_AreFoldPoints) {
  ide.Run({}, [&] {
    CppEditor& editor = OpenForm();
    EXPECT_THAT(FoldPoints(editor), ElementsAre(0, 3, 8, 9));
    editor.Send(mavro::SCI_TOGGLEFOLD, 3);
    EXPECT_THAT(HiddenLines(editor), ElementsAre(4, 5));
    editor.Send(mavro::SCI_TOGGLEFOLD, 9);
    EXPECT_THAT(HiddenLines(editor), ElementsAre(4, 5, 10, 11, 12, 13, 14));
  });
}

TEST_F(IdeRegions, AClosedRegion_StaysClosedWhileOneTypesAroundIt) {
  ide.Run({}, [&] {
    CppEditor& editor = OpenForm();
    editor.Send(mavro::SCI_TOGGLEFOLD, 3);
    editor.Select(editor.LineEnd(1), editor.LineEnd(1));
    editor.Focus();
    editor.ReplaceSelection("\n");
    Type("// {");
    editor.ReplaceSelection("\n");
    Type("int a;");
    Settle(editor);
    editor.Select(editor.Length(), editor.Length());
    Type("int b;");
    editor.ReplaceSelection("\n");
    Settle(editor);
    EXPECT_THAT(FoldPoints(editor), ElementsAre(0, 5, 10, 11));
    EXPECT_THAT(HiddenLines(editor), ElementsAre(6, 7));
  });
}

TEST_F(IdeRegions, FoldsStay_WhenOptionsAreTaken) {
  ide.Run({}, [&] {
    CppEditor& editor = OpenForm();
    editor.Send(mavro::SCI_TOGGLEFOLD, 3);
    theMainForm->TakeOptions();
    editor.Send(mavro::SCI_COLOURISE, 0, -1);
    EXPECT_THAT(FoldPoints(editor), ElementsAre(0, 3, 8, 9));
    EXPECT_THAT(HiddenLines(editor), ElementsAre(4, 5));
    Settle(editor);
    EXPECT_THAT(FoldPoints(editor), ElementsAre(0, 3, 8, 9));
    EXPECT_THAT(HiddenLines(editor), ElementsAre(4, 5));
  });
}

TEST_F(IdeRegions, WithoutRegions_TheComponentFoldsAgain) {
  ide.Run({}, [&] {
    CppEditor& editor = OpenForm();
    editor.Select(editor.LineStart(9), editor.LineStart(10));
    editor.ReplaceSelection("");
    editor.Select(editor.LineStart(3), editor.LineStart(4));
    editor.ReplaceSelection("");
    Settle(editor);
    editor.Send(mavro::SCI_COLOURISE, 0, -1);
    EXPECT_THAT(FoldPoints(editor), ElementsAre(0, 7));
    editor.Send(mavro::SCI_UNDO);
    editor.Send(mavro::SCI_UNDO);
    Settle(editor);
    EXPECT_THAT(FoldPoints(editor), ElementsAre(0, 3, 8, 9));
  });
}

// The levels are counted here and by the component's lexer alike.
TEST_F(IdeRegions, FoldsOfTheRest_AreTheComponentsOwn) {
  ide.Run({}, [&] {
    const std::string tree = std::string(TEST_DATA) + "/../../src/frmedt/";
    for (const char* name : {"FormEditor.cpp", "CtrlReg.cpp", "DesignFrame.h", "FormTokens.cpp"}) {
      SCOPED_TRACE(name);
      CppEditor& editor = *Tabs().OpenFile(tree + name);
      editor.Send(mavro::SCI_COLOURISE, 0, -1);
      const std::vector<int> levels = FoldLevels(editor.GetText(), {});
      ASSERT_EQ(static_cast<int>(levels.size()), editor.LineCount());
      for (size_t line = 0; line < levels.size(); ++line)
        ASSERT_EQ(editor.Send(mavro::SCI_GETFOLDLEVEL, line) & 0xFFFF, levels[line]) << line + 1;
    }
  });
}

TEST_F(IdeRegions, ALongText_KeepsTheComponentsFolds) {
  ide.Run({}, [&] {
    std::string text(cForm);
    text.resize(RegionMarks::cMostFolded, ' ');
    CppEditor& editor = OpenForm(text);
    EXPECT_THAT(FoldPoints(editor), ElementsAre(0, 3, 8, 9));
    editor.Select(editor.Length(), editor.Length());
    editor.ReplaceSelection(" ");
    Settle(editor);
    editor.Send(mavro::SCI_COLOURISE, 0, -1);
    EXPECT_THAT(FoldPoints(editor), ElementsAre(0, 8));
  });
}

class IdeRegionsLook : public IdeRegions, public testing::WithParamInterface<bool> {};

INSTANTIATE_TEST_SUITE_P(Looks, IdeRegionsLook, testing::Bool(),
                         [](const auto& look) { return look.param ? "dark" : "light"; });

TEST_P(IdeRegionsLook, Shot) {
  const QPalette before = QApplication::palette();
  if (GetParam()) QApplication::setPalette(test::DarkPalette());
  ide.Run({}, [&] {
    std::string text(cForm);
    text.replace(text.find("\t\tthis->Add"), 0, "\t\tif (a) b();\n");
    OpenForm(text).ShowLine(8);
    test::Shot(*theMainForm, GetParam() ? "form-regions-dark" : "form-regions");
  });
  QApplication::setPalette(before);
}

}  // namespace
}  // namespace zendry
