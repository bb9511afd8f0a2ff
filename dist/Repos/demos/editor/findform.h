// SPDX-License-Identifier: MIT-0
#pragma once

#include <mavro>

// Asks for the text to look for.
class FindForm : public Form {
 public:
  typedef FindForm This;
  explicit FindForm(const std::string& last);

  std::string Wanted() const { return what.text; }

 private:
  Label label;
  Edit what;
  Button find, cancel;
};
