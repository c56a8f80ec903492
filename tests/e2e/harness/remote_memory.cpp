#include "e2e/harness/remote_memory.h"

#include <tlhelp32.h>

#include <algorithm>

#include "e2e/harness/wait.h"

namespace {

constexpr size_t kMostArguments = 8;

// What the code below is given, in its order.
struct CallFrame {
    uint64_t function;
    uint64_t arguments[kMostArguments];
    uint64_t result;
};

extern "C" const unsigned char g_callCode[];
extern "C" const unsigned char g_callCodeEnd[];

size_t CallCodeSize()
{
    return static_cast<size_t>(Argument(g_callCodeEnd) - Argument(g_callCode));
}

// A thread procedure that makes the call its parameter, a CallFrame, describes. It stands anywhere in memory.
asm(R"(
    .text
    .globl g_callCode, g_callCodeEnd
g_callCode:
    pushq %rbx
    subq $0x60, %rsp
    movq %rcx, %rbx
    movq 0x28(%rbx), %rax
    movq %rax, 0x20(%rsp)
    movq 0x30(%rbx), %rax
    movq %rax, 0x28(%rsp)
    movq 0x38(%rbx), %rax
    movq %rax, 0x30(%rsp)
    movq 0x40(%rbx), %rax
    movq %rax, 0x38(%rsp)
    movq 0x08(%rbx), %rcx
    movq 0x10(%rbx), %rdx
    movq 0x18(%rbx), %r8
    movq 0x20(%rbx), %r9
    call *(%rbx)
    movq %rax, 0x48(%rbx)
    xorl %eax, %eax
    addq $0x60, %rsp
    popq %rbx
    ret
g_callCodeEnd:
)");

UniqueKernelHandle OrNull(HANDLE handle)
{
    return UniqueKernelHandle(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
}

uint64_t ModuleBase(DWORD process, const wchar_t* library)
{
    const UniqueKernelHandle snapshot = OrNull(CreateToolhelp32Snapshot(TH32CS_SNAPMODULE, process));
    MODULEENTRY32W module{};
    module.dwSize = sizeof module;
    for (BOOL more = snapshot && Module32FirstW(snapshot.get(), &module); more;
         more = Module32NextW(snapshot.get(), &module))
        if (_wcsicmp(module.szModule, library) == 0)
            return Argument(module.modBaseAddr);
    return 0;
}

// A library may lie elsewhere in the other process.
uint64_t RemoteFunction(HANDLE process, const wchar_t* library, const char* function)
{
    HMODULE own = GetModuleHandleW(library);
    const uint64_t base = ModuleBase(GetProcessId(process), library);
    const FARPROC address = own ? GetProcAddress(own, function) : nullptr;
    if (!address || !base)
        return 0;
    return base + (reinterpret_cast<uint64_t>(address) - Argument(own));
}

} // namespace

RemoteBlock::RemoteBlock(HANDLE process, size_t size)
    : m_process(process),
      m_address(VirtualAllocEx(process, nullptr, size, MEM_COMMIT | MEM_RESERVE, PAGE_EXECUTE_READWRITE))
{}

RemoteBlock::~RemoteBlock()
{
    if (m_address)
        VirtualFreeEx(m_process, m_address, 0, MEM_RELEASE);
}

bool RemoteBlock::Write(const void* data, size_t size, size_t offset)
{
    return m_address &&
           WriteProcessMemory(m_process, static_cast<char*>(m_address) + offset, data, size, nullptr);
}

bool RemoteBlock::Read(void* data, size_t size, size_t offset) const
{
    return m_address &&
           ReadProcessMemory(m_process, static_cast<char*>(m_address) + offset, data, size, nullptr);
}

UniqueKernelHandle ProcessOf(HWND window)
{
    DWORD id = 0;
    GetWindowThreadProcessId(window, &id);
    return OrNull(OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE |
                                  PROCESS_CREATE_THREAD | PROCESS_QUERY_INFORMATION | SYNCHRONIZE,
                              FALSE, id));
}

namespace {

// Starts a thread that makes the call; the block holds the call and the code. Null when it could not be
// started.
UniqueKernelHandle StartCall(HANDLE process, const CallFrame& frame, RemoteBlock& block)
{
    if (!frame.function || !block.Write(frame) || !block.Write(g_callCode, CallCodeSize(), sizeof frame))
        return nullptr;
    auto* code = reinterpret_cast<LPTHREAD_START_ROUTINE>(static_cast<char*>(block.Address()) + sizeof frame);
    return UniqueKernelHandle(CreateRemoteThread(process, nullptr, 0, code, block.Address(), 0, nullptr));
}

} // namespace

uint64_t CallInProcess(HANDLE process, const wchar_t* library, const char* function,
                       std::initializer_list<uint64_t> arguments, uint64_t otherwise)
{
    if (arguments.size() > kMostArguments)
        return otherwise;
    CallFrame frame{};
    frame.function = RemoteFunction(process, library, function);
    std::copy(arguments.begin(), arguments.end(), frame.arguments);
    RemoteBlock block(process, sizeof frame + CallCodeSize());
    const UniqueKernelHandle thread = StartCall(process, frame, block);
    if (!thread || WaitForSingleObject(thread.get(), kRemoteLimit) != WAIT_OBJECT_0)
        return otherwise;
    return block.Read<CallFrame>().result;
}

void KeepThreadForCalls(HANDLE process)
{
    CallFrame frame{};
    frame.function = RemoteFunction(process, L"kernel32.dll", "WaitForSingleObject");
    frame.arguments[0] = Argument(GetCurrentProcess()); // each process's own
    frame.arguments[1] = INFINITE;
    RemoteBlock block(process, sizeof frame + CallCodeSize());
    if (StartCall(process, frame, block))
        block.Leave();
}
