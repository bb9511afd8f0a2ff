#pragma once

#include <string>
#include <vector>

#include "Color.h"

namespace mavro {

// The standard dialogs as objects: set the members, call Run, read the members. All of them use the
// table of dialogs.

// Asks for files to open or for a name to save under.
class FileDialog {
 public:
  enum Mode { cOpen, cSave };
  // A filter is pairs separated by "|": description, then patterns with ";".
  explicit FileDialog(std::string itsFilter = "All Files|*.*", int itsMode = cOpen);

  // True if something was chosen; `fileName` and `files` then contain it, else they are unchanged.
  bool Run();

  int mode;
  bool multiple = false;         // several files can be chosen for opening
  std::string folder;            // the first folder; empty for the current one
  std::string fileName;          // suggested, then chosen: the first one's absolute path
  std::string title;             // empty for the dialog's own
  std::string filter;            // of the files shown
  std::string defaultExtension;  // appended to a name without one when saving; no dot
  std::vector<std::string> files;
};

// Asks for a folder.
class DirectoryDialog {
 public:
  explicit DirectoryDialog(std::string itsTitle = "", std::string itsFolder = "");

  // True if one was chosen; `folder` then contains it, without a trailing slash.
  bool Run();

  std::string title;
  std::string folder;  // the first folder, then the chosen one
};

// Asks for a colour.
class ColorDialog {
 public:
  explicit ColorDialog(Color itsColor = Color::cBlack);

  // True if one was chosen; `color` then contains it.
  bool Run();

  std::string title;
  Color color;  // the first colour, then the chosen one
};

}  // namespace mavro
