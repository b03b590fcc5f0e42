#include "HelpSource.h"

#include "base/TextUtil.h"
#include "content/HtmlScan.h"
#include "content/ListOps.h"
#include "content/MediaInsertion.h"
#include "storage/ModuleWriter.h"
#include "storage/Paths.h"
#include "storage/TextFile.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <regex>

namespace lumora::help {

SourceError::SourceError(int line, const std::string& what)
    : std::runtime_error("line " + std::to_string(line) + ": " + what) {}

namespace {

struct Line {
    int number;
    std::string text;
};

struct PageBlock {
    std::string title;
    std::vector<Line> lines;
};

bool startsWith(const std::string& text, const std::string& prefix) {
    return text.compare(0, prefix.size(), prefix) == 0;
}

std::string lowerWord(const std::string& text) {
    return toLowerAscii(text);
}

// What inline markup refers to: terms by their word (any case), pages by their title.
struct Names {
    std::map<std::string, int> terms;
    std::map<std::string, int> pages;
    std::map<std::string, int> activities; // 1-based, as placeholders number them
};

// Replaces every "open ... close" in `text` by what `make` returns for the inside.
template <class Make>
std::string replaceSpans(const std::string& text, const std::string& open, const std::string& close,
                         int line, Make make) {
    std::string out;
    std::size_t pos = 0;
    for (;;) {
        const std::size_t start = text.find(open, pos);
        if (start == std::string::npos)
            break;
        const std::size_t end = text.find(close, start + open.size());
        if (end == std::string::npos)
            throw SourceError(line, "\"" + open + "\" without \"" + close + "\"");
        out.append(text, pos, start - pos);
        out += make(text.substr(start + open.size(), end - start - open.size()));
        pos = end + close.size();
    }
    out.append(text, pos, std::string::npos);
    return out;
}

std::string inlineHtml(const std::string& raw, const Names& names, int line) {
    std::string html = escapeHtmlText(raw);
    html = replaceSpans(html, "**", "**", line,
                        [](const std::string& inner) { return "<B>" + inner + "</B>"; });
    html = replaceSpans(html, "[[", "]]", line, [&](const std::string& inner) {
        const std::size_t bar = inner.find('|');
        const std::string shown = bar == std::string::npos ? inner : inner.substr(0, bar);
        const std::string word = bar == std::string::npos ? inner : inner.substr(bar + 1);
        const auto term = names.terms.find(lowerWord(word));
        if (term == names.terms.end())
            throw SourceError(line, "no glossary term \"" + word + "\"");
        return termLinkHTML(term->second, shown);
    });
    // [shown](page:Title): the page link the page link dialog inserts.
    return replaceSpans(html, "](page:", ")", line, [&](const std::string& title) {
        const auto page = names.pages.find(title);
        if (page == names.pages.end())
            throw SourceError(line, "no page \"" + title + "\"");
        return "\x01" + std::to_string(page->second) + "\x02";
    });
}

// The page link markers left by inlineHtml become links around the text before them: the
// text from the last "[" up to the marker.
std::string closePageLinks(std::string html, int line) {
    for (std::size_t mark; (mark = html.find('\x01')) != std::string::npos;) {
        const std::size_t open = html.rfind('[', mark);
        const std::size_t end = html.find('\x02', mark);
        if (open == std::string::npos)
            throw SourceError(line, "a page link without \"[\"");
        const std::string number = html.substr(mark + 1, end - mark - 1);
        const std::string shown = html.substr(open + 1, mark - open - 1);
        html.replace(open, end + 1 - open, "<A href=\"page" + number + ".html\">" + shown + "</A>");
    }
    return html;
}

std::string paragraphHtml(const std::string& raw, const Names& names, int line) {
    return closePageLinks(inlineHtml(raw, names, line), line);
}

// One block of a page: consecutive non-blank lines.
std::string blockHtml(const std::vector<Line>& block, const Names& names,
                      const ContentPaths& paths) {
    const std::string& first = block.front().text;
    const int line = block.front().number;
    if (startsWith(first, "## "))
        return "<H3>" + paragraphHtml(first.substr(3), names, line) + "</H3>";
    if (startsWith(first, "![")) {
        const std::size_t close = first.find("](");
        if (close == std::string::npos || first.back() != ')')
            throw SourceError(line, "a picture is written ![caption](file.png)");
        const std::string caption = escapeHtmlText(first.substr(2, close - 2));
        const std::string file = first.substr(close + 2, first.size() - close - 3);
        return imageHTML(joinPath(joinPath(paths.moduleFolder, "media"), file), caption);
    }
    if (startsWith(first, "{activity ")) {
        const std::string key = first.substr(10, first.size() - 11);
        const auto activity = names.activities.find(key);
        if (activity == names.activities.end() || first.back() != '}')
            throw SourceError(line, "no activity \"" + key + "\"");
        return activityPlaceholder(paths, activity->second);
    }
    const bool bullets = startsWith(first, "- ");
    const bool steps = startsWith(first, "1. ");
    if (bullets || steps) {
        // A list item runs on over lines that do not start another item.
        std::vector<std::pair<int, std::string>> items;
        for (const Line& l : block) {
            const std::size_t cut = l.text.find(' ');
            const bool item = bullets
                                  ? startsWith(l.text, "- ")
                                  : cut != std::string::npos && cut > 1 && l.text[cut - 1] == '.' &&
                                        l.text.find_first_not_of("0123456789") == cut - 1;
            if (item)
                items.emplace_back(l.number, l.text.substr(cut + 1));
            else
                items.back().second += " " + trimSpaces(l.text);
        }
        std::string html = bullets ? "<UL>" : "<OL>";
        for (const auto& [number, text] : items)
            html += "<LI>" + paragraphHtml(text, names, number) + "</LI>";
        return html + (bullets ? "</UL>" : "</OL>");
    }
    std::string text;
    for (const Line& l : block)
        text += (text.empty() ? "" : " ") + trimSpaces(l.text);
    return "<P>" + paragraphHtml(text, names, line) + "</P>";
}

std::string pageHtml(const PageBlock& page, const Names& names, const ContentPaths& paths) {
    std::string html = "<H2>" + escapeHtmlText(page.title) + "</H2>";
    std::vector<Line> block;
    const auto flush = [&] {
        if (!block.empty())
            html += "\r\n" + blockHtml(block, names, paths);
        block.clear();
    };
    for (const Line& l : page.lines) {
        if (trimSpaces(l.text).empty())
            flush();
        else
            block.push_back(l);
    }
    flush();
    return html;
}

QuestionOption makeOption(const std::string& text, bool correct) {
    QuestionOption option;
    option.correct = correct ? "true" : "false";
    option.txtDisplay = escapeHtmlText(text);
    return option;
}

} // namespace

CourseModule parseHelpSource(const std::string& text, const ContentPaths& paths) {
    CourseModule module;
    module.moduleType = kLesson;
    module.ModuleFolder = paths.moduleFolder;
    module.framesetFile = framesetFileFor(kLesson);
    module.useSCORM = "false";
    module.shuffleEvalQuestions = "false";

    Names names;
    std::vector<PageBlock> pages;
    std::vector<std::string> activityKeys;
    enum class In { Nothing, Term, Activity, Page } in = In::Nothing;

    const std::vector<std::string> lines = splitLines(text);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const int number = static_cast<int>(i) + 1;
        const std::string& l = lines[i];
        if (startsWith(l, "%"))
            continue; // a note to the writer
        if (startsWith(l, "title: ")) {
            module.modTitle = l.substr(7);
            in = In::Nothing;
        } else if (startsWith(l, "copyright: ")) {
            module.copyright = l.substr(11);
            in = In::Nothing;
        } else if (startsWith(l, "term ")) {
            names.terms[lowerWord(escapeHtmlText(l.substr(5)))] =
                static_cast<int>(module.glossary.size());
            module.glossary.push_back({"", l.substr(5), ""});
            in = In::Term;
        } else if (startsWith(l, "activity ")) {
            const std::string rest = l.substr(9);
            const std::size_t blank = rest.find(' ');
            const std::string type = blank == std::string::npos ? "" : rest.substr(blank + 1);
            if (type != "radio" && type != "checkbox")
                throw SourceError(number, "write: activity KEY radio|checkbox");
            QAndAItem item;
            item.questionType = type;
            item.shuffleDistractors = "false";
            module.questions.push_back(item);
            names.activities[rest.substr(0, blank)] = static_cast<int>(module.questions.size());
            in = In::Activity;
        } else if (startsWith(l, "page ")) {
            // Looked up in escaped text: "Q&A" is "Q&amp;A" by then.
            names.pages[escapeHtmlText(l.substr(5))] = static_cast<int>(pages.size());
            pages.push_back({l.substr(5), {}});
            in = In::Page;
        } else if (in == In::Page) {
            pages.back().lines.push_back({number, l});
        } else if (trimSpaces(l).empty()) {
            continue;
        } else if (in == In::Term) {
            std::string& definition = module.glossary.back().definition;
            definition += (definition.empty() ? "" : " ") + trimSpaces(l);
        } else if (in == In::Activity && l.size() > 2 && l[1] == ' ') {
            QAndAItem& item = module.questions.back();
            const std::string rest = l.substr(2);
            switch (l[0]) {
            case '?':
                item.questionText = escapeHtmlText(rest);
                break;
            case '+':
                item.options.push_back(makeOption(rest, true));
                break;
            case '-':
                item.options.push_back(makeOption(rest, false));
                break;
            case '=':
                item.rationale = escapeHtmlText(rest);
                break;
            default:
                throw SourceError(number, "an activity line starts with ? + - or =");
            }
        } else {
            throw SourceError(number, "text outside a term, an activity or a page");
        }
    }
    if (pages.empty() || module.glossary.empty() || module.questions.empty())
        throw SourceError(static_cast<int>(lines.size()),
                          "the help needs pages, terms and activities");

    for (const PageBlock& page : pages)
        module.pages.push_back({"", page.title, pageHtml(page, names, paths)});
    return module;
}

void writeHelpFolder(const std::string& sourceText, const std::string& lessonTemplate,
                     const std::string& folder) {
    namespace fs = std::filesystem;
    const fs::path out = fs::absolute(folder).lexically_normal();
    fs::create_directories(out / "scripts");
    fs::create_directories(out / "media");
    const std::regex pageFile("page[0-9]+\\.html");
    for (const auto& entry : fs::directory_iterator(out))
        if (std::regex_match(entry.path().filename().string(), pageFile))
            fs::remove(entry.path());

    const ContentPaths paths{out.string(), out.parent_path().string()};
    CourseModule module = parseHelpSource(sourceText, paths);
    module.templateFolder = lessonTemplate;
    WriteModuleFiles(module, paths);
}

std::vector<std::string> picturesOf(const std::string& text) {
    std::vector<std::string> files;
    for (const std::string& l : splitLines(text)) {
        const std::size_t close = l.find("](");
        if (startsWith(l, "![") && close != std::string::npos && l.back() == ')') {
            std::string file = l.substr(close + 2, l.size() - close - 3);
            if (std::find(files.begin(), files.end(), file) == files.end())
                files.push_back(std::move(file));
        }
    }
    return files;
}

} // namespace lumora::help
