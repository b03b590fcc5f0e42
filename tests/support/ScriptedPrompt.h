// A prompt that records every message and question and answers from a queue, so tests can
// check each text word for word. An empty queue answers No to a question, OK to a message and
// cancels an input.
#pragma once

#include "app/Services.h"
#include "base/Prompt.h"

#include <deque>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace lumora::testing {

struct ShownMessage {
    std::string text;
    std::string title;
    Icon icon;
    Buttons buttons;
    Answer defaultButton;
};

struct AskedInput {
    std::string prompt;
    std::string title;
    std::string defaultText;
};

class ScriptedPrompt : public Prompt {
  public:
    std::deque<Answer> answers;                    // for Yes/No messages
    std::deque<std::optional<std::string>> inputs; // for input boxes
    std::vector<ShownMessage> messages;
    std::vector<AskedInput> asked;

    using Prompt::message;
    Answer message(const std::string& text, const std::string& title, Icon icon, Buttons buttons,
                   Answer defaultButton) override {
        messages.push_back({text, title, icon, buttons, defaultButton});
        if (buttons == Buttons::OK)
            return Answer::OK;
        if (answers.empty())
            return Answer::No;
        Answer a = answers.front();
        answers.pop_front();
        return a;
    }

    std::optional<std::string> input(const std::string& prompt, const std::string& title,
                                     const std::string& defaultText) override {
        asked.push_back({prompt, title, defaultText});
        if (inputs.empty())
            return std::nullopt;
        auto a = inputs.front();
        inputs.pop_front();
        return a;
    }

    void answer(Answer a) { answers.push_back(a); }
    void type(std::optional<std::string> text) { inputs.push_back(std::move(text)); }
    const ShownMessage* last() const { return messages.empty() ? nullptr : &messages.back(); }
};

// Records the processes it was asked to start and answers with a fixed process id. It runs
// as process `self` on `host`; `running` are the other processes of that machine.
class FakeProcessStarter : public ProcessStarter {
  public:
    long pid = 4242;
    std::vector<std::string> started;
    long self = 100;
    std::string host = "this-computer";
    std::set<long> running;
    long start(const std::string& commandLine, bool) override {
        started.push_back(commandLine);
        return pid;
    }
    long currentProcessId() override { return self; }
    std::string hostName() override { return host; }
    bool isRunning(long id) override { return id == self || running.count(id) > 0; }
};

} // namespace lumora::testing
