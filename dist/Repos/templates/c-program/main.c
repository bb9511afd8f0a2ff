// SPDX-License-Identifier: MIT-0
#include <stdio.h>

#include "series.h"

/* Reads numbers from the standard input and says what they amount to. */
int main(void) {
  struct series numbers = {0};
  double number;
  while (scanf("%lf", &number) == 1) series_add(&numbers, number);
  printf("%zu numbers, sum %g, mean %g\n", numbers.count, numbers.sum, series_mean(&numbers));
  return 0;
}
