#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "IdeDriver.h"

// Starts with a file: what can be typed into is typed into at once, what is none is refused in
// words, and nothing is waited for.

namespace zendry {
namespace {

using test::IdeDriver;
using testing::ElementsAre;
using testing::IsEmpty;

class StartFaults : public testing::Test {
 protected:
  static EditTabs& Tabs() { return theMainForm->editTabs; }
  static void TypeAndExpect(const std::string& text) {
    QTest::keyClicks(QApplication::focusWidget(), "x");
    ASSERT_NE(Tabs().Active(), nullptr);
    EXPECT_EQ(Tabs().Active()->editor->GetText(), text);
  }
  // A pipe that nobody writes to: opening it for reading would wait for ever.
  std::string Pipe(const std::string& name) {
    const std::string path = ide.files.Path(name);
    EXPECT_EQ(mkfifo(path.c_str(), 0600), 0);
    return path;
  }
  std::string Link(const std::string& name, const std::string& to) {
    std::filesystem::create_symlink(to, ide.files.Path(name));
    return ide.files.Path(name);
  }
  void WriteSession(const std::string& name) {
    ide.files.Write("p.zend", "<state>\n\t<open>\n\t\t<file name=\"" + name +
                                  "\" id=\"1\"/>\n\t</open>\n</state>\n");
  }

  IdeDriver ide;
};

TEST_F(StartFaults, FileOfTheCommandLine_IsTypedIntoAtOnce) {
  ide.Run({ide.files.Write("a.cpp", "int a;\n")}, [&] { TypeAndExpect("xint a;\n"); });
}

TEST_F(StartFaults, FileOfTheSession_IsTypedIntoAtOnce) {
  const std::string project = ide.Project({{"a.cpp", "int a;\n"}});
  WriteSession("a.cpp");
  ide.Run({project}, [&] { TypeAndExpect("xint a;\n"); });
}

TEST_F(StartFaults, WhatIsNoFile_IsRefusedInWordsAndTheWindowComes) {
  for (const std::string& path :
       {Pipe("pipe.cpp"), ide.files.Folder("folder.cpp"), Link("device.cpp", "/dev/zero"),
        Link("terminal.h", "/dev/tty"), Link("nowhere.cpp", "none"), Link("loop.cpp", "loop.cpp"),
        Link("piped.h", "pipe.cpp"), ide.files.Path("missing.cpp")}) {
    ide.dialogs.texts.clear();
    ide.Run({path}, [&] {
      EXPECT_THAT(ide.dialogs.texts, ElementsAre("Error: Could not open file \"" + path + "\""));
      EXPECT_EQ(Tabs().TabCount(), 0);
    });
  }
}

TEST_F(StartFaults, ProjectFileThatIsAPipe_IsSaidAndNotWaitedFor) {
  const std::string path = Pipe("p.zpj");
  ide.Run({path}, [&] { EXPECT_EQ(IdeDriver::Status(), "Is not a regular file: " + path); });
}

TEST_F(StartFaults, SessionThatNamesAPipeOrADevice_PassesItOver) {
  const std::string project = ide.Project({{"a.cpp", "int a;\n"}});
  Pipe("pipe.cpp");
  for (const char* name : {"pipe.cpp", "/dev/zero", "/dev/tty", "."}) {
    WriteSession(name);
    ide.Run({project}, [&] { EXPECT_EQ(Tabs().TabCount(), 0) << name; });
    EXPECT_THAT(ide.dialogs.texts, IsEmpty());
  }
}

TEST_F(StartFaults, SessionThatIsAPipe_IsNotWaitedFor) {
  const std::string project = ide.Project({{"a.cpp", "int a;\n"}});
  const std::string session = Pipe("p.zend");
  ide.Run({project}, [&] { EXPECT_TRUE(theProject.isOpen); });
  EXPECT_TRUE(std::filesystem::is_fifo(session));
}

TEST_F(StartFaults, ProjectWithAPipeAmongItsSources_OpensAndParsesTheRest) {
  const std::string project = ide.Project({{"a.cpp", "int a;\n"}, {"b.cpp", "int b;\n"}});
  unlink(ide.files.Path("b.cpp").c_str());
  Pipe("b.cpp");
  ide.Run({project}, [&] {
    EXPECT_TRUE(theProject.isOpen);
    EXPECT_EQ(Tabs().OpenFile(ide.files.Path("b.cpp")), nullptr);
    EXPECT_NE(Tabs().OpenFile(ide.files.Path("a.cpp")), nullptr);
  });
}

TEST_F(StartFaults, SettingsThatAreAPipe_AreNotWaitedFor) {
  ide.home.Folder(".zendry");
  ASSERT_EQ(mkfifo(ide.home.Path(".zendry/zendry.ini").c_str(), 0600), 0);
  ide.Run({}, [&] { EXPECT_EQ(Tabs().TabCount(), 0); });
}

}  // namespace
}  // namespace zendry
