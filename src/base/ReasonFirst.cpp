#include "base/ReasonFirst.h"

namespace zendry {

// A reason may contain a colon as well; a path seldom does.
std::string ReasonFirst(std::string_view error) {
  const size_t colon = error.find(": ");
  std::string text(error);
  if (colon != std::string_view::npos) {
    text = error.substr(colon + 2);
    text.append(": ").append(error.substr(0, colon));
    if (text[0] >= 'a' && text[0] <= 'z') text[0] = static_cast<char>(text[0] - 'a' + 'A');
  }
  return text;
}

}  // namespace zendry
