#pragma once

#include <grp.h>
#include <sys/types.h>
#include <unistd.h>

#include <vector>

namespace test {

// Takes the superuser's rights away from this process as long as it lives, so that tests of
// missing rights mean the same for everybody. For other users it does nothing.
//
//   std::filesystem::permissions(folder.Path(), ...);
//   const test::WithoutRights user;
class WithoutRights {
 public:
  static constexpr uid_t cNobody = 65534;

  WithoutRights() : wasRoot(geteuid() == 0) {
    if (!wasRoot) return;
    groups.resize(static_cast<size_t>(getgroups(0, nullptr)));
    getgroups(static_cast<int>(groups.size()), groups.data());
    if (setgroups(0, nullptr) != 0 || setegid(cNobody) != 0 || seteuid(cNobody) != 0) _exit(99);
  }
  ~WithoutRights() {
    if (!wasRoot) return;
    if (seteuid(0) != 0 || setegid(0) != 0 || setgroups(groups.size(), groups.data()) != 0)
      _exit(99);
  }
  WithoutRights(const WithoutRights&) = delete;
  WithoutRights& operator=(const WithoutRights&) = delete;

  // True if files of another owner can be made, for tests that need one.
  static bool CanGiveAway() { return geteuid() == 0; }

 private:
  bool wasRoot;
  std::vector<gid_t> groups;
};

}  // namespace test
