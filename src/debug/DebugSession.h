#pragma once

namespace zendry {

// The session behind the Debugger.
class DebugSession {};

}  // namespace zendry
