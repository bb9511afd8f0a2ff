#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include "DataPaths.h"
#include "FileText.h"
#include "frmedt/FormCheck.h"
#include "frmedt/FormWriter.h"

// The dialogs of the program are forms, and so is a demo: the designer can open each of them, and
// saving it untouched changes no byte.

namespace zendry {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
namespace fs = std::filesystem;

const fs::path cTree = fs::path(TEST_DATA).parent_path().parent_path();

FormTextPtr Read(const fs::path& path) {
  mavro::FileText file = mavro::ReadFileText(path.string());
  return file.Ok() ? std::make_shared<FormText>(path.string(), file.text) : nullptr;
}

FormTextPtr Beside(const std::string& path, bool isHeader) {
  return Read(fs::path(path).replace_extension(isHeader ? ".h" : ".cpp"));
}

// The sources in folders of the tree that have a region of declarations.
std::vector<fs::path> Sources(const std::vector<std::string>& folders) {
  std::vector<fs::path> found;
  for (const std::string& folder : folders)
    for (const auto& entry : fs::recursive_directory_iterator(cTree / folder)) {
      const auto extension = entry.path().extension();
      if (extension != ".h" && extension != ".cpp") continue;
      const std::string text = mavro::ReadFileText(entry.path().string()).text;
      if (text.find("\n\t//!decl\n") != text.npos) found.push_back(entry.path());
    }
  return found;
}

// Opens the form of a source and writes it as an untouched designer does; the text must be the
// same. Adds the form's class to `opened`.
void ExpectUnchanged(const fs::path& path, std::set<std::string>& opened) {
  SCOPED_TRACE(path.string());
  FormLocator locator;
  locator.Scan(Read(path));
  ASSERT_EQ(locator.targets.size(), 1u);
  ASSERT_TRUE(locator.Select(0, Beside)) << locator.reports.front().text;
  const FormTarget& target = locator.Selected();
  opened.insert(target.className);
  for (const FormLoss& loss : CheckForm(target)) ADD_FAILURE() << loss.path << ": " << loss.Words();

  FormData form;
  form.ReadDecl(target.decl.Lines());
  form.ReadInit(target.init.Lines());
  EXPECT_TRUE(form.CheckParents());
  EXPECT_THAT(form.reports, IsEmpty());
  EXPECT_GT(form.controls.size(), 1u);
  std::vector<std::string> decl, init;
  FormWriter writer(form);
  writer.WriteDecl(decl);
  writer.WriteInit(init);
  for (const RegionEdit& edit : locator.ReplaceRegions(decl, init)) {
    const std::string text = mavro::ReadFileText(edit.path).text;
    EXPECT_EQ(text.substr(edit.edit.offset, edit.edit.length), edit.edit.text) << edit.path;
  }
}

TEST(OwnDialogs, EachIsWrittenBackWithoutAChange) {
  std::set<std::string> opened;
  for (const fs::path& path : Sources({"src", "libs/mavro/sci"})) ExpectUnchanged(path, opened);
  EXPECT_THAT(opened,
              ElementsAre("mavro::GoToLineDlg", "zendry::AboutDlg", "zendry::BreakEditor",
                          "zendry::ClassWizard", "zendry::DebugDlg", "zendry::EventDlg",
                          "zendry::FontPropDlg", "zendry::ItemsDlg", "zendry::NewFileDlg",
                          "zendry::NewFormDlg", "zendry::ReplaceListDlg", "zendry::SelectBox",
                          "zendry::SelectDlg", "zendry::TextDlg", "zendry::ToolBarEditor"));
}

TEST(Demos, ThoseWithAFormAreWrittenBackWithoutAChange) {
  std::set<std::string> opened;
  for (const fs::path& path : Sources({"dist/Repos"})) ExpectUnchanged(path, opened);
  EXPECT_THAT(opened, ElementsAre("CalcForm"));
}

}  // namespace
}  // namespace zendry
