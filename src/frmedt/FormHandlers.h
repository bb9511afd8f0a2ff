#pragma once

#include <vector>

#include "frmedt/FormData.h"

namespace zendry {

struct TagClass;

// Appends the methods of a class that may handle events: its functions and prototypes whose
// parameters name a class that ends with "Args".
void CollectHandlers(const TagClass& record, std::vector<FormHandler>& handlers);

}  // namespace zendry
