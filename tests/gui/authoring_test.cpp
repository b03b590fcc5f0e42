// Authoring on the main form: the pages, glossary and questions tabs wired to the list
// operations, their refusals shown and nothing changed by them, the lists refilled, and the
// questions tab's own fields.
#include "AuthoringFixture.h"

#include "content/ContentForms.h"
#include "content/ListOps.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>

namespace lumora::testing {
namespace {

std::string link(int page) {
    return pageLinkSearch(page) + ">go</A>";
}

// --- pages ---------------------------------------------------------------------------------

// The sample's first page links to the second: the Delete key on it asks, then refuses naming
// the first page's title, and the pages stay as they were; the third page can go.
TEST_F(AuthoringTest, DeletingALinkedPageNamesTheLinkingPageAndChangesNothing) {
    open(kLesson);
    const auto titles = pageTitles();
    const auto contents = pageContents();
    select("lstPages", 1);
    prompt.answer(Answer::Yes);
    QTest::keyRelease(list("lstPages"), Qt::Key_Delete);
    ASSERT_EQ(prompt.messages.size(), 2u);
    EXPECT_EQ(prompt.messages[0].text, "Are you sure you want to delete the selected item?");
    EXPECT_EQ(prompt.messages[0].title, "Confirm Delete");
    EXPECT_EQ(prompt.messages[1].text,
              "The selected pages is the target of a link in another page.\r\n"
              "Please remove links to this page from the following:\r\n     Welcome");
    EXPECT_EQ(prompt.messages[1].icon, Icon::Exclamation);
    EXPECT_EQ(pageTitles(), titles);
    EXPECT_EQ(pageContents(), contents);
    EXPECT_EQ(list("lstPages")->count(), 3);

    select("lstPages", 2);
    prompt.answer(Answer::Yes);
    click("btnRemovePage");
    EXPECT_EQ(rows("lstPages"), (std::vector<QString>{"Welcome", "1. Key ideas"}));
    EXPECT_EQ(list("lstPages")->currentRow(), 1);
    EXPECT_EQ(control<QLineEdit>(form, "txtPageTitle")->text(), "Key ideas");
}

TEST_F(AuthoringTest, MovingPagesUpAndDownRenumbersTheLinksInEveryPage) {
    open(kLesson);
    auto& pages = session.module.pages;
    pages[0].content = "<P>" + link(1) + link(2) + "</P>";
    pages[1].content = "<P>" + link(0) + "</P>";
    pages[2].content = "<P>" + link(1) + link(3) + "</P>";
    form->setPageList();
    const auto contents = pageContents();

    select("lstPages", 2);
    click("btnUpPage");
    EXPECT_EQ(pageTitles(),
              (std::vector<std::string>{"Welcome", "Check your understanding", "Key ideas"}));
    EXPECT_EQ(pageContents(), (std::vector<std::string>{"<P>" + link(2) + link(1) + "</P>",
                                                        "<P>" + link(2) + link(3) + "</P>",
                                                        "<P>" + link(0) + "</P>"}));
    EXPECT_EQ(rows("lstPages")[1], "1. Check your understanding");
    EXPECT_EQ(list("lstPages")->currentRow(), 1);

    click("btnDownPage");
    EXPECT_EQ(pageContents(), contents);
    EXPECT_EQ(list("lstPages")->currentRow(), 2);
    click("btnDownPage");
    EXPECT_EQ(prompt.last()->text, "You cannot move any lower");
    EXPECT_EQ(pageContents(), contents);
}

// Create writes the new page's file at once, so the folder stays a runnable course; the list
// entry follows the title as it is typed.
TEST_F(AuthoringTest, CreateAddsAPageWithItsFileAndTheListFollowsItsTitle) {
    open(kLesson);
    session.ModuleChanged = false;
    click("btnAddPage");
    EXPECT_EQ(session.module.pages.size(), 4u);
    EXPECT_EQ(list("lstPages")->currentRow(), 3);
    EXPECT_TRUE(containsText(readText(moduleFile("Course1", "page3.html")), "<LUMApageContent>"));
    auto* title = control<QLineEdit>(form, "txtPageTitle");
    QTest::keyClicks(title, "Sum");
    title->insert("\r\nmary"); // pasted over two lines
    EXPECT_EQ(session.module.pages[3].title, "Summary");
    EXPECT_EQ(rows("lstPages")[3], "3. Summary");
    EXPECT_TRUE(session.ModuleChanged);
}

// Both views show the stored page: an edit in one is there when the other is shown.
TEST_F(AuthoringTest, DesignAndSourceViewsCarryEachOthersEdits) {
    open(kLesson);
    typeInEditor("dhtmlLessonEdit", " Designed",
                 [&] { return containsText(session.module.pages[0].content, "Designed"); });
    auto* views = control<QTabWidget>(form, "tabLessonPage");
    auto* source = control<QPlainTextEdit>(form, "txtLessonEdit");
    views->setCurrentIndex(1);
    EXPECT_TRUE(source->toPlainText().contains("Designed"));
    source->appendPlainText("<P>From the source</P>");
    EXPECT_TRUE(containsText(session.module.pages[0].content, "<P>From the source</P>"));

    views->setCurrentIndex(0);
    waitLoaded("dhtmlLessonEdit");
    EXPECT_TRUE(
        js("dhtmlLessonEdit", "document.body.innerHTML").toString().contains("From the source"));
}

// The editors load the player's layout and the module's colours, as the course's pages do.
TEST_F(AuthoringTest, TheEditorsShowTheModulesStylesheet) {
    open(kLesson);
    const auto styled = [&](const char* editor, const QString& selector, const char* property,
                            const QString& value) {
        waitLoaded(editor);
        const QString read =
            QString("getComputedStyle(document.querySelector('%1')).%2").arg(selector, property);
        // The stylesheets may still be on their way when the content is in.
        return QTest::qWaitFor([&] { return js(editor, read).toString().startsWith(value); },
                               kWaitMs);
    };
    EXPECT_TRUE(styled("dhtmlLessonEdit", "body", "fontFamily", "Verdana"));
    // a:link {color: #000099;} of the module's stylesheet.
    EXPECT_TRUE(styled("dhtmlLessonEdit", "a", "color", "rgb(0, 0, 153)"));
    showTab(1);
    EXPECT_TRUE(styled("dhtmlQuestionEdit", "body", "fontFamily", "Verdana"));
}

// --- glossary ------------------------------------------------------------------------------

// A new term is typed into its fields, its definition over two lines, and comes back so from
// the files; unused, the Delete key removes it; a used term is refused.
TEST_F(AuthoringTest, ATermIsCreatedEditedSavedAndRemovedAndAUsedOneRefused) {
    open(kLesson);
    showTab(2);
    click("btnAddTerm");
    EXPECT_EQ(list("lstTerms")->currentRow(), 2);
    QTest::keyClicks(control<QLineEdit>(form, "txtTerm"), "Quiz");
    EXPECT_EQ(rows("lstTerms")[2], "Quiz");
    auto* definition = control<QPlainTextEdit>(form, "txtDefinition");
    QTest::keyClicks(definition, "Line one");
    QTest::keyClick(definition, Qt::Key_Return);
    QTest::keyClicks(definition, "line two");
    EXPECT_EQ(session.module.glossary[2].definition, "Line one\r\nline two");
    EXPECT_EQ(list("lstTerms")->currentRow(), 2);

    menu("mnuSave")->trigger();
    reopen();
    showTab(2);
    ASSERT_EQ(session.module.glossary.size(), 3u);
    // The files give the line break back as the two characters the player reads as one; the
    // field shows two lines again.
    EXPECT_EQ(session.module.glossary[2].definition, "Line one\\nline two");
    select("lstTerms", 2);
    EXPECT_EQ(definition->toPlainText(), "Line one\nline two");

    prompt.answer(Answer::Yes);
    QTest::keyRelease(list("lstTerms"), Qt::Key_Delete);
    EXPECT_EQ(rows("lstTerms"), (std::vector<QString>{"Lesson", "Activity"}));
    EXPECT_EQ(session.CurrentTerm, 1);

    // A term a page links to is refused, naming the page, and stays.
    select("lstTerms", 0);
    prompt.answer(Answer::Yes);
    click("btnRemoveTerm");
    EXPECT_EQ(prompt.last()->text, "The selected term is currently in use.\r\n"
                                   "Please remove links to this term from the following pages:\r\n"
                                   "     Welcome");
    EXPECT_EQ(session.module.glossary.size(), 2u);
    EXPECT_EQ(rows("lstTerms"), (std::vector<QString>{"Lesson", "Activity"}));
}

// --- Q&A items and questions ---------------------------------------------------------------

class ActivityTest : public AuthoringTest {
  protected:
    // Four activities, each page holding placeholders of all four.
    void SetUp() override {
        AuthoringTest::SetUp();
        open(kLesson);
        auto& questions = session.module.questions;
        questions.resize(4, questions[0]);
        for (int i = 0; i < 4; ++i)
            questions[i].questionText = "Q" + std::to_string(i + 1);
        for (LessonPage& page : session.module.pages)
            page.content = placeholders({1, 2, 3, 4});
        showTab(1);
    }

    std::string placeholders(std::initializer_list<int> numbers) const {
        std::string html;
        for (int n : numbers)
            html += activityPlaceholder(session.contentPaths(), n);
        return html;
    }
    std::vector<std::string> texts() const {
        std::vector<std::string> t;
        for (const QAndAItem& q : session.module.questions)
            t.push_back(q.questionText);
        return t;
    }
};

TEST_F(ActivityTest, DeletingActivityTwoOfFourRenumbersThreeAndFour) {
    select("lstQAndA", 1);
    prompt.answer(Answer::Yes);
    click("btnRemoveQuestion");
    EXPECT_EQ(texts(), (std::vector<std::string>{"Q1", "Q3", "Q4"}));
    for (const std::string& content : pageContents())
        EXPECT_EQ(content, placeholders({1, 2, 3}));
    EXPECT_EQ(rows("lstQAndA"), (std::vector<QString>{"1. Q1", "2. Q3", "3. Q4"}));
    EXPECT_EQ(list("lstQAndA")->currentRow(), 1);
}

// The buttons are hidden for a lesson; their handlers keep the program's asymmetry.
TEST_F(ActivityTest, MovingAnActivityUpRenumbersItsPlaceholdersAndDownDoesNot) {
    select("lstQAndA", 1);
    click("btnUpQuestion");
    EXPECT_EQ(texts(), (std::vector<std::string>{"Q2", "Q1", "Q3", "Q4"}));
    for (const std::string& content : pageContents())
        EXPECT_EQ(content, placeholders({2, 1, 3, 4}));
    EXPECT_EQ(list("lstQAndA")->currentRow(), 0);

    click("btnDownQuestion");
    EXPECT_EQ(texts(), (std::vector<std::string>{"Q1", "Q2", "Q3", "Q4"}));
    for (const std::string& content : pageContents())
        EXPECT_EQ(content, placeholders({2, 1, 3, 4}));
}

// Number to Ask is checked on every change: four questions, two asked.
TEST_F(AuthoringTest, NumberToAskRefusesWhatIsNoCountAndCapsAtTheQuestions) {
    open(kEvaluation);
    session.module.intNumQuestions = 2;
    form->setQAndAList();
    auto* field = control<QLineEdit>(form, "txtNumberToAsk");
    ASSERT_EQ(field->text(), "2");
    const std::string notACount = "You can only enter a positive number, without decimals";
    const struct {
        const char* typed;
        std::string message;
        std::int16_t stored;
    } cases[] = {
        {"0", "", 0},
        {"3.5", notACount, 0},
        {"-1", notACount, 0},
        {"9", "You don't have that many to ask", 4},
        {"1234567890123", "Please choose a number less than 2000000000.", 4},
        {"3", "", 3},
    };
    for (const auto& c : cases) {
        prompt.messages.clear();
        field->selectAll();
        field->insert(c.typed); // one change, as a paste makes it
        EXPECT_EQ(prompt.messages.empty() ? "" : prompt.messages[0].text, c.message) << c.typed;
        if (!c.message.empty()) {
            EXPECT_EQ(prompt.messages[0].title, "Error");
            EXPECT_EQ(prompt.messages[0].icon, Icon::Critical);
        }
        EXPECT_EQ(session.module.intNumQuestions, c.stored) << c.typed;
        EXPECT_EQ(field->text().toStdString(), std::to_string(c.stored)) << c.typed;
    }
    // Clearing the field to type anew is refused at once, and the number stays.
    prompt.messages.clear();
    field->setCursorPosition(1);
    QTest::keyClick(field, Qt::Key_Backspace);
    ASSERT_EQ(prompt.messages.size(), 1u);
    EXPECT_EQ(prompt.messages[0].text, notACount);
    EXPECT_EQ(field->text(), "3");
}

// A new question has no list entry until it has text; typing gives it one. The type, the
// rationale and the shuffle boxes write into it.
TEST_F(AuthoringTest, ANewQuestionIsListedOnceTypedAndItsFieldsWriteIntoIt) {
    open(kEvaluation);
    click("btnAddQuestion");
    EXPECT_EQ(session.CurrentItem, 4);
    EXPECT_EQ(list("lstQAndA")->count(), 4);
    EXPECT_EQ(rows("lstOptions"), (std::vector<QString>{"Sample Option"}));
    typeInEditor("dhtmlQuestionEdit", "Fifth?",
                 [&] { return session.module.questions[4].questionText == "Fifth?"; });
    EXPECT_EQ(rows("lstQAndA").back(), "5. Fifth?");
    EXPECT_EQ(list("lstQAndA")->currentRow(), 4);

    auto* type = control<QComboBox>(form, "lstQuestionType");
    type->setCurrentIndex(1);
    emit type->activated(1);
    EXPECT_EQ(session.module.questions[4].questionType, "checkbox");
    QTest::keyClicks(control<QLineEdit>(form, "txtRationale"), "Because.");
    EXPECT_EQ(session.module.questions[4].rationale, "Because.");
    control<QCheckBox>(form, "chkShuffleOptions")->click();
    EXPECT_EQ(session.module.questions[4].shuffleDistractors, "true");
    const std::string shuffled = session.module.shuffleEvalQuestions;
    control<QCheckBox>(form, "chkShuffleQuestions")->click();
    EXPECT_NE(session.module.shuffleEvalQuestions, shuffled);
    control<QPushButton>(form, "btnSubmit")->click();
    select("lstQAndA", 0);
    select("lstQAndA", 4);
    EXPECT_EQ(type->currentIndex(), 1);
    EXPECT_EQ(control<QLineEdit>(form, "txtRationale")->text(), "Because.");
}

TEST_F(AuthoringTest, ASurveyQuestionIsCreatedAsTheDefaultSurveyQuestion) {
    open(kSurvey);
    const auto before = list("lstQAndA")->count();
    click("btnAddQuestion");
    ASSERT_EQ(list("lstQAndA")->count(), before + 1);
    EXPECT_EQ(rows("lstQAndA").back().toStdString(),
              std::to_string(before + 1) + ". " +
                  "Rate how well you met the objective: <i>Enter Learning Objective Here</i>.");
    EXPECT_EQ(rows("lstOptions")[0], "Excellent");
    EXPECT_EQ(rows("lstOptions")[4], "Poor");
}

} // namespace
} // namespace lumora::testing
