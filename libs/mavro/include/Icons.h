#pragma once

namespace mavro {

// The stock icons, by their index in the framework's strip. For `icon` of buttons and for the
// pictures of tool bars.
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
  // The resource id of the strip that contains them.
  static constexpr int cStrip = 1;
};

}  // namespace mavro
