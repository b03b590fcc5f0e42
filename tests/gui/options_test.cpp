// The option list of the questions tab and the option editor frmLOption over the sample
// Evaluation's first question ("Lesson", "Evaluation" correct, "Survey").
#include "AuthoringFixture.h"

#include "forms/main/OptionForm.h"

#include <QCheckBox>
#include <QLineEdit>

namespace lumora::testing {
namespace {

class OptionsTest : public AuthoringTest {
  protected:
    void SetUp() override {
        AuthoringTest::SetUp();
        open(kEvaluation);
        select("lstQAndA", 0);
    }

    OptionForm* editor() { return form->optionForm(); }
    QLineEdit* display() { return control<QLineEdit>(editor(), "txtDisplay"); }
    QPushButton* editorButton(const char* name) { return control<QPushButton>(editor(), name); }
    const std::vector<QuestionOption>& options() const {
        return session.module.questions[0].options;
    }
    bool ticked(int row) {
        return list("lstOptions")->item(row)->data(Qt::AccessibleDescriptionRole) == "Correct";
    }
};

// The correct option carries the tick, the others none, and the row keeps the option's text;
// the editor steps through the options and creates one at the last.
TEST_F(OptionsTest, TheListTicksTheCorrectOptionsAndTheEditorStepsAndCreates) {
    EXPECT_EQ(rows("lstOptions"), (std::vector<QString>{"Lesson", "Evaluation", "Survey"}));
    EXPECT_FALSE(ticked(0));
    EXPECT_TRUE(ticked(1));
    const qint64 tick = list("lstOptions")->item(1)->icon().cacheKey();
    EXPECT_NE(list("lstOptions")->item(0)->icon().cacheKey(), tick);

    select("lstOptions", 0);
    click("btnEditOption");
    ASSERT_NE(editor(), nullptr);
    EXPECT_FALSE(editor()->isModal());
    session.ModuleChanged = false;
    control<QCheckBox>(editor(), "chkCorrect")->click();
    EXPECT_EQ(options()[0].correct, "true");
    EXPECT_TRUE(ticked(0));
    EXPECT_EQ(list("lstOptions")->item(0)->icon().cacheKey(), tick);
    EXPECT_TRUE(session.ModuleChanged);

    // Back and Next step through the options; at the last, Next reads "Create" and appends a
    // "Sample Option", selected whole so typing replaces it, and each keystroke shows in the
    // main form's list. Next refuses an empty text and stays.
    EXPECT_EQ(display()->text(), "Lesson");
    EXPECT_FALSE(editorButton("btnBack")->isEnabled());
    EXPECT_EQ(editorButton("btnNext")->text(), "Next");

    editorButton("btnNext")->click();
    editorButton("btnNext")->click();
    EXPECT_EQ(display()->text(), "Survey");
    EXPECT_EQ(list("lstOptions")->currentRow(), 2);
    EXPECT_EQ(editorButton("btnNext")->text(), "Create");

    editorButton("btnNext")->click();
    ASSERT_EQ(options().size(), 4u);
    EXPECT_EQ(display()->text(), "Sample Option");
    EXPECT_EQ(display()->selectedText(), "Sample Option");
    EXPECT_EQ(list("lstOptions")->count(), 4);
    EXPECT_EQ(list("lstOptions")->currentRow(), 3);
    QTest::keyClicks(display(), "Quiz");
    EXPECT_EQ(options()[3].txtDisplay, "Quiz");
    EXPECT_EQ(rows("lstOptions")[3], "Quiz");

    display()->clear();
    prompt.messages.clear();
    editorButton("btnNext")->click();
    ASSERT_EQ(prompt.messages.size(), 1u);
    EXPECT_EQ(prompt.messages[0].text, "You must provide text for the user to select");
    EXPECT_EQ(prompt.messages[0].icon, Icon::Critical);
    EXPECT_EQ(session.CurrentOption, 3);
    EXPECT_EQ(options().size(), 4u);

    editorButton("btnBack")->click();
    EXPECT_EQ(display()->text(), "Survey");
    editorButton("btnClose")->click();
    EXPECT_FALSE(editor() && editor()->isVisible());
}

// Up refreshes through the item list; the Delete key removes the selected option. Edit needs a
// selection; a double-click below the rows with none opens the editor on no option, with
// nothing to type into.
TEST_F(OptionsTest, UpDeleteAndEditWithoutASelection) {
    select("lstOptions", 1);
    click("btnUpOption");
    EXPECT_EQ(rows("lstOptions"), (std::vector<QString>{"Evaluation", "Lesson", "Survey"}));
    EXPECT_EQ(list("lstOptions")->currentRow(), 0);
    EXPECT_TRUE(ticked(0));

    prompt.answer(Answer::Yes);
    QTest::keyRelease(list("lstOptions"), Qt::Key_Delete);
    EXPECT_EQ(rows("lstOptions"), (std::vector<QString>{"Lesson", "Survey"}));
    EXPECT_EQ(options().size(), 2u);

    list("lstOptions")->clearSelection();
    click("btnEditOption");
    EXPECT_EQ(prompt.last()->text, "No item is selected");
    EXPECT_EQ(editor(), nullptr);

    QWidget* viewport = list("lstOptions")->viewport();
    QTest::mouseDClick(viewport, Qt::LeftButton, {}, QPoint(10, viewport->height() - 5));
    ASSERT_NE(editor(), nullptr);
    EXPECT_TRUE(editor()->isVisible());
    EXPECT_EQ(session.CurrentOption, -1);
    EXPECT_FALSE(display()->isEnabled());
    EXPECT_EQ(display()->text(), "");
}

} // namespace
} // namespace lumora::testing
