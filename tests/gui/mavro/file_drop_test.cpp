#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Edit.h"
#include "FileDrop.h"
#include "Form.h"

// Files dropped on a form.

namespace mavro {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// A form with a line to type in, whose text a file manager's drop would change.
struct DropForm : Form {
  Edit edit;
  std::vector<std::string> paths;
  int drops = 0;

  DropForm() {
    SetBounds(0, 0, 300, 200);
    acceptFiles = true;
    edit.SetBounds(10, 10, 200, 24);
    Add(&edit);
    onDropFiles.Add_H(this, &DropForm::Dropped);
  }
  void Dropped(FilesArgs& args) {
    EXPECT_EQ(args.sender, this);
    paths = args.paths;
    ++drops;
  }
  bool Received() {
    return test::WaitFor([this] { return drops > 0; });
  }
};

TEST(FileDrop, OnTheForm_IsSentOnce_WithThePathsInOrder) {
  DropForm form;
  test::RunForm(form, false, [&] {
    EXPECT_TRUE(test::FileDrag({"/b c.cpp", "/a.cpp"}).Drop(form));
    EXPECT_TRUE(form.Received());
    QTest::qWait(5);
  });
  EXPECT_THAT(form.paths, ElementsAre("/b c.cpp", "/a.cpp"));
  EXPECT_EQ(form.drops, 1);
}

TEST(FileDrop, OnAControlThatTakesText_IsTheForms) {
  DropForm form;
  test::RunForm(form, false, [&] {
    EXPECT_TRUE(test::FileDrag({"/a.cpp"}).Drop(form.edit));
    EXPECT_TRUE(form.Received());
    EXPECT_EQ(form.edit.text.Get(), "");
  });
}

TEST(FileDrop, Told_AfterTheDropOnly) {
  DropForm form;
  test::RunForm(form, false, [&] {
    test::FileDrag({"/a.cpp"}).Drop(form);
    EXPECT_EQ(form.drops, 0);
    EXPECT_TRUE(form.Received());
  });
}

TEST(FileDrop, OddBytes_ComeAsTheyAre) {
  DropForm form;
  test::RunForm(form, false, [&] {
    test::FileDrag({"/caf\xE9\n.cpp"}).Drop(form);
    EXPECT_TRUE(form.Received());
  });
  EXPECT_THAT(form.paths, ElementsAre("/caf\xE9\n.cpp"));
}

TEST(FileDrop, RemoteFiles_AreLeftOut) {
  DropForm form;
  test::RunForm(form, false, [&] {
    test::Drag drag;
    drag.data->setUrls({QUrl("https://example.org/a.cpp"), QUrl("file:///here.cpp")});
    drag.Drop(form);
    EXPECT_TRUE(form.Received());
  });
  EXPECT_THAT(form.paths, ElementsAre("/here.cpp"));
}

TEST(FileDrop, RemoteFilesOnly_AreNotTaken) {
  DropForm form;
  test::RunForm(form, false, [&] {
    test::Drag drag;
    drag.data->setUrls({QUrl("https://example.org/a.cpp")});
    EXPECT_FALSE(drag.Drop(form));
  });
  EXPECT_EQ(form.drops, 0);
}

TEST(FileDrop, Text_GoesToTheControlBelow) {
  DropForm form;
  test::RunForm(form, false, [&] {
    EXPECT_FALSE(test::TextDrag("word").Drop(form));
    EXPECT_TRUE(test::TextDrag("word").Drop(form.edit));
    EXPECT_EQ(form.edit.text.Get(), "word");
  });
  EXPECT_EQ(form.drops, 0);
}

TEST(FileDrop, IsOfferedAsACopy_SoThatTheFilesStay) {
  DropForm form;
  test::RunForm(form, false, [&] {
    test::Drag drag = test::FileDrag({"/a.cpp"});
    EXPECT_TRUE(drag.Drop(form));
    EXPECT_EQ(drag.told, Qt::CopyAction);
    drag.possible = Qt::MoveAction | Qt::LinkAction;
    EXPECT_TRUE(drag.Drop(form));
    EXPECT_EQ(drag.told, Qt::LinkAction);
    drag.possible = Qt::MoveAction;
    EXPECT_FALSE(drag.Drop(form));
  });
}

TEST(FileDrop, FormThatDoesNotAccept_IsNotReported) {
  DropForm form;
  form.acceptFiles = false;
  test::RunForm(form, false, [&] {
    EXPECT_FALSE(test::FileDrag({"/a.cpp"}).Drop(form));
    EXPECT_TRUE(test::FileDrag({"/a.cpp"}).Drop(form.edit));
    EXPECT_EQ(form.edit.text.Get(), "/a.cpp\n");
  });
  EXPECT_EQ(form.drops, 0);
}

TEST(FileDrop, BehindAModalForm_IsNotTaken) {
  DropForm form;
  test::RunForm(form, false, [&] {
    Form modal;
    test::RunForm(modal, true, [&] { EXPECT_FALSE(test::FileDrag({"/a.cpp"}).Drop(form)); });
    EXPECT_TRUE(test::FileDrag({"/b.cpp"}).Drop(form));
    EXPECT_TRUE(form.Received());
  });
  EXPECT_THAT(form.paths, ElementsAre("/b.cpp"));
}

TEST(FileDrop, FormClosedByTheHandler_OrBeforeIt_IsClean) {
  struct ClosingForm : DropForm {
    ClosingForm() { onDropFiles.Add_H(static_cast<DropForm*>(this), &DropForm::Dropped); }
    void CloseIt(FilesArgs&) { Close(); }
  } first, second;
  first.onDropFiles.Add_H(&first, &ClosingForm::CloseIt);
  test::RunForm(first, false, [&] {
    test::FileDrag({"/a.cpp"}).Drop(first);
    EXPECT_TRUE(test::WaitFor([&] { return first.state == cNoWindow; }));
  });
  test::RunForm(second, false, [&] {
    test::FileDrag({"/a.cpp"}).Drop(second);
    second.Close();
    QTest::qWait(5);
  });
  EXPECT_EQ(second.drops, 0);
}

TEST(FileDrop, RunAgain_TakesFilesAgain) {
  DropForm form;
  test::RunForm(form, false, [] {});
  test::RunForm(form, false, [&] {
    EXPECT_TRUE(test::FileDrag({"/a.cpp"}).Drop(form));
    EXPECT_TRUE(form.Received());
  });
  EXPECT_EQ(form.drops, 1);
}

}  // namespace
}  // namespace mavro
