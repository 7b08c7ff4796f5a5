#include "dialogscript.h"
#include "editorsession.h"

#include "configfiles/configfile.h"
#include "configfiles/configname.h"
#include "configfiles/forms/dlgLaunchUT.h"
#include "configfiles/gameinstallation.h"
#include "configfiles/textfile.h"
#include "roster/forms/frmAbout.h"
#include "roster/forms/openatstart.h"
#include "startup/forms/frmSplash.h"
#include "startup/recentfiles.h"

#include <QDate>
#include <QDesktopServices>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QUndoStack>

#include <memory>

namespace {

QByteArray realUserIni(const QByteArray &firstBot = "Archon")
{
    return readTestFile(realWorldDir() + "vanilla-server/System/User.ini")
        .replace("BotNames[0]=Archon", "BotNames[0]=" + firstBot);
}

// The question before a command drops an unsaved list; `rest` ends its Yes
// and No lines: "and quit", "and then start a new one".
QString saveQuestion(const QString &rest)
{
    return QStringLiteral("Save Current Configuration?|Your current config is not saved.\r\n\r\n"
                          "   Yes = Save current configuration %1.\r\n\r\n"
                          "    No = Loose current configuration %1.\r\n\r\n"
                          "Cancel = Cancel this operation.")
        .arg(rest);
}

// What a dialog's control shows: a list's entries with "*" after the
// current one, a box's caption with [x] when ticked, a text's beginning.
QString shownIn(QWidget *control)
{
    if (auto *list = qobject_cast<QComboBox *>(control)) {
        QStringList entries;
        for (int i = 0; i < list->count(); ++i)
            entries << list->itemText(i) + (i == list->currentIndex() ? "*" : "");
        return entries.join(',');
    }
    if (auto *box = qobject_cast<QCheckBox *>(control))
        return box->text() + (box->isChecked() ? " [x]" : " [ ]");
    if (auto *text = qobject_cast<QPlainTextEdit *>(control))
        return text->toPlainText().left(20);
    const QTreeWidgetItem *row = qobject_cast<QTreeWidget *>(control)->currentItem();
    return row->text(0) + " " + row->text(1);
}

// Types or picks `value` in a dialog's control; a row of a list by number.
void setIn(QWidget *control, const QString &value)
{
    if (auto *list = qobject_cast<QComboBox *>(control))
        list->setCurrentText(value);
    else if (auto *line = qobject_cast<QLineEdit *>(control))
        line->setText(value);
    else if (auto *box = qobject_cast<QAbstractButton *>(control);
             box && box->isChecked() != (value == "1"))
        box->click();
    else if (auto *view = qobject_cast<QAbstractItemView *>(control))
        view->setCurrentIndex(view->model()->index(value.toInt(), 0));
}

// Remembers what the program asked the desktop to open.
class OpenedUrls : public QObject
{
    Q_OBJECT
public:
    Q_INVOKABLE void open(const QUrl &url) { urls.append(url); }
    QList<QUrl> urls;
};

} // namespace

// The main window's File and Help commands, the dialogs they open and the
// lists handed over from outside (a file manager, a drop, the recent list),
// on a game folder made from the real installation's User.ini.
class TestDocumentCommands : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        setGameStarter([this](const QString &program, const QString &workingDirectory) {
            m_started << program + " in " + workingDirectory;
            return true;
        });
        setProcessLister([this] { return m_processes; });
    }

    // Two lists, a broken one, a folder named as a list and two backups beside
    // the real User.ini and the game's programs, and lists in a download
    // folder: one whose name is taken.
    void init()
    {
        m_session = std::make_unique<EditorSession>();
        QVERIFY(m_session->addFiles("documents/session"));
        QVERIFY(writeTestFile(m_session->userIni(), realUserIni()));
        m_session->snapshot();
        m_started.clear();
        m_processes = QStringList { "bash", "kworker" };
        m_notes.clear();
        LaunchWithoutAsking() = false;
    }
    void cleanup() { m_session.reset(); }

    void sessions_data()
    {
        QTest::addColumn<QString>("steps"); // see play
        QTest::addColumn<QStringList>("messages"); // see verify
        QTest::addColumn<QString>("document");
        QTest::addColumn<QString>("written"); // see EditorSession, joined with commas

        // clang-format off
        const QString team = "Open,>Team.qvn,edit,"; // a named list, edited
        const QString onNew = saveQuestion("and then start a new one");
        const QString onOpen = saveQuestion("and then open a different configuration");
        const QString onExit = saveQuestion("and quit");
        const QString overwrite = "File Already Exists|This file exists, do you really want to over write it?";
        const QString applied = "Apply Configuration...|Completed";
        const QString restored = "Restore Backup...|Completed";
        const QString bots = "Configs/Bots.qvn=Archon";
        const QString unnamed = "Modified|(Un-Named)|on|on|";
        const QString untouched = "Saved||off|off|Archon|";
        const QString launched = "Configs/curconfig_bkup_(*).qvn2=Archon,UT/System/User.ini=";
        const auto copy = [](const QString &name) { return "Copy Configuration|~Downloads/" + name + " is not in the configuration folder @.\r\n\r\nCopy it there and open the copy?"; };
        QTest::newRow("new") << "New" << QStringList() << unnamed + "Archon|" << "";
        QTest::newRow("opened") << "Open,>Team.qvn" << QStringList() << "Loaded|Team.qvn|off|off|Teamster|The team list " << "";
        QTest::newRow("saved as") << "New,SaveAs,>Bots" << QStringList() << "Saved|Bots.qvn|off|on|Archon|" << bots;
        QTest::newRow("save as cancelled") << "New,SaveAs,>Bots,SaveAs,>!" << QStringList() << "Modified|Bots.qvn|on|on|Archon|" << bots;
        QTest::newRow("unnamed save asks a name") << "New,edit,Save,>!" << QStringList() << unnamed + "Edited|" << "";
        QTest::newRow("named save overwrites") << "New,SaveAs,>Team,Yes,edit,Save" << QStringList { overwrite } << "Saved|Team.qvn|off|on|Edited|" << "Configs/Team.qvn=Edited";

        // Yes saves first; a cancelled Save As does not hold the command up.
        QTest::newRow("new, yes") << team + "Yes,New" << QStringList { onNew } << unnamed + "Archon|The team list " << "Configs/Team.qvn=Edited";
        QTest::newRow("new, cancel") << team + "Cancel,New" << QStringList { onNew } << "Loaded|Team.qvn|off|off|Edited|The team list " << "";
        QTest::newRow("open, no") << team + "No,Open,>Alpha.qvn" << QStringList { onOpen } << "Loaded|Alpha.qvn|off|off|Alphonse|The first list " << "";
        QTest::newRow("exit, yes") << team + "Yes,Exit" << QStringList { onExit } << "closed" << "Configs/Team.qvn=Edited,options.ini";
        QTest::newRow("exit, cancel") << team + "Cancel,Exit" << QStringList { onExit } << "Loaded|Team.qvn|off|off|Edited|The team list " << "";
        QTest::newRow("unnamed exit, yes") << "New,edit,Yes,Exit,>!" << QStringList { onExit } << "closed" << "options.ini";

        // Refused names and failed writes keep Save As open for another name.
        QTest::newRow("overwrite declined") << "New,SaveAs,>Team,No" << QStringList { overwrite } << unnamed + "Archon|" << "";
        QTest::newRow("write fails") << "New,SaveAs,>Jammed,Yes" << QStringList { overwrite, "Configuration Not Saved|The configuration could not be saved as Jammed.qvn:\r\n*" } << unnamed + "Archon||kept open" << "";
        QTest::newRow("save as ../Bots") << "New,SaveAs,>../Bots" << QStringList { InvalidConfigNameTitle() + "|" + ConfigNameProblem("../Bots.qvn") } << unnamed + "Archon||kept open" << "";

        // Names Open refuses leave the dialog open and the list as it was.
        QTest::newRow("open nothing") << "New,edit,No,Open,>" << QStringList { onOpen, "Open Configuration|Type the name of a configuration to open, or pick one from the list." } << unnamed + "Edited||kept open" << "";
        QTest::newRow("open a missing file") << "New,edit,No,Open,>Missing.qvn" << QStringList { onOpen, "Open Configuration|Can't find Missing.qvn in the configuration folder @." } << unnamed + "Edited||kept open" << "";
        QTest::newRow("open a broken file") << "New,edit,No,Open,>Broken.qvn" << QStringList { onOpen, "Configuration Not Opened|The configuration Broken.qvn could not be opened; nothing was changed.\r\n*" } << unnamed + "Edited||kept open" << "";

        // From outside the configuration folder a list is copied in, and the copy opened.
        QTest::newRow("hand over, copied") << "Yes,hand:Downloads/Fresh.qvn" << QStringList { copy("Fresh.qvn") } << "Loaded|Fresh.qvn|off|off|Fetched|The first list " << "Configs/Fresh.qvn=Fetched";
        QTest::newRow("hand over, not copied") << "No,hand:Downloads/Fresh.qvn" << QStringList { copy("Fresh.qvn") } << untouched << "";
        QTest::newRow("hand over, name taken, replaced") << "Yes,Yes,hand:Downloads/Team.qvn" << QStringList { copy("Team.qvn"), "File Already Exists|The configuration folder already holds a file named Team.qvn.\r\n\r\nReplace it with ~Downloads/Team.qvn?" } << "Loaded|Team.qvn|off|off|Fetched|The first list " << "Configs/Team.qvn=Fetched";
        QTest::newRow("hand over, same file there") << "Yes,hand:Downloads/Alpha.qvn" << QStringList { copy("Alpha.qvn") } << "Loaded|Alpha.qvn|off|off|Alphonse|The first list " << "";
        QTest::newRow("hand over a missing file") << "hand:Downloads/Missing.qvn" << QStringList { "Configuration Not Opened|The configuration Missing.qvn could not be opened; nothing was changed.\r\n*" } << untouched << "";
        QTest::newRow("drop") << "Yes,drop:Downloads/Fresh.qvn" << QStringList { copy("Fresh.qvn") } << "Loaded|Fresh.qvn|off|off|Fetched|The first list |accepted" << "Configs/Fresh.qvn=Fetched";
        QTest::newRow("drop two lists") << "drop:Downloads/Fresh.qvn+Downloads/Fresh.qvn" << QStringList() << untouched << "";

        // Quit and Launch saves, applies with a backup, starts the game and quits.
        QTest::newRow("launch without asking") << "Open,>Team.qvn,don't ask,QuitLaunch" << QStringList { applied } << "closed|started|don't ask" << "Configs/Team.qvn=Teamster," + launched + "Teamster,options.ini";
        QTest::newRow("launch ticked, cancelled") << "Open,>Team.qvn,QuitLaunch,@chkAutoGoAway=1;CancelButton" << QStringList() << "Loaded|Team.qvn|off|off|Teamster|The team list |don't ask" << "";
        QTest::newRow("launch unnamed, saved as") << "New,edit,QuitLaunch,@cmdYes,>Fresh" << QStringList { applied } << "closed|started" << "Configs/Fresh.qvn=Edited," + launched + "Edited,options.ini";
        QTest::newRow("launch while the game runs") << "Open,>Team.qvn,don't ask,game runs:UnrealTournament.exe,QuitLaunch" << QStringList { "Unreal Tournament Is Running|Unreal Tournament is running. It rewrites user.ini when it quits, so the bot list applied now will be overwritten then.\r\n\r\nApply the configuration anyway?" } << "Saved|Team.qvn|off|off|Teamster|The team list |don't ask" << "Configs/Team.qvn=Teamster";
        QTest::newRow("launch without the game") << "rm:UT/System/UnrealTournament.exe+UT/System/ut-bin,New,SaveAs,>Bots,edit,QuitLaunch" << QStringList { "Unreal Tournament Exe Missing...|Unreal Tournament Executable not found!" } << "Modified|Bots.qvn|on|on|Edited|" << bots;

        // Apply offers the lists, not the backups, and puts the one chosen into each user.ini,
        // keeping a backup of each list it replaces when asked to.
        QTest::newRow("apply") << "Apply,@cmbConfigs=Team.qvn;chkBackup=0;?cmbConfigs;?chkTarget0;?txtDescr;cmdApply" << QStringList { applied } << untouched + "|Alpha.qvn,Broken.qvn,Team.qvn*|~UT/System/User.ini [x]|The team list " << "UT/System/User.ini=Teamster";
        QTest::newRow("apply to two, backed up") << "ini64:Archon,Apply,@cmbConfigs=Team.qvn;chkBackup=1;?chkTarget1;cmdApply" << QStringList { applied } << untouched + "|~UT/System64/User.ini [x]"
            << "Configs/curconfig_bkup_(*).qvn2=Archon,Configs/curconfig_bkup_(*)_System64.qvn2=Archon,UT/System/User.ini=Teamster,UT/System64/User.ini=Teamster";

        // Backups are listed newest first with their bots; the one chosen goes back into the
        // user.ini it was made of, the list it replaces backed up first.
        QTest::newRow("restore the newest") << "ini64:Archon,Restore,@lstBackups=0;?lstBackups;?cmbTargets;cmdRestore" << QStringList { restored } << untouched + "|2005-03-07 09:05:03 Sixty4|~UT/System/User.ini,~UT/System64/User.ini*" << "Configs/curconfig_bkup_(*)_System64.qvn2=Archon,UT/System64/User.ini=Sixty4";
        QTest::newRow("restore elsewhere") << "ini64:Archon,Restore,@lstBackups=1;?lstBackups;?cmbTargets;cmbTargets=~UT/System64/User.ini;cmdRestore" << QStringList { restored } << untouched + "|2003-01-02 04:05:06 Oldie, Older|~UT/System/User.ini*,~UT/System64/User.ini" << "Configs/curconfig_bkup_(*)_System64.qvn2=Archon,UT/System64/User.ini=Oldie";

        // File lists the configurations opened and saved last, newest first, also in the next
        // run; one that has gone is reported and leaves the list.
        QTest::newRow("recent files") << "hand:Configs/Alpha.qvn,No,hand:Configs/Team.qvn,No,recent:1,recent?,rm:Configs/Alpha.qvn,recent:0,recent?,restart,recent?" << QStringList { onOpen, onOpen, "Configuration Not Opened|The configuration Alpha.qvn could not be opened; nothing was changed.\r\n*" } << untouched + "|&1 Alpha.qvn,&2 Team.qvn|&1 Team.qvn|&1 Team.qvn" << "";

        // The game's list becomes an unnamed list, ready for Save As, with a fresh history;
        // anything that keeps it from being read leaves the editor as it was.
        QTest::newRow("import") << "ini:Gamer,Import" << QStringList() << unnamed + "Gamer|Imported from ~UT/System/User.ini on @today" << "";
        QTest::newRow("import the second of two") << "ini:Gamer,ini64:Sixty,Import,@lstFiles=1;?txtPreview;cmdImport" << QStringList() << unnamed + "Sixty|Imported from ~UT/System64/User.ini on @today|Sixty, Aryss, Alarik" << "";
        QTest::newRow("import without a bot list") << "ini:[Engine.Engine],Import" << QStringList { "Import from Game|Can't find the [Botpack.ChallengeBotInfo] section in ~UT/System/User.ini.  Nothing was imported." } << untouched << "";
        QTest::newRow("import without user.ini") << "rm:UT/System/User.ini,Import" << QStringList { "Import from Game|Can't find user.ini in the game folder ~UT/.  Nothing was imported." } << untouched << "";
        QTest::newRow("import over an unsaved list") << "New,edit,Import" << QStringList { saveQuestion("and then import the game's list") } << unnamed + "Edited|" << "";

        // clang-format on
    }

    void sessions()
    {
        QFETCH(QString, steps);
        QFETCH(QStringList, messages);
        QFETCH(QString, document);
        QFETCH(QString, written);

        play(steps);
        verify(messages, document, written);
    }

    // Help's entries and the partner logo open their pages on the desktop;
    // About shows the version the splash screen does, and only its OK closes it.
    // A screen reader can name every control of the window and of About (and
    // of each dialog a session meets).
    void helpMenu()
    {
        OpenedUrls desktop;
        for (const char *scheme : { "https", "http", "file" })
            QDesktopServices::setUrlHandler(scheme, &desktop, "open");
        frmBots &f = m_session->form();
        for (QAction *entry : { f.mnuHelpWebsite, f.mnuHelpSupportSite, f.mnuHelpHelp })
            entry->trigger();
        QTest::mouseDClick(f.imgPartnerLogo, Qt::LeftButton);
        for (const char *scheme : { "https", "http", "file" })
            QDesktopServices::unsetUrlHandler(scheme);
        QCOMPARE(desktop.urls,
            QList<QUrl>({ QUrl(QUORVANE_WEBSITE_URL), QUrl(QUORVANE_SUPPORT_URL),
                QUrl::fromLocalFile(QDir::fromNativeSeparators(ProgramDir()) + "help/index.html"),
                QUrl(QUORVANE_PARTNER_URL) }));

        QString version;
        QStringList unnamed = unreachedOrUnnamed(&f);
        DialogScript script;
        script.then<frmAbout>([&](frmAbout &d) {
            version = d.lblVersion->text(), unnamed << unreachedOrUnnamed(&d), d.cmdOK->click();
        });
        f.mnuHelpAbout->trigger();
        QCOMPARE(script.seen, QStringList { "frmAbout" });
        QCOMPARE(unnamed, QStringList());
        QVERIFY2(!version.isEmpty() && frmSplash().lblVersion->text().startsWith(version),
            qPrintable(version));
        QVERIFY(!theForm<frmAbout>().windowFlags().testFlag(Qt::WindowCloseButtonHint));
    }

private:
    // A user's session, steps separated by commas:
    //   New, Open, Save, SaveAs, Apply, Import, Restore, QuitLaunch, Exit: File's commands
    //   recent:N: the Nth entry of File's recent configurations, from 0;
    //     recent?: those entries noted
    //   restart: the program run anew
    //   hand:PATH: PATH (from the test's folder) handed over as a file manager does;
    //     what is opened starts a fresh history
    //   drop:PATH[+PATH...]: the files dropped on the window; "accepted" noted when it takes them
    //   edit: the shown bot renamed "Edited"
    //   Yes, No, Cancel: the answer to the next question
    //   >NAME: the next Open or Save As dialog gets NAME; >! cancels it
    //   @ACT;ACT...: the next dialog, each ACT being CONTROL=VALUE (see setIn),
    //     ?CONTROL (what it shows noted, see shownIn) or BUTTON (pressed)
    // A dialog a button leaves open is noted "kept open" and cancelled, one
    // with controls a screen reader cannot name noted with those. The
    // set-up, before the rest: game runs:PROCESS, don't ask, rm:PATH+PATH... (files removed),
    // ini:BOT and ini64:BOT (System's or System64's user.ini, the real one with BOT first),
    // ini:[SECTION] (only that section).
    void play(const QString &steps)
    {
        const QStringList list = steps.split(',', Qt::SkipEmptyParts);
        DialogScript script;
        for (const QString &step : list) {
            const QString rest = step.mid(1);
            if (step.startsWith('>') || step.startsWith('@'))
                script.then<QDialog>([this, step, rest](QDialog &d) {
                    const bool open = d.objectName() == "dlgOpen";
                    const QString button = rest == "!" ? (open ? "CancelButton" : "cmdCancel")
                                                       : (open ? "cmdOpen" : "cmdSave");
                    m_notes << unreachedOrUnnamed(&d);
                    const QStringList acts = step.startsWith('@')
                        ? rest.split(';')
                        : QStringList { (open ? "txtName=" : "txtNewName=") + rest, button };
                    for (const QString &act : acts) {
                        auto *control = d.findChild<QWidget *>(act.section('=', 0, 0).remove('?'));
                        QVERIFY2(control, qPrintable(act));
                        if (act.startsWith('?'))
                            m_notes << shownIn(control);
                        else if (act.contains('='))
                            setIn(control, act.section('=', 1).replace("~", m_session->root()));
                        else {
                            qobject_cast<QAbstractButton *>(control)->click();
                            if (d.isVisible())
                                m_notes << "kept open", d.reject();
                        }
                    }
                });
            else if (QStringList({ "Yes", "No", "Cancel" }).contains(step))
                m_session->prompt.answerNext(step == "Yes" ? MessageAnswer::Yes
                        : step == "No"                     ? MessageAnswer::No
                                                           : MessageAnswer::Cancel);
        }
        for (const QString &step : list) {
            frmBots &f = m_session->form();
            const QString value = step.section(':', 1);
            if (auto *command = f.findChild<QAction *>("mnuFile" + step))
                command->trigger();
            else if (step == "edit")
                f.txtName->setText("Edited");
            else if (step.startsWith("recent:"))
                f.mnuFileRecent.at(value.toInt())->trigger();
            else if (step == "recent?") {
                QStringList entries;
                for (const QAction *entry : std::as_const(f.mnuFileRecent))
                    entries << entry->text();
                m_notes << entries.join(',');
            } else if (step == "restart")
                m_session->restart();
            else if (step.startsWith("hand:")) {
                const bool opened = OpenConfigurationFile(m_session->root() + value);
                QCOMPARE(opened, f.lblSaved->text() == "Loaded");
                QCOMPARE(f.History->count(), 0);
            } else if (step.startsWith("drop:")) {
                // It opens once the drop is over, as one from a file manager.
                QList<QUrl> urls;
                for (const QString &file : value.split('+'))
                    urls << QUrl::fromLocalFile(m_session->root() + file);
                QMimeData dropped;
                dropped.setUrls(urls);
                QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &dropped, Qt::LeftButton, {});
                QApplication::sendEvent(&f, &enter);
                if (enter.isAccepted())
                    m_notes << "accepted";
                QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &dropped, Qt::LeftButton, {});
                QApplication::sendEvent(&f, &drop);
                QVERIFY(m_session->prompt.messages().isEmpty());
                QCoreApplication::processEvents();
            } else if (step.startsWith("game runs:"))
                m_processes << value;
            else if (step == "don't ask")
                LaunchWithoutAsking() = true;
            else if (step.startsWith("rm:")) {
                for (const QString &file : value.split('+'))
                    QVERIFY(QFile::remove(m_session->root() + file));
            } else if (step.startsWith("ini"))
                QVERIFY(writeTestFile(
                    m_session->userIni(step.startsWith("ini64") ? "System64" : "System"),
                    value.startsWith('[') ? value.toLatin1() + "\r\nx=1\r\n"
                                          : realUserIni(value.toLatin1())));
            if (step == "Import" && Roster().Description.startsWith("Imported"))
                QCOMPARE(f.History->count(), 0);
            if (step.startsWith("ini") || step.startsWith("rm:"))
                m_session->snapshot();
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY2(script.playedOut(), qPrintable(script.seen.join(',')));
    }

    // What the session asked ("@" stands for the configuration folder, "~" for
    // the test's; a message ending in "*" for any that begins so: the file
    // system's account of a failure, a reader's words its own tests check), the
    // document (see EditorSession) with the list's description and then what was
    // noted, and the files written. The window's title and the overview follow
    // the list shown, the list last opened or saved heads the recent files, and
    // a list shown as saved is what its file holds, byte for byte.
    void verify(QStringList messages, QString document, const QString &written)
    {
        const auto expand = [this](QString text) {
            return text.replace("@today", QDate::currentDate().toString(Qt::ISODate))
                .replace("@", m_session->config())
                .replace("~", m_session->root());
        };
        const QStringList asked = m_session->prompt.transcript();
        for (qsizetype i = 0; i < messages.size(); ++i) {
            messages[i] = expand(messages[i]);
            if (messages[i].endsWith('*') && asked.value(i).startsWith(messages[i].chopped(1)))
                messages[i] = asked.value(i);
        }
        QCOMPARE(asked, messages);
        QStringList shown { m_session->document() };
        if (isFormLoaded<frmBots>())
            shown << Roster().Description;
        shown << m_notes;
        if (!m_started.isEmpty())
            shown << QStringLiteral("started").repeated(m_started.size());
        if (LaunchWithoutAsking())
            shown << "don't ask";
        QCOMPARE(shown.join('|'), expand(document));
        QCOMPARE(m_session->written().join(','), written);
        if (!isFormLoaded<frmBots>())
            return;
        const frmBots &f = m_session->form();
        const QString name = f.lblCurrentFile->text();
        const QString title = "Quorvane for Unreal Tournament";
        QCOMPARE(f.windowTitle(), name.isEmpty() ? title : name + "[*] - " + title);
        QCOMPARE(f.isWindowModified(), f.lblSaved->text() != "Saved");
        if (!name.isEmpty() && name != "(Un-Named)")
            QCOMPARE(
                ReadRecentFiles().value(0), QFileInfo(m_session->config(name)).absoluteFilePath());
        if (f.lblSaved->text() == "Saved" && !name.isEmpty()) {
            BotRoster roster = Roster();
            QCOMPARE(readTestFile(m_session->config(name)),
                joinAnsiLines(ConfigurationLines(name, roster)));
        }
    }

    std::unique_ptr<EditorSession> m_session;
    QStringList m_started;
    QStringList m_processes;
    QStringList m_notes;
};

QTEST_MAIN(TestDocumentCommands)
#include "test_documentcommands.moc"
