#pragma once

#include "configfiles/prompt.h"

#include <QList>

#include <functional>

// Answers message boxes from a script and remembers every message asked, so
// that tests check titles and texts word for word. Installs itself for its
// lifetime. A message with no scripted answer gets Ok for an OK box and No
// or Cancel for a question.
class ScriptedPrompt final : public Prompt
{
public:
    ScriptedPrompt() { installPrompt(this); }
    ~ScriptedPrompt() override { installPrompt(nullptr); }

    void answerNext(MessageAnswer answer) { m_answers.append(answer); }
    MessageAnswer ask(const Message &message) override;

    const QList<Message> &messages() const { return m_messages; }
    // "title|text" of each message, the form tests compare against.
    QStringList transcript() const;

    // Runs as each message is shown, to see the state the user sees then.
    std::function<void()> whileAsking;

private:
    QList<MessageAnswer> m_answers;
    QList<Message> m_messages;
};
