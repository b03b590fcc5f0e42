// Reads a module back from the very script lines the writer writes. Nothing is parsed as
// script: a line is recognised by a fixed prefix it contains, and its value is what remains once
// the prefix is removed and the closing characters are cut. Damaged lines are ignored where
// the line has nowhere to go (a value before its item), never trusted to index anything.
#include "storage/ModuleLoader.h"

#include "base/TextUtil.h"
#include "storage/PageFiles.h"
#include "storage/Paths.h"
#include "storage/ScriptText.h"
#include "storage/TextFile.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace lumora {

namespace {

// Puts a freshly read element at the position its counter names. Lists start with one
// placeholder, so the first element read replaces it and later ones extend the list.
template <typename T> T& placeAt(std::vector<T>& list, std::size_t position, T element) {
    list.resize(position + 1);
    list[position] = std::move(element);
    return list[position];
}

// The prefixes of the question file; activities (Lesson) and questions (Evaluation, Survey)
// differ only in their names.
struct QuestionPrefixes {
    std::string self; // every prefix below holds it
    std::string newItem;
    std::string question;
    std::string addOption;
    std::string txtValue;
    std::string txtDisplay;
    std::string incorrectRationale;
    std::string rationale;
};

QuestionPrefixes questionPrefixes(bool lesson) {
    const std::string self = lesson ? "arrActObjects[ActID]" : "arrQuestions[EvalID]";
    const std::string option =
        self + (lesson ? ".actDistractors[thisOpt]" : ".evalDistractors[thisOpt]");
    QuestionPrefixes p;
    p.self = self;
    p.newItem =
        self + (lesson ? " = new objActQuestion(thisID, \"" : " = new objEvalQuestion(thisID, \"");
    p.question = self + (lesson ? ".actQuestion = \"" : ".evalQuestion = \"");
    p.addOption = self + ".addDistractor(";
    p.txtValue = option + ".txtValue = \"";
    p.txtDisplay = option + ".txtDisplay = \"";
    p.incorrectRationale = option + ".incorrectRationale = \"";
    p.rationale = self + (lesson ? ".actRationale = \"" : ".evalRationale = \"");
    return p;
}

constexpr std::string_view kShuffleOptions = "].shuffleDistractors();";

// A script file's lines as readTextLines gives them (CR LF or LF; a final line break starts no
// further line), viewed in place: only the few lines that hold a value are ever copied.
class Lines {
  public:
    explicit Lines(const std::string& path) : bytes_(readFileBytes(path)) {
        text_ = decodedView(bytes_);
    }
    Lines(const Lines&) = delete; // the view points into this object's own bytes
    Lines& operator=(const Lines&) = delete;

    bool atEnd() const { return pos_ >= text_.size(); }

    std::string_view take() {
        const std::size_t lf = text_.find('\n', pos_);
        std::size_t end = lf == std::string_view::npos ? text_.size() : lf;
        if (lf != std::string_view::npos && end > pos_ && text_[end - 1] == '\r')
            --end;
        const std::string_view line = text_.substr(pos_, end - pos_);
        pos_ = lf == std::string_view::npos ? text_.size() : lf + 1;
        return line;
    }

  private:
    std::string bytes_;
    std::string_view text_;
    std::size_t pos_ = 0;
};

// ExtractValue for a line viewed in place; a line without the prefix has no value.
std::string valueAfter(std::string_view line, const std::string& prefix, std::size_t cut) {
    if (!contains(line, prefix))
        return {};
    return ExtractValue(std::string(line), prefix, cut);
}

void loadGlossary(CourseModule& module, const std::string& path, const ContentPaths& paths) {
    static const std::string kNewTerm = "arrDefObjects[TermID] = new objGlossary(TermID);";
    static const std::string kTerm = "arrDefObjects[TermID].term = \"";
    static const std::string kDefinition = "arrDefObjects[TermID].definition = \"";

    // Terms read so far; values go to the last one, and have nowhere to go before the first.
    std::size_t terms = 0;
    for (Lines lines(path); !lines.atEnd();) {
        const std::string_view line = lines.take();
        if (contains(line, kNewTerm)) {
            GlossaryTerm term;
            term.id = std::to_string(terms);
            placeAt(module.glossary, terms++, std::move(term));
        }
        if (contains(line, kTerm)) {
            std::string value = valueAfter(line, kTerm, 2);
            if (!value.empty() && terms > 0)
                module.glossary[terms - 1].term = unescapeQuotes(value);
        }
        if (contains(line, kDefinition)) {
            std::string value = valueAfter(line, kDefinition, 2);
            if (!value.empty() && terms > 0)
                module.glossary[terms - 1].definition = fromScriptString(value, paths);
        }
    }
}

bool loadQuestions(CourseModule& module, const std::string& path, const ContentPaths& paths) {
    const bool lesson = module.moduleType == kLesson;
    const bool evaluation = module.moduleType == kEvaluation;
    const bool survey = module.moduleType == kSurvey;
    const QuestionPrefixes p = questionPrefixes(lesson);

    bool questionTextRead = false;
    // Items read so far and options read for the last item: values go to the last of each,
    // and a value read before its item or option has nowhere to go.
    std::size_t items = 0;
    std::size_t options = 0;

    // Stores a value of the current option, when the line has one and there is an option.
    const auto setOption = [&](std::string_view line, const std::string& prefix,
                               std::string QuestionOption::*field) {
        if (!contains(line, prefix))
            return;
        std::string value = valueAfter(line, prefix, 2);
        if (!value.empty() && items > 0 && options > 0)
            module.questions[items - 1].options[options - 1].*field =
                fromScriptString(value, paths);
    };
    const auto setItem = [&](std::string_view line, const std::string& prefix,
                             std::string QAndAItem::*field) -> bool {
        if (!contains(line, prefix))
            return false;
        std::string value = valueAfter(line, prefix, 2);
        if (value.empty() || items == 0)
            return false;
        module.questions[items - 1].*field = fromScriptString(value, paths);
        return true;
    };

    // Tests 1 to 7, in order, on a line that names the item.
    const auto readItemLine = [&](std::string_view line) {
        if (contains(line, p.newItem)) {
            QAndAItem fresh;
            fresh.questionType = valueAfter(line, p.newItem, 3);
            fresh.id = std::to_string(items + 1);
            fresh.shuffleDistractors = "false";
            fresh.options.resize(1); // the never-empty placeholder; the first option replaces it
            placeAt(module.questions, items++, std::move(fresh));
            options = 0;
        }
        if (setItem(line, p.question, &QAndAItem::questionText))
            questionTextRead = true;
        if (contains(line, p.addOption)) {
            std::string value = valueAfter(line, p.addOption, 2);
            if (!value.empty() && items > 0) {
                QuestionOption fresh;
                fresh.correct = std::move(value);
                placeAt(module.questions[items - 1].options, options++, std::move(fresh));
            }
        }
        setOption(line, p.txtValue, &QuestionOption::txtValue);
        setOption(line, p.txtDisplay, &QuestionOption::txtDisplay);
        if (evaluation)
            setOption(line, p.incorrectRationale, &QuestionOption::incorrectRationale);
        if (!survey)
            setItem(line, p.rationale, &QAndAItem::rationale);
    };

    for (Lines lines(path); !lines.atEnd();) {
        const std::string_view line = lines.take();
        // Most lines of a question file name the item; the others can only be the shuffle call.
        if (contains(line, p.self))
            readItemLine(line);
        if (items > 0 && contains(line, kShuffleOptions))
            module.questions[items - 1].shuffleDistractors = "true";
    }
    return questionTextRead;
}

// A 16-bit count as the files have always held it: optional blanks and sign around decimal
// digits, within the 16-bit range. Anything else is not a number to this loader.
std::optional<std::int16_t> toInt16(const std::string& text) {
    const std::string t = trimSpaces(text);
    std::size_t i = 0;
    bool negative = false;
    if (i < t.size() && (t[i] == '-' || t[i] == '+'))
        negative = t[i++] == '-';
    if (i == t.size())
        return std::nullopt;
    long value = 0;
    for (; i < t.size(); ++i) {
        if (t[i] < '0' || t[i] > '9')
            return std::nullopt;
        value = value * 10 + (t[i] - '0');
        if (value > 32768)
            return std::nullopt;
    }
    if (negative)
        value = -value;
    if (value > INT16_MAX)
        return std::nullopt;
    return static_cast<std::int16_t>(value);
}

// The module information file, read forward: each step takes lines until its own line with a
// value turns up, so the steps must find their lines in the order the writer writes them.
class ForwardReader {
  public:
    explicit ForwardReader(const std::string& path) : lines_(path) {}

    bool atEnd() const { return lines_.atEnd(); }
    std::string_view take() { return lines_.take(); }

    // The first non-empty value of a line with the prefix; "" when the rest of the file has none.
    std::string valueOf(const std::string& prefix, std::size_t cut) {
        while (!atEnd()) {
            std::string value = valueAfter(take(), prefix, cut);
            if (!value.empty())
                return value;
        }
        return {};
    }

  private:
    Lines lines_;
};

void loadModuleInfo(CourseModule& module, const std::string& path, const ContentPaths& paths) {
    static const std::string kTitle = "var modTitle = \"";
    static const std::string kCopyright = "var copyright = \"";
    static const std::string kUseScorm = "var useSCORM = ";
    static const std::string kAddPage = "objLessonModule.addPage(objLessonModule.pages.length, \"";
    static const std::string kShuffleQuestions = "var shuffleEvalQuestions = ";
    static const std::string kNumQuestions = "var intNumQuestions = ";

    ForwardReader in(path);
    // Unescaped twice, as the files have always been read: a backslash written directly
    // before a quote does not survive a reload.
    module.modTitle = unescapeQuotes(unescapeQuotes(in.valueOf(kTitle, 2)));
    module.copyright = unescapeQuotes(unescapeQuotes(in.valueOf(kCopyright, 2)));

    // A module without the line predates the switch and talks to an LMS; a file that ended
    // before this step leaves the switch empty.
    module.useSCORM.clear();
    while (!in.atEnd()) {
        const std::string_view line = in.take();
        if (!contains(line, kUseScorm)) {
            module.useSCORM = "true";
            continue;
        }
        std::string value = valueAfter(line, kUseScorm, 1);
        if (!value.empty()) {
            module.useSCORM = std::move(value);
            break;
        }
    }

    if (module.moduleType == kLesson) {
        std::size_t count = 0;
        while (!in.atEnd()) {
            const std::string_view line = in.take();
            if (!contains(line, kAddPage))
                continue;
            LessonPage page;
            page.title = fromScriptString(valueAfter(line, kAddPage, 3), paths);
            page.fileName = pageFileName(count);
            placeAt(module.pages, count, std::move(page));
            LoadPageContent(module, count, paths);
            ++count;
        }
        module.pageFileCount = count;
    } else if (module.moduleType == kEvaluation) {
        std::string shuffle = in.valueOf(kShuffleQuestions, 1);
        if (!shuffle.empty())
            module.shuffleEvalQuestions = std::move(shuffle);
        while (!in.atEnd()) {
            const std::string_view line = in.take();
            if (!contains(line, kNumQuestions))
                continue;
            // A count that is not a 16-bit number is passed over like a line without one.
            if (std::optional<std::int16_t> n = toInt16(valueAfter(line, kNumQuestions, 1))) {
                module.intNumQuestions = *n;
                break;
            }
        }
    }
}

} // namespace

LoadOutcome LoadModuleFiles(CourseModule& module, const ContentPaths& paths) {
    const std::string scripts = joinPath(module.ModuleFolder, "scripts");
    LoadOutcome outcome;
    if (module.moduleType == kLesson) {
        module.shuffleEvalQuestions = "false";
        loadGlossary(module, joinPath(scripts, "inc_Glossary.js"), paths);
        outcome.questionTextRead = loadQuestions(module, joinPath(scripts, "inc_QAndA.js"), paths);
        loadModuleInfo(module, joinPath(scripts, "inc_ModuleInfo.js"), paths);
    } else if (module.moduleType == kEvaluation) {
        const std::string file = joinPath(scripts, "inc_Questions.js");
        outcome.questionTextRead = loadQuestions(module, file, paths);
        loadModuleInfo(module, file, paths);
    } else if (module.moduleType == kSurvey) {
        module.shuffleEvalQuestions = "false";
        const std::string file = joinPath(scripts, "inc_Objectives.js");
        outcome.questionTextRead = loadQuestions(module, file, paths);
        loadModuleInfo(module, file, paths);
    }
    return outcome;
}

} // namespace lumora
