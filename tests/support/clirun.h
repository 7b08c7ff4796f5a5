#pragma once

#include <QProcessEnvironment>
#include <QStringList>

// What a run of quorvane-cli gave back.
struct CliRun
{
    int exitCode = -1;
    QByteArray out;
    QString err;
};

struct CliCall
{
    QByteArray input; // stdin
    qint64 fileSizeLimit = 0; // bytes its files may grow to, 0 for no limit: a full disk (Unix)
    QString program = QStringLiteral(QUORVANE_CLI);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
};

CliRun runCli(const QStringList &arguments, const CliCall &call = {});
