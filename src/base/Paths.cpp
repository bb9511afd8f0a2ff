#include "base/Paths.h"

#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "AsciiCase.h"
#include "Assert.h"
#include "FilePath.h"

namespace zendry {

namespace {

// The "." that an extension begins with.
size_t ExtensionDot(std::string_view path) {
  const size_t dot = path.rfind('.');
  return dot == 0 ? std::string_view::npos : dot;
}

enum class Collapse { cDone, cTookOne, cNoFolderBefore };

// Takes out the first "/../" after `from` with the component before it and sets `from` to its
// place: no new "/../" can have arisen before that place.
Collapse CollapseOne(std::string& path, size_t& from) {
  constexpr std::string_view cUp = "/../";
  const size_t up = path.find(cUp, std::max<size_t>(from, 1));
  if (up == std::string::npos) return Collapse::cDone;
  const size_t slash = path.rfind('/', up - 1);
  if (slash == std::string::npos) return Collapse::cNoFolderBefore;
  path.erase(slash, up + cUp.size() - 1 - slash);
  from = slash;
  return Collapse::cTookOne;
}

// False when it stopped at a "/../" without a "/" before it.
bool CollapseAll(std::string& path) {
  std::replace(path.begin(), path.end(), '\\', '/');
  size_t from = 0;
  Collapse step = Collapse::cTookOne;
  while (step == Collapse::cTookOne) step = CollapseOne(path, from);
  return step == Collapse::cDone;
}

}  // namespace

void NormalizePath(std::string& path) {
  const int ix = CollapseAll(path) ? 0 : -1;
  // clang-format off
  MAVRO_ASSERT(ix>-1);
  // clang-format on
}

bool CanNormalize(std::string_view path) {
  std::string copy(path);
  return CollapseAll(copy);
}

std::string TidyPath(std::string path) {
  if (CanNormalize(path))
    NormalizePath(path);
  else
    std::replace(path.begin(), path.end(), '\\', '/');
  return path;
}

bool IsAbsolutePath(std::string_view path) {
  return path.starts_with('/') || (path.size() > 1 && path[1] == ':');
}

std::string AbsolutePath(const std::string& path) {
  if (IsAbsolutePath(path)) return path;
  std::error_code error;
  std::string full = std::filesystem::current_path(error).string();
  if (error) return path;
  if (!full.ends_with('/')) full += '/';
  std::string_view rest = path;
  while (rest.starts_with("./")) rest.remove_prefix(2);
  return full.append(rest);
}

std::string ChangeExtension(std::string_view path, std::string_view extension) {
  const size_t dot = ExtensionDot(path);
  if (dot == std::string_view::npos) return std::string(path);
  return std::string(path.substr(0, dot + 1)).append(extension);
}

std::string BaseName(std::string_view path) {
  if (path.empty()) return "Noname";
  const size_t slash = path.rfind('/');
  if (slash == std::string_view::npos || slash == 0) return std::string(path);
  return std::string(path.substr(slash + 1));
}

std::string MakeRelativePath(std::string_view path, std::string_view folder) {
  // Pass 1: find the end of the part that both share.
  const size_t shorter = std::min(path.size(), folder.size());
  size_t k = 0;
  while (k < shorter && mavro::AsciiUpper(path[k]) == mavro::AsciiUpper(folder[k])) ++k;
  // Pass 2: back to the "/" that ends the last folder they share. "/a/bc" doesn't share "/a/b".
  const auto endsFolder = [&](size_t at) {
    return at < path.size() && path[at] == '/' && (at == folder.size() || folder[at] == '/');
  };
  while (k > 0 && !endsFolder(k)) --k;
  if (k == 0) return std::string(path);
  // Pass 3: up from `folder` to there, then down.
  std::string relative;
  if (k != folder.size())
    for (size_t i = k; i < folder.size(); ++i)
      if (folder[i] == '/') relative += "../";
  return relative.append(path.substr(k + 1));
}

std::string FindProgram(const std::string& program) {
  const auto isProgram = [](const std::string& file) {
    return access(file.c_str(), X_OK) == 0 && !mavro::IsFolder(file);
  };
  if (program.find('/') != std::string::npos) return isProgram(program) ? program : "";
  const char* variable = std::getenv("PATH");
  std::string_view folders = variable ? variable : "";
  while (!folders.empty()) {
    const size_t end = std::min(folders.find(':'), folders.size());
    const std::string file = std::string(folders.substr(0, end)) + "/" + program;
    if (isProgram(file)) return file;
    folders.remove_prefix(std::min(end + 1, folders.size()));
  }
  return "";
}

bool IsOnPath(const std::string& program) {
  return !FindProgram(program).empty();
}

}  // namespace zendry
