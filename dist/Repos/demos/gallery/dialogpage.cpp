// SPDX-License-Identifier: MIT-0
#include "dialogpage.h"

namespace {

enum DialogNumber { cInformation, cConfirm, cOpenFiles, cSaveFile, cFolder, cColor, cModal };
constexpr const char* cCaptions[] = {"Information", "Confirm", "Open files", "Save as",
                                     "Folder",      "Colour",  "Modal form"};

class QuestionForm : public Form {
 public:
  QuestionForm() {
    text = "A modal form";
    SetBounds(0, 0, 300, 130);
    resizable = false;
    label.text = "&Your name";
    label.SetBounds(16, 20, 80, 18);
    Add(&label);
    name.SetBounds(100, 16, 184, 26);
    Add(&name);
    ok.kind = Button::cOk;
    ok.SetLocation(100, 76);
    Add(&ok);
    cancel.kind = Button::cCancel;
    cancel.SetLocation(198, 76);
    Add(&cancel);
  }

 private:
  Label label;
  Edit name;
  Button ok, cancel;
};

}  // namespace

DialogPage::DialogPage(Log log) : GalleryPage("Dialogs", std::move(log)) {
  for (int i = 0; i < 7; ++i) {
    buttons[i].text = cCaptions[i];
    buttons[i].tag = i;
    buttons[i].onClick.Add_H(this, &This::Clicked);
    Place(buttons[i], 12 + i % 4 * 122, 12 + i / 4 * 44, 114, 36);
  }
  text.text =
      "{\\rtf1\\ansi{\\b Rich text} with {\\i slanted}, {\\ul underlined} and {\\b bold} "
      "words.\\par "
      "The dialogs above go through one table, so that tests can answer them.\\par}";
  Place(text, 12, 108, 490, 120);
}

void DialogPage::Clicked(NotifyArgs& args) {
  FileDialog files("C/C++ Files|*.cpp;*.h|All Files|*.*");
  DirectoryDialog folder("Choose a folder");
  ColorDialog color(Color::cOrange);
  switch (static_cast<Control*>(args.sender)->tag) {
    case cInformation:
      return Information("Something you should know.");
    case cConfirm:
      return Ask();
    case cSaveFile:
      files.mode = FileDialog::cSave;
      [[fallthrough]];
    case cOpenFiles:
      files.multiple = true;
      return Say(files.Run() ? "file: " + files.fileName : "no file");
    case cFolder:
      return Say(folder.Run() ? "folder: " + folder.folder : "no folder");
    case cColor:
      return Say(color.Run() ? "colour: " + std::to_string(color.color.Value()) : "no colour");
    default:
      return OpenModal();
  }
}

void DialogPage::Ask() {
  bool cancelled = false;
  const bool yes = Confirm("Do you like it?", &cancelled);
  Say(cancelled ? "cancelled" : yes ? "yes" : "no");
}

void DialogPage::OpenModal() {
  QuestionForm form;
  Say("modal form: " + std::to_string(form.Run(true)));
}
