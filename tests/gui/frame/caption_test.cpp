#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "IdeDriver.h"
#include "frame/FileActs.h"

// The title of the main window.

namespace zendry {
namespace {

using test::IdeDriver;

TEST(IdeCaption, NamesProjectAndFile) {
  IdeDriver ide;
  ide.Run({ide.Project({{"a.cpp", "int a;\n"}})}, [&] {
    MainForm& form = *theMainForm;
    EXPECT_EQ(form.text.Get(), "p - Zendry");
    form.editTabs.OpenFile(ide.files.Path("a.cpp"));
    EXPECT_EQ(form.text.Get(), "p - " + ide.files.Path("a.cpp"));
    form.editTabs.CloseAll();
    EXPECT_EQ(form.text.Get(), "p - Zendry");
    theFileActs.OnCommand(cCloseProjectCommand);
    EXPECT_EQ(form.text.Get(), "Zendry");
  });
}

TEST(IdeCaption, OfATextWithoutName_IsThatOfItsTab) {
  IdeDriver ide;
  ide.Run({}, [&] {
    MainForm& form = *theMainForm;
    form.editTabs.NewTab("");
    EXPECT_EQ(form.text.Get(), "Noname - Zendry");
    ide.dialogs.files = {{ide.files.Path("new.cpp")}};
    theFileActs.OnCommand(cSaveCommand);
    EXPECT_EQ(form.text.Get(), ide.files.Path("new.cpp") + " - Zendry");
    ide.dialogs.files = {{ide.files.Path("other.h")}};
    theFileActs.OnCommand(cSaveAsCommand);
    EXPECT_EQ(form.text.Get(), ide.files.Path("other.h") + " - Zendry");
  });
}

}  // namespace
}  // namespace zendry
