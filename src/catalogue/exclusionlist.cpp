#include "exclusionlist.h"

#include "intfile.h"

#include "configfiles/fieldreader.h"
#include "configfiles/prompt.h"
#include "configfiles/runerror.h"

ExclusionList::ExclusionList(const QStringList &names)
{
    for (const QString &name : names) {
        const QString trimmed = name.trimmed();
        if (!trimmed.isEmpty())
            m_names.insert(trimmed.toLower());
    }
}

ExclusionList ExclusionList::load(const QString &path)
{
    QStringList lines;
    try {
        lines = ReadIntFile(path);
    } catch (const RunError &error) {
        showMessage(QStringLiteral("int.ini"),
            QStringLiteral("The list of game files to skip could not be read:\r\n") + path
                + QStringLiteral("\r\n") + error.description()
                + QStringLiteral("\r\n\r\nEvery .int file of the game will be scanned."),
            MessageButtons::Ok, MessageIcon::Exclamation);
        return {};
    }
    FieldReader reader(lines);
    QStringList names;
    while (!reader.atEnd())
        names.append(reader.readField());
    return ExclusionList(names);
}

bool ExclusionList::excludes(const QString &fileName) const
{
    return m_names.contains(fileName.toLower());
}
