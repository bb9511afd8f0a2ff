#pragma once

#include <string>
#include <vector>

#include "Color.h"

namespace mavro {

// The standard dialogs as objects: set up, run, read. Each goes through the table of dialogs.

// Asks for files to open or for a name to save under.
class FileDialog {
 public:
  enum Mode { cOpen, cSave };
  // A filter is pairs separated by "|": description, then patterns with ";".
  explicit FileDialog(std::string itsFilter = "All Files|*.*", int itsMode = cOpen);

  // True if something was chosen; `fileName` and `files` then hold it, else they are as before.
  bool Run();

  int mode;
  bool multiple = false;         // more than one file can be chosen for opening
  std::string folder;            // where it starts; empty for the current folder
  std::string fileName;          // suggested, then chosen: the first one's absolute path
  std::string title;             // empty for the dialog's own
  std::string filter;            // of what is shown
  std::string defaultExtension;  // appended to a name without one when saving; no dot
  std::vector<std::string> files;
};

// Asks for a folder.
class DirectoryDialog {
 public:
  explicit DirectoryDialog(std::string itsTitle = "", std::string itsFolder = "");

  // True if one was chosen; `folder` then holds it, without a trailing slash.
  bool Run();

  std::string title;
  std::string folder;  // where it starts, then the one chosen
};

// Asks for a colour.
class ColorDialog {
 public:
  explicit ColorDialog(Color itsColor = Color::cBlack);

  // True if one was chosen; `color` then holds it.
  bool Run();

  std::string title;
  Color color;  // the one to start from, then the one chosen
};

}  // namespace mavro
