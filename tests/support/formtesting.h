#pragma once

// For the GUI tests only (they link the forms): the Qt Widgets headers the
// form tests use, and the ways they play the user and the window system.

#include "scriptedprompt.h"
#include "testfiles.h"

#include "configfiles/forms/formregistry.h"
#include "startup/options.h"
#include "startup/programdirectory.h"

#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <QtTest/qtestspontaneevent.h>

#include <functional>
#include <memory>

// Runs `action` once the next modal dialog has started its event loop.
inline void whenShown(std::function<void()> action)
{
    QTimer::singleShot(0, qApp, std::move(action));
}

// A close request, or the show of a minimised window coming back, as the
// window system sends them; sendEvent() would clear the spontaneous flag.
// Returns whether the window accepted it.
inline bool spontaneous(QWidget *window, QEvent &&event)
{
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(window, &event);
    return event.isAccepted();
}

// Neither the title bar nor Escape closes the shown `window`: only its own
// buttons, or the program, do.
inline bool closesOnlyThroughItsButtons(QWidget *window)
{
    QTest::keyClick(window, Qt::Key_Escape);
    return !window->windowFlags().testFlag(Qt::WindowCloseButtonHint)
        && !spontaneous(window, QCloseEvent()) && window->isVisible();
}

inline QString native(const QString &path)
{
    return QDir::toNativeSeparators(path);
}

// Every message so far as "title|text", " [No]" after a question whose
// Enter answers No.
inline QStringList askedMarkingNo(const ScriptedPrompt &prompt)
{
    QStringList lines;
    for (const Message &message : prompt.messages())
        lines << message.title + "|" + message.text
                + (message.defaultButton == MessageDefault::No ? " [No]" : "");
    return lines;
}
