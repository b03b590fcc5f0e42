#include "HelpFacts.h"

#include "content/HtmlScan.h"
#include "storage/ModuleLoader.h"
#include "storage/PageFiles.h"
#include "storage/Paths.h"
#include "storage/TextFile.h"

#include <filesystem>
#include <set>

namespace lumora::help {

namespace {

// The numbers written right after each `prefix` in `html` (digits only; none is -1).
std::vector<long> numbersAfter(const std::string& html, const std::string& prefix) {
    std::vector<long> numbers;
    for (std::size_t pos = html.find(prefix); pos != std::string::npos;
         pos = html.find(prefix, pos + 1)) {
        const std::size_t start = pos + prefix.size();
        const std::size_t end = html.find_first_not_of("0123456789", start);
        numbers.push_back(end == start ? -1 : std::stol(html.substr(start, end - start)));
    }
    return numbers;
}

// The value of every src="..." attribute.
std::vector<std::string> sources(const std::string& html) {
    std::vector<std::string> found;
    for (std::size_t pos = html.find("src=\""); pos != std::string::npos;
         pos = html.find("src=\"", pos + 1)) {
        const std::size_t end = html.find('"', pos + 5);
        found.push_back(html.substr(pos + 5, end - pos - 5));
    }
    return found;
}

} // namespace

std::size_t countWords(const std::string& html) {
    std::size_t words = 0;
    bool inWord = false;
    for (std::size_t pos = 0; pos < html.size();) {
        std::size_t end = markupEnd(html, pos);
        if (end != pos) {
            if (breaksText(std::string_view(html).substr(pos, end - pos)))
                inWord = false;
            pos = end;
            continue;
        }
        std::string text;
        end = entityEnd(html, pos);
        if (end != pos) {
            text = entityText(std::string_view(html).substr(pos, end - pos));
        } else {
            end = pos + 1;
            text = html.substr(pos, 1);
        }
        pos = end;
        const bool blank =
            text == " " || text == "\r" || text == "\n" || text == "\t" || text == "\xC2\xA0";
        if (!blank && !inWord)
            ++words;
        inWord = !blank;
    }
    return words;
}

HelpFacts scanHelpFolder(const std::string& folder) {
    CourseModule module;
    module.moduleType = kLesson;
    module.ModuleFolder = folder;
    module.templateFolder = folder;
    module.framesetFile = framesetFileFor(kLesson);
    const std::string install = std::filesystem::path(folder).parent_path().string();
    LoadModuleFiles(module, {folder, install});

    HelpFacts facts;
    // The loader keeps one placeholder in an empty list; the writer skips it, so does this.
    for (const auto& t : module.glossary)
        facts.terms += t.term.empty() ? 0 : 1;
    for (const auto& q : module.questions)
        facts.activities += q.questionText.empty() ? 0 : 1;
    facts.pages = module.pages.size();

    std::set<long> termsUsed, activitiesUsed;
    std::set<std::string> pictures;
    for (std::size_t i = 0; i < module.pages.size(); ++i) {
        const std::string name = "page" + std::to_string(i) + ".html";
        const std::string html = contentBetweenMarkers(readFileBytes(joinPath(folder, name)));
        const std::string where = name + " (" + module.pages[i].title + "): ";
        facts.words += countWords(html);
        for (long n : numbersAfter(html, "showGlossaryPopup('")) {
            termsUsed.insert(n);
            if (n < 0 || n >= static_cast<long>(facts.terms))
                facts.problems.push_back(where + "a term link to term " + std::to_string(n));
        }
        for (long n : numbersAfter(html, "<A href=\"page"))
            if (n < 0 || n >= static_cast<long>(facts.pages))
                facts.problems.push_back(where + "a page link to page " + std::to_string(n));
        for (long n : numbersAfter(html, "writeActivityHTML(")) {
            activitiesUsed.insert(n);
            if (n < 1 || n > static_cast<long>(facts.activities))
                facts.problems.push_back(where + "activity " + std::to_string(n));
        }
        for (const std::string& src : sources(html)) {
            const bool inMedia = src.rfind("media/", 0) == 0;
            if (!inMedia || !std::filesystem::is_regular_file(joinPath(folder, src)))
                facts.problems.push_back(where + "a picture " + src);
            else
                pictures.insert(src);
        }
    }
    facts.pictures = pictures.size();
    for (std::size_t t = 0; t < facts.terms; ++t)
        if (!termsUsed.count(static_cast<long>(t)))
            facts.problems.push_back("term " + module.glossary[t].term + " is linked from no page");
    for (std::size_t a = 1; a <= facts.activities; ++a)
        if (!activitiesUsed.count(static_cast<long>(a)))
            facts.problems.push_back("activity " + std::to_string(a) + " is on no page");
    return facts;
}

} // namespace lumora::help
