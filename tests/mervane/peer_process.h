// The other program of the tests (store_peer.cpp) as a child process.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

class PeerProcess {
  public:
    explicit PeerProcess(const std::wstring& arguments);
    ~PeerProcess(); // kills it when it still runs
    PeerProcess(const PeerProcess&) = delete;
    PeerProcess& operator=(const PeerProcess&) = delete;

    // The next number that it says; none when it has ended.
    std::optional<DWORD> Hear();
    // How many bytes of what it said were not heard yet.
    DWORD Unheard() const;
    // Its exit code, once it has ended by itself.
    DWORD Wait();
    void Kill();

    // Runs one to its end and gives its exit code.
    static DWORD Run(const std::wstring& arguments) { return PeerProcess(arguments).Wait(); }

  private:
    HANDLE m_process = nullptr;
    HANDLE m_output = nullptr;
};
