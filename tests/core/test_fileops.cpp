#include "configfiles/errorreport.h"
#include "configfiles/fileops.h"
#include "configfiles/runerror.h"
#include "scriptedprompt.h"
#include "testfiles.h"

#include <QDir>
#include <QDirIterator>
#include <QTemporaryDir>
#include <QTest>

class TestFileOps : public QObject
{
    Q_OBJECT

private slots:
    void pathsAndQuotes()
    {
        const QString sep = QDir::separator();
        QCOMPARE(
            QStringList({ AddBackslash(QString()), AddBackslash("UT"), AddBackslash("UT" + sep) }),
            QStringList({ sep, "UT" + sep, "UT" + sep }));
        QCOMPARE(QStringList({ StripQuotes("\"Male One\""), StripQuotes("abc\""),
                     StripQuotes("\"abc"), StripQuotes("\""), StripQuotes("\"\"x\"\"") }),
            QStringList({ "Male One", "abc", "abc", "", "\"x\"" }));
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

    // Emptying a directory hands every entry of its listing over, the
    // directories among them; those and missing files are passed over without
    // a word, other failures reported. A move whose copy fails keeps its source.
    void fileOp_data()
    {
        QTest::addColumn<short>("operation");
        QTest::addColumn<QString>("source"); // "new" in it, unless it is "gone" or "sub"
        QTest::addColumn<QString>("destination"); // b.qvn holds "old"
        QTest::addColumn<QStringList>("after"); // every file=content, sub/keep.qvn aside
        QTest::addColumn<QString>("message");

        const QStringList untouched { "a.qvn=new", "b.qvn=old" };
        const auto row
            = [](const char *tag, short operation, const QString &source, const QStringList &after,
                  const QString &destination = "b.qvn", const QString &message = QString()) {
                  QTest::newRow(tag) << operation << source << destination << after << message;
              };
        row("move replaces", 1, "a.qvn", { "b.qvn=new" });
        row("copy replaces", 2, "a.qvn", { "a.qvn=new", "b.qvn=new" });
        row("delete", 3, "a.qvn", { "b.qvn=old" });
        row("4 copies", 4, "a.qvn", { "a.qvn=new", "b.qvn=new" });
        row("unknown code", 9, "a.qvn", untouched);
        row("missing source", 1, "gone", { "b.qvn=old" });
        row("a dot file is moved", 1, ".a.qvn", { "b.qvn=new" });
        row("subdirectory", 3, "sub", { "b.qvn=old" });
        row("move into a missing folder", 1, "a.qvn", untouched, "missing/b.qvn",
            "76|Error in modCommon.FileOP.\r\n\r\nError Desc: Path not found\r\n\r\nSkipping "
            "file: @");
        row("copy onto a folder", 2, "a.qvn", untouched, "sub",
            "75|Error in modCommon.FileOP.\r\n\r\nError Desc: Path/File access error\r\n\r\n"
            "Skipping file: @");
    }

    void fileOp()
    {
        QFETCH(short, operation);
        QFETCH(QString, source);
        QFETCH(QString, destination);
        QFETCH(QStringList, after);
        QFETCH(QString, message);

        QTemporaryDir dir;
        const QString sourcePath = QDir::toNativeSeparators(dir.filePath(source));
        QVERIFY(source == "gone" || source == "sub" || writeTestFile(sourcePath, "new"));
        QVERIFY(writeTestFile(dir.filePath("b.qvn"), "old"));
        QVERIFY(writeTestFile(dir.filePath("sub/keep.qvn"), "keep"));
        ScriptedPrompt prompt;

        FileOP(sourcePath, dir.filePath(destination), operation);

        QCOMPARE(prompt.transcript(),
            message.isEmpty() ? QStringList() : QStringList(message.replace('@', sourcePath)));
        QStringList files;
        for (QDirIterator it(dir.path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
             it.hasNext();) {
            const QString path = it.next();
            files << QDir(dir.path()).relativeFilePath(path) + '=' + readTestFile(path);
        }
        files.sort();
        QCOMPARE(files, after + QStringList("sub/keep.qvn=keep"));
    }

    // Month and day unpadded: 2 November and 12 January share a name, and a
    // second report of the number on the day replaces the first.
    void errorReport()
    {
        QTemporaryDir dir;
        const QString directory = AddBackslash(QDir::toNativeSeparators(dir.path()));
        WriteErrorReport(directory, RunError(53), "earlier", QDate(2001, 1, 12));
        const QString path
            = WriteErrorReport(directory, RunError(53), QString(), QDate(2001, 11, 2));
        QCOMPARE(QStringList(
                     { path, WriteErrorReport(directory, RunError(53), "", QDate(2001, 3, 17)) }),
            QStringList(
                { directory + "ErrNum53_1122001.txt", directory + "ErrNum53_3172001.txt" }));
        QCOMPARE(readTestFile(path),
            crlf({ "Error Message: ", "Error Number: 53", "Description: File not found" }));
    }
};

QTEST_GUILESS_MAIN(TestFileOps)
#include "test_fileops.moc"
