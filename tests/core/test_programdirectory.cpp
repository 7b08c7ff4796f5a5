#include "buildconfig.h"
#include "startup/programdirectory.h"
#include "testfiles.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

// Where the program keeps its files: beside a portable copy, in the user's
// data folder for an installed or read-only one, which then gets the
// shipped int.ini and pattern.ini without losing the user's own.
class TestProgramDirectory : public QObject
{
    Q_OBJECT

private slots:
    void choice_data()
    {
        QTest::addColumn<bool>("installed");
        QTest::addColumn<bool>("writable");
        QTest::addColumn<QByteArray>("usersPattern"); // pattern.ini already in the user folder
        QTest::addColumn<bool>("inUserFolder");
        QTest::newRow("portable copy") << false << true << QByteArray() << false;
        QTest::newRow("read-only portable copy") << false << false << QByteArray() << true;
        QTest::newRow("installed") << true << true << QByteArray() << true;
        QTest::newRow("installed, the user's patterns kept")
            << true << false << QByteArray("mine\r\n") << true;
    }

    void choice()
    {
        QFETCH(bool, installed);
        QFETCH(bool, writable);
        QFETCH(QByteArray, usersPattern);
        QFETCH(bool, inUserFolder);
        QTemporaryDir root;
        QVERIFY(root.isValid());
        const QString executableDir = root.filePath(installed ? "usr/bin" : "portable");
        QVERIFY(QDir().mkpath(executableDir));
        const QString shippedDir = installed
            ? QDir(executableDir).filePath(QUORVANE_DATA_FROM_EXECUTABLE)
            : executableDir;
        QVERIFY(writeTestFile(shippedDir + "/int.ini", "Core.int\r\n"));
        QVERIFY(writeTestFile(shippedDir + "/pattern.ini", "shipped\r\n"));
        // Installed files belong to root: the copies must become the user's to change.
        QVERIFY(QFile::setPermissions(shippedDir + "/pattern.ini", QFile::ReadOwner));
        const QString userDir = root.filePath("home/.local/share/quorvane");
        QVERIFY(usersPattern.isEmpty() || writeTestFile(userDir + "/pattern.ini", usersPattern));

        const QString chosen = ChooseProgramDir({ executableDir, writable, userDir });

        QCOMPARE(chosen,
            QDir::toNativeSeparators(inUserFolder ? userDir : executableDir) + QDir::separator());
        QCOMPARE(ShippedFilesDir(executableDir),
            QDir::toNativeSeparators(QDir::cleanPath(shippedDir)) + QDir::separator());
        if (!inUserFolder) {
            QVERIFY(!QFileInfo::exists(userDir));
            return;
        }
        QCOMPARE(readTestFile(chosen + "int.ini"), "Core.int\r\n");
        QCOMPARE(readTestFile(chosen + "pattern.ini"),
            usersPattern.isEmpty() ? QByteArray("shipped\r\n") : usersPattern);
        QVERIFY(QFile::permissions(chosen + "pattern.ini") & QFile::WriteOwner);
    }
};

QTEST_GUILESS_MAIN(TestProgramDirectory)
#include "test_programdirectory.moc"
