#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <regex>
#include <set>

#include "OwnForms.h"
#include "frmedt/FormCheck.h"
#include "frmedt/FormWriter.h"

// The dialogs of the program are forms: the designer can open each of them, and saving it untouched
// changes no byte.

namespace zendry {
namespace {

using testing::IsEmpty;

// The classes that derive from a form, directly or not, without their namespaces.
std::set<std::string> FormClasses() {
  std::map<std::string, std::string> bases;
  test::ForEachSource(
      test::cOwnFolders, [&](const std::filesystem::path&, const std::string& text) {
        static const std::regex cClass(R"(class (\w+)(?: final)? ?:\s*public (?:\w+::)*(\w+))");
        for (std::sregex_iterator at(text.begin(), text.end(), cClass), end; at != end; ++at)
          bases.emplace((*at)[1], (*at)[2]);
      });
  std::set<std::string> forms;
  for (const auto& [name, first] : bases) {
    std::string base = first;
    while (bases.contains(base)) base = bases[base];
    if (base == "Form") forms.insert(name);
  }
  return forms;
}

const std::set<std::string> cForms = {
    "mavro::EditReplaceDlg", "mavro::FindTextDlg",     "mavro::GoToLineDlg",
    "mavro::PageSetupDlg",   "mavro::PrintPreviewDlg", "mavro::PrintProgressDlg",
    "zendry::AboutDlg",      "zendry::BreakEditor",    "zendry::BrowserDlg",
    "zendry::ClassWizard",   "zendry::CopyProjectDlg", "zendry::DebugDlg",
    "zendry::EventDlg",      "zendry::FindInFilesDlg", "zendry::FontPropDlg",
    "zendry::IdeOptForm",    "zendry::ItemsDlg",       "zendry::LossDlg",
    "zendry::NewFileDlg",    "zendry::NewFormDlg",     "zendry::NewProjectDialog",
    "zendry::PrjOptionsDlg", "zendry::ReplaceListDlg", "zendry::SelectBox",
    "zendry::SelectDlg",     "zendry::TabList",        "zendry::TextDlg",
    "zendry::ToolBarEditor"};

// Windows that are no dialogs, and dialogs with another one's form.
const std::set<std::string> cWithoutAForm = {"DesignFrame",  "EditorFindDlg", "FindBaseDlg",
                                             "HelpWindow",   "MainForm",      "PreviewForm",
                                             "ProgParamsDlg"};

// A new dialog is a form, or stands in the list above.
TEST(OwnDialogs, EveryFormClass_IsListed) {
  std::set<std::string> listed = cWithoutAForm;
  for (const std::string& name : cForms) listed.insert(name.substr(name.find("::") + 2));
  EXPECT_THAT(FormClasses(), testing::ContainerEq(listed));
}

// Opens the form of a source and writes it as an untouched designer does; the text must be the
// same. Adds the form's class to `opened`.
void ExpectUnchanged(const std::filesystem::path& path, std::set<std::string>& opened) {
  SCOPED_TRACE(path.string());
  FormLocator locator;
  locator.Scan(test::ReadForm(path));
  ASSERT_EQ(locator.targets.size(), 1u);
  ASSERT_TRUE(locator.Select(0, test::OtherHalf)) << locator.reports.front().text;
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
  for (const auto& path : test::FormSources()) ExpectUnchanged(path, opened);
  EXPECT_THAT(opened, testing::ContainerEq(cForms));
}

TEST(Demos, ThoseWithAFormAreWrittenBackWithoutAChange) {
  std::set<std::string> opened;
  for (const auto& path : test::FormSources({"dist/Repos"})) ExpectUnchanged(path, opened);
  EXPECT_THAT(opened, testing::ElementsAre("CalcForm"));
}

}  // namespace
}  // namespace zendry
