// Three modules authored from their templates the way an author makes them, through the main
// form, the option editor, the choosers and the page link dialog: each is saved, opened again
// from its files and found as it was. A fourth lesson is typed full of hostile texts. With
// LUMORA_AUTHORED_DIR set (CTest sets it), each saved folder is copied there under its name
// (Lesson, Evaluation, Survey, Hostile) for the learner player's tests, which run them in the
// browser (tests/player/authored).
#include "AuthoringFixture.h"

#include "content/ContentForms.h"
#include "content/ListOps.h"
#include "forms/dialogs/PageLinkForm.h"
#include "forms/dialogs/QAndAChooser.h"
#include "forms/dialogs/TermChooser.h"
#include "forms/main/ListTexts.h"
#include "forms/main/OptionForm.h"

#include <QCheckBox>
#include <QComboBox>
#include <QImage>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLineEdit>
#include <QPlainTextEdit>

#include <cstdlib>

namespace lumora::testing {
namespace {

struct Option {
    const char* text;
    bool correct;
    const char* feedback; // shown when this option is chosen wrongly (Evaluation)
};

class AuthoredModules : public AuthoringTest {
  protected:
    // Typing into a one-line field replaces what it held.
    void type(const char* name, const QString& text, QWidget* in = nullptr) {
        auto* field = control<QLineEdit>(in ? in : form, name);
        field->setFocus();
        field->selectAll();
        QTest::keyClicks(field, text);
    }
    void pasteDefinition(const QString& text) {
        auto* definition = control<QPlainTextEdit>(form, "txtDefinition");
        definition->setFocus();
        definition->selectAll();
        definition->insertPlainText(text);
    }

    // A page written whole in the source view, then shown in the design view again.
    void writePage(const QString& html) {
        auto* views = control<QTabWidget>(form, "tabLessonPage");
        views->setCurrentIndex(1);
        auto* source = control<QPlainTextEdit>(form, "txtLessonEdit");
        source->setFocus();
        source->selectAll();
        source->insertPlainText(html);
        QSignalSpy loaded(control<HtmlEditor>(form, "dhtmlLessonEdit"), &HtmlEditor::loaded);
        views->setCurrentIndex(0);
        ASSERT_TRUE(loaded.count() > 0 || loaded.wait(kWaitMs));
    }
    // Replaces the current question's text as a paste of `html` does.
    void pasteQuestion(const QString& html, const std::string& arrived) {
        const int item = session.CurrentItem;
        edit("dhtmlQuestionEdit", "insertHTML", html, true,
             [&] { return containsText(session.module.questions[item].questionText, arrived); });
    }
    // Selects the first occurrence of `text` in the page editor, as a drag of the mouse does.
    void mark(const QString& text) { select(editor("dhtmlLessonEdit"), "body", text); }

    // Opens a chooser from the page's buttons and inserts its row with a double-click.
    template <class Chooser>
    void insertWith(const char* button, Chooser* (MainForm::*shown)() const, int row) {
        click(button);
        Chooser* chooser = (form->*shown)();
        ASSERT_TRUE(chooser && chooser->isVisible()) << button;
        doubleClickRow(chooser, row);
    }

    // The current item's options typed one after the other in the option editor, starting
    // over the sample option a new item comes with.
    void typeOptions(std::initializer_list<Option> options) {
        ASSERT_EQ(list("lstOptions")->count(), 1);
        select("lstOptions", 0);
        click("btnEditOption");
        OptionForm* optionForm = form->optionForm();
        ASSERT_NE(optionForm, nullptr);
        bool first = true;
        for (const Option& option : options) {
            if (!first)
                control<QPushButton>(optionForm, "btnNext")->click(); // "Create" at the last
            first = false;
            type("txtDisplay", option.text, optionForm);
            if (option.correct)
                control<QCheckBox>(optionForm, "chkCorrect")->click();
            if (option.feedback)
                type("txtIncorrectRationale", option.feedback, optionForm);
        }
        control<QPushButton>(optionForm, "btnClose")->click();
    }

    // Removes the sample's items but `keep`, answering Yes to each question.
    void removeSampleItems(int keep) {
        for (int left = 10; list("lstQAndA")->count() > keep && left > 0; --left) {
            select("lstQAndA", 0);
            prompt.answer(Answer::Yes);
            click("btnRemoveQuestion");
        }
        ASSERT_EQ(list("lstQAndA")->count(), keep) << prompt.last()->text;
    }

    // Save (SCORM/AICC); `warning` is the one message expected, if any.
    void save(const std::string& warning = {}) {
        prompt.messages.clear();
        menu("mnuSave")->trigger();
        EXPECT_FALSE(session.ModuleChanged);
        std::vector<std::string> shown;
        for (const auto& m : prompt.messages)
            shown.push_back(m.text);
        EXPECT_EQ(shown,
                  warning.empty() ? std::vector<std::string>{} : std::vector<std::string>{warning});
    }

    // Hands the saved folder to the player's tests.
    void handOver(const std::string& name) {
        const char* out = std::getenv("LUMORA_AUTHORED_DIR");
        if (!out)
            return;
        const std::filesystem::path target = std::filesystem::path(out) / name;
        std::filesystem::remove_all(target);
        std::filesystem::create_directories(target.parent_path());
        std::filesystem::copy(workspace / "Course1", target,
                              std::filesystem::copy_options::recursive);
    }

    // Everything the author can change in the lists, as a reload must give it back: the page
    // file ends the content's last line with a line break, the file keeps a definition's line
    // breaks as the script's escape, and a blank placeholder option is not written.
    static std::vector<std::string> authored(const CourseModule& m) {
        std::vector<std::string> texts{m.modTitle, m.copyright, m.shuffleEvalQuestions,
                                       std::to_string(m.intNumQuestions)};
        for (const LessonPage& p : m.pages) {
            std::string content = p.content;
            if (content.ends_with("\r\n"))
                content.resize(content.size() - 2);
            texts.push_back("page " + p.title + ": " + content);
        }
        for (const GlossaryTerm& t : m.glossary)
            texts.push_back("term " + t.term + ": " + definitionForField(t.definition));
        for (const QAndAItem& q : m.questions) {
            texts.push_back("item " + q.questionType + " " + q.questionText + " / " + q.rationale);
            for (const QuestionOption& o : q.options)
                if (!o.txtDisplay.empty())
                    texts.push_back("option " + o.txtDisplay + "|" + o.correct + "|" +
                                    o.incorrectRationale);
        }
        return texts;
    }
};

TEST_F(AuthoredModules, ALessonWithATermLinkAPageLinkAnActivityAndAPicture) {
    open(kLesson);
    type("txtModuleTitle", "Colour theory");

    // A term and an activity of its own, beside the sample's two of each.
    showTab(2);
    click("btnAddTerm");
    type("txtTerm", "Hue");
    pasteDefinition("The name of a colour,\nsuch as red or blue.");
    ASSERT_EQ(session.module.glossary.size(), 3u);

    showTab(1);
    click("btnAddQuestion");
    ASSERT_EQ(session.CurrentItem, 2);
    pasteQuestion("<P>Which colour is primary?</P>", "Which colour is primary?");
    typeOptions({{"Red", true, nullptr}, {"Green", false, nullptr}, {"Orange", false, nullptr}});
    type("txtRationale", "Red cannot be mixed from other colours.");

    // The pages: the first links a term, the last page and the new activity; the second
    // shows a picture.
    showTab(0);
    select("lstPages", 0);
    type("txtPageTitle", "Primary colours");
    writePage("<P>Every hue starts from three primaries; the summary lists them.</P><P>Try:</P>");
    mark("hue");
    insertWith("btnInsertTerm", &MainForm::termChooser, 2);
    mark("the summary");
    insertWith("Command1", &MainForm::pageLinkForm, 2);
    caretAtEnd("dhtmlLessonEdit");
    insertWith("btnInsertQAndA", &MainForm::qAndAChooser, 2);

    const QString picture = QString::fromStdString((install / "swatch.png").string());
    QImage swatch(24, 24, QImage::Format_RGB32);
    swatch.fill(Qt::red);
    ASSERT_TRUE(swatch.save(picture));
    dialogs.files.push_back(picture);
    select("lstPages", 1);
    type("txtPageTitle", "Mixing");
    writePage("<P>Two primaries make a secondary.</P>");
    caretAtEnd("dhtmlLessonEdit");
    click("btnInsertImage");
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return containsText(session.module.pages[1].content, "swatch.png"); }, kWaitMs));

    select("lstPages", 2);
    type("txtPageTitle", "Summary");
    writePage("<P>Red, yellow and blue.</P>");

    const std::string& first = session.module.pages[0].content;
    EXPECT_TRUE(containsText(first, "showGlossaryPopup('2', 240, 180);")) << first;
    EXPECT_TRUE(containsText(first, ">hue</A>")) << first;
    EXPECT_TRUE(containsText(first, "<A href=\"page2.html\">the summary</A>")) << first;
    EXPECT_TRUE(containsText(first, activityPlaceholder(session.contentPaths(), 3))) << first;

    const CourseModule typed = session.module;
    save();
    const std::string stored = readText(moduleFile("Course1", "page0.html"));
    EXPECT_TRUE(containsText(stored, "writeActivityHTML(3)")) << stored;
    EXPECT_TRUE(containsText(readText(moduleFile("Course1", "page1.html")), "media/swatch.png"));
    EXPECT_TRUE(std::filesystem::exists(moduleFile("Course1", "media/swatch.png")));
    reopen();
    EXPECT_EQ(authored(session.module), authored(typed));
    EXPECT_EQ(rows("lstPages"),
              (std::vector<QString>{"Primary colours", "1. Mixing", "2. Summary"}));
    handOver("Lesson");
}

TEST_F(AuthoredModules, AnEvaluationOfFiveShuffledQuestionsThreeAskedWithOptionFeedback) {
    open(kEvaluation);
    type("txtModuleTitle", "Colour check");
    showTab(1);
    removeSampleItems(0);

    struct Question {
        const char* text;
        bool several;
        std::initializer_list<Option> options;
    };
    const Question questions[] = {
        {"Which colour is primary?",
         false,
         {{"Red", true, nullptr},
          {"Green", false, "Not primary in paint: green is mixed."},
          {"Orange", false, "Not primary: red and yellow make it."}}},
        {"Which colours are warm?",
         true,
         {{"Red", true, nullptr},
          {"Orange", true, nullptr},
          {"Blue", false, "Not warm: blue is a cool colour."}}},
        {"What do blue and yellow make?",
         false,
         {{"Green", true, nullptr}, {"Purple", false, "Not purple: that is red and blue."}}},
        {"What is a shade?",
         false,
         {{"A colour with black added", true, nullptr},
          {"A colour with white added", false, "Not a shade: that is a tint."}}},
        {"Which is the complement of red?",
         false,
         {{"Green", true, nullptr}, {"Blue", false, "Not blue: it lies beside purple."}}},
    };
    for (const Question& q : questions) {
        click("btnAddQuestion");
        pasteQuestion(QString("<P>%1</P>").arg(q.text), q.text);
        if (q.several) {
            auto* kind = control<QComboBox>(form, "lstQuestionType");
            kind->setCurrentIndex(1);
            emit kind->activated(1);
        }
        typeOptions(q.options);
        type("txtRationale", QString("About: %1").arg(q.text));
    }
    ASSERT_EQ(list("lstQAndA")->count(), 5);
    EXPECT_EQ(session.module.questions[1].questionType, "checkbox");

    auto* shuffle = control<QCheckBox>(form, "chkShuffleQuestions");
    if (!shuffle->isChecked())
        shuffle->click();
    type("txtNumberToAsk", "3");
    EXPECT_EQ(session.module.intNumQuestions, 3);
    EXPECT_EQ(session.module.shuffleEvalQuestions, "true");

    // The fields reached the module, which the reload must give back.
    const CourseModule typed = session.module;
    EXPECT_EQ(typed.questions[4].rationale, "About: Which is the complement of red?");
    EXPECT_EQ(typed.questions[0].options[1].incorrectRationale,
              "Not primary in paint: green is mixed.");
    save();
    reopen();
    EXPECT_EQ(authored(session.module), authored(typed));
    EXPECT_EQ(control<QLineEdit>(form, "txtNumberToAsk")->text(), "3");
    EXPECT_TRUE(control<QCheckBox>(form, "chkShuffleQuestions")->isChecked());
    handOver("Evaluation");
}

TEST_F(AuthoredModules, ASurveyOfThreeQuestions) {
    open(kSurvey);
    type("txtModuleTitle", "Course feedback");
    showTab(1);
    // The last item stays, with its five ratings, and is typed over.
    removeSampleItems(1);
    bool first = true;
    for (const char* text : {"How clear were the pages?", "How useful was the activity?",
                             "How fair was the evaluation?"}) {
        if (first)
            select("lstQAndA", 0);
        else
            click("btnAddQuestion");
        first = false;
        pasteQuestion(QString("<P>%1</P>").arg(text), text);
    }
    ASSERT_EQ(list("lstQAndA")->count(), 3);

    const CourseModule typed = session.module;
    // Every rating counts as a correct option, so the question check names each question (which
    // shows each holds its ratings; the scale a new item comes with is ListOps' test); it only
    // warns.
    save("The following questions have an inappropriate number of correct options.     \r\n"
         "Please revisit the following questions:\r\n     1, 2, 3");
    reopen();
    EXPECT_EQ(authored(session.module), authored(typed));
    handOver("Survey");
}

// Quotes, backslashes, line breaks, a closing script tag, markup, emoji and a very long text in
// the fields of one lesson. The player's test reads the texts it should show from hostile.json.
TEST_F(AuthoredModules, HostileTextsSaveReloadAndAreHandedToThePlayer) {
    open(kLesson);
    const QString emoji = QString::fromUtf8("\xF0\x9F\x8E\xA8 \xF0\x9F\x91\xA9\xE2\x80\x8D\xF0\x9F"
                                            "\x92\xBB");
    const QJsonObject texts{
        {"title", "Say \"hi\" to </script><b>bold</b> " + emoji},
        {"copyright", "C:\\Lumora\\path 'single' & </script>"},
        {"pageTitle", "<i>Page</i> \"one\" " + emoji},
        {"content", "</script><script>alert(1)</script> \"quoted\" & <b>typed markup</b> " + emoji},
        {"term", "<term> \"Q\" & A"},
        {"definitionStart", "First line with \"quotes\" and </script>"},
        {"question", "Which </script> is \"right\"? " + emoji},
        {"rationale", "Because <b>it</b> is \"so\" " + emoji},
    };
    paste("txtModuleTitle", texts["title"].toString());
    paste("txtCopyright", texts["copyright"].toString());
    paste("txtPageTitle", texts["pageTitle"].toString());
    // Typed text, so markup in it is text; then a term link over its first word.
    edit("dhtmlLessonEdit", "insertText", "Term " + texts["content"].toString(), true,
         [&] { return containsText(session.module.pages[0].content, "typed markup"); });
    mark("Term");
    insertWith("btnInsertTerm", &MainForm::termChooser, 0);

    showTab(2);
    select("lstTerms", 0);
    paste("txtTerm", texts["term"].toString());
    pasteDefinition(texts["definitionStart"].toString() + "\nsecond line " + emoji + "\n" +
                    QString(100000, QChar('x')));

    showTab(1);
    select("lstQAndA", 0);
    pasteQuestion("<P>" + texts["question"].toString().toHtmlEscaped() + "</P>", "is \"right\"");
    paste("txtRationale", texts["rationale"].toString());

    const CourseModule typed = session.module;
    save();
    reopen();
    EXPECT_EQ(authored(session.module), authored(typed));
    EXPECT_EQ(control<QLineEdit>(form, "txtModuleTitle")->text(), texts["title"].toString());

    if (const char* out = std::getenv("LUMORA_AUTHORED_DIR")) {
        handOver("Hostile");
        QFile json(QString::fromLocal8Bit(out) + "/hostile.json");
        ASSERT_TRUE(json.open(QIODevice::WriteOnly));
        json.write(QJsonDocument(texts).toJson());
    }
}

} // namespace
} // namespace lumora::testing
