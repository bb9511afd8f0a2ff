#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "frmedt/FormData.h"

namespace zendry {

struct LineTokens;

// Reads the two regions of a form into its model, line by line. Whatever the lines are, the text
// that is written of the result reads back to the same model.
//
// The class of a control that no registered name declares is that of the last marker before its
// first statement. An `Add` is a statement of the control that it adds: the container is found by
// its name when all lines have been read, because the last marker isn't the container's.
class FormReader {
 public:
  explicit FormReader(FormData& theForm);

  void ReadDecl(const std::vector<std::string>& lines);
  void ReadInit(const std::vector<std::string>& lines);

 private:
  struct Addition {
    std::string parent;
    std::string pending;  // the class of the last marker before
    int line = -1;
  };

  CtrlRec& FindOrAdd(std::string_view name, std::string_view className);
  void ReadDeclLine(const std::string& line);
  void ReadInitLine(const std::string& line);
  void ReadStatement(CtrlRec& rec, const LineTokens& tokens, std::string value);
  void ReadAdd(const LineTokens& tokens);
  void ReadBounds(CtrlRec& rec, std::string_view name, const std::string& value);
  void Resolve(CtrlRec& rec, std::string_view marker);
  void EndAdditions();
  void Report(const std::string& text);

  FormData& form;
  std::unordered_map<std::string, CtrlRec*> byName;
  std::unordered_map<const CtrlRec*, Addition> additions;
  std::unordered_set<const CtrlRec*> unknown;  // records whose class isn't known
  std::string pending;
  int lineNumber = -1;
};

}  // namespace zendry
