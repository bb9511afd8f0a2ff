#pragma once

#include <mavro>

namespace zendry {

// Says which program this is, and whose work is in it.
class AboutDlg : public mavro::Form {
 public:
  AboutDlg();

  mavro::Image banner;
  mavro::Label name;
  mavro::Label version;
  mavro::RichView licences;
  mavro::Button ok;
};

}  // namespace zendry
