#include "help/HelpActs.h"

namespace zendry {

namespace {

using enum Offered;

constexpr CommandRow cRows[] = {
    {1700, "&About Zendry...", 0, cLater},
    {mavro::cSeparatorRow},
    {1701, "&Programer help", mavro::cControlKey | cKeyF1, cLater},
    {1112, "&Code word help", cKeyF1, cLater},
};

}  // namespace

HelpActs theHelpActs;

HelpActs::HelpActs() : CommandList(cRows) {}

}  // namespace zendry
