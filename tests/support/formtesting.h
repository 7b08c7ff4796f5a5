#pragma once

// For the GUI tests only (they link the forms): the Qt Widgets headers the
// form tests use, and the ways they play the user and the window system.

#include "samplecatalogue.h"
#include "screenshots.h"
#include "scriptedprompt.h"
#include "testfiles.h"

#include "configfiles/forms/formregistry.h"
#include "startup/options.h"
#include "startup/programdirectory.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QDirIterator>
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

#include <functional>
#include <memory>

// Runs `action` once the next modal dialog has started its event loop.
inline void whenShown(std::function<void()> action)
{
    QTimer::singleShot(0, qApp, std::move(action));
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

// Copies the folder `name` of the test data, a fixture's real files, into
// `to` (ending with a separator).
inline bool copyTestData(const QString &name, const QString &to)
{
    const QDir from(testDataDir() + name);
    bool copied = QDir().mkpath(to);
    for (QDirIterator it(from.path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
         it.hasNext();) {
        const QString file = it.next();
        copied
            = copied && writeTestFile(to + native(from.relativeFilePath(file)), readTestFile(file));
    }
    return copied;
}

// The sample catalogue, its models named by the skin types pattern.ini uses.
inline void loadPatternCatalogue()
{
    Catalogue() = SampleCatalogue();
    const QStringList skinTypes { "commando", "fcommando", "boss", "Robot", "warrior", "robot2" };
    for (qsizetype i = 0; i < skinTypes.size(); ++i)
        Catalogue().MISCCLASSES[i].SkinType = skinTypes.at(i);
}
