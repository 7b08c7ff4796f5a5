#include "formtesting.h"
#include "recordingprogress.h"

#include "configfiles/forms/dlgError.h"
#include "configfiles/forms/windowtools.h"
#include "roster/botroster.h"
#include "roster/forms/frmBots.h"
#include "startup/forms/dlgChangeConfigPath.h"
#include "startup/forms/dlgCorrectUTPath.h"
#include "startup/forms/dlgFirstRun.h"
#include "startup/forms/frmSplash.h"
#include "startup/forms/startupsequence.h"

#include <QAction>

#include <algorithm>

namespace {

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

const QString finished = "Finished...Click the Close button.";

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
        for (; m_messagesSeen < m_prompt.messages().size(); ++m_messagesSeen)
            log << "msg:" + m_prompt.messages().at(m_messagesSeen).title;
        if (!event.isEmpty())
            log << event;
    }

    QString gameDir; // "<Escape>" closes the game dialog
    QString configDir;
    QStringList log;
    // Each time a dialog opened, "<splash message>|<caption>|<question>|<x,y>"
    // with its distance from the place a little above the splash's centre.
    QHash<QString, QString> seenAs;

private:
    void look()
    {
        auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (!dialog || !dialog->isVisible())
            return;
        const QString name = dialog->objectName();
        note("dlg:" + name);
        auto *pathDialog = qobject_cast<PathDialog *>(dialog);
        if (pathDialog && isFormLoaded<frmSplash>()) {
            const frmSplash &splash = theForm<frmSplash>();
            const QRect place = splash.frameGeometry();
            const QPoint centred(place.left() + (place.width() - dialog->width()) / 2,
                place.top() + (place.height() - dialog->height()) / 2 - PathDialogLift(splash));
            const QPoint off = dialog->pos() - centred;
            seenAs[name] = QStringList(
                { splash.message(), dialog->windowTitle(), pathDialog->lblMessage->text(),
                    QString("%1,%2").arg(off.x()).arg(off.y()) })
                               .join('|');
        }
        if (name == "dlgFirstRun")
            static_cast<dlgFirstRun *>(dialog)->cmdContinue->click();
        else if (name == "dlgError")
            static_cast<dlgError *>(dialog)->OKButton->click();
        else if (!pathDialog)
            dialog->reject();
        else if (name == "dlgCorrectUTPath" && gameDir == "<Escape>")
            QTest::keyClick(dialog, Qt::Key_Escape);
        else {
            pathDialog->showPath(name == "dlgCorrectUTPath" ? gameDir : configDir);
            pathDialog->OKButton->click();
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
    void initTestCase()
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
                    m_user->seenAs["report"] = theForm<frmSplash>().message();
                if (m_reportAction)
                    m_reportAction();
            };
            forms.scan.showPatternEditor = [this] { m_user->note("patterns"); };
            forms.showNewBoss = [this](QWidget *owner) {
                m_user->note(
                    owner == formSlot<frmSplash>().data() ? "boss" : "boss without splash");
                if (!m_bossErrors.isEmpty())
                    throw RunError(m_bossErrors.takeFirst());
            };
            return forms;
        });
    }

    void init()
    {
        const QString root = native(m_dir.path() + "/" + QTest::currentDataTag() + "/"
            + QTest::currentTestFunction() + "/");
        m_program = root + native("program/");
        m_game = root + native("game/");
        m_configs = root + native("configs/");
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
            crlf({ "[Public]",
                "Object=(Name=LostSkins.lost1,Class=Texture,Description=\"Lost\")" })));
        // More files to scan, so that a message per file would show.
        QVERIFY(writeTestFile(m_game + native("System/Engine.int"), "[Public]\r\n"));
        QVERIFY(writeTestFile(m_game + native("System/Other.int"), "[Public]\r\n"));

        AppOptions() = Options();
        Roster() = BotRoster();
        RestartRequested() = false;
        m_prompt = std::make_unique<ScriptedPrompt>();
        m_errors = std::make_unique<RecordingErrorSink>();
        m_user = std::make_unique<StartupUser>(*m_prompt);
        m_user->gameDir = m_game;
        m_user->configDir = m_configs;
        m_bossErrors.clear();
        m_reportAction = nullptr;
    }

    void cleanup()
    {
        m_user.reset();
        m_errors.reset();
        m_prompt.reset();
        unloadForm<frmBots>();
        unloadForm<frmSplash>();
        unloadForm<dlgCorrectUTPath>();
        unloadForm<dlgChangeConfigPath>();
        unloadForm<dlgFirstRun>();
        unloadForm<dlgError>();
        QDir(QDir::homePath() + "/.utpg").removeRecursively();
    }

    // clang-format off
    void startup_data()
    {
        QTest::addColumn<QStringList>("setup"); // what differs from a fresh install, see start()
        QTest::addColumn<QStringList>("expected"); // what the user met, errors reported last
        QTest::addColumn<QString>("end");          // "finished", "stopped" or "ended"

        const QString report = "report:LostSkins.int";
        const QStringList firstRun = { "dlg:dlgFirstRun", "dlg:dlgCorrectUTPath", "msg:Remember!" };
        const QStringList askPaths = { "dlg:dlgCorrectUTPath", "dlg:dlgChangeConfigPath", report };
        const QStringList toBoss = firstRun + QStringList { "boss" };
        const QStringList rest = { "dlg:dlgChangeConfigPath", report };
        const QString quit = "msg:Quit Quorvane?";

        QTest::newRow("fresh install") << QStringList {} << firstRun + rest << "finished";
        QTest::newRow("fresh install, boss package") << QStringList { "boss" } << toBoss + rest << "finished";
        QTest::newRow("first-run flag") << QStringList { "options=first run" } << firstRun + rest << "finished";
        QTest::newRow("game folder gone") << QStringList { "options=game gone", "boss" } << askPaths << "finished";
        QTest::newRow("normal start") << QStringList { "options=valid", "boss" } << QStringList { report } << "finished";
        QTest::newRow("short options file") << QStringList { "options=short" } << askPaths << "finished";
        QTest::newRow("64-bit game") << QStringList { "options=valid", "userini=System64/User.ini" } << QStringList { report } << "finished";
#ifdef Q_OS_LINUX
        QTest::newRow("user.ini in ~/.utpg") << QStringList { "options=valid", "userini=~/.utpg/System/User.ini" } << QStringList { report } << "finished";
#endif
        // Without its own files the program says so once for each and starts
        // anyway, instead of sending the user round the path dialogs.
        QTest::newRow("no pattern.ini") << QStringList { "options=valid", "missing=pattern.ini" } << QStringList { "msg:pattern.ini", report } << "finished";
        QTest::newRow("no int.ini") << QStringList { "options=valid", "missing=int.ini" } << QStringList { "msg:int.ini", report } << "finished";
        QTest::newRow("neither") << QStringList { "options=valid", "missing=pattern.ini", "missing=int.ini" } << QStringList { "msg:pattern.ini", "msg:int.ini", report } << "finished";
        // What the boss dialog throws decides how the start-up goes on.
        QTest::newRow("52 asks for the paths again") << QStringList { "boss", "throw=52" } << toBoss + firstRun.mid(1) + QStringList { "boss" } + rest << "finished";
        QTest::newRow("52 twice ends") << QStringList { "boss", "throw=52", "throw=52" } << toBoss + firstRun.mid(1) + QStringList { "boss", "error:52" } << "ended";
        QTest::newRow("55 goes on") << QStringList { "boss", "throw=55" } << toBoss + rest << "finished";
        QTest::newRow("62 ends quietly") << QStringList { "boss", "throw=62" } << toBoss << "stopped";
        QTest::newRow("53 is reported") << QStringList { "boss", "throw=53" } << toBoss + QStringList { "error:53" } << "ended";
        QTest::newRow("line 2 not a number: first run") << QStringList { "boss", "options=line 2 yes" } << toBoss + rest + QStringList { "error:13" } << "finished";
        QTest::newRow("line 2 out of range: first run") << QStringList { "boss", "options=line 2 5" } << toBoss + rest + QStringList { "error:380" } << "finished";
        // Without a game folder the program cannot start: the user who will
        // not name one leaves it by closing the dialog, after a question.
        QTest::newRow("quit without a game folder") << QStringList { "escape" } << QStringList { "dlg:dlgFirstRun", "dlg:dlgCorrectUTPath", quit, "dlg:dlgCorrectUTPath", quit } << "ended";
    }
    // clang-format on

    // Setup words: "options=valid|first run|game gone|short|line 2 <value>"
    // (none: no options.ini), "boss" (the game has the boss package),
    // "userini=<where>", "missing=<program file>", "throw=<error>" (the boss
    // dialog's, one per showing), "escape" (the game dialog is escaped,
    // and the question answered No, then Yes).
    void startup()
    {
        QFETCH(QStringList, setup);
        QFETCH(QStringList, expected);
        QFETCH(QString, end);

        const auto value = [&](const QString &key) {
            for (const QString &word : std::as_const(setup))
                if (word.startsWith(key + "="))
                    return word.section('=', 1);
            return QString();
        };
        const QString options = value("options");
        if (options == "valid")
            writeOptions(validOptions());
        else if (options == "first run")
            writeOptions(
                optionsFile("0", "1", native("/elsewhere/configs/"), native("/elsewhere/game/")));
        else if (options == "game gone")
            writeOptions(optionsFile("0", "0", m_configs, native(m_dir.path() + "/gone/")));
        else if (options == "short")
            writeOptions(crlf({ "[SplashScreen]", "0", "" }));
        else if (options.startsWith("line 2 "))
            writeOptions(optionsFile(options.mid(7), "0", m_configs, m_game));
        if (setup.contains("boss"))
            QVERIFY(
                writeTestFile(m_game + native("System/SkeletalCharsFix313.int"), "[Public]\r\n"));
        if (const QString userIni = value("userini"); !userIni.isEmpty()) {
            QVERIFY(QFile::remove(m_game + native("System/User.ini")));
            QVERIFY(writeTestFile(
                userIni.startsWith("~/") ? QDir::homePath() + userIni.mid(1) : m_game + userIni,
                "[URL]\r\n"));
        }
        for (const QString &word : setup) {
            if (word.startsWith("missing="))
                QVERIFY(QFile::remove(m_program + word.section('=', 1)));
            else if (word.startsWith("throw="))
                m_bossErrors << word.section('=', 1).toInt();
        }
        if (setup.contains("escape")) {
            m_user->gameDir = "<Escape>";
            m_prompt->answerNext(MessageAnswer::No);
            m_prompt->answerNext(MessageAnswer::Yes);
        }

        Main();
        m_user->note(QString());
        for (const RecordingErrorSink::Entry &error : std::as_const(m_errors->errors)) {
            m_user->log << "error:" + QString::number(error.number);
            QCOMPARE(error.message, "Unknown Error has occured in Sub Main");
        }

        QCOMPARE(m_user->log, expected);
        // clang-format off
        const QHash<QString, QString> texts {
            { "Remember!", "To change the path later simply go to\r\nthe 'File' menu and choose Options.\nThen choose the Paths tab and\r\nthe UT Path radio button.\r\nFinally click the 'Change' button." },
            { "pattern.ini", "The skin pattern file could not be read:\r\n" + m_program + "pattern.ini\r\nFile not found\r\n\r\nThe scan goes on without skin patterns." },
            { "int.ini", "The list of game files to skip could not be read:\r\n" + m_program + "int.ini\r\nFile not found\r\n\r\nEvery .int file of the game will be scanned." },
            { "Quit Quorvane?", "Quorvane cannot start without the game folder. Quit Quorvane?" } };
        // clang-format on
        for (const Message &message : m_prompt->messages())
            QCOMPARE(message.text, texts.value(message.title));

        if (end == "ended") {
            // Nothing is left to go on with: the program ends.
            QVERIFY(!isFormLoaded<frmSplash>() && !isFormLoaded<frmBots>());
            const QWidgetList windows = QApplication::topLevelWidgets();
            QVERIFY(std::none_of(windows.cbegin(), windows.cend(),
                [](const QWidget *window) { return window->isVisible(); }));
            return;
        }
        // Ended or not, the splash can always be left.
        QVERIFY(theForm<frmSplash>().cmdClose->isEnabled());
        if (end == "stopped") {
            // Closing it then shows no half-built editor.
            theForm<frmSplash>().cmdClose->click();
            QVERIFY(!isFormLoaded<frmBots>() || !theForm<frmBots>().isVisible());
            return;
        }
        verifyEditorPrepared();
        QVERIFY(!theForm<frmBots>().isVisible());
        QCOMPARE(theForm<frmSplash>().message(), finished);
        QCOMPARE(AppOptions().UTPath, m_game);
        QCOMPARE(AppOptions().ConfigPath, m_configs);
        QCOMPARE(QFileInfo(m_configs).isDir(), expected.contains("dlg:dlgChangeConfigPath"));
        // Main never writes the options; the main window does when it
        // closes, which also repairs the file.
        QCOMPARE(QFileInfo::exists(m_program + "options.ini"), !options.isEmpty());
        theForm<frmSplash>().cmdClose->click();
        theForm<frmBots>().close();
        QCOMPARE(readTestFile(m_program + "options.ini"), optionsFile("0", "0", m_configs, m_game));
    }

    // clang-format off
    void handOver_data()
    {
        QTest::addColumn<QString>("autoClose");     // line 2 of options.ini
        QTest::addColumn<int>("tickDuringStartup"); // -1 leave the box, else its new state
        QTest::addColumn<int>("boxAtClose");        // -1: the splash closes itself, else waits for Close
        QTest::addColumn<bool>("enter");            // pressed instead of a click on Close
        QTest::addColumn<int>("stored");            // AutoCloseSplash afterwards

        QTest::newRow("auto-close") << "1" << -1 << -1 << false << 1;
        QTest::newRow("ticked while starting") << "0" << int(Qt::Checked) << -1 << false << 1;
        QTest::newRow("wait for Close, ticked then") << "0" << -1 << int(Qt::Checked) << false << 1;
        QTest::newRow("unticked while starting, Enter") << "1" << int(Qt::Unchecked) << int(Qt::Unchecked) << true << 0;
        QTest::newRow("half-ticked box waits and stays") << "2" << -1 << int(Qt::PartiallyChecked) << true << 2;
    }
    // clang-format on

    // The splash is the start-up's progress until it hands over to the main
    // window, itself or through Close.
    void handOver()
    {
        QFETCH(QString, autoClose);
        QFETCH(int, tickDuringStartup);
        QFETCH(int, boxAtClose);
        QFETCH(bool, enter);
        QFETCH(int, stored);

        writeOptions(validOptions(autoClose));
        QPointer<frmSplash> splash;
        m_reportAction = [&] {
            splash = &theForm<frmSplash>();
            QCOMPARE(&currentProgress(), static_cast<Progress *>(splash.data()));
            const Qt::CheckState fromFile[] = { Qt::Unchecked, Qt::Checked, Qt::PartiallyChecked };
            QCOMPARE(splash->chkAutoClose->checkState(), fromFile[autoClose.toInt()]);
            // Enter does nothing until Close can be pressed.
            QVERIFY(!splash->cmdClose->isEnabled());
            QTest::keyClick(splash->chkAutoClose, Qt::Key_Return);
            QVERIFY(splash && splash->isVisible());
            if (tickDuringStartup >= 0)
                splash->chkAutoClose->setCheckState(Qt::CheckState(tickDuringStartup));
        };
        Main();
        QVERIFY(splash);
        const Progress *splashProgress = splash.data();

        QCOMPARE(AppOptions().AutoCloseSplash, qint16(boxAtClose < 0 ? 1 : 0));
        QCOMPARE(theForm<frmBots>().isVisible(), boxAtClose < 0);
        QCOMPARE(splash->isVisible(), boxAtClose >= 0);
        if (boxAtClose >= 0) {
            QCOMPARE(splash->message(), finished);
            splash->chkAutoClose->setCheckState(Qt::CheckState(boxAtClose));
            // The main window shows before the splash goes, so that there is
            // always a window.
            QList<bool> splashShownAtHandOver;
            splash->showMainWindow = [&, show = splash->showMainWindow] {
                splashShownAtHandOver << splash->isVisible();
                show();
            };
            if (enter)
                QTest::keyClick(splash->chkAutoClose, Qt::Key_Return);
            else
                splash->cmdClose->click();
            QCOMPARE(splashShownAtHandOver, QList<bool> { true });
            QVERIFY(theForm<frmBots>().isVisible());
        }
        QCOMPARE(AppOptions().AutoCloseSplash, qint16(stored));
        QTRY_VERIFY(!splash);
        QVERIFY(&currentProgress() != splashProgress); // a splash gone no longer shows progress
        verifyEditorPrepared();
    }

    // The path dialogs sit a little above the splash's centre, captioned
    // for the start-up.
    void pathDialogsOverSplash()
    {
        Main();

        const int lift = PathDialogLift(theForm<frmSplash>());
        QVERIFY(lift > 30 && lift < 60); // a little less than half an inch
        const QString locate = "Locate Unreal Tournament & Configuration Directory...|";
        QCOMPARE(m_user->seenAs,
            (QHash<QString, QString> { { "report", "Analyzing Voice files..." },
                { "dlgCorrectUTPath", locate + "Locate Unreal Tournament Directory...||0,0" },
                { "dlgChangeConfigPath", locate + "Locate Configuration Directory...||0,0" } }));
    }

    // The options dialog changed the game folder and runs the start-up
    // again, here on a game with nothing to scan.
    void restartBuildsAFreshEditor()
    {
        writeOptions(validOptions("1"));
        Main();
        QPointer<frmBots> first = &theForm<frmBots>();
        QVERIFY(first->isVisible());
        Roster().BotNames[0] = "Edited";

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

    // The bundled demo game has something in every list and in the report.
    void demoGame()
    {
        const QString demo
            = native(QStringLiteral(QUORVANE_SOURCE_DIR) + "/demo/UnrealTournament/");
        writeOptions(optionsFile("0", "0", m_configs, demo));
        Main();

        QCOMPARE(m_user->log, QStringList { "report:GlimmerSkins.int" });
        const QStringList classes = items(theForm<frmBots>().cmbClass);
        for (const char *model :
            { "Male Commando", "Female Soldier", "Vektra Sentinel", "Ironhusk Brute" })
            QVERIFY2(classes.contains(model), model);
        QVERIFY(m_prompt->messages().isEmpty());
        QVERIFY(m_errors->errors.isEmpty());
    }

private:
    void writeOptions(const QByteArray &content)
    {
        QVERIFY(writeTestFile(m_program + "options.ini", content));
    }

    QByteArray validOptions(const QString &autoClose = "0") const
    {
        return optionsFile(autoClose, "0", m_configs, m_game);
    }

    // The editor as the start-up leaves it: a new list of defaults, nothing
    // to edit or save yet.
    void verifyEditorPrepared()
    {
        QVERIFY(isFormLoaded<frmBots>());
        const frmBots &bots = theForm<frmBots>();
        QStringList botItems;
        for (int slot = 0; slot < 32; ++slot)
            botItems << "Bot " + QString::number(slot);
        QCOMPARE(items(bots.cmbBot), botItems);
        QCOMPARE(bots.cmbBot->currentIndex(), 0);
        QCOMPARE(bots.cmbClass->currentIndex(), 0);
        QVERIFY(!bots.txtName->isEnabled() && !bots.cmbClass->isEnabled());
        QVERIFY(!bots.mnuFileSave->isEnabled() && !bots.mnuFileSaveAs->isEnabled());
        QCOMPARE(bots.chkJumpy->text(), QString());
        QVERIFY(bots.IsSaved());
        BotRoster defaults;
        SetDefaults(defaults);
        QVERIFY(Roster() == defaults);
    }

    QTemporaryDir m_dir;
    QString m_program;
    QString m_game;
    QString m_configs;
    std::unique_ptr<ScriptedPrompt> m_prompt;
    std::unique_ptr<RecordingErrorSink> m_errors;
    std::unique_ptr<StartupUser> m_user;
    QList<int> m_bossErrors; // thrown by the boss dialog, one per showing
    std::function<void()> m_reportAction;
};

QTEST_MAIN(TestStartupSequence)
#include "test_startupsequence.moc"
