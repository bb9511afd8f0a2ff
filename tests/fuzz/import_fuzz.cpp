#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "project/ImportCommands.h"
#include "wizards/Repository.h"

// Sources, command lines, compile commands and the list of templates, all from the same bytes. No
// switch that can run a program may count as harmless, and no template may lie elsewhere.

namespace {

bool IsRisky(std::string_view item) {
  if (item.starts_with('"')) item.remove_prefix(1);
  constexpr std::string_view cStarts[] = {"@",       "-wrapper", "-fplugin",       "-specs",
                                          "--specs", "-B",       "-Wl,",           "-Wa,",
                                          "-Wp,",    "-Xclang",  "-fmodule-mapper"};
  for (const std::string_view start : cStarts)
    if (item.starts_with(start)) return true;
  return false;
}

void CheckSwitches(const std::vector<std::string>& items) {
  for (const std::string& item : items)
    if (IsRisky(item)) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  zendry::ReadSourceFacts(text);
  const zendry::CommandSwitches read =
      zendry::ReadSwitches(zendry::SplitShellWords(text), "/work/none");
  CheckSwitches(read.others);
  CheckSwitches(read.macros);
  CheckSwitches(zendry::ReadCommandsText(text, "/work/none/compile_commands.json", "").switches);
  const zendry::RepositoryItems items = zendry::ReadRepositoryItems(text);
  for (const auto* list : {&items.templates, &items.demos})
    for (const auto& item : *list)
      if (item.folder.starts_with('/') ||
          ("/" + item.folder + "/").find("/../") != std::string::npos)
        std::abort();
  return 0;
}
