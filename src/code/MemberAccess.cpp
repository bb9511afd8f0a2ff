#include "code/MemberAccess.h"

#include <algorithm>

#include "base/CaretText.h"
#include "code/CodeTokens.h"
#include "code/TagLookup.h"

namespace zendry {

namespace {

constexpr int cPrivate = 'i';
constexpr int cProtected = 'o';

}  // namespace

// Classes in a class may name all of its members.
bool MemberAccess::IsOwn(const std::string& className) const {
  return scope == className ||
         (scope.starts_with(className) && scope.compare(className.size(), 2, "::") == 0);
}

bool MemberAccess::IsBase(const std::string& className) {
  if (className != askedBase) {
    askedBase = className;
    isBase = false;
    for (std::string around = scope; !around.empty() && !isBase;) {
      isBase = tags.IsDerived(around, className);
      const size_t colon = around.rfind("::");
      around.resize(colon == around.npos ? 0 : colon);
    }
  }
  return isBase;
}

// Classes in a friend are friends too.
bool MemberAccess::IsFriend(const TagClass& record) const {
  std::string_view around = scope;
  while (!around.empty()) {
    const size_t colon = around.rfind("::");
    const std::string_view name = colon == around.npos ? around : around.substr(colon + 2);
    if (std::find(record.friends.begin(), record.friends.end(), name) != record.friends.end())
      return true;
    around = around.substr(0, colon == around.npos ? 0 : colon);
  }
  return false;
}

bool MemberAccess::IsReachable(const TagItem& member) {
  if (member.access != cPrivate && member.access != cProtected) return true;
  if (!member.owner || IsOwn(member.owner->name) || IsFriend(*member.owner)) return true;
  return member.access == cProtected && IsBase(member.owner->name);
}

bool IsSpecialMember(const TagItem& member) {
  if (!member.owner || member.name.empty()) return false;
  if (member.name.front() == '~') return true;
  if (member.kind != 'f' && member.kind != 'p') return false;
  const std::string_view name = member.owner->name;
  const size_t colon = name.rfind("::");
  return member.name == (colon == name.npos ? name : name.substr(colon + 2));
}

bool IsAtFileLevel(const CaretText& editor) {
  const CodeTokens tokens = CodeTokens::Before(editor, editor.CaretPosition());
  for (int at = 0; at < tokens.Count(); ++at) {
    if (!tokens.Is(at, "{") || tokens.Partner(at) >= 0) continue;
    int head = at - 1;
    while (tokens.IsWord(head) || tokens.IsOneOf(head, ":: [ ]")) {
      if (tokens.IsOneOf(head, "namespace extern")) break;
      --head;
    }
    const bool isLinkage = tokens.Is(at - 2, "extern");
    if (!isLinkage && !tokens.Is(head, "namespace")) return false;
  }
  return true;
}

}  // namespace zendry
