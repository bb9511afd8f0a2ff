#pragma once

#include <set>
#include <string>
#include <string_view>

#include "LibraryReader.h"

namespace zendry {

// Prefix of templates that a library has for several character types.
constexpr std::string_view cFamilyPrefix = "basic_";

// Makes readable text from the tokens of declarations: "const value_type& x" from "const
// std::value_type & __x".
class DigestText {
 public:
  // `families`: names without "basic_" for which there is a class with "basic_".
  // With `itKeepsTags`, "struct stat" stays so, as C needs it.
  explicit DigestText(std::set<std::string, std::less<>> newFamilies, bool itKeepsTags = false)
      : families(std::move(newFamilies)), keepsTags(itKeepsTags) {}

  // A name without its leading underscores, or without the prefix of its family.
  std::string Name(std::string_view name) const;
  // A type; "auto" for one that is not readable.
  std::string Type(const CppTokens& tokens) const;
  // A parameter list with its parentheses.
  std::string Parameters(const CppTokens& tokens) const;

 private:
  CppTokens Simplified(const CppTokens& tokens) const;
  std::string Joined(const CppTokens& tokens) const;

  std::set<std::string, std::less<>> families;
  const bool keepsTags;
};

}  // namespace zendry
