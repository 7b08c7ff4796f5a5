#include "configfiles/fieldreader.h"
#include "configfiles/runerror.h"

#include <QTest>

class TestFieldReader : public QObject
{
    Q_OBJECT

private slots:
    void readsFields_data()
    {
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<QStringList>("fields");

        QTest::newRow("one per line") << QStringList{"a", "b"} << QStringList{"a", "b"};
        QTest::newRow("leading blanks skipped, trailing kept")
            << QStringList{"   a  ", "\tb"} << QStringList{"a  ", "b"};
        QTest::newRow("comma splits a line")
            << QStringList{"C:\\Games,UT\\", "next"} << QStringList{"C:\\Games", "UT\\", "next"};
        QTest::newRow("quoted value keeps commas")
            << QStringList{"\"a, b\"", "c"} << QStringList{"a, b", "c"};
        QTest::newRow("text after closing quote dropped")
            << QStringList{"\"a\" junk,b"} << QStringList{"a", "b"};
        QTest::newRow("unclosed quote runs to line end")
            << QStringList{"\"abc", "d"} << QStringList{"abc", "d"};
        QTest::newRow("empty line is an empty field") << QStringList{"", "x"} << QStringList{"", "x"};
        QTest::newRow("trailing comma") << QStringList{"a,", "b"} << QStringList{"a", "", "b"};
    }

    void readsFields()
    {
        QFETCH(QStringList, lines);
        QFETCH(QStringList, fields);
        FieldReader reader(lines);
        QStringList read;
        while (!reader.atEnd())
            read.append(reader.readField());
        QCOMPARE(read, fields);
    }

    void readLineTakesTheRestOfTheLine()
    {
        FieldReader reader({"first,rest, of it", "[Header]"});
        QCOMPARE(reader.readField(), QStringLiteral("first"));
        QCOMPARE(reader.readLine(), QStringLiteral("rest, of it"));
        QCOMPARE(reader.lineNumber(), 2);
        QCOMPARE(reader.readLine(), QStringLiteral("[Header]"));
    }

    void readingPastTheEndIsError62()
    {
        FieldReader reader({"only"});
        reader.readField();
        try {
            reader.readField();
            QFAIL("no error past the end");
        } catch (const RunError &error) {
            QCOMPARE(error.number(), 62);
        }
    }
};

QTEST_GUILESS_MAIN(TestFieldReader)
#include "test_fieldreader.moc"
