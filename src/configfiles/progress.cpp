#include "progress.h"

#include <QElapsedTimer>

namespace {

class SilentProgress final : public Progress
{
public:
    void step(const QString &) override {}
    void advance() override {}
};

SilentProgress silentProgress;
Progress *installedProgress = nullptr;

std::function<void()> eventLoopHook;
int eventLoopInterval = 15;
QElapsedTimer sinceLastRun;

} // namespace

Progress &currentProgress()
{
    return installedProgress ? *installedProgress : silentProgress;
}

void installProgress(Progress *progress)
{
    installedProgress = progress;
}

void letEventLoopRun()
{
    if (!eventLoopHook)
        return;
    if (sinceLastRun.isValid() && sinceLastRun.elapsed() < eventLoopInterval)
        return;
    sinceLastRun.start();
    eventLoopHook();
}

void setEventLoopHook(std::function<void()> hook, int intervalMs)
{
    eventLoopHook = std::move(hook);
    eventLoopInterval = intervalMs;
    sinceLastRun.invalidate();
}
