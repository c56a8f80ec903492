#include "peer_process.h"

#include <gtest/gtest.h>

namespace {

constexpr DWORD kLimit = 30'000; // milliseconds

std::wstring PeerPath()
{
    std::wstring path(MAX_PATH, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), MAX_PATH));
    return path.substr(0, path.find_last_of(L'\\') + 1) + L"mervane_peer.exe";
}

} // namespace

PeerProcess::PeerProcess(const std::wstring& arguments)
{
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    HANDLE input = nullptr;
    EXPECT_TRUE(CreatePipe(&m_output, &input, &inherited, 0));
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = input;
    PROCESS_INFORMATION process{};
    std::wstring command = L"\"" + PeerPath() + L"\" " + arguments;
    EXPECT_TRUE(CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, CREATE_NO_WINDOW, nullptr,
                               nullptr, &startup, &process));
    CloseHandle(process.hThread);
    CloseHandle(input);
    m_process = process.hProcess;
}

PeerProcess::~PeerProcess()
{
    Kill();
    CloseHandle(m_process);
    CloseHandle(m_output);
}

std::optional<DWORD> PeerProcess::Hear()
{
    DWORD number = 0, read = 0;
    if (!ReadFile(m_output, &number, sizeof number, &read, nullptr) || read != sizeof number)
        return std::nullopt;
    return number;
}

DWORD PeerProcess::Unheard() const
{
    DWORD available = 0;
    return PeekNamedPipe(m_output, nullptr, 0, nullptr, &available, nullptr) ? available : 0;
}

DWORD PeerProcess::Wait()
{
    EXPECT_EQ(WaitForSingleObject(m_process, kLimit), WAIT_OBJECT_0);
    DWORD code = 0;
    GetExitCodeProcess(m_process, &code);
    return code;
}

void PeerProcess::Kill()
{
    TerminateProcess(m_process, 1);
    WaitForSingleObject(m_process, kLimit);
}
