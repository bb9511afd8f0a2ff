#pragma once

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "TempFolder.h"

namespace test {

// The results of a program that has ended.
struct Ended {
  int status = -1;  // exit status, or 128 and the signal
  std::string out;
  std::string err;
};

// A program that runs with its outputs going to files, so that none of them can fill a pipe.
class Program {
 public:
  // `arguments` begin with the program's path. `home` becomes its $HOME.
  Program(const std::vector<std::string>& arguments, const std::string& home) {
    std::vector<char*> values;
    for (const std::string& argument : arguments)
      values.push_back(const_cast<char*>(argument.c_str()));
    values.push_back(nullptr);
    std::vector<std::string> kept = {"HOME=" + home};
    for (char** entry = environ; *entry; ++entry)
      if (!std::string_view(*entry).starts_with("HOME=")) kept.push_back(*entry);
    std::vector<char*> environment;
    for (std::string& entry : kept) environment.push_back(entry.data());
    environment.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    const int flags = O_WRONLY | O_CREAT | O_TRUNC;
    posix_spawn_file_actions_addopen(&actions, 1, outputs.Path("out").c_str(), flags, 0600);
    posix_spawn_file_actions_addopen(&actions, 2, outputs.Path("err").c_str(), flags, 0600);
    const int error =
        posix_spawn(&process, values[0], &actions, nullptr, values.data(), environment.data());
    posix_spawn_file_actions_destroy(&actions);
    if (error) throw std::runtime_error("can't start " + arguments[0]);
  }

  pid_t Process() const { return process; }

  Ended Wait() {
    int status = 0;
    waitpid(process, &status, 0);
    const int code = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    return {code, outputs.Read("out"), outputs.Read("err")};
  }

 private:
  TempFolder outputs;
  pid_t process = -1;
};

// An installation with the real tools of the machine, in which zendry-make lies as it does in
// every other one.
//
//   test::MakeInstall install;
//   EXPECT_EQ(install.Make({project}).status, 0);
class MakeInstall {
 public:
  MakeInstall() {
    namespace fs = std::filesystem;
    for (const char* name : {"bin", "tools", "home"}) root.Folder(name);
    fs::copy_file(ZENDRY_MAKE, root.Path("bin/zendry-make"));
    fs::copy_file(ZENDRY_DIST "/Zendry.cfg", root.Path("bin/Zendry.cfg"));
    for (const char* tool : {"gcc", "g++", "ar"})
      fs::create_symlink(std::string("/usr/bin/") + tool, root.Path("tools/") + tool);
  }

  Program Start(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), root.Path("bin/zendry-make"));
    return Program(arguments, root.Path("home"));
  }
  Ended Make(std::vector<std::string> arguments) const {
    return Start(std::move(arguments)).Wait();
  }

  TempFolder root;
};

}  // namespace test
