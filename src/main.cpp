#include "buildconfig.h"
#include "configfiles/errorreport.h"
#include "configfiles/forms/dlgError.h"
#include "configfiles/forms/messageboxprompt.h"
#include "configfiles/forms/windowtools.h"
#include "roster/forms/openatstart.h"
#include "startup/forms/startupsequence.h"
#include "startup/programdirectory.h"
#include "widgets/startupartwork.h"

#include <QApplication>
#include <QCommandLineParser>

#include <algorithm>
#include <cstring>

namespace {

void describeCommandLine(QCommandLineParser &parser)
{
    parser.setApplicationDescription(
        QStringLiteral("Keeps practice-bot lists for Unreal Tournament and puts the one you "
                       "choose into the game."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOption({ QStringLiteral("program-dir"),
        QStringLiteral("Where options.ini, int.ini, pattern.ini and reports live (default: the "
                       "executable's directory, or the per-user data folder when the program is "
                       "installed or its directory is read-only)."),
        QStringLiteral("DIR") });
    parser.addPositionalArgument(QStringLiteral("file"),
        QStringLiteral("A configuration file (.qvn) to open once the program has started; one "
                       "from outside the configuration folder is offered to be copied there "
                       "first."),
        QStringLiteral("[file]"));
}

// --help and --version answer on the terminal, with no display needed.
bool asksOnlyForText(int argc, char *argv[])
{
    for (int i = 1; i < argc && std::strcmp(argv[i], "--") != 0; ++i) {
        for (const char *option : { "-h", "-?", "--help", "--help-all", "-v", "--version" }) {
            if (std::strcmp(argv[i], option) == 0)
                return true;
        }
    }
    return false;
}

} // namespace

int main(int argc, char *argv[])
{
    if (asksOnlyForText(argc, argv)) {
        QCoreApplication app(argc, argv);
        NameApplication();
        QCommandLineParser parser;
        describeCommandLine(parser);
        parser.process(app); // prints and ends the program
        return 0;
    }

    QApplication app(argc, argv);
    NameApplication();
    // Lets the desktop find the menu entry and its icon for the windows.
    QGuiApplication::setDesktopFileName(QStringLiteral(QUORVANE_APP_ID));
    QApplication::setWindowIcon(ApplicationIcon());
    QCommandLineParser parser;
    describeCommandLine(parser);
    parser.process(app);
    setProgramDir(parser.value(QStringLiteral("program-dir")));

    // The splash installs itself as the progress while it shows.
    MessageBoxPrompt prompt;
    installPrompt(&prompt);
    DialogErrorSink errors;
    installErrorSink(&errors);
    installWidgetEventLoopHook();

    Main();
    // Start-up that ended in an error it reported, or that the user quit,
    // has left no window.
    const QWidgetList windows = QApplication::topLevelWidgets();
    if (std::none_of(windows.cbegin(), windows.cend(),
            [](const QWidget *window) { return window->isVisible(); }))
        return QuitChosenAtStartup() ? 0 : 1;
    // A file manager hands over the configuration the user opened.
    if (!parser.positionalArguments().isEmpty())
        OpenConfigurationAtStart(parser.positionalArguments().constFirst());

    const int status = app.exec();
    installErrorSink(nullptr);
    installPrompt(nullptr);
    return status;
}
