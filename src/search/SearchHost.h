#pragma once

namespace zendry {

class EditTabs;
class FrameShell;
class ReferenceList;
class ReplaceUndo;

// The window as searches in files see it. The frame implements it.
class SearchHost {
 public:
  virtual ~SearchHost() = default;
  virtual EditTabs& Tabs() = 0;
  virtual FrameShell& Frame() = 0;
  // The list that takes the results; and brings it to the front.
  virtual ReferenceList& Results() = 0;
  virtual void ShowResults() = 0;
  virtual ReplaceUndo& Undo() = 0;
  // Rows or journals have come or gone: commands may be able to act now.
  virtual void ResultsChanged() = 0;
};

}  // namespace zendry
