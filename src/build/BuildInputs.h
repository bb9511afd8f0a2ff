#pragma once

#include <ctime>
#include <string>
#include <vector>

#include "build/BuildRecords.h"

namespace zendry {

class Project;

// The files that a run of a tool reads, with their times, for the records of a build. Paths are as
// from the project's folder, which is the current one.

// The compiler writes what it really reads into a file in the output folder, when its environment
// asks for it. Compilers that run at the same time have a slot each, whose number is appended to
// the name of all but the first.
constexpr char cReadFilesName[] = ".zendry-read";
std::string ReadFilesPath(const std::string& outDirName, int slot);
// Removes such a file, because compilers append to it, and returns the entry of the environment
// that asks for a new one.
std::string AskForReadFiles(const std::string& path, bool watchesAll);
// The same by switches, each with a blank before it: launchers that keep objects don't work with
// the environment.
std::string AskForReadFilesBySwitches(const std::string& path, bool watchesAll);

// The files of `paths` that can be read.
std::vector<InputFile> ExistingInputs(FileTimes& times, const std::vector<std::string>& paths);

// The libraries and objects that a line of the linker names; it runs in the folder `outDirName`.
// Libraries that no -L names the folder of are not watched.
std::vector<std::string> LinkInputs(const std::string& line, const std::string& outDirName);

// The script, and each existing file whose name is a word or a string of it.
std::vector<std::string> ResourceInputs(const std::string& script);

// The files that a compiler has read since `start`, out of the file that it wrote, which is
// removed: those of the project and those below its folder, or all of them and cAllReadFiles. A
// file with a time after `start` gets the unknown time: nobody knows which of its texts was read.
std::vector<InputFile> TakeReadFiles(FileTimes& times, const Project& project,
                                     const std::string& path, FileTimes::Time start,
                                     bool watchesAll);

// Not before the time that a file written until now has.
FileTimes::Time TimeOfNow();

}  // namespace zendry
