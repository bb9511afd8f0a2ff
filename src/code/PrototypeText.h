#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zendry {

// Where the body of a function belongs that is declared in a class: nowhere (pure, defaulted,
// deleted or friend functions, and what is no function), into the class (templates and inline
// functions), or out of it.
enum class BodyPlace { cNone, cInClass, cOutside };

// A function as somebody has written it for a class: "virtual int size(bool all = true) const". A
// ";" at the end, and a body, may be there.
class PrototypeText {
 public:
  explicit PrototypeText(std::string_view written);

  BodyPlace Body() const { return place; }
  bool HasBody() const { return hasBody; }
  // The text for the class, without a ";" at the end.
  const std::string& Text() const { return text; }
  // The head of the definition outside of the class: `owner` with its "::" before the name, and
  // without what only a declaration has, such as "virtual", "static", "override" and default
  // values. `ownTypes` are the names of types that belong to the class: they are qualified too if
  // they are written before the name. Only for BodyPlace::cOutside.
  std::string DefinitionHead(const std::string& owner,
                             const std::vector<std::string>& ownTypes) const;

 private:
  std::string text;
  BodyPlace place = BodyPlace::cNone;
  bool hasBody = false;
  int name = -1;  // token where the name begins, with its "~" or "operator"
  int open = -1;  // token of the "(" of the parameters
};

}  // namespace zendry
