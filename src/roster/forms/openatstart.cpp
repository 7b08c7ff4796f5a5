#include "openatstart.h"

#include "configfiles/configfile.h"
#include "configfiles/fileops.h"
#include "configfiles/forms/formregistry.h"
#include "configfiles/prompt.h"
#include "configfiles/runerror.h"
#include "frmBots.h"

#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QScopedValueRollback>

void OpenConfigurationAtStart(const QString &path)
{
    if (!isFormLoaded<frmBots>())
        return;
    frmBots &form = theForm<frmBots>();
    const QFileInfo file(path);
    try {
        OpenConfiguration(
            AddBackslash(QDir::toNativeSeparators(file.absolutePath())), file.fileName());
    } catch (const RunError &error) {
        showMessage(QStringLiteral("Configuration Not Opened"),
            QStringLiteral("The configuration ") + file.fileName()
                + QStringLiteral(" could not be opened; nothing was changed.\r\n")
                + error.message(),
            MessageButtons::Ok, MessageIcon::Exclamation);
        return;
    }
    form.EnableAll(true);
    const QScopedValueRollback loading(form.bLoadingConfig, true);
    form.cmbBot->setCurrentIndex(0);
    {
        const QScopedValueRollback refreshing(form.bRefreshing, true);
        form.PositionSlot();
        form.OtherData(form.CurrentSlot());
    }
    form.GetBotConfigSettings();
    form.setCurrentFile(file.fileName());
    form.LoadedFunc();
}
