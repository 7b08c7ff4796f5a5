#pragma once

#include "configfiles/errorreport.h"
#include "configfiles/progress.h"

#include <QStringList>

// Counts the band's advances and keeps the step messages; installs itself
// for its lifetime.
class RecordingProgress final : public Progress
{
public:
    RecordingProgress() { installProgress(this); }
    ~RecordingProgress() override { installProgress(nullptr); }

    void step(const QString &message) override { steps.append(message); }
    void advance() override { ++advances; }

    QStringList steps;
    int advances = 0;
};

// Keeps the errors handed to ProcessError instead of writing reports.
class RecordingErrorSink final : public ErrorSink
{
public:
    RecordingErrorSink() { installErrorSink(this); }
    ~RecordingErrorSink() override { installErrorSink(nullptr); }

    void processError(const RunError &error, const QString &message) override
    {
        errors.append({ error.number(), error.description(), message });
    }

    QStringList messages() const
    {
        QStringList found;
        for (const Entry &error : errors)
            found.append(error.message);
        return found;
    }

    struct Entry
    {
        int number;
        QString description, message;
    };
    QList<Entry> errors;
};
