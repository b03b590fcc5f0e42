// The module scripts as the player runs them: one statement per line, each line ended by
// CR LF. These lines are also the grammar the loader reads back, so they are written exactly,
// including the empty lines some blocks end with.
#include "storage/ModuleWriter.h"

#include "base/TextUtil.h"
#include "content/Normalize.h"
#include "storage/PageFiles.h"
#include "storage/Paths.h"
#include "storage/ScriptText.h"
#include "storage/TextFile.h"
#include "storage/UnchangedFiles.h"

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace lumora {

namespace {

void commitIfChanged(const SafeTextWriter& out) {
    writeFileIfChanged(out.path(), out.contents());
}

std::string scriptPath(const CourseModule& module, const char* name) {
    return joinPath(joinPath(module.ModuleFolder, "scripts"), name);
}

// The member names that differ between a Lesson's activities and an Evaluation's or a
// Survey's questions; the statements around them are the same.
struct ItemNames {
    std::string_view idVar;      // "ActID" / "EvalID"
    std::string_view array;      // "arrActObjects" / "arrQuestions"
    std::string_view objectType; // "objActQuestion" / "objEvalQuestion"
    std::string_view question;   // "actQuestion" / "evalQuestion"
    std::string_view options;    // "actDistractors" / "evalDistractors"
    std::string_view rationale;  // "actRationale" / "evalRationale"
};

constexpr ItemNames kActivityNames{"ActID",       "arrActObjects",  "objActQuestion",
                                   "actQuestion", "actDistractors", "actRationale"};
constexpr ItemNames kQuestionNames{"EvalID",       "arrQuestions",    "objEvalQuestion",
                                   "evalQuestion", "evalDistractors", "evalRationale"};

enum class ItemKind { Activity, Evaluation, Survey };

std::string member(const ItemNames& n) {
    return std::string(n.array) + "[" + std::string(n.idVar) + "]";
}

// The item test every writer shares: the text made blank when it only looks blank, and an
// item without text or without a first option is left out of the file (it stays in memory).
bool prepareItem(QAndAItem& item) {
    item.questionText = blankIfEmpty(item.questionText);
    return !item.questionText.empty() && !item.options.empty() &&
           !item.options.front().txtDisplay.empty();
}

void writeItem(SafeTextWriter& out, QAndAItem& item, ItemKind kind, const ContentPaths& paths) {
    const ItemNames& n = kind == ItemKind::Activity ? kActivityNames : kQuestionNames;
    if (!prepareItem(item))
        return;
    const std::string self = member(n);
    const std::string id(n.idVar);
    const std::string array(n.array);
    out.WriteLine(id + " = " + array + ".length;");
    out.WriteLine("thisID = " + id + "+1;");
    out.WriteLine(self + " = new " + std::string(n.objectType) + "(thisID, \"" + item.questionType +
                  "\");");
    out.WriteLine(self + "." + std::string(n.question) + " = \"" +
                  toScriptString(item.questionText, paths) + "\";");

    const std::string option = self + "." + std::string(n.options) + "[thisOpt]";
    for (std::size_t j = 0; j < item.options.size(); ++j) {
        const QuestionOption& o = item.options[j];
        // The value is the option's position, so values keep the gaps of skipped options.
        if (o.txtDisplay.empty())
            continue;
        out.WriteLine("thisOpt = " + self + "." + std::string(n.options) + ".length;");
        out.WriteLine(self + ".addDistractor(" + o.correct + ");");
        out.WriteLine(option + ".txtValue = \"" + std::to_string(j) + "\";");
        out.WriteLine(option + ".txtDisplay = \"" + toScriptString(o.txtDisplay, paths) + "\";");
        if (kind == ItemKind::Evaluation)
            out.WriteLine(option + ".incorrectRationale = \"" +
                          toScriptString(o.incorrectRationale, paths) + "\";");
        if (kind == ItemKind::Survey)
            out.WriteLine("");
    }
    // Survey questions have no feedback and are never shuffled.
    if (kind == ItemKind::Survey)
        return;
    out.WriteLine(self + "." + std::string(n.rationale) + " = \"" +
                  toScriptString(item.rationale, paths) + "\";");
    if (item.shuffleDistractors == "true") {
        out.WriteLine(self + ".shuffleDistractors();");
        out.WriteLine("");
    }
}

void writeHeader(SafeTextWriter& out, const CourseModule& module) {
    out.WriteLine("var modTitle = \"" + escapeQuotes(module.modTitle) + "\";");
    out.WriteLine("var copyright = \"" + escapeQuotes(module.copyright) + "\";");
    out.WriteLine("var useSCORM = " + module.useSCORM + ";");
}

} // namespace

void WriteModuleInfo(CourseModule& module, const ContentPaths& paths) {
    SafeTextWriter out(scriptPath(module, "inc_ModuleInfo.js"));
    out.WriteLine("var modTitle = \"" + escapeQuotes(module.modTitle) + "\";");
    out.WriteLine("var objLessonModule = new objLesson(window.modTitle);");
    out.WriteLine("var copyright = \"" + escapeQuotes(module.copyright) + "\";");
    out.WriteLine("var useSCORM = " + module.useSCORM + ";");

    const std::vector<std::string> skeleton = readTextLines(pageSkeletonPath(module));
    for (std::size_t i = 0; i < module.pages.size(); ++i) {
        // Pages are written by position, so a reordered page lands in its new file.
        writePageFileFrom(module, i, skeleton, paths);
        out.WriteLine("objLessonModule.addPage(objLessonModule.pages.length, \"" +
                      escapeQuotes(module.pages[i].title) + "\");");
    }
    out.WriteLine("");
    out.WriteLine("var intNumPages = objLessonModule.pages.length;");
    out.WriteLine("var topPage = intNumPages - 1;");
    commitIfChanged(out);
}

void WriteGlossary(const CourseModule& module) {
    SafeTextWriter out(scriptPath(module, "inc_Glossary.js"));
    for (const GlossaryTerm& t : module.glossary) {
        if (trimSpaces(t.definition).empty() || trimSpaces(t.term).empty())
            continue;
        // The player numbers terms by position in its own array, so skipped terms leave no gap.
        out.WriteLine("TermID = arrDefObjects.length;");
        out.WriteLine("arrDefObjects[TermID] = new objGlossary(TermID);");
        out.WriteLine("arrDefObjects[TermID].term = \"" + escapeQuotes(t.term) + "\";");
        out.WriteLine("arrDefObjects[TermID].definition = \"" + escapeDefinition(t.definition) +
                      "\";");
        out.WriteLine("");
    }
    commitIfChanged(out);
}

void WriteQAndA(CourseModule& module, const ContentPaths& paths) {
    SafeTextWriter out(scriptPath(module, "inc_QAndA.js"));
    for (QAndAItem& item : module.questions)
        writeItem(out, item, ItemKind::Activity, paths);
    commitIfChanged(out);
}

void WriteQuestions(CourseModule& module, const ContentPaths& paths) {
    SafeTextWriter out(scriptPath(module, "inc_Questions.js"));
    writeHeader(out, module);
    out.WriteLine("var shuffleEvalQuestions = " + module.shuffleEvalQuestions + ";");
    out.WriteLine("var intNumQuestions = " + std::to_string(module.intNumQuestions) + ";");
    out.WriteLine("");
    for (QAndAItem& item : module.questions)
        writeItem(out, item, ItemKind::Evaluation, paths);
    // The empty line after the if is kept: the shuffle still belongs to it.
    out.WriteLine("if(intNumQuestions > arrQuestions.length)");
    out.WriteLine("\tintNumQuestions = arrQuestions.length;");
    out.WriteLine("if(shuffleEvalQuestions)");
    out.WriteLine("");
    out.WriteLine("\tarrQuestions = shuffle(arrQuestions);");
    commitIfChanged(out);
}

void WriteObjectives(CourseModule& module, const ContentPaths& paths) {
    SafeTextWriter out(scriptPath(module, "inc_Objectives.js"));
    writeHeader(out, module);
    for (QAndAItem& item : module.questions)
        writeItem(out, item, ItemKind::Survey, paths);
    out.WriteLine("intNumQuestions = arrQuestions.length;");
    commitIfChanged(out);
}

void WriteModuleFiles(CourseModule& module, const ContentPaths& paths) {
    if (module.moduleType == kLesson) {
        WriteModuleInfo(module, paths);
        WriteQAndA(module, paths);
        WriteGlossary(module);
    } else if (module.moduleType == kEvaluation) {
        WriteQuestions(module, paths);
    } else if (module.moduleType == kSurvey) {
        WriteObjectives(module, paths);
    }
}

std::vector<std::string> moduleFilePaths(const CourseModule& module) {
    std::vector<std::string> paths;
    if (module.moduleType == kLesson) {
        for (std::size_t i = 0; i < module.pages.size(); ++i)
            paths.push_back(joinPath(module.ModuleFolder, pageFileName(i)));
        for (const char* name : {"inc_ModuleInfo.js", "inc_QAndA.js", "inc_Glossary.js"})
            paths.push_back(scriptPath(module, name));
    } else if (module.moduleType == kEvaluation) {
        paths.push_back(scriptPath(module, "inc_Questions.js"));
    } else if (module.moduleType == kSurvey) {
        paths.push_back(scriptPath(module, "inc_Objectives.js"));
    }
    return paths;
}

namespace {

// The page number of a file name the writer produces ("page" + decimal without leading
// zeros + ".html"); -1 for any other name, which is never touched.
long long writtenPageNumber(const std::string& name) {
    constexpr std::string_view head = "page";
    constexpr std::string_view tail = ".html";
    if (name.size() <= head.size() + tail.size() || name.compare(0, head.size(), head) != 0 ||
        name.compare(name.size() - tail.size(), tail.size(), tail) != 0)
        return -1;
    const std::string digits = name.substr(head.size(), name.size() - head.size() - tail.size());
    if (digits.size() > 9 || (digits.size() > 1 && digits[0] == '0'))
        return -1;
    long long n = 0;
    for (char c : digits) {
        if (c < '0' || c > '9')
            return -1;
        n = n * 10 + (c - '0');
    }
    return n;
}

// The page files of a Lesson's folder numbered from `first` on.
std::vector<std::filesystem::path> pageFilesFrom(const CourseModule& module, long long first) {
    namespace fs = std::filesystem;
    std::vector<fs::path> found;
    std::error_code ec;
    fs::directory_iterator it(fsPath(module.ModuleFolder), ec);
    if (ec)
        throw FileError(module.ModuleFolder, ec.message());
    for (; it != fs::directory_iterator(); it.increment(ec)) {
        if (ec)
            throw FileError(module.ModuleFolder, ec.message());
        if (it->is_regular_file(ec) && writtenPageNumber(it->path().filename().string()) >= first)
            found.push_back(it->path());
    }
    if (ec)
        throw FileError(module.ModuleFolder, ec.message());
    return found;
}

} // namespace

void RemoveStalePageFiles(CourseModule& module) {
    if (module.moduleType != kLesson)
        return;
    namespace fs = std::filesystem;
    // page0.html is the module's first page whatever the page count says.
    const std::size_t kept = std::max<std::size_t>(module.pages.size(), 1);
    for (std::size_t i = kept; i < module.pageFileCount; ++i) {
        const fs::path page = fsPath(joinPath(module.ModuleFolder, pageFileName(i)));
        std::error_code ec;
        fs::remove(page, ec);
        if (ec)
            throw FileError(page.string(), ec.message());
    }
    module.pageFileCount = kept;
}

std::size_t countStrayPageFiles(const CourseModule& module) {
    if (module.moduleType != kLesson)
        return 0;
    return pageFilesFrom(module, static_cast<long long>(module.pageFileCount)).size();
}

} // namespace lumora
