#pragma once

// For the GUI tests only: they link Qt Widgets, the rest of the support
// library does not, so this stays in the header.

#include <QApplication>
#include <QDialog>
#include <QTimer>

#include <functional>

// Plays the user's part in the modal dialogs a command opens. Each step acts
// on the modal dialog in front when its turn comes: a dialog that stays open
// after a step (a refused name) meets the next step. A dialog that appears
// when no step is left is cancelled, so a test never hangs, and noted.
class DialogScript : public QObject
{
public:
    DialogScript()
    {
        connect(&m_timer, &QTimer::timeout, this, &DialogScript::look);
        m_timer.start(5);
    }

    template<typename Dialog> DialogScript &then(std::function<void(Dialog &)> step)
    {
        m_steps.append([step](QDialog *shown) {
            auto *dialog = qobject_cast<Dialog *>(shown);
            if (dialog)
                step(*dialog);
            return dialog != nullptr;
        });
        return *this;
    }

    // The object name of each dialog a step acted on, in order, with
    // "unexpected:" before those cancelled for want of a step.
    QStringList seen;

    // Every step met its dialog and no other dialog came up.
    bool playedOut() const { return m_steps.isEmpty() && !seen.join(',').contains("unexpected:"); }

private:
    void look()
    {
        auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (!dialog || !dialog->isVisible())
            return;
        if (m_steps.isEmpty() || !m_steps.constFirst()(dialog)) {
            seen.append("unexpected:" + dialog->objectName());
            dialog->reject();
            return;
        }
        seen.append(dialog->objectName());
        m_steps.removeFirst();
    }

    QTimer m_timer;
    QList<std::function<bool(QDialog *)>> m_steps;
};
