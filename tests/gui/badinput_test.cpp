// A text the module scripts cannot carry, typed into the fields of the main form and the option
// editor, is named by a warning at save. (Quotes, markup, emoji and long texts typed into every
// field are AuthoredModules' hostile lesson, which the player's tests run.)
#include "AuthoringFixture.h"

#include "forms/main/OptionForm.h"

#include <QLineEdit>

namespace lumora::testing {
namespace {

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
        paste("txtDisplay", text, form->optionForm());
    }
};

// A backslash before a quote or at the end of a text would stop the course: the save goes on
// and names those texts.
TEST_F(BadInputTest, TextsTheScriptsCannotCarryAreNamedWhenSaved) {
    paste("txtModuleTitle", "C:\\courses\\");
    paste("txtCopyright", "C:\\courses \"quoted\"");
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
