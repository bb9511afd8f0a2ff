#pragma once

namespace zendry {

// Where the reading of a function's body has come to.
struct BodyText {
  const char* stop = nullptr;
  int newlines = 0;  // passed on the way
};

// The first byte from `from` on that counts in a body whose content nobody wants: a brace, or a
// byte that may begin a literal, a comment, a directive, a trigraph or a splice; `end` if there is
// none.
BodyText PassBodyText(const char* from, const char* end);

}  // namespace zendry
