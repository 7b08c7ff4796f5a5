#pragma once

#include <QString>

class QLabel;
class QWidget;

// A label named `name`, as tests and accessibility tools find it.
QLabel *namedLabel(QWidget *parent, const char *name, const QString &caption = {});
// The same, breaking its text into lines at the width it is given.
QLabel *wrappedLabel(QWidget *parent, const char *name, const QString &caption = {});

// Takes the close control away from `window` on every platform: the title
// bar loses its close button, and close requests that come from outside the
// program (the close button, Alt+F4, the window manager) and the Escape key
// of a dialog are ignored, so the window closes only through its own buttons.
// Call it while the window is being built.
void RemoveCloseMenu(QWidget *window);

// Opens a document, folder or web address with its default application.
// Returns whether the system accepted the request.
bool PerformShellAction(const QString &document);

// Opens the user guide (help/index.html of the program's directory or of
// the installation, UserGuideFile()) in the browser, at `section` (an id of
// the guide's headings) when one is given.
bool OpenUserGuide(const QString &section = {});

// The text a label shows for a caption: "&&" stands for one "&".
QString captionText(const QString &caption);

// Lets letEventLoopRun() process pending window events, so that long work
// on the user-interface thread keeps its windows painted and responsive.
void installWidgetEventLoopHook();

// Shows the busy pointer for the lifetime of the guard.
class BusyPointer
{
public:
    BusyPointer();
    ~BusyPointer();
    BusyPointer(const BusyPointer &) = delete;
    BusyPointer &operator=(const BusyPointer &) = delete;
};
