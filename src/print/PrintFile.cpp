#include "print/PrintFile.h"

#include "base/Paths.h"
#include "code/CodeSources.h"
#include "code/FunctionList.h"
#include "editor/CppEditor.h"

namespace zendry {

mavro::PrintJob PrintJobOf(CppEditor& editor, const std::string& caption, CodeSources& sources) {
  mavro::PrintJob job;
  job.editor = &editor;
  job.path = editor.fileName;
  job.title = job.path.empty() ? caption : BaseName(job.path);
  sources.RefreshTags();
  if (const TagData* module = sources.ModuleOf(editor.LiveText()))
    for (const FunctionPlace& function : FunctionsOf(*module))
      job.marks.push_back({function.line, function.name});
  return job;
}

}  // namespace zendry
