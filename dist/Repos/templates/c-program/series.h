// SPDX-License-Identifier: MIT-0
#ifndef SERIES_H
#define SERIES_H

#include <stddef.h>

/* Numbers that were added one after the other; begins with zeros. */
struct series {
  size_t count;
  double sum;
};

void series_add(struct series* series, double number);

/* The mean value; 0 if there is no number yet. */
double series_mean(const struct series* series);

#endif
