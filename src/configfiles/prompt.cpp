#include "prompt.h"

#include <cstdio>

namespace {

class StderrPrompt final : public Prompt
{
public:
    MessageAnswer ask(const Message &message) override
    {
        const QByteArray line = (message.title + QStringLiteral(": ") + message.text).toLocal8Bit();
        std::fprintf(stderr, "%s\n", line.constData());
        return SafeAnswer(message.buttons);
    }
};

StderrPrompt defaultPrompt;
Prompt *installed = nullptr;

} // namespace

MessageAnswer SafeAnswer(MessageButtons buttons)
{
    switch (buttons) {
    case MessageButtons::Ok: return MessageAnswer::Ok;
    case MessageButtons::YesNo: return MessageAnswer::No;
    case MessageButtons::YesNoCancel: return MessageAnswer::Cancel;
    }
    return MessageAnswer::Ok;
}

Prompt &currentPrompt()
{
    return installed ? *installed : defaultPrompt;
}

void installPrompt(Prompt *prompt)
{
    installed = prompt;
}

MessageAnswer showMessage(const QString &title, const QString &text, MessageButtons buttons,
                          MessageIcon icon)
{
    return showMessage(Message{title, text, buttons, icon});
}

MessageAnswer showMessage(const Message &message)
{
    return currentPrompt().ask(message);
}
