#pragma once

#include <string>
#include <vector>

#include "lsp/LspJson.h"
#include "lsp/LspServer.h"
#include "lsp/LspUri.h"

namespace test {

// A client that speaks to a server in this process.
//
//   test::LspTalk talk(folder.Path());
//   talk.Open("/p/a.cpp", "struct A { int x; };\nvoid f(A a) { a. }");
//   talk.Names("/p/a.cpp", 1, 16);   // "x"
class LspTalk {
 public:
  using Json = zendry::Json;

  // An empty root doesn't initialize the server.
  explicit LspTalk(const std::string& root = "", Json capabilities = Json::object())
      : server("/nowhere", "1", [this](const std::string& body) { Take(body); }) {
    if (root.empty()) return;
    Ask("initialize",
        {{"rootUri", zendry::UriOfPath(root)}, {"capabilities", std::move(capabilities)}});
    Tell("initialized", Json::object());
  }

  void Tell(const std::string& method, Json params) {
    Send({{"method", method}, {"params", std::move(params)}});
  }
  // The whole answer.
  Json Ask(const std::string& method, Json params) {
    Send({{"id", ++lastId}, {"method", method}, {"params", std::move(params)}});
    return answers.empty() ? Json() : answers.back();
  }
  Json ResultOf(const std::string& method, Json params) {
    return Ask(method, std::move(params)).value("result", Json());
  }
  int ErrorOf(const std::string& method, Json params = Json::object()) {
    const Json answer = Ask(method, std::move(params));
    return zendry::NumberAt(answer, {"error", "code"});
  }
  void Send(const Json& message) { SendText(message.dump()); }
  void SendText(const std::string& body) {
    server.Receive(body);
    while (server.Step()) continue;
  }

  void Open(const std::string& path, const std::string& text) {
    Tell("textDocument/didOpen",
         {{"textDocument", {{"uri", zendry::UriOfPath(path)}, {"version", 1}, {"text", text}}}});
  }
  static Json At(const std::string& path, int line, int character) {
    return {{"textDocument", {{"uri", zendry::UriOfPath(path)}}},
            {"position", {{"line", line}, {"character", character}}}};
  }
  // The names of the list at a place, separated by blanks.
  std::string Names(const std::string& path, int line, int character) {
    const Json result = ResultOf("textDocument/completion", At(path, line, character));
    std::string names;
    for (const Json& item : zendry::ListAt(result, {"items"}))
      names += (names.empty() ? "" : " ") + zendry::TextAt(item, {"label"});
    return names;
  }

  zendry::LspServer server;
  std::vector<Json> answers;  // with an id, the last one last
  std::vector<Json> notes;    // without one

 private:
  void Take(const std::string& body) {
    Json message = Json::parse(body);
    (message.contains("id") ? answers : notes).push_back(std::move(message));
  }

  int lastId = 0;
};

}  // namespace test
