#pragma once

#include <QtGlobal>

#include <functional>

// Runs `body` in a forked copy of the test process whose files may not grow
// beyond `fileSizeLimit` bytes (SIGXFSZ ignored, so that a write past the
// limit comes back short instead of killing the child): the way to test a
// full disk. Returns the child's exit code, the value `body` returned, or
// -1 when the child did not exit normally. Unix only; elsewhere nothing
// runs and the result is -1.
int runWithFileSizeLimit(qint64 fileSizeLimit, const std::function<int()> &body);
