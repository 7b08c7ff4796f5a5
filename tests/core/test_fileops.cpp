#include "childprocess.h"
#include "configfiles/errorreport.h"
#include "configfiles/fileops.h"
#include "configfiles/runerror.h"
#include "configfiles/textdocument.h"
#include "configfiles/textfile.h"
#include "scriptedprompt.h"
#include "testfiles.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

namespace {

QByteArray utf16Bytes(const char *text)
{
    QByteArray bytes("\xFF\xFE");
    for (const char *c = text; *c; ++c)
        bytes += QByteArray(1, *c) + '\0';
    return bytes;
}

} // namespace

class TestFileOps : public QObject
{
    Q_OBJECT

private slots:
    void pathsAndQuotes()
    {
        const QString sep = QDir::separator();
        QCOMPARE(AddBackslash(QString()), sep);
        QCOMPARE(AddBackslash("UT"), "UT" + sep);
        QCOMPARE(AddBackslash("UT" + sep), "UT" + sep);

        const QList<QPair<QString, QString>> quotes { { "\"Male One\"", "Male One" },
            { "abc\"", "abc" }, { "\"abc", "abc" }, { "\"\"", "" }, { "\"", "" },
            { "\"\"x\"\"", "\"x\"" }, { "a\"b", "a\"b" } };
        for (const auto &[text, expected] : quotes)
            QCOMPARE(StripQuotes(text), expected);
    }

    void findPathNoCaseFollowsTheRealNames()
    {
        QTemporaryDir dir;
        const QString root = AddBackslash(QDir::toNativeSeparators(dir.path()));
        QVERIFY(writeTestFile(root + "SYSTEM/User.ini", "x"));
        const QString system = root + "SYSTEM" + QDir::separator();
        QCOMPARE(findPathNoCase(root, "System/user.ini"), system + "User.ini");
        QCOMPARE(
            findPathNoCase(root, QDir::toNativeSeparators("system/USER.INI")), system + "User.ini");
        // A file still to be created keeps its name in the real directory.
        QCOMPARE(findPathNoCase(root, "System/dummy.ini"), system + "dummy.ini");
    }

    void fileOp_data()
    {
        QTest::addColumn<short>("operation");
        QTest::addColumn<QString>("sourceName");
        QTest::addColumn<bool>("sourceExists");
        QTest::addColumn<QByteArray>("sourceAfter"); // empty: gone
        QTest::addColumn<QByteArray>("destinationAfter");

        const QByteArray gone, newer("new"), old("old");
        const QString a = "a.qvn";
        QTest::newRow("move replaces") << short(1) << a << true << gone << newer;
        QTest::newRow("copy replaces") << short(2) << a << true << newer << newer;
        QTest::newRow("delete") << short(3) << a << true << gone << old;
        QTest::newRow("4 copies") << short(4) << a << true << newer << newer;
        QTest::newRow("unknown code") << short(9) << a << true << newer << old;
        QTest::newRow("move of missing source") << short(1) << a << false << gone << old;
        QTest::newRow("delete of missing source") << short(3) << a << false << gone << old;
        QTest::newRow("a dot file is moved") << short(1) << ".a.qvn" << true << gone << newer;
        QTest::newRow("a dot file is deleted") << short(3) << ".directory" << true << gone << old;
    }

    void fileOp()
    {
        QFETCH(short, operation);
        QFETCH(QString, sourceName);
        QFETCH(bool, sourceExists);
        QFETCH(QByteArray, sourceAfter);
        QFETCH(QByteArray, destinationAfter);

        QTemporaryDir dir;
        const QString source = dir.filePath(sourceName);
        const QString destination = dir.filePath("b.qvn");
        if (sourceExists)
            QVERIFY(writeTestFile(source, "new"));
        QVERIFY(writeTestFile(destination, "old"));
        ScriptedPrompt prompt;

        FileOP(source, destination, operation);

        QCOMPARE(prompt.transcript(), QStringList());
        QCOMPARE(QFile::exists(source), !sourceAfter.isEmpty());
        QCOMPARE(readTestFile(source), sourceAfter);
        QCOMPARE(readTestFile(destination), destinationAfter);
    }

    // Emptying a directory hands every entry of its listing over, the
    // directory entries among them; those are passed over without a word.
    void fileOpPassesOverDirectories_data()
    {
        QTest::addColumn<short>("operation");
        QTest::addColumn<QString>("entry");

        QTest::newRow("subdirectory, delete") << short(3) << "sub";
        QTest::newRow("subdirectory, move") << short(1) << "sub";
        QTest::newRow("own entry") << short(3) << "sub/.";
        QTest::newRow("parent entry") << short(3) << "sub/..";
    }

    void fileOpPassesOverDirectories()
    {
        QFETCH(short, operation);
        QFETCH(QString, entry);

        QTemporaryDir dir;
        QVERIFY(QDir(dir.path()).mkpath("sub"));
        QVERIFY(writeTestFile(dir.filePath("sub/keep.qvn"), "keep"));
        ScriptedPrompt prompt;

        FileOP(QDir::toNativeSeparators(dir.filePath(entry)), dir.filePath("b.qvn"), operation);

        QCOMPARE(prompt.transcript(), QStringList());
        QCOMPARE(readTestFile(dir.filePath("sub/keep.qvn")), QByteArray("keep"));
        QVERIFY(!QFile::exists(dir.filePath("b.qvn")));
    }

    // A move whose copy fails keeps its source.
    void fileOpReportsOtherFailuresAndGoesOn()
    {
        QTemporaryDir dir;
        const QString source = dir.filePath("a.qvn");
        QVERIFY(writeTestFile(source, "keep"));
        ScriptedPrompt prompt;

        FileOP(source, dir.filePath("missing/b.qvn"), 1);

        QCOMPARE(prompt.transcript(),
            QStringList("76|Error in modCommon.FileOP.\r\n\r\nError Desc: Path not found"
                        "\r\n\r\nSkipping file: "
                + source));
        QCOMPARE(readTestFile(source), QByteArray("keep"));
    }

    void errorReport_data()
    {
        QTest::addColumn<QDate>("date");
        QTest::addColumn<QString>("name");
        QTest::newRow("17 March 2001") << QDate(2001, 3, 17) << "ErrNum53_3172001.txt";
        QTest::newRow("12 January") << QDate(2001, 1, 12) << "ErrNum53_1122001.txt";
        QTest::newRow("2 November, same name") << QDate(2001, 11, 2) << "ErrNum53_1122001.txt";
    }

    void errorReport()
    {
        QFETCH(QDate, date);
        QFETCH(QString, name);
        QTemporaryDir dir;
        const QString directory = AddBackslash(QDir::toNativeSeparators(dir.path()));
        // A second report of the number on the day replaces the first.
        WriteErrorReport(directory, RunError(53), "earlier", date);
        const QString path = WriteErrorReport(directory, RunError(53), QString(), date);
        QCOMPARE(path, directory + name);
        QCOMPARE(readTestFile(path),
            crlf({ "Error Message: ", "Error Number: 53", "Description: File not found" }));
    }

    void textDocumentKeepsEveryByte_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<int>("encoding");
        QTest::addColumn<QByteArray>("newline");
        QTest::addColumn<QStringList>("texts");

        const int ansi = int(TextDocument::Encoding::Ansi);
        const int utf8 = int(TextDocument::Encoding::Utf8);
        const int utf16 = int(TextDocument::Encoding::Utf16LE);
        const QStringList ab { "[A]", "b=1" };
        QTest::newRow("ansi lf") << QByteArray("[A]\nb=1\n") << ansi << QByteArray("\n") << ab;
        QTest::newRow("no final ending")
            << QByteArray("[A]\r\nb=1") << ansi << QByteArray("\r\n") << ab;
        QTest::newRow("mixed endings, blank lines")
            << QByteArray("[A]\r\n\nb=1\r\n\r\n") << ansi << QByteArray("\r\n")
            << QStringList { "[A]", "", "b=1", "" };
        QTest::newRow("windows-1252") << QByteArray("n=Zo\xEB\r\n") << ansi << QByteArray("\r\n")
                                      << QStringList { QString::fromUtf8("n=Zoë") };
        QTest::newRow("utf-8 without bom")
            << QByteArray("n=Zo\xC3\xAB\n") << utf8 << QByteArray("\n")
            << QStringList { QString::fromUtf8("n=Zoë") };
        QTest::newRow("utf-8 bom")
            << QByteArray("\xEF\xBB\xBF[A]\r\nb=1\r\n") << utf8 << QByteArray("\r\n") << ab;
        QTest::newRow("utf-16le crlf")
            << utf16Bytes("[A]\r\nb=1\r\n") << utf16 << QByteArray("\r\0\n\0", 4) << ab;
        QTest::newRow("utf-16le lf")
            << utf16Bytes("[A]\nb=1") << utf16 << QByteArray("\n\0", 2) << ab;
        QTest::newRow("utf-16le cr")
            << utf16Bytes("[A]\rb=1\r") << utf16 << QByteArray("\r\0", 2) << ab;
        QTest::newRow("empty") << QByteArray() << ansi << QByteArray("\r\n") << QStringList();
    }

    void textDocumentKeepsEveryByte()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(int, encoding);
        QFETCH(QByteArray, newline);
        QFETCH(QStringList, texts);

        const TextDocument document = TextDocument::fromBytes(bytes);
        QCOMPARE(document.toBytes(), bytes);
        QCOMPARE(int(document.encoding()), encoding);
        QCOMPARE(document.newline(), newline);
        QStringList read;
        for (qsizetype line = 0; line < document.lineCount(); ++line)
            read.append(document.text(line));
        QCOMPARE(read, texts);
    }

    void shortWriteLeavesTheOldFile()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath("options.ini");
        QVERIFY(writeTestFile(path, "old content"));

        const int code = runWithFileSizeLimit(64, [&] {
            try {
                writeFileAtomically(path, QByteArray(4096, 'x'));
            } catch (const RunError &) {
                return 0;
            }
            return 1;
        });
        if (code == -1)
            QSKIP("no file size limits here");

        QCOMPARE(code, 0);
        QCOMPARE(readTestFile(path), QByteArray("old content"));
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files), QStringList("options.ini"));
    }
};

QTEST_GUILESS_MAIN(TestFileOps)
#include "test_fileops.moc"
