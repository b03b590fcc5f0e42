// The command line's prompt; see CliPrompt.h.
#include "cli/CliPrompt.h"

#include <ostream>

namespace lumora::cli {

std::string terminalText(const std::string& text) {
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n')
            continue;
        out += text[i];
    }
    return out;
}

// Questions are answered from --yes, never by a default a person would confirm with Enter.
Answer CliPrompt::message(const std::string& text, const std::string& title, Icon, Buttons buttons,
                          Answer) {
    ++shown_;
    out_ << (title.empty() ? "Lumora" : title) << ": " << terminalText(text) << '\n';
    if (buttons == Buttons::OK)
        return Answer::OK;
    out_ << (yes_ ? "(answered Yes)" : "(answered No; --yes answers Yes)") << '\n';
    return yes_ ? Answer::Yes : Answer::No;
}

std::optional<std::string> CliPrompt::input(const std::string&, const std::string&,
                                            const std::string&) {
    if (inputs_.empty())
        return std::nullopt;
    std::string text = inputs_.front();
    inputs_.pop_front();
    return text;
}

} // namespace lumora::cli
