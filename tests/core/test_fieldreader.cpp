#include "configfiles/fieldreader.h"
#include "configfiles/runerror.h"

#include <QTest>

class TestFieldReader : public QObject
{
    Q_OBJECT

private slots:
    void reads_data()
    {
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<QString>("calls"); // f readField, l readLine; empty: fields to the end
        QTest::addColumn<QStringList>("read"); // "error 62" for a read past the end

        const auto row = [](const char *tag, const QStringList &lines, const QStringList &read,
                             const QString &calls = QString()) {
            QTest::newRow(tag) << lines << calls << read;
        };
        row("one per line", { "a", "b" }, { "a", "b" });
        row("leading blanks skipped, trailing kept", { "   a  ", "\tb" }, { "a  ", "b" });
        row("comma splits a line", { "C:\\Games,UT\\", "next" }, { "C:\\Games", "UT\\", "next" });
        row("quoted value keeps commas", { "\"a, b\"", "c" }, { "a, b", "c" });
        row("text after closing quote dropped", { "\"a\" junk,b" }, { "a", "b" });
        row("unclosed quote runs to line end", { "\"abc", "d" }, { "abc", "d" });
        row("empty line is an empty field", { "", "x" }, { "", "x" });
        row("trailing comma", { "a,", "b" }, { "a", "", "b" });
        row("readLine takes the rest of the line", { "first,rest, of it", "[Header]" },
            { "first", "rest, of it", "[Header]" }, "fll");
        row("past the end", { "only" }, { "only", "error 62" }, "ff");
        row("line past the end", { "a" }, { "a", "error 62" }, "ll");
    }

    void reads()
    {
        QFETCH(QStringList, lines);
        QFETCH(QString, calls);
        QFETCH(QStringList, read);
        FieldReader reader(lines);
        QStringList got;
        try {
            for (qsizetype i = 0; calls.isEmpty() ? !reader.atEnd() : i < calls.size(); ++i)
                got.append(calls.mid(i, 1) == "l" ? reader.readLine() : reader.readField());
        } catch (const RunError &error) {
            got.append("error " + QString::number(error.number()));
        }
        QCOMPARE(got, read);
    }
};

QTEST_GUILESS_MAIN(TestFieldReader)
#include "test_fieldreader.moc"
