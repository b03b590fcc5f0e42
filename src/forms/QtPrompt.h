// The desktop program's prompt: messages as message boxes and one-line questions as input
// dialogs, each with the title, icon and buttons the caller asked for.
#pragma once

#include "base/Prompt.h"

#include <QString>

namespace lumora {

class QtPrompt : public Prompt {
  public:
    using Prompt::message;
    Answer message(const std::string& text, const std::string& title, Icon icon, Buttons buttons,
                   Answer defaultButton) override;
    std::optional<std::string> input(const std::string& prompt, const std::string& title,
                                     const std::string& defaultText) override;
};

// Message texts join their lines with CR LF; a message box wants plain line feeds.
QString messageText(const std::string& text);
// An empty title means the program's own.
QString messageTitle(const std::string& title);

} // namespace lumora
