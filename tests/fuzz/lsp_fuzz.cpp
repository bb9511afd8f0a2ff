#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "FileText.h"
#include "lsp/LspFrames.h"
#include "lsp/LspServer.h"

// A stream of messages to a server that works in a folder with one source. Bytes without a header
// are a message each line. Every answer must be a message again.

namespace {

// A folder of this process, removed at its end.
struct Folder {
  Folder() {
    if (!mkdtemp(path.data())) std::abort();
    std::ofstream(path + "/a.cpp") << "struct A { int x; A* next; };\nvoid f(A a) { a. }\n";
  }
  ~Folder() { std::filesystem::remove_all(path); }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;

  std::string path = (std::filesystem::temp_directory_path() / "lsp-fuzz-XXXXXX").string();
};

constexpr std::string_view cFolderSign = "@@";  // stands for the folder's path in an input

std::string WithFolder(std::string_view input, const std::string& folder) {
  std::string text(input);
  for (size_t at = text.find(cFolderSign); at != text.npos; at = text.find(cFolderSign, at)) {
    text.replace(at, cFolderSign.size(), folder);
    at += folder.size();
  }
  return text;
}

void MustBeMessage(const std::string& body) {
  zendry::LspFrames frames;
  frames.Feed(zendry::LspFrame(body));
  if (frames.Next() != body) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const Folder folder;
  const std::string input =
      WithFolder(std::string_view(reinterpret_cast<const char*>(data), size), folder.path);
  zendry::LspServer server("/nowhere", "1", MustBeMessage);
  server.Receive(R"({"id": 0, "method": "initialize", "params": {"rootUri": "file://)" +
                 folder.path + "\"}}");
  zendry::LspFrames frames;
  frames.Feed(input);
  while (const auto body = frames.Next()) server.Receive(*body);
  for (size_t at = 0; at < input.size();) {
    const size_t end = std::min(input.find('\n', at), input.size());
    server.Receive(std::string_view(input).substr(at, end - at));
    at = end + 1;
  }
  while (server.Step()) continue;
  return 0;
}
