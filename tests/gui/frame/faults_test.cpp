#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>

#include "FileFaults.h"
#include "IdeDriver.h"
#include "Privileges.h"
#include "browser/BrowserActs.h"
#include "editor/EditorActs.h"

// The messages after a file can't be written or read, and windows that close at a bad moment.

namespace zendry {
namespace {

namespace fs = std::filesystem;
using test::IdeDriver;
using testing::Each;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class IdeFaults : public testing::Test {
 protected:
  static EditTabs& Tabs() { return theMainForm->editTabs; }
  static CppEditor& Front() { return *Tabs().Active()->editor; }
  CppEditor& Open(const std::string& name, const std::string& text) {
    return *Tabs().OpenFile(ide.files.Write(name, text));
  }
  static void Type(const std::string& text) {
    QTest::keyClicks(QApplication::focusWidget(), QString::fromStdString(text));
  }
  static void Save() { IdeDriver::Press(Qt::Key_S, Qt::ControlModifier); }

  IdeDriver ide;
};

// --- Saving.

class FailingSave : public IdeFaults {
 protected:
  // One letter is typed and saved while a call fails; afterwards it is saved again. Answers whether
  // a call was hit.
  bool TypeAndSave(int n, int error) {
    const std::string path = Front().fileName;
    const std::string before = ide.files.Read("a.cpp");
    Type("x");
    const std::string after = Front().GetText();
    bool hit;
    {
      test::FileFaults faults(n, error);
      Save();
      hit = faults.hit;
    }
    const bool failed = Front().dirty;
    EXPECT_THAT(ide.files.Read("a.cpp"), testing::AnyOf(before, after));
    if (failed) {
      EXPECT_THAT(ide.dialogs.texts, ElementsAre("Error: Error on save file:" + path));
      EXPECT_THAT(IdeDriver::Status(), EndsWith(": can't write " + path));
      EXPECT_THAT(IdeDriver::Captions(), ElementsAre("a.cpp*"));
    } else {
      EXPECT_EQ(ide.files.Read("a.cpp"), after);
      EXPECT_THAT(IdeDriver::Captions(), ElementsAre("a.cpp"));
    }
    // No other program has changed the file: the second save asks nothing.
    ide.dialogs.texts.clear();
    Save();
    EXPECT_THAT(ide.dialogs.texts, IsEmpty());
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("a.cpp"));
    EXPECT_EQ(ide.files.Read("a.cpp"), after);
    return hit;
  }

  void ExpectEachCallIsSaid(size_t names) {
    ide.Run({}, [&] {
      Open("a.cpp", "old\n");
      if (names == 2) fs::create_hard_link(ide.files.Path("a.cpp"), ide.files.Path("b.cpp"));
      for (const int error : {ENOSPC, EIO, EACCES}) {
        int n = 1;
        while (TypeAndSave(n, error) && n < 200 && !HasFailure()) ++n;
        EXPECT_GT(n, 8);
        EXPECT_LT(n, 200);
      }
      EXPECT_EQ(ide.files.Names().size(), names) << "a stray file";
      if (names == 2) {
        EXPECT_EQ(ide.files.Read("b.cpp"), ide.files.Read("a.cpp"));
      }
    });
  }
};

TEST_F(FailingSave, EachCallOfAPlainFile_MarksTheTabAndNamesTheFile) {
  ExpectEachCallIsSaid(1);
}

TEST_F(FailingSave, EachCallOfAFileOfTwoNames_MarksTheTabAndNamesTheFile) {
  ExpectEachCallIsSaid(2);
}

TEST_F(FailingSave, FileWithoutWriteRight_IsSaidAndSavedElsewhere) {
  ide.Run({}, [&] {
    CppEditor& editor = Open("a.cpp", "old\n");
    const std::string path = editor.fileName;
    ASSERT_EQ(chmod(path.c_str(), 0444), 0);
    Type("x");
    {
      const test::WithoutRights user;
      Save();
    }
    EXPECT_THAT(ide.dialogs.texts, ElementsAre("Error: Error on save file:" + path));
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("a.cpp*"));
    ide.dialogs.files = {{ide.files.Path("b.cpp")}};
    EXPECT_TRUE(Tabs().SaveActive(EditTabs::SaveName::cAsked));
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("b.cpp"));
    EXPECT_EQ(ide.files.Read("b.cpp"), "xold\n");
    EXPECT_EQ(ide.files.Read("a.cpp"), "old\n");
  });
}

// Something that is no file takes the file's place while it is open.
TEST_F(FailingSave, PipeOrFolderInTheFilesPlace_IsRefusedAndNeverWaitedFor) {
  ide.Run({}, [&] {
    CppEditor& editor = Open("a.cpp", "old\n");
    const std::string path = editor.fileName;
    Type("x");
    for (const bool pipe : {true, false}) {
      ide.dialogs.texts.clear();
      fs::remove(path);
      ASSERT_EQ(pipe ? mkfifo(path.c_str(), 0600) : mkdir(path.c_str(), 0700), 0);
      Tabs().CheckDisk();
      EXPECT_THAT(IdeDriver::Status(), StartsWith("No longer there, its text is here only: "));
      Save();
      EXPECT_THAT(ide.dialogs.texts, ElementsAre("Error: Error on save file:" + path));
      EXPECT_THAT(IdeDriver::Status(), StartsWith(pipe ? "It is a pipe: " : "It is a folder: "));
      EXPECT_THAT(IdeDriver::Captions(), ElementsAre("a.cpp*"));
    }
    fs::remove(path);
    Save();
    EXPECT_EQ(ide.files.Read("a.cpp"), "xold\n");
  });
}

TEST_F(FailingSave, FolderThatIsGone_KeepsTheTextUntilItIsBack) {
  ide.Run({}, [&] {
    Open("src/a.cpp", "old\n");
    Type("x");
    fs::remove_all(ide.files.Path("src"));
    Save();
    EXPECT_THAT(ide.dialogs.texts, ElementsAre(HasSubstr("Error on save file:")));
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("a.cpp*"));
    ide.files.Folder("src");
    Save();
    EXPECT_EQ(ide.files.Read("src/a.cpp"), "xold\n");
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("a.cpp"));
  });
}

// --- Opening.

TEST_F(IdeFaults, OpenFile_WithoutRightToRead_IsSaid) {
  ide.Run({}, [&] {
    const std::string path = ide.files.Write("a.cpp", "secret\n");
    chmod(path.c_str(), 0);
    const test::WithoutRights user;
    EXPECT_EQ(Tabs().OpenFile(path), nullptr);
    EXPECT_THAT(ide.dialogs.texts, ElementsAre("Error: Could not open file \"" + path + "\""));
    EXPECT_EQ(Tabs().TabCount(), 0);
  });
}

TEST_F(IdeFaults, OpenFile_PipesAndDevices_AreRefusedAndNeverWaitedFor) {
  ide.Run({}, [&] {
    Open("kept.cpp", "kept\n");
    const std::string pipe = ide.files.Path("pipe.cpp");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    for (const std::string& path :
         {pipe, std::string("/dev/zero"), std::string("/dev/tty"), std::string("/dev/full"),
          std::string("/dev"), ide.files.Path("kept.cpp/a.cpp")}) {
      ide.dialogs.texts.clear();
      EXPECT_EQ(Tabs().OpenFile(path), nullptr);
      EXPECT_THAT(ide.dialogs.texts, ElementsAre("Error: Could not open file \"" + path + "\""));
      EXPECT_THAT(IdeDriver::Captions(), ElementsAre("kept.cpp"));
    }
  });
}

// --- Closing at a bad moment.

constexpr char cMain[] = "struct Shape { int width; };\nint add(int a, int b);\n\nint main() {\n  ";

enum Open { cNothing, cList, cTip, cRecording };
enum Closing { cTab, cAllTabs, cProject, cWindow };

class IdeClosing : public IdeFaults, public testing::WithParamInterface<std::tuple<Open, Closing>> {
 protected:
  void Begin(enum Open what) {
    Tabs().OpenFile(ide.files.Path("main.cpp"));
    Front().Select(sizeof cMain - 1, sizeof cMain - 1);
    if (what == cList) Type("Shape s; s.");
    if (what == cTip) Type("add(");
    if (what == cRecording) IdeDriver::Press(Qt::Key_M, Qt::ControlModifier | Qt::ShiftModifier);
    Type(what == cNothing || what == cRecording ? "x" : "");
    EXPECT_EQ(Front().Send(mavro::SCI_AUTOCACTIVE) != 0, what == cList);
    EXPECT_EQ(Front().Send(mavro::SCI_CALLTIPACTIVE) != 0, what == cTip);
    EXPECT_EQ(Front().inMacroRecord, what == cRecording);
  }
  static void End(Closing how) {
    switch (how) {
      case cTab:
        return IdeDriver::Press(Qt::Key_F4, Qt::ControlModifier);
      case cAllTabs:
        EXPECT_TRUE(Tabs().CloseAll());
        return;
      case cProject:
        EXPECT_TRUE(theFileActs.CloseProject());
        return;
      case cWindow:
        return theMainForm->Close();
    }
  }
};

TEST_P(IdeClosing, AsksAboutTheTextAndIsClean) {
  const auto [what, how] = GetParam();
  ide.Run({ide.Project({{"main.cpp", std::string(cMain) + "\n}\n"}})}, [&] {
    Begin(what);
    ide.dialogs.answers = {mavro::Answer::cNo};
    End(how);
    EXPECT_THAT(ide.dialogs.texts, ElementsAre(HasSubstr("was modified!\tSave?")));
    if (how == cWindow) return;
    QTest::qWait(0);
    EXPECT_EQ(Tabs().TabCount(), 0);
    Open("next.cpp", "");  // what was open has not outlived its editor
    Type("y");
    EXPECT_EQ(Front().GetText(), "y");
    EXPECT_FALSE(Front().inMacroRecord);
    EXPECT_TRUE(Tabs().CloseTab(0, EditTabs::Unsaved::cDrop));
  });
}

std::string NameOfClosing(const testing::TestParamInfo<std::tuple<Open, Closing>>& info) {
  static const char* const cOpen[] = {"Nothing", "List", "Tip", "Recording"};
  static const char* const cClosing[] = {"Tab", "AllTabs", "Project", "Window"};
  return std::string(cOpen[std::get<0>(info.param)]) + "IsOpen_" +
         cClosing[std::get<1>(info.param)] + "Closes";
}

INSTANTIATE_TEST_SUITE_P(Each, IdeClosing,
                         testing::Combine(testing::Values(cNothing, cList, cTip, cRecording),
                                          testing::Values(cTab, cAllTabs, cProject, cWindow)),
                         NameOfClosing);

TEST_F(IdeFaults, AnotherTabComesToTheFront_WhileAListIsOpen_ClosesIt) {
  ide.Run({ide.Project({{"main.cpp", std::string(cMain) + "\n}\n"}})}, [&] {
    CppEditor& other = Open("other.cpp", "");
    CppEditor& main = *Tabs().OpenFile(ide.files.Path("main.cpp"));
    main.Select(sizeof cMain - 1, sizeof cMain - 1);
    Type("Shape s; s.");
    EXPECT_TRUE(main.Send(mavro::SCI_AUTOCACTIVE));
    Tabs().Activate(other.fileName, true);
    EXPECT_TRUE(test::WaitFor([&main] { return !main.Send(mavro::SCI_AUTOCACTIVE); }));
    Type("y");
    EXPECT_EQ(other.GetText(), "y");
  });
}

// --- Many tabs.

long ResidentPages() {
  long pages = 0, resident = 0;
  std::ifstream("/proc/self/statm") >> pages >> resident;
  return resident;
}

// Nothing reaches a disk for good: that takes long and is not what these ask.
class ManyTabs : public IdeFaults {
 protected:
  ManyTabs() : saved(mavro::TheFileCalls()) {
    mavro::TheFileCalls().fsync = [](int) { return 0; };
  }
  ~ManyTabs() override { mavro::TheFileCalls() = saved; }

  static constexpr int cCount = 200;
  std::string NameOf(int i) const { return ide.files.Path(std::to_string(i) + ".cpp"); }

  // Opens all, comes back to each and types into it, closes all.
  void OpenTypeAndClose() {
    for (int i = 0; i < cCount; ++i) Open(std::to_string(i) + ".cpp", "int a;\n");
    EXPECT_EQ(Tabs().TabCount(), cCount);
    for (int i = 0; i < cCount; ++i) {
      Tabs().Activate(NameOf(i), true);
      Type("x");
      EXPECT_EQ(Front().fileName, NameOf(i));
    }
    EXPECT_THAT(IdeDriver::Captions(), Each(testing::EndsWith("*")));
    Tabs().SaveAll();
    for (int i = 0; i < cCount; ++i)
      EXPECT_EQ(ide.files.Read(std::to_string(i) + ".cpp"), "xint a;\n");
    EXPECT_TRUE(Tabs().CloseAll());
    EXPECT_EQ(Tabs().TabCount(), 0);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }

  mavro::FileCalls saved;
};

TEST_F(ManyTabs, OpenTypeAndClose_LeavesNothingBehind) {
  ide.Run({}, [&] {
    OpenTypeAndClose();
    const auto widgets = QApplication::allWidgets().size();
    const long pages = ResidentPages();
    OpenTypeAndClose();
    EXPECT_EQ(QApplication::allWidgets().size(), widgets);
    const long grown = (ResidentPages() - pages) * sysconf(_SC_PAGESIZE) / cCount;
#ifndef __SANITIZE_ADDRESS__  // which keeps what is freed
    EXPECT_LT(grown, 20'000) << "bytes a tab are not given back";
#endif
    RecordProperty("BytesKeptOfATab", static_cast<int>(grown));
  });
}

TEST_F(ManyTabs, WindowClosesWithAllOpen_AndTheSessionOpensThemAgain) {
  const std::string project = ide.Project({{"0.cpp", ""}});
  ide.Run({project}, [&] {
    for (int i = 0; i < cCount; ++i) Open(std::to_string(i) + ".cpp", "int a;\n");
    theMainForm->Close();
  });
  ide.Run({project}, [&] { EXPECT_EQ(Tabs().TabCount(), cCount); });
}

}  // namespace
}  // namespace zendry
