#include "editor/entry_editor.h"
