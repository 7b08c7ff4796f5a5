#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

// The .int files the scan leaves alone (the game's own files that declare no
// player content), named in int.ini beside the program, compared without
// regard to case.
class ExclusionList
{
public:
    ExclusionList() = default;
    explicit ExclusionList(const QStringList &names);

    // Reads the comma-and-line separated names of the file at `path`. A file
    // that is missing or cannot be read is said once through the prompt and
    // lists nothing, so that every file gets scanned.
    static ExclusionList load(const QString &path);

    bool excludes(const QString &fileName) const;
    qsizetype size() const { return m_names.size(); }

private:
    QSet<QString> m_names; // lower case
};
