#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "code/TidyEdits.h"
#include "frmedt/FormData.h"
#include "frmedt/FormText.h"

namespace zendry {

// A region of a source.
struct SectionRef {
  bool IsFound() const { return text != nullptr; }
  // From the line of the opening marker up to, but not including, that of the closing one.
  std::vector<std::string> Lines() const;

  int startLine = -1;  // of the opening marker, from 0
  int endLine = -1;    // of the closing one
  FormTag tag;
  FormTextPtr text;  // null if the region wasn't found
};

// The two regions of a form's class.
struct FormTarget {
  std::string className;
  SectionRef decl, init;
};

// A change of one source.
struct RegionEdit {
  std::string path;
  TextEdit edit;
};

// The kind of marker that a line is: cOther has something else after "//!", cNone is no marker.
enum class FormMarker { cNone, cDecl, cInit, cEnd, cOther };
FormMarker MarkerOf(std::string_view line);

// Finds the regions of a form in a source and in the file beside it.
class FormLocator {
 public:
  // The other file of a form: the header of a source if `isHeader`, else the source of a header.
  // Null if there is none.
  using Companion = std::function<FormTextPtr(const std::string& path, bool isHeader)>;

  // Fills `targets` from a source. With more than one of them the caller asks which is meant.
  void Scan(const FormTextPtr& text);
  // Selects a target and looks for its missing region in the companion. False, with a report, if
  // the form can't be opened.
  bool Select(size_t number, const Companion& companion);

  // The class of the selected form's regions.
  const FormTarget& Selected() const { return selected; }
  // The edits that replace the regions, to be made in this order: the lower one of a file goes
  // first, so that both are valid for the text as it was read. Line ends are those of the source.
  std::vector<RegionEdit> ReplaceRegions(const std::vector<std::string>& declLines,
                                         const std::vector<std::string>& initLines) const;

  std::vector<FormTarget> targets;
  std::vector<FormReport> reports;

 private:
  void CloseRegion(const FormTarget& open, const SectionRef& section);
  void AddCompanion(const FormTextPtr& text);

  FormTarget selected;
};

// An edit that replaces the lines of a region, markers included.
RegionEdit ReplaceRegion(const SectionRef& section, const std::vector<std::string>& lines);

}  // namespace zendry
