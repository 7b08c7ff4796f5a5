#include "openatstart.h"

#include "configfiles/configfile.h"
#include "configfiles/configname.h"
#include "configfiles/fileops.h"
#include "configfiles/forms/formregistry.h"
#include "configfiles/prompt.h"
#include "configfiles/runerror.h"
#include "configfiles/textfile.h"
#include "frmBots.h"

#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QScopedValueRollback>

namespace {

bool inConfigurationFolder(const QFileInfo &file)
{
    const QString folder = AppOptions().ConfigPath;
    return !folder.isEmpty() && QFileInfo(file.absolutePath()) == QFileInfo(folder);
}

void reportNotOpened(const QString &name, const RunError &error)
{
    showMessage(QStringLiteral("Configuration Not Opened"),
        QStringLiteral("The configuration ") + name
            + QStringLiteral(" could not be opened; nothing was changed.\r\n") + error.message(),
        MessageButtons::Ok, MessageIcon::Exclamation);
}

// Copies `file` into the configuration folder under its own name, asking
// first, and before replacing another file of that name. Returns whether
// the folder now holds the same bytes under that name.
bool copyIntoConfigurationFolder(const QFileInfo &file)
{
    const QString folder = AppOptions().ConfigPath;
    const QString name = file.fileName();
    const QString source = QDir::toNativeSeparators(file.absoluteFilePath());
    if (showMessage(QStringLiteral("Copy Configuration"),
            source + QStringLiteral(" is not in the configuration folder ") + folder
                + QStringLiteral(".\r\n\r\nCopy it there and open the copy?"),
            MessageButtons::YesNo, MessageIcon::Question)
        != MessageAnswer::Yes)
        return false;
    if (const QString problem = ConfigNameProblem(name); !problem.isEmpty()) {
        showMessage(
            InvalidConfigNameTitle(), problem, MessageButtons::Ok, MessageIcon::Exclamation);
        return false;
    }

    const QString target = folder + name;
    try {
        const QByteArray bytes = readFileBytes(file.absoluteFilePath(), MaxProgramFileBytes);
        if (QFileInfo::exists(target)) {
            QByteArray existing;
            try {
                existing = readFileBytes(target, MaxProgramFileBytes);
            } catch (const RunError &) {
                // Not a configuration we could keep: asked about all the same.
            }
            if (existing == bytes)
                return true;
            Message replace { QStringLiteral("File Already Exists"),
                QStringLiteral("The configuration folder already holds a file named ") + name
                    + QStringLiteral(".\r\n\r\nReplace it with ") + source + QLatin1Char('?'),
                MessageButtons::YesNo, MessageIcon::Question, MessageDefault::No };
            if (showMessage(replace) != MessageAnswer::Yes)
                return false;
        }
        writeFileAtomically(target, bytes);
    } catch (const RunError &error) {
        showMessage(QStringLiteral("Configuration Not Copied"),
            source + QStringLiteral(" could not be copied into the configuration folder ") + folder
                + QStringLiteral("; nothing was changed.\r\n") + error.message(),
            MessageButtons::Ok, MessageIcon::Exclamation);
        return false;
    }
    return true;
}

} // namespace

bool OpenConfigurationFile(const QString &path)
{
    if (!isFormLoaded<frmBots>())
        return false;
    frmBots &form = theForm<frmBots>();
    const QFileInfo file(path);
    const QString name = file.fileName();

    // A file that cannot be read is reported before anything is asked.
    BotRoster opened;
    try {
        OpenConfiguration(
            AddBackslash(QDir::toNativeSeparators(file.absolutePath())), name, opened);
    } catch (const RunError &error) {
        reportNotOpened(name, error);
        return false;
    }
    if (!form.AskToSaveBeforeOpening())
        return false;
    QString folder = AddBackslash(QDir::toNativeSeparators(file.absolutePath()));
    if (!inConfigurationFolder(file)) {
        if (!copyIntoConfigurationFolder(file))
            return false;
        folder = AppOptions().ConfigPath;
    }

    Roster() = opened;
    form.EnableAll(true);
    {
        const QScopedValueRollback loading(form.bLoadingConfig, true);
        form.cmbBot->setCurrentIndex(0);
        {
            const QScopedValueRollback refreshing(form.bRefreshing, true);
            form.PositionSlot();
            form.OtherData(form.CurrentSlot());
        }
        form.GetBotConfigSettings();
        form.setCurrentFile(name);
        form.LoadedFunc();
    }
    form.ResetHistory();
    form.RememberRecentFile(folder + name);
    return true;
}
