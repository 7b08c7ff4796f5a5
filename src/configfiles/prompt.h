#pragma once

#include <QString>

// The one way the logic talks to the user: message boxes with a title, a
// text and a set of buttons. The window program shows real message boxes,
// the command line prints them, tests script the answers and check the words.

enum class MessageButtons { Ok, YesNo, YesNoCancel };
enum class MessageIcon { None, Information, Question, Exclamation, Critical };
enum class MessageAnswer { Ok, Yes, No, Cancel };

// Which button Enter presses: the first (OK, or Yes), or No for a question
// whose Yes deletes something, so that a stray key deletes nothing.
enum class MessageDefault { First, No };

struct Message
{
    QString title;
    QString text;
    MessageButtons buttons = MessageButtons::Ok;
    MessageIcon icon = MessageIcon::None;
    MessageDefault defaultButton = MessageDefault::First;
};

class Prompt
{
public:
    virtual ~Prompt() = default;
    virtual MessageAnswer ask(const Message &message) = 0;
};

// The answer that changes nothing: OK for a message, No for a question,
// Cancel where there is one. A prompt that cannot ask gives it.
MessageAnswer SafeAnswer(MessageButtons buttons);

// Gives every message its safe answer and shows nothing: for runs that
// meet millions of messages, such as fuzzing and benchmarks.
class SilentPrompt final : public Prompt
{
public:
    MessageAnswer ask(const Message &message) override { return SafeAnswer(message.buttons); }
};

// The prompt in use. Until one is installed, messages go to stderr as
// "title: text" and every question is answered with its safe choice
// (No, or Cancel where there is one).
Prompt &currentPrompt();
// Installs `prompt` for the whole process; nullptr restores the default.
void installPrompt(Prompt *prompt);

MessageAnswer showMessage(const QString &title, const QString &text,
    MessageButtons buttons = MessageButtons::Ok, MessageIcon icon = MessageIcon::None);
MessageAnswer showMessage(const Message &message);
