#pragma once

#include "configfiles/prompt.h"

// Shows the logic's messages as message boxes over the active window.
class MessageBoxPrompt final : public Prompt
{
public:
    MessageAnswer ask(const Message &message) override;
};
