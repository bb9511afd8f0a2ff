#pragma once

namespace mavro {

// The stock icons, by their places in the framework's strip. For `icon` of buttons and the pictures
// of tool bars.
struct Icons {
  enum Number : int {
    cNone,
    icoNew,
    icoOpen,
    icoOpenPrj,
    icoSave,
    icoSaveAll,
    icoCut,
    icoCopy,
    icoPaste,
    icoRedBall,
    icoGo,
    icoDesign,
    icoClear,
    icoBuild,
    icoNo,
    icoRun,
    icoPoint,
    icoIndex,
    icoCloseAll,
    icoStar,
    icoOk,
    icoCancel,
    icoColor,
    icoConvert,
    icoHome,
    icoEdit,
    icoFind,
    icoSetup,
    icoPrint,
    icoRetry,
    icoAdd,
    icoRemove,
    icoPicker,
    icoReplace,
    icoInfo,
    icoForward,
    icoBack,
    icoGreenBall,
    icoRedo,
    icoUndo,
    icoNet,
    icoQuit,
    icoUp,
    icoDown
  };
  // Resource id of the strip they stand in.
  static constexpr int cStrip = 1;
};

}  // namespace mavro
