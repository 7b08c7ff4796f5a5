// Starts the window program's start-up (splash, scan, the unmatched report
// closed as soon as it opens, the editor filled) on the program folder given
// and exits once the main window shows. bench/startup.sh times it against a
// bare scan of the same game.
//
//   bench_startup PROGRAM_DIR    (options.ini there names the game and the
//                                 configurations and closes the splash itself)
#include "configfiles/forms/formregistry.h"
#include "configfiles/forms/windowtools.h"
#include "configfiles/prompt.h"
#include "dialogscript.h"
#include "roster/forms/frmBots.h"
#include "startup/forms/startupsequence.h"
#include "startup/programdirectory.h"

#include <QApplication>
#include <QDir>
#include <QTimer>

#include <cstdio>
#include <cstdlib>

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: bench_startup PROGRAM_DIR\n");
        return 2;
    }
    setProgramDir(QDir(QString::fromLocal8Bit(argv[1])).absolutePath() + QDir::separator());
    SilentPrompt prompt;
    installPrompt(&prompt);
    installWidgetEventLoopHook();
    // With no steps, every modal dialog (the unmatched report) is closed
    // as soon as it shows.
    DialogScript closeDialogs;
    // A start-up that keeps asking (a game folder it does not accept) must
    // not hold up the benchmark for ever.
    QTimer::singleShot(60000, [] {
        std::fprintf(stderr, "start-up still running after a minute\n");
        std::_Exit(3);
    });

    Main();
    const bool shown = isFormLoaded<frmBots>() && theForm<frmBots>().isVisible();
    installPrompt(nullptr);
    if (!shown)
        std::fprintf(stderr, "the main window did not show\n");
    return shown ? 0 : 1;
}
