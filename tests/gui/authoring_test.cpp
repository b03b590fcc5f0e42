// Authoring on the main form: the pages, glossary and questions tabs wired to the list
// operations, their refusals shown and nothing changed by them, the lists refilled, the
// questions tab's own fields, and texts the module scripts cannot carry named at save.
#include "AuthoringFixture.h"

#include "content/ContentForms.h"
#include "content/ListOps.h"
#include "forms/main/OptionForm.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>

namespace lumora::testing {
namespace {

// --- pages ---------------------------------------------------------------------------------

// The pages tab wired to the list operations (whose rules and refusals their own tests pin):
// the Delete key asks and shows the refusal of a linked page; Up and Down move a page, its links
// with it; Create writes the new page's file at once, so the folder stays a runnable course, and
// the list follows its title as typed; Remove refills the list.
TEST_F(AuthoringTest, ThePageListButtonsAndKeysReachTheListOperations) {
    open(kLesson);
    const auto contents = pageContents();
    select("lstPages", 1);
    prompt.answer(Answer::Yes);
    QTest::keyRelease(list("lstPages"), Qt::Key_Delete);
    ASSERT_EQ(prompt.messages.size(), 2u); // the question, then the refusal
    EXPECT_TRUE(containsText(prompt.messages[1].text, "target of a link")) << "linked page";
    EXPECT_EQ(pageContents(), contents);

    select("lstPages", 2);
    click("btnUpPage");
    EXPECT_EQ(rows("lstPages"),
              (std::vector<QString>{"Welcome", "1. Check your understanding", "2. Key ideas"}));
    EXPECT_EQ(list("lstPages")->currentRow(), 1);
    EXPECT_TRUE(containsText(session.module.pages[0].content, pageLinkSearch(2)))
        << "the link to the moved page follows it";
    click("btnDownPage");
    EXPECT_EQ(pageContents(), contents);

    session.ModuleChanged = false;
    click("btnAddPage");
    EXPECT_EQ(list("lstPages")->currentRow(), 3);
    EXPECT_TRUE(containsText(readText(moduleFile("Course1", "page3.html")), "<LUMApageContent>"));
    auto* title = control<QLineEdit>(form, "txtPageTitle");
    QTest::keyClicks(title, "Sum");
    title->insert("\r\nmary"); // pasted over two lines
    EXPECT_EQ(session.module.pages[3].title, "Summary");
    EXPECT_EQ(rows("lstPages")[3], "3. Summary");
    EXPECT_TRUE(session.ModuleChanged);

    prompt.answer(Answer::Yes);
    click("btnRemovePage");
    EXPECT_EQ(list("lstPages")->count(), 3);
    EXPECT_EQ(list("lstPages")->currentRow(), 2);
    EXPECT_EQ(title->text(), "Check your understanding");
}

// Typing into the page editor reaches the selected page, and showing a page is no edit. Both
// views show the stored page: an edit in one is there when the other is shown.
TEST_F(AuthoringTest, TypingReachesTheSelectedPageAndBothViewsCarryEachOthersEdits) {
    open(kLesson);
    waitLoaded("dhtmlLessonEdit");
    QSignalSpy loaded(control<HtmlEditor>(form, "dhtmlLessonEdit"), &HtmlEditor::loaded);
    select("lstPages", 1);
    ASSERT_TRUE(loaded.wait(kWaitMs));
    EXPECT_FALSE(session.ModuleChanged);
    typeInEditor("dhtmlLessonEdit", " Designed",
                 [&] { return containsText(session.module.pages[1].content, "Designed"); });
    EXPECT_TRUE(session.ModuleChanged);
    EXPECT_FALSE(containsText(session.module.pages[0].content, "Designed"));
    auto* views = control<QTabWidget>(form, "tabLessonPage");
    auto* source = control<QPlainTextEdit>(form, "txtLessonEdit");
    views->setCurrentIndex(1);
    EXPECT_TRUE(source->toPlainText().contains("Designed"));
    source->appendPlainText("<P>From the source</P>");
    EXPECT_TRUE(containsText(session.module.pages[1].content, "<P>From the source</P>"));

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
    EXPECT_TRUE(containsText(prompt.last()->text, "in use")) << prompt.last()->text;
    EXPECT_TRUE(containsText(prompt.last()->text, "     Welcome")) << prompt.last()->text;
    EXPECT_EQ(session.module.glossary.size(), 2u);
    EXPECT_EQ(rows("lstTerms"), (std::vector<QString>{"Lesson", "Activity"}));
}

// --- Q&A items and questions ---------------------------------------------------------------

// The Q&A tab's Up and Remove reach the placeholders in the pages (the renumbering rules are the
// list operations' own tests).
TEST_F(AuthoringTest, MovingAndRemovingAnActivityRenumbersItsPlaceholders) {
    open(kLesson);
    const auto placeholder = [&](int n) { return activityPlaceholder(session.contentPaths(), n); };
    session.module.pages[0].content = placeholder(1) + placeholder(2);
    showTab(1);
    select("lstQAndA", 1);
    click("btnUpQuestion");
    EXPECT_EQ(session.module.pages[0].content, placeholder(2) + placeholder(1));
    EXPECT_EQ(list("lstQAndA")->currentRow(), 0);
    prompt.answer(Answer::Yes);
    click("btnRemoveQuestion");
    EXPECT_EQ(session.module.pages[0].content, placeholder(1));
    EXPECT_EQ(rows("lstQAndA"), (std::vector<QString>{"1. When is a lesson completed?"}));
}

// The Evaluation's questions tab. Number to Ask is checked on every change (the rules are
// NumberToAsk's own tests): four questions, two asked. A new question has no list entry until
// it has text; typing gives it one.
TEST_F(AuthoringTest, NumberToAskAndANewQuestionsFieldsOfAnEvaluation) {
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
        {"3.5", notACount, 2},
        {"9", "You don't have that many to ask", 4},
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

    click("btnAddQuestion");
    EXPECT_EQ(session.CurrentItem, 4);
    EXPECT_EQ(list("lstQAndA")->count(), 4);
    EXPECT_EQ(rows("lstOptions"), (std::vector<QString>{"Sample Option"}));
    typeInEditor("dhtmlQuestionEdit", "Fifth?",
                 [&] { return session.module.questions[4].questionText == "Fifth?"; });
    EXPECT_EQ(rows("lstQAndA").back(), "5. Fifth?");
    EXPECT_EQ(list("lstQAndA")->currentRow(), 4);

    // The fields write into the item and show it again when it is selected anew (the type and the
    // rationale also reach the files in AuthoredModules).
    auto* type = control<QComboBox>(form, "lstQuestionType");
    type->setCurrentIndex(1);
    emit type->activated(1);
    QTest::keyClicks(control<QLineEdit>(form, "txtRationale"), "Because.");
    control<QCheckBox>(form, "chkShuffleOptions")->click();
    EXPECT_EQ(session.module.questions[4].shuffleDistractors, "true");
    const std::string shuffled = session.module.shuffleEvalQuestions;
    control<QCheckBox>(form, "chkShuffleQuestions")->click();
    EXPECT_NE(session.module.shuffleEvalQuestions, shuffled);
    control<QPushButton>(form, "btnSubmit")->click();
    select("lstQAndA", 0);
    select("lstQAndA", 4);
    EXPECT_EQ(session.module.questions[4].questionType, "checkbox");
    EXPECT_EQ(type->currentIndex(), 1);
    EXPECT_EQ(control<QLineEdit>(form, "txtRationale")->text(), "Because.");
}

// --- bad input -----------------------------------------------------------------------------

// A backslash before a quote or at the end of a text would stop the course: the save goes on
// and names those texts. (Quotes, markup, emoji and long texts typed into every field are
// AuthoredModules' hostile lesson, which the player's tests run.)
TEST_F(AuthoringTest, TextsTheScriptsCannotCarryAreNamedWhenSaved) {
    open(kLesson);
    paste("txtModuleTitle", "C:\\courses\\");
    paste("txtCopyright", "C:\\courses \"quoted\"");
    showTab(1);
    select("lstQAndA", 0);
    select("lstOptions", 0);
    click("btnEditOption");
    paste("txtDisplay", "say \\\"hi\\\"", form->optionForm());
    menu("mnuSave")->trigger();
    ASSERT_EQ(prompt.messages.size(), 1u);
    EXPECT_EQ(prompt.messages[0].title, "Warning");
    EXPECT_TRUE(containsText(prompt.messages[0].text,
                             "browser:\r\n     Module Title\r\n     Option 1 of Q&A item 1\r\n"));
    EXPECT_FALSE(session.ModuleChanged);
    EXPECT_TRUE(containsText(readText(moduleFile("Course1", "scripts/inc_ModuleInfo.js")),
                             "var modTitle = \"C:\\courses\\\";"));

    // The files hold the texts as typed: they come back from them unchanged.
    reopen();
    EXPECT_EQ(session.module.modTitle, "C:\\courses\\");
    EXPECT_EQ(session.module.copyright, "C:\\courses \"quoted\"");
    EXPECT_EQ(session.module.questions[0].options[0].txtDisplay, "say \\\"hi\\\"");
}

} // namespace
} // namespace lumora::testing
