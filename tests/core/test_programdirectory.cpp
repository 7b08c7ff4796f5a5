#include "buildconfig.h"
#include "startup/programdirectory.h"
#include "testfiles.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

// Where the program keeps its files: beside a portable copy, in the user's
// data folder for an installed or read-only one, which then gets the
// shipped int.ini and pattern.ini without losing the user's own.
class TestProgramDirectory : public QObject
{
    Q_OBJECT

private slots:
    void choice_data();
    void choice();
};

void TestProgramDirectory::choice_data()
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

void TestProgramDirectory::choice()
{
    QFETCH(bool, installed);
    QFETCH(bool, writable);
    QFETCH(QByteArray, usersPattern);
    QFETCH(bool, inUserFolder);

    QTemporaryDir root;
    QVERIFY(root.isValid());
    const QString executableDir = root.filePath(installed ? u"usr/bin"_s : u"portable"_s);
    QVERIFY(QDir().mkpath(executableDir));
    const QString shippedDir = installed
        ? QDir(executableDir).filePath(QStringLiteral(QUORVANE_DATA_FROM_EXECUTABLE))
        : executableDir;
    QVERIFY(writeTestFile(shippedDir + u"/int.ini"_s, "Core.int\r\n"));
    QVERIFY(writeTestFile(shippedDir + u"/pattern.ini"_s, "shipped\r\n"));
    const QString userDir = root.filePath(u"home/.local/share/quorvane"_s);
    if (!usersPattern.isEmpty())
        QVERIFY(writeTestFile(userDir + u"/pattern.ini"_s, usersPattern));

    const QString chosen = ChooseProgramDir({ executableDir, writable, userDir });

    const QString expected = inUserFolder ? userDir : executableDir;
    QCOMPARE(chosen, QDir::toNativeSeparators(expected) + QDir::separator());
    QCOMPARE(ShippedFilesDir(executableDir),
        QDir::toNativeSeparators(QDir::cleanPath(shippedDir)) + QDir::separator());
    if (!inUserFolder) {
        QVERIFY(!QFileInfo::exists(userDir));
        return;
    }
    QCOMPARE(readTestFile(chosen + u"int.ini"_s), "Core.int\r\n");
    QCOMPARE(readTestFile(chosen + u"pattern.ini"_s),
        usersPattern.isEmpty() ? QByteArray("shipped\r\n") : usersPattern);
    QVERIFY(QFileInfo(chosen + u"pattern.ini"_s).isWritable());
}

QTEST_GUILESS_MAIN(TestProgramDirectory)
#include "test_programdirectory.moc"
