#include "scriptedprompt.h"

ScriptedPrompt::ScriptedPrompt()
{
    installPrompt(this);
}

ScriptedPrompt::~ScriptedPrompt()
{
    installPrompt(nullptr);
}

MessageAnswer ScriptedPrompt::ask(const Message &message)
{
    m_messages.append(message);
    if (!m_answers.isEmpty())
        return m_answers.takeFirst();
    switch (message.buttons) {
    case MessageButtons::Ok: return MessageAnswer::Ok;
    case MessageButtons::YesNo: return MessageAnswer::No;
    case MessageButtons::YesNoCancel: return MessageAnswer::Cancel;
    }
    return MessageAnswer::Ok;
}

QStringList ScriptedPrompt::transcript() const
{
    QStringList lines;
    for (const Message &message : m_messages)
        lines.append(message.title + QLatin1Char('|') + message.text);
    return lines;
}
