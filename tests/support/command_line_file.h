// command_line_writer.exe, a program to be started by what is tested, and what it was started with.
#pragma once

#include <string>

// While it lives, the program writes its command line where this finds it.
class CommandLineFile {
  public:
    CommandLineFile();
    ~CommandLineFile();
    CommandLineFile(const CommandLineFile&) = delete;
    CommandLineFile& operator=(const CommandLineFile&) = delete;

    // What the program wrote, once it has.
    std::wstring Read() const;
    // It lies beside the test's program.
    static std::wstring ProgramPath();

  private:
    std::wstring m_path;
};
