// Delete, move and add on the main form's four lists. Items are known only by position, so
// every operation either keeps the numbers inside page content right or refuses.
#include "content/ListOps.h"

#include "base/TextUtil.h"
#include "content/ContentForms.h"
#include "content/Normalize.h"

#include <utility>
#include <vector>

namespace lumora {
namespace {

// A page number that no page can have: the swap of two link numbers goes through it.
constexpr const char* kPageLinkMarker = "<A href=\"pagea.html\"";
constexpr const char* kActivityMarker = "QAndAStart.gif\">a<IMG";
constexpr const char* kFiveSpaces = "     ";

std::string activityNumberSearch(int n) {
    return "QAndAStart.gif\">" + std::to_string(n) + "<IMG";
}

// Every reference to activity k, deleted < k <= count, becomes k-1, in one pass over the page.
// The same as replacing k by k-1 for each k in increasing order (where a reference just
// renumbered is never met again), without a pass over the page for every later activity.
std::string renumberActivitiesAfter(const std::string& html, int deleted, int count) {
    static const std::string kStart = "QAndAStart.gif\">";
    static const std::string kEnd = "<IMG";
    std::string out;
    out.reserve(html.size());
    std::size_t from = 0;
    for (std::size_t at = html.find(kStart); at != std::string::npos; at = html.find(kStart, at)) {
        const std::size_t digits = at + kStart.size();
        std::size_t end = digits;
        while (end < html.size() && end - digits < 6 && html[end] >= '0' && html[end] <= '9')
            ++end;
        at = digits;
        if (end == digits || html.compare(end, kEnd.size(), kEnd) != 0)
            continue;
        const std::string number = html.substr(digits, end - digits);
        const int k = std::stoi(number);
        // Only the plain decimal text of a number is a reference to it.
        if (k <= deleted || k > count || number != std::to_string(k))
            continue;
        out.append(html, from, digits - from);
        out += std::to_string(k - 1);
        from = end;
    }
    out.append(html, from, std::string::npos);
    return out;
}

void noSelection(const ListContext& ctx) {
    ctx.prompt.message("No item is selected", "Error", Icon::Critical, Buttons::OK);
}

std::string indentedLines(const std::vector<std::string>& lines) {
    std::string text;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (i > 0)
            text += kCrLf;
        text += kFiveSpaces + lines[i];
    }
    return text;
}

// The selection after a removal: the same position, or the one before when the last went.
std::int16_t positionAfterRemoval(std::size_t removed, std::size_t oldCount) {
    std::size_t pos = removed + 1 < oldCount ? removed : (removed > 0 ? removed - 1 : 0);
    return static_cast<std::int16_t>(pos);
}

template <typename T> void removeKeepingOne(std::vector<T>& items, std::size_t at, T blank) {
    items.erase(items.begin() + static_cast<std::ptrdiff_t>(at));
    if (items.empty())
        items.push_back(std::move(blank));
}

// Exchanges every occurrence of `a` with `b` through a marker neither can contain.
std::string swapTexts(std::string text, const std::string& a, const std::string& b,
                      const std::string& marker) {
    text = replaceAll(std::move(text), a, marker);
    text = replaceAll(std::move(text), b, a);
    return replaceAll(std::move(text), marker, b);
}

// The pages whose content holds `search`, by title in page order; `skip` is left out.
std::vector<std::string> titlesOfPagesContaining(const CourseModule& module,
                                                 const std::string& search, std::size_t skip) {
    std::vector<std::string> titles;
    for (std::size_t p = 0; p < module.pages.size(); ++p)
        if (p != skip && contains(module.pages[p].content, search))
            titles.push_back(module.pages[p].title);
    return titles;
}

QAndAItem* currentItem(const ListContext& ctx) {
    auto index = static_cast<std::size_t>(ctx.CurrentItem);
    if (ctx.CurrentItem < 0 || index >= ctx.module.questions.size())
        return nullptr;
    return &ctx.module.questions[index];
}

LessonPage blankPage(const ListContext& ctx, std::size_t position) {
    LessonPage page = ctx.defaults.page;
    page.fileName = "page" + std::to_string(position) + ".html";
    return page;
}

QAndAItem blankQuestion(const ListContext& ctx, std::size_t position) {
    QAndAItem item =
        ctx.module.moduleType == kSurvey ? ctx.defaults.surveyQuestion : ctx.defaults.item;
    item.id = std::to_string(position + 1); // activities are numbered from 1
    return item;
}

GlossaryTerm blankTerm(const ListContext& ctx, std::size_t position) {
    GlossaryTerm term = ctx.defaults.term;
    term.id = std::to_string(position);
    return term;
}

// A new option carries the default flag and value but no text, so it reads as empty.
QuestionOption blankOption(const ListContext& ctx) {
    QuestionOption option = ctx.defaults.option;
    option.txtDisplay.clear();
    return option;
}

bool isBlank(const LessonPage& page) {
    return blankIfEmpty(page.title).empty() && blankIfEmpty(page.content).empty();
}
bool isBlank(const GlossaryTerm& term) {
    return blankIfEmpty(term.term).empty() && blankIfEmpty(term.definition).empty();
}
bool isBlank(const QAndAItem& item) {
    return blankIfEmpty(item.questionText).empty();
}
bool isBlank(const QuestionOption& option) {
    return blankIfEmpty(option.txtDisplay).empty();
}

// Where a new item goes: over the last one while it is still blank, else one past it.
template <typename T> std::size_t slotForNew(const std::vector<T>& items) {
    if (!items.empty() && isBlank(items.back()))
        return items.size() - 1;
    return items.size();
}

std::size_t listCount(const ListContext& ctx, ListKind kind) {
    switch (kind) {
    case ListKind::Pages:
        return ctx.module.pages.size();
    case ListKind::Questions:
        return ctx.module.questions.size();
    case ListKind::Options: {
        QAndAItem* item = currentItem(ctx);
        return item ? item->options.size() : 0;
    }
    case ListKind::Terms:
        return ctx.module.glossary.size();
    case ListKind::None:
        break;
    }
    return 0;
}

void deletePage(const ListContext& ctx, std::size_t i) {
    CourseModule& m = ctx.module;
    auto linking = titlesOfPagesContaining(m, pageLinkSearch(static_cast<int>(i)), i);
    if (!linking.empty()) {
        ctx.prompt.message(
            std::string("The selected pages is the target of a link in another page.") + kCrLf +
                "Please remove links to this page from the following:" + kCrLf +
                indentedLines(linking),
            "Error", Icon::Exclamation, Buttons::OK);
        return;
    }
    // Links to later pages keep their numbers: only links to the deleted page are refused.
    const std::size_t oldCount = m.pages.size();
    removeKeepingOne(m.pages, i, blankPage(ctx, 0));
    ctx.CurrentPage = positionAfterRemoval(i, oldCount);
}

void deleteQuestion(const ListContext& ctx, std::size_t i) {
    CourseModule& m = ctx.module;
    const std::size_t oldCount = m.questions.size();
    removeKeepingOne(m.questions, i, blankQuestion(ctx, 0));
    ctx.CurrentItem = positionAfterRemoval(i, oldCount);
    if (m.moduleType != kLesson)
        return;

    const int deleted = static_cast<int>(i) + 1;
    const std::string placeholder = activityPlaceholder(ctx.paths, deleted);
    for (LessonPage& page : m.pages) {
        std::string html = replaceAll(std::move(page.content), placeholder, "");
        page.content = renumberActivitiesAfter(html, deleted, static_cast<int>(oldCount));
    }
}

void deleteOption(const ListContext& ctx, std::size_t i) {
    QAndAItem* item = currentItem(ctx);
    const std::size_t oldCount = item->options.size();
    removeKeepingOne(item->options, i, blankOption(ctx));
    ctx.CurrentOption = positionAfterRemoval(i, oldCount);
}

void deleteTerm(const ListContext& ctx, std::size_t i) {
    CourseModule& m = ctx.module;
    auto linking = titlesOfPagesContaining(m, termLinkSearch(static_cast<int>(i)), m.pages.size());
    if (!linking.empty()) {
        ctx.prompt.message(std::string("The selected term is currently in use.") + kCrLf +
                               "Please remove links to this term from the following pages:" +
                               kCrLf + indentedLines(linking),
                           "Error", Icon::Exclamation, Buttons::OK);
        return;
    }
    const std::size_t oldCount = m.glossary.size();
    removeKeepingOne(m.glossary, i, blankTerm(ctx, 0));
    ctx.CurrentTerm = positionAfterRemoval(i, oldCount);
}

void swapPageLinks(CourseModule& module, int a, int b) {
    for (LessonPage& page : module.pages)
        page.content = swapTexts(std::move(page.content), pageLinkSearch(a), pageLinkSearch(b),
                                 kPageLinkMarker);
}

// Exchanges items i and j of the list; for pages also every link between them.
void swapItems(const ListContext& ctx, ListKind kind, std::size_t i, std::size_t j) {
    CourseModule& m = ctx.module;
    const auto target = static_cast<std::int16_t>(j);
    switch (kind) {
    case ListKind::Pages:
        swapPageLinks(m, static_cast<int>(j), static_cast<int>(i));
        std::swap(m.pages[i], m.pages[j]);
        ctx.CurrentPage = target;
        break;
    case ListKind::Questions:
        std::swap(m.questions[i], m.questions[j]);
        ctx.CurrentItem = target;
        break;
    case ListKind::Options: {
        QAndAItem* item = currentItem(ctx);
        std::swap(item->options[i], item->options[j]);
        ctx.CurrentOption = target;
        break;
    }
    case ListKind::Terms:
        std::swap(m.glossary[i], m.glossary[j]);
        ctx.CurrentTerm = target;
        break;
    case ListKind::None:
        break;
    }
}

// Shared opening of every operation: the list is known and the selection lies inside it.
bool selectionInList(const ListContext& ctx, ListKind kind, int selected) {
    if (selected < 0) {
        noSelection(ctx);
        return false;
    }
    return kind != ListKind::None && static_cast<std::size_t>(selected) < listCount(ctx, kind);
}

} // namespace

ListKind listKindFromName(const std::string& listName) {
    if (contains(listName, "Page"))
        return ListKind::Pages;
    if (contains(listName, "Q"))
        return ListKind::Questions;
    if (contains(listName, "Option"))
        return ListKind::Options;
    if (contains(listName, "Term"))
        return ListKind::Terms;
    return ListKind::None;
}

std::string pageLinkSearch(int page) {
    return "<A href=\"page" + std::to_string(page) + ".html\"";
}

std::string pageLinkHTML(int page, const std::string& inner) {
    return pageLinkSearch(page) + ">" + inner + "</A>";
}

std::string termLinkHTML(int term, const std::string& inner) {
    const std::string n = std::to_string(term);
    return "<a href=\"#term" + n + "\" name=\"term" + n +
           "\" onClick=\"parentRef.showGlossaryPopup('" + n + "', 240, 180);\" border=0>" + inner +
           "</a>";
}

std::string termLinkSearch(int term) {
    return "showGlossaryPopup('" + std::to_string(term) + "',";
}

void deleteListItem(const ListContext& ctx, const std::string& listName, int selected) {
    const ListKind kind = listKindFromName(listName);
    if (selectionInList(ctx, kind, selected) &&
        ctx.prompt.ask("Are you sure you want to delete the selected item?", "Confirm Delete",
                       Icon::Question)) {
        const auto i = static_cast<std::size_t>(selected);
        switch (kind) {
        case ListKind::Pages:
            deletePage(ctx, i);
            break;
        case ListKind::Questions:
            deleteQuestion(ctx, i);
            break;
        case ListKind::Options:
            deleteOption(ctx, i);
            break;
        case ListKind::Terms:
            deleteTerm(ctx, i);
            break;
        case ListKind::None:
            break;
        }
    }
    ctx.markChanged();
}

void moveListItemUp(const ListContext& ctx, const std::string& listName, int selected) {
    const ListKind kind = listKindFromName(listName);
    if (selected >= 0 && selected < 1) {
        ctx.prompt.message("You cannot move any higher", "Error", Icon::Critical, Buttons::OK);
    } else if (selectionInList(ctx, kind, selected)) {
        const auto i = static_cast<std::size_t>(selected);
        swapItems(ctx, kind, i, i - 1);
        if (kind == ListKind::Questions && ctx.module.moduleType == kLesson) {
            // The moved activity's old number i+1 becomes i, and i becomes i+1.
            const std::string moved = activityNumberSearch(selected + 1);
            const std::string displaced = activityNumberSearch(selected);
            for (LessonPage& page : ctx.module.pages)
                page.content =
                    swapTexts(std::move(page.content), moved, displaced, kActivityMarker);
        }
    }
    ctx.markChanged();
}

void moveListItemDown(const ListContext& ctx, const std::string& listName, int selected) {
    const ListKind kind = listKindFromName(listName);
    if (selected >= 0 && static_cast<std::size_t>(selected) + 1 >= listCount(ctx, kind)) {
        ctx.prompt.message("You cannot move any lower", "Error", Icon::Critical, Buttons::OK);
    } else if (selectionInList(ctx, kind, selected)) {
        // Activity placeholders are deliberately left alone on a move down.
        const auto i = static_cast<std::size_t>(selected);
        swapItems(ctx, kind, i, i + 1);
    }
    ctx.markChanged();
}

// Puts a blank record made by `make(position)` at the end of the list (or over a trailing blank
// one) and returns its position, which becomes current.
template <class T, class Make> std::int16_t appendBlank(std::vector<T>& list, Make make) {
    const std::size_t n = slotForNew(list);
    list.resize(n + 1);
    list[n] = make(n);
    return static_cast<std::int16_t>(n);
}

void addBlankPage(const ListContext& ctx) {
    ctx.CurrentPage =
        appendBlank(ctx.module.pages, [&](std::size_t n) { return blankPage(ctx, n); });
    ctx.markChanged();
}

void addBlankQuestion(const ListContext& ctx) {
    ctx.CurrentItem =
        appendBlank(ctx.module.questions, [&](std::size_t n) { return blankQuestion(ctx, n); });
    ctx.markChanged();
}

void addBlankOption(const ListContext& ctx) {
    QAndAItem* item = currentItem(ctx);
    if (!item)
        return;
    ctx.CurrentOption =
        appendBlank(item->options, [&](std::size_t) { return ctx.defaults.option; });
    ctx.markChanged();
}

void addBlankTerm(const ListContext& ctx) {
    ctx.CurrentTerm =
        appendBlank(ctx.module.glossary, [&](std::size_t n) { return blankTerm(ctx, n); });
    ctx.markChanged();
}

void dropBlankQuestions(const ListContext& ctx) {
    auto& questions = ctx.module.questions;
    std::vector<QAndAItem> kept;
    kept.reserve(questions.size());
    for (QAndAItem& item : questions) {
        item.questionText = blankIfEmpty(item.questionText);
        if (!item.questionText.empty())
            kept.push_back(std::move(item));
    }
    // The list is never empty: with nothing left the first (blank) record stays as the
    // placeholder the writer skips.
    if (kept.empty() && !questions.empty())
        kept.push_back(std::move(questions.front()));
    questions = std::move(kept);
    if (questions.empty())
        questions.push_back(ctx.defaults.item);
    const auto last = static_cast<std::int16_t>(questions.size() - 1);
    if (ctx.CurrentItem > last)
        ctx.CurrentItem = last;
}

} // namespace lumora
