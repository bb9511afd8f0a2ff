// Forms without a window: reading and writing the regions of 200 controls, beside reading and
// copying the same bytes; and checking 1,000 sources of 300 lines, all of them forms, beside
// reading the files alone. Limits: 50 ms, 50 ms and 200 ms.

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "FileText.h"
#include "Shortest.h"
#include "frmedt/FormFiles.h"
#include "frmedt/FormWriter.h"

namespace {

using namespace zendry;
namespace fs = std::filesystem;

constexpr int cControls = 200;
constexpr int cSources = 1000;
constexpr int cLines = 300;
constexpr double cFormLimit = 50;
constexpr double cCheckLimit = 200;

// A source with a form, as the designer writes it. Further lines are code.
std::string Source(int controls, int lines) {
  std::string decl, init;
  for (int i = 0; i < controls; ++i) {
    const std::string name = "button" + std::to_string(i);
    decl += (i % 5 ? ", " : i ? ";\n\tButton " : "\tButton ") + name;
    init += "\t\t//!<Button>\n\t\t" + name + ".SetBounds(8, 8, 75, 25);\n\t\t" + name +
            ".text = \"Button\";\n\t\tthis->Add(&" + name + ");\n";
  }
  std::string text = "class Main: public Form {\npublic:\n\t//!decl\n" + decl + ";\n\t//!end\n";
  text += "\tvoid Initialize() {\n\t\t//!init\n" + init + "\t\t//!end\n\t}\n};\n";
  for (int i = 0; text.size() && std::count(text.begin(), text.end(), '\n') < lines; ++i)
    text += "int function" + std::to_string(i) + "(int a, int b) { return a * b + " +
            std::to_string(i) + "; }\n";
  return text;
}

FormLocator Located(const std::string& text) {
  FormLocator locator;
  locator.Scan(std::make_shared<FormText>("a.cpp", text));
  const bool isFound = locator.targets.size() == 1 &&
                       locator.Select(0, [](const std::string&, bool) { return nullptr; });
  bench::Check(isFound, "form_bench", "finding the form");
  return locator;
}

void Read(FormData& form, const FormLocator& locator) {
  form.ReadDecl(locator.Selected().decl.Lines());
  form.ReadInit(locator.Selected().init.Lines());
  bench::Check(form.CheckParents(), "form_bench", "reading the form");
}

bool Report(const char* what, double time, double peer, double limit) {
  std::printf("%-32s %8.2f ms   (bytes alone %.2f, limit %.0f)\n", what, time, peer, limit);
  return time <= limit;
}

bool OpenAndSave() {
  const std::string text = Source(cControls, 0);
  const double copy =
      bench::Shortest([&] { bench::Check(std::string(text) == text, "form_bench", "copying"); });
  const double open = bench::Shortest([&] {
    const FormLocator locator = Located(text);
    FormData form;
    Read(form, locator);
    bench::Check(CheckForm(locator.Selected()).empty(), "form_bench", "checking the form");
  });
  const FormLocator locator = Located(text);
  FormData form;
  Read(form, locator);
  const double save = bench::Shortest([&] {
    std::vector<std::string> decl, init;
    FormWriter writer(form);
    writer.WriteDecl(decl);
    writer.WriteInit(init);
    std::string written = text;
    for (const RegionEdit& one : locator.ReplaceRegions(decl, init))
      written.replace(one.edit.offset, one.edit.length, one.edit.text);
    bench::Check(written == text, "form_bench", "writing the form");
  });
  const bool isOpenFast = Report("open and check, 200 controls", open, copy, cFormLimit);
  return Report("save, 200 controls", save, copy, cFormLimit) && isOpenFast;
}

bool CheckSources() {
  const fs::path folder = fs::temp_directory_path() / ("form_bench-" + std::to_string(getpid()));
  fs::create_directories(folder);
  std::vector<std::string> paths;
  const std::string text = Source(40, cLines);
  for (int i = 0; i < cSources; ++i) {
    paths.push_back(folder / ("a" + std::to_string(i) + ".cpp"));
    std::ofstream(paths.back(), std::ios::binary) << text;
  }
  const double bytes = bench::Shortest([&] {
    for (const std::string& path : paths)
      bench::Check(mavro::ReadFileText(path).Ok(), "form_bench", "reading");
  });
  const double check = bench::Shortest([&] {
    FormFiles forms([](const std::string& line) { std::puts(line.c_str()); });
    for (const std::string& path : paths) bench::Check(forms.Check(path), "form_bench", "checking");
  });
  fs::remove_all(folder);
  return Report("check, 1,000 forms of 300 lines", check, bytes, cCheckLimit);
}

}  // namespace

int main() {
  const bool isFormFast = OpenAndSave();
  return CheckSources() && isFormFast ? 0 : 1;
}
