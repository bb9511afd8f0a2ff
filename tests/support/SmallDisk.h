#pragma once

#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <functional>
#include <string>

namespace test {

// Runs `act` in a copy of this process; answers its status as waitpid gives it. What `act` answers
// is the copy's exit code.
inline int RunInChild(const std::function<int()>& act) {
  const pid_t child = fork();
  if (child == 0) _exit(act());
  int status = 0;
  waitpid(child, &status, 0);
  return status;
}

// Makes this process the superuser of a world of its own, in which it may mount; or false.
inline bool EnterOwnWorld() {
  const uid_t user = getuid();
  const gid_t group = getgid();
  if (user == 0) return unshare(CLONE_NEWNS) == 0;
  if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) return false;
  std::ofstream("/proc/self/setgroups") << "deny";
  std::ofstream("/proc/self/uid_map") << "0 " << user << " 1";
  std::ofstream("/proc/self/gid_map") << "0 " << group << " 1";
  return true;
}

constexpr int cCannotMount = 255;

// Runs `act` in a copy of this process that sees an empty disk of so many bytes in the place of a
// folder. Answers what `act` does, from 0 to 250, or cCannotMount where nobody may mount; then the
// test is to be skipped.
//
//   const int answer = test::RunOnSmallDisk(folder.Path(), "256k", [&] { ... return 0; });
inline int RunOnSmallDisk(const std::string& folder, const std::string& size,
                          const std::function<int()>& act) {
  const int status = RunInChild([&] {
    if (!EnterOwnWorld()) return cCannotMount;
    mount("", "/", nullptr, MS_REC | MS_PRIVATE, nullptr);
    const std::string options = "size=" + size;
    const bool mounted = mount("tmpfs", folder.c_str(), "tmpfs", 0, options.c_str()) == 0;
    return mounted ? act() : cCannotMount;
  });
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

}  // namespace test
