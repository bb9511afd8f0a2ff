#include "help/AboutDlg.h"

namespace zendry {

namespace {

constexpr int cWidth = 480;
constexpr int cBannerHeight = 90;
constexpr int cMargin = 14;
constexpr int cLineHeight = 22;
constexpr int cLicencesHeight = 200;
constexpr int cButtonWidth = 90;
constexpr int cButtonHeight = 30;

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
  text = "Zendry";
  resizable = false;
  int top = 0;
  banner.picture.LoadResource("JPEG", "BANER");
  banner.stretch = true;  // it is drawn for scaled screens
  banner.SetBounds(0, top, cWidth, cBannerHeight);
  top += cBannerHeight + cMargin;
  const int width = cWidth - 2 * cMargin;
  name.text = "Zendry";
  name.SetBounds(cMargin, top, width, cLineHeight);
  top += cLineHeight;
  version.text = cVersionLine;
  version.SetBounds(cMargin, top, width, cLineHeight);
  top += cLineHeight + cMargin;
  licences.text = cLicences;
  licences.accessibleName = "Licences";
  licences.SetBounds(cMargin, top, width, cLicencesHeight);
  top += cLicencesHeight + cMargin;
  ok.kind = mavro::Button::cCancel;  // Escape presses it too
  ok.text = "OK";
  ok.SetBounds(cWidth - cMargin - cButtonWidth, top, cButtonWidth, cButtonHeight);
  SetSize(cWidth, top + cButtonHeight + cMargin);
  for (mavro::Control* control :
       std::initializer_list<mavro::Control*>{&banner, &name, &version, &licences, &ok})
    Add(control);
  focusControl = &ok;
}

}  // namespace zendry
