#include "buildconfig.h"
#include "testfiles.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

// quorvane-cli copied into the layouts it is shipped in: where it keeps
// options.ini, and what it says its version is.
class TestCliInstalled : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void version();
    void programDirectory_data();
    void programDirectory();

private:
    // Copies the program into `folder` below the test's directory, with the
    // shipped files in `shippedFolder`; returns the copy's path.
    QString install(const QString &folder, const QString &shippedFolder);
    int run(const QString &program, const QStringList &arguments, QByteArray *out = nullptr);

    std::unique_ptr<QTemporaryDir> m_root;
};

void TestCliInstalled::init()
{
    m_root = std::make_unique<QTemporaryDir>();
    QVERIFY(m_root->isValid());
}

QString TestCliInstalled::install(const QString &folder, const QString &shippedFolder)
{
    const QString binDir = m_root->filePath(folder);
    const QString program = binDir + u"/quorvane-cli"_s;
    if (!QDir().mkpath(binDir) || !QFile::copy(QStringLiteral(QUORVANE_CLI), program))
        return {};
    const QString shipped = QDir(binDir).filePath(shippedFolder);
    for (const QString &name : { u"int.ini"_s, u"pattern.ini"_s }) {
        if (!writeTestFile(shipped + u'/' + name, name.toUtf8() + " as shipped\r\n"))
            return {};
    }
    return program;
}

int TestCliInstalled::run(const QString &program, const QStringList &arguments, QByteArray *out)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"HOME"_s, m_root->filePath(u"home"_s));
    environment.remove(u"XDG_DATA_HOME"_s);
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    if (!process.waitForFinished(30000))
        qWarning() << "quorvane-cli did not finish:" << arguments;
    if (out)
        *out = process.readAllStandardOutput();
    return process.exitCode();
}

void TestCliInstalled::version()
{
    QByteArray out;
    QCOMPARE(run(QStringLiteral(QUORVANE_CLI), { u"--version"_s }, &out), 0);
    QCOMPARE(out, "quorvane-cli " QUORVANE_VERSION "\n");
}

void TestCliInstalled::programDirectory_data()
{
    QTest::addColumn<QString>("binFolder");
    QTest::addColumn<QString>("shippedFolder"); // relative to binFolder
    QTest::addColumn<bool>("programDirGiven"); // --program-dir chosen
    QTest::addColumn<QString>("programDir"); // relative to the test's directory

    const QString installedData = QStringLiteral(QUORVANE_DATA_FROM_EXECUTABLE);
    QTest::newRow("portable copy") << u"portable"_s << u"."_s << false << u"portable"_s;
    QTest::newRow("installed") << u"usr/bin"_s << installedData << false
                               << u"home/.local/share/quorvane"_s;
    QTest::newRow("installed, --program-dir")
        << u"usr/bin"_s << installedData << true << u"chosen"_s;
}

void TestCliInstalled::programDirectory()
{
    QFETCH(QString, binFolder);
    QFETCH(QString, shippedFolder);
    QFETCH(bool, programDirGiven);
    QFETCH(QString, programDir);
    const QString program = install(binFolder, shippedFolder);
    QVERIFY(!program.isEmpty());
    QStringList arguments { u"options"_s, u"--write"_s, u"--auto-close"_s, u"1"_s };
    if (programDirGiven) {
        QVERIFY(QDir().mkpath(m_root->filePath(u"chosen"_s)));
        arguments << u"--program-dir"_s << m_root->filePath(u"chosen"_s);
    }

    QCOMPARE(run(program, arguments), 0);

    const QDir chosen(m_root->filePath(programDir));
    QVERIFY(chosen.exists(u"options.ini"_s));
    const QString userDir = m_root->filePath(u"home/.local/share/quorvane"_s);
    QCOMPARE(QFileInfo::exists(userDir), programDir.startsWith(u"home/"_s));
    if (chosen.path() == userDir)
        QCOMPARE(readTestFile(chosen.filePath(u"pattern.ini"_s)), "pattern.ini as shipped\r\n");
}

QTEST_GUILESS_MAIN(TestCliInstalled)
#include "test_cliinstalled.moc"
