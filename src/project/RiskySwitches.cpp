#include "project/RiskySwitches.h"

#include <algorithm>

namespace zendry {

namespace {

// The first row that fits decides.
constexpr RiskySwitch cRows[] = {
    {"@", Risk::cRuns, false, true},
    {"-wrapper", Risk::cRuns, true},
    {"--wrapper", Risk::cRuns, true},
    {"-fplugin=", Risk::cRuns, true},
    {"-fplugin", Risk::cUnasked},
    {"-iplugindir", Risk::cRuns, true},
    {"-specs", Risk::cRuns, true, true},
    {"--specs", Risk::cRuns, true, true},
    {"-B", Risk::cRuns, true},
    {"--prefix", Risk::cRuns, true},
    {"-fmodule-mapper", Risk::cRuns, true},  // "=|PROGRAM" starts one
    {"-Xclang", Risk::cRuns, true},
    {"-o", Risk::cWrites, true},
    {"--output", Risk::cWrites, true},
    {"-MF", Risk::cWrites, true},
    {"-aux-info", Risk::cWrites, true},
    {"-dumpdir", Risk::cWrites, true},
    {"-Wl,", Risk::cHandsOn},
    {"-Wa,", Risk::cHandsOn},
    {"-Wp,", Risk::cHandsOn},
    {"-Xlinker", Risk::cHandsOnNext, true},
    {"-Xassembler", Risk::cHandsOnNext, true},
    {"-Xpreprocessor", Risk::cHandsOnNext, true},
    {"-fuse-ld", Risk::cUnasked},
    {"-fdump", Risk::cUnasked},
    {"-fprofile", Risk::cUnasked},
    {"-fcallgraph", Risk::cUnasked},
    {"-foffload", Risk::cUnasked},
    {"-fopt-info", Risk::cUnasked},
};

}  // namespace

const RiskySwitch* FindRiskySwitch(std::string_view argument) {
  const auto* found = std::find_if(std::begin(cRows), std::end(cRows), [&](const RiskySwitch& row) {
    return argument.starts_with(row.begin);
  });
  return found == std::end(cRows) ? nullptr : found;
}

}  // namespace zendry
