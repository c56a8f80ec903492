#include "ui/bars/menu_keys.h"

#include "util/compare_text.h"

wchar_t MnemonicOf(const std::wstring& text)
{
    for (size_t i = 0; i + 1 < text.size(); ++i) {
        if (text[i] != L'&')
            continue;
        if (text[i + 1] != L'&')
            return text[i + 1];
        ++i;
    }
    return 0;
}

int FindMnemonic(const std::vector<std::wstring>& texts, wchar_t character)
{
    for (size_t i = 0; i < texts.size(); ++i) {
        const wchar_t mnemonic = MnemonicOf(texts[i]);
        if (mnemonic && IsSameForUser({&mnemonic, 1}, {&character, 1}, Case::Ignored))
            return static_cast<int>(i);
    }
    return -1;
}

int NextItem(const std::vector<bool>& enabled, int from, int step)
{
    const int count = static_cast<int>(enabled.size());
    int item = from;
    for (int i = 0; i < count; ++i) {
        item = item < 0 && step < 0 ? count - 1 : (item + step + count) % count;
        if (enabled[static_cast<size_t>(item)])
            return item;
    }
    return -1;
}
