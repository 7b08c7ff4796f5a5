#include "formtesting.h"

#include "configfiles/fileops.h"
#include "configfiles/forms/dlgChangePath.h"
#include "configfiles/forms/dlgDescr.h"
#include "configfiles/forms/dlgError.h"
#include "roster/botroster.h"
#include "startup/forms/dlgChangeConfigPath.h"
#include "startup/forms/dlgCorrectUTPath.h"
#include "startup/forms/frmSplash.h"

#include <QAccessible>
#include <QPlainTextEdit>

class TestStartupForms : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(m_dir.isValid());
        // A home folder without the game, so nothing is proposed.
        QVERIFY(QDir(m_dir.path()).mkpath("home"));
        qputenv("HOME", QFile::encodeName(m_dir.path() + "/home"));
        setProgramDir(m_dir.path());
        QVERIFY(QDir(m_dir.path()).mkpath("a/b"));
        QVERIFY(writeTestFile(m_dir.filePath("kept/System/User.ini"), "[URL]\r\n"));
    }

    void init()
    {
        m_prompt = std::make_unique<ScriptedPrompt>();
        AppOptions() = Options();
    }

    void cleanup()
    {
        m_prompt.reset();
        unloadForm<dlgChangePath>();
    }

    // clang-format off
    void windows_data()
    {
        QTest::addColumn<MakeWindow>("make");
        QTest::addColumn<QStringList>("shown"); // "control=text"; no control for the caption
        QTest::addColumn<bool>("closable");     // by the window system too, else only through its buttons

        QTest::newRow("config path") << MakeWindow([] { return new dlgChangeConfigPath; }) << QStringList { "lblPath=&Path:" } << false;
        QTest::newRow("splash") << MakeWindow([] { return new frmSplash; }) << QStringList { "=", "lblVersion=Version 0.1.0 Beta", "lblMessage=" } << false;
        QTest::newRow("error") << MakeWindow([] { return new dlgError; }) << QStringList {} << false;
        QTest::newRow("description") << MakeWindow([] { return new dlgDescr; }) << QStringList {} << false;
        QTest::newRow("folder chooser, closing like Cancel") << MakeWindow([] { return new dlgChangePath; }) << QStringList { "=Change Path...", "cmdCreate=Cancel" } << true;
    }
    // clang-format on

    void windows()
    {
        QFETCH(MakeWindow, make);
        QFETCH(QStringList, shown);
        QFETCH(bool, closable);

        std::unique_ptr<QWidget> window(make());
        for (const QString &entry : shown) {
            const QString name = entry.section('=', 0, 0);
            const QObject *control
                = name.isEmpty() ? window.get() : window->findChild<QWidget *>(name);
            QVERIFY2(control, qPrintable(name));
            QCOMPARE(control->property(name.isEmpty() ? "windowTitle" : "text").toString(),
                entry.section('=', 1));
        }
        window->setAttribute(Qt::WA_DeleteOnClose, false);
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        QCOMPARE(window->windowFlags().testFlag(Qt::WindowCloseButtonHint), closable);
        QCOMPARE(spontaneous(window.get(), QCloseEvent()), closable);
        if (!closable) {
            QTest::keyClick(window.get(), Qt::Key_Escape);
            QVERIFY(window->isVisible());
            QVERIFY(window->close()); // the program itself still can
        }
    }

    // clang-format off
    void gameDialog_data()
    {
        QTest::addColumn<QString>("typed");   // "folder|file,..." made in the temporary directory; "" none
        QTest::addColumn<QString>("key");     // "OK", "Escape" or "close", the title bar's
        QTest::addColumn<MessageAnswer>("answer"); // to the question, when it comes
        QTest::addColumn<QString>("outcome"); // "kept": the options already name a game folder

        QTest::newRow("nothing typed") << "" << "OK" << MessageAnswer::No << "refused";
        QTest::newRow("folder without user.ini") << "empty|Core.int" << "OK" << MessageAnswer::No << "refused";
        QTest::newRow("game folder, other case") << "game|system/User.ini" << "OK" << MessageAnswer::No << "accepted";
        QTest::newRow("no game folder, Escape, No") << "" << "Escape" << MessageAnswer::No << "asked";
        QTest::newRow("no game folder, title bar, Yes") << "" << "close" << MessageAnswer::Yes << "quit";
        QTest::newRow("game folder set: it is kept") << "" << "Escape" << MessageAnswer::Yes << "kept";
    }
    // clang-format on

    // Only a game folder is taken; without one the program cannot go on, so
    // closing the dialog asks whether to quit rather than trap the user.
    void gameDialog()
    {
        QFETCH(QString, typed);
        QFETCH(QString, key);
        QFETCH(MessageAnswer, answer);
        QFETCH(QString, outcome);

        const QString folder = typed.section('|', 0, 0);
        const QString path = folder.isEmpty() ? QString() : native(m_dir.filePath(folder) + "/");
        for (const QString &file : typed.section('|', 1).split(',', Qt::SkipEmptyParts))
            QVERIFY(writeTestFile(path + file, "[URL]\r\n"));
        dlgCorrectUTPath dialog;
        QCOMPARE(dialog.ChosenPath, QString()); // the home folder holds no game
        QVERIFY(dialog.windowFlags().testFlag(Qt::WindowCloseButtonHint));
        const QString game = native(m_dir.filePath("kept") + "/");
        if (outcome == "kept")
            AppOptions().UTPath = game;
        // Typed as a paste often brings it, with a blank at the end.
        QTest::keyClicks(dialog.txtUTPath, path + " ");
        QCOMPARE(dialog.ChosenPath, path + " ");
        m_prompt->answerNext(answer);
        bool open = false;
        whenShown([&] {
            if (key == "OK")
                dialog.OKButton->click();
            else if (key == "Escape")
                QTest::keyClick(&dialog, Qt::Key_Escape);
            else
                spontaneous(&dialog, QCloseEvent());
            open = dialog.isVisible();
            if (open)
                dialog.done(QDialog::Rejected); // reject() would ask again
        });
        dialog.exec();

        QCOMPARE(open, outcome == "refused" || outcome == "asked");
        QCOMPARE(dialog.QuitChosen, outcome == "quit");
        QCOMPARE(AppOptions().UTPath, outcome == "accepted" ? path : outcome == "kept" ? game : "");
        if (outcome == "kept")
            QCOMPARE(dialog.ChosenPath, game);
        const QString question
            = "Quit Quorvane?|Quorvane cannot start without the game folder. Quit Quorvane?";
        const QString refusal
            = "Invalid UT Path|" + path + " is not a valid UT path.\r\n\r\nPlease choose again.";
        QCOMPARE(m_prompt->transcript(),
            outcome == "refused"                          ? QStringList { refusal }
                : outcome == "asked" || outcome == "quit" ? QStringList { question }
                                                          : QStringList());
#ifdef Q_OS_LINUX
        QCOMPARE(dialog.lblGameFolder->text(),
            "A game folder holds the System folder and the game's User.ini: System/User.ini, "
            "System64/User.ini or ~/.utpg/System/User.ini.");
#endif
    }

    void configFolderCreatedOnOk_data()
    {
        QTest::addColumn<QString>("folder");
        QTest::addColumn<bool>("accepted");

        QTest::newRow("new folder") << "configs/" << true;
        QTest::newRow("existing folder") << "" << true;
        QTest::newRow("no trailing separator") << "plain" << true;
        QTest::newRow("parent missing") << "missing/configs/" << false;
    }

    // Only the last level is made: a missing parent is more likely a typing
    // mistake than a wish for a new tree of folders.
    void configFolderCreatedOnOk()
    {
        QFETCH(QString, folder);
        QFETCH(bool, accepted);

        QDir().mkpath(m_dir.path() + "/cfg");
        const QString path = native(m_dir.path() + "/cfg/" + folder);
        AppOptions().ConfigPath = path;
        dlgChangeConfigPath dialog;
        QCOMPARE(dialog.txtConfigPath->text(), path);
        bool open = false;
        whenShown([&] {
            dialog.OKButton->click();
            open = dialog.isVisible();
            dialog.done(QDialog::Rejected);
        });
        dialog.exec();

        QCOMPARE(open, !accepted);
        QCOMPARE(QFileInfo(path).isDir(), accepted);
        QCOMPARE(AppOptions().ConfigPath, accepted ? AddBackslash(path) : path);
        QCOMPARE(m_prompt->transcript(),
            accepted ? QStringList()
                     : QStringList { "Configuration Path|" + path
                         + " could not be created.\r\n\r\nMake sure the folder "
                           "above it exists and can be written to, or choose again." });
    }

    // clang-format off
    void browsing_data()
    {
        QTest::addColumn<bool>("game");        // the game dialog, else the configuration one
        QTest::addColumn<QString>("shown");    // inside the temporary directory, or "<root>"
        QTest::addColumn<QString>("button");   // pressed in the folder chooser
        QTest::addColumn<QString>("expected"); // shown afterwards

        QTest::newRow("game: chosen") << true << "a/b" << "OK" << "a/b/";
        QTest::newRow("game: cancelled") << true << "a/b" << "Cancel" << "a/b";
        QTest::newRow("game: drive root") << true << "<root>" << "OK" << "<root>";
        QTest::newRow("config: opens at the nearest folder that exists") << false << "a/new/x" << "OK" << "a/";
    }
    // clang-format on

    void browsing()
    {
        QFETCH(bool, game);
        QFETCH(QString, shown);
        QFETCH(QString, button);
        QFETCH(QString, expected);

        const auto where = [this](const QString &folder) {
            return native(folder == "<root>" ? QDir::rootPath() : m_dir.path() + "/" + folder);
        };
        std::unique_ptr<PathDialog> dialog(
            game ? static_cast<PathDialog *>(new dlgCorrectUTPath) : new dlgChangeConfigPath);
        dialog->showPath(where(shown));
        dlgChangePath &chooser = theForm<dlgChangePath>();
        // An OK in an earlier showing must not leak into this one.
        whenShown([&] { chooser.OKButton->click(); });
        chooser.exec();
        QString caption;
        bool canCreate = false;
        whenShown([&] {
            caption = chooser.windowTitle();
            canCreate = chooser.cmdCreateFolder->isVisible();
            chooser.findChild<QPushButton *>(button + "Button")->click();
        });
        dialog->cmdBrowse->click();

        QCOMPARE(caption, game ? "Choose a New UT Path" : "Choose Configuration Directory...");
        QCOMPARE(canCreate, !game);
        QCOMPARE(dialog->ChosenPath, where(expected));
        auto *field = dialog->findChild<QLineEdit *>();
        QCOMPARE(field->text(), dialog->ChosenPath);
        QCOMPARE(dialog->focusWidget(), dialog->OKButton);
        // The field is named by its label, for screen readers.
        QCOMPARE(QAccessible::queryAccessibleInterface(field)->text(QAccessible::Name), "Path:");
    }

    // clang-format off
    void folderCreation_data()
    {
        QTest::addColumn<QStringList>("typing"); // texts typed one after the other
        QTest::addColumn<QString>("buttonCaption");
        QTest::addColumn<bool>("escape");        // pressed instead of the button
        QTest::addColumn<QString>("created");
        QTest::addColumn<QString>("problem");

        QTest::newRow("new folder") << QStringList{"New"} << "Create" << false << "New" << "";
        QTest::newRow("typed and deleted") << QStringList{"x", ""} << "Cancel" << false << "" << "";
        QTest::newRow("Escape closes only the row") << QStringList{"x"} << "Create" << true << "" << "";
        QTest::newRow("existing name") << QStringList{"taken"} << "Create" << false << "" << "A file or folder of that name already exists.";
        QTest::newRow("name with a separator") << QStringList{"a/b"} << "Create" << false << "" << "A folder name cannot contain \\ or / or be . or ..";
    }
    // clang-format on

    void folderCreation()
    {
        QFETCH(QStringList, typing);
        QFETCH(QString, buttonCaption);
        QFETCH(bool, escape);
        QFETCH(QString, created);
        QFETCH(QString, problem);

        QTemporaryDir parent;
        QDir(parent.path()).mkdir("taken");
        dlgChangePath chooser;
        chooser.setPath(parent.path());
        chooser.show();
        const int treeHeight = chooser.dirOne->height();
        chooser.cmdCreateFolder->click();
        QVERIFY(chooser.txtNewFolder->isVisible() && !chooser.OKButton->isEnabled());
        // The row takes no room from the tree, so the parent stays in view.
        QCOMPARE(chooser.dirOne->height(), treeHeight);
        for (const QString &text : typing)
            chooser.txtNewFolder->setText(text);
        QCOMPARE(chooser.cmdCreate->text(), buttonCaption);
        if (escape)
            QTest::keyClick(chooser.txtNewFolder, Qt::Key_Escape);
        else
            chooser.cmdCreate->click();

        // A refused name keeps the row open for a correction.
        const bool refused = !problem.isEmpty();
        QVERIFY(chooser.isVisible());
        QCOMPARE(chooser.txtNewFolder->isVisible(), refused);
        QCOMPARE(chooser.OKButton->isEnabled(), !refused);
        QCOMPARE(QDir(parent.path()).entryList(QDir::Dirs | QDir::NoDotAndDotDot).join(','),
            created.isEmpty() ? "taken" : created + ",taken");
        const QString shownPath = native(parent.path() + "/") + typing.last();
        QCOMPARE(m_prompt->transcript().join(""),
            refused ? "Create Folder|" + shownPath + " could not be created.\r\n\r\n" + problem
                    : "");
        if (!refused) {
            chooser.OKButton->click();
            QCOMPARE(chooser.SelectedFolder,
                native(parent.path() + "/" + created + (created.isEmpty() ? "" : "/")));
        }

        // A created folder's name is gone, so a second Create cannot nest a
        // folder of the same name in it. Restored from the task bar, the
        // dialog keeps what is typed; the next showing starts with an empty
        // name and the row closed.
        spontaneous(&chooser, QShowEvent());
        QCOMPARE(chooser.txtNewFolder->text(), created.isEmpty() ? typing.last() : QString());
        chooser.hide();
        chooser.show();
        QCOMPARE(chooser.txtNewFolder->text(), QString());
        QCOMPARE(chooser.cmdCreate->text(), "Cancel");
        QVERIFY(!chooser.txtNewFolder->isVisible() && chooser.OKButton->isEnabled());
    }

    // clang-format off
    void errorReport_data()
    {
        QTest::addColumn<int>("number");
        QTest::addColumn<QString>("detail");
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("description"); // shown, then the report's

        QTest::newRow("file not found") << 53 << "C:\\UT\\pattern.ini" << "Unknown Error has occured in Sub Main" << "File not found: C:\\UT\\pattern.ini|File not found";
        QTest::newRow("empty message") << 13 << "" << "" << "Type mismatch|Type mismatch";
    }
    // clang-format on

    void errorReport()
    {
        QFETCH(int, number);
        QFETCH(QString, detail);
        QFETCH(QString, message);
        QFETCH(QString, description);

        DialogErrorSink sink;
        installErrorSink(&sink);
        const auto unload = qScopeGuard([] {
            installErrorSink(nullptr);
            unloadForm<dlgError>();
        });
        dlgError &dialog = theForm<dlgError>();
        QString caption;
        whenShown([&] {
            caption = dialog.windowTitle();
            dialog.OKButton->click();
        });
        ProcessError(RunError(number, detail), message);

        const QString report = dialog.lblErrFileLoc->text();
        QVERIFY(report.startsWith(ProgramDir() + "ErrNum" + QString::number(number) + "_"));
        QCOMPARE(caption, "Error Number: " + QString::number(number));
        QCOMPARE(dialog.lblErrDescr->text(), description.section('|', 0, 0));
        QCOMPARE(dialog.lblCustomMsg->text(), message);
        QCOMPARE(dialog.Label1->text(),
            "Please e-mail the following file to "
            "support@quorvane.example with subject \"Quorvane Error\":");
        QCOMPARE(readTestFile(report),
            crlf({ "Error Message: " + message, "Error Number: " + QString::number(number),
                "Description: " + description.section('|', 1) }));
        QVERIFY(!dialog.isVisible());
    }

    // clang-format off
    void descriptionEditor_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("expected");

        QTest::newRow("apply") << "cmdSave" << "Fast bots only";
        QTest::newRow("cancel") << "CancelButton" << "Team practice";
    }
    // clang-format on

    // Restored from the task bar it keeps what is typed; the next showing
    // starts from the roster again.
    void descriptionEditor()
    {
        QFETCH(QString, button);
        QFETCH(QString, expected);

        Roster().Description = "Team practice";
        dlgDescr dialog;
        dialog.show();
        QCOMPARE(dialog.txtDescr->toPlainText(), "Team practice");
        dialog.txtDescr->setPlainText("Fast bots only");
        spontaneous(&dialog, QShowEvent());
        QCOMPARE(dialog.txtDescr->toPlainText(), "Fast bots only");
        dialog.findChild<QPushButton *>(button)->click();
        QVERIFY(!dialog.isVisible());
        QCOMPARE(Roster().Description, expected);
        Roster().Description = "Duel";
        dialog.show();
        QCOMPARE(dialog.txtDescr->toPlainText(), "Duel");
    }

    void splashBandScrolls_data()
    {
        QTest::addColumn<int>("incrementor");
        QTest::addColumn<int>("direction");
        QTest::addColumn<int>("calls");
        QTest::addColumn<int>("rotation"); // to the right

        QTest::newRow("splash band, 3 steps") << 2 << 1 << 3 << 6;
        QTest::newRow("wraps around") << 100 << 1 << 4 << 400 - 347;
        QTest::newRow("left with 0") << 5 << 0 << 2 << -10;
        QTest::newRow("left with 2") << 5 << 2 << 1 << -5;
        QTest::newRow("no increment") << 0 << 1 << 3 << 0;
    }

    // One picture pixel per box pixel, so a step moves the band by exactly
    // the Incrementor.
    void splashBandScrolls()
    {
        QFETCH(int, incrementor);
        QFETCH(int, direction);
        QFETCH(int, calls);
        QFETCH(int, rotation);

        const QImage start = GradientPicture();
        QCOMPARE(start.size(), QSize(347, 15));
        QCOMPARE(QList<QRgb>({ start.pixel(0, 7), start.pixel(173, 7), start.pixel(346, 7) }),
            QList<QRgb>({ qRgb(0, 0, 255), qRgb(254, 254, 255), qRgb(0, 0, 255) }));
        const auto unload = qScopeGuard([] { unloadForm<frmSplash>(); });
        frmSplash &splash = theForm<frmSplash>();
        splash.show();
        QVERIFY(QTest::qWaitForWindowExposed(&splash));
        QCOMPARE(splash.pbGradient->size(), start.size());
        QVERIFY(!splash.pbGradient->hasScaledContents());
        QCOMPARE(splash.GradientBar.Incrementor(), 2);
        splash.GradientBar.setIncrementor(qint16(incrementor));
        splash.GradientBar.setPicDir(direction);
        for (int i = 0; i < calls; ++i)
            splash.advance();
        QCoreApplication::processEvents(); // where the band is drawn
        const QImage shown
            = splash.pbGradient->pixmap().toImage().convertToFormat(QImage::Format_RGB32);
        QCOMPARE(shown.size(), start.size());
        for (int x = 0; x < start.width(); ++x) {
            const int from = ((x - rotation) % start.width() + start.width()) % start.width();
            for (int y = 0; y < start.height(); ++y)
                QCOMPARE(shown.pixel(x, y), start.pixel(from, y));
        }
    }

private:
    QTemporaryDir m_dir;
    std::unique_ptr<ScriptedPrompt> m_prompt;
};

QTEST_MAIN(TestStartupForms)
#include "test_startupforms.moc"
