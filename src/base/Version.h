#pragma once

namespace zendry {

// The version of all the programs; the build's configuration names the same one.
constexpr char cVersion[] = "0.1.0";

}  // namespace zendry
