#include "help/AboutDlg.h"

namespace zendry {

namespace {

constexpr char cVersionLine[] = "Version 0.1 build: " __DATE__;

constexpr char cLicences[] =
    "Zendry is free software under the GNU General Public License, version 3 or later. It comes "
    "without any warranty.\n"
    "\n"
    "What your programs are made of is freer: mavro is under the MIT licence, the demos and "
    "templates under MIT-0.\n"
    "\n"
    "It stands on the work of others:\n"
    "Qt 6, under the GNU LGPL 3\n"
    "QScintilla, under the GNU GPL 3, with Scintilla, under its own free licence\n"
    "JSON for Modern C++ and CLI11, under the MIT and BSD licences\n"
    "PCRE2, under the BSD licence\n"
    "The Tango icons, in the public domain\n"
    "\n"
    "The help indexes, in the folder Help of the installation:\n"
    "mavro.ch is made from the comments of mavro, under the MIT licence.\n"
    "clib.ch is made from the Linux man-pages, Debian's package manpages-dev. The licence of each "
    "page stands above its entry; all of them are in clib.copyright.\n"
    "stl.ch is made from the comments of GCC's libstdc++, Debian's package libstdc++-12-doc, under "
    "the GNU GPL 3 with the GCC Runtime Library Exception; they are in stl.copyright.\n";

}  // namespace

AboutDlg::AboutDlg() {
  Initialize();
  banner.picture.LoadResource("JPEG", "BANER");
  version.text = cVersionLine;
  licences.text = cLicences;
  licences.accessibleName = "Licences";
  focusControl = &okButton;
}

// The banner is drawn for scaled screens, so it is stretched.
void AboutDlg::Initialize() {
  using mavro::Button;
  // clang-format off
	//!init
	this->SetBounds(0, 0, 480, 420);
	this->text = "Zendry";
	this->resizable = false;
	//!<Image>
	banner.SetBounds(0, 0, 480, 90);
	banner.stretch = true;
	this->Add(&banner);
	//!<Label>
	name.SetBounds(14, 104, 452, 22);
	name.text = "Zendry";
	this->Add(&name);
	//!<Label>
	version.SetBounds(14, 126, 452, 22);
	this->Add(&version);
	//!<RichView>
	licences.SetBounds(14, 162, 452, 200);
	this->Add(&licences);
	//!<Button>
	okButton.SetBounds(376, 376, 90, 30);
	okButton.text = "OK";
	okButton.kind = Button::cCancel;
	this->Add(&okButton);
	//!end
  // clang-format on
}

}  // namespace zendry
