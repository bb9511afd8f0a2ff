#include "wizards/Repository.h"

#include <algorithm>
#include <filesystem>

#include "base/Paths.h"

namespace zendry {

namespace {

namespace fs = std::filesystem;

constexpr size_t cShortestLine = 3;
constexpr int cDeepest = 64;

// Takes the next line without its end.
std::string_view TakeLine(std::string_view& text) {
  const size_t end = std::min(text.find('\n'), text.size());
  std::string_view line = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

}  // namespace

std::string RepositoryItems::DemoFolder(int index) const {
  const bool exists = index >= 0 && static_cast<size_t>(index) < demos.size();
  return exists ? demos[static_cast<size_t>(index)].folder : "";
}

bool StaysInside(std::string_view folder) {
  if (folder.empty() || IsAbsolutePath(folder)) return false;
  if (folder.find_first_of(std::string_view("\\\0", 2)) != std::string_view::npos) return false;
  for (const fs::path& part : fs::path(folder))
    if (part == ".." || part == ".") return false;
  return true;
}

RepositoryItems ReadRepositoryItems(std::string_view text) {
  RepositoryItems items;
  bool isTemplate = true;
  while (!text.empty()) {
    const std::string_view line = TakeLine(text);
    if (line.size() < cShortestLine) continue;
    if (line.starts_with("#@")) {
      items.demoTitles.emplace_back(line.substr(2));
      continue;
    }
    if (line[0] == '#') {
      isTemplate = line[1] == 't';
      continue;
    }
    const size_t equal = line.find('=');
    if (equal == std::string_view::npos) continue;
    // The place in the list counts, so that an unusable entry stays in it without its folder.
    const std::string_view folder = line.substr(0, equal);
    (isTemplate ? items.templates : items.demos)
        .push_back(
            {StaysInside(folder) ? std::string(folder) : "", std::string(line.substr(equal + 1))});
  }
  std::erase_if(items.templates, [](const auto& item) { return item.folder.empty(); });
  return items;
}

bool IsProjectName(std::string_view name) {
  return !name.empty() && std::ranges::all_of(name, [](char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'z');
  });
}

std::string ConsoleSource(bool isCpp) {
  std::string text = isCpp ? "#include<cstdlib>\n#include<iostream>\n\n\nusing namespace std;\n\n\n"
                           : "#include<stdio.h>\n\n\n";
  return text + "int main(int argc, char *argv[])\n{\n\t\n\treturn 0;\n};\n";
}

std::string FormResource() {
  return "#include \"mavro.rc\"\n\n\n//- Icon -\n//IDI_MAIN ICON \"mavro.ico\"\n\n\n"
         "//- Toolbar -\n\n//IDC_MAINTOOLBAR BITMAP \"toolbar.bmp\" \n\n";
}

mavro::FileResult MakeFolders(const std::string& path) {
  std::error_code error;
  fs::create_directories(path, error);
  if (!error && fs::is_directory(path, error)) return {};
  return {path + ": " + (error ? error.message() : "is no folder")};
}

namespace {

class FolderCopier {
 public:
  FolderCopier(const std::string& from, const std::string& itsProject,
               const std::vector<std::string>& itsRenamed,
               const std::function<bool(const std::string& path)>& asks)
      : root(from), projectName(itsProject), renamed(itsRenamed), mayReplace(asks) {}

  // False after a failure.
  bool Copy(const fs::path& source, const fs::path& target, int depth) {
    const mavro::FileResult made = MakeFolders(target.string());
    if (!made.Ok()) return Fail(made.error);
    if (depth > cDeepest) return Fail(source.string() + ": too many folders in each other");
    std::error_code error;
    std::vector<fs::path> entries;
    fs::directory_iterator each(source, error);
    for (; !error && each != fs::directory_iterator(); each.increment(error))
      entries.push_back(each->path());
    if (error) return Fail(source.string() + ": " + error.message());
    std::ranges::sort(entries);
    for (const fs::path& entry : entries)
      if (!CopyEntry(entry, target, depth)) return false;
    return true;
  }

  FolderCopy copy;

 private:
  bool Fail(const std::string& why) {
    copy.error = why;
    return false;
  }

  // A link that leads nowhere, or out of the folder, is not part of the project.
  bool LeadsOut(const fs::path& path) const {
    std::error_code error;
    const fs::path real = fs::canonical(path, error);
    if (error) return true;
    const fs::path seen = real.lexically_relative(root);
    return seen.empty() || *seen.begin() == "..";
  }

  std::string NewName(const std::string& name, bool isTop) const {
    if (name.starts_with("_.")) return projectName + name.substr(1);
    const bool isMeant = isTop && std::ranges::find(renamed, name) != renamed.end();
    return isMeant ? projectName + fs::path(name).extension().string() : name;
  }

  bool CopyEntry(const fs::path& entry, const fs::path& target, int depth) {
    const std::string name = entry.filename().string();
    std::error_code error;
    const fs::file_status status = fs::status(entry, error);
    const bool isFolder = fs::is_directory(status);
    const bool isLink = fs::is_symlink(entry, error);
    if ((!isFolder && !fs::is_regular_file(status)) || (isLink && (isFolder || LeadsOut(entry)))) {
      copy.passedOver.push_back(entry.string());
      return true;
    }
    const fs::path goal = target / NewName(name, depth == 0);
    return isFolder ? Copy(entry, goal, depth + 1) : CopyFile(entry, goal.string());
  }

  bool CopyFile(const fs::path& source, const std::string& goal) {
    const mavro::FileText content = mavro::ReadFileText(source.string());
    if (!content.Ok()) return Fail(content.error);
    std::error_code error;
    if (fs::symlink_status(goal, error).type() != fs::file_type::not_found) {
      const mavro::FileText old = mavro::ReadFileText(goal);
      if (old.Ok() && old.text == content.text) return true;
      if (!mayReplace || !mayReplace(goal)) {
        copy.wasRefused = true;
        return Fail(goal + ": is there already");
      }
    }
    const mavro::FileResult saved = mavro::SaveFileText(goal, content.text);
    if (!saved.Ok()) return Fail(saved.error);
    copy.copied.push_back(goal);
    const fs::perms rights = fs::status(source, error).permissions();
    if (!error) fs::permissions(goal, rights & fs::perms::all, error);
    return true;
  }

  const fs::path root;
  const std::string& projectName;
  const std::vector<std::string>& renamed;
  const std::function<bool(const std::string& path)>& mayReplace;
};

}  // namespace

FolderCopy CopyFolder(const std::string& target, const std::string& source,
                      const std::string& projectName, const std::vector<std::string>& renamed,
                      const std::function<bool(const std::string& path)>& mayReplace) {
  std::error_code error;
  FolderCopy failed;
  const fs::path from = fs::canonical(source, error);
  if (error || !fs::is_directory(from, error)) {
    failed.error = source + ": " + (error ? error.message() : "is no folder");
    return failed;
  }
  // A copy inside of what is copied would never end.
  const fs::path to = fs::weakly_canonical(AbsolutePath(target), error);
  const fs::path seen = to.lexically_relative(from);
  if (!seen.empty() && *seen.begin() != "..") {
    failed.error = target + ": lies in the folder that is copied";
    return failed;
  }
  FolderCopier copier(from, projectName, renamed, mayReplace);
  copier.Copy(from, to, 0);
  return std::move(copier.copy);
}

}  // namespace zendry
