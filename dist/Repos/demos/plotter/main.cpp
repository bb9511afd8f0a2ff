// SPDX-License-Identifier: MIT-0
#include "plotform.h"

int Application::Main(const ArgumentList& arguments) {
  PlotForm mfrm;
  for (const std::string& formula : arguments) mfrm.AddCurve(formula);
  mfrm.Show();
  return 0;
}
