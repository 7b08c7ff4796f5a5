#pragma once

#include <QString>

#include <functional>

// How long work shows that it is moving: a step message and a band that
// advances one notch per unit of work (the splash screen in the window
// program; nothing, or a counter, elsewhere).
class Progress
{
public:
    virtual ~Progress() = default;
    virtual void step(const QString &message) = 0;
    virtual void advance() = 0;
};

// The progress in use; a silent one until another is installed.
Progress &currentProgress();
void installProgress(Progress *progress);

// Lets the event loop run between units of work so that windows repaint.
// The hook is called at most once per interval, however often this is, so
// a long loop is not slowed down by it.
void letEventLoopRun();
void setEventLoopHook(std::function<void()> hook, int intervalMs = 15);
