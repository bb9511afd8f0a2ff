#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "frmedt/FormData.h"
#include "frmedt/FormText.h"
#include "frmedt/FormWriter.h"

namespace test {

// The lines of a text, each with its line end; one without gets CR LF.
inline std::vector<std::string> FormLines(std::string_view text) {
  std::vector<std::string> lines;
  while (!text.empty()) {
    const size_t end = text.find('\n');
    lines.emplace_back(text.substr(0, end == std::string_view::npos ? end : end + 1));
    if (end == std::string_view::npos) lines.back() += "\r\n";
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
  return lines;
}

// A form that is read from the lines between its markers.
//
//   test::ReadForm form("Button ok;\n", "this->Add(&ok);\n");
//   EXPECT_TRUE(form.data.Find("ok")->hasAdd);
struct ReadForm {
  ReadForm(const std::string& decl, const std::string& init) {
    data.ReadDecl(FormLines("//!decl\n" + decl));
    data.ReadInit(FormLines("//!init\n" + init));
  }

  zendry::FormData data;
};

inline std::string Joined(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += line;
  return text;
}
inline std::string WrittenDecl(const zendry::FormData& form) {
  std::vector<std::string> lines;
  zendry::FormWriter(form).WriteDecl(lines);
  return Joined(lines);
}
inline std::string WrittenInit(const zendry::FormData& form) {
  std::vector<std::string> lines;
  zendry::FormWriter(form).WriteInit(lines);
  return Joined(lines);
}
// What is written between the markers of the initialisation, with LF and without tabs.
inline std::string InitBody(const zendry::FormData& form) {
  std::string text = WrittenInit(form);
  std::erase(text, '\r');
  std::erase(text, '\t');
  text.erase(0, text.find('\n') + 1);
  return text.erase(text.rfind("//!end"));
}

}  // namespace test
