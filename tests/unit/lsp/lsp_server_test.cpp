#include "lsp/LspServer.h"

#include <gtest/gtest.h>

#include "LspTalk.h"
#include "TempFolder.h"

namespace zendry {
namespace {

using test::LspTalk;

constexpr int cParseError = -32700, cInvalidRequest = -32600, cMethodNotFound = -32601,
              cInvalidParams = -32602, cNotInitialized = -32002, cCancelled = -32800;

class LspServerTest : public testing::Test {
 protected:
  test::TempFolder folder;
};

TEST_F(LspServerTest, RequestBeforeInitialize_IsRefused_NotificationIsDropped) {
  LspTalk talk;
  EXPECT_EQ(talk.ErrorOf("textDocument/hover"), cNotInitialized);
  EXPECT_EQ(talk.ErrorOf("shutdown"), cNotInitialized);
  talk.Open(folder.Path("a.cpp"), "int a;");
  EXPECT_TRUE(talk.notes.empty());
}

TEST_F(LspServerTest, Initialize_TellsWhatTheServerCan_Once) {
  LspTalk talk(folder.Path());
  const Json can = talk.answers[0]["result"]["capabilities"];
  EXPECT_EQ(can["positionEncoding"], "utf-16");
  EXPECT_EQ(can["textDocumentSync"]["change"], 2);
  EXPECT_EQ(can["completionProvider"]["triggerCharacters"], Json({".", ">", ":"}));
  EXPECT_EQ(can["signatureHelpProvider"]["triggerCharacters"], Json({"(", ","}));
  EXPECT_EQ(talk.ErrorOf("initialize"), cInvalidRequest);
}

TEST_F(LspServerTest, Shutdown_RefusesRequests_ExitEndsWell) {
  LspTalk talk(folder.Path());
  EXPECT_TRUE(talk.Ask("shutdown", nullptr)["result"].is_null());
  EXPECT_EQ(talk.ErrorOf("textDocument/hover"), cInvalidRequest);
  EXPECT_FALSE(talk.server.HasEnded());
  talk.Tell("exit", nullptr);
  EXPECT_TRUE(talk.server.HasEnded());
  EXPECT_EQ(talk.server.ExitStatus(), 0);
}

TEST_F(LspServerTest, ExitWithoutShutdown_EndsWithOne) {
  LspTalk talk(folder.Path());
  talk.Tell("exit", nullptr);
  EXPECT_TRUE(talk.server.HasEnded());
  EXPECT_EQ(talk.server.ExitStatus(), 1);
}

TEST_F(LspServerTest, UnknownMethods_AreRefusedOrDropped) {
  LspTalk talk(folder.Path());
  const size_t answers = talk.answers.size();
  talk.Tell("$/unknown", nullptr);
  EXPECT_EQ(talk.answers.size(), answers);
  EXPECT_EQ(talk.ErrorOf("textDocument/rename"), cMethodNotFound);
}

TEST_F(LspServerTest, MalformedMessages_AreAnsweredAndTheServerGoesOn) {
  LspTalk talk(folder.Path());
  const auto errorOf = [&](const std::string& body) {
    talk.SendText(body);
    EXPECT_TRUE(talk.answers.back()["id"].is_null()) << body;
    return talk.answers.back()["error"]["code"].get<int>();
  };
  for (const char* body : {"", "{", "nonsense", "{\"id\": 1,}", "\xff\xfe"})
    EXPECT_EQ(errorOf(body), cParseError) << body;
  for (const char* body : {"[]", "1", "null", "[{\"id\": 1, \"method\": \"shutdown\"}]", "{}",
                           "{\"method\": 1}", "{\"id\": [], \"method\": \"shutdown\"}"})
    EXPECT_EQ(errorOf(body), cInvalidRequest) << body;
  EXPECT_EQ(talk.ErrorOf("textDocument/rename"), cMethodNotFound);
}

TEST_F(LspServerTest, DeepJson_IsAParseError_AtItsBound) {
  LspTalk talk(folder.Path());
  const auto nested = [](int depth) {
    return "{\"id\": 9, \"method\": \"x\", \"params\": " +
           std::string(static_cast<size_t>(depth), '[') +
           std::string(static_cast<size_t>(depth), ']') + "}";
  };
  talk.SendText(nested(cDeepestJson - 1));
  EXPECT_EQ(talk.answers.back()["error"]["code"], cMethodNotFound);
  talk.SendText(nested(cDeepestJson));
  EXPECT_EQ(talk.answers.back()["error"]["code"], cParseError);
}

TEST_F(LspServerTest, RequestThatWaits_CanBeTakenBack) {
  LspTalk talk(folder.Path());
  talk.server.Receive(R"({"id": "a", "method": "shutdown"})");
  talk.server.Receive(R"({"method": "$/cancelRequest", "params": {"id": "b"}})");
  EXPECT_EQ(talk.server.Waiting(), 1u);
  talk.server.Receive(R"({"method": "$/cancelRequest", "params": {"id": "a"}})");
  EXPECT_EQ(talk.server.Waiting(), 0u);
  EXPECT_EQ(talk.answers.back()["id"], "a");
  EXPECT_EQ(talk.answers.back()["error"]["code"], cCancelled);
  EXPECT_EQ(talk.ErrorOf("textDocument/rename"), cMethodNotFound) << "it was not shut down";
}

TEST_F(LspServerTest, List_HasKindsTypesAndSignatures) {
  LspTalk talk(folder.Path());
  const std::string path = folder.Path("a.cpp");
  talk.Open(path, "struct A { int x; int f(char c); };\nvoid g(A a) { a. }\n");
  const Json result = talk.ResultOf("textDocument/completion", LspTalk::At(path, 1, 16));
  EXPECT_EQ(result["isIncomplete"], false);
  ASSERT_EQ(result["items"].size(), 2u) << result;
  EXPECT_EQ(result["items"][0]["label"], "f");
  EXPECT_EQ(result["items"][0]["kind"], 2);
  EXPECT_EQ(result["items"][0]["labelDetails"]["detail"], "(char c)");
  EXPECT_EQ(result["items"][0]["documentation"], "int A::f(char c)");
  EXPECT_EQ(result["items"][1]["label"], "x");
  EXPECT_EQ(result["items"][1]["kind"], 5);
  EXPECT_EQ(result["items"][1]["detail"], "int");
}

TEST_F(LspServerTest, TypedTrigger_GivesNoListOutsideOfCode) {
  LspTalk talk(folder.Path());
  const std::string path = folder.Path("a.cpp");
  talk.Open(path, "struct A { int x; }; A a;\n// a.\nint b = a.x;\n");
  Json asked = LspTalk::At(path, 1, 5);
  EXPECT_EQ(talk.ResultOf("textDocument/completion", asked)["items"].size(), 1u) << "asked for";
  asked["context"] = {{"triggerKind", 2}, {"triggerCharacter", "."}};
  EXPECT_EQ(talk.ResultOf("textDocument/completion", asked)["items"].size(), 0u);
  asked["position"] = {{"line", 2}, {"character", 10}};
  EXPECT_EQ(talk.ResultOf("textDocument/completion", asked)["items"].size(), 1u);
}

TEST_F(LspServerTest, Changes_WinOverTheDisk) {
  const std::string header = folder.Write("a.h", "struct A { int old; };\n");
  const std::string path = folder.Write("a.cpp", "#include \"a.h\"\nvoid f(A a) { a. }\n");
  LspTalk talk(folder.Path());
  talk.Open(path, folder.Read("a.cpp"));
  EXPECT_EQ(talk.Names(path, 1, 16), "old");
  talk.Open(header, "struct A { int fresh; };\n");
  EXPECT_EQ(talk.Names(path, 1, 16), "fresh");
  const Json range = {{"start", {{"line", 0}, {"character", 15}}},
                      {"end", {{"line", 0}, {"character", 20}}}};
  talk.Tell("textDocument/didChange",
            {{"textDocument", {{"uri", UriOfPath(header)}}},
             {"contentChanges", {{{"range", range}, {"text", "typed"}}}}});
  EXPECT_EQ(talk.Names(path, 1, 16), "typed");
  talk.Tell("textDocument/didChange", {{"textDocument", {{"uri", UriOfPath(header)}}},
                                       {"contentChanges", {{{"text", "struct A { int all; };"}}}}});
  EXPECT_EQ(talk.Names(path, 1, 16), "all");
  talk.Tell("textDocument/didClose", {{"textDocument", {{"uri", UriOfPath(header)}}}});
  EXPECT_EQ(talk.Names(path, 1, 16), "old") << "the disk counts again";
}

TEST_F(LspServerTest, ChangeOfATextThatIsntOpen_ChangesNothing) {
  LspTalk talk(folder.Path());
  talk.Tell("textDocument/didChange", {{"textDocument", {{"uri", "file:///a.cpp"}}},
                                       {"contentChanges", {{{"text", "int a;"}}}}});
  ASSERT_EQ(talk.notes.size(), 1u);
  EXPECT_EQ(talk.ErrorOf("textDocument/hover", LspTalk::At("/a.cpp", 0, 4)), cInvalidParams);
}

TEST_F(LspServerTest, Signatures_HaveRangesOfParameters) {
  LspTalk talk(folder.Path());
  const std::string path = folder.Path("a.cpp");
  talk.Open(path, "int f(int a, char b);\nint g() { return f(1, ); }\n");
  const Json tip = talk.ResultOf("textDocument/signatureHelp", LspTalk::At(path, 1, 22));
  ASSERT_EQ(tip["signatures"].size(), 1u) << tip;
  EXPECT_EQ(tip["signatures"][0]["label"], "int f(int a, char b)");
  EXPECT_EQ(tip["signatures"][0]["parameters"][1]["label"], Json({13, 19}));
  EXPECT_EQ(tip["activeParameter"], 1);
  EXPECT_TRUE(talk.ResultOf("textDocument/signatureHelp", LspTalk::At(path, 0, 0)).is_null());
}

TEST_F(LspServerTest, DefinitionAndDeclaration_AreTwoPlaces) {
  const std::string header = folder.Write("a.h", "struct A {\n  int f();\n};\nint g(int);\n");
  const std::string path = folder.Write(
      "a.cpp", "#include \"a.h\"\nint A::f() { return g(1); }\nint g(int a) { return a; }\n");
  LspTalk talk(folder.Path());
  const auto placeOf = [&](const char* kind, int line, int character) {
    const Json found =
        talk.ResultOf(std::string("textDocument/") + kind, LspTalk::At(path, line, character));
    if (found.empty()) return std::string("none");
    const std::string file = PathOfUri(found[0]["uri"].get<std::string>());
    return file.substr(file.rfind('/') + 1) + ":" + found[0]["range"]["start"]["line"].dump();
  };
  EXPECT_EQ(placeOf("definition", 1, 21), "a.cpp:2");
  EXPECT_EQ(placeOf("declaration", 1, 21), "a.h:3");
  EXPECT_EQ(placeOf("declaration", 1, 7), "a.h:1");
  EXPECT_EQ(placeOf("definition", 2, 23), "a.cpp:2") << "a parameter";
  EXPECT_EQ(placeOf("definition", 0, 12), "a.h:0") << "an included file";
  EXPECT_EQ(placeOf("definition", 1, 11), "none");
}

TEST_F(LspServerTest, Hover_ShowsTheDeclaration) {
  LspTalk talk(folder.Path());
  const std::string path = folder.Path("a.cpp");
  talk.Open(path, "int f(int a);\nint b = f(2);\n");
  const Json hover = talk.ResultOf("textDocument/hover", LspTalk::At(path, 1, 8));
  EXPECT_EQ(hover["contents"]["value"].get<std::string>().find("```cpp\nint f(int a)\n```"), 0u);
  EXPECT_EQ(hover["range"]["end"]["character"], 9);
  EXPECT_TRUE(talk.ResultOf("textDocument/hover", LspTalk::At(path, 1, 7)).is_null());
}

TEST_F(LspServerTest, Hover_ShowsWhatIsWritten_WithoutTheBody) {
  LspTalk talk(folder.Path());
  const std::string path = folder.Path("a.cpp");
  talk.Open(path,
            "static const char*  f(int a,\n    char b = ';') { return 0; }\n"
            "std::vector<int*> all;\n#define BIG(x) \\\n  (x)\n"
            "void g(long many) { f(1, 2); all; BIG(1); many; }\n");
  const auto shownAt = [&](int character) {
    const Json hover = talk.ResultOf("textDocument/hover", LspTalk::At(path, 5, character));
    const std::string text = TextAt(hover, {"contents", "value"});
    return text.substr(0, text.find("\n```"));
  };
  EXPECT_EQ(shownAt(20), "```cpp\nstatic const char* f(int a, char b = ';')");
  EXPECT_EQ(shownAt(29), "```cpp\nstd::vector<int*> all");
  EXPECT_EQ(shownAt(34), "```cpp\n#define BIG(x) \\");
  EXPECT_EQ(shownAt(42), "```cpp\nvoid g(long many)");
}

TEST_F(LspServerTest, Symbols_AreNestedIfTheClientCanTakeThem) {
  const std::string path =
      folder.Write("a.cpp", "class A {\n  int x;\n  void f();\n};\nint g();\n");
  const Json symbols = {{"hierarchicalDocumentSymbolSupport", true}};
  LspTalk nesting(folder.Path(), {{"textDocument", {{"documentSymbol", symbols}}}});
  const Json nested = nesting.ResultOf("textDocument/documentSymbol", LspTalk::At(path, 0, 0));
  ASSERT_EQ(nested.size(), 2u);
  EXPECT_EQ(nested[0]["name"], "A") << "in the order of the text";
  EXPECT_EQ(nested[0]["children"].size(), 2u);
  EXPECT_EQ(nested[0]["range"]["end"]["line"], 2);
  EXPECT_EQ(nested[1]["name"], "g");
  LspTalk flat(folder.Path());
  EXPECT_EQ(flat.ResultOf("textDocument/documentSymbol", LspTalk::At(path, 0, 0)).size(), 4u);
}

TEST_F(LspServerTest, WorkspaceSymbols_HaveTheLettersInOrder) {
  folder.Write("a.cpp", "class BigBox {\n  int width;\n};\nint other;\n");
  LspTalk talk(folder.Path());
  const auto namesFor = [&](const char* query) {
    std::string names;
    for (const Json& symbol : talk.ResultOf("workspace/symbol", {{"query", query}}))
      names += symbol["name"].get<std::string>() + " ";
    return names;
  };
  EXPECT_EQ(namesFor("bbox"), "BigBox ");
  EXPECT_EQ(namesFor("WIDTH"), "width ");
  EXPECT_EQ(namesFor("xob"), "");
}

TEST_F(LspServerTest, TwoFolders_EachHasItsOwnNames) {
  const std::string one = folder.Write("one/a.cpp", "struct S { int first; };\n");
  const std::string two = folder.Write("two/a.cpp", "struct S { int second; };\n");
  LspTalk talk;
  talk.Ask(
      "initialize",
      {{"workspaceFolders",
        {{{"uri", UriOfPath(folder.Path("one"))}}, {{"uri", UriOfPath(folder.Path("two"))}}}}});
  talk.Tell("initialized", Json::object());
  const std::string typed = "void f(S s) { s. }\n";
  talk.Open(folder.Path("one/b.cpp"), typed);
  talk.Open(folder.Path("two/b.cpp"), typed);
  EXPECT_EQ(talk.Names(folder.Path("one/b.cpp"), 0, 16), "first");
  EXPECT_EQ(talk.Names(folder.Path("two/b.cpp"), 0, 16), "second");
  const Json removed = {{{"uri", UriOfPath(folder.Path("two"))}}};
  talk.Tell("workspace/didChangeWorkspaceFolders",
            {{"event", {{"added", Json::array()}, {"removed", removed}}}});
  EXPECT_EQ(talk.Names(folder.Path("two/b.cpp"), 0, 16), "") << "a file alone";
}

TEST_F(LspServerTest, Utf8_IsTakenIfOffered) {
  LspTalk talk(folder.Path(), {{"general", {{"positionEncodings", {"utf-8", "utf-16"}}}}});
  EXPECT_EQ(talk.answers[0]["result"]["capabilities"]["positionEncoding"], "utf-8");
  const std::string path = folder.Path("a.cpp");
  talk.Open(path, "struct A { int x; }; A a;\n/* \u00e4\u00e4 */ int b = a.\n");
  EXPECT_EQ(talk.Names(path, 1, 21), "x");
}

TEST_F(LspServerTest, ParametersOfTheWrongKind_AreHarmless) {
  LspTalk talk(folder.Path());
  const char* methods[] = {"textDocument/completion", "textDocument/hover", "workspace/symbol",
                           "textDocument/documentSymbol", "textDocument/definition"};
  for (const char* method : methods)
    for (const Json& params :
         {Json(nullptr), Json(1), Json::array({1}), Json({{"textDocument", 7}}),
          Json({{"textDocument", {{"uri", 7}}}, {"position", "x"}})})
      EXPECT_TRUE(talk.Ask(method, params).contains("id")) << method << params;
  for (const char* method : {"textDocument/didOpen", "textDocument/didChange", "initialized",
                             "textDocument/didClose", "workspace/didChangeWorkspaceFolders"})
    talk.Tell(method, {{"textDocument", nullptr}, {"contentChanges", 3}, {"event", "x"}});
}

}  // namespace
}  // namespace zendry
