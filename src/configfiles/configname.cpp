#include "configname.h"

namespace {

const QString Advice = QStringLiteral(" Type a bare name such as Bots.qvn.");

QString notAFileName(const QString &name, const QString &reason)
{
    return QLatin1Char('"') + name
        + QStringLiteral("\" is not a file name in the configuration "
                         "folder: ")
        + reason + QLatin1Char('.') + Advice;
}

// Windows opens the device for these names whatever extension follows, and
// ignores spaces before the extension ("nul .qvn" is the null device too).
QString deviceName(const QString &name)
{
    QString base = name.section(QLatin1Char('.'), 0, 0);
    while (base.endsWith(QLatin1Char(' ')))
        base.chop(1);
    base = base.toUpper();
    if (base == QLatin1String("CON") || base == QLatin1String("PRN") || base == QLatin1String("AUX")
        || base == QLatin1String("NUL"))
        return base;
    const bool numberedPort = base.size() == 4
        && (base.startsWith(QLatin1String("COM")) || base.startsWith(QLatin1String("LPT")))
        && (base.at(3).isDigit() || QStringLiteral("\u00B9\u00B2\u00B3").contains(base.at(3)));
    return numberedPort ? base : QString();
}

} // namespace

QString ConfigNameProblem(const QString &name)
{
    if (name.isEmpty())
        return QStringLiteral("The file name is empty.") + Advice;
    if (name == QLatin1String(".") || name == QLatin1String(".."))
        return notAFileName(name, QStringLiteral("it names a folder"));
    if (name.contains(QLatin1Char('/')) || name.contains(QLatin1Char('\\')))
        return notAFileName(name, QStringLiteral("it has a directory part"));
    for (const QChar c : name) {
        if (QStringLiteral("<>:\"|?*").contains(c))
            return notAFileName(name,
                QStringLiteral("it holds a character Windows does not allow in file names "
                               "(< > : \" | ? *)"));
        if (c.category() == QChar::Other_Control)
            return notAFileName(name,
                QStringLiteral("it holds a control character, such as a tab or a line break"));
    }
    if (name.endsWith(QLatin1Char(' ')))
        return notAFileName(name, QStringLiteral("it ends with a space, which Windows drops"));
    if (name.endsWith(QLatin1Char('.')))
        return notAFileName(name, QStringLiteral("it ends with a dot, which Windows drops"));
    const QString device = deviceName(name);
    if (!device.isEmpty())
        return notAFileName(name, device + QStringLiteral(" is a name Windows keeps for a device"));
    return {};
}
