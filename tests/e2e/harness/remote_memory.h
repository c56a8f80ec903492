// Memory and calls inside another process. Messages above WM_USER carry pointers of the process that the
// window belongs to, and menus can only be read there.
#pragma once

#include <windows.h>

#include <cstdint>
#include <initializer_list>
#include <type_traits>

#include "util/owners.h"

// A block of memory in the process of a window, freed at the end.
class RemoteBlock {
  public:
    RemoteBlock(HANDLE process, size_t size);
    ~RemoteBlock();
    RemoteBlock(const RemoteBlock&) = delete;
    RemoteBlock& operator=(const RemoteBlock&) = delete;

    // The address in the other process; null when there was no memory.
    void* Address() const { return m_address; }
    // It stays for as long as the process lives.
    void Leave() { m_address = nullptr; }
    LPARAM AsLParam() const { return reinterpret_cast<LPARAM>(m_address); }
    bool Write(const void* data, size_t size, size_t offset = 0);
    bool Read(void* data, size_t size, size_t offset = 0) const;

    template <typename T> bool Write(const T& value, size_t offset = 0)
    {
        static_assert(std::is_trivially_copyable_v<T>);
        return Write(&value, sizeof value, offset);
    }
    template <typename T> T Read(size_t offset = 0) const
    {
        static_assert(std::is_trivially_copyable_v<T>);
        T value{};
        Read(&value, sizeof value, offset);
        return value;
    }

  private:
    HANDLE m_process;
    void* m_address;
};

// The process of a window, opened for reading, writing and calls; null when that fails.
UniqueKernelHandle ProcessOf(HWND window);

// Calls a function of a system library in the other process, on a thread of its own, with at most eight
// arguments, and returns what it returns. otherwise when the call could not be made or did not return within
// the limit.
uint64_t CallInProcess(HANDLE process, const wchar_t* library, const char* function,
                       std::initializer_list<uint64_t> arguments, uint64_t otherwise = 0);

// Makes the calls above safe for a process that is idle at this moment, whatever it does later. Wine makes
// memory and threads for another process on one of that process's own threads, in the midst of what it does:
// where it holds the heap's lock, the new thread would wait for it for ever. A thread that only waits is
// taken instead.
void KeepThreadForCalls(HANDLE process);

// An argument of such a call.
template <typename T> uint64_t Argument(T* pointer)
{
    return reinterpret_cast<uint64_t>(pointer);
}
