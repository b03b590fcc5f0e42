// The pure parts of the forms: list texts, the resolution rule, the message adaptation of the
// prompt, the About box's dictionary names; and the prompt's real message box.
#include "GuiFixture.h"

#include "forms/QtPrompt.h"
#include "forms/dialogs/AboutForm.h"
#include "forms/main/ListTexts.h"

#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

namespace lumora::testing {
namespace {

// Page lines count from zero with the first unnumbered; question lines count from one, lose
// their markup and leave empty questions out; a page title loses only CR LF pairs.
TEST(ListTexts, NumberingOfPagesAndQuestionsAndTitleLineBreaks) {
    CourseModule module;
    for (const char* title : {"Intro", "Basics", "Review"})
        module.pages.push_back({"", title, ""});
    EXPECT_EQ(getNumberedPageText(module, 0), "Intro");
    EXPECT_EQ(getNumberedPageText(module, 2), "2. Review");
    EXPECT_EQ(getNumberedPageText(module, 3), "");

    module.questions.resize(3);
    module.questions[0].questionText = "<P>What is it?&nbsp;</P>";
    module.questions[2].questionText = "Third";
    EXPECT_EQ(questionListTexts(module), (std::vector<std::string>{"1. What is it?", "3. Third"}));

    EXPECT_EQ(pageTitleFromField("Two\r\nLines"), "TwoLines");
    EXPECT_EQ(pageTitleFromField("Lone\nfeed"), "Lone\nfeed");
}

TEST(LayoutRules, OnlyAMaximisedFormOnAShortScreenIsRefused) {
    EXPECT_TRUE(resolutionTooLow(true, 479));
    EXPECT_FALSE(resolutionTooLow(true, 480));
    EXPECT_FALSE(resolutionTooLow(false, 400));
}

// The real message box: its text, title, icon and buttons, answered by clicking No.
TEST(QtPromptBox, ShowsTheQuestionAsAskedAndAnswersWithTheButtonClicked) {
    QtPrompt prompt;
    QString seenText, seenTitle;
    QMessageBox::Icon seenIcon = QMessageBox::NoIcon;
    bool hadYes = false;
    QTimer::singleShot(0, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        seenText = box->text();
        seenTitle = box->windowTitle();
        seenIcon = box->icon();
        hadYes = box->button(QMessageBox::Yes) != nullptr;
        box->button(QMessageBox::No)->click();
    });
    Answer answer =
        prompt.message("A <b>line</b>\r\nand another", "", Icon::Exclamation, Buttons::YesNo);
    EXPECT_EQ(answer, Answer::No);
    EXPECT_EQ(seenText, "A <b>line</b>\nand another");
    EXPECT_EQ(seenTitle, "Lumora");
    EXPECT_EQ(seenIcon, QMessageBox::Warning);
    EXPECT_TRUE(hadYes);
}

// Enter answers with the default button the caller named, so a question that loses work can
// make a stray Enter harmless.
TEST(QtPromptBox, EnterAnswersWithTheDefaultButton) {
    QtPrompt prompt;
    for (const Answer chosen : {Answer::Yes, Answer::No}) {
        QTimer::singleShot(0, [] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            QTest::keyClick(box, Qt::Key_Return);
        });
        EXPECT_EQ(
            prompt.message("Sure?", "Exit Confirmation", Icon::Exclamation, Buttons::YesNo, chosen),
            chosen);
    }
}

TEST(AboutBox, NamesTheDictionariesPresentInOrder) {
    QTemporaryDir dir;
    const std::string folder = dir.path().toStdString();
    EXPECT_EQ(lexiconNames(folder), "");
    for (const char* file : {"en_med_glut.dic", "en_US.dic"})
        std::ofstream(std::filesystem::path(folder) / file) << "1\nword\n";
    EXPECT_EQ(lexiconNames(folder), "Standard, Medical");
    std::ofstream(std::filesystem::path(folder) / "legal.dic") << "1\nword\n";
    EXPECT_EQ(lexiconNames(folder), "Standard, Legal, Medical");
}

using AboutForm_ = GuiTest;

TEST_F(AboutForm_, SystemInfoWithoutTheToolSaysItIsUnavailable) {
    AboutForm about(session);
    control<QPushButton>(&about, "cmdSysInfo")->click();
    ASSERT_NE(prompt.last(), nullptr);
    EXPECT_EQ(prompt.last()->text, "System Information Is Unavailable At This Time");
    EXPECT_EQ(prompt.last()->icon, Icon::None);
}

} // namespace
} // namespace lumora::testing
