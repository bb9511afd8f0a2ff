#pragma once

#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "frmedt/CtrlReg.h"
#include "frmedt/FormData.h"
#include "frmedt/PropClass.h"

namespace test {

// How many rounds a campaign over random forms runs: the environment variable ZENDRY_FORMS, else a
// number that fits every build.
inline int FormRounds(int usual) {
  const char* wanted = std::getenv("ZENDRY_FORMS");
  return wanted ? std::atoi(wanted) : usual;
}

// Makes forms of all classes with any properties and events, nested up to six deep. The same number
// gives the same form.
//
//   zendry::FormData form;
//   test::FormMaker(7).Fill(form);
class FormMaker {
 public:
  explicit FormMaker(unsigned number, size_t shortestName = 3)
      : random(number), shortest(shortestName) {}

  void Fill(zendry::FormData& form) {
    form.declIndent = Below(4);
    form.initIndent = Below(4);
    SetValues(form.root);
    std::vector<std::pair<zendry::CtrlRec*, int>> containers = {{&form.root, 0}};
    const int count = Below(25);
    for (int i = 0; i < count; ++i) {
      const auto [parent, depth] = containers[static_cast<size_t>(Below(Size(containers)))];
      const auto& classes = zendry::Registry();
      const zendry::CtrlClass& type = classes[static_cast<size_t>(Below(Size(classes)))];
      zendry::CtrlRec& made = form.AddControl(type, *parent, Name(form));
      if (Below(5) == 0) made.declClass = "My" + type.name;
      SetValues(made);
      if (type.isContainer && depth < 6) containers.emplace_back(&made, depth + 1);
    }
  }

  int Below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random); }

  // Pieces that have a meaning to the reader, to the language or to neither.
  std::string Text() {
    static const std::vector<std::string> cPieces = {
        "a",      "Hello",       " ",     "\\\"", "\\\\",  "\"", "\xC3\xA4", "\xE2\x82\xAC",
        "//!end", "//",          ";",     ",",    "(",     ")",  "Add(",     ".",
        "=",      "//!<Button>", "Add_H", "this", "&This", "::", "'",        "{",
        "}",      "<",           ">",     "\t",   "0",     "%s", "@C",       "|",
        "Color::"};
    std::string text;
    for (int i = Below(8); i > 0; --i) text += cPieces[static_cast<size_t>(Below(Size(cPieces)))];
    if (Below(40) == 0) text += std::string(600, 'x');
    return text;
  }

 private:
  template <class T>
  static int Size(const T& list) {
    return static_cast<int>(list.size());
  }

  std::string Name(const zendry::FormData& form) {
    std::string name;
    do {
      name.clear();
      const size_t length = shortest + static_cast<size_t>(Below(static_cast<int>(61 - shortest)));
      while (name.size() < length) {
        const char* letters = "abcdefghijklmnopqrstuvwxyzABC_0123456789";
        name += letters[Below(name.empty() ? 29 : 40)];
      }
    } while (form.Find(name));
    return name;
  }

  std::string Value(const zendry::PropDef& row) {
    switch (row.cvt->type) {
      case zendry::cStringType:
        return Text();
      case zendry::cIntegerType:
        return std::to_string(Below(2000) - 500);
      case zendry::cFloatType:
        return std::to_string(Below(100)) + ".5";
      case zendry::cExpressionType:
        return "link(" + std::to_string(Below(9)) + ", \"a;b\")";
      case zendry::cSelectionType: {
        const std::vector<std::string> options = zendry::SplitOptions(row.cvt->ref);
        return options[static_cast<size_t>(Below(Size(options)))];
      }
      case zendry::cItemsType:
        return Items(row.cvt == &zendry::thePropTbItems);
      default:
        return row.kind == zendry::cFontKind
                   ? "Font(" + std::to_string(6 + Below(20)) + (Below(2) ? ", Font::cBold)" : ")")
                   : std::string();
    }
  }

  std::string Items(bool areButtons) {
    std::string items;
    for (int i = Below(5); i > 0; --i) {
      if (areButtons)
        items += Below(3) ? "Icons::icoOpen, \"" + std::string(1, 'a' + Below(20)) + "\""
                          : "_separator_";
      else
        items += Text();
      items += "\r\n";
    }
    return items;
  }

  void SetValues(zendry::CtrlRec& rec) {
    const bool isFull = Below(3) == 0;
    for (zendry::PropValue& prop : rec.props) {
      const bool isPlace =
          prop.pd->kind >= zendry::cLeftKind && prop.pd->kind <= zendry::cHeightKind;
      if (isPlace || isFull || Below(3) == 0) prop.value = Value(*prop.pd);
    }
    if (zendry::PropValue* dock = rec.FindValue("dock"); dock && Below(4)) dock->value.clear();
    for (const zendry::EventDef& event : rec.classDef->events)
      if (Below(isFull ? 1 : 6) == 0)
        rec.events.push_back(
            {event.name, "Do" + std::string(event.name) + std::to_string(Below(99))});
    if (Below(8) == 0) rec.props.push_back({nullptr, "extra = call(1, \"x\")"});
  }

  std::mt19937 random;
  const size_t shortest;
};

}  // namespace test
