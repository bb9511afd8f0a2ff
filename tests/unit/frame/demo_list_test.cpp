#include "frame/DemoList.h"

#include <gtest/gtest.h>

#include "TempFolder.h"

namespace zendry {
namespace {

std::vector<std::string> Read(const test::TempFolder& folder) {
  std::vector<std::string> shown;
  for (const Demo& demo : ReadDemos(folder.Path() + "/"))
    shown.push_back(demo.title + "|" + demo.sentence + "|" +
                    demo.picture.substr(folder.Path().size()));
  return shown;
}
using Texts = std::vector<std::string>;

TEST(DemoList, HasTheDemosOfTheList_WithTheirTitlesInOrder) {
  test::TempFolder folder;
  folder.Write("Repos/items.def",
               "#templates\ntemplates/c=C program\n#demos\r\n#@One\ndemos/a=The first.\r\n#@Two\n"
               "demos/b=The second.\nno sentence\n\ndemos/c=The third.\n");
  EXPECT_EQ(Read(folder),
            (Texts{"One|The first.|/Repos/pictures/a.png", "Two|The second.|/Repos/pictures/b.png",
                   "c|The third.|/Repos/pictures/c.png"}));
}

TEST(DemoList, WithoutAReadableList_IsEmpty) {
  test::TempFolder folder;
  EXPECT_EQ(Read(folder), Texts());
  folder.Write("Repos/items.def", std::string("\0\xFF\x01=\n#\n", 7));
  EXPECT_EQ(Read(folder), Texts());
}

TEST(DemoList, FoldersOutsideOfTheInstallation_AreLeftOut) {
  test::TempFolder folder;
  folder.Write("Repos/items.def", "#demos\n/etc=A\n../x=B\ndemos/../../x=C\ndemos/d=D\n");
  EXPECT_EQ(Read(folder), Texts{"d|D|/Repos/pictures/d.png"});
}

}  // namespace
}  // namespace zendry
