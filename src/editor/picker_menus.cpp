#include "editor/picker_menus.h"

#include "editor/zoom.h"
#include "res/resource.h"

namespace {

template <typename Choices> UniqueMenu MenuOf(const Choices& choices)
{
    UniqueMenu menu(CreatePopupMenu());
    for (const auto& choice : choices)
        if (menu)
            AppendMenuW(menu.get(), MF_STRING, static_cast<UINT_PTR>(choice.menuId), choice.text);
    return menu;
}

} // namespace

UniqueMenu PickerMenu(int button)
{
    switch (button) {
    case CMD_PRIORITY: return MenuOf(PriorityChoices());
    case CMD_SENSITIVITY: return MenuOf(SensitivityChoices());
    case CMD_ZOOM: return MenuOf(ZoomSteps());
    default: return nullptr;
    }
}
