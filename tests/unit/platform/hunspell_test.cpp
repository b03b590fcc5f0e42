// The Hunspell engine as start-up prepares it over the staged spelling folder: the standard
// dictionary doubts misspelt words and suggests, the legal list adds its terms, markup is
// skipped on request and added words reach the user dictionary.
#include "app/Startup.h"
#include "platform/HunspellEngine.h"

#include "support/TempFiles.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace lumora {
namespace {

namespace fs = std::filesystem;

const fs::path kStagedSpelling = fs::path(LUMORA_DIST_DIR) / "app" / "spelling";

class HunspellTest : public ::testing::Test {
  protected:
    void SetUp() override {
        if (!fs::exists(kStagedSpelling / "en_US.dic"))
            GTEST_SKIP() << "the standard dictionary is not staged";
    }
    // A spelling folder holding the named files from the staged one.
    void take(std::initializer_list<const char*> names) {
        for (const char* name : names)
            fs::copy_file(kStagedSpelling / name, folder / name);
    }
    std::string prepare() { return prepareSpellingEngine(engine, folder.path().string()); }

    testing::TempDir folder{"spell"};
    HunspellEngine engine;
};

TEST_F(HunspellTest, StandardDictionaryFlagsMisspeltWordsSuggestsAndSkipsMarkup) {
    // Without dictionaries nothing is doubted.
    EXPECT_EQ(prepare(), "");
    EXPECT_FALSE(engine.available());
    EXPECT_TRUE(engine.check("modulle"));
    EXPECT_TRUE(engine.suggest("modulle").empty());

    take({"en_US.aff", "en_US.dic"});
    EXPECT_EQ(prepare(), "en_US.dic");
    ASSERT_TRUE(engine.available());
    EXPECT_TRUE(engine.check("module"));
    EXPECT_TRUE(engine.check("Training"));
    EXPECT_FALSE(engine.check("modulle"));
    const auto suggestions = engine.suggest("modulle");
    EXPECT_NE(std::find(suggestions.begin(), suggestions.end(), "module"), suggestions.end());

    // Preparing sets the option (0x200000) that skips tags and entities.
    EXPECT_TRUE(engine.check("<BLOCKQUOTE>"));
    EXPECT_TRUE(engine.check("&nbsp;"));
    EXPECT_FALSE(engine.check("<"));
    engine.setOption(0x200000, 0);
    EXPECT_FALSE(engine.check("&nbsp;"));

    // The legal list adds its terms, also capitalised at a sentence start.
    ASSERT_FALSE(engine.check("remittitur"));
    take({"legal.dic"});
    EXPECT_EQ(prepare(), "en_US.dic,legal.dic");
    EXPECT_TRUE(engine.check("remittitur"));
    EXPECT_TRUE(engine.check("Remittitur"));
    EXPECT_EQ(engine.loadedFiles(), (std::vector<std::string>{"en_US.dic", "legal.dic"}));
}

// Where the installation cannot be written, the author's own user dictionary takes added words,
// each kept once, and a fresh engine reads them back. (The installation's user dictionary is
// driven through the Spell Check dialog in the GUI tests.)
TEST_F(HunspellTest, AddedWordsAreKeptOnceInTheAuthorsOwnUserDictionary) {
    take({"en_US.aff", "en_US.dic", "userdic.dic"});
    const fs::path own = folder / "home" / "lumora" / "userdic.dic";
    HunspellEngine first;
    first.setUserDictionary(own.string());
    prepareSpellingEngine(first, folder.path().string());
    ASSERT_FALSE(first.check("Lumoran"));
    for (const char* word : {"Lumoran", "zorbling", "Lumoran"})
        first.addToUserDictionary(word);
    EXPECT_TRUE(first.check("Lumoran"));
    EXPECT_EQ(testing::readBytes(own), "2\nLumoran\nzorbling\n");
    EXPECT_EQ(testing::readBytes(folder / "userdic.dic"),
              testing::readBytes(kStagedSpelling / "userdic.dic"));

    HunspellEngine again;
    again.setUserDictionary(own.string());
    prepareSpellingEngine(again, folder.path().string());
    EXPECT_TRUE(again.check("zorbling"));
}

TEST(MarkupTokens, TagsAndEntities) {
    EXPECT_TRUE(isMarkupToken("<P>"));
    EXPECT_TRUE(isMarkupToken("&amp;"));
    EXPECT_FALSE(isMarkupToken("&;"));
    EXPECT_FALSE(isMarkupToken("word"));
    EXPECT_FALSE(isMarkupToken("<word"));
}

} // namespace
} // namespace lumora
