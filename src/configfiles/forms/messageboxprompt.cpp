#include "messageboxprompt.h"

#include <QApplication>
#include <QMessageBox>

namespace {

QMessageBox::Icon boxIcon(MessageIcon icon)
{
    switch (icon) {
    case MessageIcon::None:
        return QMessageBox::NoIcon;
    case MessageIcon::Information:
        return QMessageBox::Information;
    case MessageIcon::Question:
        return QMessageBox::Question;
    case MessageIcon::Exclamation:
        return QMessageBox::Warning;
    case MessageIcon::Critical:
        return QMessageBox::Critical;
    }
    return QMessageBox::NoIcon;
}

QMessageBox::StandardButtons boxButtons(MessageButtons buttons)
{
    switch (buttons) {
    case MessageButtons::Ok:
        return QMessageBox::Ok;
    case MessageButtons::YesNo:
        return QMessageBox::Yes | QMessageBox::No;
    case MessageButtons::YesNoCancel:
        return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    }
    return QMessageBox::Ok;
}

// Closing a question box without choosing counts as its safe answer.
MessageAnswer answerFor(int button, MessageButtons buttons)
{
    switch (button) {
    case QMessageBox::Ok:
        return MessageAnswer::Ok;
    case QMessageBox::Yes:
        return MessageAnswer::Yes;
    case QMessageBox::No:
        return MessageAnswer::No;
    case QMessageBox::Cancel:
        return MessageAnswer::Cancel;
    }
    return SafeAnswer(buttons);
}

} // namespace

MessageAnswer MessageBoxPrompt::ask(const Message &message)
{
    // Message texts keep the Windows line ends of the files they quote.
    QString text = message.text;
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));

    QMessageBox box(boxIcon(message.icon), message.title, text, boxButtons(message.buttons),
        QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText);
    if (message.buttons == MessageButtons::Ok)
        box.setDefaultButton(QMessageBox::Ok);
    else
        box.setDefaultButton(
            message.defaultButton == MessageDefault::No ? QMessageBox::No : QMessageBox::Yes);
    return answerFor(box.exec(), message.buttons);
}
