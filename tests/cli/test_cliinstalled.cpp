#include "buildconfig.h"
#include "clirun.h"
#include "testfiles.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

// quorvane-cli copied into the layouts it is shipped in: where it keeps
// options.ini, and what it says its version is.
class TestCliInstalled : public QObject
{
    Q_OBJECT

private slots:
    void version()
    {
        const CliRun run = runCli({ "--version" });
        QCOMPARE(run.out, "quorvane-cli " QUORVANE_VERSION "\n");
        QCOMPARE(run.exitCode, 0);
    }

    void programDirectory_data()
    {
        QTest::addColumn<QString>("binFolder");
        QTest::addColumn<QString>("shippedFolder"); // relative to binFolder
        QTest::addColumn<bool>("programDirGiven"); // --program-dir chosen
        QTest::addColumn<QString>("programDir"); // relative to the test's directory

        const QString installedData = QUORVANE_DATA_FROM_EXECUTABLE;
        QTest::newRow("portable copy") << "portable"
                                       << "." << false << "portable";
        QTest::newRow("installed")
            << "usr/bin" << installedData << false << "home/.local/share/quorvane";
        QTest::newRow("installed, --program-dir") << "usr/bin" << installedData << true << "chosen";
    }

    void programDirectory()
    {
        QFETCH(QString, binFolder);
        QFETCH(QString, shippedFolder);
        QFETCH(bool, programDirGiven);
        QFETCH(QString, programDir);
        QTemporaryDir root;
        const QString program = root.filePath(binFolder + "/quorvane-cli");
        QVERIFY(QDir().mkpath(root.filePath(binFolder)) && QFile::copy(QUORVANE_CLI, program));
        for (const QString name : { "int.ini", "pattern.ini" })
            QVERIFY(
                writeTestFile(QDir(root.filePath(binFolder)).filePath(shippedFolder + '/' + name),
                    name.toUtf8() + " as shipped\r\n"));
        QStringList arguments { "options", "--write", "--auto-close", "1" };
        if (programDirGiven)
            arguments << "--program-dir" << root.filePath("chosen");
        QVERIFY(QDir().mkpath(root.filePath("chosen")));
        CliCall call;
        call.program = program;
        call.environment.insert("HOME", root.filePath("home"));
        call.environment.remove("XDG_DATA_HOME");

        QCOMPARE(runCli(arguments, call).exitCode, 0);

        const QDir chosen(root.filePath(programDir));
        QVERIFY(chosen.exists("options.ini"));
        const QString userDir = root.filePath("home/.local/share/quorvane");
        QCOMPARE(QFileInfo::exists(userDir), programDir.startsWith("home/"));
        if (chosen.path() == userDir)
            QCOMPARE(readTestFile(chosen.filePath("pattern.ini")), "pattern.ini as shipped\r\n");
    }
};

QTEST_GUILESS_MAIN(TestCliInstalled)
#include "test_cliinstalled.moc"
