#include "help/one_window.h"

#include <cstring>

#include "help/help_request.h"

namespace help {

namespace {

constexpr ULONG_PTR kRequestMark = 0x48454C50; // "HELP"
constexpr UINT kAnswerLimit = 5'000;

} // namespace

bool HandOver(const std::wstring& request)
{
    HWND window = FindWindowW(kHelpWindowClass, nullptr);
    if (!window)
        return false;
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    AllowSetForegroundWindow(process);
    COPYDATASTRUCT data{};
    data.dwData = kRequestMark;
    data.cbData = static_cast<DWORD>(request.size() * sizeof(wchar_t));
    data.lpData = const_cast<wchar_t*>(request.data());
    DWORD_PTR taken = 0;
    return SendMessageTimeoutW(window, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data), SMTO_ABORTIFHUNG,
                               kAnswerLimit, &taken) &&
           taken;
}

std::optional<std::wstring> HandedOver(const COPYDATASTRUCT* data)
{
    if (!data || data->dwData != kRequestMark || data->cbData % sizeof(wchar_t) != 0 ||
        data->cbData > kMaxRequest * sizeof(wchar_t) || (data->cbData > 0 && !data->lpData))
        return std::nullopt;
    std::wstring request(data->cbData / sizeof(wchar_t), L'\0');
    if (data->cbData > 0)
        std::memcpy(request.data(), data->lpData, data->cbData);
    if (request.find(L'\0') != std::wstring::npos)
        return std::nullopt;
    return request;
}

} // namespace help
