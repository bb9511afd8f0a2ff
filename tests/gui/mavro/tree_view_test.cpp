#include "TreeView.h"

#include <gtest/gtest.h>

#include <QScrollBar>
#include <QTreeView>

#include "Application.h"
#include "Form.h"
#include "GuiDriver.h"

namespace mavro {
namespace {

// A form filled by a tree with two folders of two files each, that writes down the tree's events.
struct TreeForm : Form {
  std::unique_ptr<TreeView> tree = std::make_unique<TreeView>();
  TreeNode *src = nullptr, *inc = nullptr;
  std::string log;

  TreeForm() {
    SetBounds(0, 0, 300, 240);
    tree->dock = Dock::cFill;
    Add(tree.get());
    src = tree->AddNode(nullptr, "src", 0);
    tree->AddNode(src, "a.cpp", 11);
    tree->AddNode(src, "b.cpp", 12);
    inc = tree->AddNode(nullptr, "inc", 0);
    tree->AddNode(inc, "a.h", 21);
    tree->onChoose.Add_H(this, &TreeForm::Chosen);
    tree->onExpand.Add_H(this, &TreeForm::Expanded);
    tree->onChangeSel.Add_H(this, &TreeForm::Selected);
  }
  void Chosen(TreeArgs& args) { log += "choose " + args.node->text + "; "; }
  void Expanded(TreeArgs& args) { log += "expand " + args.node->text + "; "; }
  void Selected(NotifyArgs&) {
    log += "select " + (tree->Selected() ? tree->Selected()->text : "none") + "; ";
  }
  QTreeView* Widget() { return static_cast<QTreeView*>(test::WidgetOf(*tree)); }

  // The place of a shown node in the tree's widget.
  QPoint PlaceOf(const std::string& label) {
    QModelIndex at = Widget()->model()->index(0, 0);
    while (at.isValid() && at.data().toString().toStdString() != label)
      at = Widget()->indexBelow(at);
    if (!at.isValid()) return QPoint(-1, -1);
    const QPoint inViewport = Widget()->visualRect(at).topLeft() + QPoint(12, 6);
    return Widget()->viewport()->mapTo(Widget(), inViewport);
  }
  bool IsShown(const std::string& label) { return PlaceOf(label).x() >= 0; }
  void DoubleClick(const std::string& label) {
    test::Click(*tree, PlaceOf(label));
    QTest::mouseDClick(test::WidgetOf(*this)->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                       Widget()->mapTo(test::WidgetOf(*this), PlaceOf(label)));
  }
};

TEST(TreeView, AddNode_BeforeTheWindow_IsShownWithIt) {
  TreeForm form;
  form.tree->Expand(form.src);
  test::RunForm(form, false, [&] {
    EXPECT_TRUE(form.IsShown("b.cpp"));
    EXPECT_TRUE(form.IsShown("inc"));
    EXPECT_FALSE(form.IsShown("a.h"));
  });
  EXPECT_EQ(form.log, "");
}

TEST(TreeView, AddNode_InARunningTree_IsShownAtOnce) {
  TreeForm form;
  test::RunForm(form, false, [&] {
    form.tree->Expand(form.inc);
    form.tree->AddNode(form.inc, "b.h", 22);
    form.tree->AddNode(nullptr, "res", 0);
    EXPECT_TRUE(form.IsShown("b.h"));
    EXPECT_TRUE(form.IsShown("res"));
  });
}

TEST(TreeView, Expand_NodeWithoutChildren_ShowsThemWhenTheyCome) {
  TreeForm form;
  test::RunForm(form, false, [&] {
    TreeNode* res = form.tree->AddNode(nullptr, "res", 0);
    form.tree->Expand(res);
    form.tree->AddNode(res, "app.rc", 31);
    form.tree->AddNode(res, "two.rc", 32);
    EXPECT_TRUE(form.IsShown("app.rc"));
    EXPECT_TRUE(form.IsShown("two.rc"));
  });
  EXPECT_EQ(form.log, "");
}

TEST(TreeView, InsertNode_AtAPlace_StandsThereAndFindsItsRow) {
  TreeForm form;
  test::RunForm(form, false, [&] {
    form.tree->Expand(form.src);
    form.tree->InsertNode(form.src, 1, "aa.cpp", 13);
    EXPECT_EQ(form.src->children[1]->text, "aa.cpp");
    EXPECT_EQ(form.src->children[2]->row, 2);
    EXPECT_LT(form.PlaceOf("a.cpp").y(), form.PlaceOf("aa.cpp").y());
    EXPECT_LT(form.PlaceOf("aa.cpp").y(), form.PlaceOf("b.cpp").y());
  });
}

TEST(TreeView, InsertNodes_InTheMiddle_AreShownInTheirOrder) {
  TreeForm form;
  form.tree->Expand(form.src);
  test::RunForm(form, false, [&] {
    form.tree->InsertNodes(form.src, 1, {{"x", 31}, {"y", 32}});
    form.tree->InsertNodes(form.src, 0, {});
    std::string shown;
    for (const auto& node : form.src->children)
      shown += node->text + std::to_string(node->row) + " ";
    EXPECT_EQ(shown, "a.cpp0 x1 y2 b.cpp3 ");
    EXPECT_TRUE(form.IsShown("y"));
    EXPECT_EQ(form.tree->FindData(32)->text, "y");
    form.tree->RemoveNode(form.tree->FindChild(form.src, "x"));
    EXPECT_EQ(form.tree->FindData(31), nullptr);
  });
}

TEST(TreeView, FindData_OfANodeThatWentBeforeTheFirstSearch_FindsNothing) {
  TreeForm form;
  form.tree->RemoveNode(form.src->children.front().get());
  form.tree->RemoveNode(form.inc);
  form.tree->AddNode(form.src, "c.cpp", 13);
  EXPECT_EQ(form.tree->FindData(11), nullptr);
  EXPECT_EQ(form.tree->FindData(21), nullptr);
  EXPECT_EQ(form.tree->FindData(12)->text, "b.cpp");
  EXPECT_EQ(form.tree->FindData(13)->text, "c.cpp");
}

TEST(TreeView, NodesAboveTheShownPart_ComeAndGo_TheShownPartStays) {
  TreeForm form;
  std::vector<TreeRow> rows;
  for (int i = 0; i < 200; ++i) rows.push_back({"n" + std::to_string(i), 100 + i});
  form.tree->InsertNodes(form.src, -1, std::move(rows));
  form.tree->Expand(form.src);
  test::RunForm(form, false, [&] {
    form.tree->Select(form.tree->FindData(220));
    QScrollBar& bar = *form.Widget()->verticalScrollBar();
    bar.setValue(bar.maximum() / 2 + 3);
    const auto topText = [&] { return form.Widget()->indexAt(QPoint(0, 0)).data().toString(); };
    const QString top = topText();
    const int place = form.Widget()->visualRect(form.Widget()->indexAt(QPoint(0, 0))).top();
    const auto expectSame = [&] {
      form.Widget()->viewport()->repaint();
      EXPECT_EQ(topText(), top);
      EXPECT_EQ(form.Widget()->visualRect(form.Widget()->indexAt(QPoint(0, 0))).top(), place);
    };
    form.tree->AddNode(form.inc, "below", 500);
    for (int i = 0; i < 3; ++i) form.tree->InsertNode(form.src, 0, "new", 400 + i);
    expectSame();
    for (int i = 0; i < 3; ++i) form.tree->RemoveNode(form.tree->FindData(400 + i));
    form.tree->RemoveNode(form.tree->FindData(11));
    expectSame();
    EXPECT_EQ(form.tree->Selected()->data, 220);
  });
}

TEST(TreeView, KeyRightAfterNodesCame_IsNotLost) {
  TreeForm form;
  test::RunForm(form, false, [&] {
    form.tree->Focus();
    for (int i = 0; i < 5; ++i) {
      TreeNode* folder = form.tree->AddNode(nullptr, "f", 0);
      form.tree->AddNode(folder, "a much longer text", 100 + i);
      form.tree->Select(folder);
      test::Key(form, Qt::Key_Right);
      test::Key(form, Qt::Key_Down);
      ASSERT_NE(form.tree->Selected(), nullptr) << i;
      EXPECT_EQ(form.tree->Selected()->data, 100 + i);
    }
  });
}

TEST(TreeView, Click_SelectsAndTells) {
  TreeForm form;
  test::RunForm(form, false, [&] {
    test::Click(*form.tree, form.PlaceOf("inc"));
    EXPECT_EQ(form.tree->Selected(), form.inc);
  });
  EXPECT_EQ(form.log, "select inc; ");
}

TEST(TreeView, RightClick_SelectsTheNodeUnderIt) {
  TreeForm form;
  test::RunForm(form, false, [&] {
    test::Click(*form.tree, form.PlaceOf("inc"), Qt::RightButton);
    EXPECT_EQ(form.tree->Selected(), form.inc);
  });
}

TEST(TreeView, Select_ByTheProgram_SendsNoEvent) {
  TreeForm form;
  form.tree->Select(form.src);
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.Widget()->selectionModel()->selectedIndexes().value(0).data().toString(), "src");
    form.tree->Select(form.inc);
    EXPECT_EQ(form.Widget()->selectionModel()->selectedIndexes().value(0).data().toString(), "inc");
    form.tree->Select(nullptr);
    EXPECT_FALSE(form.Widget()->selectionModel()->hasSelection());
  });
  EXPECT_EQ(form.log, "");
}

TEST(TreeView, DoubleClickAndEnter_Choose) {
  TreeForm form;
  form.tree->Expand(form.src);
  test::RunForm(form, false, [&] {
    form.DoubleClick("b.cpp");
    EXPECT_EQ(form.log, "select b.cpp; choose b.cpp; ");
    form.log.clear();
    form.tree->Focus();
    test::Key(form, Qt::Key_Up);
    test::Key(form, Qt::Key_Return);
    EXPECT_EQ(form.log, "select a.cpp; choose a.cpp; ");
  });
}

TEST(TreeView, Enter_WithNothingSelected_ChoosesNothing) {
  TreeForm form;
  test::RunForm(form, false, [&] {
    form.tree->Focus();
    test::Key(form, Qt::Key_Return);
  });
  EXPECT_EQ(form.log, "");
}

TEST(TreeView, DoubleClickOnAFolder_ExpandsAndChooses) {
  TreeForm form;
  test::RunForm(form, false, [&] {
    form.DoubleClick("src");
    EXPECT_EQ(form.log, "select src; expand src; choose src; ");
    EXPECT_TRUE(form.src->expanded);
    form.DoubleClick("src");
    EXPECT_FALSE(form.src->expanded);
  });
}

TEST(TreeView, KeysExpandAndCollapse) {
  TreeForm form;
  test::RunForm(form, false, [&] {
    form.tree->Select(form.src);
    form.tree->Focus();
    test::Key(form, Qt::Key_Right);
    EXPECT_EQ(form.log, "expand src; ");
    EXPECT_TRUE(form.IsShown("a.cpp"));
    test::Key(form, Qt::Key_Left);
    EXPECT_FALSE(form.src->expanded);
  });
}

TEST(TreeView, Keys_ReachOnKeyDown) {
  struct KeyForm : TreeForm {
    int key = 0;
    KeyForm() { tree->onKeyDown.Add_H(this, &KeyForm::KeyDown); }
    void KeyDown(KeyArgs& args) { key = args.key; }
  } form;
  test::RunForm(form, false, [&] {
    form.tree->Focus();
    test::Key(form, Qt::Key_Delete);
  });
  EXPECT_EQ(form.key, 0x2E);
}

TEST(TreeView, RemoveNode_Selected_SelectionMovesOn) {
  TreeForm form;
  form.tree->Expand(form.src);
  test::RunForm(form, false, [&] {
    form.tree->Select(form.src->children[0].get());
    form.tree->RemoveNode(form.src->children[0].get());
    EXPECT_FALSE(form.IsShown("a.cpp"));
    ASSERT_NE(form.tree->Selected(), nullptr);
    EXPECT_EQ(form.tree->Selected()->text, "b.cpp");
  });
  EXPECT_EQ(form.log, "");
}

TEST(TreeView, RemoveNode_ParentOfSelected_LeavesNoDanglingSelection) {
  TreeForm form;
  form.tree->Select(form.src->children[0].get());
  form.tree->RemoveNode(form.src);
  EXPECT_EQ(form.tree->Selected(), nullptr);
  EXPECT_EQ(form.tree->FindData(11), nullptr);
  EXPECT_EQ(form.inc->row, 0);
}

TEST(TreeView, Clear_InARunningTree_EmptiesIt) {
  TreeForm form;
  test::RunForm(form, false, [&] {
    form.tree->Select(form.inc);
    form.tree->Clear();
    EXPECT_EQ(form.tree->Selected(), nullptr);
    EXPECT_EQ(form.Widget()->model()->rowCount(), 0);
    EXPECT_EQ(form.tree->FindData(21), nullptr);
    form.tree->AddNode(nullptr, "again", 1);
    EXPECT_TRUE(form.IsShown("again"));
  });
  EXPECT_EQ(form.log, "");
}

TEST(TreeView, FindChild_AnswersTheFirstWithTheText) {
  TreeForm form;
  TreeNode* later = form.tree->AddNode(form.src, "twin", 41);
  EXPECT_EQ(form.tree->FindChild(form.src, "twin"), later);
  TreeNode* first = form.tree->InsertNode(form.src, 0, "twin", 42);
  EXPECT_EQ(form.tree->FindChild(form.src, "twin"), first);
  EXPECT_EQ(form.tree->FindChild(form.inc, "twin"), nullptr);
  EXPECT_EQ(form.tree->FindChild(nullptr, "src"), form.src);
  EXPECT_EQ(form.tree->FindChild(nullptr, "a.cpp"), nullptr);
}

TEST(TreeView, FindData_SeveralWithIt_AnswersTheOneAddedFirst) {
  TreeForm form;
  EXPECT_EQ(form.tree->FindData(0), form.src);
  form.tree->RemoveNode(form.src);
  EXPECT_EQ(form.tree->FindData(0), form.inc);
}

TEST(TreeView, FindData_AfterEachAddition_AnswersTheNewNode) {
  TreeForm form;
  EXPECT_EQ(form.tree->FindData(31), nullptr);
  TreeNode* first = form.tree->AddNode(form.src, "first", 31);
  EXPECT_EQ(form.tree->FindData(31), first);
  TreeNode* second = form.tree->AddNode(form.src, "second", 32);
  EXPECT_EQ(form.tree->FindData(32), second);
  EXPECT_EQ(form.tree->FindChild(form.src, "first"), first);
}

TEST(TreeView, FindData_RemovedBeforeAnySearch_IsNotFound) {
  TreeForm form;
  TreeNode* gone = form.tree->AddNode(form.src, "gone", 31);
  form.tree->AddNode(gone, "below", 32);
  form.tree->RemoveNode(gone);
  EXPECT_EQ(form.tree->FindData(31), nullptr);
  EXPECT_EQ(form.tree->FindData(32), nullptr);
  EXPECT_EQ(form.tree->FindChild(form.src, "gone"), nullptr);
}

TEST(TreeView, FindData_ClearedBeforeAnySearch_FindsOnlyWhatCameAfter) {
  TreeForm form;
  form.tree->Clear();
  TreeNode* added = form.tree->AddNode(nullptr, "src", 11);
  EXPECT_EQ(form.tree->FindData(11), added);
  EXPECT_EQ(form.tree->FindChild(nullptr, "inc"), nullptr);
}

TEST(TreeView, SetNodeText_ChangesWhatIsShownAndFound) {
  TreeForm form;
  test::RunForm(form, false, [&] {
    form.tree->SetNodeText(form.src, "source");
    EXPECT_TRUE(form.IsShown("source"));
    EXPECT_EQ(form.tree->FindChild(nullptr, "source"), form.src);
    EXPECT_EQ(form.tree->FindChild(nullptr, "src"), nullptr);
    form.tree->SetNodeData(form.src, 99);
    EXPECT_EQ(form.tree->FindData(99), form.src);
    EXPECT_EQ(form.tree->FindData(0), form.inc);
  });
}

TEST(TreeView, Text_OddBytes_KeepTheirPlaceInTheTree) {
  TreeForm form;
  const std::string odd = "caf\xE9.cpp";
  TreeNode* node = form.tree->AddNode(nullptr, odd, 51);
  test::RunForm(form, false, [&] { EXPECT_EQ(form.tree->FindChild(nullptr, odd), node); });
  EXPECT_EQ(node->text, odd);
}

TEST(TreeView, RunAgain_KeepsNodesExpandedAndSelected) {
  TreeForm form;
  test::RunForm(form, false, [&] {
    form.DoubleClick("src");
    test::Click(*form.tree, form.PlaceOf("b.cpp"));
  });
  test::RunForm(form, false, [&] {
    EXPECT_TRUE(form.IsShown("a.cpp"));
    ASSERT_NE(form.tree->Selected(), nullptr);
    EXPECT_EQ(form.tree->Selected()->text, "b.cpp");
  });
}

// Replaces the placeholder below a node when it is opened.
struct FillForm : TreeForm {
  FillForm() {
    tree->Clear();
    src = tree->AddNode(nullptr, "Shape", 1);
    tree->AddNode(src, "!!", 0);
    tree->onExpand.Add_H(this, &FillForm::Fill);
  }
  void Fill(TreeArgs& args) {
    tree->RemoveNode(args.node->children[0].get());
    tree->AddNode(args.node, "Area()", 2);
    tree->AddNode(args.node, "Draw()", 3);
  }
};

TEST(TreeView, OnExpand_HandlerReplacesTheChildren) {
  FillForm form;
  test::RunForm(form, false, [&] {
    form.DoubleClick("Shape");
    EXPECT_FALSE(form.IsShown("!!"));
    EXPECT_TRUE(form.IsShown("Area()"));
    EXPECT_TRUE(form.IsShown("Draw()"));
  });
}

// Destroys the tree in one of its own events.
struct DoomedForm : TreeForm {
  void Doom() { tree.reset(); }
  void OnTree(TreeArgs&) { Doom(); }
  void OnSelect(NotifyArgs&) { Doom(); }
  void OnKey(KeyArgs&) { Doom(); }
};

TEST(TreeView, Destroyed_InOnChoose) {
  DoomedForm form;
  form.tree->onChoose.Add_H(&form, &DoomedForm::OnTree);
  test::RunForm(form, false, [&] { form.DoubleClick("src"); });
  EXPECT_EQ(form.tree, nullptr);
}

TEST(TreeView, Destroyed_InOnExpand) {
  DoomedForm form;
  form.tree->onExpand.Add_H(&form, &DoomedForm::OnTree);
  test::RunForm(form, false, [&] { form.DoubleClick("src"); });
  EXPECT_EQ(form.tree, nullptr);
}

TEST(TreeView, Destroyed_InOnChangeSel) {
  DoomedForm form;
  form.tree->onChangeSel.Add_H(&form, &DoomedForm::OnSelect);
  test::RunForm(form, false, [&] { test::Click(*form.tree, form.PlaceOf("inc")); });
  EXPECT_EQ(form.tree, nullptr);
}

TEST(TreeView, Destroyed_InOnKeyDown) {
  DoomedForm form;
  form.tree->onKeyDown.Add_H(&form, &DoomedForm::OnKey);
  test::RunForm(form, false, [&] {
    form.tree->Focus();
    test::Key(form, Qt::Key_Down);
  });
  EXPECT_EQ(form.tree, nullptr);
}

TEST(TreeView, Cleared_InOnChangeSel) {
  struct ClearForm : TreeForm {
    ClearForm() { tree->onChangeSel.Add_H(this, &ClearForm::ClearIt); }
    void ClearIt(NotifyArgs&) { tree->Clear(); }
  } form;
  test::RunForm(form, false, [&] {
    test::Click(*form.tree, form.PlaceOf("inc"));
    EXPECT_EQ(form.tree->Selected(), nullptr);
  });
}

TEST(TreeView, AddNode_FiveThousandUnderOneFolder_AllFound) {
  TreeForm form;
  test::RunForm(form, false, [&] {
    for (int i = 0; i < 5000; ++i) {
      const std::string name = "file" + std::to_string(i) + ".cpp";
      EXPECT_EQ(form.tree->FindChild(form.inc, name), nullptr);
      form.tree->AddNode(form.inc, name, 1000 + i);
      form.tree->Expand(form.inc);
    }
    EXPECT_EQ(form.tree->FindData(5999)->row, 5000);
    EXPECT_TRUE(form.IsShown("file0.cpp"));
  });
}

TEST(TreeViewDeathTest, InsertNode_AfterTheEnd) {
  TreeForm form;
  EXPECT_DEATH(form.tree->InsertNode(form.inc, 2, "x", 1), "at <= static_cast<int>");
}

// Adds a child to the first node that is expanded, and none to any other.
struct GrowingForm : TreeForm {
  TreeNode *full = nullptr, *empty = nullptr;
  GrowingForm() {
    full = tree->AddNode(nullptr, "full", 31);
    empty = tree->AddNode(nullptr, "empty", 32);
    tree->SetFillsOnExpand(full);
    tree->SetFillsOnExpand(empty);
    tree->onExpand.Add_H(this, &GrowingForm::Fill);
  }
  void Fill(TreeArgs& args) {
    if (args.node == full) tree->AddNode(full, "child", 311);
  }
  void Open(const std::string& label) {
    const QPoint at = Widget()->viewport()->mapFrom(Widget(), PlaceOf(label));
    Widget()->setExpanded(Widget()->indexAt(at), true);
  }
};

TEST(TreeView, FillsOnExpand_ChildrenComeWithTheExpansion) {
  GrowingForm form;
  test::RunForm(form, false, [&] {
    form.Open("full");
    EXPECT_TRUE(form.IsShown("child"));
    EXPECT_TRUE(form.full->expanded);
    EXPECT_FALSE(form.full->fillsOnExpand);
    EXPECT_EQ(form.log, "expand full; ");
  });
}

TEST(TreeView, FillsOnExpand_NothingCame_ShowsNoneNoLonger) {
  GrowingForm form;
  test::RunForm(form, false, [&] {
    const auto hasChildren = [&] {
      const QPoint at = form.Widget()->viewport()->mapFrom(form.Widget(), form.PlaceOf("empty"));
      return form.Widget()->model()->hasChildren(form.Widget()->indexAt(at));
    };
    EXPECT_TRUE(hasChildren());
    form.Open("empty");
    EXPECT_FALSE(hasChildren());
  });
}

TEST(TreeView, FillsOnExpand_HandlerRemovesTheNode) {
  struct RemovingForm : GrowingForm {
    RemovingForm() { tree->onExpand.Add_H(this, &RemovingForm::Remove); }
    void Remove(TreeArgs& args) { tree->RemoveNode(args.node); }
  } form;
  test::RunForm(form, false, [&] {
    form.Open("full");
    EXPECT_EQ(form.tree->FindData(31), nullptr);
    EXPECT_FALSE(form.IsShown("full"));
  });
}

TEST(TreeView, ImageList_ChangedLive) {
  TreeForm form;
  form.tree->AddNode(nullptr, "pictured", 41, 1);
  test::RunForm(form, false, [&] {
    const QPoint at = form.Widget()->viewport()->mapFrom(form.Widget(), form.PlaceOf("pictured"));
    const auto picture = [&] {
      return form.Widget()->indexAt(at).data(Qt::DecorationRole).value<QIcon>();
    };
    EXPECT_TRUE(picture().isNull());
    form.tree->imageList = 1;
    EXPECT_FALSE(picture().isNull());
  });
}

}  // namespace
}  // namespace mavro
