#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zendry {

// A file name that an #include names.
struct IncludeRec {
  bool quoted = false;  // by double quotes; else by angle brackets, which the Makefile export skips
  bool isElsewhere = false;  // in a branch that only compilers of other platforms read
  std::string name;
};

// Finds the name in one line that begins with "#" in its first column. White space is ignored
// everywhere in such a line, even in the name. A name of more than 244 characters, or one that
// isn't closed on its line, is ignored.
class IncludeScanner {
 public:
  // Begins after the "#".
  void Start();
  // Takes the next byte of the line. True when it has closed the name, which is then in Found().
  bool Feed(char c);
  // True if further bytes can make a name; false before Start().
  bool IsRunning() const { return step != Step::cIdle; }
  const IncludeRec& Found() const { return found; }

 private:
  enum class Step { cIdle, cKeyword, cOpening, cName };

  bool Stop() {
    step = Step::cIdle;
    return false;
  }

  Step step = Step::cIdle;
  size_t matched = 0;  // letters of "include"
  char closing = 0;
  IncludeRec found;
};

// The includes of a source text in the order found, without preprocessing: even those inside a
// comment or a branch that is switched off. Lines end with LF, CR LF or CR.
std::vector<IncludeRec> ScanIncludes(std::string_view text);

}  // namespace zendry
