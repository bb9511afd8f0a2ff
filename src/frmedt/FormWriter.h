#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zendry {

struct CtrlRec;
struct PropValue;
class FormData;

// Writes the regions of a form. Everything comes from the records' values, so the surface copies
// the bounds and docks of its controls into them first. A size or place that isn't known isn't
// written.
class FormWriter {
 public:
  static constexpr int cMostTabs = 64;
  static constexpr int cNamesInStatement = 5;

  explicit FormWriter(const FormData& form) : frm(form) {}

  // Insert the lines of a region, markers included, into `lines` from `index` on. Each line ends
  // with CR LF.
  void WriteDecl(std::vector<std::string>& lines, size_t index = 0);
  void WriteInit(std::vector<std::string>& lines, size_t index = 0);
  // The statements of one control, its marker first and its `Add` last, as in WriteInit. For the
  // clipboard.
  std::vector<std::string> StatementsOf(const CtrlRec& rec);

 private:
  void Begin(std::vector<std::string>& lines, size_t index, int tabs);
  void Emit(std::string_view text);
  void WriteControl(const CtrlRec& rec);
  void WriteRecord(const CtrlRec& rec);
  void WriteBounds(const CtrlRec& rec);
  void WriteValue(const CtrlRec& rec, const PropValue& prop);
  void WriteEvents(const CtrlRec& rec);

  const FormData& frm;
  std::vector<std::string>* out = nullptr;
  size_t next = 0;
  std::string tabs;
  std::string prefix;  // of the record's statements: "this->" or "button1."
};

}  // namespace zendry
