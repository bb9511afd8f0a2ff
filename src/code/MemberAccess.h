#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zendry {

class CaretText;
class TagLookup;
struct TagClass;
struct TagItem;

// Decides which members of a class a list shows at a place: those that the code there may name.
// Classes that the class calls its friends may name all; whether a function is a friend isn't
// known.
class MemberAccess {
 public:
  // `theTags` must outlive it. `theScope` is the class that the code at the place belongs to, empty
  // without one.
  MemberAccess(TagLookup& theTags, std::string theScope)
      : tags(theTags), scope(std::move(theScope)) {}

  // False for private members of other classes, and for protected ones of classes that the scope
  // doesn't derive from. Members of a reference library have no access and are all reachable.
  bool IsReachable(const TagItem& member);

 private:
  bool IsOwn(const std::string& className) const;
  bool IsBase(const std::string& className);
  bool IsFriend(const TagClass& record) const;

  TagLookup& tags;
  std::string scope;
  std::string askedBase;  // about which `isBase` is known
  bool isBase = false;
};

// True for a constructor or a destructor.
bool IsSpecialMember(const TagItem& member);

// True if the caret is outside of all functions and classes, where members are defined.
bool IsAtFileLevel(const CaretText& editor);

}  // namespace zendry
