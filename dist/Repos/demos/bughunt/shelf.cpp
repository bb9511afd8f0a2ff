// SPDX-License-Identifier: MIT-0
#include "shelf.h"

#include <utility>

Shelf::Shelf(std::vector<Book> itsBooks) : books(std::move(itsBooks)) {}

int Shelf::Count() const {
  return static_cast<int>(books.size());
}

int Shelf::Tallest() const {
  int tallest = 0;
  for (const Book& book : books)
    if (book.height > tallest) tallest = book.height;
  return tallest;
}

int Shelf::Lowest() const {
  int lowest = 0;
  for (const Book& book : books)
    if (book.height < lowest) lowest = book.height;
  return lowest;
}

int Shelf::MeanHeight() const {
  int sum = 0;
  for (const Book& book : books) sum += book.height;
  return books.empty() ? 0 : sum / Count();
}
