#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "lsp/LspFolder.h"
#include "lsp/LspJson.h"
#include "lsp/LspText.h"

namespace zendry {

// A language server that answers with what the window would show: completion, signatures, hover,
// places and symbols. It takes whole messages and gives whole messages; it never fails.
//
// Requests wait in a queue, so that one that the client takes back isn't answered for nothing.
class LspServer {
 public:
  // `send` gets each message of the server.
  LspServer(std::string itsInstallFolder, std::string itsVersion,
            std::function<void(const std::string&)> itsSend);

  // Takes a message of the client.
  void Receive(std::string_view body);
  // Handles the first message that waits; false if there is none.
  bool Step();
  size_t Waiting() const { return queue.size(); }

  bool HasEnded() const { return hasEnded; }
  // Of the program: 0 after a shutdown and the end that follows it.
  int ExitStatus() const { return hasEnded && state == State::cShutDown ? 0 : 1; }

 private:
  enum class State { cFresh, cRunning, cShutDown };

  // An answer or an error.
  struct Answer {
    Json result = {};
    int error = 0;
    std::string text = {};
  };
  using Handler = Answer (LspServer::*)(const Json& params);
  using Listener = void (LspServer::*)(const Json& params);
  struct RequestRow {
    std::string_view method;
    Handler handler;
  };
  struct NotificationRow {
    std::string_view method;
    Listener listener;
  };
  static const RequestRow cRequests[];
  static const NotificationRow cNotifications[];

  void Handle(const Json& message);
  void HandleNotification(const std::string& method, const Json& params);
  Answer AnswerTo(const std::string& method, const Json& params);
  void Reply(const Json& id, const Answer& answer);
  void Send(Json message);
  void LogToClient(const std::string& text);
  void TakeBack(const Json& params);

  Answer Initialize(const Json& params);
  Answer ShutDown(const Json& params);
  Answer Complete(const Json& params);
  Answer Signature(const Json& params);
  Answer Hover(const Json& params);
  Answer Definition(const Json& params);
  Answer Declaration(const Json& params);
  Answer SymbolsOfText(const Json& params);
  Answer SymbolsOfFolders(const Json& params);

  void Begin(const Json& params);
  void Open(const Json& params);
  void Change(const Json& params);
  void Saved(const Json& params);
  void Close(const Json& params);
  void FilesChanged(const Json& params);
  void FoldersChanged(const Json& params);

  void AddFolder(const std::string& root);
  void RemoveFolder(const std::string& root);
  LspFolder& FolderOf(const std::string& path);
  LspText* OpenTextOf(const Json& params);
  template <class Ask>
  Answer AskAt(const Json& params, Ask ask);

  const std::string installFolder;
  const std::string version;
  const std::function<void(const std::string&)> send;
  std::deque<Json> queue;
  State state = State::cFresh;
  bool hasEnded = false;
  LspColumns columns = LspColumns::cUtf16;
  bool nestsSymbols = false;
  // The last one has no root and takes what lies in no other.
  std::vector<std::unique_ptr<LspFolder>> folders;
};

}  // namespace zendry
