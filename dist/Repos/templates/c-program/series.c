// SPDX-License-Identifier: MIT-0
#include "series.h"

void series_add(struct series* series, double number) {
  ++series->count;
  series->sum += number;
}

double series_mean(const struct series* series) {
  return series->count == 0 ? 0 : series->sum / (double)series->count;
}
