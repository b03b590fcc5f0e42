// Delete, move and add on the four lists: the references inside page content that must follow,
// the refusals word for word, and the blank items.
#include "content/ListOps.h"

#include "content/ContentForms.h"
#include "support/ScriptedPrompt.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace lumora {
namespace {

using testing::ScriptedPrompt;

// The module and the positions beside it, as the list operations see them.
struct ListState {
    DefaultRecords defaults = makeDefaultRecords(2024);
    CourseModule module = defaults.module;
    std::int16_t CurrentPage = 0, CurrentItem = 0, CurrentOption = 0, CurrentTerm = 0;
    bool ModuleChanged = false;
};

class ListOps : public ::testing::Test {
  protected:
    ScriptedPrompt prompt;
    ListState state;
    const ContentPaths paths{"/ws/course", "/opt/lumora"};

    void SetUp() override {
        state.module.moduleType = kLesson;
        state.module.ModuleFolder = paths.moduleFolder;
    }

    ListContext lists() {
        return ListContext{state.module,
                           state.defaults,
                           paths,
                           prompt,
                           state.CurrentPage,
                           state.CurrentItem,
                           state.CurrentOption,
                           state.CurrentTerm,
                           state.ModuleChanged};
    }

    void givePages(const std::vector<std::string>& contents) {
        state.module.pages.clear();
        for (std::size_t i = 0; i < contents.size(); ++i)
            state.module.pages.push_back(
                {"page" + std::to_string(i) + ".html", "Title " + std::to_string(i), contents[i]});
    }

    void giveQuestions(int count) {
        state.module.questions.clear();
        for (int i = 1; i <= count; ++i) {
            QAndAItem item = state.defaults.item;
            item.id = std::to_string(i);
            item.questionText = "Q" + std::to_string(i);
            state.module.questions.push_back(item);
        }
    }

    std::string act(int n) const { return activityPlaceholder(paths, n); }
    // A page link as the page link dialog writes it: the renumbering must find it.
    std::string link(int n) const { return pageLinkHTML(n, "go"); }
    const std::string& content(std::size_t page) const { return state.module.pages[page].content; }
    std::vector<std::string> questionTexts() const {
        std::vector<std::string> texts;
        for (const QAndAItem& q : state.module.questions)
            texts.push_back(q.questionText);
        return texts;
    }
};

TEST_F(ListOps, NothingSelectedAndMovesPastTheEndsAreErrors) {
    givePages({"a", "b"});
    deleteListItem(lists(), "lstPages", -1);
    moveListItemUp(lists(), "lstTerms", -1);
    moveListItemDown(lists(), "lstOptions", -1);
    moveListItemUp(lists(), "lstPages", 0);
    moveListItemDown(lists(), "lstPages", 1);
    ASSERT_EQ(prompt.messages.size(), 5u);
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(prompt.messages[i].text, i < 3    ? "No item is selected"
                                           : i == 3 ? "You cannot move any higher"
                                                    : "You cannot move any lower");
        EXPECT_EQ(prompt.messages[i].title, "Error");
        EXPECT_EQ(prompt.messages[i].icon, Icon::Critical);
    }
    EXPECT_TRUE(state.ModuleChanged);
    EXPECT_EQ(content(0), "a");
}

TEST_F(ListOps, DeleteAsksFirstAndTheLastPageLeftBecomesBlank) {
    givePages({"a", "b"});
    deleteListItem(lists(), "lstPages", 1);
    ASSERT_EQ(prompt.messages.size(), 1u);
    EXPECT_EQ(prompt.messages[0].text, "Are you sure you want to delete the selected item?");
    EXPECT_EQ(prompt.messages[0].title, "Confirm Delete");
    EXPECT_EQ(prompt.messages[0].icon, Icon::Question);
    EXPECT_EQ(prompt.messages[0].buttons, Buttons::YesNo);
    EXPECT_EQ(state.module.pages.size(), 2u); // anything but Yes keeps the item
    EXPECT_TRUE(state.ModuleChanged);

    // Deleting the last page selects the one before; the only page leaves a blank one.
    state.CurrentPage = 1;
    prompt.answer(Answer::Yes);
    deleteListItem(lists(), "lstPages", 1);
    ASSERT_EQ(state.module.pages.size(), 1u);
    EXPECT_EQ(state.CurrentPage, 0);
    prompt.answer(Answer::Yes);
    deleteListItem(lists(), "lstPages", 0);
    ASSERT_EQ(state.module.pages.size(), 1u);
    EXPECT_EQ(state.module.pages[0].title, "");
    EXPECT_EQ(state.module.pages[0].content, "");
    EXPECT_EQ(state.CurrentPage, 0);
}

TEST_F(ListOps, DeletingALinkedPageIsRefusedAndNamesTheLinkingPages) {
    // Page 3 is linked from pages 1 and 5; page 4's link carries an anchor and is not seen.
    givePages({"x", link(3), "y", link(3), "<A href=\"page3.html#top\">a</A>", link(3) + "z"});
    prompt.answer(Answer::Yes);
    deleteListItem(lists(), "lstPages", 3);
    ASSERT_EQ(prompt.messages.size(), 2u);
    EXPECT_EQ(prompt.messages[1].text,
              "The selected pages is the target of a link in another page.\r\n"
              "Please remove links to this page from the following:\r\n"
              "     Title 1\r\n"
              "     Title 5");
    EXPECT_EQ(prompt.messages[1].title, "Error");
    EXPECT_EQ(prompt.messages[1].icon, Icon::Exclamation);
    EXPECT_EQ(state.module.pages.size(), 6u);
    EXPECT_EQ(content(1), link(3));
}

TEST_F(ListOps, PageLinkingToItselfCanBeDeletedAndLaterLinksKeepTheirNumbers) {
    givePages({link(2), link(1), link(2)});
    state.CurrentPage = 1;
    prompt.answer(Answer::Yes);
    deleteListItem(lists(), "lstPages", 1);
    EXPECT_EQ(prompt.messages.size(), 1u);
    ASSERT_EQ(state.module.pages.size(), 2u);
    EXPECT_EQ(state.module.pages[1].title, "Title 2");
    EXPECT_EQ(content(0), link(2)); // not renumbered to page 1
    EXPECT_EQ(state.CurrentPage, 1);
}

// Deleting activity 2 of 4 removes its placeholders and moves later ones down. Only plain
// numbers of later activities up to the old count are references; a number written otherwise,
// or past the count, is text the renumbering leaves alone.
TEST_F(ListOps, DeletingAnActivityRemovesItsPlaceholdersAndRenumbersLaterOnes) {
    const std::string start = "QAndAStart.gif\">";
    const struct {
        std::string before, after;
    } cases[] = {
        {act(1) + act(2) + act(3), act(1) + act(2)},
        {"<P>" + act(4) + act(2) + "</P>", "<P>" + act(3) + "</P>"},
        {start + "1<IMG", start + "1<IMG"},
        {start + "5<IMG", start + "5<IMG"},   // past the old count of four
        {start + "03<IMG", start + "03<IMG"}, // not the plain text of 3
        {start + "3 <IMG" + start + "3", start + "3 <IMG" + start + "3"},
        {start + start + "4<IMG", start + start + "3<IMG"},
        {start + "99999999999<IMG", start + "99999999999<IMG"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.before);
        giveQuestions(4);
        givePages({c.before});
        prompt.answer(Answer::Yes);
        deleteListItem(lists(), "lstQAndA", 1);
        EXPECT_EQ(content(0), c.after);
        EXPECT_EQ(questionTexts(), (std::vector<std::string>{"Q1", "Q3", "Q4"}));
        EXPECT_EQ(state.CurrentItem, 1);
    }
}

TEST_F(ListOps, DeletingQuestionsOutsideALessonLeavesPageContentAlone) {
    state.module.moduleType = kEvaluation;
    giveQuestions(2);
    givePages({act(1) + act(2)});
    prompt.answer(Answer::Yes);
    deleteListItem(lists(), "lstQAndA", 0);
    EXPECT_EQ(questionTexts(), (std::vector<std::string>{"Q2"}));
    EXPECT_EQ(content(0), act(1) + act(2));
    prompt.answer(Answer::Yes);
    deleteListItem(lists(), "lstQAndA", 0);
    ASSERT_EQ(state.module.questions.size(), 1u);
    EXPECT_EQ(state.module.questions[0].questionText, "");
}

TEST_F(ListOps, DeletingTheOnlyOptionLeavesOneBlankOption) {
    giveQuestions(2);
    state.CurrentItem = 1;
    auto& options = state.module.questions[1].options;
    options = {{"true", "0", "A", ""}, {"false", "1", "B", ""}};
    prompt.answer(Answer::Yes);
    deleteListItem(lists(), "lstOptions", 1);
    ASSERT_EQ(options.size(), 1u);
    EXPECT_EQ(options[0].txtDisplay, "A");
    EXPECT_EQ(state.CurrentOption, 0);
    prompt.answer(Answer::Yes);
    deleteListItem(lists(), "lstOptions", 0);
    ASSERT_EQ(options.size(), 1u);
    EXPECT_EQ(options[0].txtDisplay, "");
    EXPECT_EQ(state.module.questions[0].options.size(), 1u); // other item untouched
}

TEST_F(ListOps, TermInUseIsRefusedAndNamesThePages) {
    state.module.glossary = {{"0", "alpha", "a"}, {"1", "beta", "b"}};
    givePages({termLinkHTML(1, "beta"), "plain", termLinkHTML(1, "again")});
    prompt.answer(Answer::Yes);
    deleteListItem(lists(), "lstTerms", 1);
    ASSERT_EQ(prompt.messages.size(), 2u);
    EXPECT_EQ(prompt.messages[1].text, "The selected term is currently in use.\r\n"
                                       "Please remove links to this term from the following "
                                       "pages:\r\n"
                                       "     Title 0\r\n"
                                       "     Title 2");
    EXPECT_EQ(prompt.messages[1].icon, Icon::Exclamation);
    EXPECT_EQ(state.module.glossary.size(), 2u);

    // Term 0 is unused; removing it does not rewrite the link to former term 1.
    prompt.answer(Answer::Yes);
    deleteListItem(lists(), "lstTerms", 0);
    ASSERT_EQ(state.module.glossary.size(), 1u);
    EXPECT_EQ(state.module.glossary[0].term, "beta");
    EXPECT_EQ(content(0), termLinkHTML(1, "beta"));
}

TEST_F(ListOps, MovingAPageSwapsLinksBetweenTheTwoPagesOnly) {
    givePages({link(0) + link(1), link(1) + link(2), link(0) + link(3)});
    state.module.pages[1].content += "<A href=\"pagea.html\">";
    moveListItemUp(lists(), "lstPages", 1);
    EXPECT_TRUE(prompt.messages.empty());
    EXPECT_EQ(state.module.pages[0].title, "Title 1");
    EXPECT_EQ(state.module.pages[0].content, link(0) + link(2) + "<A href=\"page1.html\">");
    EXPECT_EQ(state.module.pages[1].content, link(1) + link(0));
    EXPECT_EQ(content(2), link(1) + link(3));
    EXPECT_EQ(state.CurrentPage, 0);

    moveListItemDown(lists(), "lstPages", 0);
    EXPECT_EQ(state.module.pages[0].title, "Title 0");
    EXPECT_EQ(content(0), link(0) + link(1));
    EXPECT_EQ(content(2), link(0) + link(3));
    EXPECT_EQ(state.CurrentPage, 1);
}

TEST_F(ListOps, MovingAnActivityUpSwapsPlaceholdersButDownDoesNot) {
    giveQuestions(3);
    givePages({act(1) + act(2) + act(3), act(2)});
    moveListItemUp(lists(), "lstQAndA", 1);
    EXPECT_EQ(questionTexts(), (std::vector<std::string>{"Q2", "Q1", "Q3"}));
    EXPECT_EQ(content(0), act(2) + act(1) + act(3));
    EXPECT_EQ(content(1), act(1));
    EXPECT_EQ(state.CurrentItem, 0);

    moveListItemDown(lists(), "lstQAndA", 0);
    EXPECT_EQ(questionTexts(), (std::vector<std::string>{"Q1", "Q2", "Q3"}));
    EXPECT_EQ(content(0), act(2) + act(1) + act(3));
    EXPECT_EQ(state.CurrentItem, 1);
}

TEST_F(ListOps, OptionsAndTermsSwapWithoutTouchingContent) {
    giveQuestions(1);
    state.module.questions[0].options = {{"true", "0", "A", ""}, {"false", "1", "B", ""}};
    state.module.glossary = {{"0", "alpha", ""}, {"1", "beta", ""}};
    givePages({termLinkHTML(0, "alpha")});
    moveListItemDown(lists(), "lstOptions", 0);
    moveListItemUp(lists(), "lstTerms", 1);
    EXPECT_EQ(state.module.questions[0].options[0].txtDisplay, "B");
    EXPECT_EQ(state.CurrentOption, 1);
    EXPECT_EQ(state.module.glossary[0].term, "beta");
    EXPECT_EQ(state.CurrentTerm, 0);
    EXPECT_EQ(content(0), termLinkHTML(0, "alpha"));
}

TEST_F(ListOps, AddingReusesATrailingBlankItem) {
    givePages({"a"});
    addBlankPage(lists());
    ASSERT_EQ(state.module.pages.size(), 2u);
    EXPECT_EQ(state.module.pages[1].fileName, "page1.html");
    EXPECT_EQ(state.CurrentPage, 1);
    state.module.pages[1].content = "<P>&nbsp;</P>";
    addBlankPage(lists());
    EXPECT_EQ(state.module.pages.size(), 2u);
    EXPECT_EQ(state.module.pages[1].content, "");

    state.module.glossary = {{"0", "alpha", "a"}};
    addBlankTerm(lists());
    addBlankTerm(lists());
    ASSERT_EQ(state.module.glossary.size(), 2u);
    EXPECT_EQ(state.module.glossary[1].id, "1");
    EXPECT_EQ(state.CurrentTerm, 1);
    EXPECT_TRUE(state.ModuleChanged);

    giveQuestions(2);
    state.CurrentItem = 1;
    addBlankOption(lists());
    ASSERT_EQ(state.module.questions[1].options.size(), 2u);
    EXPECT_EQ(state.module.questions[1].options[1].txtDisplay, "Sample Option");
    EXPECT_EQ(state.CurrentOption, 1);
}

TEST_F(ListOps, NewQuestionsComeFromTheTemplateOfTheModuleType) {
    giveQuestions(1);
    addBlankQuestion(lists());
    ASSERT_EQ(state.module.questions.size(), 2u);
    EXPECT_EQ(state.module.questions[1].questionText, "");
    EXPECT_EQ(state.module.questions[1].id, "2");
    EXPECT_EQ(state.CurrentItem, 1);

    // In a Survey the new question already has its text, so the next one is appended.
    state.module.moduleType = kSurvey;
    addBlankQuestion(lists());
    addBlankQuestion(lists());
    ASSERT_EQ(state.module.questions.size(), 3u);
    EXPECT_EQ(state.module.questions[1].options.size(), 6u);
    EXPECT_EQ(state.module.questions[2].options[4].txtDisplay, "Poor");
}

TEST_F(ListOps, DroppingBlankQuestionsKeepsOrderAndOnePlaceholder) {
    giveQuestions(5);
    state.module.questions[0].questionText = "<P>&nbsp;</P>";
    state.module.questions[2].questionText = " ";
    state.module.questions[4].questionText = "";
    state.CurrentItem = 4;
    dropBlankQuestions(lists());
    EXPECT_EQ(questionTexts(), (std::vector<std::string>{"Q2", "Q4"}));
    EXPECT_EQ(state.CurrentItem, 1);

    for (auto& q : state.module.questions)
        q.questionText = "&nbsp;";
    dropBlankQuestions(lists());
    EXPECT_EQ(questionTexts(), (std::vector<std::string>{""}));
    EXPECT_EQ(state.CurrentItem, 0);
}

} // namespace
} // namespace lumora
