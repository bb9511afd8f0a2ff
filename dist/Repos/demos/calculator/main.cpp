// SPDX-License-Identifier: MIT-0
#include "calcform.h"

int Application::Main(const ArgumentList&) {
  CalcForm mfrm;
  mfrm.Show();
  return 0;
}
