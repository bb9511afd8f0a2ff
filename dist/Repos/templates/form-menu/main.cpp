// SPDX-License-Identifier: MIT-0
#include "mainform.h"

int Application::Main(const ArgumentList&) {
  MainForm mfrm;
  mfrm.Show();
  return 0;
}
