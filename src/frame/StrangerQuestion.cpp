#include "frame/StrangerQuestion.h"

#include <algorithm>

#include "SystemDialogs.h"
#include "base/ControlBytes.h"
#include "build/ProjectDangers.h"
#include "config/IdeSession.h"
#include "config/TrustedKeys.h"
#include "project/Project.h"

namespace zendry {

namespace {

constexpr size_t cMostLines = 20;
constexpr size_t cMostLetters = 120;

std::string Listed(const std::vector<ProjectDanger>& dangers) {
  std::string list;
  for (size_t i = 0; i < std::min(dangers.size(), cMostLines); ++i) {
    std::string text = MarkControlBytes(dangers[i].text);
    if (text.size() > cMostLetters) text = text.substr(0, cMostLetters) + "...";
    list += dangers[i].place + ":  " + text + "\n";
  }
  if (dangers.size() > cMostLines)
    list += "and " + std::to_string(dangers.size() - cMostLines) + " more\n";
  return list;
}

std::vector<std::string> KeysOf(const std::vector<ProjectDanger>& dangers) {
  std::vector<std::string> keys;
  for (const ProjectDanger& danger : dangers) keys.push_back(danger.key);
  return keys;
}

void Trust(const std::vector<std::string>& keys) {
  if (keys.empty()) return;
  if (const auto kept = TrustedKeys(theIdeSession.folder).Add(keys); !kept.Ok())
    theIdeSession.NoteError(kept.error);
}

}  // namespace

bool MayBuild(const Project& project) {
  std::vector<ProjectDanger> dangers = FindDangers(project);
  if (dangers.empty()) return true;
  const TrustedKeys trusted(theIdeSession.folder);
  std::erase_if(dangers, [&](const ProjectDanger& danger) { return trusted.Has(danger.key); });
  if (dangers.empty()) return true;
  const bool isWanted =
      mavro::ConfirmLoss(project.GetFullPath(project.name) +
                         "\n\ncan run or write something by itself when it is built or run:\n\n" +
                         Listed(dangers) + "\nBuild anyway?");
  if (isWanted) Trust(KeysOf(dangers));
  return isWanted;
}

OwnDangers::OwnDangers(const Project& its) : project(its), before(KeysOf(FindDangers(its))) {}

OwnDangers::~OwnDangers() {
  std::vector<std::string> own = KeysOf(FindDangers(project));
  std::erase_if(own, [this](const std::string& key) {
    return std::find(before.begin(), before.end(), key) != before.end();
  });
  Trust(own);
}

}  // namespace zendry
