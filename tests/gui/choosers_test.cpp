// The term chooser, the Q&A chooser and the page link dialog over the real page editors:
// references inserted into the design view around the marked text (its links off, its
// formatting kept) and into the source view as text, the refusals word for word, the Delete
// key, and Create and Edit handing over to the main form.
#include "AuthoringFixture.h"

#include "content/ContentForms.h"
#include "content/ListOps.h"
#include "forms/dialogs/PageLinkForm.h"
#include "forms/dialogs/QAndAChooser.h"
#include "forms/dialogs/TermChooser.h"

#include <QAction>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>

namespace lumora::testing {
namespace {

class ChooserTest : public EditingTest {
  protected:
    // The main form's insert buttons sit in the page frame; a chooser has buttons of the same
    // names.
    void clickMain(const char* button) {
        control<QPushButton>(control<QWidget>(form, "frameMain"), button)->click();
    }

    template <class Form> Form* open(const char* button, Form* (MainForm::*shown)() const) {
        clickMain(button);
        Form* chooser = (form->*shown)();
        EXPECT_TRUE(chooser && chooser->isVisible()) << button;
        return chooser;
    }
    TermChooser* openTerms() { return open("btnInsertTerm", &MainForm::termChooser); }
    QAndAChooser* openQAndA() { return open("btnInsertQAndA", &MainForm::qAndAChooser); }
    PageLinkForm* openPageLink() { return open("Command1", &MainForm::pageLinkForm); }

    void clickInsert(InsertChooser* chooser, const char* button) {
        inserting(chooser, [&] { control<QPushButton>(chooser, button)->click(); });
    }

    static QStringList rows(QListWidget* list) {
        QStringList texts;
        for (int i = 0; i < list->count(); ++i)
            texts << list->item(i)->text();
        return texts;
    }
};

TEST_F(ChooserTest, TermReferencesTakeTheMarkedTextOrTheTermItself) {
    showPage("<P>Read this.</P>");
    caretIn(page, "Read");
    session.CurrentTerm = 1;
    TermChooser* chooser = openTerms();
    auto* list = control<QListWidget>(chooser, "lstTerms");
    EXPECT_EQ(rows(list), (QStringList{"Lesson", "Activity"}));
    EXPECT_EQ(list->currentRow(), 1) << "the current term is selected";
    clickInsert(chooser, "btnInsertTerm");
    EXPECT_TRUE(containsText(pageContent(),
                             "<A href=\"#term1\" name=\"term1\" onClick=\"parentRef."
                             "showGlossaryPopup('1', 240, 180);\" border=\"0\">Activity</A>ead"))
        << pageContent();
    EXPECT_FALSE(chooser->isVisible());

    // No row selected: the chooser says so and stays open; the page is untouched.
    const std::string before = pageContent();
    chooser = openTerms();
    control<QListWidget>(chooser, "lstTerms")->clearSelection();
    control<QPushButton>(chooser, "btnInsertTerm")->click();
    expectLast("You must select a term", "Error", Icon::Critical);
    EXPECT_TRUE(chooser->isVisible());
    EXPECT_EQ(pageContent(), before);

    // A term added in the main form meanwhile is listed when the author comes back.
    session.module.glossary.push_back({"2", "Quiz", "A few questions."});
    form->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(form));
    chooser->activateWindow();
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return rows(control<QListWidget>(chooser, "lstTerms")).contains("Quiz"); }, kWaitMs));

    // A double-click inserts; in the source view the reference goes in as text, the marked
    // text untouched by any formatting step.
    showSource("<P>Read more</P>", 3, 12);
    doubleClickRow(chooser, 0);
    EXPECT_EQ(pageContent(), "<P>" + termLinkHTML(0, "Read more") + "</P>");
    EXPECT_FALSE(chooser->isVisible());
}

TEST_F(ChooserTest, PageLinksGoInAroundTheMarkedTextOrAsThePagesTitle) {
    showSource("<P>Read more</P>", 3, 12);
    PageLinkForm* dialog = openPageLink();
    auto* list = control<QListWidget>(dialog, "lstPages");
    EXPECT_EQ(rows(list), (QStringList{"Welcome", "Key ideas", "Check your understanding"}));
    EXPECT_TRUE(list->selectedItems().isEmpty());
    control<QPushButton>(dialog, "btnInsertLink")->click();
    expectLast("You must select a page", "Error", Icon::Critical);
    EXPECT_TRUE(dialog->isVisible());

    list->setCurrentRow(2);
    clickInsert(dialog, "btnInsertLink");
    EXPECT_EQ(pageContent(), "<P><A href=\"page2.html\">Read more</A></P>");
    EXPECT_FALSE(dialog->isVisible());

    // In the design view with nothing marked the link shows the page's title.
    control<QTabWidget>(form, "tabLessonPage")->setCurrentIndex(0);
    showPage("<P>Intro</P>");
    caretIn(page, "Intro");
    dialog = openPageLink();
    doubleClickRow(dialog, 0);
    EXPECT_TRUE(containsText(pageContent(), "<A href=\"page0.html\">Welcome</A>")) << pageContent();
}

TEST_F(ChooserTest, QAndAPlaceholdersAndTheDeleteKey) {
    showPage("<P>one two</P>");
    select(page, "P", "two");
    session.CurrentItem = 1;
    QAndAChooser* chooser = openQAndA();
    auto* list = control<QListWidget>(chooser, "lstQAndA");
    EXPECT_EQ(rows(list), (QStringList{"1. When is a lesson completed?",
                                       "2. Which of these can a lesson page hold?"}));
    EXPECT_EQ(list->currentRow(), 1);
    clickInsert(chooser, "btnInsertQAndA");
    const ContentPaths paths = session.contentPaths();
    EXPECT_TRUE(containsText(pageContent(), "<P>one " + activityPlaceholder(paths, 2) + "</P>"))
        << pageContent();

    // The Delete key asks first; No keeps the item.
    chooser = openQAndA();
    list = control<QListWidget>(chooser, "lstQAndA");
    list->setCurrentRow(0);
    prompt.answer(Answer::No);
    QTest::keyClick(list, Qt::Key_Delete);
    EXPECT_EQ(prompt.last()->title, "Confirm Delete"); // its wording is ListOps' own test
    EXPECT_EQ(session.module.questions.size(), 2u);
    EXPECT_EQ(list->currentRow(), 0) << "the author's row stays selected";

    // Yes deletes it: the lists refill and activity 2 becomes 1 in the page, which the editor
    // shows again.
    QSignalSpy reloaded(page, &HtmlEditor::loaded);
    prompt.answer(Answer::Yes);
    QTest::keyClick(list, Qt::Key_Delete);
    ASSERT_EQ(session.module.questions.size(), 1u);
    EXPECT_EQ(rows(list), (QStringList{"1. Which of these can a lesson page hold?"}));
    EXPECT_EQ(control<QListWidget>(control<QWidget>(form, "tabMain"), "lstQAndA")->count(), 1);
    EXPECT_EQ(pageContent(), "<P>one " + activityPlaceholder(paths, 1) + "</P>");
    ASSERT_TRUE(reloaded.count() > 0 || reloaded.wait(kWaitMs));
    EXPECT_TRUE(js(page, "document.body.innerHTML.includes('QAndAStart.gif\">1<')").toBool());
}

// Edit shows the chosen entry on the main form's tab, Create adds one there; either way the
// chooser goes.
TEST_F(ChooserTest, CreateAndEditHandOverToTheMainForm) {
    TermChooser* terms = openTerms();
    control<QListWidget>(terms, "lstTerms")->clearSelection();
    control<QPushButton>(terms, "btnEditTerm")->click();
    expectLast("You must select an item", "Error", Icon::Critical);

    auto* tabMain = control<QTabWidget>(form, "tabMain");
    const struct {
        const char* button;
        int row; // selected in the chooser, or none
        int tab, current;
        std::size_t count;
    } rows[] = {
        {"btnEditTerm", 1, 2, 1, 2},
        {"btnCreateTerm", -1, 2, 2, 3},
        {"btnEditQAndA", 1, 1, 1, 2},
        {"btnCreateQAndA", -1, 1, 2, 3},
    };
    for (const auto& r : rows) {
        SCOPED_TRACE(r.button);
        const bool term = r.tab == 2;
        const char* listName = term ? "lstTerms" : "lstQAndA";
        InsertChooser* chooser =
            term ? static_cast<InsertChooser*>(form->termChooser()) : form->qAndAChooser();
        if (!chooser || !chooser->isVisible()) {
            tabMain->setCurrentIndex(0);
            chooser = term ? static_cast<InsertChooser*>(openTerms()) : openQAndA();
        }
        if (r.row >= 0)
            control<QListWidget>(chooser, listName)->setCurrentRow(r.row);
        control<QPushButton>(chooser, r.button)->click();
        EXPECT_FALSE(chooser->isVisible());
        EXPECT_EQ(tabMain->currentIndex(), r.tab);
        EXPECT_EQ(term ? session.CurrentTerm : session.CurrentItem, r.current);
        if (r.row >= 0) { // the chosen row, selected on the main form's tab
            EXPECT_EQ(control<QListWidget>(tabMain, listName)->currentRow(), r.current);
        }
        EXPECT_EQ(term ? session.module.glossary.size() : session.module.questions.size(), r.count);
    }
}

// The buttons reach the refusal of an empty glossary or pool (its texts are InsertRefusals' own
// tests): no chooser opens and the page stays.
TEST_F(ChooserTest, AnEmptyGlossaryOrPoolOnlySaysSo) {
    session.module.glossary = {session.defaults.term};
    session.module.questions = {session.defaults.item};
    const std::string before = pageContent();
    for (const auto& [button, title] : {std::pair{"btnInsertTerm", "Empty Glossary"},
                                        std::pair{"btnInsertQAndA", "Empty Q&A Pool"}}) {
        clickMain(button);
        ASSERT_NE(prompt.last(), nullptr);
        EXPECT_EQ(prompt.last()->title, title);
    }
    EXPECT_EQ(form->termChooser(), nullptr);
    EXPECT_EQ(form->qAndAChooser(), nullptr);
    EXPECT_EQ(pageContent(), before);
}

} // namespace
} // namespace lumora::testing
