#include "clirun.h"

#include <QDebug>
#include <QProcess>

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>
#endif

CliRun runCli(const QStringList &arguments, const CliCall &call)
{
    QProcess process;
    process.setProcessEnvironment(call.environment);
#ifdef Q_OS_UNIX
    if (call.fileSizeLimit > 0) {
        // Ignored, so that a write past the limit comes back short instead
        // of killing the program.
        process.setChildProcessModifier([limit = call.fileSizeLimit] {
            std::signal(SIGXFSZ, SIG_IGN);
            const rlimit bytes { rlim_t(limit), rlim_t(limit) };
            setrlimit(RLIMIT_FSIZE, &bytes);
        });
    }
#endif
    process.start(call.program, arguments);
    process.write(call.input);
    process.closeWriteChannel();
    if (!process.waitForFinished(60000))
        qWarning() << "quorvane-cli did not finish:" << arguments;
    return { process.exitCode(), process.readAllStandardOutput(),
        QString::fromUtf8(process.readAllStandardError()) };
}
