#include "frmedt/FormSkeleton.h"

#include "base/Paths.h"

namespace zendry {

std::string FillTemplate(std::string_view text, std::string_view className) {
  std::string filled;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '@') {
      filled += text[i];
      continue;
    }
    const char letter = ++i < text.size() ? text[i] : '\0';
    if (letter == 'C') filled += className;
    if (letter == 'B') filled += "Form";
  }
  return filled;
}

std::vector<std::string> FormSkeleton::Header() const {
  std::vector<std::string> strings;
  const auto add = [&](std::string_view text) { strings.push_back(FillTemplate(text, className)); };
  if (withHeading) add("#pragma once\n#include<mavro>\n\n");
  add("class @C: public Form\n{\n\ttypedef @C This;\npublic:");
  add("\t//!decl");
  add("\t//!end");
  add("\t@C() {");
  add("\t\tInitialize();");
  add("\t}");
  add(split ? "private:\n\tvoid Initialize() ;"
            : "private:\n\tvoid Initialize() {\n\t\t//!init\n\t\t//!end\n\t}");
  add("};\n");
  return strings;
}

std::vector<std::string> FormSkeleton::Source() const {
  std::vector<std::string> strings;
  const std::string header = headerPath.substr(headerPath.rfind('/') + 1);
  strings.push_back("#include \"" + header + "\"\n\n");
  if (withMain) {
    // The class is called MainForm here, whatever the form's name is.
    strings.emplace_back("int Application::Main(const ArgumentList& args)");
    strings.emplace_back("{\n\tMainForm mfrm;");
    strings.emplace_back("\tmfrm.Show();\n\treturn 0;\n}\n\n\n");
  }
  strings.push_back("void " + className + "::Initialize()\n{");
  strings.emplace_back("\t//!init");
  strings.emplace_back("\t//!end");
  strings.emplace_back("}");
  return strings;
}

std::string FormSkeleton::FileOf(const std::vector<std::string>& strings) {
  std::string text;
  for (const std::string& one : strings) text += one + '\n';
  return text;
}

mavro::FileResult FormSkeleton::WriteFiles(const std::string& base) {
  withHeading = true;
  headerPath = base + ".h";
  sourcePath = split ? base + ".cpp" : std::string();
  mavro::FileResult result = mavro::SaveFileText(headerPath, FileOf(Header()));
  if (result.Ok() && split) result = mavro::SaveFileText(sourcePath, FileOf(Source()));
  return result;
}

}  // namespace zendry
