#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "FormSource.h"
#include "frmedt/FormCheck.h"
#include "frmedt/FormKeep.h"
#include "frmedt/FormLocator.h"

// Any bytes are a source with forms. What is written of a form that can be opened reads back to the
// same model and the same text, and each statement that isn't written is named.

namespace {

using Lines = std::vector<std::string>;

void Require(bool isTrue) {
  if (!isTrue) __builtin_trap();
}

Lines RegionOf(const std::string& written) {
  Lines lines = test::FormLines(written);
  lines.pop_back();
  return lines;
}

std::string WithoutBlanks(std::string line) {
  std::erase_if(line, [](char c) { return static_cast<unsigned char>(c) <= ' '; });
  return line;
}

// Of equal lines as many are named as are written less often than they were read.
void CheckNamed(const zendry::FormData& form, const Lines& decl, const Lines& init) {
  std::map<std::string, int> unnamed;
  for (const std::string& line : init) ++unnamed[WithoutBlanks(line)];
  for (const zendry::FormLoss& loss : zendry::CheckRegions(decl, init)) {
    const bool isGone = !loss.isInDecl && loss.kind != zendry::FormLoss::Kind::cMoved;
    if (isGone) --unnamed[WithoutBlanks(init[static_cast<size_t>(loss.line)])];
  }
  for (const std::string& line : test::FormLines(test::WrittenInit(form)))
    --unnamed[WithoutBlanks(line)];
  for (const auto& [line, count] : unnamed) Require(line.empty() || count <= 0);
}

void CheckForm(const Lines& decl, const Lines& init) {
  zendry::FormData form, again;
  form.ReadDecl(decl);
  form.ReadInit(init);
  CheckNamed(form, decl, init);
  Lines restDecl = decl, restInit = init;
  zendry::TakeKept(restDecl, restInit);
  if (!form.CheckParents()) return;
  const std::string writtenDecl = test::WrittenDecl(form), writtenInit = test::WrittenInit(form);
  again.ReadDecl(RegionOf(writtenDecl));
  again.ReadInit(RegionOf(writtenInit));
  Require(again.CheckParents() && zendry::SameForm(form, again));
  Require(test::WrittenDecl(again) == writtenDecl && test::WrittenInit(again) == writtenInit);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const auto text = std::make_shared<zendry::FormText>(
      "a.cpp", std::string(reinterpret_cast<const char*>(data), size));
  zendry::FormLocator locator;
  locator.Scan(text);
  for (size_t i = 0; i < locator.targets.size(); ++i) {
    if (!locator.Select(i, [](const std::string&, bool) { return nullptr; })) continue;
    CheckForm(locator.Selected().decl.Lines(), locator.Selected().init.Lines());
  }
  return 0;
}
