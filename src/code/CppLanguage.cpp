#include "code/CppLanguage.h"

#include <cstdint>
#include <span>

#include "EditorColours.h"

namespace zendry {

namespace {

using mavro::ColourOf;
using mavro::StyleRow;

constexpr StyleRow cStyles[] = {
    {0, ColourOf(mavro::cTextInk), 0, 0},                    // default
    {1, ColourOf(mavro::cCommentInk), 9, 0},                 // comment
    {2, ColourOf(mavro::cCommentInk), 9, 0},                 // line comment
    {3, ColourOf(mavro::cDocumentationInk), 9, 0},           // documentation comment
    {4, ColourOf(mavro::cNumberInk), 0, 0},                  // number
    {5, ColourOf(mavro::cKeywordInk), StyleRow::cBold, 0},   // keyword
    {6, ColourOf(mavro::cStringInk), 0, 0},                  // string
    {7, ColourOf(mavro::cCharacterInk), 0, 0},               // character
    {8, ColourOf(mavro::cPreprocessorInk), 0, 0},            // identifier of an interface
    {9, ColourOf(mavro::cPreprocessorInk), 0, 0},            // preprocessor
    {10, ColourOf(mavro::cTextInk), StyleRow::cBold, 0},     // operator
    {11, ColourOf(mavro::cTextInk), 0, 0},                   // identifier
    {12, ColourOf(mavro::cStringInk), StyleRow::cEolFilled,  // string without an end
     ColourOf(mavro::cUnfinishedGround)},
    {15, ColourOf(mavro::cDocumentationInk), 8, 0},  // documentation comment of a line
    {StyleRow::cEnd, 0, 0, 0},
};

constexpr char cKeywords[] =
    "and and_eq asm auto bitand bitor bool break case catch char class compl const const_cast "
    "continue default delete do double dynamic_cast else enum explicit export extern false float "
    "for friend goto if inline int long mutable namespace new not not_eq operator or or_eq private "
    "protected public register reinterpret_cast return short signed sizeof static static_cast "
    "struct switch template this throw true try typedef typeid typename union unsigned using "
    "virtual void volatile wchar_t while xor xor_eq ";

// Comments, documentation comments and their keywords, numbers, strings, characters, unfinished,
// verbatim and raw strings, regular expressions, user-defined literals, marks in comments and
// escape sequences.
constexpr int cQuietStyles[] = {1,  2,  3,  4,  6,  7,  12, 13, 14, 15,
                                17, 18, 20, 21, 22, 23, 24, 25, 26, 27};

constexpr std::uint64_t BitsOf(std::span<const int> styles) {
  std::uint64_t bits = 0;
  for (const int style : styles) bits |= std::uint64_t{1} << style;
  return bits;
}

constexpr mavro::EditorLanguage MakeLanguage() {
  mavro::EditorLanguage language;
  language.name = "cpp";
  language.styles = cStyles;
  language.keywords = cKeywords;
  language.keywords2 = "uint int64 uchar string list set vector";
  language.indentWords = "case default do else for if while";
  language.blockStart = "{";
  language.blockEnd = "}";
  language.wordChars = "_abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
  language.tipStart = "(";
  language.tipEnd = ")";
  language.tipSeparators = ",;";
  language.tipCalls = "{,";
  language.memberChars = ".->:";
  language.leftOutStyles = 64;
  language.quietStyles = BitsOf(cQuietStyles);
  language.directiveStyle = 9;
  language.rawStyle = 20;
  language.lineComment = "//";
  language.fileFilter =
      "C/C++ (c cc cpp cxx h hh hxx hpp)|*.c;*.cc;*.cpp;*.cxx;*.h;*.hh;*.hpp;*.hxx";
  return language;
}

}  // namespace

constinit const mavro::EditorLanguage cCppLanguage = MakeLanguage();

}  // namespace zendry
