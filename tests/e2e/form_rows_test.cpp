#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "FormSource.h"
#include "TempFolder.h"
#include "ZendryMakeRun.h"
#include "frmedt/CtrlReg.h"
#include "frmedt/PropClass.h"

// Every property and event of the designer's tables, written by the designer and compiled with the
// framework's headers.

namespace {

using namespace zendry;

std::string ValueOf(const PropDef& row, size_t number) {
  switch (row.cvt->type) {
    case cStringType:
      return "a \\\"b\\\" " + std::to_string(number);
    case cIntegerType:
      return std::to_string(number + 7);
    case cFloatType:
      return "7.5";
    case cExpressionType:
      return "nullptr";
    case cSelectionType: {
      const std::vector<std::string> options = SplitOptions(row.cvt->ref);
      return options[number % options.size()];
    }
    case cItemsType:
      return row.cvt == &thePropTbItems ? "Icons::icoNew, \"New\"\r\n_separator_\r\n"
                                        : "a\r\nb\r\n";
    default:
      return row.kind == cFontKind ? "Font(12, Font::cBold|Font::cItalic)" : "";
  }
}

// As many controls of a class as its longest list of options needs.
size_t CountFor(const CtrlClass& one) {
  size_t most = 1;
  for (const PropDef& row : one.props)
    if (row.cvt->type == cSelectionType) most = std::max(most, SplitOptions(row.cvt->ref).size());
  return most;
}

void SetAll(CtrlRec& rec, size_t number) {
  for (PropValue& prop : rec.props) prop.value = ValueOf(*prop.pd, number);
  if (number > 0) return;
  for (const EventDef& event : rec.classDef->events)
    rec.events.push_back({event.name, std::string("On") + event.argType});
}

std::string Program() {
  FormData form;
  std::set<std::string> arguments;
  SetAll(form.root, 0);
  for (const CtrlClass& one : Registry()) {
    for (size_t i = 0; i < CountFor(one); ++i) {
      CtrlRec& parent = one.isPage ? *form.Find("tabCtrl1") : form.root;
      SetAll(form.AddControl(one, parent, form.UniqueName(one.name)), i);
    }
    for (const EventDef& event : one.events) arguments.insert(event.argType);
  }
  for (const EventDef& event : WindowRegClass.events) arguments.insert(event.argType);
  std::string text = "#include <mavro>\n";
  text += "class Main: public Form {\npublic:\n\ttypedef Main This;\n" + test::WrittenDecl(form);
  text += "\tvoid Initialize() {\n" + test::WrittenInit(form) + "\t}\n";
  for (const std::string& name : arguments) text += "\tvoid On" + name + "(" + name + " &e);\n";
  return text + "};\n";
}

TEST(FormRows, EveryRowCompiles) {
  const test::TempFolder folder;
  const std::string path = folder.Write("main.cpp", Program());
  const test::Ended ended =
      test::Program({"/usr/bin/g++", "-std=c++20", "-fsyntax-only", "-I" FRAMEWORK_HEADERS, path},
                    folder.Path())
          .Wait();
  EXPECT_EQ(ended.status, 0) << ended.err.substr(0, 4000);
}

}  // namespace
