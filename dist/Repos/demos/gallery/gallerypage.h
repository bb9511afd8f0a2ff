// SPDX-License-Identifier: MIT-0
#pragma once

#include <mavro>

#include <functional>

// A page of the gallery. What its controls tell is written to the log of the window.
class GalleryPage : public TabPage {
 public:
  typedef std::function<void(const std::string&)> Log;
  typedef GalleryPage This;

  GalleryPage(const std::string& title, Log log);

 protected:
  void Place(Control& control, int left, int top, int width, int height = -1);
  void Say(const std::string& line) { say(line); }

 private:
  Log say;
};
