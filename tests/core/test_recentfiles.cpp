#include "startup/recentfiles.h"
#include "testfiles.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

// The list of recent configurations: newest first, each once, five at most,
// and a file that only ever gives a usable list, whatever it holds.
class TestRecentFiles : public QObject
{
    Q_OBJECT

private slots:
    void init() { QVERIFY(m_dir.isValid()); }

    void adding_data()
    {
        QTest::addColumn<QStringList>("before");
        QTest::addColumn<QString>("added");
        QTest::addColumn<QStringList>("after");

        QTest::newRow("first") << QStringList() << "/c/a.qvn" << QStringList { "/c/a.qvn" };
        QTest::newRow("again moves to the front") << QStringList { "/c/a.qvn",
            "/c/b.qvn" } << "/c/b.qvn" << QStringList { "/c/b.qvn", "/c/a.qvn" };
        QTest::newRow("the oldest drops out")
            << QStringList { "/1.qvn", "/2.qvn", "/3.qvn", "/4.qvn", "/5.qvn" } << "/6.qvn"
            << QStringList { "/6.qvn", "/1.qvn", "/2.qvn", "/3.qvn", "/4.qvn" };
    }

    void adding()
    {
        QFETCH(QStringList, before);
        QFETCH(QString, added);
        QFETCH(QStringList, after);

        QCOMPARE(WithRecentFile(before, added), after);
        QCOMPARE(WithoutRecentFile(after, added), after.mid(1));
    }

    void reading_data()
    {
        QTest::addColumn<QByteArray>("content"); // "" for no file
        QTest::addColumn<QStringList>("files");

        const QString home = QDir::homePath();
        const QByteArray homeBytes = home.toUtf8();
        QTest::newRow("no file") << QByteArray() << QStringList();
        QTest::newRow("written by us") << homeBytes + "/Bots.qvn\n" + homeBytes + "/Été.qvn\n"
                                       << QStringList { home + "/Bots.qvn", home + "/Été.qvn" };
        // Hand-edited or damaged: what is not an absolute path is passed
        // over, a repeated one counts once, Windows line ends are read.
        QTest::newRow("empty, relative, repeated") << "\r\nBots.qvn\r\n" + homeBytes + "/a.qvn\r\n"
                + homeBytes + "/a.qvn\r\n" << QStringList { home + "/a.qvn" };
        QByteArray many;
        QStringList five;
        for (int i = 0; i < 8; ++i) {
            many += homeBytes + "/" + QByteArray::number(i) + ".qvn\n";
            if (i < 5)
                five << home + "/" + QString::number(i) + ".qvn";
        }
        QTest::newRow("more than five") << many << five;
        QTest::newRow("too large to be ours") << QByteArray(100 * 1024, '/') << QStringList();
    }

    void reading()
    {
        QFETCH(QByteArray, content);
        QFETCH(QStringList, files);

        const QString path = m_dir.filePath("recentfiles.txt");
        QFile::remove(path);
        if (!content.isEmpty())
            QVERIFY(writeTestFile(path, content));
        QCOMPARE(ReadRecentFiles(path), files);
    }

    // What is written reads back, except a name a line break would split.
    void roundTrip()
    {
        const QString path = m_dir.filePath("recentfiles.txt");
        const QString home = QDir::homePath();
        const QStringList files { home + "/Ünïcode ✓.qvn", home + "/two\nlines.qvn",
            home + "/b.qvn", home + "/c.qvn", home + "/d.qvn", home + "/e.qvn", home + "/f.qvn" };

        WriteRecentFiles(files, path);

        QCOMPARE(ReadRecentFiles(path),
            QStringList({ files.at(0), files.at(2), files.at(3), files.at(4), files.at(5) }));
    }

private:
    QTemporaryDir m_dir;
};

QTEST_GUILESS_MAIN(TestRecentFiles)
#include "test_recentfiles.moc"
