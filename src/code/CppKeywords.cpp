#include "code/CppKeywords.h"

namespace zendry {

std::string_view KeywordsOfC() {
  return "_Alignas _Alignof _Atomic _Bool _Complex _Generic _Imaginary _Noreturn _Static_assert "
         "_Thread_local auto break case char const continue default do double else enum extern "
         "float for goto if inline int long register restrict return short signed sizeof static "
         "struct switch typedef union unsigned void volatile while";
}

std::string_view KeywordsOfCpp() {
  return "alignas alignof asm auto bool break case catch char char16_t char32_t char8_t class "
         "co_await co_return co_yield concept const const_cast consteval constexpr constinit "
         "continue decltype default delete do double dynamic_cast else enum explicit export extern "
         "false final float for friend goto if inline int long mutable namespace new noexcept "
         "nullptr operator override private protected public register reinterpret_cast requires "
         "return short signed sizeof static static_assert static_cast struct switch template this "
         "thread_local throw true try typedef typeid typename union unsigned using virtual void "
         "volatile wchar_t while";
}

}  // namespace zendry
