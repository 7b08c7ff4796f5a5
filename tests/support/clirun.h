#pragma once

#include <QJsonArray>
#include <QJsonDocument>
#include <QProcessEnvironment>
#include <QStringList>

// What a run of quorvane-cli gave back.
struct CliRun
{
    int exitCode = -1;
    QByteArray out;
    QString err;

    // stdout as JSON; a lone string parses too.
    QJsonValue json() const { return QJsonDocument::fromJson('[' + out + ']').array().at(0); }
};

struct CliCall
{
    QByteArray input; // stdin
    qint64 fileSizeLimit = 0; // bytes its files may grow to, 0 for no limit: a full disk (Unix)
    QString program = QStringLiteral(QUORVANE_CLI);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
};

CliRun runCli(const QStringList &arguments, const CliCall &call = {});
