#include "editor/categories_line.h"

#include "data/category_flags.h"
#include "ui/screen/scoped.h"

namespace {

constexpr const wchar_t* kNoCategories = L"<None>";
constexpr const wchar_t* kCut = L"...";
constexpr int kCutLength = 3;

// How many characters of average width the line has room for.
int RoomOf(HWND line)
{
    RECT rect{};
    GetClientRect(line, &rect);
    HDC dc = GetDC(line);
    TEXTMETRICW metrics{};
    {
        const ScopedSelectObject font(dc, reinterpret_cast<HGDIOBJ>(SendMessageW(line, WM_GETFONT, 0, 0)));
        GetTextMetricsW(dc, &metrics);
    }
    ReleaseDC(line, dc);
    return metrics.tmAveCharWidth > 0 ? static_cast<int>(rect.right / metrics.tmAveCharWidth) : 0;
}

std::vector<std::wstring> AssignedNames(const ZStack& categories, DbCategories* store)
{
    std::vector<std::wstring> names;
    bool hasAll = true;
    for (size_t i = 0; const ZCategory* item = categories.GetItem(i); ++i) {
        wchar_t name[kCategoryNameSize];
        if (!(item->flags & kCategoryAssigned))
            continue;
        // A category that was deleted meanwhile has no name.
        if (store->GetStr(item->id, name, kCategoryNameSize, kCategoriesKey) > 0)
            names.emplace_back(name);
        else if (store->Trouble() != StoreTrouble::None)
            hasAll = false;
    }
    if (!hasAll)
        names.emplace_back(kUnreadNames);
    return names;
}

} // namespace

std::wstring CategoriesLineText(const std::vector<std::wstring>& names, int room)
{
    const auto length = static_cast<size_t>(room > kCutLength ? room : kCutLength);
    std::wstring text;
    for (const std::wstring& name : names) {
        const bool isFirst = text.empty();
        text += (isFirst ? L"" : L", ") + name;
        if (!isFirst && text.size() > length) {
            text.resize(length - kCutLength);
            return text + kCut;
        }
    }
    return text.empty() ? kNoCategories : text;
}

void ShowCategoriesLine(HWND line, ZStack* categories, DbCategories* store)
{
    categories->Sort(*store);
    SetWindowTextW(line, CategoriesLineText(AssignedNames(*categories, store), RoomOf(line)).c_str());
}
