#include "windowtools.h"

#include "configfiles/progress.h"
#include "startup/programdirectory.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDesktopServices>
#include <QDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QUrl>
#include <QWidget>

namespace {

const char CloseGuardName[] = "closeGuard";

// Spontaneous close events come from the window system; the program's own
// close() and QDialog::done() send non-spontaneous ones, which pass.
class CloseGuard final : public QObject
{
public:
    explicit CloseGuard(QWidget *window)
        : QObject(window)
    {
        setObjectName(QLatin1String(CloseGuardName));
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Close && event->spontaneous()) {
            event->ignore();
            return true;
        }
        if (event->type() == QEvent::KeyPress && qobject_cast<QDialog *>(watched)) {
            const auto *key = static_cast<QKeyEvent *>(event);
            if (key->key() == Qt::Key_Escape && key->modifiers() == Qt::NoModifier)
                return true;
        }
        return false;
    }
};

} // namespace

QLabel *namedLabel(QWidget *parent, const char *name, const QString &caption)
{
    auto *label = new QLabel(caption, parent);
    label->setObjectName(QString::fromLatin1(name));
    return label;
}

QLabel *wrappedLabel(QWidget *parent, const char *name, const QString &caption)
{
    QLabel *label = namedLabel(parent, name, caption);
    label->setWordWrap(true);
    return label;
}

void RemoveCloseMenu(QWidget *window)
{
    if (!window
        || window->findChild<QObject *>(QLatin1String(CloseGuardName), Qt::FindDirectChildrenOnly))
        return;
    window->installEventFilter(new CloseGuard(window));

    const bool wasVisible = window->isVisible();
    Qt::WindowFlags flags = window->windowFlags();
    if (!(flags & Qt::CustomizeWindowHint))
        flags |= Qt::WindowTitleHint | Qt::WindowSystemMenuHint;
    flags |= Qt::CustomizeWindowHint;
    flags &= ~Qt::WindowCloseButtonHint;
    window->setWindowFlags(flags);
    if (wasVisible)
        window->show();
}

bool PerformShellAction(const QString &document)
{
    return QDesktopServices::openUrl(QUrl::fromUserInput(document));
}

bool OpenUserGuide(const QString &section)
{
    QUrl guide = QUrl::fromLocalFile(UserGuideFile());
    if (!section.isEmpty())
        guide.setFragment(section);
    return QDesktopServices::openUrl(guide);
}

QString captionText(const QString &caption)
{
    QString text = caption;
    return text.replace(QStringLiteral("&&"), QStringLiteral("&"));
}

void installWidgetEventLoopHook()
{
    setEventLoopHook([] { QCoreApplication::processEvents(QEventLoop::AllEvents, 10); });
}

BusyPointer::BusyPointer()
{
    QApplication::setOverrideCursor(Qt::WaitCursor);
}

BusyPointer::~BusyPointer()
{
    QApplication::restoreOverrideCursor();
}
