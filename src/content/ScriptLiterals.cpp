// The check of texts against the string literals of the module scripts. It reads the literal as
// the browser's script parser reads a double-quoted string in a classic script.
#include "content/ScriptLiterals.h"

#include "base/TextUtil.h"
#include "content/Normalize.h"
#include "storage/ScriptText.h"

#include <cctype>

namespace lumora {
namespace {

bool hexDigits(std::string_view text, std::size_t from, std::size_t count) {
    if (from + count > text.size())
        return false;
    for (std::size_t i = from; i < from + count; ++i)
        if (!std::isxdigit(static_cast<unsigned char>(text[i])))
            return false;
    return true;
}

// The length of the escape sequence at `at` (a backslash), or 0 when it is not one.
std::size_t escapeLength(std::string_view literal, std::size_t at) {
    if (at + 1 >= literal.size())
        return 0; // it would escape the closing quote
    const char next = literal[at + 1];
    if (next == '\r' || next == '\n')
        return 0; // a continued line: the module's line reader would cut it
    if (next == 'x')
        return hexDigits(literal, at + 2, 2) ? 4 : 0;
    if (next != 'u')
        return 2;
    if (hexDigits(literal, at + 2, 4))
        return 6;
    // \u{...}: one or more hex digits in braces.
    const std::size_t close = literal.find('}', at + 3);
    if (at + 2 < literal.size() && literal[at + 2] == '{' && close != std::string_view::npos &&
        close > at + 3 && hexDigits(literal, at + 3, close - at - 3))
        return close - at + 1;
    return 0;
}

std::string numbered(const char* what, std::size_t index) {
    return std::string(what) + std::to_string(index + 1);
}

// The writer's test for an item it writes: text that is not blank and a first option with text.
bool written(const QAndAItem& item) {
    return !blankIfEmpty(item.questionText).empty() && !item.options.empty() &&
           !item.options.front().txtDisplay.empty();
}

} // namespace

bool breaksStringLiteral(std::string_view literal) {
    for (std::size_t i = 0; i < literal.size();) {
        const char c = literal[i];
        if (c == '"' || c == '\r' || c == '\n')
            return true;
        if (c != '\\') {
            ++i;
            continue;
        }
        const std::size_t length = escapeLength(literal, i);
        if (length == 0)
            return true;
        i += length;
    }
    return false;
}

std::vector<std::string> textsBreakingScripts(const CourseModule& module,
                                              const ContentPaths& paths) {
    std::vector<std::string> names;
    const auto check = [&names](const std::string& literal, std::string name) {
        if (breaksStringLiteral(literal))
            names.push_back(std::move(name));
    };
    check(escapeQuotes(module.modTitle), "Module Title");
    check(escapeQuotes(module.copyright), "Copyright");
    if (module.moduleType == kLesson) {
        for (std::size_t i = 0; i < module.pages.size(); ++i)
            check(escapeQuotes(module.pages[i].title), numbered("Page Title of page ", i));
        for (std::size_t i = 0; i < module.glossary.size(); ++i) {
            const GlossaryTerm& t = module.glossary[i];
            if (trimSpaces(t.term).empty() || trimSpaces(t.definition).empty())
                continue;
            check(escapeQuotes(t.term), numbered("Term ", i));
            check(escapeDefinition(t.definition), numbered("Definition of term ", i));
        }
    }
    const bool survey = module.moduleType == kSurvey;
    const char* item = module.moduleType == kLesson ? "Q&A item " : "question ";
    for (std::size_t i = 0; i < module.questions.size(); ++i) {
        const QAndAItem& q = module.questions[i];
        if (!written(q))
            continue;
        const std::string of = " of " + numbered(item, i);
        std::string name = numbered(item, i);
        name[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(name[0])));
        check(toScriptString(q.questionText, paths), name);
        for (std::size_t j = 0; j < q.options.size(); ++j) {
            const QuestionOption& o = q.options[j];
            if (o.txtDisplay.empty())
                continue;
            check(toScriptString(o.txtDisplay, paths), numbered("Option ", j) + of);
            if (module.moduleType == kEvaluation)
                check(toScriptString(o.incorrectRationale, paths),
                      numbered("Feedback of option ", j) + of);
        }
        if (!survey)
            check(toScriptString(q.rationale, paths), "Rationale" + of);
    }
    return names;
}

void warnAboutBreakingTexts(const CourseModule& module, const ContentPaths& paths, Prompt& prompt) {
    const std::vector<std::string> names = textsBreakingScripts(module, paths);
    if (names.empty())
        return;
    std::string text = "The module was saved, but these texts will stop it from running in a "
                       "browser:";
    for (const std::string& name : names)
        text += kCrLf + std::string("     ") + name;
    text += kCrLf + std::string("Please change a backslash before a quote or at the end of a "
                                "text, a \\u or \\x not followed by its hex digits, and line "
                                "breaks in a one-line text.");
    prompt.message(text, "Warning", Icon::Exclamation, Buttons::OK);
}

} // namespace lumora
