// The prompt of the command line: messages go to stderr as "title: text", questions are
// answered from --yes, and the one input box a command needs is answered from its argument.
#pragma once

#include "base/Prompt.h"

#include <deque>
#include <iosfwd>

namespace lumora::cli {

class CliPrompt : public Prompt {
  public:
    explicit CliPrompt(std::ostream& out, bool yes = false) : out_(out), yes_(yes) {}

    using Prompt::message;
    Answer message(const std::string& text, const std::string& title, Icon icon, Buttons buttons,
                   Answer defaultButton) override;
    // Answers with the queued texts in turn, then cancels: a refused name is not asked again
    // forever, the command ends instead.
    std::optional<std::string> input(const std::string& prompt, const std::string& title,
                                     const std::string& defaultText) override;

    void queueInput(std::string text) { inputs_.push_back(std::move(text)); }
    void setYes(bool yes) { yes_ = yes; }
    int messagesShown() const { return shown_; }

  private:
    std::ostream& out_;
    bool yes_;
    int shown_ = 0;
    std::deque<std::string> inputs_;
};

// CR LF inside a message becomes a plain line break on the terminal.
std::string terminalText(const std::string& text);

} // namespace lumora::cli
