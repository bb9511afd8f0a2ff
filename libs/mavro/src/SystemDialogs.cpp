#include "SystemDialogs.h"

#include <cstdio>

namespace mavro {

namespace {

constexpr int cButtonMask = 0x0F;  // the other flags set the icon

Answer PrintMessage(const std::string& text, const std::string& title, int flags) {
  std::fprintf(stderr, "%s: %s\n", title.c_str(), text.c_str());
  switch (flags & cButtonMask) {
    case cYesNoCancel:
      return Answer::cCancel;
    case cYesNo:
      return Answer::cNo;
    default:
      return Answer::cOk;
  }
}

std::vector<std::string> ChooseNoFiles(const FileQuestion&) {
  return {};
}

std::string ChooseNoFolder(const std::string&, const std::string&) {
  return {};
}

void StaySilent() {}

bool ChooseNoColor(const std::string&, Color&) {
  return false;
}

}  // namespace

DialogTable& Dialogs() {
  static DialogTable table = {PrintMessage, ChooseNoFiles, ChooseNoFolder, StaySilent,
                              ChooseNoColor};
  return table;
}

void Information(const std::string& text) {
  Dialogs().message(text, "Information", cOkOnly);
}

bool Confirm(const std::string& text, bool* cancelled) {
  const Answer answer = Dialogs().message(text, "Confirmation", cancelled ? cYesNoCancel : cYesNo);
  if (cancelled) *cancelled = answer == Answer::cCancel;
  return answer == Answer::cYes;
}

bool ConfirmLoss(const std::string& text) {
  return Dialogs().message(text, "Confirmation", cYesNo | cDefaultNo) == Answer::cYes;
}

void Beep() {
  Dialogs().beep();
}

}  // namespace mavro
