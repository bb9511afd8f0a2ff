#pragma once

#include <string>
#include <vector>

#include "frmedt/FormData.h"

namespace zendry {

// The controls and all that is in them as the text of both regions, to be pasted here, in another
// form or in an editor.
std::string CopyText(const FormData& form, const std::vector<CtrlRec*>& records);

// Adds the controls of such a text to a container, with names of their own. Returns those directly
// in it; none if the text has no control that can be read.
std::vector<CtrlRec*> PasteText(FormData& form, CtrlRec& target, const std::string& text);

// Fills an empty model with a copy of another one, without controls on a surface.
void CopyForm(const FormData& from, FormData& to);

}  // namespace zendry
