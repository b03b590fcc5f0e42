// What the author types into the fields of the main form and the option editor: quotes, script
// and markup, emoji, long texts and line breaks come back from the files and run in the player;
// a text the module scripts cannot carry is named by a warning at save.
#include "AuthoringFixture.h"

#include "forms/main/OptionForm.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QWebEnginePage>

namespace lumora::testing {
namespace {

// Texts that have broken script literals, markup and long lines; each field gets its own.
QString awkward(int field) {
    static const QString kTexts[] = {
        "Quote \" and 'single' <b>bold</b> &amp; & ; \"\"",
        "</script><script>alert(1)</script> <!-- --> ]]> %s {0}",
        QString::fromUtf8("Emoji \xF0\x9F\x98\x80 \xF0\x9F\x91\xA9\xE2\x80\x8D\xF0\x9F\x92\xBB "
                          "\xC3\xBC \xE2\x80\xA8 line separator"),
    };
    if (field == 3)
        return QString(100000, QChar('w'));
    return kTexts[field % 3] + QString(" #%1").arg(field);
}

// Pastes into a field: one change, with every character as it is.
void paste(QLineEdit* field, const QString& text) {
    field->selectAll();
    field->insert(text);
}

class BadInputTest : public AuthoringTest {
  protected:
    void SetUp() override {
        AuthoringTest::SetUp();
        open(kLesson);
    }

    void pasteIntoOption(const QString& text) {
        showTab(1);
        select("lstQAndA", 0);
        select("lstOptions", 0);
        click("btnEditOption");
        paste(control<QLineEdit>(form->optionForm(), "txtDisplay"), text);
    }

    // The values the player's scripts hold once the saved lesson's frameset has run them.
    QJsonArray playerValues() {
        QWebEnginePage page;
        QSignalSpy loaded(&page, &QWebEnginePage::loadFinished);
        page.load(QUrl::fromLocalFile(
            QString::fromStdString(moduleFile("Course1", "lessonframeset.html").string())));
        EXPECT_TRUE(loaded.wait(kWaitMs));
        const QVariant values = runScript(&page, "JSON.stringify([modTitle, copyright,"
                                                 " objLessonModule.pages.map(p => p.title),"
                                                 " arrDefObjects.map(t => [t.term, t.definition]),"
                                                 " arrActObjects.map(q => [q.actQuestion,"
                                                 " q.actRationale,"
                                                 " q.actDistractors.map(o => o.txtDisplay)])])");
        return QJsonDocument::fromJson(values.toString().toUtf8()).array();
    }
};

TEST_F(BadInputTest, TypedTextsComeBackFromTheFilesAndRunInThePlayer) {
    paste(control<QLineEdit>(form, "txtModuleTitle"), awkward(0));
    paste(control<QLineEdit>(form, "txtCopyright"), awkward(1));
    paste(control<QLineEdit>(form, "txtPageTitle"), awkward(2));
    control<QTabWidget>(form, "tabLessonPage")->setCurrentIndex(1);
    auto* source = control<QPlainTextEdit>(form, "txtLessonEdit");
    source->setFocus();
    source->appendPlainText("<P>" + awkward(1).toHtmlEscaped() + "</P>");

    showTab(2);
    select("lstTerms", 1);
    paste(control<QLineEdit>(form, "txtTerm"), awkward(3));
    auto* definition = control<QPlainTextEdit>(form, "txtDefinition");
    // The line separator of awkward(2) is a line break to a plain text field: not used here.
    const QString lines = awkward(0) + "\n" + awkward(1) + "\n\n" + awkward(3);
    definition->selectAll();
    definition->insertPlainText(lines);

    showTab(1);
    typeInEditor("dhtmlQuestionEdit", awkward(2), [&] {
        return containsText(session.module.questions[0].questionText, "line separator");
    });
    paste(control<QLineEdit>(form, "txtRationale"), awkward(0));
    pasteIntoOption(awkward(3));
    EXPECT_EQ(session.module.questions[0].options[0].txtDisplay, awkward(3).toStdString());

    const CourseModule typed = session.module;
    menu("mnuSave")->trigger();
    EXPECT_TRUE(prompt.messages.empty()) << prompt.last()->text;
    reopen();
    const CourseModule& back = session.module;
    EXPECT_EQ(back.modTitle, typed.modTitle);
    EXPECT_EQ(back.copyright, typed.copyright);
    EXPECT_EQ(back.pages[0].title, typed.pages[0].title);
    // The page file ends the content's last line with a line break.
    EXPECT_EQ(back.pages[0].content, typed.pages[0].content + "\r\n");
    EXPECT_EQ(back.glossary[1].term, typed.glossary[1].term);
    EXPECT_EQ(back.questions[0].questionText, typed.questions[0].questionText);
    EXPECT_EQ(back.questions[0].rationale, typed.questions[0].rationale);
    EXPECT_EQ(back.questions[0].options[0].txtDisplay, typed.questions[0].options[0].txtDisplay);
    EXPECT_EQ(control<QLineEdit>(form, "txtModuleTitle")->text(), awkward(0));
    showTab(2);
    select("lstTerms", 1);
    EXPECT_EQ(definition->toPlainText(), lines);

    // The player reads the same texts from the scripts.
    const QJsonArray player = playerValues();
    ASSERT_EQ(player.size(), 5);
    EXPECT_EQ(player[0].toString(), awkward(0));
    EXPECT_EQ(player[1].toString(), awkward(1));
    EXPECT_EQ(player[2].toArray()[0].toString(), awkward(2));
    EXPECT_EQ(player[3].toArray()[1].toArray()[0].toString(), awkward(3));
    EXPECT_EQ(player[3].toArray()[1].toArray()[1].toString(), lines);
    const QJsonArray activity = player[4].toArray()[0].toArray();
    EXPECT_EQ(activity[0].toString().toStdString(), typed.questions[0].questionText);
    EXPECT_EQ(activity[1].toString(), awkward(0));
    EXPECT_EQ(activity[2].toArray()[0].toString(), awkward(3));
}

// A backslash before a quote or at the end of a text would stop the course: the save goes on
// and names those texts.
TEST_F(BadInputTest, TextsTheScriptsCannotCarryAreNamedWhenSaved) {
    paste(control<QLineEdit>(form, "txtModuleTitle"), "C:\\courses\\");
    paste(control<QLineEdit>(form, "txtCopyright"), "C:\\courses \"quoted\"");
    pasteIntoOption("say \\\"hi\\\"");
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
