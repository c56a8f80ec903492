// The keyboard's rules of a menu bar, free of windows.
#pragma once

#include <string>
#include <vector>

// The character after the first single "&"; 0 when there is none ("&&" is an ampersand).
wchar_t MnemonicOf(const std::wstring& text);

// The first of the texts that has the character as its mnemonic, without regard to case; -1 when none has.
int FindMnemonic(const std::vector<std::wstring>& texts, wchar_t character);

// The next enabled item in the direction of step (1 or -1), wrapping round; from itself when it is the only
// one, -1 when none is enabled. from may be -1 (before the first).
int NextItem(const std::vector<bool>& enabled, int from, int step);
