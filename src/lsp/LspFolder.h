#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/QuietShell.h"
#include "code/Completion.h"
#include "lsp/LspText.h"
#include "project/Project.h"
#include "project/ProjectSources.h"

namespace zendry {

// A folder that a client works in: its project, the texts that are open in it, and what answers
// questions about them. The project is the one ".zpj" directly in the folder, else what
// "compile_commands.json" lists with the files that those include, else all sources below it.
// Nothing is written, and nothing is read before it is needed.
class LspFolder : private QuietShell {
 public:
  // An empty root stands for no folder: each text is a file alone. `itsLog` is told what went
  // wrong.
  LspFolder(std::string itsRoot, std::string installFolder,
            std::function<void(const std::string&)> itsLog);

  // Reads the project; does nothing the second time.
  void EnsureOpen();
  // True for a file in it.
  bool Has(std::string_view path) const;

  void OpenText(std::unique_ptr<LspText> text);
  // The tags of the file are those on the disk again.
  void CloseText(const std::string& path);
  // The open text of a file; null if there is none.
  LspText* FindText(const std::string& path) const;
  // The tags become those of the file as it is on the disk now, unless it is open.
  void FileChanged(const std::string& path);
  // Moves the open texts of another folder here that lie in this one, or all.
  void TakeTexts(LspFolder& other, bool all);

  // The text that the next questions are about. One that isn't open counts as such until
  // ClearActive().
  void SetActive(LspText& text);
  void ClearActive() { passing = nullptr; }

  const std::string root;  // without a slash at the end
  Project project;
  ProjectSources sources;
  Completion completion;

 private:
  std::string ActiveFile() override { return active; }
  std::vector<EditorText*> OpenTexts() override;
  void AppendOutput(std::string_view text) override;

  void OpenSources();
  void FollowIncludes(const std::vector<std::string>& folders);
  void AddFile(const std::string& path);

  std::function<void(const std::string&)> log;
  std::map<std::string, std::unique_ptr<LspText>> texts;  // by path
  LspText* passing = nullptr;                             // an active text that isn't open
  std::string active;
  bool isOpened = false;
  bool takesNewFiles = false;  // no project file tells which files belong to it
};

}  // namespace zendry
