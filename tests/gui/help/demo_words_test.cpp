#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "IdeDriver.h"
#include "help/HelpActs.h"

// F1 on words of the demos, with the indexes of an installation.

namespace zendry {
namespace {

using test::IdeDriver;
using testing::HasSubstr;
using testing::Not;

// A place in a demo: the text in it, the word at its end, and a part of the page.
struct DemoWord {
  const char* file;
  const char* text;
  const char* page;
};

constexpr DemoWord cWords[] = {
    {"console/reader.cpp", "std::getline", "istream"},
    {"console/reader.cpp", "std::ifstream", "Controlling input for files"},
    {"console/reader.cpp", "std::istream", "basic_istream"},
    {"console/report.cpp", "std::setw", "setw"},
    {"console/report.cpp", "std::string", "Managing sequences of characters"},
    {"console/report.cpp", "std::max", "greater"},
    {"console/main.cpp", "std::cout", "standard output"},
    {"calculator/engine.cpp", "std::snprintf", "formatted output conversion"},
    {"calculator/engine.cpp", "pop_back", "Remove the last character"},
    {"calculator/engine.cpp", "std::string", "Managing sequences of characters"},
    {"calculator/calcform.cpp", "SetBounds", "Control"},
    {"calculator/calcform.h", "Button", "A push button."},
    {"calculator/calcform.h", "public Form", "A top-level window."},
    {"calculator/calcform.cpp", "onClick", "AnyButton"},
    {"gallery/drawpage.cpp", "MoveTo", "MoveTo"},
    {"gallery/drawpage.cpp", "SetPen", "SetPen"},
    {"gallery/listpage.cpp", "AddColumn", "AddColumn"},
    {"gallery/listpage.cpp", "SetCell", "SetCell"},
    {"gallery/drawpage.cpp", "std::sin", "sine function"},
    {"gallery/listpage.cpp", "AddNode", "AddNode"},
};

TEST(DemoWords, HaveHelp) {
  IdeDriver ide;
  std::filesystem::create_directories(mavro::ProfileFolder() + "/.zendry");
  std::filesystem::create_directory_symlink(HELP_FOLDER, mavro::ProfileFolder() + "/.zendry/Help");
  std::filesystem::copy(DEMOS_FOLDER, ide.files.Path("demos"),
                        std::filesystem::copy_options::recursive);
  ide.Run({}, [&] {
    for (const DemoWord& word : cWords) {
      SCOPED_TRACE(std::string(word.file) + " " + word.text);
      ASSERT_TRUE(theMainForm->editTabs.OpenFile(ide.files.Path("demos/") + word.file));
      CppEditor& editor = *theMainForm->editTabs.Active()->editor;
      const size_t at = ide.files.Read(std::string("demos/") + word.file).find(word.text);
      EXPECT_NE(at, std::string::npos);
      editor.Send(mavro::SCI_GOTOPOS, at + std::strlen(word.text));
      IdeDriver::Press(Qt::Key_F1);
      const std::string page = theHelpActs.Window()->view.PlainText();
      EXPECT_THAT(page.substr(0, 2000), HasSubstr(word.page));
      EXPECT_THAT(page, Not(HasSubstr("is in none of the indexes")));
      theHelpActs.Window()->Close();
      test::WidgetOf(*theMainForm)->activateWindow();
      test::WaitFor([] { return mavro::activeForm == theMainForm; });
    }
  });
}

TEST(HelpIndexes, Answer) {
  HelpIndex index;
  index.ReadFolders(HELP_FOLDER, "");
  const auto modules = [&index](const char* name) {
    std::vector<std::string> found;
    for (const HelpEntry& entry : index.Topics())
      if (entry.Name() == name) found.emplace_back(entry.Module());
    return found;
  };
  using testing::Contains;
  EXPECT_THAT(modules("printf"), Contains("stdio.h"));
  EXPECT_THAT(modules("std::vector"), Contains("std::vector"));
  EXPECT_THAT(modules("push_back"), testing::IsSupersetOf({"std::vector", "std::list"}));
  EXPECT_THAT(modules("open"), testing::IsSupersetOf({"fcntl.h", "std::basic_fstream"}));
  EXPECT_THAT(modules("Button"), testing::ElementsAre("Button", testing::_));
  EXPECT_THAT(modules("onClick"), Contains("AnyButton"));
  EXPECT_THAT(modules("sort"), Contains("algorithm"));
  for (const HelpEntry& entry : index.Topics()) EXPECT_NE(index.Source(entry), nullptr);
}

}  // namespace
}  // namespace zendry
