// The Terms and Q&A buttons refuse with their message when only blank placeholders are there.
#include "content/InsertRefusals.h"

#include "support/ScriptedPrompt.h"

#include <gtest/gtest.h>

namespace lumora {
namespace {

using testing::ScriptedPrompt;

TEST(InsertRefusals, NothingButPlaceholdersIsRefusedWithItsMessage) {
    DefaultRecords defaults = makeDefaultRecords(2024);
    CourseModule module = defaults.module; // one blank term, one blank item
    ScriptedPrompt prompt;
    EXPECT_FALSE(termsToInsert(module, prompt));
    EXPECT_FALSE(activitiesToInsert(module, prompt));
    ASSERT_EQ(prompt.messages.size(), 2u);
    EXPECT_EQ(prompt.messages[0].title, "Empty Glossary");
    EXPECT_EQ(prompt.messages[0].text, "There are currently no terms to select.\r\n"
                                       "Please create a term before attempting to insert.");
    EXPECT_EQ(prompt.messages[1].title, "Empty Q&A Pool");
    EXPECT_EQ(prompt.messages[1].text, "There are currently no Q&A items to select.\r\n"
                                       "Please create a Q&A item before attempting to insert.");
    EXPECT_EQ(prompt.messages[1].icon, Icon::Information);
    EXPECT_EQ(prompt.messages[1].buttons, Buttons::OK);

    // A question text of only an empty paragraph is still nothing to insert.
    module.questions[0].questionText = "<P>&nbsp;</P>";
    EXPECT_FALSE(activitiesToInsert(module, prompt));
    module.glossary.push_back({"1", "Term", ""});
    module.questions.push_back(defaults.item);
    module.questions[1].questionText = "Why?";
    EXPECT_TRUE(termsToInsert(module, prompt));
    EXPECT_TRUE(activitiesToInsert(module, prompt));
    EXPECT_EQ(prompt.messages.size(), 3u);
}

} // namespace
} // namespace lumora
