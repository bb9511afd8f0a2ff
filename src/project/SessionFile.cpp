#include "project/SessionFile.h"

#include <sys/stat.h>

#include <algorithm>

#include "base/Paths.h"
#include "base/XmlTag.h"
#include "project/Project.h"

namespace zendry {

namespace {

constexpr TagLabels cLabels = {"name", "opt", "p", "value"};

void WriteTag(std::string& text, int depth, std::string_view element, std::string_view path,
              std::string_view option, int id) {
  XmlTag tag(cLabels);
  tag.begin(element, depth, XmlTag::Ends::cAtOnce);
  tag.set(path, option, "", "", id);
  if (tag.ReadsBack()) tag.write(text);
}

bool IsLink(const std::string& path) {
  struct stat status;
  return lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode);
}

SessionState CurrentState(const Project& project, FilesShell& shell) {
  SessionState state;
  state.mode = project.mode;
  for (const OpenFile& file : shell.OpenFiles())
    state.files.push_back({project.RelativeIfSame(file.path), file.line});
  state.active = shell.ActiveFile();
  return state;
}

void OpenStored(const SessionStep& step, const Project& project, FilesShell& shell) {
  // A NUL would end the name for the system: the file would be open under two names.
  if (step.path.find('\0') != std::string::npos) return;
  const std::string path = TidyPath(project.GetFullPath(step.path));
  const int line = std::max(step.line, 0);
  if (shell.MayReopen(path, line) && mavro::FileExists(path)) shell.OpenFileAt(path, line);
}

// Only the first letter of an element's name counts.
void ReadElement(const XmlTag& tag, std::vector<SessionStep>& steps) {
  switch (tag.element.front()) {
    case 'f':
      steps.push_back({SessionStep::cOpenFile, tag.n, tag.id, 0});
      break;
    case 'm':
      steps.push_back({SessionStep::cSetMode, "", 0, tag.o == "dbg" ? cDebug : cRelease});
      break;
    case 'a':
      steps.push_back({SessionStep::cActivate, tag.n, 0, 0});
      break;
    default:
      break;
  }
}

mavro::FileResult KeepDamaged(const std::string& path, const std::string& text) {
  const std::string beside = path + ".bad";
  if (IsLink(beside)) return {beside + ": is a link. The session is not kept."};
  return mavro::SaveFileText(beside, text);
}

}  // namespace

std::string SessionText(const SessionState& state) {
  std::string text = "<state>\n";
  WriteTag(text, 1, "mode", "", state.mode == cDebug ? "dbg" : "rel", -1);
  text += "\t<open>\n";
  for (const OpenFile& file : state.files) WriteTag(text, 2, "file", file.path, "", file.line);
  if (!state.active.empty()) WriteTag(text, 2, "active", state.active, "", -1);
  text += "\t</open>\n</state>\n";
  return text;
}

// A full disk can leave an empty file; it holds nothing to keep.
SessionReading ReadSessionText(std::string_view text) {
  SessionReading reading;
  const FittingTags tags = PassOverTooLong(text);
  bool isComplete = text.empty();
  TagSource source{tags.text};
  for (XmlTag tag; tag.read(&source);) {
    isComplete |= tag.element == "/state";
    ReadElement(tag, reading.steps);
  }
  if (!tags.passedOver.empty())
    reading.damage = "left out is " + TooLongWords(tags);
  else if (!isComplete || text.find('\0') != std::string_view::npos)
    reading.damage = "the session is damaged";
  return reading;
}

mavro::FileResult LoadSession(const std::string& path, Project& project, FilesShell& shell) {
  const mavro::FileText file = mavro::ReadFileText(path);
  if (file.isMissing) return {};
  if (!file.Ok()) return file;
  const SessionReading reading = ReadSessionText(file.text);
  for (const SessionStep& step : reading.steps) {
    if (step.kind == SessionStep::cOpenFile)
      OpenStored(step, project, shell);
    else if (step.kind == SessionStep::cSetMode)
      project.SetMode(step.mode);
    else
      shell.ActivateFile(step.path);
  }
  return {"", reading.damage.empty() ? "" : path + ": " + reading.damage};
}

mavro::FileResult SaveSession(const std::string& path, const Project& project, FilesShell& shell) {
  if (path.empty()) return {};
  if (IsLink(path)) return {path + ": is a link. The session is not kept."};
  const std::string text = SessionText(CurrentState(project, shell));
  const mavro::FileText old = mavro::ReadFileText(path);
  if (old.Ok() && old.text == text) return {};
  if (!old.Ok() && !old.isMissing) return {old.error + ". The session is not kept."};
  if (old.Ok() && !ReadSessionText(old.text).damage.empty()) {
    const mavro::FileResult kept = KeepDamaged(path, old.text);
    if (!kept.Ok()) return kept;
  }
  return mavro::SaveFileText(path, text);
}

}  // namespace zendry
