// The framework as its users include it.
#include <mavro>
static const char* const library = "mavro";
