#include "catalogue/modelcatalogue.h"
#include "catalogue/patternfile.h"
#include "catalogue/unmatchedlist.h"

#include "recordingprogress.h"
#include "scriptedprompt.h"
#include "testfiles.h"

#include "configfiles/runerror.h"
#include "startup/programdirectory.h"

#include <QDir>
#include <QLockFile>
#include <QTemporaryDir>
#include <QTest>

namespace {

// Each record as "Model|SkinType|...", free entries included.
QStringList records()
{
    QStringList found;
    for (const SkinPattern &pattern : std::as_const(Catalogue().PatternList))
        found.append(pattern.Model + '|' + pattern.SkinTypes.join('|'));
    return found;
}

const QString guy = "/ut/System/MyGuy.int";

} // namespace

class TestPatterns : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_dir;

private slots:
    // Three models and a free slot; three skin files that matched none of them.
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        setProgramDir(m_dir->path());
        CreateCatalogueTables();
        ModelCatalogue &catalogue = Catalogue();
        const QList<SkinEntry> skins = newClassSlot().Skins;
        catalogue.MISCCLASSES = { { "Botpack.TMale2Bot", "Male Soldier", "soldier", skins },
            { "Botpack.TFemale1Bot", "Female Commando", "fcommando", skins }, newClassSlot(),
            { "MyMods.TinManBot", "Tin Man", "TinMan", skins } };
        catalogue.UnmatchedSkins = { { guy, "MyGuy" }, { "/ut/System/Other.int", "OtherPack" },
            { "/ut/System/Tin.int", "Tin" }, {} };
        catalogue.ReparseRequested = false;
    }

    void loadsOneRecordPerLine_data()
    {
        QTest::addColumn<QByteArray>("file"); // null: there is none, which is said
        QTest::addColumn<int>("lines");
        QTest::addColumn<QStringList>("records");
        const QString none = "||";
        // clang-format off
        QTest::newRow("no file") << QByteArray() << 0 << QStringList { none, none };
        QTest::newRow("empty") << QByteArray("") << 0 << QStringList { none, none };
        QTest::newRow("one line") << QByteArray("soldier,A,B\r\n") << 1 << QStringList { "soldier|A|B", none };
        QTest::newRow("blank lines between") << QByteArray("soldier,A\r\n\r\n   \r\nTinMan,C\r\n") << 4 << QStringList { "soldier|A|", "TinMan|C|" };
        QTest::newRow("empty fields, trailing spaces") << QByteArray("soldier,,A,,B,C,  \r\n") << 1 << QStringList { "soldier|A|B|C", none };
        QTest::newRow("more lines than slots, LF") << QByteArray("a,1\nb,2\nc,3") << 3 << QStringList { "a|1|", "b|2|", "c|3|" };
        QTest::newRow("no model") << QByteArray(",A\r\nsoldier\r\n") << 2 << QStringList { "soldier||", none };
        // clang-format on
    }

    void loadsOneRecordPerLine()
    {
        QFETCH(QByteArray, file);
        QVERIFY(file.isNull() || writeTestFile(PatternFilePath(), file));
        ScriptedPrompt prompt;
        RecordingProgress progress;
        LoadPatternList();
        QTEST(records(), "records");
        QTEST(progress.advances, "lines");
        QCOMPARE(prompt.transcript(),
            file.isNull() ? QStringList { "pattern.ini|The skin pattern file could not be read:\r\n"
                + PatternFilePath()
                + "\r\nFile not found\r\n\r\nThe scan goes on without skin patterns." }
                          : QStringList());
        // Written back, only the occupied fields remain.
        SavePatternList(Catalogue().PatternList);
        LoadPatternList();
        QTEST(records(), "records");
    }

    void finishedAssignsFilesToModels_data()
    {
        QTest::addColumn<QByteArray>("before"); // null: there is no file
        QTest::addColumn<QStringList>("items"); // path|model description
        QTest::addColumn<QString>("forgotten"); // a skin type the editor took out
        QTest::addColumn<QByteArray>("after"); // null: nothing written
        QTest::addColumn<QStringList>("reparse");
        const QString tin = "/ut/System/Tin.int", other = "/UT/system/OTHER.int";
        // clang-format off
        QTest::newRow("appends to the model's pattern") << QByteArray("fcommando,X\r\nsoldier,A\r\n") << QStringList { guy + "|Male Soldier" } << QString() << QByteArray("fcommando,X\r\nsoldier,A,MyGuy\r\n") << QStringList { guy, {} };
        QTest::newRow("new patterns, any case, no file") << QByteArray() << QStringList { guy + "|male soldier", tin + "|TIN MAN" } << QString() << QByteArray("soldier,MyGuy\r\nTinMan,Tin\r\n") << QStringList { guy, tin, {} };
        QTest::newRow("paths in any case, one model") << QByteArray("TinMan,Z\r\n") << QStringList { guy + "|Tin Man", other + "|Tin Man" } << QString() << QByteArray("TinMan,Z,MyGuy,OtherPack\r\n") << QStringList { guy, other, {} };
        QTest::newRow("unassigned items keep their places") << QByteArray("") << QStringList { guy + "|", tin + "|Tin Man" } << QString() << QByteArray("TinMan,Tin\r\n") << QStringList { {}, tin, {} };
        QTest::newRow("listed once") << QByteArray("soldier,MyGuy\r\n") << QStringList { guy + "|Male Soldier" } << QString() << QByteArray() << QStringList { guy, {} };
        QTest::newRow("unknown model") << QByteArray("soldier,A\r\n") << QStringList { guy + "|Warlord" } << QString() << QByteArray() << QStringList { guy, {} };
        QTest::newRow("nothing assigned") << QByteArray("soldier,A\r\n") << QStringList { guy + "|" } << QString() << QByteArray() << QStringList { {}, {} };
        QTest::newRow("a saved pattern changed, nothing assigned") << QByteArray("soldier,A\r\nTinMan,Z\r\n") << QStringList { guy + "|" } << "Z" << QByteArray("soldier,A\r\n") << QStringList { {}, {} };
        QTest::newRow("a saved pattern emptied, a file assigned") << QByteArray("soldier,A\r\nTinMan,Z\r\n") << QStringList { guy + "|Tin Man" } << "A" << QByteArray("TinMan,Z,MyGuy\r\n") << QStringList { guy, {} };
        QTest::newRow("a saved pattern gone, a file assigned to it") << QByteArray("TinMan,Z\r\n") << QStringList { guy + "|Male Soldier" } << "A" << QByteArray("TinMan,Z\r\nsoldier,MyGuy\r\n") << QStringList { guy, {} };
        // clang-format on
    }

    // Another window or a command may have changed pattern.ini since it was
    // read: Finished makes its edits on the file as it is then.
    void finishedAssignsFilesToModels()
    {
        QFETCH(QByteArray, before);
        QFETCH(QStringList, items);
        QFETCH(QString, forgotten);
        QFETCH(QByteArray, after);
        QFETCH(QStringList, reparse);
        QVERIFY(writeTestFile(PatternFilePath(), "soldier,A,Read\r\nTinMan,Z\r\n"));
        LoadPatternList();
        QVERIFY(before.isNull() ? QFile::remove(PatternFilePath())
                                : writeTestFile(PatternFilePath(), before));
        QList<PatternAssignment> files;
        for (const QString &item : items)
            files.append({ item.section('|', 0, 0), item.section('|', 1) });
        FinishPatterns(
            files, { [&](QList<SkinPattern> &patterns) { ForgetSkinType(patterns, forgotten); } });

        const QByteArray expected = after.isNull() ? before : after;
        QCOMPARE(readTestFile(PatternFilePath()), expected);
        QCOMPARE(crlf(PatternLines(Catalogue().PatternList)), expected);
        QCOMPARE(Catalogue().ReparseFiles, reparse);
        QCOMPARE(Catalogue().ReparseRequested, !reparse.join(QString()).isEmpty());
    }

    // Whether the folder is gone or the file is being changed.
    void aFailedWriteChangesNothing()
    {
        for (const bool locked : { false, true }) {
            setProgramDir(m_dir->path());
            QVERIFY(writeTestFile(PatternFilePath(), "soldier,A\r\n"));
            LoadPatternList();
            QLockFile lock(PatternFilePath() + ".lock");
            QVERIFY(!locked || lock.lock());
            if (!locked)
                setProgramDir(m_dir->filePath("gone"));
            QVERIFY_THROWS_EXCEPTION(RunError, FinishPatterns({ { guy, "Male Soldier" } }));
            QCOMPARE(records(), (QStringList { "soldier|A|", "||" }));
            QCOMPARE(readTestFile(PatternFilePath()), locked ? "soldier,A\r\n" : QByteArray());
            QVERIFY(!Catalogue().ReparseRequested);
        }
    }

    void changesSavedPatterns_data()
    {
        QTest::addColumn<QStringList>("operation");
        QTest::addColumn<QByteArray>("after"); // null: unchanged
        // clang-format off
        QTest::newRow("forget one") << QStringList { "forget", "A" } << QByteArray("soldier,B\r\nTinMan,C\r\nfcommando,B\r\n");
        QTest::newRow("forget everywhere") << QStringList { "forget", "B" } << QByteArray("soldier,A\r\nTinMan,C\r\n");
        QTest::newRow("forget the last") << QStringList { "forget", "C" } << QByteArray("soldier,A,B\r\nfcommando,B\r\n");
        QTest::newRow("forget, case") << QStringList { "forget", "c" } << QByteArray();
        QTest::newRow("drop") << QStringList { "drop", "soldier" } << QByteArray("TinMan,C\r\nfcommando,B\r\n");
        QTest::newRow("drop, case") << QStringList { "drop", "Soldier" } << QByteArray();
        QTest::newRow("move") << QStringList { "move", "C", "soldier" } << QByteArray("soldier,A,B,C\r\nfcommando,B\r\n");
        QTest::newRow("move to a new pattern") << QStringList { "move", "A", "Warlord" } << QByteArray("soldier,B\r\nTinMan,C\r\nfcommando,B\r\nWarlord,A\r\n");
        QTest::newRow("move where it is") << QStringList { "move", "C", "TinMan" } << QByteArray();
        // clang-format on
    }

    void changesSavedPatterns()
    {
        QFETCH(QStringList, operation);
        QFETCH(QByteArray, after);
        const QByteArray before("soldier,A,B\r\nTinMan,C\r\nfcommando,B\r\n");
        QList<SkinPattern> patterns = ParsePatternLines(QString(before).split("\r\n"));
        const QString &what = operation.at(0);
        const bool changed = what == "forget" ? ForgetSkinType(patterns, operation.at(1))
            : what == "drop"                  ? ForgetPattern(patterns, operation.at(1))
                             : MoveSkinType(patterns, operation.at(1), operation.at(2));
        QCOMPARE(changed, !after.isNull());
        QCOMPARE(crlf(PatternLines(patterns)), after.isNull() ? before : after);
    }

    // The checked files of the report become the editor's items.
    void editorItemsAndQuestion()
    {
        PatternEditorFiles() = { { "/old.int", "Robot" } };
        Catalogue().PatternsRequested = true;
        for (const QStringList &checked : { QStringList(), QStringList { "/A.int", "/C.int" } }) {
            ContinueToPatternEditor(checked);
            QStringList items;
            for (const PatternAssignment &file : std::as_const(PatternEditorFiles()))
                items.append(file.text());
            QCOMPARE(items, checked);
            QCOMPARE(Catalogue().PatternsRequested, !checked.isEmpty());
        }
        // A path with " - " in it stays whole.
        PatternAssignment file { "C:\\UT - GOTY\\System\\MyGuy.int", "Tin Man" };
        QCOMPARE(file.text(), "C:\\UT - GOTY\\System\\MyGuy.int - Tin Man");
        ScriptedPrompt prompt;
        prompt.answerNext(MessageAnswer::No);
        prompt.answerNext(MessageAnswer::Yes);
        QVERIFY(!RemovePatternAssignment(file));
        QCOMPARE(prompt.messages().constFirst().defaultButton, MessageDefault::No);
        QCOMPARE(file.modelDescription, "Tin Man");
        QVERIFY(RemovePatternAssignment(file));
        QCOMPARE(file.text(), "C:\\UT - GOTY\\System\\MyGuy.int");
        QCOMPARE(prompt.transcript(), QStringList(2, "Remove Pattern|Are you sure?"));
        QCOMPARE(PatternModelChoices(),
            (QStringList { "Male Soldier", "Female Commando", "", "Tin Man" }));
        Catalogue().MISCCLASSES.clear();
        QCOMPARE(PatternModelChoices(), QStringList { "(NONE)" });
    }

    // The list's name and date follow the English pattern whatever the
    // locale, which names the day and month and formats the time its own way.
    // A second save in the same second replaces the file; the report's button
    // says what happened.
    void savesTheUnmatchedList()
    {
        const QDateTime when(QDate(2001, 7, 4), QTime(9, 5, 30));
        const QDateTime evening(QDate(2023, 12, 31), QTime(23, 59, 8));
        QCOMPARE(UnmatchedListFileName(evening), "UnMatched_Files_12-31-2023_h23m59s8.txt");
        QStringList lines = UnmatchedListLines({ { "/ut/System/A.int", "A" }, {} }, when,
            QLocale(QLocale::English, QLocale::UnitedStates));
        lines[3].replace(u'\u202f', ' '); // some locales put a narrow space before AM
        const QString stars(70, '*');
        QCOMPARE(lines,
            (QStringList { stars, "* UNMATCHED SKIN FILE LIST OUTPUT",
                "* Date: Wednesday, July 4, 2001", "* Time: 9:05:30 AM", stars, " ",
                "/ut/System/A.int", "", " ", "End of List" }));
        QCOMPARE(UnmatchedListLines({}, evening, QLocale(QLocale::German)).mid(2, 2),
            (QStringList { "* Date: Sonntag, Dezember 31, 2023", "* Time: 23:59:08" }));

        const QString path = SaveUnmatchedList(ProgramDir(), when);
        Catalogue().UnmatchedSkins = { { "/ut/System/B.int", "B" }, {} };
        QCOMPARE(SaveUnmatchedList(ProgramDir(), when), path);
        QCOMPARE(path, ProgramDir() + "UnMatched_Files_7-4-2001_h9m5s30.txt");
        QVERIFY(readTestFile(path).endsWith(
            QByteArray(70, '*') + "\r\n \r\n/ut/System/B.int\r\n\r\n \r\nEnd of List\r\n"));
        QVERIFY(QFile::remove(path));
        ScriptedPrompt prompt;
        SaveUnmatchedListAndSay();
        const QStringList saved = QDir(ProgramDir()).entryList({ "UnMatched_Files_*.txt" });
        QCOMPARE(saved.size(), 1);
        setProgramDir(m_dir->filePath("gone"));
        SaveUnmatchedListAndSay();
        QCOMPARE(prompt.transcript().size(), 2);
        QCOMPARE(prompt.transcript().at(0),
            "File Created|File Created:\r\n" + QDir(m_dir->path()).filePath(saved.first()));
        QVERIFY(prompt.transcript().at(1).startsWith(
            "Save List to File|The list of unmatched skin files could not be saved:\r\n"));
    }
};

QTEST_GUILESS_MAIN(TestPatterns)
#include "test_patterns.moc"
