// SPDX-License-Identifier: MIT-0
#include "editform.h"

int Application::Main(const ArgumentList& arguments) {
  EditForm mfrm;
  if (arguments.size() > 0) mfrm.Open(arguments[0]);
  mfrm.Show();
  return 0;
}
