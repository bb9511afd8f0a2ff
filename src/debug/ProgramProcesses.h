#pragma once

#include <vector>

namespace zendry {

// A process of the system. The time of its start tells it apart from a later one of the same id.
struct SystemProcess {
  int id = 0;
  int parent = 0;
  int session = 0;
  unsigned long long start = 0;
};

// The process that a debugger runs, by the debugger's id; 0 for none.
int TracedProcess(int debugger);

// A process, its descendants and all others of the session that it leads. Also what is left of
// these when the process itself is gone.
std::vector<SystemProcess> ProcessesOf(int root);

// Kills those that still run.
void KillProcesses(const std::vector<SystemProcess>& processes);

}  // namespace zendry
