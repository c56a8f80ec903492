#include "ui/start_turn.h"

namespace {
constexpr DWORD kLimit = 30'000; // milliseconds
} // namespace

StartTurn::StartTurn(const std::wstring& name)
    : m_mutex(CreateMutexW(nullptr, FALSE, (L"Local\\Quillmarsh." + name).c_str()))
{
    const DWORD waited = m_mutex ? WaitForSingleObject(m_mutex.get(), kLimit) : WAIT_FAILED;
    m_isOurs = waited == WAIT_OBJECT_0 || waited == WAIT_ABANDONED;
}

StartTurn::~StartTurn()
{
    End();
}

void StartTurn::End()
{
    if (m_isOurs)
        ReleaseMutex(m_mutex.get());
    m_isOurs = false;
}
