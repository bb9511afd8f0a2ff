// SPDX-License-Identifier: MIT-0
#pragma once

#include <string>
#include <vector>

struct Book {
  std::string title;
  int height = 0;  // in centimetres
};

// Books in the order in which they stand.
class Shelf {
 public:
  explicit Shelf(std::vector<Book> itsBooks);

  int Count() const;
  int Tallest() const;
  int Lowest() const;
  int MeanHeight() const;

 private:
  std::vector<Book> books;
};
