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
        // What the message says is the start-up's to show.
        QCOMPARE(prompt.transcript().size(), file.isNull() ? 1 : 0);
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
        QTEST(Catalogue().ReparseFiles, "reparse");
        QCOMPARE(Catalogue().ReparseRequested, !Catalogue().ReparseFiles.join(QString()).isEmpty());
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

    // Skin types forgotten, patterns dropped and skin types moved, names
    // compared case-sensitively; what changed, and the patterns after.
    void changesSavedPatterns()
    {
        const QStringList before { "soldier,A,B", "TinMan,C", "fcommando,B" };
        QStringList found;
        for (const QStringList &operation : QList<QStringList> { { "forget", "A" },
                 { "forget", "B" }, { "forget", "C" }, { "forget", "c" }, { "drop", "soldier" },
                 { "drop", "Soldier" }, { "move", "C", "soldier" }, { "move", "A", "Warlord" },
                 { "move", "C", "TinMan" } }) {
            QList<SkinPattern> patterns = ParsePatternLines(before);
            const QString &what = operation.at(0);
            const bool changed = what == "forget" ? ForgetSkinType(patterns, operation.at(1))
                : what == "drop"                  ? ForgetPattern(patterns, operation.at(1))
                                 : MoveSkinType(patterns, operation.at(1), operation.at(2));
            found << operation.join(' ') + (changed ? ": " : ", unchanged: ")
                    + PatternLines(patterns).join(' ');
        }
        QCOMPARE(found, testDataLines("catalogue/pattern-changes.txt"));
    }

    // The checked files of the report become the editor's items.
    void editorItems()
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
        QCOMPARE(PatternModelChoices(),
            (QStringList { "Male Soldier", "Female Commando", "", "Tin Man" }));
        Catalogue().MISCCLASSES.clear();
        QCOMPARE(PatternModelChoices(), QStringList { "(NONE)" });
    }

    // The list's name and date follow the English pattern whatever the
    // locale, which names the day and month and formats the time its own way.
    // A second save in the same second replaces the file; a failed one is
    // said.
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
        ScriptedPrompt prompt;
        setProgramDir(m_dir->filePath("gone"));
        SaveUnmatchedListAndSay();
        QCOMPARE(prompt.transcript().size(), 1);
        QVERIFY(prompt.transcript().at(0).startsWith(
            "Save List to File|The list of unmatched skin files could not be saved:\r\n"));
    }
};

QTEST_GUILESS_MAIN(TestPatterns)
#include "test_patterns.moc"
