#pragma once

#include <string>
#include <string_view>

namespace zendry {

// The kind of a file by its extension. The numbers are stored in tree nodes and compared
// throughout.
enum FileKinds {
  cUnknownKind = 0,
  cCppSource = 1,
  cCSource = 2,
  cHeader = 3,
  cResourceScript = 4,
  cProjectFile = 5
};

// The kind of a file by the text after the last "." of its name: first by the extensions that
// AddFileKind has added, with their case, then by the fixed ones, case ignored; 0 for anything
// else.
int FileKind(std::string_view path);

// Turns each "\" into "/" and takes out each "/../" together with the component before it, as long
// as there is one at a position above 0. A "/../" without any "/" before it ("a/../b", "C:/../a")
// breaks the precondition ix>-1: such a path can't be distinguished from one that leaves its drive.
// A path that begins with "/" never breaks it.
void NormalizePath(std::string& path);

// True if NormalizePath accepts the path. Ask this first for each path from outside (command line,
// project and session files, include names).
bool CanNormalize(std::string_view path);

// A path from outside, normalised if possible, else with only its slashes turned. The system finds
// the same file under either.
std::string TidyPath(std::string path);

// True if the path begins with "/" or has ":" as its second character.
bool IsAbsolutePath(std::string_view path);

// The path itself when absolute, else taken from the current folder, without "./" before it.
std::string AbsolutePath(const std::string& path);

// Replaces the text after the last "." by `extension`. A path without a "." at a position above 0
// stays as it is.
std::string ChangeExtension(std::string_view path, std::string_view extension);

// "Noname" for an empty path, else the text after the last "/" unless that is the first character.
std::string BaseName(std::string_view path);

// The path as seen from `folder`, with "../" as often as needed. The case of letters is ignored
// when the two are compared; a path that shares no folder with `folder` stays as it is.
std::string MakeRelativePath(std::string_view path, std::string_view folder);

// True if a folder of the PATH holds a program of that name.
bool IsOnPath(const std::string& program);
// The path of a program: itself if it has a slash, else where PATH leads. Empty if there is none.
std::string FindProgram(const std::string& program);

}  // namespace zendry
