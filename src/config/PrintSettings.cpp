#include "config/PrintSettings.h"

#include <cstdio>

#include "PageSetup.h"
#include "base/ParseInt.h"

namespace zendry {

namespace {

using mavro::PageSetup;
using mavro::thePageSetup;

struct SwitchRow {
  const char* key;
  bool PageSetup::*isOn;
};
constexpr SwitchRow cSwitches[] = {
    {"print-landscape", &PageSetup::isLandscape}, {"print-header", &PageSetup::hasHeader},
    {"print-footer", &PageSetup::hasFooter},      {"print-numbers", &PageSetup::hasNumbers},
    {"print-folded", &PageSetup::isAsFolded},     {"print-colours", &PageSetup::hasColours},
};
constexpr char cPaper[] = "print-paper";
constexpr char cMargins[] = "print-margins";
constexpr char cSize[] = "print-size";

std::string MarginsOf(const PageSetup& setup) {
  char text[64];
  std::snprintf(text, sizeof text, "%d;%d;%d;%d", setup.left, setup.top, setup.right, setup.bottom);
  return text;
}

}  // namespace

void TakePrintSettings(const std::map<std::string, std::string>& values) {
  PageSetup setup;
  const auto take = [&](const char* key, const auto& use) {
    if (const auto found = values.find(key); found != values.end()) use(found->second);
  };
  take(cPaper, [&](const std::string& value) { setup.paper = value; });
  take(cSize, [&](const std::string& value) { setup.size = ParseInt(value); });
  take(cMargins, [&](const std::string& value) {
    PageSetup read = setup;
    const int count = std::sscanf(value.c_str(), "%9d;%9d;%9d;%9d", &read.left, &read.top,
                                  &read.right, &read.bottom);
    if (count == 4) setup = read;
  });
  for (const SwitchRow& row : cSwitches)
    take(row.key, [&](const std::string& value) { setup.*row.isOn = value == "1"; });
  thePageSetup = mavro::Usable(setup);
}

void StorePrintSettings(std::map<std::string, std::string>& values) {
  const PageSetup setup = mavro::Usable(thePageSetup), plain;
  const auto put = [&](const char* key, const std::string& value, bool isPlain) {
    if (isPlain)
      values.erase(key);
    else
      values[key] = value;
  };
  put(cPaper, setup.paper, setup.paper == plain.paper);
  put(cSize, std::to_string(setup.size), setup.size == plain.size);
  put(cMargins, MarginsOf(setup), MarginsOf(setup) == MarginsOf(plain));
  for (const SwitchRow& row : cSwitches)
    put(row.key, setup.*row.isOn ? "1" : "0", setup.*row.isOn == plain.*row.isOn);
}

}  // namespace zendry
