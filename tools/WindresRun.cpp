#include "WindresRun.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <optional>
#include <string_view>

#include "FilePath.h"
#include "WindresObject.h"
#include "WindresPreprocess.h"
#include "WindresScript.h"

namespace zendry {

namespace {

constexpr uint64_t cMostBytes = uint64_t{1} << 30;  // addresses in a program reach 2 GB
constexpr std::string_view cUtf16Marks[] = {"\xFF\xFE", "\xFE\xFF"};

class Descriptor {
 public:
  Descriptor(const std::string& path, int flags, mode_t mode = 0)
      : number(open(path.c_str(), flags | O_CLOEXEC, mode)) {}
  ~Descriptor() {
    if (number >= 0) close(number);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  const int number;
};

std::string Reason() {
  return std::strerror(errno);
}

class Compilation {
 public:
  Compilation(const WindresOptions& options, const std::string& gcc) : options(options), gcc(gcc) {}

  WindresResult Run() {
    WindresResult result;
    bool mayDelete = false;
    try {
      CheckNames();
      mayDelete = true;
      const PreprocessedText script = RunPreprocessor();
      result.messages = messages + script.messages;
      if (!script.ok) throw ScriptError{""};
      const ResourceList list = ReadScript(script.text, options.input);
      if (!list.error.empty()) throw ScriptError{list.error + "\n"};
      WriteObject(list.resources);
      result.ok = true;
    } catch (const ScriptError& error) {
      result.messages += error.message;
      if (mayDelete) DeleteOutput();
    }
    return result;
  }

 private:
  [[noreturn]] static void Fail(const std::string& message) { throw ScriptError{message + "\n"}; }
  [[noreturn]] static void FailAt(const Place& place, const std::string& message) {
    Fail(AtPlace(place, message));
  }

  void CheckNames() const {
    struct stat script, object;
    if (stat(options.input.c_str(), &script) != 0)
      Fail("windres: " + options.input + ": " + Reason());
    if (stat(options.output.c_str(), &object) == 0 && script.st_dev == object.st_dev &&
        script.st_ino == object.st_ino)
      Fail("windres: " + options.output + ": the object would overwrite the script");
    if (!S_ISREG(script.st_mode)) Fail("windres: " + options.input + ": it is no regular file");
    const Descriptor file(options.input, O_RDONLY);
    char start[2] = {};
    if (read(file.number, start, sizeof start) < 0)
      Fail("windres: " + options.input + ": " + Reason());
    for (std::string_view mark : cUtf16Marks)
      if (mark == std::string_view(start, sizeof start))
        FailAt({options.input, 1}, "the script is UTF-16; scripts are UTF-8 here");
  }

  PreprocessedText RunPreprocessor() {
    // Undefines names that gcc defines and that a script may use as ids.
    std::vector<std::string> command = options.preprocessor;
    if (command.empty()) command = {gcc, "-E", "-xc", "-Ulinux", "-Uunix"};
    command.push_back("-DRC_INVOKED");
    for (const std::string& folder : options.includeFolders) command.push_back("-I" + folder);
    for (const std::string& macro : options.defines) command.push_back("-D" + macro);
    for (const std::string& macro : options.undefines) command.push_back("-U" + macro);
    for (const std::string& argument : options.preprocessorArguments) command.push_back(argument);
    command.push_back(options.input[0] == '-' ? "./" + options.input : options.input);
    if (options.isVerbose) {
      for (const std::string& argument : command) messages += argument + " ";
      messages.back() = '\n';
    }
    return Preprocess(command);
  }

  // A resource's file is in the folder of the script that names it, else in one of the search
  // folders.
  std::string Locate(const Resource& resource) const {
    if (resource.file[0] == '/') return resource.file;
    std::string path = mavro::FolderOf(resource.place.file) + resource.file;
    for (size_t i = 0; access(path.c_str(), F_OK) != 0; ++i) {
      if (i == options.includeFolders.size()) return resource.file;
      path = options.includeFolders[i] + "/" + resource.file;
    }
    return path;
  }

  // Replaces file names by paths; answers the size of each content.
  std::vector<uint64_t> Measure(std::vector<Resource>& resources) const {
    std::vector<uint64_t> sizes;
    uint64_t total = 0;
    for (Resource& resource : resources) {
      sizes.push_back(resource.bytes.size());
      if (!resource.file.empty()) {
        const std::string path = Locate(resource);
        struct stat file;
        if (stat(path.c_str(), &file) != 0)
          FailAt(resource.place, "can't read " + resource.file + ": " + Reason());
        if (!S_ISREG(file.st_mode)) FailAt(resource.place, resource.file + " is no regular file");
        resource.file = path;
        sizes.back() = static_cast<uint64_t>(file.st_size);
      }
      total += sizes.back();
      if (total > cMostBytes) FailAt(resource.place, "the resources are larger than 1 GB");
    }
    return sizes;
  }

  void WriteObject(std::vector<Resource> resources) const {
    const std::vector<uint64_t> sizes = Measure(resources);
    const std::vector<ObjectPiece> pieces = LayOutObject(resources, sizes);
    struct stat there;
    const bool isDevice = stat(options.output.c_str(), &there) == 0 && !S_ISREG(there.st_mode);
    const std::string path =
        isDevice ? options.output : options.output + "." + std::to_string(getpid()) + ".tmp";
    const int flags = O_WRONLY | (isDevice ? 0 : O_CREAT | O_EXCL);
    const Descriptor file(path, flags, 0666);
    if (file.number < 0) Fail("windres: " + options.output + ": " + Reason());
    try {
      for (const ObjectPiece& piece : pieces) WritePiece(file.number, piece, resources, sizes);
      if (!isDevice && rename(path.c_str(), options.output.c_str()) != 0) FailToWrite();
    } catch (const ScriptError&) {
      if (!isDevice) unlink(path.c_str());
      throw;
    }
  }

  [[noreturn]] void FailToWrite() const { Fail("windres: " + options.output + ": " + Reason()); }

  void WriteBytes(int file, std::string_view bytes) const {
    while (!bytes.empty()) {
      const ssize_t count = write(file, bytes.data(), bytes.size());
      if (count < 0 && errno == EINTR) continue;
      if (count <= 0) FailToWrite();
      bytes.remove_prefix(static_cast<size_t>(count));
    }
  }

  void WritePiece(int file, const ObjectPiece& piece, const std::vector<Resource>& resources,
                  const std::vector<uint64_t>& sizes) const {
    if (!piece.content) return WriteBytes(file, piece.bytes);
    const Resource& resource = *piece.content;
    uint64_t left = sizes[static_cast<size_t>(&resource - resources.data())];
    const Descriptor content(resource.file, O_RDONLY);
    char part[1 << 16];
    while (content.number >= 0) {
      const ssize_t count = read(content.number, part, sizeof part);
      if (count < 0 && errno == EINTR) continue;
      if (count < 0) break;
      if (static_cast<uint64_t>(count) > left || (count == 0 && left > 0))
        FailAt(resource.place, resource.file + " changed while it was read");
      if (count == 0) return;
      WriteBytes(file, {part, static_cast<size_t>(count)});
      left -= static_cast<uint64_t>(count);
    }
    FailAt(resource.place, "can't read " + resource.file + ": " + Reason());
  }

  void DeleteOutput() const {
    struct stat info;
    if (lstat(options.output.c_str(), &info) == 0 && S_ISREG(info.st_mode))
      unlink(options.output.c_str());
  }

  const WindresOptions& options;
  const std::string& gcc;
  std::string messages;
};

}  // namespace

WindresResult RunWindres(const WindresOptions& options, const std::string& gcc) {
  return Compilation(options, gcc).Run();
}

}  // namespace zendry
