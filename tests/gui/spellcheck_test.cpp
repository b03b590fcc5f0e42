// The Spell Check dialog over the real engine and a copy of the staged dictionaries: Add keeps a
// word in the user dictionary for the next check (the other answers are driven from the Edit
// menu, in editing_test).
#include "app/Startup.h"
#include "forms/dialogs/SpellCheckDialog.h"
#include "platform/HunspellEngine.h"

#include "gui/SpellAnswers.h"
#include "support/TempFiles.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace lumora::testing {
namespace {

namespace fs = std::filesystem;

class SpellCheckDialogTest : public ::testing::Test {
  protected:
    void SetUp() override {
        const fs::path staged = fs::path(LUMORA_DIST_DIR) / "app" / "spelling";
        if (!fs::exists(staged / "en_US.dic"))
            GTEST_SKIP() << "the standard dictionary is not staged";
        for (const char* name : {"en_US.aff", "en_US.dic", "userdic.dic"})
            fs::copy_file(staged / name, folder / name);
        prepareSpellingEngine(engine, folder.path().string());
    }

    TempDir folder{"spelling"};
    HunspellEngine engine;
};

TEST_F(SpellCheckDialogTest, AddKeepsTheWordForTheNextCheck) {
    const std::string page = "<P>Lumoran modules</P>";
    {
        SpellAnswers answers({press("cmdAdd")});
        EXPECT_EQ(runSpellCheck(nullptr, engine, page, true), page);
        EXPECT_EQ(answers.asked, std::vector<std::string>{"Lumoran"});
    }
    // The word is in the user dictionary, which the next start reads (the engine's own tests).
    EXPECT_EQ(readBytes(folder / "userdic.dic"), "1\nLumoran\n");

    // Without any dictionary there is nothing to check with.
    HunspellEngine empty;
    EXPECT_EQ(runSpellCheck(nullptr, empty, page, true), std::nullopt);
}

} // namespace
} // namespace lumora::testing
