// The Spell Check dialog driven as the author drives it, over the real engine and the staged
// dictionaries: the keyboard, a double-click, Cancel, and Add keeping a word in the user
// dictionary for the next check (Change and Change All are driven from the Edit menu).
#include "app/Startup.h"
#include "forms/dialogs/SpellCheckDialog.h"
#include "platform/HunspellEngine.h"

#include "gui/SpellAnswers.h"
#include "support/TempFiles.h"

#include <QLineEdit>
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

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
        engine = prepared();
    }

    std::unique_ptr<HunspellEngine> prepared() {
        auto e = std::make_unique<HunspellEngine>();
        prepareSpellingEngine(*e, folder.path().string());
        return e;
    }

    TempDir folder{"spelling"};
    std::unique_ptr<HunspellEngine> engine;
};

TEST_F(SpellCheckDialogTest, EnterChangesDoubleClickChangesEscapeCancels) {
    const std::string text = "Teh permitt is recieved";
    {
        SpellAnswers answers({[](SpellCheckDialog& dialog) {
                                  dialog.findChild<QLineEdit*>("txtChangeTo")->setText("The");
                                  key(Qt::Key_Return)(dialog);
                              },
                              doubleClickSuggestion(0), press("cmdIgnore")});
        EXPECT_EQ(runSpellCheck(nullptr, *engine, text, false), "The permit is recieved");
    }
    SpellAnswers answers({press("cmdIgnore"), key(Qt::Key_Escape)});
    EXPECT_EQ(runSpellCheck(nullptr, *engine, text, false), std::nullopt);
    EXPECT_EQ(answers.asked, (std::vector<std::string>{"Teh", "permitt"}));
}

TEST_F(SpellCheckDialogTest, AddKeepsTheWordForTheNextCheck) {
    const std::string page = "<P>Lumoran modules</P>";
    {
        SpellAnswers answers({press("cmdAdd")});
        EXPECT_EQ(runSpellCheck(nullptr, *engine, page, true), page);
        EXPECT_EQ(answers.asked, std::vector<std::string>{"Lumoran"});
    }
    EXPECT_EQ(readBytes(folder / "userdic.dic"), "1\nLumoran\n");

    // Another engine, as at the next start: no doubtful word, so no dialog at all.
    engine = prepared();
    SpellAnswers none({});
    EXPECT_EQ(runSpellCheck(nullptr, *engine, page, true), page);
    EXPECT_TRUE(none.asked.empty());

    // Without any dictionary there is nothing to check with.
    HunspellEngine empty;
    EXPECT_EQ(runSpellCheck(nullptr, empty, page, true), std::nullopt);
}

} // namespace
} // namespace lumora::testing
