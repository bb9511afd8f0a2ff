// SPDX-License-Identifier: MIT-0
#include <iostream>

#include "options.h"
#include "reader.h"
#include "report.h"

// Counts texts; see HelpText. Ends with 1 when a file can't be read, 2 for a wrong command line.
int main(int argc, char** argv) {
  const Options options = ReadOptions(argc, argv);
  if (options.showHelp) {
    std::cout << HelpText();
    return 0;
  }
  if (!options.error.empty()) {
    std::cerr << options.error << '\n' << HelpText();
    return 2;
  }
  int status = 0;
  for (const std::string& name : options.files) {
    TextStatistics statistics;
    if (ReadFile(name, statistics)) {
      PrintReport(std::cout, name, statistics, options.frequentWords);
    } else {
      std::cerr << "can't read " << name << '\n';
      status = 1;
    }
  }
  if (options.files.empty()) {
    TextStatistics statistics;
    ReadSample(statistics);
    PrintReport(std::cout, "a sample", statistics, options.frequentWords);
  }
  return status;
}
