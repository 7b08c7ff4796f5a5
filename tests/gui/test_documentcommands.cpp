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
#include "startup/options.h"
#include "startup/recentfiles.h"

#include <QAccessible>
#include <QCheckBox>
#include <QComboBox>
#include <QDate>
#include <QDesktopServices>
#include <QListWidget>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <QUndoStack>

#include <memory>

namespace {

const QString ProgramTitle = "Quorvane for Unreal Tournament";

QByteArray realUserIni(const QByteArray &firstBot = "Archon")
{
    return readTestFile(realWorldDir() + "vanilla-server/System/User.ini")
        .replace("BotNames[0]=Archon", "BotNames[0]=" + firstBot);
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
    QList<QUrl> urls;
public slots:
    void open(const QUrl &url) { urls.append(url); }
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
    void cleanup();

    void sessions_data();
    void sessions();
    void recentFiles();
    void helpEntries();
    void aboutShowsTheSplashVersion();
    void dialogControlsHaveNames();

private:
    void play(const QString &steps);
    void verify(QStringList messages, QString document, const QString &written);
    void fill(FileNameDialog &dialog, const QString &name);
    void apply(dlgApply &dialog, const QString &choice);
    void restore(dlgRestore &dialog, const QString &choice);
    void press(QDialog &dialog, QPushButton *button, QPushButton *cancel);
    void handOver(const QString &file);
    void drop(const QStringList &files);

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

// Two lists, a broken one and a backup beside the real User.ini and the
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
    QVERIFY(writeTestFile(m_session->config("curconfig_bkup_(1-2-2003-4-5-6).qvn2"), "[old]\r\n"));
    QVERIFY(writeTestFile(m_session->userIni(), realUserIni()));
    QVERIFY(writeTestFile(AppOptions().UTPath + "System/UnrealTournament.exe", "MZ"));
    QVERIFY(writeTestFile(AppOptions().UTPath + "System/ut-bin", "\177ELF"));
    m_session->snapshot();
    m_started.clear();
    m_processes = { "bash", "kworker" };
    m_notes.clear();
    LaunchWithoutAsking() = false;
}

void TestDocumentCommands::cleanup()
{
    m_session.reset();
}

// Presses a dialog's `button`; a dialog that stays open is cancelled, and
// that noted.
void TestDocumentCommands::press(QDialog &dialog, QPushButton *button, QPushButton *cancel)
{
    button->click();
    if (dialog.isVisible())
        m_notes << "kept open", cancel->click();
}

// Types `name` into an Open or Save As dialog and presses its main button,
// or with "!" cancels it.
void TestDocumentCommands::fill(FileNameDialog &dialog, const QString &name)
{
    auto *open = qobject_cast<dlgOpen *>(&dialog);
    auto *saveAs = qobject_cast<dlgSaveAs *>(&dialog);
    QPushButton *cancel = open ? open->CancelButton : saveAs->cmdCancel;
    (open ? open->txtName : saveAs->txtNewName)->setText(name);
    press(dialog, name == "!" ? cancel : open ? open->cmdOpen : saveAs->cmdSave, cancel);
}

// Notes what Apply offers (the lists, the description of the one chosen,
// the user.ini files with their boxes) and applies `choice` ("NAME" or
// "NAME+" for a backup).
void TestDocumentCommands::apply(dlgApply &dialog, const QString &choice)
{
    QStringList lists;
    for (int i = 0; i < dialog.cmbConfigs->count(); ++i)
        lists << dialog.cmbConfigs->itemText(i);
    dialog.cmbConfigs->setCurrentText(QString(choice).remove('+'));
    QStringList targets;
    for (const QCheckBox *box : std::as_const(dialog.chkTargets))
        targets << QDir(AppOptions().UTPath).relativeFilePath(box->text())
                + (box->isChecked() ? "" : " (unticked)");
    m_notes << lists.join(',') + " / " + dialog.txtDescr->toPlainText() + " / " + targets.join(',');
    dialog.chkBackup->setChecked(choice.endsWith('+'));
    press(dialog, dialog.cmdApply, dialog.CancelButton);
}

// Restores backup `choice` ("ROW" newest first, or "ROW>FOLDER" into
// another user.ini) from the two of the "backups" step, noting the user.ini
// proposed.
void TestDocumentCommands::restore(dlgRestore &dialog, const QString &choice)
{
    QStringList listed;
    for (int i = 0; i < dialog.lstBackups->topLevelItemCount(); ++i) {
        const QTreeWidgetItem *item = dialog.lstBackups->topLevelItem(i);
        listed << QStringList { item->text(0), item->text(1), item->text(2) }.join('|');
    }
    QCOMPARE(listed,
        QStringList({ "2005-03-07 09:05:03|Sixty4|curconfig_bkup_(3-7-2005-9-5-3)_System64.qvn2",
            "2003-01-02 04:05:06|Oldie, Older|curconfig_bkup_(1-2-2003-4-5-6).qvn2" }));
    dialog.lstBackups->setCurrentItem(dialog.lstBackups->topLevelItem(choice.left(1).toInt()));
    m_notes << QDir(AppOptions().UTPath).relativeFilePath(dialog.cmbTargets->currentText())
            + " proposed";
    if (choice.contains('>'))
        dialog.cmbTargets->setCurrentText(m_session->userIni(choice.section('>', 1)));
    press(dialog, dialog.cmdRestore, dialog.CancelButton);
}

// What was opened says so, and starts a fresh history.
void TestDocumentCommands::handOver(const QString &file)
{
    const bool opened = OpenConfigurationFile(m_session->root() + file);
    const frmBots &f = m_session->form();
    QCOMPARE(opened, f.lblSaved->text() == "Loaded");
    QCOMPARE(f.History->count(), 0);
}

// A list dropped on the window opens once the drop is over, as one from a
// file manager.
void TestDocumentCommands::drop(const QStringList &files)
{
    QList<QUrl> urls;
    for (const QString &file : files)
        urls << QUrl::fromLocalFile(m_session->root() + file);
    QMimeData data;
    data.setUrls(urls);
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&m_session->form(), &enter);
    if (enter.isAccepted())
        m_notes << "accepted";
    QDropEvent dropped(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&m_session->form(), &dropped);
    QVERIFY(m_session->prompt.messages().isEmpty());
    QCoreApplication::processEvents();
}

// A user's session, steps separated by commas:
//   new, open, save, saveas, apply, import, restore, launch, exit: File's commands
//   recent:N: the Nth entry of File's recent configurations, from 0
//   hand:PATH: PATH (from the test's folder) handed over as a file manager does
//   drop:PATH[+PATH...]: the files dropped on the window; "accepted" noted when it takes them
//   edit: the shown bot renamed "Edited"
//   Yes, No, Cancel: the answer to the next question
//   >NAME: the next Open or Save As dialog gets NAME (see fill); >! cancels it
//   ^yes, ^cancel, ^tick: the next Launch dialog's Yes, its Cancel, or its
//     "don't ask" box ticked and then Cancel
//   =CHOICE: the next Apply dialog (see apply); %CHOICE: the next Restore dialog (see restore)
//   #ROW, #cancel: the next Import dialog, where two user.ini files are
// and the set-up, before the rest: game runs:PROCESS, no game, don't ask,
// jammed (a folder where Jammed.qvn would go), no lists, backups (one of each
// user.ini), ini:BOT and ini64:BOT (System's or System64's user.ini, the real
// one with BOT first), ini:-LINE (without LINE), ini:[SECTION] (only that
// section), ini: (none).
void TestDocumentCommands::play(const QString &steps)
{
    const QStringList list = steps.split(',', Qt::SkipEmptyParts);
    DialogScript script;
    for (const QString &step : list) {
        const QString rest = step.mid(1);
        if (step.startsWith('>'))
            script.then<FileNameDialog>([this, rest](FileNameDialog &d) { fill(d, rest); });
        else if (step.startsWith('='))
            script.then<dlgApply>([this, rest](dlgApply &d) { apply(d, rest); });
        else if (step.startsWith('%'))
            script.then<dlgRestore>([this, rest](dlgRestore &d) { restore(d, rest); });
        else if (step.startsWith('#'))
            script.then<dlgImport>([this, rest](dlgImport &d) {
                QCOMPARE(d.lstFiles->count(), 2);
                QCOMPARE(d.lstFiles->item(1)->text(), m_session->userIni("System64"));
                d.lstFiles->setCurrentRow(1);
                QVERIFY(d.txtPreview->toPlainText().startsWith("Sixty, Aryss, "));
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
            m_session->answer(step);
    }
    frmBots &f = m_session->form();
    const QHash<QString, QAction *> commands { { "new", f.mnuFileNew }, { "open", f.mnuFileOpen },
        { "save", f.mnuFileSave }, { "saveas", f.mnuFileSaveAs }, { "apply", f.mnuFileApply },
        { "import", f.mnuFileImport }, { "restore", f.mnuFileRestore },
        { "launch", f.mnuFileQuitLaunch }, { "exit", f.mnuFileExit } };
    const QString game = AppOptions().UTPath + "System/";
    for (const QString &step : list) {
        const QString value = step.section(':', 1);
        if (commands.contains(step))
            commands.value(step)->trigger();
        else if (step == "edit")
            f.txtName->setText("Edited");
        else if (step.startsWith("recent:"))
            f.mnuFileRecent.at(value.toInt())->trigger();
        else if (step.startsWith("hand:"))
            handOver(value);
        else if (step.startsWith("drop:"))
            drop(value.split('+'));
        else if (step.startsWith("game runs:"))
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
            QByteArray text = value.startsWith('[') ? value.toLatin1() + "\r\nx=1\r\n"
                                                    : realUserIni(value.toLatin1());
            if (value.startsWith('-'))
                text = realUserIni().replace(value.mid(1).toLatin1() + "\r\n", "");
            QVERIFY(value.isEmpty() ? QFile::remove(file) : writeTestFile(file, text));
        } else if (step == "backups")
            QVERIFY(writeTestFile(m_session->config("curconfig_bkup_(1-2-2003-4-5-6).qvn2"),
                        crlf({ "[Botpack.ChallengeBotInfo]", "BotNames[0]=Oldie",
                            "BotNames[1]=Older" }))
                && writeTestFile(m_session->config("curconfig_bkup_(3-7-2005-9-5-3)_System64.qvn2"),
                    crlf({ "[Botpack.ChallengeBotInfo]", "BotNames[0]=Sixty4" })));
        if (step == "import" && Roster().Description.startsWith("Imported"))
            QCOMPARE(f.History->count(), 0);
        if (step.startsWith("ini") || QStringList({ "no lists", "backups" }).contains(step))
            m_session->snapshot();
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY2(script.playedOut(), qPrintable(script.seen.join(',')));
}

// What the session asked ("@" stands for the configuration folder, "~" for
// the test's), the document (see EditorSession) with the list's description
// and then what was noted, and the files written.
void TestDocumentCommands::verify(QStringList messages, QString document, const QString &written)
{
    const auto expand = [this](QString text) {
        return text.replace("@today", QDate::currentDate().toString(Qt::ISODate))
            .replace("@", m_session->config())
            .replace("~", m_session->root());
    };
    for (QString &message : messages)
        message = expand(message);
    compareMessages(m_session->prompt, messages);
#ifdef Q_OS_WIN
    const QString game = AppOptions().UTPath + "System\\UnrealTournament.exe";
#else
    const QString game = AppOptions().UTPath + "System/ut-bin";
#endif
    QStringList shown { m_session->document() };
    if (isFormLoaded<frmBots>())
        shown << Roster().Description;
    shown << m_notes;
    if (!m_started.isEmpty()) {
        QCOMPARE(m_started, QStringList { game + " in " + AppOptions().UTPath + "System" });
        shown << "started";
    }
    if (LaunchWithoutAsking())
        shown << "don't ask";
    QCOMPARE(shown.join('|'), expand(document));
    QCOMPARE(m_session->written().join(','), written);
    if (!isFormLoaded<frmBots>())
        return;
    const frmBots &f = m_session->form();
    const QString name = f.lblCurrentFile->text();
    QCOMPARE(f.windowTitle(), name.isEmpty() ? ProgramTitle : name + "[*] - " + ProgramTitle);
    QCOMPARE(f.isWindowModified(), f.lblSaved->text() != "Saved");
    QCOMPARE(f.cmbBot->isEnabled(), !name.isEmpty());
    QCOMPARE(f.txtName->text(), Roster().BotNames[0]);
    QCOMPARE(f.grdBots->item(0, RosterOverview::Name)->text(), Roster().BotNames[0]);
    // The list last opened or saved is the one shown, in the configuration folder.
    if (!name.isEmpty() && name != "(Un-Named)")
        QCOMPARE(ReadRecentFiles().value(0), QFileInfo(m_session->config(name)).absoluteFilePath());
    // A list shown as saved is what its file holds, byte for byte.
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
    const QString lists = "|Alpha.qvn,Broken.qvn,Team.qvn / The team list  / System/User.ini";
    const QString restored = "Restore Backup...|Completed";
    const QString untouched = "Saved||off|off|Archon|";
    // clang-format off
    QTest::newRow("as started") << "" << QStringList() << untouched << "";
    QTest::newRow("new") << "new" << QStringList() << unnamed + "Archon|" << "";
    QTest::newRow("opened") << "open,>Team.qvn" << QStringList() << "Loaded|Team.qvn|off|off|Teamster|The team list " << "";
    QTest::newRow("open cancelled") << "open,>!" << QStringList() << untouched << "";
    QTest::newRow("saved as") << "new,saveas,>Bots" << QStringList() << "Saved|Bots.qvn|off|on|Archon|" << bots;
    QTest::newRow("save as cancelled") << "new,saveas,>Bots,saveas,>!" << QStringList() << "Modified|Bots.qvn|on|on|Archon|" << bots;
    QTest::newRow("unnamed save asks a name") << "new,edit,save,>!" << QStringList() << unnamed + "Edited|" << "";
    QTest::newRow("named save overwrites") << "new,saveas,>Team,Yes,edit,save" << QStringList { overwrite } << "Saved|Team.qvn|off|on|Edited|" << "Configs/Team.qvn=Edited";
    // Opened, a list stays Loaded through edits.
    QTest::newRow("loaded stays loaded") << "new,saveas,>Bots,open,>Team.qvn,edit" << QStringList() << "Loaded|Team.qvn|off|on|Edited|The team list " << bots;

    // Yes saves first; a cancelled Save As does not hold the command up.
    QTest::newRow("new, yes") << team + "Yes,new" << QStringList { onNew } << unnamed + "Archon|The team list " << "Configs/Team.qvn=Edited";
    QTest::newRow("new, no") << team + "No,new" << QStringList { onNew } << unnamed + "Archon|The team list " << "";
    QTest::newRow("new, cancel") << team + "Cancel,new" << QStringList { onNew } << "Loaded|Team.qvn|off|off|Edited|The team list " << "";
    QTest::newRow("unnamed new, yes") << "new,edit,Yes,new,>!" << QStringList { onNew } << unnamed + "Archon|" << "";
    QTest::newRow("open, yes") << team + "Yes,open,>Alpha.qvn" << QStringList { onOpen } << "Loaded|Alpha.qvn|off|off|Alphonse|The first list " << "Configs/Team.qvn=Edited";
    QTest::newRow("open, no") << team + "No,open,>Alpha.qvn" << QStringList { onOpen } << "Loaded|Alpha.qvn|off|off|Alphonse|The first list " << "";
    QTest::newRow("open, cancel") << team + "Cancel,open" << QStringList { onOpen } << "Loaded|Team.qvn|off|off|Edited|The team list " << "";
    QTest::newRow("exit, yes") << team + "Yes,exit" << QStringList { onExit } << "closed" << "Configs/Team.qvn=Edited,options.ini";
    QTest::newRow("exit, no") << team + "No,exit" << QStringList { onExit } << "closed" << "options.ini";
    QTest::newRow("exit, cancel") << team + "Cancel,exit" << QStringList { onExit } << "Loaded|Team.qvn|off|off|Edited|The team list " << "";
    QTest::newRow("unnamed exit, yes") << "new,edit,Yes,exit,>!" << QStringList { onExit } << "closed" << "options.ini";

    // Refused names and failed writes keep Save As open for another name.
    QTest::newRow("save as Bots.qvn") << "new,saveas,>Bots.qvn" << QStringList() << "Saved|Bots.qvn|off|on|Archon|" << bots;
    QTest::newRow("save as Bots.QVN") << "new,saveas,>Bots.QVN" << QStringList() << "Saved|Bots.QVN.qvn|off|on|Archon|" << "Configs/Bots.QVN.qvn=Archon";
    QTest::newRow("save as nothing") << "new,saveas,>" << QStringList() << "Saved|.qvn|off|on|Archon|" << "Configs/.qvn=Archon";
    QTest::newRow("overwrite declined") << "new,saveas,>Team,No" << QStringList { overwrite } << unnamed + "Archon|" << "";
    QTest::newRow("write fails") << "jammed,new,saveas,>Jammed,Yes" << QStringList { overwrite, "Configuration Not Saved|The configuration could not be saved as Jammed.qvn:\r\n*" } << unnamed + "Archon||kept open" << "";
    QTest::newRow("save as ../Bots") << "new,saveas,>../Bots" << refused("../Bots.qvn") << unnamed + "Archon||kept open" << "";
    QTest::newRow("save as ..\\System\\User.ini") << "new,saveas,>..\\System\\User.ini" << refused("..\\System\\User.ini.qvn") << unnamed + "Archon||kept open" << "";
    QTest::newRow("save as Bo|ts") << "new,saveas,>Bo|ts" << refused("Bo|ts.qvn") << unnamed + "Archon||kept open" << "";

    // Names Open refuses leave the dialog open and the list as it was.
    QTest::newRow("open Team") << "new,edit,No,open,>Team" << QStringList { onOpen } << "Loaded|Team.qvn|on|on|Teamster|The team list " << "";
    QTest::newRow("open nothing") << "new,edit,No,open,>" << QStringList { onOpen, "Open Configuration|Type the name of a configuration to open, or pick one from the list." } << unnamed + "Edited||kept open" << "";
    QTest::newRow("open a missing file") << "new,edit,No,open,>Missing.qvn" << QStringList { onOpen, "Open Configuration|Can't find Missing.qvn in the configuration folder @." } << unnamed + "Edited||kept open" << "";
    QTest::newRow("open outside") << "new,edit,No,open,>../Configs/Team.qvn" << QStringList { onOpen } + refused("../Configs/Team.qvn") << unnamed + "Edited||kept open" << "";
    QTest::newRow("open a broken file") << "new,edit,No,open,>Broken.qvn" << QStringList { onOpen, "Configuration Not Opened|The configuration Broken.qvn could not be opened; nothing was changed.\r\n*" } << unnamed + "Edited||kept open" << "";

    // From outside the configuration folder a list is copied in, and the copy opened.
    QTest::newRow("hand over") << "hand:Configs/Team.qvn" << QStringList() << "Loaded|Team.qvn|off|off|Teamster|The team list " << "";
    QTest::newRow("hand over by another path") << "hand:Configs/../Configs/./Team.qvn" << QStringList() << "Loaded|Team.qvn|off|off|Teamster|The team list " << "";
    QTest::newRow("hand over, copied") << "Yes,hand:Downloads/Fresh.qvn" << QStringList { copy("Fresh.qvn") } << "Loaded|Fresh.qvn|off|off|Fetched|The first list " << "Configs/Fresh.qvn=Fetched";
    QTest::newRow("hand over, not copied") << "No,hand:Downloads/Fresh.qvn" << QStringList { copy("Fresh.qvn") } << untouched << "";
    QTest::newRow("hand over, name taken, replaced") << "Yes,Yes,hand:Downloads/Team.qvn" << QStringList { copy("Team.qvn"), taken } << "Loaded|Team.qvn|off|off|Fetched|The first list " << "Configs/Team.qvn=Fetched";
    QTest::newRow("hand over, name taken, kept") << "Yes,No,hand:Downloads/Team.qvn" << QStringList { copy("Team.qvn"), taken } << untouched << "";
    QTest::newRow("hand over, same file there") << "Yes,hand:Downloads/Alpha.qvn" << QStringList { copy("Alpha.qvn") } << "Loaded|Alpha.qvn|off|off|Alphonse|The first list " << "";
    QTest::newRow("hand over, unsaved list dropped") << "new,edit,No,Yes,hand:Downloads/Fresh.qvn" << QStringList { onOpen, copy("Fresh.qvn") } << "Loaded|Fresh.qvn|on|on|Fetched|The first list " << "Configs/Fresh.qvn=Fetched";
    QTest::newRow("hand over a missing file") << "hand:Downloads/Missing.qvn" << QStringList { "Configuration Not Opened|The configuration Missing.qvn could not be opened; nothing was changed.\r\n*" } << untouched << "";
    QTest::newRow("drop") << "Yes,drop:Downloads/Fresh.qvn" << QStringList { copy("Fresh.qvn") } << "Loaded|Fresh.qvn|off|off|Fetched|The first list |accepted" << "Configs/Fresh.qvn=Fetched";
    QTest::newRow("drop another file") << "drop:UT/System/User.ini" << QStringList() << untouched << "";
    QTest::newRow("drop two lists") << "drop:Downloads/Fresh.qvn+Downloads/Fresh.qvn" << QStringList() << untouched << "";

    // Quit and Launch saves, applies with a backup, starts the game and quits.
    QTest::newRow("launch") << "new,saveas,>Bots,edit,launch,^yes" << QStringList { applied } << "closed|started" << "Configs/Bots.qvn=Edited," + launched + "Edited,options.ini";
    QTest::newRow("launch without asking") << "open,>Team.qvn,don't ask,launch" << QStringList { applied } << "closed|started|don't ask" << "Configs/Team.qvn=Teamster," + launched + "Teamster,options.ini";
    QTest::newRow("launch ticked, cancelled") << "open,>Team.qvn,launch,^tick" << QStringList() << "Loaded|Team.qvn|off|off|Teamster|The team list |don't ask" << "";
    QTest::newRow("launch unnamed, saved as") << "new,edit,launch,^yes,>Fresh" << QStringList { applied } << "closed|started" << "Configs/Fresh.qvn=Edited," + launched + "Edited,options.ini";
    QTest::newRow("launch unnamed, not saved") << "new,launch,^yes,>!" << QStringList() << unnamed + "Archon|" << "";
    QTest::newRow("launch while the game runs") << "open,>Team.qvn,don't ask,game runs:UnrealTournament.exe,launch" << QStringList { gameRuns("applied", "Apply the configuration anyway?") } << "Saved|Team.qvn|off|off|Teamster|The team list |don't ask" << "Configs/Team.qvn=Teamster";
    QTest::newRow("launch without the game") << "new,saveas,>Bots,edit,no game,launch" << QStringList { "Unreal Tournament Exe Missing...|Unreal Tournament Executable not found!" } << "Modified|Bots.qvn|on|on|Edited|" << bots;
    QTest::newRow("launch with nothing open") << "launch,^yes" << QStringList() << "closed|started" << "options.ini";

    // Apply offers the lists, not the backups, and puts the one chosen into each user.ini,
    // keeping a backup of each list it replaces when asked to.
    QTest::newRow("apply") << "apply,=Team.qvn" << QStringList { applied } << untouched + lists << "UT/System/User.ini=Teamster";
    QTest::newRow("apply to two, backed up") << "ini64:Archon,apply,=Team.qvn+" << QStringList { applied } << untouched + lists + ",System64/User.ini"
        << "Configs/curconfig_bkup_(*).qvn2=Archon,Configs/curconfig_bkup_(*)_System64.qvn2=Archon,UT/System/User.ini=Teamster,UT/System64/User.ini=Teamster";
    QTest::newRow("apply while the game runs") << "game runs:ut-bin-amd64,apply,=Team.qvn+" << QStringList { gameRuns("applied", "Apply the configuration anyway?") } << untouched + lists + "|kept open" << "";
    QTest::newRow("nothing to apply") << "no lists,apply,=Team.qvn+" << QStringList { "Missing File|Can't find .  Operation Aborted." } << untouched + "| /  / System/User.ini|kept open" << "";

    // Backups are listed newest first with their bots; the one chosen goes back into the
    // user.ini it was made of, the list it replaces backed up first.
    QTest::newRow("restore the newest") << "backups,ini64:Archon,restore,%0" << QStringList { restored } << untouched + "|System64/User.ini proposed" << "Configs/curconfig_bkup_(*)_System64.qvn2=Archon,UT/System64/User.ini=Sixty4";
    QTest::newRow("restore the oldest") << "backups,ini64:Archon,restore,%1" << QStringList { restored } << untouched + "|System/User.ini proposed" << "Configs/curconfig_bkup_(*).qvn2=Archon,UT/System/User.ini=Oldie";
    QTest::newRow("restore elsewhere") << "backups,ini64:Archon,restore,%1>System64" << QStringList { restored } << untouched + "|System/User.ini proposed" << "Configs/curconfig_bkup_(*)_System64.qvn2=Archon,UT/System64/User.ini=Oldie";
    QTest::newRow("restore while the game runs") << "game runs:UnrealTournament.exe,backups,ini64:Archon,restore,%0" << QStringList { gameRuns("restored", "Restore the backup anyway?") } << untouched + "|System64/User.ini proposed|kept open" << "";

    // The game's list becomes an unnamed list, ready for Save As, with a fresh history;
    // anything that keeps it from being read leaves the editor as it was.
    const QString imported = "Imported from ~UT/System/User.ini on @today";
    QTest::newRow("import") << "ini:Gamer,import" << QStringList() << unnamed + "Gamer|" + imported << "";
    QTest::newRow("import the second of two") << "ini:Gamer,ini64:Sixty,import,#1" << QStringList() << unnamed + "Sixty|Imported from ~UT/System64/User.ini on @today" << "";
    QTest::newRow("import cancelled") << "ini64:Sixty,import,#cancel" << QStringList() << untouched << "";
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
    const auto entries = [&form] {
        QStringList texts;
        for (const QAction *entry : std::as_const(form.mnuFileRecent))
            texts << entry->text();
        return texts.join(',');
    };
    play("hand:Configs/Gone.qvn,No,hand:Configs/Team.qvn,No,hand:Configs/Alpha.qvn");
    QVERIFY(QFile::remove(m_session->config("Gone.qvn")));
    QCOMPARE(entries(), "&1 Alpha.qvn,&2 Team.qvn,&3 Gone.qvn");
    QCOMPARE(form.mnuFileRecent.at(1)->toolTip(), m_session->config("Team.qvn"));
    play("No,recent:1");
    QCOMPARE(entries(), "&1 Team.qvn,&2 Alpha.qvn,&3 Gone.qvn");
    play("recent:2");
    QCOMPARE(entries(), "&1 Team.qvn,&2 Alpha.qvn");
    const QString onOpen = saveQuestion("and then open a different configuration");
    verify({ onOpen, onOpen, onOpen,
               "Configuration Not Opened|The configuration Gone.qvn could not be opened; nothing "
               "was changed.\r\n*" },
        "Loaded|Team.qvn|off|off|Teamster|The team list ", "");

    unloadForm<frmBots>();
    QCOMPARE(theForm<frmBots>().mnuFileRecent.size(), 2);
}

// Help's entries and the partner logo open their pages on the desktop.
void TestDocumentCommands::helpEntries()
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
}

void TestDocumentCommands::aboutShowsTheSplashVersion()
{
    QString version;
    DialogScript script;
    script.then<frmAbout>([&](frmAbout &d) {
        version = d.lblVersion->text();
        d.cmdOK->click();
    });
    m_session->form().mnuHelpAbout->trigger();

    QCOMPARE(script.seen, QStringList { "frmAbout" });
    QVERIFY(!version.isEmpty());
    QVERIFY2(frmSplash().lblVersion->text().startsWith(version), qPrintable(version));
    QVERIFY(!theForm<frmAbout>().windowFlags().testFlag(Qt::WindowCloseButtonHint));
}

// A screen reader names every control a keyboard reaches: by its caption,
// its buddy label, or a name of its own.
void TestDocumentCommands::dialogControlsHaveNames()
{
    QStringList unnamed;
    for (QDialog *dialog : std::initializer_list<QDialog *> { &theForm<dlgSaveAs>(),
             &theForm<dlgOpen>(), &theForm<dlgApply>(), &theForm<dlgLaunchUT>(),
             &theForm<frmAbout>(), &theForm<dlgImport>(), &theForm<dlgRestore>() }) {
        dialog->show();
        for (QWidget *control : dialog->findChildren<QWidget *>()) {
            if (!(control->focusPolicy() & Qt::TabFocus) || !control->isVisibleTo(dialog))
                continue;
            QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(control);
            if (!accessible || accessible->text(QAccessible::Name).trimmed().isEmpty())
                unnamed << dialog->objectName() + "." + control->objectName();
        }
        dialog->hide();
    }
    QVERIFY2(unnamed.isEmpty(), qPrintable(unnamed.join(", ")));
}

QTEST_MAIN(TestDocumentCommands)
#include "test_documentcommands.moc"
