#include "recordingprogress.h"
#include "scriptedprompt.h"
#include "testfiles.h"

#include "configfiles/forms/dlgError.h"
#include "configfiles/forms/formregistry.h"
#include "configfiles/forms/windowtools.h"
#include "configfiles/runerror.h"
#include "roster/botroster.h"
#include "roster/forms/frmBots.h"
#include "startup/forms/dlgChangeConfigPath.h"
#include "startup/forms/dlgCorrectUTPath.h"
#include "startup/forms/dlgFirstRun.h"
#include "startup/forms/frmSplash.h"
#include "startup/forms/startupsequence.h"
#include "startup/options.h"
#include "startup/programdirectory.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <optional>

namespace {

QString native(const QString &path)
{
    return QDir::toNativeSeparators(path);
}

QStringList items(const QComboBox *list)
{
    QStringList texts;
    for (int i = 0; i < list->count(); ++i)
        texts << list->itemText(i);
    return texts;
}

QByteArray optionsFile(
    const QString &autoClose, const QString &firstRun, const QString &configs, const QString &game)
{
    return crlf({ "[SplashScreen]", autoClose, "", "[UTPath]", firstRun, configs, game });
}

} // namespace

// Plays the user: answers every modal dialog the start-up opens, in the way
// the test asked, and writes down what appeared, messages included, in order.
class StartupUser : public QObject
{
public:
    explicit StartupUser(ScriptedPrompt &prompt)
        : m_prompt(prompt)
    {
        connect(&m_timer, &QTimer::timeout, this, &StartupUser::look);
        m_timer.start(5);
    }

    void note(const QString &event)
    {
        takeMessages();
        log << event;
    }

    void takeMessages()
    {
        for (; m_messagesSeen < m_prompt.messages().size(); ++m_messagesSeen)
            log << "msg:" + m_prompt.messages().at(m_messagesSeen).title;
    }

    QString gameDir; // "<Escape>" closes the game dialog
    QString configDir;
    QStringList log;
    // The splash's message line, the dialog's caption and question, and its
    // place each time a dialog opened.
    QHash<QString, QString> messageAt;
    QHash<QString, QString> captionOf;
    QHash<QString, QRect> placeOf;
    QRect splashPlace;

private:
    void look()
    {
        auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (!dialog || !dialog->isVisible())
            return;
        const QString name = dialog->objectName();
        note("dlg:" + name);
        if (isFormLoaded<frmSplash>()) {
            messageAt[name] = theForm<frmSplash>().message();
            splashPlace = theForm<frmSplash>().frameGeometry();
        }
        placeOf[name] = QRect(dialog->pos(), dialog->size());
        if (auto *pathDialog = qobject_cast<PathDialog *>(dialog))
            captionOf[name] = dialog->windowTitle() + "|" + pathDialog->lblMessage->text();
        if (name == "dlgFirstRun") {
            static_cast<dlgFirstRun *>(dialog)->cmdContinue->click();
        } else if (name == "dlgCorrectUTPath" && gameDir == "<Escape>") {
            QTest::keyClick(dialog, Qt::Key_Escape);
        } else if (name == "dlgCorrectUTPath") {
            static_cast<PathDialog *>(dialog)->showPath(gameDir);
            static_cast<PathDialog *>(dialog)->OKButton->click();
        } else if (name == "dlgChangeConfigPath") {
            static_cast<PathDialog *>(dialog)->showPath(configDir);
            static_cast<PathDialog *>(dialog)->OKButton->click();
        } else if (name == "dlgError") {
            static_cast<dlgError *>(dialog)->OKButton->click();
        } else {
            dialog->reject();
        }
    }

    ScriptedPrompt &m_prompt;
    QTimer m_timer;
    qsizetype m_messagesSeen = 0;
};

class TestStartupSequence : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void startupPaths_data();
    void startupPaths();
    void handOver_data();
    void handOver();
    void errorTable_data();
    void errorTable();
    void missingProgramFiles_data();
    void missingProgramFiles();
    void pathDialogsOverSplash();
    void quitWithoutGameFolder();
    void restartBuildsAFreshEditor();
    void gameWithoutContent();
    void demoGame();

private:
    void writeOptions(const QByteArray &content)
    {
        QVERIFY(writeTestFile(m_program + "options.ini", content));
    }
    QByteArray validOptions(const QString &autoClose = "0") const
    {
        return optionsFile(autoClose, "0", m_configs, m_game);
    }
    void verifyEditorPrepared();

    QTemporaryDir m_dir;
    QString m_program;
    QString m_game;
    QString m_configs;
    ScriptedPrompt *m_prompt = nullptr;
    StartupUser *m_user = nullptr;
    RecordingErrorSink *m_errors = nullptr;
    // What the boss dialog does when first-run shows it: nothing, or throw.
    std::function<void()> m_bossAction;
    std::function<void()> m_reportAction;
};

void TestStartupSequence::initTestCase()
{
    QVERIFY(m_dir.isValid());
    // A home folder without the game, so that nothing is proposed.
    QVERIFY(QDir(m_dir.path()).mkpath("home"));
    qputenv("HOME", QFile::encodeName(m_dir.path() + "/home"));
    installWidgetEventLoopHook();

    setStartupForms([this] {
        StartupForms forms;
        forms.scan.showUnmatchedReport = [this](const QStringList &paths) {
            QStringList names;
            for (const QString &path : paths)
                names << QFileInfo(path).fileName();
            m_user->note("report:" + names.join(','));
            if (isFormLoaded<frmSplash>())
                m_user->messageAt["report"] = theForm<frmSplash>().message();
            if (m_reportAction)
                m_reportAction();
        };
        forms.scan.showPatternEditor = [this] { m_user->note("patterns"); };
        forms.showNewBoss = [this](QWidget *owner) {
            m_user->note(owner == formSlot<frmSplash>().data() ? "boss" : "boss without splash");
            if (m_bossAction)
                m_bossAction();
        };
        return forms;
    });
}

void TestStartupSequence::init()
{
    const QString root = native(
        m_dir.path() + "/" + QTest::currentDataTag() + "/" + QTest::currentTestFunction() + "/");
    m_program = root + native("program/");
    m_game = root + native("game/");
    m_configs = root + native("configs/");
    QVERIFY(QDir().mkpath(m_program));
    setProgramDir(m_program);
    QVERIFY(writeTestFile(m_program + "int.ini", "Engine.int\r\n"));
    QVERIFY(writeTestFile(m_program + "pattern.ini", ""));
    QVERIFY(writeTestFile(m_game + native("System/User.ini"), "[URL]\r\n"));
    // clang-format off
    QVERIFY(writeTestFile(m_game + native("System/Models.int"), crlf({ "[Public]",
        "Object=(Name=Botpack.TMale1Bot,Class=Class,MetaClass=Botpack.Bot,Description=\"Male Commando\")",
        "Object=(Name=Botpack.VoiceMaleOne,Class=Class,MetaClass=Botpack.VoiceMale,Description=\"Male One\")" })));
    // clang-format on
    QVERIFY(writeTestFile(m_game + native("System/LostSkins.int"),
        crlf({ "[Public]", "Object=(Name=LostSkins.lost1,Class=Texture,Description=\"Lost\")" })));

    AppOptions() = Options();
    Roster() = BotRoster();
    RestartRequested() = false;
    m_prompt = new ScriptedPrompt;
    m_errors = new RecordingErrorSink;
    m_user = new StartupUser(*m_prompt);
    m_user->gameDir = m_game;
    m_user->configDir = m_configs;
    m_bossAction = nullptr;
    m_reportAction = nullptr;
}

void TestStartupSequence::cleanup()
{
    delete m_user;
    delete m_errors;
    delete m_prompt;
    unloadForm<frmBots>();
    unloadForm<frmSplash>();
    unloadForm<dlgCorrectUTPath>();
    unloadForm<dlgChangeConfigPath>();
    unloadForm<dlgFirstRun>();
    unloadForm<dlgError>();
    QDir(QDir::homePath() + "/.utpg").removeRecursively();
}

void TestStartupSequence::verifyEditorPrepared()
{
    QVERIFY(isFormLoaded<frmBots>());
    const frmBots &bots = theForm<frmBots>();
    QStringList botItems;
    for (int slot = 0; slot < 32; ++slot)
        botItems << "Bot " + QString::number(slot);
    QCOMPARE(items(bots.cmbBot), botItems);
    QCOMPARE(bots.cmbBot->currentIndex(), 0);
    QCOMPARE(bots.cmbClass->currentIndex(), 0);
    QCOMPARE(bots.txtName->isEnabled(), false);
    QCOMPARE(bots.cmbClass->isEnabled(), false);
    QCOMPARE(bots.mnuFileSave->isEnabled(), false);
    QCOMPARE(bots.mnuFileSaveAs->isEnabled(), false);
    QCOMPARE(bots.chkJumpy->text(), QString());
    QVERIFY(bots.IsSaved());

    BotRoster defaults;
    SetDefaults(defaults);
    QVERIFY(Roster() == defaults);
}

// clang-format off
void TestStartupSequence::startupPaths_data()
{
    QTest::addColumn<QString>("options");    // "none", "valid", "first run", "game gone", "short"
    QTest::addColumn<bool>("bossPackage");
    QTest::addColumn<QString>("userIni");    // where the game's User.ini is; "" System/User.ini
    QTest::addColumn<QStringList>("expected");

    const QStringList firstRun = { "dlg:dlgFirstRun", "dlg:dlgCorrectUTPath", "msg:Remember!",
                                   "dlg:dlgChangeConfigPath", "report:LostSkins.int" };
    QStringList firstRunWithBoss = firstRun;
    firstRunWithBoss.insert(3, "boss");
    const QStringList askPaths = { "dlg:dlgCorrectUTPath", "dlg:dlgChangeConfigPath", "report:LostSkins.int" };

    QTest::newRow("fresh install") << "none" << false << "" << firstRun;
    QTest::newRow("fresh install, boss package") << "none" << true << "" << firstRunWithBoss;
    QTest::newRow("first-run flag") << "first run" << false << "" << firstRun;
    QTest::newRow("game folder gone") << "game gone" << true << "" << askPaths;
    QTest::newRow("normal start") << "valid" << true << "" << QStringList { "report:LostSkins.int" };
    QTest::newRow("short options file") << "short" << false << "" << askPaths;
    QTest::newRow("64-bit game") << "valid" << false << "System64/User.ini" << QStringList { "report:LostSkins.int" };
#ifdef Q_OS_LINUX
    QTest::newRow("user.ini in ~/.utpg") << "valid" << false << "~/.utpg/System/User.ini" << QStringList { "report:LostSkins.int" };
#endif
}
// clang-format on

void TestStartupSequence::startupPaths()
{
    QFETCH(QString, options);
    QFETCH(bool, bossPackage);
    QFETCH(QString, userIni);
    QFETCH(QStringList, expected);

    if (!userIni.isEmpty()) {
        QVERIFY(QFile::remove(m_game + native("System/User.ini")));
        QVERIFY(writeTestFile(
            userIni.startsWith("~/") ? QDir::homePath() + userIni.mid(1) : m_game + userIni,
            "[URL]\r\n"));
    }
    if (bossPackage)
        QVERIFY(writeTestFile(m_game + native("System/SkeletalCharsFix313.int"), "[Public]\r\n"));
    if (options == "valid")
        writeOptions(validOptions());
    else if (options == "first run")
        writeOptions(
            optionsFile("0", "1", native("/elsewhere/configs/"), native("/elsewhere/game/")));
    else if (options == "game gone")
        writeOptions(optionsFile("0", "0", m_configs, native(m_dir.path() + "/gone/")));
    else if (options == "short")
        writeOptions(crlf({ "[SplashScreen]", "0", "" }));

    Main();
    m_user->takeMessages();

    QCOMPARE(m_user->log, expected);
    QCOMPARE(AppOptions().UTPath, m_game);
    QCOMPARE(AppOptions().ConfigPath, m_configs);
    if (m_user->log.contains("dlg:dlgChangeConfigPath"))
        QVERIFY(QFileInfo(m_configs).isDir());
    if (m_user->log.contains("msg:Remember!")) {
        QCOMPARE(m_prompt->transcript().first(),
            "Remember!|To change the path later simply go to\r\n"
            "the 'File' menu and choose Options.\nThen choose the Paths tab and\r\n"
            "the UT Path radio button.\r\nFinally click the 'Change' button.");
    }
    QVERIFY(m_errors->errors.isEmpty());
    verifyEditorPrepared();
    QCOMPARE(theForm<frmBots>().isVisible(), false);
    QCOMPARE(theForm<frmSplash>().message(), QString("Finished...Click the Close button."));
    QVERIFY(theForm<frmSplash>().cmdClose->isEnabled());
    // Main never writes the options; the main window does when it closes.
    QCOMPARE(QFileInfo::exists(m_program + "options.ini"), options != "none");
}

// clang-format off
void TestStartupSequence::handOver_data()
{
    QTest::addColumn<QString>("autoClose");      // line 2 of options.ini
    QTest::addColumn<int>("tickDuringStartup");  // -1 leave the box, else its new state
    QTest::addColumn<bool>("closesItself");

    QTest::newRow("auto-close") << "1" << -1 << true;
    QTest::newRow("wait for Close") << "0" << -1 << false;
    QTest::newRow("ticked while starting") << "0" << int(Qt::Checked) << true;
    QTest::newRow("unticked while starting") << "1" << int(Qt::Unchecked) << false;
    QTest::newRow("half-ticked box waits") << "2" << -1 << false;
}
// clang-format on

void TestStartupSequence::handOver()
{
    QFETCH(QString, autoClose);
    QFETCH(int, tickDuringStartup);
    QFETCH(bool, closesItself);

    writeOptions(validOptions(autoClose));
    QPointer<frmSplash> splash;
    m_reportAction = [&] {
        splash = &theForm<frmSplash>();
        const Qt::CheckState fromFile[] = { Qt::Unchecked, Qt::Checked, Qt::PartiallyChecked };
        QCOMPARE(splash->chkAutoClose->checkState(), fromFile[autoClose.toInt()]);
        QVERIFY(!splash->cmdClose->isEnabled());
        if (tickDuringStartup >= 0)
            splash->chkAutoClose->setCheckState(Qt::CheckState(tickDuringStartup));
    };
    Main();
    QVERIFY(splash);

    QCOMPARE(AppOptions().AutoCloseSplash, qint16(closesItself ? 1 : 0));
    QCOMPARE(theForm<frmBots>().isVisible(), closesItself);
    QCOMPARE(splash->isVisible(), !closesItself);
    if (!closesItself) {
        QCOMPARE(splash->message(), QString("Finished...Click the Close button."));
        splash->chkAutoClose->setChecked(true);
        splash->cmdClose->click();
        QVERIFY(theForm<frmBots>().isVisible());
        QCOMPARE(AppOptions().AutoCloseSplash, qint16(1));
    }
    QTRY_VERIFY(!splash);
    verifyEditorPrepared();
}

// clang-format off
void TestStartupSequence::errorTable_data()
{
    QTest::addColumn<QList<int>>("bossErrors");   // thrown by the boss dialog, one per showing
    QTest::addColumn<QString>("line2");           // of options.ini, "" for no file
    QTest::addColumn<QStringList>("expected");
    QTest::addColumn<int>("reported");            // error number passed on, 0 for none
    QTest::addColumn<bool>("finished");           // the editor prepared, the splash waiting

    const QStringList toBoss = { "dlg:dlgFirstRun", "dlg:dlgCorrectUTPath", "msg:Remember!", "boss" };
    const QStringList again = { "dlg:dlgCorrectUTPath", "msg:Remember!", "boss" };
    const QStringList rest = { "dlg:dlgChangeConfigPath", "report:LostSkins.int" };

    QTest::newRow("52 asks for the paths again") << QList<int> { 52 } << "" << toBoss + again + rest << 0 << true;
    QTest::newRow("52 twice ends") << QList<int> { 52, 52 } << "" << toBoss + again << 52 << false;
    QTest::newRow("55 goes on") << QList<int> { 55 } << "" << toBoss + rest << 0 << true;
    QTest::newRow("62 ends quietly") << QList<int> { 62 } << "" << toBoss << 0 << false;
    QTest::newRow("53 is reported") << QList<int> { 53 } << "" << toBoss << 53 << false;
    QTest::newRow("line 2 not a number: first run") << QList<int> {} << "yes" << toBoss + rest << 13 << true;
    QTest::newRow("line 2 out of range: first run") << QList<int> {} << "5" << toBoss + rest << 380 << true;
}
// clang-format on

void TestStartupSequence::errorTable()
{
    QFETCH(QList<int>, bossErrors);
    QFETCH(QString, line2);
    QFETCH(QStringList, expected);
    QFETCH(int, reported);
    QFETCH(bool, finished);

    QVERIFY(writeTestFile(m_game + native("System/SkeletalCharsFix313.int"), "[Public]\r\n"));
    if (!line2.isEmpty())
        writeOptions(optionsFile(line2, "0", m_configs, m_game));
    m_bossAction = [&] {
        if (!bossErrors.isEmpty())
            throw RunError(bossErrors.takeFirst());
    };
    Main();
    m_user->takeMessages();

    QCOMPARE(m_user->log, expected);
    QCOMPARE(m_errors->errors.size(), reported ? 1 : 0);
    if (reported) {
        QCOMPARE(m_errors->errors.first().number, reported);
        QCOMPARE(
            m_errors->errors.first().message, QString("Unknown Error has occured in Sub Main"));
    }
    if (finished) {
        verifyEditorPrepared();
        QCOMPARE(theForm<frmSplash>().message(), QString("Finished...Click the Close button."));
        // The main window's closing writes the options, which repairs the file.
        theForm<frmSplash>().cmdClose->click();
        theForm<frmBots>().close();
        QCOMPARE(readTestFile(m_program + "options.ini"), optionsFile("0", "0", m_configs, m_game));
    } else if (reported) {
        // Nothing is left to go on with: the program ends.
        QVERIFY(!isFormLoaded<frmSplash>());
        QVERIFY(!isFormLoaded<frmBots>());
    } else {
        // Ended or not, the splash can always be left, and closing it then
        // shows no half-built editor.
        QVERIFY(theForm<frmSplash>().cmdClose->isEnabled());
        theForm<frmSplash>().cmdClose->click();
        QVERIFY(!isFormLoaded<frmBots>() || !theForm<frmBots>().isVisible());
    }
}

// clang-format off
void TestStartupSequence::missingProgramFiles_data()
{
    QTest::addColumn<QStringList>("missing");
    QTest::addColumn<QStringList>("titles");

    QTest::newRow("pattern.ini") << QStringList { "pattern.ini" } << QStringList { "pattern.ini" };
    QTest::newRow("int.ini") << QStringList { "int.ini" } << QStringList { "int.ini" };
    QTest::newRow("both") << QStringList { "pattern.ini", "int.ini" } << QStringList { "pattern.ini", "int.ini" };
}
// clang-format on

// Without its own files the program says so once for each and starts anyway,
// instead of sending the user round the path dialogs.
void TestStartupSequence::missingProgramFiles()
{
    QFETCH(QStringList, missing);
    QFETCH(QStringList, titles);

    writeOptions(validOptions());
    for (const QString &name : missing)
        QVERIFY(QFile::remove(m_program + name));
    // More files to scan, so that a message per file would show.
    QVERIFY(writeTestFile(m_game + native("System/Engine.int"), "[Public]\r\n"));
    QVERIFY(writeTestFile(m_game + native("System/Other.int"), "[Public]\r\n"));

    Main();

    QStringList shown;
    for (const Message &message : m_prompt->messages())
        shown << message.title;
    QCOMPARE(shown, titles);
    if (missing.contains("pattern.ini")) {
        QCOMPARE(m_prompt->messages().first().text,
            "The skin pattern file could not be read:\r\n" + m_program
                + "pattern.ini\r\nFile not found\r\n\r\nThe scan goes on without skin patterns.");
    }
    QCOMPARE(m_user->log.filter("report:").size(), 1);
    QVERIFY(m_errors->errors.isEmpty());
    verifyEditorPrepared();
}

void TestStartupSequence::pathDialogsOverSplash()
{
    Main();

    const QRect splash = m_user->splashPlace;
    QVERIFY(!splash.isEmpty());
    QCOMPARE(m_user->messageAt.value("dlgCorrectUTPath"),
        QString("Locate Unreal Tournament & Configuration Directory..."));
    QCOMPARE(m_user->messageAt.value("dlgChangeConfigPath"),
        QString("Locate Unreal Tournament & Configuration Directory..."));
    QCOMPARE(m_user->messageAt.value("report"), QString("Analyzing Voice files..."));
    const int lift = PathDialogLift(theForm<frmSplash>());
    QVERIFY(lift > 30 && lift < 60); // a little less than half an inch
    for (const QString name : { "dlgCorrectUTPath", "dlgChangeConfigPath" }) {
        const QRect dialog = m_user->placeOf.value(name);
        QVERIFY2(!dialog.isEmpty(), qPrintable(name));
        QCOMPARE(dialog.left(), splash.left() + (splash.width() - dialog.width()) / 2);
        QCOMPARE(dialog.top(), splash.top() + (splash.height() - dialog.height()) / 2 - lift);
    }
    QCOMPARE(m_user->captionOf.value("dlgCorrectUTPath"),
        QString("Locate Unreal Tournament Directory...|"));
    QCOMPARE(m_user->captionOf.value("dlgChangeConfigPath"),
        QString("Locate Configuration Directory...|"));
    // A later use, as from the options dialog, shows the dialogs' own texts.
    QCOMPARE(theForm<dlgCorrectUTPath>().windowTitle(), QString("Is this your correct UT Path?"));
    QCOMPARE(theForm<dlgCorrectUTPath>().lblMessage->text(),
        QString("Is this the correct Unreal Tournament path to use?"));
    QCOMPARE(theForm<dlgChangeConfigPath>().windowTitle(),
        QString("Is this your correct Configuration path?"));
    QCOMPARE(theForm<dlgChangeConfigPath>().lblMessage->text(),
        QString("Is the path below where you want your configurations saved?"));
}

// Without a game folder the program cannot start: the user who will not
// name one leaves it by closing the dialog, after a question.
void TestStartupSequence::quitWithoutGameFolder()
{
    m_user->gameDir = "<Escape>";
    m_prompt->answerNext(MessageAnswer::No);
    m_prompt->answerNext(MessageAnswer::Yes);
    Main();
    m_user->takeMessages();

    QCOMPARE(m_user->log,
        QStringList({ "dlg:dlgFirstRun", "dlg:dlgCorrectUTPath", "msg:Quit Quorvane?",
            "dlg:dlgCorrectUTPath", "msg:Quit Quorvane?" }));
    QCOMPARE(m_prompt->transcript().last(),
        "Quit Quorvane?|Quorvane cannot start without the game folder. Quit Quorvane?");
    const QWidgetList windows = QApplication::topLevelWidgets();
    QVERIFY(std::none_of(windows.cbegin(), windows.cend(),
        [](const QWidget *window) { return window->isVisible(); }));
    QVERIFY(!isFormLoaded<frmSplash>() && !isFormLoaded<frmBots>());
    QVERIFY(m_errors->errors.isEmpty());
}

void TestStartupSequence::restartBuildsAFreshEditor()
{
    writeOptions(validOptions("1"));
    Main();
    QPointer<frmBots> first = &theForm<frmBots>();
    QVERIFY(first->isVisible());
    Roster().BotNames[0] = "Edited";

    // The options dialog changed the game directory and runs the start-up again.
    const QString otherGame = native(m_dir.path() + "/other game/");
    QVERIFY(writeTestFile(otherGame + native("System/user.ini"), "[URL]\r\n"));
    writeOptions(optionsFile("1", "0", m_configs, otherGame));
    RestartRequested() = true;
    Main();

    QVERIFY(!first);
    QVERIFY(!RestartRequested());
    QCOMPARE(AppOptions().UTPath, otherGame);
    QVERIFY(theForm<frmBots>().isVisible());
    QCOMPARE(items(theForm<frmBots>().cmbClass), QStringList { "(NONE)" });
    verifyEditorPrepared();
    QCOMPARE(m_user->log, QStringList({ "report:LostSkins.int", "report:" }));
}

void TestStartupSequence::gameWithoutContent()
{
    QVERIFY(QFile::remove(m_game + native("System/Models.int")));
    QVERIFY(QFile::remove(m_game + native("System/LostSkins.int")));
    writeOptions(validOptions());
    Main();
    QCOMPARE(m_user->log, QStringList { "report:" });
    QCOMPARE(items(theForm<frmBots>().cmbClass), QStringList { "(NONE)" });
    verifyEditorPrepared();
}

// The bundled demo game has something in every list and in the report.
void TestStartupSequence::demoGame()
{
    const QString demo = native(QStringLiteral(QUORVANE_SOURCE_DIR) + "/demo/UnrealTournament/");
    writeOptions(optionsFile("0", "0", m_configs, demo));
    Main();

    QCOMPARE(m_user->log, QStringList { "report:GlimmerSkins.int" });
    const frmBots &bots = theForm<frmBots>();
    const QStringList classes = items(bots.cmbClass);
    for (const char *model :
        { "Male Commando", "Female Soldier", "Vektra Sentinel", "Ironhusk Brute" })
        QVERIFY2(classes.contains(model), model);
    QVERIFY(m_prompt->messages().isEmpty());
    QVERIFY(m_errors->errors.isEmpty());
}

QTEST_MAIN(TestStartupSequence)
#include "test_startupsequence.moc"
