#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <functional>
#include <string>

#include "IdeDriver.h"
#include "PaintWatch.h"

// A large file of the command line opens once the window is on the screen.

namespace zendry {
namespace {

using test::IdeDriver;
using testing::ElementsAre;

constexpr size_t cLarge = 8 << 20;

std::string Lines(size_t size) {
  std::string text;
  while (text.size() < size) text += "int number = 0;\n";
  return text.substr(0, size);
}

// The length of the text when it was painted first; 0 until then.
struct FirstPaint : QObject {
  FirstPaint() { qApp->installEventFilter(this); }
  int length = 0;
  std::string caption;
  std::function<void()> onPaint;  // called then

  bool eventFilter(QObject* watched, QEvent* event) override {
    const EditTab* tab = length == 0 && theMainForm ? theMainForm->editTabs.Active() : nullptr;
    if (event->type() != QEvent::Paint || !tab || !tab->editor->impl->hwnd) return false;
    if (watched != &test::TextWidget(*tab->editor)) return false;
    length = tab->editor->Length();
    caption = theMainForm->text;
    if (onPaint) onPaint();
    return false;
  }
};

bool IsOpen(size_t size) {
  return test::WaitFor([size] {
    const EditTab* tab = theMainForm->editTabs.Active();
    return tab && static_cast<size_t>(tab->editor->Length()) == size;
  });
}

struct LargeStart : testing::Test {
  IdeDriver ide;
  FirstPaint first;
};

TEST_F(LargeStart, LargeFile_IsPaintedBeforeItIsRead_AndReadyForTyping) {
  const std::string text = Lines(cLarge);
  const std::string path = ide.files.Write("large.cpp", text);
  ide.Run({path}, [&] {
    ASSERT_TRUE(IsOpen(cLarge));
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("large.cpp"));
    EXPECT_GT(first.length, 0);
    EXPECT_LT(first.length, static_cast<int>(cLarge));
    EXPECT_EQ(first.caption, path + " - Zendry");
    const CppEditor& editor = *theMainForm->editTabs.Active()->editor;
    EXPECT_TRUE(editor.IsFocused());
    EXPECT_FALSE(editor.dirty);
    ide.Press(Qt::Key_X);
    EXPECT_EQ(editor.GetText(), "x" + text);
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("large.cpp*"));
  });
}

TEST_F(LargeStart, FileBelowTheLimit_IsReadBeforeItIsPainted) {
  ide.Run({ide.files.Write("a.cpp", Lines(cLarge - 1))}, [&] {
    ASSERT_TRUE(IsOpen(cLarge - 1));
    EXPECT_TRUE(test::WaitFor([&] { return first.length > 0; }));
    EXPECT_EQ(first.length, static_cast<int>(cLarge - 1));
  });
}

TEST_F(LargeStart, FurtherLargeFile_IsPaintedBeforeItIsRead) {
  const std::string small = ide.files.Write("a.cpp", "int a;\n");
  const std::string large = ide.files.Write("large.cpp", Lines(cLarge));
  ide.Run({small}, [&] {
    first.length = 0;
    ASSERT_TRUE(theMainForm->editTabs.OpenFile(large));
    EXPECT_LT(first.length, static_cast<int>(cLarge));
    EXPECT_EQ(first.caption, large + " - Zendry");
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("a.cpp", "large.cpp"));
    EXPECT_EQ(theMainForm->editTabs.selectedIndex, 1);
  });
}

// Makes the program's reading of a file fail from now on.
void BreakReading(const std::string& path) {
  for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
    std::error_code gone;
    if (std::filesystem::read_symlink(entry.path(), gone) != path) continue;
    const int unreadable = open("/dev/null", O_WRONLY | O_CLOEXEC);
    dup2(unreadable, std::stoi(entry.path().filename()));
    close(unreadable);
    return;
  }
  ADD_FAILURE() << path << " is not open";
}

TEST_F(LargeStart, FileThatFailsAfterItsFirstPart_IsNotOpen) {
  const std::string small = ide.files.Write("a.cpp", "int a;\n");
  const std::string large = ide.files.Write("large.cpp", Lines(cLarge));
  ide.Run({small}, [&] {
    first.length = 0;
    first.onPaint = [&] { BreakReading(large); };
    EXPECT_FALSE(theMainForm->editTabs.OpenFile(large, EditTabs::OnFailure::cSay));
    EXPECT_GT(first.length, 0);
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("a.cpp"));
    EXPECT_EQ(static_cast<std::string>(theMainForm->text), small + " - Zendry");
    EXPECT_TRUE(theMainForm->editTabs.Active()->editor->IsFocused());
    ide.Press(Qt::Key_X);
    EXPECT_EQ(theMainForm->editTabs.Active()->editor->GetText(), "xint a;\n");
  });
}

TEST_F(LargeStart, OnlyFileThatFailsAfterItsFirstPart_LeavesAnEmptyWindow) {
  const std::string large = ide.files.Write("large.cpp", Lines(cLarge));
  ide.Run({}, [&] {
    first.onPaint = [&] { BreakReading(large); };
    EXPECT_FALSE(theMainForm->editTabs.OpenFile(large, EditTabs::OnFailure::cSay));
    EXPECT_GT(first.length, 0);
    EXPECT_TRUE(IdeDriver::Captions().empty());
    EXPECT_EQ(static_cast<std::string>(theMainForm->text), "Zendry");
    EXPECT_FALSE(test::WidgetOf(theMainForm->buildMode)->isEnabled());
  });
}

}  // namespace
}  // namespace zendry
