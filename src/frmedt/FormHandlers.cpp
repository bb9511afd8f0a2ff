#include "frmedt/FormHandlers.h"

#include "code/TagLookup.h"

namespace zendry {

void CollectHandlers(const TagClass& record, std::vector<FormHandler>& handlers) {
  constexpr std::string_view cArgs = "Args";
  for (const TagItem& member : record.members) {
    const size_t place = member.signature.find(cArgs);
    const bool isFunction = member.kind == 'p' || member.kind == 'f';
    if (!isFunction || place == std::string::npos || place == 0) continue;
    // Without the parenthesis before it.
    handlers.push_back({member.name, member.signature.substr(1, place + cArgs.size() - 1)});
  }
}

}  // namespace zendry
