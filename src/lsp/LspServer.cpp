#include "lsp/LspServer.h"

#include <algorithm>

#include "FileText.h"
#include "base/Paths.h"
#include "lsp/LspAnswers.h"
#include "lsp/LspSources.h"
#include "lsp/LspUri.h"

namespace zendry {

namespace {

// The error numbers of the protocol.
enum ErrorNumber {
  cParseError = -32700,
  cInvalidRequest = -32600,
  cMethodNotFound = -32601,
  cInvalidParams = -32602,
  cNotInitialized = -32002,
  cRequestCancelled = -32800
};

constexpr int cChangesByRanges = 2;
constexpr int cLogMessage = 4;
constexpr int cTypedTrigger = 2;
constexpr size_t cLongestText = size_t{64} << 20;  // bytes

LspPlace PlaceAt(const Json& value, JsonPath path) {
  const Json* place = FindJson(value, path);
  if (!place) return {};
  return {NumberAt(*place, {"line"}), NumberAt(*place, {"character"})};
}

bool IsId(const Json& id) {
  return id.is_number() || id.is_string();
}

// The path of a client's folder, without a slash at the end.
std::string RootOf(const std::string& uri) {
  std::string path = PathOfUri(uri);
  while (path.size() > 1 && path.ends_with('/')) path.pop_back();
  return path;
}

// The folders that a client begins with; the newest way to name them counts.
std::vector<std::string> RootsOf(const Json& params) {
  std::vector<std::string> roots;
  for (const Json& folder : ListAt(params, {"workspaceFolders"}))
    roots.push_back(RootOf(TextAt(folder, {"uri"})));
  if (roots.empty()) roots.push_back(RootOf(TextAt(params, {"rootUri"})));
  if (roots.front().empty()) roots.front() = TextAt(params, {"rootPath"});
  return roots;
}

bool OffersUtf8(const Json& params) {
  const Json::array_t& offered = ListAt(params, {"capabilities", "general", "positionEncodings"});
  return std::find(offered.begin(), offered.end(), "utf-8") != offered.end();
}

Json Capabilities(LspColumns columns) {
  return {
      {"positionEncoding", columns == LspColumns::cUtf8 ? "utf-8" : "utf-16"},
      {"textDocumentSync",
       {{"openClose", true}, {"change", cChangesByRanges}, {"save", {{"includeText", false}}}}},
      {"completionProvider", {{"triggerCharacters", {".", ">", ":"}}, {"resolveProvider", false}}},
      {"signatureHelpProvider", {{"triggerCharacters", {"(", ","}}}},
      {"hoverProvider", true},
      {"definitionProvider", true},
      {"declarationProvider", true},
      {"documentSymbolProvider", true},
      {"workspaceSymbolProvider", true},
      {"workspace", {{"workspaceFolders", {{"supported", true}, {"changeNotifications", true}}}}}};
}

}  // namespace

const LspServer::RequestRow LspServer::cRequests[] = {
    {"shutdown", &LspServer::ShutDown},
    {"textDocument/completion", &LspServer::Complete},
    {"textDocument/signatureHelp", &LspServer::Signature},
    {"textDocument/hover", &LspServer::Hover},
    {"textDocument/definition", &LspServer::Definition},
    {"textDocument/declaration", &LspServer::Declaration},
    {"textDocument/documentSymbol", &LspServer::SymbolsOfText},
    {"workspace/symbol", &LspServer::SymbolsOfFolders},
};

const LspServer::NotificationRow LspServer::cNotifications[] = {
    {"initialized", &LspServer::Begin},
    {"textDocument/didOpen", &LspServer::Open},
    {"textDocument/didChange", &LspServer::Change},
    {"textDocument/didSave", &LspServer::Saved},
    {"textDocument/didClose", &LspServer::Close},
    {"workspace/didChangeWatchedFiles", &LspServer::FilesChanged},
    {"workspace/didChangeWorkspaceFolders", &LspServer::FoldersChanged},
};

LspServer::LspServer(std::string itsInstallFolder, std::string itsVersion,
                     std::function<void(const std::string&)> itsSend)
    : installFolder(std::move(itsInstallFolder)),
      version(std::move(itsVersion)),
      send(std::move(itsSend)) {
  AddFolder("");
}

// Group: messages.

void LspServer::Receive(std::string_view body) {
  std::optional<Json> message = ParseJson(body);
  if (!message) return Reply(nullptr, {{}, cParseError, "the message is no JSON, or too deep"});
  if (!message->is_object())
    return Reply(nullptr, {{}, cInvalidRequest, "the message is no object"});
  if (TextAt(*message, {"method"}) == "$/cancelRequest") {
    if (const Json* params = FindJson(*message, {"params"})) TakeBack(*params);
    return;
  }
  queue.push_back(std::move(*message));
}

// Only a request that still waits can be taken back.
void LspServer::TakeBack(const Json& params) {
  const Json* id = FindJson(params, {"id"});
  if (!id || !IsId(*id)) return;
  const auto waits = std::find_if(queue.begin(), queue.end(), [&](const Json& message) {
    const Json* its = FindJson(message, {"id"});
    return its && *its == *id && FindJson(message, {"method"});
  });
  if (waits == queue.end()) return;
  queue.erase(waits);
  Reply(*id, {{}, cRequestCancelled, "cancelled"});
}

bool LspServer::Step() {
  if (queue.empty() || hasEnded) return false;
  const Json message = std::move(queue.front());
  queue.pop_front();
  Handle(message);
  return true;
}

void LspServer::Handle(const Json& message) {
  static const Json cNoParams = Json::object();
  const Json* id = FindJson(message, {"id"});
  const Json* method = FindJson(message, {"method"});
  const Json* params = FindJson(message, {"params"});
  if (!params) params = &cNoParams;
  if (!method && id) return;  // a response; the server asks nothing
  if (!method || !method->is_string())
    return Reply(nullptr, {{}, cInvalidRequest, "the message has no method"});
  if (!id) return HandleNotification(method->get<std::string>(), *params);
  if (!IsId(*id)) return Reply(nullptr, {{}, cInvalidRequest, "the id is no number and no text"});
  Reply(*id, AnswerTo(method->get<std::string>(), *params));
}

void LspServer::HandleNotification(const std::string& method, const Json& params) {
  if (method == "exit") hasEnded = true;
  if (state != State::cRunning) return;
  for (const auto& [name, listener] : cNotifications)
    if (name == method) return (this->*listener)(params);
}

LspServer::Answer LspServer::AnswerTo(const std::string& method, const Json& params) {
  if (state == State::cShutDown) return {{}, cInvalidRequest, "the server has been shut down"};
  if (method == "initialize") {
    if (state == State::cFresh) return Initialize(params);
    return {{}, cInvalidRequest, "the server is initialized already"};
  }
  if (state == State::cFresh) return {{}, cNotInitialized, "the server isn't initialized yet"};
  for (const auto& [name, handler] : cRequests)
    if (name == method) return (this->*handler)(params);
  return {{}, cMethodNotFound, method.substr(0, 100) + ": is not known"};
}

void LspServer::Reply(const Json& id, const Answer& answer) {
  if (answer.error == 0) return Send({{"id", id}, {"result", answer.result}});
  Send({{"id", id}, {"error", {{"code", answer.error}, {"message", answer.text}}}});
}

void LspServer::Send(Json message) {
  message["jsonrpc"] = "2.0";
  send(WriteJson(message));
}

void LspServer::LogToClient(const std::string& text) {
  Send({{"method", "window/logMessage"}, {"params", {{"type", cLogMessage}, {"message", text}}}});
}

// Group: the folders.

void LspServer::AddFolder(const std::string& root) {
  const auto isIt = [&](const auto& folder) { return folder->root == root; };
  if (std::any_of(folders.begin(), folders.end(), isIt)) return;
  auto folder = std::make_unique<LspFolder>(root, installFolder,
                                            [this](const std::string& text) { LogToClient(text); });
  for (const auto& other : folders)
    if (other->root.size() < root.size()) folder->TakeTexts(*other, false);
  // Of folders within each other the inner one comes first.
  const auto isOuter = [&](const auto& other) { return other->root.size() < root.size(); };
  folders.insert(std::find_if(folders.begin(), folders.end(), isOuter), std::move(folder));
}

void LspServer::RemoveFolder(const std::string& root) {
  const auto isIt = [&](const auto& folder) { return folder->root == root; };
  const auto found = std::find_if(folders.begin(), folders.end(), isIt);
  if (root.empty() || found == folders.end()) return;
  const std::unique_ptr<LspFolder> removed = std::move(*found);
  folders.erase(found);
  for (const auto& other : folders) other->TakeTexts(*removed, other->root.empty());
}

LspFolder& LspServer::FolderOf(const std::string& path) {
  const auto has = [&](const auto& folder) { return folder->Has(path) || folder->FindText(path); };
  const auto found = std::find_if(folders.begin(), folders.end(), has);
  return found == folders.end() ? *folders.back() : **found;
}

// Group: life.

LspServer::Answer LspServer::Initialize(const Json& params) {
  state = State::cRunning;
  if (OffersUtf8(params)) columns = LspColumns::cUtf8;
  nestsSymbols = IsTrueAt(params, {"capabilities", "textDocument", "documentSymbol",
                                   "hierarchicalDocumentSymbolSupport"});
  for (const std::string& root : RootsOf(params))
    if (IsAbsolutePath(root)) AddFolder(root);
  return {{{"capabilities", Capabilities(columns)},
           {"serverInfo", {{"name", "zendry-lsp"}, {"version", version}}}}};
}

// Reads the projects now, so that the first question needn't wait for it.
void LspServer::Begin(const Json&) {
  for (const auto& folder : folders) folder->EnsureOpen();
}

LspServer::Answer LspServer::ShutDown(const Json&) {
  state = State::cShutDown;
  return {};
}

// Group: the texts.

LspText* LspServer::OpenTextOf(const Json& params) {
  const std::string path = PathOfUri(TextAt(params, {"textDocument", "uri"}));
  return path.empty() ? nullptr : FolderOf(path).FindText(path);
}

void LspServer::Open(const Json& params) {
  const std::string uri = TextAt(params, {"textDocument", "uri"});
  std::string path = PathOfUri(uri);
  if (path.empty()) return LogToClient("only local files can be opened");
  LspFolder& folder = FolderOf(path);
  folder.OpenText(
      std::make_unique<LspText>(uri, std::move(path), TextAt(params, {"textDocument", "text"})));
}

// The changes are made one after the other; each place is one of the text after those before it.
void LspServer::Change(const Json& params) {
  LspText* text = OpenTextOf(params);
  if (!text) return LogToClient("a text that isn't open was changed");
  for (const Json& change : ListAt(params, {"contentChanges"})) {
    const std::string added = TextAt(change, {"text"});
    if (!FindJson(change, {"range"})) {
      text->ReplaceAll(added);
      continue;
    }
    const int begin = text->PositionOf(PlaceAt(change, {"range", "start"}), columns);
    const int end = text->PositionOf(PlaceAt(change, {"range", "end"}), columns);
    if (text->View().size() + added.size() > cLongestText)
      return LogToClient("a change was left out, the text is too long");
    text->Replace(std::min(begin, end), std::max(begin, end), added);
  }
}

void LspServer::Saved(const Json& params) {
  if (LspText* text = OpenTextOf(params)) text->parsed = false;
}

void LspServer::Close(const Json& params) {
  const std::string path = PathOfUri(TextAt(params, {"textDocument", "uri"}));
  if (!path.empty()) FolderOf(path).CloseText(path);
}

void LspServer::FilesChanged(const Json& params) {
  for (const Json& change : ListAt(params, {"changes"}))
    if (const std::string path = PathOfUri(TextAt(change, {"uri"})); !path.empty())
      FolderOf(path).FileChanged(path);
}

void LspServer::FoldersChanged(const Json& params) {
  for (const Json& removed : ListAt(params, {"event", "removed"}))
    RemoveFolder(RootOf(TextAt(removed, {"uri"})));
  for (const Json& added : ListAt(params, {"event", "added"}))
    if (const std::string root = RootOf(TextAt(added, {"uri"})); !root.empty()) AddFolder(root);
}

// Group: questions.

// Asks about a place of a text. One that isn't open is read from the disk.
template <class Ask>
LspServer::Answer LspServer::AskAt(const Json& params, Ask ask) {
  const std::string uri = TextAt(params, {"textDocument", "uri"});
  const std::string path = PathOfUri(uri);
  if (path.empty()) return {{}, cInvalidParams, "the address names no local file"};
  LspFolder& folder = FolderOf(path);
  std::unique_ptr<LspText> read;
  LspText* text = folder.FindText(path);
  if (!text) {
    if (!IsSourceToRead(path)) return {{}, cInvalidParams, "the text isn't open"};
    read = std::make_unique<LspText>(uri, path, mavro::ReadFileText(path).text);
    text = read.get();
  }
  folder.EnsureOpen();
  folder.SetActive(*text);
  text->SetCaret(text->PositionOf(PlaceAt(params, {"position"}), columns));
  Answer answer = {ask(LspQuestion{folder, *text, columns})};
  folder.ClearActive();
  return answer;
}

LspServer::Answer LspServer::Complete(const Json& params) {
  const bool isTyped = NumberAt(params, {"context", "triggerKind"}) == cTypedTrigger;
  return AskAt(params, [&](const LspQuestion& q) { return CompletionAnswer(q, isTyped); });
}

LspServer::Answer LspServer::Signature(const Json& params) {
  return AskAt(params, SignatureAnswer);
}

LspServer::Answer LspServer::Hover(const Json& params) {
  return AskAt(params, HoverAnswer);
}

LspServer::Answer LspServer::Definition(const Json& params) {
  return AskAt(params,
               [](const LspQuestion& q) { return TargetAnswer(q, LspTarget::cDefinition); });
}

LspServer::Answer LspServer::Declaration(const Json& params) {
  return AskAt(params,
               [](const LspQuestion& q) { return TargetAnswer(q, LspTarget::cDeclaration); });
}

LspServer::Answer LspServer::SymbolsOfText(const Json& params) {
  return AskAt(params, [&](const LspQuestion& q) { return DocumentSymbols(q, nestsSymbols); });
}

LspServer::Answer LspServer::SymbolsOfFolders(const Json& params) {
  Json found = Json::array();
  for (const auto& folder : folders) {
    folder->EnsureOpen();
    AppendWorkspaceSymbols(found, *folder, TextAt(params, {"query"}));
  }
  return {std::move(found)};
}

}  // namespace zendry
