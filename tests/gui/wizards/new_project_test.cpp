#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QLabel>

#include "Application.h"
#include "DarkPalette.h"
#include "EditorFixture.h"
#include "Looks.h"
#include "SmallDisk.h"
#include "frame/NewProjects.h"
#include "wizards/NewProjectDialog.h"

// New projects and clones, by keys and clicks.

namespace zendry {
namespace {

using mavro::Answer;
using test::IdeDriver;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class IdeNewProject : public test::EditorFixture {
 protected:
  IdeNewProject() : savedDir(mavro::theApplication.appDir) {
    mavro::theApplication.appDir = installed.Path() + "/";
    std::filesystem::copy(TEST_DATA "/../../dist/Repos", installed.Path("Repos"),
                          std::filesystem::copy_options::recursive);
  }
  ~IdeNewProject() override { mavro::theApplication.appDir = savedDir; }

  static void Replace(const mavro::Edit& edit, const std::string& text) {
    test::Click(edit);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_A, Qt::ControlModifier);
    Type(text);
  }

  static void ClickItem(const mavro::Control& group, int item) {
    QAbstractButton* button = test::WidgetOf(group)->findChildren<QAbstractButton*>().at(item);
    QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, QPoint(10, button->height() / 2));
  }

  // Runs the program, chooses "New project", gives folder and name, calls `choose`, presses OK.
  void Make(const std::string& name, NewProjectDialog::Page page,
            const std::function<void(NewProjectDialog&)>& choose,
            const std::function<void()>& afterwards, const mavro::ArgumentList& arguments = {}) {
    ide.Run(arguments, [&] {
      ide.OnDialog([&](mavro::Form& form) {
        auto& dialog = static_cast<NewProjectDialog&>(form);
        EXPECT_EQ(form.text, "New project");
        Replace(dialog.place.path, ide.files.Path());
        Replace(dialog.place.name, name);
        dialog.tabs.selectedIndex = page;
        if (choose) choose(dialog);
        // Return would press the button that has the focus.
        if (form.impl->hwnd && page == NewProjectDialog::cImportPage)
          test::Click(dialog.okButton);
        else if (form.impl->hwnd)
          test::Key(form, Qt::Key_Return);
      });
      theFileActs.OnCommand(cNewProjectCommand);
      afterwards();
    });
  }
  void Clone(const std::string& folder, const std::string& name) {
    ide.OnDialog([=](mavro::Form& form) {
      auto& dialog = static_cast<CopyProjectDlg&>(form);
      EXPECT_EQ(form.text, "Clone project");
      Replace(dialog.place.path, folder);
      Replace(dialog.place.name, name);
      test::Key(form, Qt::Key_Return);
    });
    theFileActs.OnCommand(cCloneProjectCommand);
  }
  static void LeaveByEscape(mavro::Form& form) { test::Key(form, Qt::Key_Escape); }

  test::TempFolder installed;

 private:
  std::string savedDir;
};

TEST_F(IdeNewProject, ASingleFile_StandsInTheFolderItself) {
  Make("one", NewProjectDialog::cConsolePage, nullptr, [&] {
    EXPECT_EQ(theProject.name, "one.zpj");
    EXPECT_EQ(theProject.folder, ide.files.Path());
    EXPECT_EQ(ide.files.Read("one.cpp"), ConsoleSource(true));
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("one.cpp"));
    EXPECT_EQ(std::filesystem::current_path(), ide.files.Path());
    EXPECT_EQ(theIdeSession.values["path0"], ide.files.Path() + "/");
  });
}

TEST_F(IdeNewProject, AMultiFileProjectInC_HasAFolder_ChosenByKeys) {
  const auto choose = [](NewProjectDialog& dialog) {
    dialog.projectType.Focus();
    test::Key(dialog, Qt::Key_Down);
    EXPECT_EQ(dialog.projectType.itemIndex, 1);
    ClickItem(dialog.language, 1);
    EXPECT_TRUE(test::WaitFor([&] { return dialog.IsMultiFile() && !dialog.IsCpp(); }));
    EXPECT_TRUE(dialog.IsMultiFile());
    EXPECT_FALSE(dialog.IsCpp());
  };
  Make("multi", NewProjectDialog::cConsolePage, choose, [&] {
    EXPECT_EQ(theProject.folder, ide.files.Path("multi"));
    EXPECT_EQ(ide.files.Read("multi/multi.c"), ConsoleSource(false));
    EXPECT_FALSE(theProject.implicit);
  });
}

TEST_F(IdeNewProject, NamesThatAreRefused) {
  for (const char* name : {"my project", "a.b", "a/b"}) {
    ide.dialogs.texts.clear();
    Make(name, NewProjectDialog::cConsolePage, nullptr, [&] {
      EXPECT_THAT(ide.dialogs.texts,
                  ElementsAre("Information: Incorrect project name: " + std::string(name)));
      EXPECT_FALSE(theProject.isOpen);
      EXPECT_THAT(ide.files.Names(), IsEmpty());
    });
  }
}

TEST_F(IdeNewProject, WithoutANameOrAChoice_TheDialogStays) {
  const auto choose = [&](NewProjectDialog& dialog) {
    Replace(dialog.place.name, "");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Delete);
    test::Key(dialog, Qt::Key_Return);
    ASSERT_TRUE(dialog.impl->hwnd);
    Replace(dialog.place.name, "x");
    for (const int page : {NewProjectDialog::cTemplatePage, NewProjectDialog::cDemosPage,
                           NewProjectDialog::cImportPage}) {
      dialog.tabs.selectedIndex = page;
      test::Key(dialog, Qt::Key_Return);
      ASSERT_TRUE(dialog.impl->hwnd);
    }
    LeaveByEscape(dialog);
  };
  Make("", NewProjectDialog::cConsolePage, choose, [&] {
    EXPECT_THAT(
        ide.dialogs.texts,
        ElementsAre("Information: Enter project name!", "Information: Select project type!",
                    "Information: Select project type!",
                    "Information: Choose a folder with sources, or a compile_commands.json!"));
    EXPECT_THAT(ide.files.Names(), IsEmpty());
  });
}

TEST_F(IdeNewProject, AnExistingProject_IsAskedAbout_NoLeavesItAsItWas) {
  ide.files.Write("old.zpj", "kept");
  ide.files.Write("old.cpp", "kept too");
  ide.dialogs.answers = {Answer::cNo};
  const std::string open = ide.Project({{"a.cpp", ""}}, "open.zpj");
  Make("old", NewProjectDialog::cConsolePage, nullptr,
       [&] {
         EXPECT_THAT(ide.dialogs.texts,
                     ElementsAre("Confirmation: Project: old exists!\nOverwrite?"));
         EXPECT_EQ(ide.files.Read("old.zpj"), "kept");
         EXPECT_EQ(ide.files.Read("old.cpp"), "kept too");
         EXPECT_FALSE(theProject.isOpen) << "the open project is closed before the question";
       },
       {open});
}

TEST_F(IdeNewProject, AnExistingProject_OverwrittenByYes_IsAskedAboutOnce) {
  ide.files.Write("old.zpj", "<src>\n<file name=\"x.cpp\"/>\n</src>\n");
  ide.dialogs.answers = {Answer::cYes};
  Make("old", NewProjectDialog::cConsolePage, nullptr, [&] {
    EXPECT_EQ(ide.dialogs.texts.size(), 1u);
    EXPECT_EQ(ide.files.Read("old.cpp"), ConsoleSource(true));
    EXPECT_EQ(IdeDriver::Tree(), "(Source Files(old.cpp))");
  });
}

TEST_F(IdeNewProject, AFolderThatCantBeMade_IsNamed) {
  ide.files.Write("file", "");
  const auto choose = [&](NewProjectDialog& dialog) {
    Replace(dialog.place.path, ide.files.Path("file/sub"));
  };
  Make("p", NewProjectDialog::cConsolePage, choose, [&] {
    EXPECT_THAT(ide.dialogs.texts,
                ElementsAre("Error: Error on create directory: " + ide.files.Path("file/sub/")));
  });
}

TEST_F(IdeNewProject, AForm_HasItsHeaderAndSourceAndResource) {
  const auto choose = [](NewProjectDialog& dialog) {
    EXPECT_EQ(dialog.formName.text, "MainForm");
    test::Click(dialog.resourceFile, QPoint(8, 11));
    EXPECT_TRUE(dialog.resourceFile.checked);
  };
  Make("app", NewProjectDialog::cFormsPage, choose, [&] {
    EXPECT_EQ(theProject.type, cFormApplication);
    EXPECT_EQ(theProject.libSet, "mavro");
    EXPECT_EQ(IdeDriver::Tree(),
              "(Source Files(MainForm.cpp) Header Files(MainForm.h) Resource File(app.rc))");
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("MainForm.cpp"));
    EXPECT_EQ(ide.files.Read("app/app.rc"), FormResource());
    EXPECT_THAT(ide.files.Read("app/MainForm.cpp"), HasSubstr("int Application::Main"));
    EXPECT_THAT(ide.files.Read("app/MainForm.h"), HasSubstr("class MainForm: public Form"));
  });
}

TEST_F(IdeNewProject, FilesThatTheQuestionAboutTheProjectDoesNotName_AreAskedAboutToo) {
  ide.files.Write("app/MainForm.cpp", "mine");
  Make("app", NewProjectDialog::cFormsPage, nullptr, [&] {
    EXPECT_THAT(ide.dialogs.texts, ElementsAre(HasSubstr("MainForm.cpp\nis there already!")));
    EXPECT_EQ(ide.files.Read("app/MainForm.cpp"), "mine");
  });
  ide.dialogs.texts.clear();
  ide.files.Write("one.c", "mine");
  const auto choose = [](NewProjectDialog& dialog) { dialog.language.itemIndex = 1; };
  Make("one", NewProjectDialog::cConsolePage, choose, [&] {
    EXPECT_THAT(ide.dialogs.texts, ElementsAre(HasSubstr("one.c\nis there already!")));
    EXPECT_EQ(ide.files.Read("one.c"), "mine");
  });
}

TEST_F(IdeNewProject, AFormsName_MustBeOneOfCpp) {
  const auto choose = [](NewProjectDialog& dialog) { Replace(dialog.formName, "My-Form"); };
  Make("app", NewProjectDialog::cFormsPage, choose, [&] {
    EXPECT_THAT(ide.dialogs.texts, ElementsAre("Information: Incorrect form name: My-Form"));
    EXPECT_THAT(ide.files.Names(), IsEmpty());
  });
}

TEST_F(IdeNewProject, ATemplate_IsCopiedUnderTheProjectsName) {
  const auto choose = [](NewProjectDialog& dialog) {
    test::Click(dialog.templateList, QPoint(20, 8));
    EXPECT_EQ(dialog.templateList.selectedIndex, 0);
  };
  Make("mine", NewProjectDialog::cTemplatePage, choose, [&] {
    EXPECT_EQ(theProject.name, "mine.zpj");
    EXPECT_TRUE(ide.files.Exists("mine/mine.zpj"));
    EXPECT_FALSE(ide.files.Exists("mine/_.zpj"));
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("main.cpp"));
    EXPECT_EQ(theProject.Files().size(), 3u);
  });
}

TEST_F(IdeNewProject, EveryTemplateAndDemo_OpensAsAProjectWithItsFiles) {
  const RepositoryItems items = ReadRepositoryItems(installed.Read("Repos/items.def"));
  ASSERT_EQ(items.demos.size(), items.demoTitles.size());
  for (const auto* list : {&items.templates, &items.demos})
    for (size_t i = 0; i < list->size(); ++i) {
      const std::string name = (list == &items.demos ? "demo" : "template") + std::to_string(i);
      const auto choose = [&](NewProjectDialog& dialog) {
        auto& box = list == &items.demos ? dialog.demoList : dialog.templateList;
        box.selectedIndex = static_cast<int>(i);
      };
      Make(name,
           list == &items.demos ? NewProjectDialog::cDemosPage : NewProjectDialog::cTemplatePage,
           choose, [&] {
             EXPECT_EQ(theProject.name, name + ".zpj") << (*list)[i].folder;
             EXPECT_FALSE(theProject.Files().empty()) << (*list)[i].folder;
             for (const auto& file : theProject.Files())
               EXPECT_TRUE(std::filesystem::exists(file->name)) << file->name;
           });
    }
  EXPECT_THAT(ide.dialogs.texts, IsEmpty());
}

TEST_F(IdeNewProject, ATemplateThatIsNotThere_IsNamed) {
  installed.Write("Repos/items.def", "gone=Gone\n");
  const auto choose = [](NewProjectDialog& dialog) { dialog.templateList.selectedIndex = 0; };
  Make("p", NewProjectDialog::cTemplatePage, choose, [&] {
    EXPECT_THAT(ide.dialogs.texts, ElementsAre(HasSubstr("Error on copy file: ")));
    EXPECT_THAT(ide.dialogs.texts[0], HasSubstr("Repos/gone"));
    EXPECT_FALSE(theProject.isOpen);
  });
}

TEST_F(IdeNewProject, ACopyOverFilesThatAreThere_AsksOnce) {
  ide.files.Write("p/main.cpp", "mine");
  ide.dialogs.answers = {Answer::cNo};
  const auto choose = [](NewProjectDialog& dialog) { dialog.templateList.selectedIndex = 0; };
  Make("p", NewProjectDialog::cTemplatePage, choose, [&] {
    EXPECT_THAT(ide.dialogs.texts, ElementsAre(HasSubstr("main.cpp\nis there already!")));
    EXPECT_EQ(ide.files.Read("p/main.cpp"), "mine");
  });
}

TEST_F(IdeNewProject, AnImport_WritesNothingButTheProject) {
  ide.files.Write("code/main.cpp", "#include \"a.h\"\nint main() {}\n");
  ide.files.Write("code/inc/a.h", "");
  ide.files.Write("code/other.cpp", "int main() {}\n");
  const auto choose = [&](NewProjectDialog& dialog) {
    Replace(dialog.place.name, "");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Delete);
    ide.dialogs.folders = {ide.files.Path("code")};
    test::Click(dialog.existing.folder);
    EXPECT_EQ(dialog.place.path.text, ide.files.Path("code/"));
    EXPECT_EQ(dialog.place.name.text, "code");
    EXPECT_THAT(
        IdeDriver::Rows(dialog.existing.files),
        ElementsAre("\u2611|inc/a.h|", "\u2611|main.cpp|", "\u2610|other.cpp|has a main too"));
    EXPECT_EQ(dialog.existing.mains.items.GetCount(), 2);
  };
  Make("", NewProjectDialog::cImportPage, choose, [&] {
    EXPECT_EQ(theProject.GetFullPath(theProject.name), ide.files.Path("code/code.zpj"));
    EXPECT_EQ(IdeDriver::Tree(), "(Source Files(main.cpp) Header Files(inc(a.h)))");
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("main.cpp"));
    EXPECT_EQ(theProject.includePath, "-I@/mylib -Iinc");
  });
}

TEST_F(IdeNewProject, AnImportByKeysAlone_ShowsTheFilesBeforeItTakesThem) {
  ide.files.Write("code/main.cpp", "int main() {}\n");
  ide.Run({}, [&] {
    ide.OnDialog([&](mavro::Form& form) {
      auto& dialog = static_cast<NewProjectDialog&>(form);
      ASSERT_EQ(QApplication::focusWidget(), test::WidgetOf(dialog.existing.source));
      QTest::keyClicks(QApplication::focusWidget(), QString::fromStdString(ide.files.Path("code")));
      test::Key(form, Qt::Key_Return);
      ASSERT_TRUE(form.impl->hwnd);
      EXPECT_EQ(dialog.existing.files.rowCount, 1);
      test::Key(form, Qt::Key_Return);
    });
    MakeNewProject(NewProjectDialog::cImportPage);
    EXPECT_EQ(IdeDriver::Tree(), "(Source Files(main.cpp))");
  });
}

TEST_F(IdeNewProject, TicksOfAnImport_ByClickAndSpace) {
  ide.files.Write("a.cpp", "");
  ide.files.Write("b.cpp", "int main() {}\n");
  const auto choose = [&](NewProjectDialog& dialog) {
    Replace(dialog.existing.source, ide.files.Path());
    test::Click(dialog.place.name);
    ASSERT_TRUE(test::WaitFor([&] { return dialog.existing.files.rowCount == 2; }));
    dialog.existing.files.Focus();
    dialog.existing.files.Select(0);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    EXPECT_FALSE(dialog.existing.Result().files[0].taken);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    EXPECT_TRUE(dialog.existing.Result().files[0].taken);
    dialog.existing.files.Select(1);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    EXPECT_EQ(dialog.existing.Result().mainFile, "") << "without its main it is a library";
  };
  Make("p", NewProjectDialog::cImportPage, choose, [&] {
    EXPECT_EQ(IdeDriver::Tree(), "(Source Files(a.cpp))");
    EXPECT_EQ(theProject.type, cStaticLib);
  });
}

TEST_F(IdeNewProject, HostileSwitchesOfAnImport_AreAskedAboutOnce) {
  ide.files.Write("a.cpp", "");
  const std::string commands = ide.files.Write(
      "compile_commands.json",
      R"([{"directory":".","file":"a.cpp","arguments":["g++","-fplugin=evil.so","-DX","a.cpp"]}])");
  const auto choose = [&](NewProjectDialog& dialog) {
    ide.dialogs.files = {{commands}};
    test::Click(dialog.existing.file);
  };
  Make("p", NewProjectDialog::cImportPage, choose, [&] {
    EXPECT_THAT(ide.dialogs.texts, ElementsAre(HasSubstr("-fplugin=evil.so")));
    EXPECT_EQ(theProject.releaseOptions.comp, "-O2 -DX");
  });
}

TEST_F(IdeNewProject, Clone_CopiesTheFolder_AndOpensTheCopy) {
  ide.files.Write("from/data/x.bin", std::string("\0\n\r\xff", 4));
  ide.files.Write("from/_.txt", "t");
  const std::string path = ide.Project({{"from/main.cpp", "int main() {}\n"}}, "from/p.zpj");
  ide.Run({path}, [&] {
    Tabs().OpenFile(ide.files.Path("from/main.cpp"));
    Type("// new ");
    Clone(ide.files.Path("to"), "copy");
    EXPECT_EQ(theProject.GetFullPath(theProject.name), ide.files.Path("to/copy/p.zpj"));
    EXPECT_EQ(ide.files.Read("to/copy/data/x.bin"), std::string("\0\n\r\xff", 4));
    EXPECT_EQ(ide.files.Read("to/copy/copy.txt"), "t");
    EXPECT_THAT(ide.files.Read("to/copy/main.cpp"), HasSubstr("// new"));
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("main.cpp"));
    EXPECT_EQ(theMainForm->ActiveFile(), ide.files.Path("to/copy/main.cpp"));
  });
  EXPECT_THAT(ide.dialogs.texts, IsEmpty());
}

TEST_F(IdeNewProject, Clone_IntoItself_IsRefusedInWords) {
  const std::string path = ide.Project({{"from/a.cpp", ""}}, "from/p.zpj");
  ide.Run({path}, [&] {
    Clone(ide.files.Path("from"), "copy");
    EXPECT_THAT(ide.dialogs.texts, ElementsAre(HasSubstr("lies in the folder that is copied")));
  });
}

TEST_F(IdeNewProject, Clone_NeedsAProject) {
  ide.Run({}, [&] {
    EXPECT_FALSE(theMainForm->CanAct(theFileActs.Find(cCloneProjectCommand)));
    EXPECT_TRUE(theMainForm->CanAct(theFileActs.Find(cNewProjectCommand)));
    theFileActs.OnCommand(cCloneProjectCommand);
  });
  EXPECT_THAT(ide.dialogs.texts, ElementsAre("Information: No project loaded"));
}

TEST_F(IdeNewProject, RowsOfTheStartPage_OpenTheDialogAtTheirPage) {
  std::vector<std::string> shown;
  ide.Run({}, [&] {
    for (StartPage::Row& row : theMainForm->startPage.rows) {
      if (row.wizardPage < 0) continue;
      ide.OnDialog([&](mavro::Form& form) {
        auto& dialog = static_cast<NewProjectDialog&>(form);
        shown.push_back(std::to_string(dialog.ShownPage()) + " " + dialog.RepositoryFolder());
        const std::string name = dialog.place.name.text;
        EXPECT_EQ(name.empty() ? "" : "demos/" + name, dialog.RepositoryFolder());
        EXPECT_EQ(dialog.demoText.text.Get().empty(), row.demo < 0);
        test::Key(form, Qt::Key_Escape);
      });
      row.button.Focus();
      IdeDriver::Press(Qt::Key_Space);
    }
  });
  EXPECT_THAT(shown,
              ElementsAre("0 ", "4 ", "3 demos/calculator", "3 demos/console", "3 demos/gallery",
                          "3 demos/editor", "3 demos/bughunt", "3 demos/plotter"));
}

TEST_F(IdeNewProject, SentencesOfTheStartPage_HaveRoom) {
  ide.Run({}, [&] {
    int sentences = 0;
    for (const auto* label : test::WidgetOf(theMainForm->startPage)->findChildren<QLabel*>()) {
      EXPECT_LE(label->heightForWidth(label->width()), label->height())
          << label->text().toStdString();
      sentences += label->text().endsWith('.');
    }
    EXPECT_EQ(sentences, 6);
  });
}

// For people to look at: build/shots/new-project-*.png.
class NewProjectShots : public IdeNewProject, public testing::WithParamInterface<bool> {};

TEST_P(NewProjectShots, EveryPageIsReadable) {
  const std::string look = GetParam() ? "dark" : "light";
  const QPalette light = QApplication::palette();
  if (GetParam()) QApplication::setPalette(test::DarkPalette());
  ide.files.Write("code/main.cpp", "#include <gone.h>\nint main() {}\n");
  ide.files.Write("code/tests/a.cpp", "");
  ide.files.Write("code/src/a/rather/long/path/file.cpp", "");
  ide.files.Write("code/src/file.h", "");
  const std::string open = ide.Project({{"a.cpp", ""}});
  ide.Run({open}, [&] {
    ide.OnDialog([&](mavro::Form& form) {
      auto& dialog = static_cast<NewProjectDialog&>(form);
      dialog.existing.List(ide.files.Path("code"));
      dialog.templateList.selectedIndex = 1;
      for (const char* page : {"console", "forms", "template", "demos", "import"}) {
        // The sentence about a demo has two lines.
        if (dialog.ShownPage() != NewProjectDialog::cDemosPage) {
          EXPECT_THAT(test::UnreadableCaptions(dialog), IsEmpty()) << page;
        }
        test::Shot(dialog, "new-project-" + std::string(page) + "-" + look);
        dialog.tabs.selectedIndex =
            dialog.tabs.selectedIndex + 1 < 5 ? dialog.tabs.selectedIndex + 1 : 4;
        if (dialog.ShownPage() == NewProjectDialog::cDemosPage) {
          test::Click(dialog.demoList, QPoint(20, 8));
        }
      }
      LeaveByEscape(dialog);
    });
    theFileActs.OnCommand(cNewProjectCommand);
    ide.OnDialog([&](mavro::Form& form) {
      EXPECT_THAT(test::UnreadableCaptions(form), IsEmpty());
      test::Shot(form, "clone-project-" + look);
      LeaveByEscape(form);
    });
    theFileActs.OnCommand(cCloneProjectCommand);
  });
  QApplication::setPalette(light);
}

INSTANTIATE_TEST_SUITE_P(Looks, NewProjectShots, testing::Bool(), [](const auto& info) {
  return std::string(info.param ? "dark" : "light");
});

}  // namespace
}  // namespace zendry
