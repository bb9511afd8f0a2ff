#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/DiskStamp.h"
#include "build/HeaderRivals.h"
#include "build/Staleness.h"

namespace zendry {

// A file that a tool has read.
struct InputFile {
  std::string path;  // as from the project's folder
  // Its time when it was read; cUnknownTime if it was written while the tool ran.
  FileTimes::Time time = 0;

  static constexpr FileTimes::Time cUnknownTime = -1;
  // It wasn't read: it is a rival of a header that was, and is known to be there.
  static constexpr FileTimes::Time cNotRead = -2;
  bool operator==(const InputFile&) const = default;
};

// Stands among the inputs of a product for which all files that were read are noted, those outside
// of the project's folder too.
inline const InputFile cAllReadFiles = {"*", InputFile::cNotRead};

// How a product was made. The inputs are numbers in the journal's list: many products have the
// same.
struct ProductRecord {
  std::string command;
  std::vector<uint32_t> inputs;

  bool operator==(const ProductRecord&) const = default;
};

// The content of the file. Reading takes what comes before a cut end or a damage.
struct BuildJournal {
  std::vector<InputFile> inputs;
  std::map<std::string, ProductRecord> records;
  size_t entries = 0;  // whole records in the text, those that were replaced or dropped too
  bool isWhole = false;
};
BuildJournal ReadJournal(std::string_view text);
// The shortest text that gives the records.
std::string WriteJournal(const BuildJournal& journal);

// How the files of one output folder were made, kept in the file cRecordsName there. All projects
// that build into the folder share it. With it a build sees changes that times alone don't show:
// other switches, another list of objects, a header that the include lists don't name, a file with
// its time set back.
//
// The file is a journal: a record is dropped before its tool runs and added after the tool has
// succeeded, so that a build killed at any moment leaves no record of a product that it has
// not finished. Without a record a product is stale. A file that is cut is read up to its last
// whole record; a file of another version or a damaged one counts as empty, and so does one that
// another program has written to meanwhile.
class BuildRecords {
 public:
  static constexpr char cRecordsName[] = ".zendry-build";

  // Reads the records of a folder, given as a path from the current folder, unless it is the same
  // file in the same state as before. Rewrites the file if
  // most of it is out of date or its end is cut.
  void Open(const std::string& folder);
  // True if all files that made the product are among its inputs.
  bool HasAllReadFiles(const std::string& product) const;
  // Null if nothing is known about the product.
  const ProductRecord* Find(const std::string& product) const;
  // Write to the disk at once; what can't be written is only known until the next Open, which makes
  // the product stale then.
  void Drop(const std::string& product);
  void Add(const std::string& product, const std::string& command,
           const std::vector<InputFile>& inputs);

  // Says if a product with a record is stale: its command has changed, an input has another time or
  // is gone, or a header has a new rival. Each input is looked at once after Open.
  Staleness Check(FileTimes& times, const std::string& product, const std::string& command);

 private:
  enum class InputState : unsigned char { cUnknown, cSame, cChanged, cGone };

  uint32_t NumberOf(const InputFile& input, std::string& text);
  InputState StateOf(uint32_t input, FileTimes& times);
  void LookForRivals();
  std::string NewRival(const std::string& product, const ProductRecord& record);
  void Read();
  void NoteStamp();
  void Append(const std::string& text);
  void Forget();
  void Rewrite();

  std::string path;
  BuildJournal journal;
  std::map<std::pair<std::string, FileTimes::Time>, uint32_t> numbers;
  std::vector<InputState> states;
  HeaderRivals rivals;
  std::vector<bool> hasRivals;  // by input; empty until somebody asks, and after each change
  DiskStamp stamp;              // of the file that says what is known; none if none does
  size_t size = 0;              // of the file, as far as this program has read and written it
};

// The files named by a rule for make ("target: file file..."), as compilers write it.
std::vector<std::string> ReadMakeRule(std::string_view rule);

}  // namespace zendry
