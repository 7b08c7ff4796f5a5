#include "catalogue/modelcatalogue.h"
#include "catalogue/patternfile.h"
#include "catalogue/unmatchedlist.h"

#include "scriptedprompt.h"
#include "testfiles.h"

#include "startup/programdirectory.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class TestUnmatched : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        QVERIFY(m_dir->isValid());
        setProgramDir(m_dir->path());
        CreateCatalogueTables();
        Catalogue().UnmatchedSkins = {{u"/ut/System/A.int"_s, u"A"_s}, {}};
    }

    void namesAndLinesFollowTheDateAndLocale_data()
    {
        QTest::addColumn<QLocale>("locale");
        QTest::addColumn<QDateTime>("when");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("date");
        QTest::addColumn<QString>("time");
        QTest::newRow("English, morning")
            << QLocale(QLocale::English, QLocale::UnitedStates)
            << QDateTime(QDate(2001, 7, 4), QTime(9, 5, 30))
            << u"UnMatched_Files_7-4-2001_h9m5s30.txt"_s << u"Wednesday, July 4, 2001"_s
            << u"9:05:30 AM"_s;
        QTest::newRow("German, evening")
            << QLocale(QLocale::German, QLocale::Germany)
            << QDateTime(QDate(2023, 12, 31), QTime(23, 59, 8))
            << u"UnMatched_Files_12-31-2023_h23m59s8.txt"_s << u"Sonntag, Dezember 31, 2023"_s
            << u"23:59:08"_s;
    }

    void namesAndLinesFollowTheDateAndLocale()
    {
        QFETCH(QLocale, locale);
        QFETCH(QDateTime, when);
        QFETCH(QString, name);
        QFETCH(QString, date);
        QFETCH(QString, time);
        QCOMPARE(UnmatchedListFileName(when), name);
        QStringList lines = UnmatchedListLines(Catalogue().UnmatchedSkins, when, locale);
        lines[3].replace(u'\u202f', u' '); // some locales put a narrow space before AM
        const QString stars(70, u'*');
        QCOMPARE(lines,
            (QStringList {stars, u"* UNMATCHED SKIN FILE LIST OUTPUT"_s, u"* Date: "_s + date,
                u"* Time: "_s + time, stars, u" "_s, u"/ut/System/A.int"_s, QString(), u" "_s,
                u"End of List"_s}));
    }

    void savingTwiceInOneSecondReplacesTheFile()
    {
        const QDateTime when(QDate(2001, 7, 4), QTime(9, 5, 30));
        const QString path = SaveUnmatchedList(ProgramDir(), when);
        Catalogue().UnmatchedSkins = {{u"/ut/System/B.int"_s, u"B"_s}, {}};
        QCOMPARE(SaveUnmatchedList(ProgramDir(), when), path);
        QCOMPARE(path, ProgramDir() + u"UnMatched_Files_7-4-2001_h9m5s30.txt"_s);
        QVERIFY(readTestFile(path).endsWith(
            QByteArray(70, '*') + "\r\n \r\n/ut/System/B.int\r\n\r\n \r\nEnd of List\r\n"));
        QCOMPARE(QDir(ProgramDir()).entryList(QDir::Files).size(), 1);
    }

    void saveButtonsSayWhatHappened_data()
    {
        QTest::addColumn<bool>("writable");
        QTest::addColumn<QString>("said");
        QTest::newRow("saved") << true << u"File Created|File Created:\r\n%1"_s;
        QTest::newRow("no folder")
            << false << u"Save List to File|The list of unmatched skin files could not be saved:"_s;
    }

    void saveButtonsSayWhatHappened()
    {
        QFETCH(bool, writable);
        QFETCH(QString, said);
        if (!writable)
            setProgramDir(m_dir->filePath(u"gone"_s));
        ScriptedPrompt prompt;
        SaveUnmatchedListAndSay();
        const QStringList saved = QDir(ProgramDir()).entryList({ u"UnMatched_Files_*.txt"_s });
        QCOMPARE(saved.size(), writable ? 1 : 0);
        QCOMPARE(prompt.transcript().size(), 1);
        if (writable)
            QCOMPARE(prompt.transcript().constFirst(), said.arg(ProgramDir() + saved.constFirst()));
        else
            QVERIFY2(prompt.transcript().constFirst().startsWith(said),
                qPrintable(prompt.transcript().constFirst()));
    }

    void continueHandsTheCheckedFilesOn_data()
    {
        QTest::addColumn<QStringList>("checked");
        QTest::newRow("none") << QStringList();
        QTest::newRow("two") << QStringList {u"/ut/System/A.int"_s, u"/ut/System/C.int"_s};
    }

    void continueHandsTheCheckedFilesOn()
    {
        QFETCH(QStringList, checked);
        PatternEditorFiles() = {{u"/old.int"_s, u"Robot"_s}};
        Catalogue().PatternsRequested = true;
        ContinueToPatternEditor(checked);
        QCOMPARE(Catalogue().PatternsRequested, !checked.isEmpty());
        QStringList items;
        for (const PatternAssignment &file : std::as_const(PatternEditorFiles()))
            items.append(file.text());
        QCOMPARE(items, checked);
    }

private:
    std::unique_ptr<QTemporaryDir> m_dir;
};

QTEST_GUILESS_MAIN(TestUnmatched)
#include "test_unmatched.moc"
