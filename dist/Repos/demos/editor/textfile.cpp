// SPDX-License-Identifier: MIT-0
#include "textfile.h"

#include <cstdio>
#include <fstream>
#include <iterator>

bool ReadTextFile(const std::string& path, std::string& text) {
  std::ifstream file(path, std::ios::binary);
  if (!file) return false;
  text.assign(std::istreambuf_iterator<char>(file), {});
  return !file.bad();
}

// Another file is written first and takes the old one's place when it is whole.
bool WriteTextFile(const std::string& path, const std::string& text) {
  const std::string other = path + ".new";
  std::ofstream file(other, std::ios::binary);
  file << text;
  file.close();
  if (file && std::rename(other.c_str(), path.c_str()) == 0) return true;
  std::remove(other.c_str());
  return false;
}

size_t FindInText(const std::string& text, const std::string& what, size_t start) {
  if (what.empty()) return std::string::npos;
  const size_t found = text.find(what, start);
  return found == std::string::npos ? text.find(what) : found;
}
