// Process start over posix_spawn; see PosixProcessStarter.h.
#include "platform/ProcessStarter.h"

#include <signal.h>
#include <spawn.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>

extern char** environ;

namespace lumora {

PosixProcessStarter::~PosixProcessStarter() {
    reapFinished();
}

void PosixProcessStarter::reapFinished() {
    children_.erase(std::remove_if(children_.begin(), children_.end(),
                                   [](long pid) {
                                       int status = 0;
                                       return waitpid(static_cast<pid_t>(pid), &status, WNOHANG) !=
                                              0;
                                   }),
                    children_.end());
}

long PosixProcessStarter::start(const std::string& commandLine, bool /*hidden*/) {
    reapFinished();
    std::string shell = "/bin/sh", flag = "-c", command = commandLine;
    char* argv[] = {shell.data(), flag.data(), command.data(), nullptr};
    pid_t pid = 0;
    if (posix_spawn(&pid, "/bin/sh", nullptr, nullptr, argv, environ) != 0)
        return 0;
    children_.push_back(pid);
    return pid;
}

long PosixProcessStarter::currentProcessId() {
    return static_cast<long>(::getpid());
}

std::string PosixProcessStarter::hostName() {
    char name[HOST_NAME_MAX + 1] = {};
    if (::gethostname(name, sizeof name - 1) != 0)
        return "";
    return name;
}

bool PosixProcessStarter::isRunning(long pid) {
    if (pid <= 0 || pid > INT_MAX)
        return false;
    // Signal 0 only asks; EPERM means the process exists but belongs to someone else.
    return ::kill(static_cast<pid_t>(pid), 0) == 0 || errno == EPERM;
}

} // namespace lumora
