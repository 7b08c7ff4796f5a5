#pragma once

#include "runerror.h"

#include <QDate>
#include <QString>

// Writes the three-line report of an unexpected error into `directory` and
// returns the report's full path. Throws RunError when it cannot be written.
QString WriteErrorReport(const QString &directory, const RunError &error, const QString &message,
                         const QDate &date = QDate::currentDate());

// Receives the errors that long procedures trap but cannot handle. The window
// program shows them in its error dialog; the default writes the report into
// the program's directory and prints the message to stderr.
class ErrorSink
{
public:
    virtual ~ErrorSink() = default;
    virtual void processError(const RunError &error, const QString &message) = 0;
};

ErrorSink &currentErrorSink();
void installErrorSink(ErrorSink *sink);

// Shorthand for currentErrorSink().processError(error, message).
void ProcessError(const RunError &error, const QString &message);
