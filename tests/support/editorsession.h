#pragma once

// For the GUI tests only (they link the forms).

#include "editorfixture.h"
#include "formtesting.h"
#include "gamefolder.h"
#include "samplecatalogue.h"

#include "configfiles/forms/dlgDescr.h"

#include <QAction>
#include <QDirIterator>
#include <QRegularExpression>

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

    // Copies the files of `folder` under the test data into the root.
    bool addFiles(const QString &folder)
    {
        const QHash<QString, QByteArray> added = files(testDataDir() + folder);
        bool copied = !added.isEmpty();
        for (auto file = added.begin(); file != added.end(); ++file)
            copied &= writeTestFile(root() + file.key(), *file);
        return copied;
    }

    // Remembers every file under the root, for written().
    void snapshot() { m_before = files(root()); }

    // The files made or changed since snapshot(), sorted, as paths from the
    // root with "=" and the first bot's name after those holding a bot list;
    // a backup's time stamp is "*". The list of recent files is left out.
    QStringList written() const
    {
        static const QRegularExpression firstBot("(?:^|\n)BotNames\\[0\\]=([^\r\n]*)");
        static const QRegularExpression stamp("\\(\\d+(-\\d+){5}\\)");
        QStringList changed;
        const QHash<QString, QByteArray> now = files(root());
        for (auto file = now.begin(); file != now.end(); ++file) {
            if (file.key().endsWith("recentfiles.txt") || m_before.value(file.key(), "\n") == *file)
                continue;
            const auto match = firstBot.match(QString::fromLatin1(*file));
            changed << QString(file.key()).replace(stamp, "(*)")
                    + (match.hasMatch() ? "=" + match.captured(1) : QString());
        }
        changed.sort();
        return changed;
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

    // Every file under `folder`, by its path from there.
    static QHash<QString, QByteArray> files(const QString &folder)
    {
        QHash<QString, QByteArray> contents;
        QDirIterator it(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            const QString path = it.next();
            contents.insert(QDir(folder).relativeFilePath(path), readTestFile(path));
        }
        return contents;
    }

    QHash<QString, QByteArray> m_before;
};
