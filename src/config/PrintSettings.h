#pragma once

#include <map>
#include <string>

namespace zendry {

// The page setup among the user's settings: "print-paper", "print-margins" (left, top, right and
// bottom in hundredths of a millimetre, with ";" between them), "print-size" and a switch for each
// choice of the dialog. Both work on mavro::thePageSetup; keys are only written for what differs
// from a new setup.
void TakePrintSettings(const std::map<std::string, std::string>& values);
void StorePrintSettings(std::map<std::string, std::string>& values);

}  // namespace zendry
