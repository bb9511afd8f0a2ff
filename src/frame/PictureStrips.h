#pragma once

namespace zendry {

// Picture strips among the program's resources, by resource id.
enum StripId { cSmallStrip = 0x6A, cLargeToolStrip = 0x6D, cToolStrip = 0x6E, cTreeStrip = 0x6F };

// Pictures of the small tool bars.
enum SmallPicture {
  cPropertiesPicture,
  cAddPicture,
  cRemovePicture,
  cClosePicture,
  cClearPicture,
  cHidePicture
};

// Pictures of the main tool bar.
enum ToolPicture {
  cNewPicture = 0x01,
  cOpenPicture = 0x02,
  cOpenProjectPicture = 0x03,
  cSavePicture = 0x04,
  cSaveAllPicture = 0x05,
  cCutPicture = 0x06,
  cCopyPicture = 0x07,
  cPastePicture = 0x08,
  cRecordPicture = 0x09,
  cPlayPicture = 0x0A,
  cDesignerPicture = 0x0B,
  cCompilePicture = 0x0C,
  cRebuildPicture = 0x0D,
  cStopPicture = 0x0E,
  cRunPicture = 0x0F,
  cBreakpointPicture = 0x10,
  cStackPicture = 0x11,
  cCloseAllPicture = 0x12,
  cMakePicture = 0x17,
  cWatchPicture = 0x1A,
  cStepOverPicture = 0x23,
  cRedoPicture = 0x26,
  cUndoPicture = 0x27,
  cStepOutPicture = 0x2A,
  cStepIntoPicture = 0x2B,
  cFindPicture = 0x2D,
  cSidePanePicture = 0x2E
};

// Pictures of trees.
enum TreePicture {
  cFolderPicture,
  cOpenFolderPicture,
  cCppPicture,
  cCPicture,
  cHeaderPicture,
  cResourcePicture
};

}  // namespace zendry
