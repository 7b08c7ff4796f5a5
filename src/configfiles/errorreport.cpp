#include "errorreport.h"

#include "startup/programdirectory.h"
#include "textfile.h"

#include <cstdio>

QString WriteErrorReport(const QString &directory, const RunError &error, const QString &message,
                         const QDate &date)
{
    // Month and day without leading zeros and without a separator: the name
    // the support address has always received.
    const QString datePart = QString::number(date.month()) + QString::number(date.day())
                             + QString::number(date.year());
    const QString path = directory + QStringLiteral("ErrNum") + QString::number(error.number())
                         + QLatin1Char('_') + datePart + QStringLiteral(".txt");
    writeAnsiLines(path, {QStringLiteral("Error Message: ") + message,
                          QStringLiteral("Error Number: ") + QString::number(error.number()),
                          QStringLiteral("Description: ") + error.description()});
    return path;
}

namespace {

class ReportingErrorSink final : public ErrorSink
{
public:
    void processError(const RunError &error, const QString &message) override
    {
        QString where;
        try {
            where = QStringLiteral(" (report: ") + WriteErrorReport(ProgramDir(), error, message)
                    + QLatin1Char(')');
        } catch (const RunError &) {
            // A report that cannot be written must not hide the error itself.
        }
        const QByteArray line = (QStringLiteral("Error Number: ") + QString::number(error.number())
                                 + QStringLiteral(": ") + message + QLatin1Char(' ')
                                 + error.message() + where)
                                    .toLocal8Bit();
        std::fprintf(stderr, "%s\n", line.constData());
    }
};

ReportingErrorSink defaultSink;
ErrorSink *installedSink = nullptr;

} // namespace

ErrorSink &currentErrorSink()
{
    return installedSink ? *installedSink : defaultSink;
}

void installErrorSink(ErrorSink *sink)
{
    installedSink = sink;
}

void ProcessError(const RunError &error, const QString &message)
{
    currentErrorSink().processError(error, message);
}
