#pragma once

#include <cstdint>
#include <vector>

#include "RtfReader.h"

namespace mavro {

struct RtfToken;

// Reads the definitions of table rows, and counts the cells of the row that is being read. A
// definition is valid until the next one.
class RtfRows {
 public:
  static constexpr int cMostCells = 64;

  // False for a word that doesn't define rows.
  bool Take(const RtfToken& token, const std::vector<int32_t>& colors);

  bool IsDefined() const { return isDefined; }
  // The cell that the text belongs to, from 0.
  int Cell() const { return cell; }
  bool HasCells() const { return cell > 0; }
  bool IsFull() const { return cell >= cMostCells; }
  void NextCell() { ++cell; }
  // The row that ends here.
  RtfRow EndRow();

 private:
  bool TakeBorder(const RtfToken& token);

  RtfRow row;
  RtfCell nextCell;
  int side = -1;  // the side of nextCell whose border is defined; -1 for none
  int cell = 0;
  bool isDefined = false;
};

}  // namespace mavro
