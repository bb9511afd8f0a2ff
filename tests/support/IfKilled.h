#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

#include "FileText.h"
#include "rescue/TextRescue.h"

namespace test {

// The number of a process that has ended.
inline pid_t EndedProcess() {
  const pid_t child = fork();
  if (child == 0) _exit(0);
  waitpid(child, nullptr, 0);
  return child;
}

// The texts that the next start would find if this program were killed now.
//
//   editor.TickRescue(later);
//   EXPECT_EQ(test::TextsIfKilled().at(0).content, editor.GetText());
inline std::vector<zendry::RescuedText> TextsIfKilled() {
  namespace fs = std::filesystem;
  static const pid_t ended = EndedProcess();
  const std::string ours = "text-" + std::to_string(getpid()) + ".";
  const std::string theirs = "text-" + std::to_string(ended) + ".";
  const fs::path folder = mavro::RescueFolder();
  if (folder.empty()) return {};
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(folder))
    if (entry.path().filename().string().starts_with(ours))
      names.push_back(entry.path().filename().string().substr(ours.size()));
  for (const std::string& name : names)
    fs::copy_file(folder / (ours + name), folder / (theirs + name));
  std::vector<zendry::RescuedText> found = zendry::FindRescuedTexts();
  for (const std::string& name : names) fs::remove(folder / (theirs + name));
  return found;
}

}  // namespace test
