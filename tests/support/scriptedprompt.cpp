#include "scriptedprompt.h"

MessageAnswer ScriptedPrompt::ask(const Message &message)
{
    m_messages.append(message);
    if (whileAsking)
        whileAsking();
    if (!m_answers.isEmpty())
        return m_answers.takeFirst();
    return SafeAnswer(message.buttons);
}

QStringList ScriptedPrompt::transcript() const
{
    QStringList lines;
    for (const Message &message : m_messages)
        lines.append(message.title + QLatin1Char('|') + message.text);
    return lines;
}
