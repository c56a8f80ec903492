#include "mervane/file/turn.h"

Turn::Turn(const std::wstring& name, DWORD limit)
    : m_mutex(CreateMutexW(nullptr, FALSE, (L"Local\\Quillmarsh." + name).c_str()))
{
    const DWORD waited = m_mutex ? WaitForSingleObject(m_mutex.get(), limit) : WAIT_FAILED;
    m_isOurs = waited == WAIT_OBJECT_0 || waited == WAIT_ABANDONED;
}

Turn::~Turn()
{
    End();
}

void Turn::End()
{
    if (m_isOurs)
        ReleaseMutex(m_mutex.get());
    m_isOurs = false;
}
