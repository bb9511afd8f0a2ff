#include "config/EditorSettings.h"

namespace zendry {

EditorSettings theEditorSettings;

}  // namespace zendry
