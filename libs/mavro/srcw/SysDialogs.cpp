#include "SysDialogs.h"

#include "Assert.h"
#include "Graphics.h"
#include "SystemDialogs.h"

namespace mavro {

FileDialog::FileDialog(std::string itsFilter, int itsMode)
    : mode(itsMode), filter(std::move(itsFilter)) {
  MAVRO_ASSERT(mode == cOpen || mode == cSave);
}

bool FileDialog::Run() {
  MAVRO_ASSERT(mode == cOpen || mode == cSave);
  FileQuestion question;
  question.mode = mode == cSave ? FileQuestion::cSave : FileQuestion::cOpen;
  question.title = title;
  question.folder = folder;
  question.name = fileName;
  question.filter = filter;
  question.defaultExtension = defaultExtension;
  question.multiple = multiple && mode == cOpen;
  std::vector<std::string> chosen = Dialogs().chooseFiles(question);
  if (chosen.empty()) return false;
  files = std::move(chosen);
  fileName = files.front();
  return true;
}

DirectoryDialog::DirectoryDialog(std::string itsTitle, std::string itsFolder)
    : title(std::move(itsTitle)), folder(std::move(itsFolder)) {}

bool DirectoryDialog::Run() {
  const std::string chosen = Dialogs().chooseFolder(title, folder);
  if (chosen.empty()) return false;
  folder = chosen;
  return true;
}

ColorDialog::ColorDialog(Color itsColor) : color(itsColor) {}

bool ColorDialog::Run() {
  Color chosen = ToPlain(color);
  if (!Dialogs().chooseColor(title, chosen)) return false;
  color = chosen;
  return true;
}

}  // namespace mavro
