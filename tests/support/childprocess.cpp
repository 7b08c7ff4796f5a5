#include "childprocess.h"

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

int runWithFileSizeLimit(qint64 fileSizeLimit, const std::function<int()> &body)
{
#ifndef Q_OS_UNIX
    Q_UNUSED(fileSizeLimit);
    Q_UNUSED(body);
    return -1;
#else
    const pid_t child = fork();
    if (child < 0)
        return -1;
    if (child == 0) {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit { static_cast<rlim_t>(fileSizeLimit),
            static_cast<rlim_t>(fileSizeLimit) };
        int code = 125;
        if (setrlimit(RLIMIT_FSIZE, &limit) == 0) {
            try {
                code = body();
            } catch (...) {
                code = 126;
            }
        }
        _exit(code);
    }
    int status = 0;
    if (waitpid(child, &status, 0) != child || !WIFEXITED(status))
        return -1;
    return WEXITSTATUS(status);
#endif
}
