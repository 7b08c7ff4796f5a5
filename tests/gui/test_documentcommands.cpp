#include "dialogscript.h"
#include "editorsession.h"
#include "expectedfile.h"
#include "urlrecorder.h"

#include "configfiles/configfile.h"
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

    // What each session asks, shows and writes is in documents/sessions.txt.
    void sessions_data()
    {
        QTest::addColumn<QString>("steps"); // see play
        // clang-format off
        QTest::newRow("saved as") << "New,SaveAs,>Bots";
        QTest::newRow("save as cancelled") << "New,SaveAs,>Bots,SaveAs,>!";
        QTest::newRow("unnamed save asks a name") << "New,edit,Save,>!";
        QTest::newRow("named save overwrites") << "New,SaveAs,>Team,Yes,edit,Save";

        // Yes saves first; a cancelled Save As does not hold the command up.
        const QString team = "Open,>Team.qvn,edit,"; // a named list, edited
        QTest::newRow("new, yes") << team + "Yes,New";
        QTest::newRow("new, cancel") << team + "Cancel,New";
        QTest::newRow("open, no") << team + "No,Open,>Alpha.qvn";
        QTest::newRow("exit, yes") << team + "Yes,Exit";
        QTest::newRow("exit, cancel") << team + "Cancel,Exit";
        QTest::newRow("unnamed exit, yes") << "New,edit,Yes,Exit,>!";

        // Refused names and failed writes keep Save As open for another name.
        QTest::newRow("overwrite declined") << "New,SaveAs,>Team,No";
        QTest::newRow("write fails") << "New,SaveAs,>Jammed,Yes";
        QTest::newRow("save as ../Bots") << "New,SaveAs,>../Bots";

        // Names Open refuses leave the dialog open and the list as it was.
        QTest::newRow("open nothing") << "New,edit,No,Open,>";
        QTest::newRow("open a missing file") << "New,edit,No,Open,>Missing.qvn";
        QTest::newRow("open a broken file") << "New,edit,No,Open,>Broken.qvn";

        // From outside the configuration folder a list is copied in, and the copy opened.
        QTest::newRow("hand over, copied") << "Yes,hand:Downloads/Fresh.qvn";
        QTest::newRow("hand over, not copied") << "No,hand:Downloads/Fresh.qvn";
        QTest::newRow("hand over, name taken, replaced") << "Yes,Yes,hand:Downloads/Team.qvn";
        QTest::newRow("hand over, same file there") << "Yes,hand:Downloads/Alpha.qvn";
        QTest::newRow("hand over a missing file") << "hand:Downloads/Missing.qvn";
        QTest::newRow("drop") << "Yes,drop:Downloads/Fresh.qvn";
        QTest::newRow("drop two lists") << "drop:Downloads/Fresh.qvn+Downloads/Fresh.qvn";

        // Quit and Launch saves, applies with a backup, starts the game and quits.
        QTest::newRow("launch without asking") << "Open,>Team.qvn,don't ask,QuitLaunch";
        QTest::newRow("launch ticked, cancelled") << "Open,>Team.qvn,QuitLaunch,@chkAutoGoAway=1;CancelButton";
        QTest::newRow("launch unnamed, saved as") << "New,edit,QuitLaunch,@cmdYes,>Fresh";
        QTest::newRow("launch while the game runs") << "Open,>Team.qvn,don't ask,game runs:UnrealTournament.exe,QuitLaunch";
        QTest::newRow("launch without the game") << "rm:UT/System/UnrealTournament.exe+UT/System/ut-bin,New,SaveAs,>Bots,edit,QuitLaunch";

        // Apply offers the lists, not the backups, and puts the one chosen into each user.ini,
        // keeping a backup of each list it replaces when asked to.
        QTest::newRow("apply") << "Apply,@cmbConfigs=Team.qvn;chkBackup=0;?cmbConfigs;?chkTarget0;?txtDescr;cmdApply";
        QTest::newRow("apply to two, backed up") << "ini64:Archon,Apply,@cmbConfigs=Team.qvn;chkBackup=1;?chkTarget1;cmdApply";

        // Backups are listed newest first with their bots; the one chosen goes back into the
        // user.ini it was made of, the list it replaces backed up first.
        QTest::newRow("restore the newest") << "ini64:Archon,Restore,@lstBackups=0;?lstBackups;?cmbTargets;cmdRestore";
        QTest::newRow("restore elsewhere") << "ini64:Archon,Restore,@lstBackups=1;?lstBackups;?cmbTargets;cmbTargets=~UT/System64/User.ini;cmdRestore";

        // File lists the configurations opened and saved last, newest first, also in the next
        // run; one that has gone is reported and leaves the list.
        QTest::newRow("recent files") << "hand:Configs/Alpha.qvn,No,hand:Configs/Team.qvn,No,recent:1,recent?,rm:Configs/Alpha.qvn,recent:0,recent?,restart,recent?";

        // The game's list becomes an unnamed list, ready for Save As, with a fresh history;
        // anything that keeps it from being read leaves the editor as it was.
        QTest::newRow("import") << "ini:Gamer,Import";
        QTest::newRow("import the second of two") << "ini:Gamer,ini64:Sixty,Import,@lstFiles=1;?txtPreview;cmdImport";
        QTest::newRow("import without a bot list") << "ini:[Engine.Engine],Import";
        QTest::newRow("import without user.ini") << "rm:UT/System/User.ini,Import";
        QTest::newRow("import over an unsaved list") << "New,edit,Import";
        // clang-format on
    }

    void sessions()
    {
        QFETCH(QString, steps);
        play(steps);
        verify();
    }

    // Help's entries and the partner logo open their pages on the desktop;
    // About shows the version the splash screen does (its screenshot walks
    // it). A screen reader can name every control of the window (and of each
    // dialog a session meets).
    void helpMenu()
    {
        UrlRecorder desktop;
        for (const char *scheme : { "https", "http", "file" })
            QDesktopServices::setUrlHandler(scheme, &desktop, "open");
        frmBots &f = m_session->form();
        for (QAction *entry : { f.mnuHelpWebsite, f.mnuHelpSupportSite, f.mnuHelpHelp })
            entry->trigger();
        QTest::mouseDClick(f.imgPartnerLogo, Qt::LeftButton);
        for (const char *scheme : { "https", "http", "file" })
            QDesktopServices::unsetUrlHandler(scheme);
        QCOMPARE(desktop.opened,
            QList<QUrl>({ QUrl(QUORVANE_WEBSITE_URL), QUrl(QUORVANE_SUPPORT_URL),
                QUrl::fromLocalFile(QDir::fromNativeSeparators(ProgramDir()) + "help/index.html"),
                QUrl(QUORVANE_PARTNER_URL) }));

        QString version;
        DialogScript script;
        script.then<frmAbout>(
            [&](frmAbout &d) { version = d.lblVersion->text(), d.cmdOK->click(); });
        f.mnuHelpAbout->trigger();
        QVERIFY(script.playedOut() && unreachedOrUnnamed(&f).isEmpty());
        QVERIFY2(!version.isEmpty() && frmSplash().lblVersion->text().startsWith(version),
            qPrintable(version));
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

    // What the session asked, the document (see EditorSession) with the
    // list's description and what was noted, and the files written, against
    // the row's section in documents/sessions.txt. The window's title and the
    // overview follow the list shown, the list last opened or saved heads the
    // recent files, and a list shown as saved is what its file holds, byte
    // for byte.
    void verify()
    {
        QStringList shown { m_session->document() };
        if (isFormLoaded<frmBots>())
            shown << Roster().Description;
        shown << m_notes;
        if (!m_started.isEmpty())
            shown << QStringLiteral("started").repeated(m_started.size());
        if (LaunchWithoutAsking())
            shown << "don't ask";
        QStringList actual = m_session->prompt.transcript();
        actual.replaceInStrings(QRegularExpression("^"), "asked: ");
        actual << "shown: " + shown.join('|') + '|';
        if (const QStringList written = m_session->written(); !written.isEmpty())
            actual << "written: " + written.join(',');
        actual = writtenDown(actual, m_session->root())
                     .replaceInStrings(QDate::currentDate().toString(Qt::ISODate), "@today");
        QCOMPARE(actual, matchingWildcards(expectedSection("documents/sessions.txt"), actual));
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
