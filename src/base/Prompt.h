// How the core talks to the author: messages and one-line questions. The desktop program
// answers with message boxes, the command line from its flags, tests from a script.
#pragma once

#include <optional>
#include <string>

namespace lumora {

enum class Icon { None, Critical, Question, Exclamation, Information };
enum class Buttons { OK, YesNo };
enum class Answer { OK, Yes, No };

// Line breaks inside message texts are CR LF.
inline constexpr const char* kCrLf = "\r\n";

class Prompt {
  public:
    virtual ~Prompt() = default;
    // An empty title means the program's own title ("Lumora"). `defaultButton` is the answer
    // Enter gives: OK, or for a question Yes, unless a stray Enter would lose the author's
    // work (the exit question defaults to No).
    virtual Answer message(const std::string& text, const std::string& title, Icon icon,
                           Buttons buttons, Answer defaultButton) = 0;
    Answer message(const std::string& text, const std::string& title, Icon icon, Buttons buttons) {
        return message(text, title, icon, buttons,
                       buttons == Buttons::YesNo ? Answer::Yes : Answer::OK);
    }
    // No value means the author cancelled.
    virtual std::optional<std::string> input(const std::string& prompt, const std::string& title,
                                             const std::string& defaultText) = 0;

    // Shorthands for the tool's two common shapes.
    void error(const std::string& text) { message(text, "Error", Icon::Critical, Buttons::OK); }
    bool ask(const std::string& text, const std::string& title, Icon icon,
             Answer defaultButton = Answer::Yes) {
        return message(text, title, icon, Buttons::YesNo, defaultButton) == Answer::Yes;
    }
};

} // namespace lumora
