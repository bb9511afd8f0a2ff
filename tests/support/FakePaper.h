#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "PrintDevice.h"

namespace test {

// Paper with letters of 10 by 20 dots, which keeps what is printed on it, one text per page. A page
// of 100 dots an inch.
//
//   FakePaper paper(400, 300);
//   printer.PrintOn(...);
//   EXPECT_EQ(paper.log.pages, (std::vector<std::string>{"a.cpp  -  page: 1\n..."}));
struct FakePaper : mavro::PrintDevice {
  // Outlives the device, which its job may own.
  struct Log {
    std::vector<std::string> pages;
    std::vector<std::string> places;  // "x,baseline text"
    std::vector<mavro::PrintRect> fills;
    std::vector<std::string> outline;  // "page y title"
    std::string ends;
  };

  FakePaper(int width, int height, Log& itsLog) : log(itsLog) {
    metrics = {100, 100, width, height, 0, 0, width, height};
  }

  mavro::PrintMetrics Metrics() const override { return metrics; }
  bool StartDoc(const std::string& title) override {
    log.ends += "start " + title + ";";
    return starts;
  }
  void StartPage() override { log.pages.emplace_back(); }
  void EndPage() override {}
  std::string EndDoc() override {
    log.ends += "end;";
    return error;
  }
  void Abort() override { log.ends += "abort;"; }
  int AddFont(const mavro::PrintFont& font) override {
    const auto found = std::find(fonts.begin(), fonts.end(), font);
    if (found == fonts.end()) fonts.push_back(font);
    return static_cast<int>(std::find(fonts.begin(), fonts.end(), font) - fonts.begin());
  }
  mavro::PrintHeights HeightsOf(int) override { return {15, 5, 0}; }
  double WidthOf(int, std::string_view text) override {
    return 10.0 * static_cast<double>(std::count_if(text.begin(), text.end(),
                                                    [](char c) { return (c & 0xC0) != 0x80; }));
  }
  void TextOut(double x, double baseline, int, int ink, std::string_view text) override {
    if (log.pages.empty()) return;
    std::string& page = log.pages.back();
    if (baseline != lastBaseline && !page.empty()) page += '\n';
    lastBaseline = baseline;
    page += text;
    inks.push_back(ink);
    log.places.push_back(std::to_string(static_cast<int>(x)) + "," +
                         std::to_string(static_cast<int>(baseline)) + " " + std::string(text));
  }
  void Fill(const mavro::PrintRect& area, int) override { log.fills.push_back(area); }
  void AddOutline(const std::string& title, int y) override {
    log.outline.push_back(std::to_string(log.pages.size()) + " " + std::to_string(y) + " " + title);
  }

  Log& log;
  mavro::PrintMetrics metrics;
  bool starts = true;
  std::string error;
  std::vector<mavro::PrintFont> fonts;
  std::vector<int> inks;
  double lastBaseline = -1;
};

}  // namespace test
