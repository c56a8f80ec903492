#include "wine_server.h"

#include <windows.h>

#include <cstdio>
#include <string>

#include "measure.h"
#include "stores.h"

namespace bench {

namespace {

constexpr DWORD_PTR kFirst = 1;
constexpr double kLimit = 5e6; // microseconds

std::wstring ServerProcess()
{
    wchar_t id[32];
    const DWORD length = GetEnvironmentVariableW(L"BENCH_WINESERVER", id, 32);
    return length < 32 ? std::wstring(id, length) : std::wstring();
}

// The value of a line of the server's status file, for example "0" or "0-1".
std::string AllowedProcessors()
{
    const std::wstring path = L"Z:\\proc\\" + ServerProcess() + L"\\status";
    FILE* file = _wfopen(path.c_str(), L"r");
    std::string allowed;
    char line[256], value[64];
    while (file && fgets(line, sizeof line, file)) {
        if (sscanf(line, "Cpus_allowed_list: %63s", value) == 1)
            allowed = value;
    }
    if (file)
        fclose(file);
    return allowed;
}

// Wine starts a Unix program without giving a handle to it.
void RunTaskset(const std::string& processors)
{
    const std::wstring list(processors.begin(), processors.end());
    std::wstring commandLine = L"taskset -cp " + list + L" " + ServerProcess();
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES; // its output is of no interest
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(L"Z:\\usr\\bin\\taskset", commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr,
                        nullptr, &startup, &process))
        Fail("taskset cannot be run");
}

void Allow(const std::string& processors)
{
    RunTaskset(processors);
    const Stopwatch watch;
    while (AllowedProcessors() != processors) {
        if (watch.Microseconds() > kLimit)
            Fail("Wine's server stays on its processor");
        Sleep(1);
    }
}

} // namespace

bool KnowsWineServer()
{
    return !ServerProcess().empty() && !AllowedProcessors().empty();
}

void PinServer(int processor)
{
    SetProcessAffinityMask(GetCurrentProcess(), kFirst);
    Allow(std::to_string(processor));
}

} // namespace bench
