#include <vector>
#include "own.h"
 # include "not in the first column"
/*
#include "in a comment"
*/
#if 0
#include <skipped>
#endif
#  include  < a b >
#include "open
#include <x" y>
