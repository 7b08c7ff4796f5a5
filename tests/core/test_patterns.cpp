#include "catalogue/modelcatalogue.h"
#include "catalogue/patternfile.h"

#include "scriptedprompt.h"
#include "testfiles.h"

#include "configfiles/runerror.h"
#include "startup/programdirectory.h"

#include <QLockFile>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// Three models and a free slot; three skin files that matched none of them.
void setUpCatalogue()
{
    CreateCatalogueTables();
    ModelCatalogue &catalogue = Catalogue();
    const auto model = [](const char *className, const char *description, const char *skinType) {
        MISCLASS slot = newClassSlot();
        slot.ClassName = QString::fromLatin1(className);
        slot.Description = QString::fromLatin1(description);
        slot.SkinType = QString::fromLatin1(skinType);
        return slot;
    };
    catalogue.MISCCLASSES = { model("Botpack.TMale2Bot", "Male Soldier", "soldier"),
        model("Botpack.TFemale1Bot", "Female Commando", "fcommando"), newClassSlot(),
        model("MyMods.TinManBot", "Tin Man", "TinMan") };
    catalogue.UnmatchedSkins = { { u"/ut/System/MyGuy.int"_s, u"MyGuy"_s },
        { u"/ut/System/Other.int"_s, u"OtherPack"_s }, { u"/ut/System/Tin.int"_s, u"Tin"_s }, {} };
    catalogue.ReparseRequested = false;
}

// Each record as "Model|SkinType|...", free entries included.
QStringList records()
{
    QStringList found;
    for (const SkinPattern &pattern : std::as_const(Catalogue().PatternList))
        found.append(pattern.Model + u'|' + pattern.SkinTypes.join(u'|'));
    return found;
}

} // namespace

class TestPatterns : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        QVERIFY(m_dir->isValid());
        setProgramDir(m_dir->path());
        setUpCatalogue();
    }

    void loadsOneRecordPerLine_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QStringList>("records");
        QTest::newRow("empty") << QByteArray() << QStringList { u"||"_s, u"||"_s };
        QTest::newRow("one line") << QByteArray("soldier,A,B\r\n")
                                  << QStringList { u"soldier|A|B"_s, u"||"_s };
        QTest::newRow("blank lines between") << QByteArray("soldier,A\r\n\r\n   \r\nTinMan,C\r\n")
                                             << QStringList { u"soldier|A|"_s, u"TinMan|C|"_s };
        QTest::newRow("empty fields, trailing spaces")
            << QByteArray("soldier,,A,,B,C,  \r\n") << QStringList { u"soldier|A|B|C"_s, u"||"_s };
        QTest::newRow("more lines than slots, LF")
            << QByteArray("a,1\nb,2\nc,3") << QStringList { u"a|1|"_s, u"b|2|"_s, u"c|3|"_s };
        QTest::newRow("no model") << QByteArray(",A\r\nsoldier\r\n")
                                  << QStringList { u"soldier||"_s, u"||"_s };
        QTest::newRow("UTF-8 BOM") << QByteArray("\xEF\xBB\xBFs,Caf\xC3\xA9")
                                   << QStringList { u"s|Caf\u00e9|"_s, u"||"_s };
        QTest::newRow("ANSI") << QByteArray("s,Caf\xE9")
                              << QStringList { u"s|Caf\u00e9|"_s, u"||"_s };
    }

    void loadsOneRecordPerLine()
    {
        QFETCH(QByteArray, file);
        QFETCH(QStringList, records);
        QVERIFY(writeTestFile(PatternFilePath(), file));
        ScriptedPrompt prompt;
        LoadPatternList();
        QCOMPARE(::records(), records);
        QCOMPARE(prompt.transcript(), QStringList());
        // Written back, only the occupied fields remain.
        SavePatternList(Catalogue().PatternList);
        LoadPatternList();
        QCOMPARE(::records(), records);
    }

    void aMissingFileIsSaidOnce()
    {
        ScriptedPrompt prompt;
        LoadPatternList();
        QCOMPARE(records(), (QStringList { u"||"_s, u"||"_s }));
        QCOMPARE(prompt.transcript(),
            QStringList { u"pattern.ini|The skin pattern file could not be read:\r\n"_s
                + PatternFilePath()
                + u"\r\nFile not found\r\n\r\nThe scan goes on without skin patterns."_s });
    }

    void finishedAssignsFilesToModels_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QStringList>("items"); // path|model description
        QTest::addColumn<QString>("forgotten"); // a skin type the editor took out
        QTest::addColumn<QByteArray>("after"); // null: nothing written
        QTest::addColumn<QStringList>("reparse");

        const QString guy = u"/ut/System/MyGuy.int"_s;
        const QString tin = u"/ut/System/Tin.int"_s;
        QTest::newRow("appends to the model's pattern")
            << QByteArray("fcommando,X\r\nsoldier,A\r\n")
            << QStringList { guy + u"|Male Soldier"_s } << QString()
            << QByteArray("fcommando,X\r\nsoldier,A,MyGuy\r\n") << QStringList { guy, {} };
        QTest::newRow("new patterns, any case")
            << QByteArray() << QStringList { guy + u"|male soldier"_s, tin + u"|TIN MAN"_s }
            << QString() << QByteArray("soldier,MyGuy\r\nTinMan,Tin\r\n")
            << QStringList { guy, tin, {} };
        QTest::newRow("paths in any case, one model")
            << QByteArray("TinMan,Z\r\n")
            << QStringList { guy + u"|Tin Man"_s, u"/UT/system/OTHER.int|Tin Man"_s } << QString()
            << QByteArray("TinMan,Z,MyGuy,OtherPack\r\n")
            << QStringList { guy, u"/UT/system/OTHER.int"_s, {} };
        QTest::newRow("unassigned items keep their places")
            << QByteArray() << QStringList { guy + u"|"_s, tin + u"|Tin Man"_s } << QString()
            << QByteArray("TinMan,Tin\r\n") << QStringList { {}, tin, {} };
        QTest::newRow("listed once")
            << QByteArray("soldier,MyGuy\r\n") << QStringList { guy + u"|Male Soldier"_s }
            << QString() << QByteArray("soldier,MyGuy\r\n") << QStringList { guy, {} };
        QTest::newRow("unknown model")
            << QByteArray("soldier,A\r\n") << QStringList { guy + u"|Warlord"_s } << QString()
            << QByteArray("soldier,A\r\n") << QStringList { guy, {} };
        QTest::newRow("nothing assigned")
            << QByteArray("soldier,A\r\n") << QStringList { guy + u"|"_s } << QString()
            << QByteArray() << QStringList { {}, {} };
        QTest::newRow("a saved pattern changed, nothing assigned")
            << QByteArray("soldier,A\r\nTinMan,Z\r\n") << QStringList { guy + u"|"_s } << u"Z"_s
            << QByteArray("soldier,A\r\n") << QStringList { {}, {} };
        QTest::newRow("a saved pattern changed and a file assigned")
            << QByteArray("soldier,A\r\nTinMan,Z\r\n") << QStringList { guy + u"|Tin Man"_s }
            << u"A"_s << QByteArray("TinMan,Z,MyGuy\r\n") << QStringList { guy, {} };
    }

    void finishedAssignsFilesToModels()
    {
        QFETCH(QByteArray, before);
        QFETCH(QStringList, items);
        QFETCH(QString, forgotten);
        QFETCH(QByteArray, after);
        QFETCH(QStringList, reparse);
        QVERIFY(writeTestFile(PatternFilePath(), before));
        LoadPatternList();
        QList<PatternAssignment> files;
        for (const QString &item : items)
            files.append({ item.section(u'|', 0, 0), item.section(u'|', 1) });
        FinishPatterns(
            files, { [&](QList<SkinPattern> &patterns) { ForgetSkinType(patterns, forgotten); } });

        const QByteArray expected = after.isNull() ? before : after;
        QCOMPARE(readTestFile(PatternFilePath()), expected);
        QCOMPARE(crlf(PatternLines(Catalogue().PatternList)), expected);
        QCOMPARE(Catalogue().ReparseFiles, reparse);
        QCOMPARE(Catalogue().ReparseRequested, !reparse.join(QString()).isEmpty());
    }

    // Another window or a command changed pattern.ini after it was read:
    // Finished makes its edits on the file as it is then, and keeps both.
    void finishedKeepsChangesMadeMeanwhile_data()
    {
        QTest::addColumn<QByteArray>("meanwhile"); // null: the file was deleted
        QTest::addColumn<QByteArray>("after");

        QTest::newRow("a pattern added")
            << QByteArray("soldier,A,B\r\nTinMan,Z\r\n")
            << QByteArray("soldier,B,MyGuy\r\nTinMan,Z\r\n");
        QTest::newRow("the forgotten skin type's pattern removed")
            << QByteArray("TinMan,Z\r\n") << QByteArray("TinMan,Z\r\nsoldier,MyGuy\r\n");
        QTest::newRow("the file deleted") << QByteArray() << QByteArray("soldier,MyGuy\r\n");
    }

    void finishedKeepsChangesMadeMeanwhile()
    {
        QFETCH(QByteArray, meanwhile);
        QFETCH(QByteArray, after);
        QVERIFY(writeTestFile(PatternFilePath(), "soldier,A\r\n"));
        LoadPatternList();
        if (meanwhile.isNull())
            QVERIFY(QFile::remove(PatternFilePath()));
        else
            QVERIFY(writeTestFile(PatternFilePath(), meanwhile));

        FinishPatterns({ { u"/ut/System/MyGuy.int"_s, u"Male Soldier"_s } },
            { [](QList<SkinPattern> &patterns) { ForgetSkinType(patterns, u"A"_s); } });

        QCOMPARE(readTestFile(PatternFilePath()), after);
        QCOMPARE(crlf(PatternLines(Catalogue().PatternList)), after);
    }

    void aFailedWriteChangesNothing_data()
    {
        QTest::addColumn<QString>("fault");
        QTest::newRow("folder gone") << u"gone"_s;
        QTest::newRow("being changed") << u"locked"_s;
    }

    void aFailedWriteChangesNothing()
    {
        QFETCH(QString, fault);
        QVERIFY(writeTestFile(PatternFilePath(), "soldier,A\r\n"));
        LoadPatternList();
        QLockFile lock(PatternFilePath() + u".lock"_s);
        QVERIFY(fault != u"locked" || lock.lock());
        if (fault == u"gone")
            setProgramDir(m_dir->filePath(u"gone"_s));
        QVERIFY_THROWS_EXCEPTION(
            RunError, FinishPatterns({ { u"/ut/System/MyGuy.int"_s, u"Male Soldier"_s } }));
        QCOMPARE(records(), (QStringList { u"soldier|A|"_s, u"||"_s }));
        QCOMPARE(
            readTestFile(PatternFilePath()), fault == u"gone" ? QByteArray() : "soldier,A\r\n");
        QVERIFY(!Catalogue().ReparseRequested);
    }

    void changesSavedPatterns_data()
    {
        QTest::addColumn<QStringList>("operation");
        QTest::addColumn<QByteArray>("after"); // null: unchanged

        QTest::newRow("forget one") << QStringList { u"forget"_s, u"A"_s }
                                    << QByteArray("soldier,B\r\nTinMan,C\r\nfcommando,B\r\n");
        QTest::newRow("forget everywhere")
            << QStringList { u"forget"_s, u"B"_s } << QByteArray("soldier,A\r\nTinMan,C\r\n");
        QTest::newRow("forget the last")
            << QStringList { u"forget"_s, u"C"_s } << QByteArray("soldier,A,B\r\nfcommando,B\r\n");
        QTest::newRow("forget, case") << QStringList { u"forget"_s, u"c"_s } << QByteArray();
        QTest::newRow("drop") << QStringList { u"drop"_s, u"soldier"_s }
                              << QByteArray("TinMan,C\r\nfcommando,B\r\n");
        QTest::newRow("drop, case") << QStringList { u"drop"_s, u"Soldier"_s } << QByteArray();
        QTest::newRow("move") << QStringList { u"move"_s, u"C"_s, u"soldier"_s }
                              << QByteArray("soldier,A,B,C\r\nfcommando,B\r\n");
        QTest::newRow("move to a new pattern") << QStringList { u"move"_s, u"A"_s,
            u"Warlord"_s } << QByteArray("soldier,B\r\nTinMan,C\r\nfcommando,B\r\nWarlord,A\r\n");
        QTest::newRow("move where it is")
            << QStringList { u"move"_s, u"C"_s, u"TinMan"_s } << QByteArray();
    }

    void changesSavedPatterns()
    {
        QFETCH(QStringList, operation);
        QFETCH(QByteArray, after);
        const QByteArray before("soldier,A,B\r\nTinMan,C\r\nfcommando,B\r\n");
        QList<SkinPattern> patterns
            = ParsePatternLines(QString::fromLatin1(before).split(u"\r\n"_s));

        const QString &what = operation.at(0);
        const QString &skinTypeOrModel = operation.at(1);
        const bool changed = what == "forget"_L1 ? ForgetSkinType(patterns, skinTypeOrModel)
            : what == "drop"_L1                  ? ForgetPattern(patterns, skinTypeOrModel)
                                : MoveSkinType(patterns, skinTypeOrModel, operation.at(2));

        QCOMPARE(changed, !after.isNull());
        QCOMPARE(crlf(PatternLines(patterns)), after.isNull() ? before : after);
    }

    void editorItemsAndMessages()
    {
        // A path with " - " in it stays whole.
        PatternAssignment file { u"C:\\UT - GOTY\\System\\MyGuy.int"_s, u"Tin Man"_s };
        QCOMPARE(file.text(), u"C:\\UT - GOTY\\System\\MyGuy.int - Tin Man"_s);
        ScriptedPrompt prompt;
        prompt.answerNext(MessageAnswer::No);
        prompt.answerNext(MessageAnswer::Yes);
        QVERIFY(!RemovePatternAssignment(file));
        QCOMPARE(prompt.messages().constFirst().defaultButton, MessageDefault::No);
        QCOMPARE(file.modelDescription, u"Tin Man"_s);
        QVERIFY(RemovePatternAssignment(file));
        QCOMPARE(file.text(), u"C:\\UT - GOTY\\System\\MyGuy.int"_s);
        ShowSetPatternHelp();
        ShowRemovePatternHelp();
        QCOMPARE(prompt.transcript(),
            (QStringList { u"Remove Pattern|Are you sure?"_s, u"Remove Pattern|Are you sure?"_s,
                u"This is how to set a pattern...|1. Choose one Skin at a time in the list box."
                "\r\n2. Choose the Model in the combo box.\r\n3. Click the SET PATTERN button."
                "\r\n4. Repeat and then click FINISHED when done."_s,
                u"This is how to remove a pattern...|1. Choose one Skin at a time in the list box."
                "\r\n2. Click the REMOVE PATTERN button.\r\n3. Repeat on each pattern you want "
                "to remove."_s }));
        QCOMPARE(PatternModelChoices(),
            (QStringList { u"Male Soldier"_s, u"Female Commando"_s, QString(), u"Tin Man"_s }));
    }

private:
    std::unique_ptr<QTemporaryDir> m_dir;
};

QTEST_GUILESS_MAIN(TestPatterns)
#include "test_patterns.moc"
