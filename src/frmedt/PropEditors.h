#pragma once

namespace zendry {

struct PropContext;

// Takes a new value for `context.prop` from the property box. Most types take `context.text`; those
// whose row shows a button ask in a dialog. False, with the value as it was, if the user cancels.
bool EditValue(PropContext& context);

}  // namespace zendry
