#include "configfiles/errorreport.h"
#include "configfiles/forms/dlgError.h"
#include "configfiles/forms/messageboxprompt.h"
#include "configfiles/forms/windowtools.h"
#include "startup/forms/startupsequence.h"
#include "widgets/startupartwork.h"

#include <QApplication>

#include <algorithm>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Quorvane"));
    QApplication::setApplicationVersion(QStringLiteral("%1.%2.%3")
                                            .arg(QUORVANE_VERSION_MAJOR)
                                            .arg(QUORVANE_VERSION_MINOR)
                                            .arg(QUORVANE_VERSION_PATCH));
    QApplication::setWindowIcon(ApplicationIcon());

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

    const int status = app.exec();
    installErrorSink(nullptr);
    installPrompt(nullptr);
    return status;
}
