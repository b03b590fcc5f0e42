// Starts command lines through the shell without waiting for them, and answers for this process
// and the others of the machine. There is no hidden console to ask for on POSIX, so the hidden
// flag changes nothing.
#pragma once

#include "app/Services.h"

#include <vector>

namespace lumora {

class PosixProcessStarter : public ProcessStarter {
  public:
    ~PosixProcessStarter() override;
    long start(const std::string& commandLine, bool hidden) override;
    long currentProcessId() override;
    std::string hostName() override;
    bool isRunning(long pid) override;

  private:
    // Children already started; the finished ones are collected at each start and at the end,
    // so a long session leaves no zombie processes behind.
    void reapFinished();
    std::vector<long> children_;
};

} // namespace lumora
