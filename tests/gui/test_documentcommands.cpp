#include "dialogscript.h"
#include "editorfixture.h"
#include "samplecatalogue.h"
#include "scriptedprompt.h"
#include "testfiles.h"

#include "catalogue/modelcatalogue.h"
#include "configfiles/configfile.h"
#include "configfiles/configname.h"
#include "configfiles/forms/dlgApply.h"
#include "configfiles/forms/dlgDescr.h"
#include "configfiles/forms/dlgLaunchUT.h"
#include "configfiles/forms/dlgOpen.h"
#include "configfiles/forms/dlgRestore.h"
#include "configfiles/forms/dlgSaveAs.h"
#include "configfiles/forms/formregistry.h"
#include "configfiles/gameinstallation.h"
#include "configfiles/runerror.h"
#include "configfiles/textfile.h"
#include "roster/forms/dlgImport.h"
#include "roster/forms/frmAbout.h"
#include "startup/forms/frmSplash.h"
#include "startup/options.h"
#include "startup/programdirectory.h"

#include <QAccessible>
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDesktopServices>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

namespace {

const QString ProgramTitle = "Quorvane for Unreal Tournament";

QString question(const QString &yes, const QString &no)
{
    return "Save Current Configuration?|Your current config is not saved.\r\n\r\n" + yes
        + "\r\n\r\n" + no + "\r\n\r\nCancel = Cancel this operation.";
}

const QHash<QString, QString> SaveQuestions {
    { "new",
        question("   Yes = Save current configuration and then start a new one.",
            "    No = Loose current configuration and then start a new one.") },
    { "open",
        question("   Yes = Save current configuration and then open a different configuration.",
            "    No = Loose current configuration and then open a different configuration.") },
    { "exit",
        question("   Yes = Save current configuration and quit.",
            "    No = Loose current configuration and quit.") },
};

const QString GameRunsQuestion = "Unreal Tournament Is Running|Unreal Tournament is running. It "
                                 "rewrites user.ini when it quits, so the bot list applied now "
                                 "will be overwritten then.\r\n\r\nApply the configuration anyway?";

MessageAnswer answerNamed(const QString &name)
{
    return name == "Yes" ? MessageAnswer::Yes
        : name == "No"   ? MessageAnswer::No
                         : MessageAnswer::Cancel;
}

QString items(const QComboBox *list)
{
    QStringList texts;
    for (int i = 0; i < list->count(); ++i)
        texts << list->itemText(i);
    return texts.join(u'|');
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

// The main window's File and Help commands and the dialogs they open, on a
// game folder made from the real installation's User.ini.
class TestDocumentCommands : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void saveQuestion_data();
    void saveQuestion();
    void documentStates_data();
    void documentStates();
    void saveAsNames_data();
    void saveAsNames();
    void openNames_data();
    void openNames();
    void applyDialog_data();
    void applyDialog();
    void quitAndLaunch_data();
    void quitAndLaunch();
    void helpEntries_data();
    void helpEntries();
    void aboutShowsTheSplashVersion();
    void dialogControlsHaveNames();

private:
    void run(const QString &step);
    // The window's document as "state|file name|Save|Save As".
    QString document() const;
    QByteArray savedBytes(const QString &name) const { return readTestFile(m_configDir + name); }
    QByteArray bytesFor(const QString &name) const
    {
        BotRoster roster = Roster();
        return joinAnsiLines(ConfigurationLines(name, roster));
    }

    std::unique_ptr<QTemporaryDir> m_dir;
    QString m_configDir;
    QString m_gameDir;
    ScriptedPrompt *m_prompt = nullptr;
    QPointer<frmBots> form;
    QStringList m_started;
    QStringList m_processes;
};

void TestDocumentCommands::initTestCase()
{
    Catalogue() = SampleCatalogue();
    setGameStarter([this](const QString &program, const QString &workingDirectory) {
        m_started << program + " in " + workingDirectory;
        return true;
    });
    setProcessLister([this] { return m_processes; });
}

// A configuration folder with two lists and a broken one, a game folder with
// the real User.ini and the game's executables, and the editor as start-up
// leaves it, shown.
void TestDocumentCommands::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
    const QString root = QDir::toNativeSeparators(m_dir->path()) + QDir::separator();
    setProgramDir(root);
    m_configDir = root + "configs" + QDir::separator();
    m_gameDir = root + "UT" + QDir::separator();
    AppOptions().ConfigPath = m_configDir;
    AppOptions().UTPath = m_gameDir;
    QVERIFY(QDir().mkpath(m_configDir));

    BotRoster team;
    SetDefaults(team);
    team.BotNames[0] = "Teamster";
    team.Description = "The team list";
    QVERIFY(SaveConfigAs(m_configDir, "Team.qvn", true, team));
    team.BotNames[0] = "Alphonse";
    team.Description = "The first list";
    QVERIFY(SaveConfigAs(m_configDir, "Alpha.qvn", true, team));
    QVERIFY(writeTestFile(m_configDir + "Broken.qvn", savedBytes("Team.qvn").left(900)));
    QVERIFY(writeTestFile(m_configDir + "curconfig_bkup_(1-2-2003-4-5-6).qvn2", "[old]\r\n"));

    QVERIFY(writeTestFile(m_gameDir + "System/User.ini",
        readTestFile(realWorldDir() + "vanilla-server/System/User.ini")));
    QVERIFY(writeTestFile(m_gameDir + "System/UnrealTournament.exe", "MZ"));
    QVERIFY(writeTestFile(m_gameDir + "System/ut-bin",
        "\x7f"
        "ELF"));

    m_started.clear();
    m_processes = { "bash", "kworker" };
    LaunchWithoutAsking() = false;
    m_prompt = new ScriptedPrompt;
    Roster() = BotRoster();
    form = new frmBots;
    prepareLikeStartup(*form);
    form->show();
}

void TestDocumentCommands::cleanup()
{
    delete form.data();
    unloadForm<dlgApply>();
    unloadForm<dlgDescr>();
    unloadForm<dlgLaunchUT>();
    unloadForm<dlgOpen>();
    unloadForm<dlgSaveAs>();
    unloadForm<frmAbout>();
    unloadForm<dlgImport>();
    unloadForm<dlgRestore>();
    delete m_prompt;
    m_dir.reset();
}

// One step of a user's session: "new", "open:NAME", "open-cancel",
// "saveas:NAME", "saveas-cancel", "edit", "save".
void TestDocumentCommands::run(const QString &step)
{
    DialogScript script;
    const QString verb = step.section(':', 0, 0);
    const QString name = step.section(':', 1);
    if (verb == "new") {
        form->mnuFileNew->trigger();
    } else if (verb == "open") {
        script.then<dlgOpen>([name](dlgOpen &d) { d.txtName->setText(name), d.cmdOpen->click(); });
        form->mnuFileOpen->trigger();
    } else if (verb == "open-cancel") {
        script.then<dlgOpen>([](dlgOpen &d) { d.CancelButton->click(); });
        form->mnuFileOpen->trigger();
    } else if (verb == "saveas") {
        script.then<dlgSaveAs>(
            [name](dlgSaveAs &d) { d.txtNewName->setText(name), d.cmdSave->click(); });
        form->mnuFileSaveAs->trigger();
    } else if (verb == "saveas-cancel") {
        script.then<dlgSaveAs>([](dlgSaveAs &d) { d.cmdCancel->click(); });
        form->mnuFileSaveAs->trigger();
    } else if (verb == "edit") {
        form->txtName->setText("Edited");
    } else if (verb == "save") {
        // Without a name, Save asks for one; here the user cancels.
        if (form->lblCurrentFile->text() == "(Un-Named)")
            script.then<dlgSaveAs>([](dlgSaveAs &d) { d.cmdCancel->click(); });
        form->mnuFileSave->trigger();
    }
    QVERIFY2(script.playedOut(), qPrintable(step + ": " + script.seen.join(',')));
}

QString TestDocumentCommands::document() const
{
    const auto onOff = [](const QAction *action) { return action->isEnabled() ? "on" : "off"; };
    return QStringList { form->lblSaved->text(), form->lblCurrentFile->text(),
        onOff(form->mnuFileSave), onOff(form->mnuFileSaveAs) }
        .join(u'|');
}

void TestDocumentCommands::saveQuestion_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<QString>("answer");
    QTest::addColumn<bool>("saved"); // Team.qvn was written
    QTest::addColumn<bool>("goesOn"); // the command went on after the question
    QTest::addColumn<QStringList>("dialogs");

    for (const QString command : { "new", "open", "exit" }) {
        const QStringList goOn = command == "open" ? QStringList { "dlgOpen" } : QStringList();
        QTest::addRow("%s, yes", qPrintable(command)) << command << "Team.qvn"
                                                      << "Yes" << true << true << goOn;
        QTest::addRow("%s, no", qPrintable(command)) << command << "Team.qvn"
                                                     << "No" << false << true << goOn;
        QTest::addRow("%s, cancel", qPrintable(command))
            << command << "Team.qvn"
            << "Cancel" << false << false << QStringList();
    }
    // Yes on a list without a name asks for one; a cancelled Save As does
    // not hold the command up.
    QTest::newRow("unnamed, yes") << "new"
                                  << "(Un-Named)"
                                  << "Yes" << false << true << QStringList { "dlgSaveAs" };
    QTest::newRow("unnamed exit, yes") << "exit"
                                       << "(Un-Named)"
                                       << "Yes" << false << true << QStringList { "dlgSaveAs" };
}

void TestDocumentCommands::saveQuestion()
{
    QFETCH(QString, command);
    QFETCH(QString, fileName);
    QFETCH(QString, answer);
    QFETCH(bool, saved);
    QFETCH(bool, goesOn);
    QFETCH(QStringList, dialogs);

    run("new");
    form->setCurrentFile(fileName);
    run("edit");
    const QByteArray before = savedBytes("Team.qvn");
    const BotRoster edited = Roster();
    QStringList unloaded;
    // The windows that outlive this row must not report into it.
    QObject recording;
    for (QObject *loaded : std::initializer_list<QObject *> { &theForm<frmAbout>(),
             &theForm<dlgSaveAs>(), &theForm<dlgApply>(), &theForm<dlgDescr>(), form.data() })
        connect(loaded, &QObject::destroyed, &recording,
            [&unloaded, name = loaded->objectName()] { unloaded << name; });

    DialogScript script;
    for (const QString &dialog : dialogs) {
        if (dialog == "dlgOpen")
            script.then<dlgOpen>([](dlgOpen &d) { d.CancelButton->click(); });
        else
            script.then<dlgSaveAs>([](dlgSaveAs &d) { d.cmdCancel->click(); });
    }
    m_prompt->answerNext(answerNamed(answer));
    if (command == "new")
        form->mnuFileNew->trigger();
    else if (command == "open")
        form->mnuFileOpen->trigger();
    else
        form->mnuFileExit->trigger();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

    QCOMPARE(m_prompt->transcript(), QStringList { SaveQuestions.value(command) });
    QCOMPARE(savedBytes("Team.qvn") != before, saved);
    QCOMPARE(script.seen, dialogs);
    if (command == "exit") {
        // The other windows go first, in their fixed order, the editor last;
        // its close writes the options.
        QCOMPARE(form.isNull(), goesOn);
        QCOMPARE(unloaded,
            goesOn ? QStringList({ "dlgApply", "dlgDescr", "dlgSaveAs", "frmAbout", "frmBots" })
                   : QStringList());
        QCOMPARE(QFile::exists(ProgramDir() + "options.ini"), goesOn);
        return;
    }
    const bool renewed = command == "new" && goesOn;
    QCOMPARE(form->lblCurrentFile->text(), renewed ? "(Un-Named)" : fileName);
    QCOMPARE(Roster().BotNames[0], renewed ? "Archon" : "Edited");
    if (!goesOn)
        QCOMPARE(Roster(), edited);
}

void TestDocumentCommands::documentStates_data()
{
    QTest::addColumn<QString>("steps");
    QTest::addColumn<QString>("document");

    QTest::newRow("as started") << ""
                                << "Saved||off|off";
    QTest::newRow("new") << "new"
                         << "Modified|(Un-Named)|on|on";
    QTest::newRow("open first") << "open:Team.qvn"
                                << "Loaded|Team.qvn|off|off";
    QTest::newRow("open cancelled") << "open-cancel"
                                    << "Saved||off|off";
    QTest::newRow("saved as") << "new,saveas:Bots"
                              << "Saved|Bots.qvn|off|on";
    QTest::newRow("save as cancelled") << "new,saveas:Bots,saveas-cancel"
                                       << "Modified|Bots.qvn|on|on";
    QTest::newRow("unnamed save asks a name") << "new,edit,save"
                                              << "Modified|(Un-Named)|on|on";
    QTest::newRow("named save overwrites") << "new,saveas:Team,edit,save"
                                           << "Saved|Team.qvn|off|on";
    // Opened, the list stays Loaded through edits; Save keeps its state.
    QTest::newRow("loaded stays loaded") << "new,saveas:Bots,open:Team.qvn,edit"
                                         << "Loaded|Team.qvn|off|on";
    QTest::newRow("open after edits") << "new,saveas:Bots,edit,save,open:Alpha.qvn"
                                      << "Loaded|Alpha.qvn|off|on";
}

void TestDocumentCommands::documentStates()
{
    QFETCH(QString, steps);
    QFETCH(QString, document);

    m_prompt->answerNext(MessageAnswer::Yes); // overwrite Team.qvn
    for (const QString &step : steps.split(',', Qt::SkipEmptyParts))
        run(step);

    QCOMPARE(this->document(), document);
    const QString name = form->lblCurrentFile->text();
    QCOMPARE(form->windowTitle(), name.isEmpty() ? ProgramTitle : name + "[*] - " + ProgramTitle);
    QCOMPARE(form->isWindowModified(), form->lblSaved->text() != "Saved");
    QVERIFY(form->cmbBot->isEnabled() == !name.isEmpty());
    // What the window shows is what the roster and a saved file hold.
    QCOMPARE(form->txtName->text(), Roster().BotNames[0]);
    if (form->lblSaved->text() == "Saved" && !name.isEmpty())
        QCOMPARE(savedBytes(name), bytesFor(name));
}

void TestDocumentCommands::saveAsNames_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("written");
    QTest::addColumn<QStringList>("messages");
    QTest::addColumn<bool>("staysOpen");

    QTest::newRow("plain") << "Bots"
                           << "Bots.qvn" << QStringList() << false;
    QTest::newRow("with extension") << "Bots.qvn"
                                    << "Bots.qvn" << QStringList() << false;
    QTest::newRow("other capitals") << "Bots.QVN"
                                    << "Bots.QVN.qvn" << QStringList() << false;
    QTest::newRow("empty") << ""
                           << ".qvn" << QStringList() << false;
    QTest::newRow("declined overwrite") << "Team"
                                        << ""
                                        << QStringList { "File Already Exists|This file exists, do "
                                                         "you really want to over write it?" }
                                        << false;
    // A write that fails says so and leaves the dialog open for another name.
    QTest::newRow("write fails")
        << "Jammed"
        << ""
        << QStringList { "File Already Exists|This file exists, do you really want to over write "
                         "it?",
               "Configuration Not Saved|The configuration could not be saved as Jammed.qvn:\r\n*" }
        << true;
    // Refused names leave the dialog open for another.
    for (const QString name :
        { "../Bots", "sub/Bots", "..\\System\\User.ini", "Bo|ts", "Bots?", "C:Bots" })
        QTest::newRow(qPrintable(name))
            << name << ""
            << QStringList { InvalidConfigNameTitle() + "|" + ConfigNameProblem(name + ".qvn") }
            << true;
}

void TestDocumentCommands::saveAsNames()
{
    QFETCH(QString, typed);
    QFETCH(QString, written);
    QFETCH(QStringList, messages);
    QFETCH(bool, staysOpen);

    run("new");
    // A folder in the way of the file: the save is asked for and fails.
    QVERIFY(QDir().mkpath(m_configDir + "Jammed.qvn"));
    m_prompt->answerNext(typed == "Jammed" ? MessageAnswer::Yes : MessageAnswer::No);
    const QStringList filesBefore = QDir(m_configDir).entryList(QDir::Files | QDir::Hidden);
    const QByteArray teamBefore = savedBytes("Team.qvn");
    bool stayedOpen = false;
    DialogScript script;
    script.then<dlgSaveAs>([&](dlgSaveAs &d) {
        d.txtNewName->setText(typed);
        d.cmdSave->click();
        stayedOpen = d.isVisible();
        if (stayedOpen)
            d.cmdCancel->click();
    });
    form->mnuFileSaveAs->trigger();

    QCOMPARE(m_prompt->transcript().size(), messages.size());
    for (qsizetype i = 0; i < messages.size(); ++i) {
        const QString &expected = messages.at(i);
        const QString actual = m_prompt->transcript().at(i);
        // "*" stands for the file system's own account of the failure.
        QVERIFY2(expected.endsWith('*')
                ? actual.startsWith(expected.chopped(1)) && actual.size() > expected.size()
                : actual == expected,
            qPrintable(actual));
    }
    QCOMPARE(stayedOpen, staysOpen);
    QCOMPARE(theForm<dlgSaveAs>().SavedFileName, written);
    QCOMPARE(form->lblCurrentFile->text(), written.isEmpty() ? "(Un-Named)" : written);
    QCOMPARE(savedBytes("Team.qvn"), teamBefore);
    QStringList expectedFiles = filesBefore;
    if (!written.isEmpty()) {
        QCOMPARE(savedBytes(written), bytesFor(written));
        expectedFiles = (expectedFiles << written);
    }
    // Nothing is written anywhere else: not outside the folder, not beside it.
    QCOMPARE(QDir(m_configDir).entryList(QDir::Files | QDir::Hidden).size(), expectedFiles.size());
    // Beside it only the list of recent configurations.
    QCOMPARE(QDir(m_dir->path()).entryList(QDir::Files),
        written.isEmpty() ? QStringList() : QStringList { "recentfiles.txt" });
}

void TestDocumentCommands::openNames_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("opened"); // "file name=first bot"; empty: refused
    QTest::addColumn<QString>("message");

    QTest::newRow("listed") << "Alpha.qvn"
                            << "Alpha.qvn=Alphonse"
                            << "";
    QTest::newRow("without extension") << "Team"
                                       << "Team.qvn=Teamster"
                                       << "";
    QTest::newRow("empty") << ""
                           << ""
                           << "Open Configuration|Type the name of a configuration to open, or "
                              "pick one from the list.";
    QTest::newRow("missing")
        << "Missing.qvn"
        << ""
        << "Open Configuration|Can't find Missing.qvn in the configuration folder @.";
    QTest::newRow("outside") << "../configs/Team.qvn"
                             << ""
                             << InvalidConfigNameTitle() + "|"
            + ConfigNameProblem("../configs/Team.qvn");
    // The reader's own words say where the file ends (its tests check them).
    QTest::newRow("broken")
        << "Broken.qvn"
        << ""
        << "Configuration Not Opened|The configuration Broken.qvn could not be opened; nothing "
           "was changed.\r\n@reader";
}

void TestDocumentCommands::openNames()
{
    QFETCH(QString, typed);
    QFETCH(QString, opened);
    QFETCH(QString, message);

    run("new");
    run("edit");
    const BotRoster before = Roster();
    bool stayedOpen = false;
    DialogScript script;
    script.then<dlgOpen>([&](dlgOpen &d) {
        d.txtName->setText(typed);
        d.cmdOpen->click();
        stayedOpen = d.isVisible();
        if (stayedOpen)
            d.CancelButton->click();
    });
    m_prompt->answerNext(MessageAnswer::No);
    form->mnuFileOpen->trigger();

    if (message.endsWith("@reader")) {
        try {
            BotRoster scratch;
            OpenConfiguration(m_configDir, typed, scratch);
        } catch (const RunError &error) {
            message.replace("@reader", error.message());
        }
    }
    const QStringList messages = m_prompt->transcript().mid(1);
    QCOMPARE(messages,
        message.isEmpty() ? QStringList() : QStringList { message.replace("@", m_configDir) });
    QCOMPARE(stayedOpen, opened.isEmpty());
    QCOMPARE(theForm<dlgOpen>().FileOpened, !opened.isEmpty());
    if (opened.isEmpty()) {
        // A refused or broken file leaves everything as it was.
        QCOMPARE(Roster(), before);
        QCOMPARE(document(), "Modified|(Un-Named)|on|on");
        QCOMPARE(form->txtName->text(), "Edited");
    } else {
        QCOMPARE(document(), "Loaded|" + opened.section('=', 0, 0) + "|on|on");
        QCOMPARE(Roster().BotNames[0], opened.section('=', 1));
        QCOMPARE(form->txtName->text(), opened.section('=', 1));
    }
}

void TestDocumentCommands::applyDialog_data()
{
    QTest::addColumn<QStringList>("userInis");
    QTest::addColumn<bool>("backup");
    QTest::addColumn<bool>("gameRuns");
    QTest::addColumn<bool>("emptyFolder");
    QTest::addColumn<QStringList>("backups");
    QTest::addColumn<QString>("message");

    const QString completed = "Apply Configuration...|Completed";
    const QStringList system { "System/User.ini" };
    const QStringList both { "System/User.ini", "System64/User.ini" };
    QTest::newRow("one file") << system << false << false << false << QStringList() << completed;
    QTest::newRow("one file, backup")
        << system << true << false << false << QStringList { ".qvn2" } << completed;
    QTest::newRow("two files") << both << false << false << false << QStringList() << completed;
    QTest::newRow("two files, backup")
        << both << true << false << false << QStringList { ".qvn2", "_System64.qvn2" } << completed;
    QTest::newRow("game running, declined")
        << system << true << true << false << QStringList() << GameRunsQuestion;
    QTest::newRow("nothing to apply") << system << true << false << true << QStringList()
                                      << "Missing File|Can't find .  Operation Aborted.";
}

void TestDocumentCommands::applyDialog()
{
    QFETCH(QStringList, userInis);
    QFETCH(bool, backup);
    QFETCH(bool, gameRuns);
    QFETCH(bool, emptyFolder);
    QFETCH(QStringList, backups);
    QFETCH(QString, message);

    const QByteArray original = readTestFile(m_gameDir + "System/User.ini");
    QStringList targets;
    for (const QString &userIni : userInis) {
        QVERIFY(writeTestFile(m_gameDir + userIni, original));
        targets << QDir::toNativeSeparators(m_gameDir + userIni);
    }
    if (emptyFolder) {
        for (const char *name : { "Team.qvn", "Alpha.qvn", "Broken.qvn" })
            QVERIFY(QFile::remove(m_configDir + name));
    }
    if (gameRuns)
        m_processes << "ut-bin-amd64";

    QString listed;
    QString description;
    QStringList offered;
    bool stayedOpen = false;
    DialogScript script;
    script.then<dlgApply>([&](dlgApply &d) {
        listed = items(d.cmbConfigs);
        d.cmbConfigs->setCurrentText("Team.qvn");
        description = d.txtDescr->toPlainText();
        for (const QCheckBox *box : std::as_const(d.chkTargets))
            offered << box->text() + (box->isChecked() ? "" : " (unticked)");
        d.chkBackup->setChecked(backup);
        d.cmdApply->click();
        stayedOpen = d.isVisible();
        if (stayedOpen)
            d.CancelButton->click();
    });
    form->mnuFileApply->trigger();

    // Sorted by name, backups not among them.
    QCOMPARE(listed, emptyFolder ? "" : "Alpha.qvn|Broken.qvn|Team.qvn");
    QCOMPARE(description, emptyFolder ? "" : "The team list ");
    QCOMPARE(offered, targets);
    QCOMPARE(m_prompt->transcript(), QStringList { message });
    const bool done = message.endsWith("Completed");
    QCOMPARE(stayedOpen, !done);
    for (const QString &userIni : userInis) {
        const QByteArray now = readTestFile(m_gameDir + userIni);
        QCOMPARE(now.contains("\r\nBotNames[0]=Teamster\r\n"), done);
        QCOMPARE(now == original, !done);
    }
    QStringList made = QDir(m_configDir).entryList({ "curconfig_bkup_*" });
    made.removeOne("curconfig_bkup_(1-2-2003-4-5-6).qvn2");
    QCOMPARE(made.size(), backups.size());
    for (qsizetype i = 0; i < made.size(); ++i)
        QVERIFY2(made.at(i).endsWith(")" + backups.at(i)), qPrintable(made.join(',')));
}

void TestDocumentCommands::quitAndLaunch_data()
{
    QTest::addColumn<QString>("steps"); // what the user did before
    QTest::addColumn<bool>("dontAsk");
    QTest::addColumn<QString>("launchAnswer"); // in dlgLaunchUT: yes, cancel, tick-cancel
    QTest::addColumn<QString>("saveAsName"); // typed in Save As; empty: cancelled
    QTest::addColumn<bool>("gameRuns");
    QTest::addColumn<bool>("noGame");
    QTest::addColumn<QString>("applied"); // BotNames[0] in User.ini; empty: untouched
    QTest::addColumn<bool>("started");

    QTest::newRow("named, modified") << "new,saveas:Bots,edit" << false << "yes"
                                     << "" << false << false << "Edited" << true;
    QTest::newRow("don't ask") << "open:Team.qvn" << true << ""
                               << "" << false << false << "Teamster" << true;
    QTest::newRow("ticked, then cancelled") << "open:Team.qvn" << false << "tick-cancel"
                                            << "" << false << false << "" << false;
    QTest::newRow("unnamed, saved as") << "new,edit" << false << "yes"
                                       << "Fresh" << false << false << "Edited" << true;
    QTest::newRow("unnamed, save cancelled") << "new" << false << "yes"
                                             << "" << false << false << "" << false;
    QTest::newRow("game running, declined") << "open:Team.qvn" << true << ""
                                            << "" << true << false << "" << false;
    QTest::newRow("no game") << "new,saveas:Bots,edit" << false << ""
                             << "" << false << true << "" << false;
    QTest::newRow("nothing open") << "" << false << "yes"
                                  << "" << false << false << "" << true;
}

void TestDocumentCommands::quitAndLaunch()
{
    QFETCH(QString, steps);
    QFETCH(bool, dontAsk);
    QFETCH(QString, launchAnswer);
    QFETCH(QString, saveAsName);
    QFETCH(bool, gameRuns);
    QFETCH(bool, noGame);
    QFETCH(QString, applied);
    QFETCH(bool, started);

    for (const QString &step : steps.split(',', Qt::SkipEmptyParts))
        run(step);
    const QByteArray userIni = readTestFile(m_gameDir + "System/User.ini");
    const QByteArray bots = savedBytes("Bots.qvn");
    if (noGame) {
        QVERIFY(QFile::remove(m_gameDir + "System/UnrealTournament.exe"));
        QVERIFY(QFile::remove(m_gameDir + "System/ut-bin"));
    }
    if (gameRuns)
        m_processes << "UnrealTournament.exe";
    LaunchWithoutAsking() = dontAsk;

    DialogScript script;
    if (!launchAnswer.isEmpty())
        script.then<dlgLaunchUT>([&](dlgLaunchUT &d) {
            QCOMPARE(d.Label1->text(),
                "Save & Apply current configuration and then launch Unreal Tournament?");
            if (launchAnswer == "tick-cancel")
                d.chkAutoGoAway->click();
            (launchAnswer == "yes" ? d.cmdYes : d.CancelButton)->click();
        });
    if (form->lblCurrentFile->text() == "(Un-Named)")
        script.then<dlgSaveAs>([&](dlgSaveAs &d) {
            d.txtNewName->setText(saveAsName);
            (saveAsName.isEmpty() ? d.cmdCancel : d.cmdSave)->click();
        });
    const int messagesBefore = int(m_prompt->messages().size());
    form->mnuFileQuitLaunch->trigger();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

    QVERIFY2(script.playedOut(), qPrintable(script.seen.join(',')));
    const QStringList messages = m_prompt->transcript().mid(messagesBefore);
#ifdef Q_OS_WIN
    const QString game = QDir::toNativeSeparators(m_gameDir + "System/UnrealTournament.exe");
#else
    const QString game = m_gameDir + "System/ut-bin";
#endif
    QCOMPARE(
        m_started, started ? QStringList { game + " in " + m_gameDir + "System" } : QStringList());
    QCOMPARE(form.isNull(), started);
    QCOMPARE(LaunchWithoutAsking(), dontAsk || launchAnswer == "tick-cancel");
    const QByteArray nowIni = readTestFile(m_gameDir + "System/User.ini");
    if (applied.isEmpty()) {
        QCOMPARE(nowIni, userIni);
    } else {
        QVERIFY(nowIni.contains("\r\nBotNames[0]=" + applied.toLatin1() + "\r\n"));
        QCOMPARE(messages.constLast(), "Apply Configuration...|Completed");
        // The replaced list is kept.
        QCOMPARE(QDir(m_configDir).entryList({ "curconfig_bkup_*" }).size(), 2);
    }
    if (noGame) {
        QCOMPARE(messages,
            QStringList {
                "Unreal Tournament Exe Missing...|Unreal Tournament Executable not found!" });
        QCOMPARE(savedBytes("Bots.qvn"), bots);
    }
    if (gameRuns)
        QCOMPARE(messages, QStringList { GameRunsQuestion });
}

void TestDocumentCommands::helpEntries_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QUrl>("opened");

    QTest::newRow("website") << "mnuHelpWebsite" << QUrl(QUORVANE_WEBSITE_URL);
    QTest::newRow("support") << "mnuHelpSupportSite" << QUrl(QUORVANE_SUPPORT_URL);
    QTest::newRow("help") << "mnuHelpHelp" << QUrl::fromLocalFile("@help/index.html");
    QTest::newRow("partner logo") << "imgPartnerLogo" << QUrl(QUORVANE_PARTNER_URL);
}

void TestDocumentCommands::helpEntries()
{
    QFETCH(QString, entry);
    QFETCH(QUrl, opened);

    OpenedUrls desktop;
    for (const char *scheme : { "https", "http", "file" })
        QDesktopServices::setUrlHandler(scheme, &desktop, "open");
    if (auto *action = form->findChild<QAction *>(entry))
        action->trigger();
    else
        QTest::mouseDClick(form->findChild<QLabel *>(entry), Qt::LeftButton);
    for (const char *scheme : { "https", "http", "file" })
        QDesktopServices::unsetUrlHandler(scheme);

    if (opened.isLocalFile())
        opened = QUrl::fromLocalFile(
            opened.toLocalFile().replace("@", QDir::fromNativeSeparators(ProgramDir())));
    QCOMPARE(desktop.urls, QList<QUrl> { opened });
}

void TestDocumentCommands::aboutShowsTheSplashVersion()
{
    QString version;
    DialogScript script;
    script.then<frmAbout>([&](frmAbout &d) {
        version = d.lblVersion->text();
        d.cmdOK->click();
    });
    form->mnuHelpAbout->trigger();

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
