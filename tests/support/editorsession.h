#pragma once

// For the GUI tests only (they link the forms).

#include "editorfixture.h"
#include "gamefolder.h"
#include "samplecatalogue.h"
#include "scriptedprompt.h"
#include "testfiles.h"

#include "configfiles/forms/dlgDescr.h"
#include "configfiles/forms/formregistry.h"
#include "startup/programdirectory.h"

#include <QAction>
#include <QDirIterator>
#include <QHash>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpression>
#include <QTest>

// The program as a user meets it: a game folder and a configuration folder
// of its own (a GameFolder, whose root is the program folder too), the sample
// catalogue, a scripted prompt, and the editor as start-up leaves it, shown
// (theForm<frmBots>()).
class EditorSession : public GameFolder
{
public:
    explicit EditorSession(int warriorSkins = 3)
    {
        setProgramDir(root());
        Catalogue() = SampleCatalogue(warriorSkins);
        restart();
    }
    ~EditorSession() { unloadWindows(); }

    // A new editor as start-up leaves it, over the same folders and
    // catalogue (whose look-ups, built for the first, serve it too).
    void restart()
    {
        unloadWindows();
        Roster() = BotRoster();
        prepareLikeStartup(form());
        form().show();
        snapshot();
    }

    frmBots &form() { return theForm<frmBots>(); }

    // Answers the next questions in turn: "Yes,No,Cancel".
    void answer(const QString &answers)
    {
        for (const QString &name : answers.split(u',', Qt::SkipEmptyParts))
            prompt.answerNext(name == u"Yes" ? MessageAnswer::Yes
                    : name == u"No"          ? MessageAnswer::No
                                             : MessageAnswer::Cancel);
    }

    // "state|file|Save|Save As|name shown", Save and Save As "on" or "off";
    // "closed" once the window has gone.
    QString document()
    {
        if (!isFormLoaded<frmBots>())
            return QStringLiteral("closed");
        const auto onOff = [](const QAction *a) { return a->isEnabled() ? "on" : "off"; };
        frmBots &f = form();
        return QStringList { f.lblSaved->text(), f.lblCurrentFile->text(), onOff(f.mnuFileSave),
            onOff(f.mnuFileSaveAs), f.txtName->text() }
            .join(u'|');
    }

    // Remembers every file under the root, for written().
    void snapshot()
    {
        m_before.clear();
        QDirIterator it(root(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            const QString path = it.next();
            m_before.insert(path, readTestFile(path));
        }
    }

    // The files made or changed since snapshot(), sorted, as paths from the
    // root with "=" and the first bot's name after those holding a bot list;
    // a backup's time stamp is "*". The list of recent files is left out.
    QStringList written() const
    {
        static const QRegularExpression firstBot(
            QStringLiteral("(?:^|\n)BotNames\\[0\\]=([^\r\n]*)"));
        static const QRegularExpression stamp(QStringLiteral("\\(\\d+(-\\d+){5}\\)"));
        QStringList files;
        QDirIterator it(root(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            const QString path = it.next();
            const QByteArray bytes = readTestFile(path);
            if (it.fileName() == u"recentfiles.txt" || m_before.value(path, "\n") == bytes)
                continue;
            QString file
                = QDir(root()).relativeFilePath(path).replace(stamp, QStringLiteral("(*)"));
            const auto match = firstBot.match(QString::fromLatin1(bytes));
            if (match.hasMatch())
                file += u'=' + match.captured(1);
            files << file;
        }
        files.sort();
        return files;
    }

    ScriptedPrompt prompt;

private:
    // The dialogs the window showed go with it; closing it instead would
    // write the options every time.
    static void unloadWindows()
    {
        unloadForm<frmBots>();
        unloadForm<dlgDescr>();
    }

    QHash<QString, QByteArray> m_before;
};

// The question before a command drops an unsaved list; `rest` ends its Yes
// and No lines: "and quit", "and then start a new one".
inline QString saveQuestion(const QString &rest)
{
    return QStringLiteral("Save Current Configuration?|Your current config is not saved.\r\n\r\n"
                          "   Yes = Save current configuration %1.\r\n\r\n"
                          "    No = Loose current configuration %1.\r\n\r\n"
                          "Cancel = Cancel this operation.")
        .arg(rest);
}

// What the prompt was asked, against `expected`: a message ending in "*"
// stands for any that begins so (the file system's own account of a failure,
// a reader's words that its own tests check).
inline void compareMessages(const ScriptedPrompt &prompt, QStringList expected)
{
    const QStringList asked = prompt.transcript();
    for (qsizetype i = 0; i < qMin(asked.size(), expected.size()); ++i) {
        if (expected.at(i).endsWith(u'*') && asked.at(i).startsWith(expected.at(i).chopped(1)))
            expected[i] = asked.at(i);
    }
    QCOMPARE(asked, expected);
}
