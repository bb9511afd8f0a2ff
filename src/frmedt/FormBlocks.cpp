#include "frmedt/FormBlocks.h"

#include <algorithm>
#include <string>

#include "code/CppLexer.h"

namespace zendry {

namespace {

using Kind = CppPiece::Kind;
using Pieces = std::vector<CppPiece>;

bool IsClassWord(std::string_view word) {
  return word == "class" || word == "struct" || word == "union";
}

// The place behind a list of template arguments that begins at `at`.
size_t BehindAngles(const Pieces& head, size_t at) {
  int depth = 0;
  for (; at < head.size(); ++at) {
    if (head[at].text == "<") ++depth;
    if (head[at].text == ">" && --depth == 0) return at + 1;
  }
  return at;
}

// The head of a block without its template heads and template arguments.
Pieces WithoutAngles(const Pieces& head) {
  Pieces plain;
  for (size_t i = 0; i < head.size();) {
    if (head[i].text == "template") {
      ++i;
    } else if (head[i].text == "<") {
      i = BehindAngles(head, i);
    } else {
      plain.push_back(head[i++]);
    }
  }
  return plain;
}

// The qualified name that ends before `end`; empty if no name does.
std::string NameBefore(const Pieces& head, size_t end) {
  size_t start = end;
  bool wantsName = true;
  while (start > 0) {
    const CppPiece& piece = head[start - 1];
    if (wantsName ? piece.kind != Kind::cWord : piece.text != "::") break;
    wantsName = !wantsName;
    --start;
  }
  std::string name;
  for (size_t i = start; i < end; ++i) name += head[i].text;
  return name.starts_with("::") ? name.substr(2) : name;
}

// Reads a text block by block.
class BlockReader {
 public:
  explicit BlockReader(std::string_view theText) : text(theText), lexer(theText) {}

  std::vector<FormBlock> Read() {
    for (CppPiece piece = lexer.Next(); piece.kind != Kind::cEnd; piece = lexer.Next()) Take(piece);
    for (const Scope& scope : scopes) Close(scope, text.size());
    return std::move(blocks);
  }

 private:
  // An open block.
  struct Scope {
    bool isCode = false;    // no declarations of interest are in it
    std::string qualifier;  // of the names in it, with "::" at its end
    int block = -1;         // its number in `blocks`
  };

  size_t PlaceOf(const CppPiece& piece) const {
    return static_cast<size_t>(piece.text.data() - text.data());
  }

  void Take(const CppPiece& piece) {
    if (piece.kind == Kind::cDirective) return;
    if (piece.text == "{") {
      Open(PlaceOf(piece));
    } else if (piece.text == "}") {
      if (!scopes.empty()) {
        Close(scopes.back(), PlaceOf(piece));
        scopes.pop_back();
      }
      head.clear();
    } else if (IsInCode()) {
      return;
    } else if (piece.text == ";" || EndsLabel(piece)) {
      head.clear();
    } else {
      head.push_back(piece);
    }
  }

  bool IsInCode() const { return !scopes.empty() && scopes.back().isCode; }

  bool EndsLabel(const CppPiece& piece) const {
    if (piece.text != ":" || head.size() != 1) return false;
    const std::string_view word = head[0].text;
    return word == "public" || word == "protected" || word == "private";
  }

  void Close(const Scope& scope, size_t end) {
    if (scope.block >= 0) blocks[static_cast<size_t>(scope.block)].end = end;
  }

  void Open(size_t place) {
    Scope scope;
    scope.isCode = true;
    if (!IsInCode()) {
      scope.qualifier = scopes.empty() ? std::string() : scopes.back().qualifier;
      ReadHead(scope, place + 1);
    }
    scopes.push_back(std::move(scope));
    head.clear();
  }

  void ReadHead(Scope& scope, size_t start) {
    const Pieces plain = WithoutAngles(head);
    const auto find = [&plain](auto test) {
      return static_cast<size_t>(std::find_if(plain.begin(), plain.end(), test) - plain.begin());
    };
    const auto findText = [&](std::string_view word) {
      return find([word](const CppPiece& piece) { return piece.text == word; });
    };
    const size_t size = plain.size();
    const size_t group = findText("(");
    const size_t classWord = find([](const CppPiece& piece) { return IsClassWord(piece.text); });
    if (findText("namespace") < size) {
      const std::string name = NameBefore(plain, size);
      scope.isCode = false;
      if (name != "namespace" && !name.empty()) scope.qualifier += name + "::";
    } else if (findText("extern") < size && size == 2 && plain[1].kind == Kind::cLiteral) {
      scope.isCode = false;
    } else if (classWord < size && findText("enum") == size && plain.back().text != ")") {
      AddClass(scope, plain, classWord, start);
    } else if (group > 0 && group < size) {
      AddFunction(scope, NameBefore(plain, group), start);
    }
  }

  // The name is the last word before the bases and "final".
  void AddClass(Scope& scope, const Pieces& plain, size_t classWord, size_t start) {
    size_t end = classWord + 1;
    while (end < plain.size() && plain[end].text != ":") ++end;
    if (end > classWord + 2 && plain[end - 1].text == "final") --end;
    std::string name = end > classWord + 1 ? NameBefore(plain, end) : std::string();
    scope.isCode = false;
    if (!name.empty()) scope.qualifier += name;
    const std::string full = name.empty() ? std::string() : scope.qualifier;
    if (!name.empty()) scope.qualifier += "::";
    Add(scope, {full, std::move(name), plain[classWord].text[0]}, start);
  }

  void AddFunction(Scope& scope, const std::string& name, size_t start) {
    const size_t last = name.rfind("::");
    std::string owner = scope.qualifier;
    if (last != std::string::npos) owner += name.substr(0, last + 2);
    const bool hasClass = last != std::string::npos || IsInClass();
    FormTag tag;
    if (hasClass && owner.size() > 2) tag.className = owner.substr(0, owner.size() - 2);
    tag.name = last == std::string::npos ? name : name.substr(last + 2);
    tag.kind = 'f';
    Add(scope, std::move(tag), start);
  }

  bool IsInClass() const { return !scopes.empty() && scopes.back().block >= 0; }

  void Add(Scope& scope, FormTag tag, size_t start) {
    scope.block = static_cast<int>(blocks.size());
    blocks.push_back({std::move(tag), start, text.size()});
  }

  const std::string_view text;
  CppLexer lexer;
  std::vector<Scope> scopes;
  Pieces head;  // what came since the last declaration's end
  std::vector<FormBlock> blocks;
};

}  // namespace

std::vector<FormBlock> FindFormBlocks(std::string_view text) {
  return BlockReader(text).Read();
}

}  // namespace zendry
