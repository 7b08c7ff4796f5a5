#include "dialogscript.h"
#include "editorsession.h"

#include "configfiles/configfile.h"
#include "configfiles/configname.h"
#include "configfiles/forms/dlgApply.h"
#include "configfiles/forms/dlgLaunchUT.h"
#include "configfiles/forms/dlgOpen.h"
#include "configfiles/forms/dlgRestore.h"
#include "configfiles/forms/dlgSaveAs.h"
#include "configfiles/gameinstallation.h"
#include "configfiles/textfile.h"
#include "roster/forms/dlgImport.h"
#include "roster/forms/frmAbout.h"
#include "roster/forms/openatstart.h"
#include "roster/forms/rosteroverview.h"
#include "startup/forms/frmSplash.h"
#include "startup/recentfiles.h"

#include <QAccessible>
#include <QDate>
#include <QDesktopServices>
#include <QListWidget>
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

// "Unreal Tournament Is Running" before `what` (applied, restored) changes
// user.ini; `anyway` is the question.
QString gameRuns(const QString &what, const QString &anyway)
{
    return "Unreal Tournament Is Running|Unreal Tournament is running. It rewrites user.ini when "
           "it quits, so the bot list "
        + what + " now will be overwritten then.\r\n\r\n" + anyway;
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
    void initTestCase();
    void init();
    void cleanup() { m_session.reset(); }

    void sessions_data();
    void sessions();
    void recentFiles();
    void helpMenu();
    void controlsHaveNames();

private:
    void play(const QString &steps);
    void verify(QStringList messages, QString document, const QString &written);
    void press(QDialog &dialog, QAbstractButton *button);

    std::unique_ptr<EditorSession> m_session;
    QStringList m_started;
    QStringList m_processes;
    QStringList m_notes;
};

void TestDocumentCommands::initTestCase()
{
    setGameStarter([this](const QString &program, const QString &workingDirectory) {
        m_started << program + " in " + workingDirectory;
        return true;
    });
    setProcessLister([this] { return m_processes; });
}

// Two lists, a broken one and two backups beside the real User.ini and the
// game's programs, and lists in a download folder: one whose name is taken.
void TestDocumentCommands::init()
{
    m_session = std::make_unique<EditorSession>();
    // Written as the program writes lists, without its flush to the disk.
    const auto list = [](const QString &path, const QString &bot, const QString &description) {
        BotRoster roster;
        SetDefaults(roster);
        roster.BotNames[0] = bot;
        roster.Description = description;
        return writeTestFile(
            path, joinAnsiLines(ConfigurationLines(QFileInfo(path).fileName(), roster)));
    };
    const QString downloads = m_session->root() + "Downloads/";
    QVERIFY(list(m_session->config("Team.qvn"), "Teamster", "The team list"));
    QVERIFY(list(m_session->config("Alpha.qvn"), "Alphonse", "The first list"));
    QVERIFY(list(downloads + "Team.qvn", "Fetched", "The first list"));
    QVERIFY(list(downloads + "Fresh.qvn", "Fetched", "The first list"));
    QVERIFY(QFile::copy(m_session->config("Alpha.qvn"), downloads + "Alpha.qvn"));
    QVERIFY(writeTestFile(
        m_session->config("Broken.qvn"), readTestFile(m_session->config("Team.qvn")).left(900)));
    QVERIFY(writeTestFile(m_session->config("curconfig_bkup_(1-2-2003-4-5-6).qvn2"),
        crlf({ "[Botpack.ChallengeBotInfo]", "BotNames[0]=Oldie", "BotNames[1]=Older" })));
    QVERIFY(writeTestFile(m_session->config("curconfig_bkup_(3-7-2005-9-5-3)_System64.qvn2"),
        crlf({ "[Botpack.ChallengeBotInfo]", "BotNames[0]=Sixty4" })));
    QVERIFY(writeTestFile(m_session->userIni(), realUserIni()));
    QVERIFY(writeTestFile(AppOptions().UTPath + "System/UnrealTournament.exe", "MZ"));
    QVERIFY(writeTestFile(AppOptions().UTPath + "System/ut-bin", "\177ELF"));
    m_session->snapshot();
    m_started.clear();
    m_processes = QStringList { "bash", "kworker" };
    m_notes.clear();
    LaunchWithoutAsking() = false;
}

// Presses a dialog's `button`; a dialog that stays open is cancelled, and
// that noted.
void TestDocumentCommands::press(QDialog &dialog, QAbstractButton *button)
{
    button->click();
    if (dialog.isVisible())
        m_notes << "kept open", dialog.reject();
}

// A user's session, steps separated by commas:
//   new, open, save, saveas, apply, import, restore, launch, exit: File's commands
//   recent:N: the Nth entry of File's recent configurations, from 0
//   hand:PATH: PATH (from the test's folder) handed over as a file manager does;
//     what is opened starts a fresh history
//   drop:PATH[+PATH...]: the files dropped on the window; "accepted" noted when it takes them
//   edit: the shown bot renamed "Edited"
//   Yes, No, Cancel: the answer to the next question
//   >NAME: the next Open or Save As dialog gets NAME; >! cancels it
//   ^yes, ^cancel, ^tick: the next Launch dialog's Yes, its Cancel, or its
//     "don't ask" box ticked and then Cancel
//   =NAME, =NAME+: the next Apply dialog applies NAME, with a backup for "+",
//     noting the lists it offers, the description of the one chosen and the
//     user.ini files with their boxes
//   %ROW, %ROW>FOLDER: the next Restore dialog restores the ROWth backup
//     (newest first) into the user.ini proposed or FOLDER's, noting the one proposed
//   #ROW, #cancel: the next Import dialog, where two user.ini files are
// and the set-up, before the rest: game runs:PROCESS, no game, don't ask,
// jammed (a folder where Jammed.qvn would go), no lists, ini:BOT and
// ini64:BOT (System's or System64's user.ini, the real one with BOT first),
// ini:-LINE (without LINE), ini:[SECTION] (only that section), ini: (none).
void TestDocumentCommands::play(const QString &steps)
{
    const QStringList list = steps.split(',', Qt::SkipEmptyParts);
    const QString game = AppOptions().UTPath + "System/";
    DialogScript script;
    for (const QString &step : list) {
        const QString rest = step.mid(1);
        if (step.startsWith('>'))
            script.then<FileNameDialog>([this, rest](FileNameDialog &d) {
                auto *open = qobject_cast<dlgOpen *>(&d);
                auto *saveAs = qobject_cast<dlgSaveAs *>(&d);
                (open ? open->txtName : saveAs->txtNewName)->setText(rest);
                if (rest == "!")
                    (open ? open->CancelButton : saveAs->cmdCancel)->click();
                else
                    press(d, open ? open->cmdOpen : saveAs->cmdSave);
            });
        else if (step.startsWith('='))
            script.then<dlgApply>([this, rest](dlgApply &d) {
                QStringList offered;
                for (int i = 0; i < d.cmbConfigs->count(); ++i)
                    offered << d.cmbConfigs->itemText(i);
                d.cmbConfigs->setCurrentText(QString(rest).remove('+'));
                for (const QCheckBox *box : std::as_const(d.chkTargets))
                    offered << QDir(AppOptions().UTPath).relativeFilePath(box->text())
                            + (box->isChecked() ? "" : " (unticked)");
                m_notes << offered.join(',') + " / " + d.txtDescr->toPlainText();
                d.chkBackup->setChecked(rest.endsWith('+'));
                press(d, d.cmdApply);
            });
        else if (step.startsWith('%'))
            script.then<dlgRestore>([this, rest](dlgRestore &d) {
                QTreeWidgetItem *item = d.lstBackups->topLevelItem(rest.left(1).toInt());
                d.lstBackups->setCurrentItem(item);
                m_notes << item->text(0) + " " + item->text(1) + " to "
                        + QDir(AppOptions().UTPath).relativeFilePath(d.cmbTargets->currentText());
                if (rest.contains('>'))
                    d.cmbTargets->setCurrentText(m_session->userIni(rest.section('>', 1)));
                press(d, d.cmdRestore);
            });
        else if (step.startsWith('#'))
            script.then<dlgImport>([this, rest](dlgImport &d) {
                d.lstFiles->setCurrentRow(1);
                m_notes << d.lstFiles->currentItem()->text() + ": "
                        + d.txtPreview->toPlainText().left(13);
                d.lstFiles->setCurrentRow(rest.toInt());
                (rest == "cancel" ? d.CancelButton : d.cmdImport)->click();
            });
        else if (step.startsWith('^'))
            script.then<dlgLaunchUT>([rest](dlgLaunchUT &d) {
                if (rest == "tick")
                    d.chkAutoGoAway->click();
                (rest == "yes" ? d.cmdYes : d.CancelButton)->click();
            });
        else if (QStringList({ "Yes", "No", "Cancel" }).contains(step))
            m_session->prompt.answerNext(step == "Yes" ? MessageAnswer::Yes
                    : step == "No"                     ? MessageAnswer::No
                                                       : MessageAnswer::Cancel);
    }
    frmBots &f = m_session->form();
    const QHash<QString, QAction *> commands { { "new", f.mnuFileNew }, { "open", f.mnuFileOpen },
        { "save", f.mnuFileSave }, { "saveas", f.mnuFileSaveAs }, { "apply", f.mnuFileApply },
        { "import", f.mnuFileImport }, { "restore", f.mnuFileRestore },
        { "launch", f.mnuFileQuitLaunch }, { "exit", f.mnuFileExit } };
    for (const QString &step : list) {
        const QString value = step.section(':', 1);
        if (commands.contains(step))
            commands.value(step)->trigger();
        else if (step == "edit")
            f.txtName->setText("Edited");
        else if (step.startsWith("recent:"))
            f.mnuFileRecent.at(value.toInt())->trigger();
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
        else if (step == "jammed")
            QVERIFY(QDir().mkpath(m_session->config("Jammed.qvn")));
        else if (step == "no game")
            QVERIFY(QFile::remove(game + "UnrealTournament.exe") && QFile::remove(game + "ut-bin"));
        else if (step == "no lists")
            QVERIFY(QFile::remove(m_session->config("Team.qvn"))
                && QFile::remove(m_session->config("Alpha.qvn"))
                && QFile::remove(m_session->config("Broken.qvn")));
        else if (step.startsWith("ini")) {
            const QString file
                = m_session->userIni(step.startsWith("ini64") ? "System64" : "System");
            const QByteArray text = value.startsWith('[') ? value.toLatin1() + "\r\nx=1\r\n"
                : value.startsWith('-')
                ? realUserIni().replace(value.mid(1).toLatin1() + "\r\n", "")
                : realUserIni(value.toLatin1());
            QVERIFY(value.isEmpty() ? QFile::remove(file) : writeTestFile(file, text));
        }
        if (step == "import" && Roster().Description.startsWith("Imported"))
            QCOMPARE(f.History->count(), 0);
        if (step.startsWith("ini") || step == "no lists")
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
void TestDocumentCommands::verify(QStringList messages, QString document, const QString &written)
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
    QCOMPARE(f.cmbBot->isEnabled(), !name.isEmpty());
    QCOMPARE(f.grdBots->item(0, RosterOverview::Name)->text(), Roster().BotNames[0]);
    if (!name.isEmpty() && name != "(Un-Named)")
        QCOMPARE(ReadRecentFiles().value(0), QFileInfo(m_session->config(name)).absoluteFilePath());
    if (f.lblSaved->text() == "Saved" && !name.isEmpty()) {
        BotRoster roster = Roster();
        QCOMPARE(
            readTestFile(m_session->config(name)), joinAnsiLines(ConfigurationLines(name, roster)));
    }
}

void TestDocumentCommands::sessions_data()
{
    QTest::addColumn<QString>("steps"); // see play
    QTest::addColumn<QStringList>("messages"); // see verify
    QTest::addColumn<QString>("document");
    QTest::addColumn<QString>("written"); // see EditorSession, joined with commas

    const QString team = "open,>Team.qvn,edit,"; // a named list, edited
    const QString onNew = saveQuestion("and then start a new one");
    const QString onOpen = saveQuestion("and then open a different configuration");
    const QString onExit = saveQuestion("and quit");
    const QString overwrite = "File Already Exists|This file exists, do you really want to over "
                              "write it?";
    const QString applied = "Apply Configuration...|Completed";
    const QString bots = "Configs/Bots.qvn=Archon";
    const QString unnamed = "Modified|(Un-Named)|on|on|";
    const QString launched = "Configs/curconfig_bkup_(*).qvn2=Archon,UT/System/User.ini=";
    const auto copy = [](const QString &name) {
        return "Copy Configuration|~Downloads/" + name
            + " is not in the configuration folder @.\r\n\r\nCopy it there and open the copy?";
    };
    const QString taken = "File Already Exists|The configuration folder already holds a file "
                          "named Team.qvn.\r\n\r\nReplace it with ~Downloads/Team.qvn?";
    const auto refused = [](const QString &name) {
        return QStringList { InvalidConfigNameTitle() + "|" + ConfigNameProblem(name) };
    };
    const QString lists = "|Alpha.qvn,Broken.qvn,Team.qvn,System/User.ini";
    const QString restored = "Restore Backup...|Completed";
    const QString untouched = "Saved||off|off|Archon|";
    // clang-format off
    QTest::newRow("new") << "new" << QStringList() << unnamed + "Archon|" << "";
    QTest::newRow("opened") << "open,>Team.qvn" << QStringList() << "Loaded|Team.qvn|off|off|Teamster|The team list " << "";
    QTest::newRow("saved as") << "new,saveas,>Bots" << QStringList() << "Saved|Bots.qvn|off|on|Archon|" << bots;
    QTest::newRow("save as cancelled") << "new,saveas,>Bots,saveas,>!" << QStringList() << "Modified|Bots.qvn|on|on|Archon|" << bots;
    QTest::newRow("unnamed save asks a name") << "new,edit,save,>!" << QStringList() << unnamed + "Edited|" << "";
    QTest::newRow("named save overwrites") << "new,saveas,>Team,Yes,edit,save" << QStringList { overwrite } << "Saved|Team.qvn|off|on|Edited|" << "Configs/Team.qvn=Edited";
    // Opened, a list stays Loaded through edits.
    QTest::newRow("loaded stays loaded") << "new,saveas,>Bots,open,>Team.qvn,edit" << QStringList() << "Loaded|Team.qvn|off|on|Edited|The team list " << bots;

    // Yes saves first; a cancelled Save As does not hold the command up.
    QTest::newRow("new, yes") << team + "Yes,new" << QStringList { onNew } << unnamed + "Archon|The team list " << "Configs/Team.qvn=Edited";
    QTest::newRow("new, cancel") << team + "Cancel,new" << QStringList { onNew } << "Loaded|Team.qvn|off|off|Edited|The team list " << "";
    QTest::newRow("open, no") << team + "No,open,>Alpha.qvn" << QStringList { onOpen } << "Loaded|Alpha.qvn|off|off|Alphonse|The first list " << "";
    QTest::newRow("exit, yes") << team + "Yes,exit" << QStringList { onExit } << "closed" << "Configs/Team.qvn=Edited,options.ini";
    QTest::newRow("exit, cancel") << team + "Cancel,exit" << QStringList { onExit } << "Loaded|Team.qvn|off|off|Edited|The team list " << "";
    QTest::newRow("unnamed exit, yes") << "new,edit,Yes,exit,>!" << QStringList { onExit } << "closed" << "options.ini";

    // Refused names and failed writes keep Save As open for another name.
    QTest::newRow("save as Bots.qvn") << "new,saveas,>Bots.qvn" << QStringList() << "Saved|Bots.qvn|off|on|Archon|" << bots;
    QTest::newRow("save as nothing") << "new,saveas,>" << QStringList() << "Saved|.qvn|off|on|Archon|" << "Configs/.qvn=Archon";
    QTest::newRow("overwrite declined") << "new,saveas,>Team,No" << QStringList { overwrite } << unnamed + "Archon|" << "";
    QTest::newRow("write fails") << "jammed,new,saveas,>Jammed,Yes" << QStringList { overwrite, "Configuration Not Saved|The configuration could not be saved as Jammed.qvn:\r\n*" } << unnamed + "Archon||kept open" << "";
    QTest::newRow("save as ../Bots") << "new,saveas,>../Bots" << refused("../Bots.qvn") << unnamed + "Archon||kept open" << "";

    // Names Open refuses leave the dialog open and the list as it was.
    QTest::newRow("open nothing") << "new,edit,No,open,>" << QStringList { onOpen, "Open Configuration|Type the name of a configuration to open, or pick one from the list." } << unnamed + "Edited||kept open" << "";
    QTest::newRow("open a missing file") << "new,edit,No,open,>Missing.qvn" << QStringList { onOpen, "Open Configuration|Can't find Missing.qvn in the configuration folder @." } << unnamed + "Edited||kept open" << "";
    QTest::newRow("open a broken file") << "new,edit,No,open,>Broken.qvn" << QStringList { onOpen, "Configuration Not Opened|The configuration Broken.qvn could not be opened; nothing was changed.\r\n*" } << unnamed + "Edited||kept open" << "";

    // From outside the configuration folder a list is copied in, and the copy opened.
    QTest::newRow("hand over, copied") << "Yes,hand:Downloads/Fresh.qvn" << QStringList { copy("Fresh.qvn") } << "Loaded|Fresh.qvn|off|off|Fetched|The first list " << "Configs/Fresh.qvn=Fetched";
    QTest::newRow("hand over, not copied") << "No,hand:Downloads/Fresh.qvn" << QStringList { copy("Fresh.qvn") } << untouched << "";
    QTest::newRow("hand over, name taken, replaced") << "Yes,Yes,hand:Downloads/Team.qvn" << QStringList { copy("Team.qvn"), taken } << "Loaded|Team.qvn|off|off|Fetched|The first list " << "Configs/Team.qvn=Fetched";
    QTest::newRow("hand over, same file there") << "Yes,hand:Downloads/Alpha.qvn" << QStringList { copy("Alpha.qvn") } << "Loaded|Alpha.qvn|off|off|Alphonse|The first list " << "";
    QTest::newRow("hand over a missing file") << "hand:Downloads/Missing.qvn" << QStringList { "Configuration Not Opened|The configuration Missing.qvn could not be opened; nothing was changed.\r\n*" } << untouched << "";
    QTest::newRow("drop") << "Yes,drop:Downloads/Fresh.qvn" << QStringList { copy("Fresh.qvn") } << "Loaded|Fresh.qvn|off|off|Fetched|The first list |accepted" << "Configs/Fresh.qvn=Fetched";
    QTest::newRow("drop two lists") << "drop:Downloads/Fresh.qvn+Downloads/Fresh.qvn" << QStringList() << untouched << "";

    // Quit and Launch saves, applies with a backup, starts the game and quits.
    QTest::newRow("launch") << "new,saveas,>Bots,edit,launch,^yes" << QStringList { applied } << "closed|started" << "Configs/Bots.qvn=Edited," + launched + "Edited,options.ini";
    QTest::newRow("launch without asking") << "open,>Team.qvn,don't ask,launch" << QStringList { applied } << "closed|started|don't ask" << "Configs/Team.qvn=Teamster," + launched + "Teamster,options.ini";
    QTest::newRow("launch ticked, cancelled") << "open,>Team.qvn,launch,^tick" << QStringList() << "Loaded|Team.qvn|off|off|Teamster|The team list |don't ask" << "";
    QTest::newRow("launch unnamed, saved as") << "new,edit,launch,^yes,>Fresh" << QStringList { applied } << "closed|started" << "Configs/Fresh.qvn=Edited," + launched + "Edited,options.ini";
    QTest::newRow("launch while the game runs") << "open,>Team.qvn,don't ask,game runs:UnrealTournament.exe,launch" << QStringList { gameRuns("applied", "Apply the configuration anyway?") } << "Saved|Team.qvn|off|off|Teamster|The team list |don't ask" << "Configs/Team.qvn=Teamster";
    QTest::newRow("launch without the game") << "new,saveas,>Bots,edit,no game,launch" << QStringList { "Unreal Tournament Exe Missing...|Unreal Tournament Executable not found!" } << "Modified|Bots.qvn|on|on|Edited|" << bots;

    // Apply offers the lists, not the backups, and puts the one chosen into each user.ini,
    // keeping a backup of each list it replaces when asked to.
    QTest::newRow("apply") << "apply,=Team.qvn" << QStringList { applied } << untouched + lists + " / The team list " << "UT/System/User.ini=Teamster";
    QTest::newRow("apply to two, backed up") << "ini64:Archon,apply,=Team.qvn+" << QStringList { applied } << untouched + lists + ",System64/User.ini / The team list "
        << "Configs/curconfig_bkup_(*).qvn2=Archon,Configs/curconfig_bkup_(*)_System64.qvn2=Archon,UT/System/User.ini=Teamster,UT/System64/User.ini=Teamster";
    QTest::newRow("nothing to apply") << "no lists,apply,=Team.qvn+" << QStringList { "Missing File|Can't find .  Operation Aborted." } << untouched + "|System/User.ini / |kept open" << "";

    // Backups are listed newest first with their bots; the one chosen goes back into the
    // user.ini it was made of, the list it replaces backed up first.
    QTest::newRow("restore the newest") << "ini64:Archon,restore,%0" << QStringList { restored } << untouched + "|2005-03-07 09:05:03 Sixty4 to System64/User.ini" << "Configs/curconfig_bkup_(*)_System64.qvn2=Archon,UT/System64/User.ini=Sixty4";
    QTest::newRow("restore elsewhere") << "ini64:Archon,restore,%1>System64" << QStringList { restored } << untouched + "|2003-01-02 04:05:06 Oldie, Older to System/User.ini" << "Configs/curconfig_bkup_(*)_System64.qvn2=Archon,UT/System64/User.ini=Oldie";

    // The game's list becomes an unnamed list, ready for Save As, with a fresh history;
    // anything that keeps it from being read leaves the editor as it was.
    const QString imported = "Imported from ~UT/System/User.ini on @today";
    QTest::newRow("import") << "ini:Gamer,import" << QStringList() << unnamed + "Gamer|" + imported << "";
    QTest::newRow("import the second of two") << "ini:Gamer,ini64:Sixty,import,#1" << QStringList() << unnamed + "Sixty|Imported from ~UT/System64/User.ini on @today|~UT/System64/User.ini: Sixty, Aryss," << "";
    QTest::newRow("import with a key missing") << "ini:-Difficulty=3,import" << QStringList { "Import from Game|Some values of the bot list in ~UT/System/User.ini were missing or could not be read; the imported list has the default list's values in their place:\r\n\r\nDifficulty: missing" } << unnamed + "Archon|" + imported << "";
    QTest::newRow("import without a bot list") << "ini:[Engine.Engine],import" << QStringList { "Import from Game|Can't find the [Botpack.ChallengeBotInfo] section in ~UT/System/User.ini.  Nothing was imported." } << untouched << "";
    QTest::newRow("import without user.ini") << "ini:,import" << QStringList { "Import from Game|Can't find user.ini in the game folder ~UT/.  Nothing was imported." } << untouched << "";
    QTest::newRow("import over an unsaved list") << "new,edit,import" << QStringList { saveQuestion("and then import the game's list") } << unnamed + "Edited|" << "";

    // clang-format on
}

void TestDocumentCommands::sessions()
{
    QFETCH(QString, steps);
    QFETCH(QStringList, messages);
    QFETCH(QString, document);
    QFETCH(QString, written);

    play(steps);
    verify(messages, document, written);
}

// File lists the configurations opened and saved last, newest first, also
// in the next run; one that has gone is reported and leaves the list.
void TestDocumentCommands::recentFiles()
{
    QVERIFY(QFile::copy(m_session->config("Team.qvn"), m_session->config("Gone.qvn")));
    const frmBots &form = m_session->form();
    QStringList entries;
    const auto playNoting = [&](const QString &steps) {
        play(steps);
        QStringList texts;
        for (const QAction *entry : std::as_const(form.mnuFileRecent))
            texts << entry->text();
        entries << texts.join(',');
    };
    playNoting("hand:Configs/Gone.qvn,No,hand:Configs/Team.qvn,No,hand:Configs/Alpha.qvn");
    QCOMPARE(form.mnuFileRecent.at(1)->toolTip(), m_session->config("Team.qvn"));
    QVERIFY(QFile::remove(m_session->config("Gone.qvn")));
    playNoting("No,recent:1");
    playNoting("recent:2");
    QCOMPARE(entries,
        QStringList({ "&1 Alpha.qvn,&2 Team.qvn,&3 Gone.qvn",
            "&1 Team.qvn,&2 Alpha.qvn,&3 Gone.qvn", "&1 Team.qvn,&2 Alpha.qvn" }));
    const QString onOpen = saveQuestion("and then open a different configuration");
    verify({ onOpen, onOpen, onOpen,
               "Configuration Not Opened|The configuration Gone.qvn could not be opened; nothing "
               "was changed.\r\n*" },
        "Loaded|Team.qvn|off|off|Teamster|The team list ", "");
    unloadForm<frmBots>();
    QCOMPARE(theForm<frmBots>().mnuFileRecent.size(), 2);
}

// Help's entries and the partner logo open their pages on the desktop;
// About shows the version the splash screen does, and only its OK closes it.
void TestDocumentCommands::helpMenu()
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
    DialogScript script;
    script.then<frmAbout>([&](frmAbout &d) { version = d.lblVersion->text(), d.cmdOK->click(); });
    f.mnuHelpAbout->trigger();
    QCOMPARE(script.seen, QStringList { "frmAbout" });
    QVERIFY2(!version.isEmpty() && frmSplash().lblVersion->text().startsWith(version),
        qPrintable(version));
    QVERIFY(!theForm<frmAbout>().windowFlags().testFlag(Qt::WindowCloseButtonHint));
}

// A screen reader names every control a keyboard reaches, in the editor and
// each of its dialogs: by its caption, its buddy label, or a name of its own.
void TestDocumentCommands::controlsHaveNames()
{
    QStringList unnamed;
    for (QWidget *window :
        std::initializer_list<QWidget *> { &m_session->form(), &theForm<dlgSaveAs>(),
            &theForm<dlgOpen>(), &theForm<dlgApply>(), &theForm<dlgLaunchUT>(),
            &theForm<frmAbout>(), &theForm<dlgImport>(), &theForm<dlgRestore>() }) {
        window->show();
        for (QWidget *control : window->findChildren<QWidget *>()) {
            if (!(control->focusPolicy() & Qt::TabFocus) || !control->isVisibleTo(window))
                continue;
            QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(control);
            if (!accessible || accessible->text(QAccessible::Name).trimmed().isEmpty())
                unnamed << window->objectName() + "." + control->objectName();
        }
    }
    QVERIFY2(unnamed.isEmpty(), qPrintable(unnamed.join(", ")));
}

QTEST_MAIN(TestDocumentCommands)
#include "test_documentcommands.moc"
