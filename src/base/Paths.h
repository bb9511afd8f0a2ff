#pragma once

#include <string>
#include <string_view>

namespace zendry {

// What a file is by its extension; the numbers are stored in tree nodes and compared throughout.
enum FileKinds {
  cUnknownKind = 0,
  cCppSource = 1,
  cCSource = 2,
  cHeader = 3,
  cResourceScript = 4,
  cProjectFile = 5
};

// The kind of a file by what follows the last "." of its name, case ignored; 0 for anything else.
int FileKind(std::string_view path);

// Turns each "\" into "/" and takes out each "/../" together with the component before it, as long
// as one stands at a position above 0. A "/../" without any "/" before it ("a/../b", "C:/../a")
// breaks the precondition ix>-1: such a path can't be told from one that leaves its drive. A path
// that begins with "/" never breaks it.
void NormalizePath(std::string& path);

// Whether NormalizePath takes the path. Whatever comes from outside (command line, project and
// session files, include names) is asked first.
bool CanNormalize(std::string_view path);

// A path from outside made as tidy as it can be: normalised, or with its slashes turned only when
// it can't be normalised. The system finds the same file under either.
std::string TidyPath(std::string path);

// Begins with "/" or has ":" as its second character.
bool IsAbsolutePath(std::string_view path);

// The path itself when absolute, else taken from the current folder, without "./" before it.
std::string AbsolutePath(const std::string& path);

// Replaces what follows the last "." by `extension`. A path without a "." at a position above 0
// stays as it is.
std::string ChangeExtension(std::string_view path, std::string_view extension);

// "Noname" for an empty path, else what follows the last "/" unless that is the first character.
std::string BaseName(std::string_view path);

// The path as seen from `folder`, with "../" as often as needed. The case of letters is ignored
// when both are compared; a path that shares no folder with `folder` stays as it is.
std::string MakeRelativePath(std::string_view path, std::string_view folder);

// Whether a folder of the PATH holds a program of that name.
bool IsOnPath(const std::string& program);

}  // namespace zendry
