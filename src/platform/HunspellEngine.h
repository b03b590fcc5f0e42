// The spelling engine over Hunspell. Start-up names the lexicon files; the first one found
// (the standard dictionary) is opened with its affix rules, and the medical, legal and user
// lists are added on top of it, read with the same rules. The rules are tuned for checking
// while the author waits: see interactiveAffixRules.
#pragma once

#include "app/Services.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class Hunspell;

namespace lumora {

class HunspellEngine : public SpellingEngine {
  public:
    HunspellEngine();
    ~HunspellEngine() override;

    void setOption(std::uint32_t option, int value) override;
    std::string mainLexPath() override;
    void setMainLexPath(const std::string& folder) override;
    void setMainLexFiles(const std::string& names) override;
    void setHelpFile(const std::string& path) override;
    bool available() const override;

    // True for a correctly spelt word. With markup skipping on, a tag ("<B>") or an entity
    // ("&nbsp;") counts as correct. Without a dictionary nothing can be doubted: true.
    bool check(const std::string& word) override;
    // Corrections within a few edits of the word (Hunspell's replacement table, swapped,
    // missing, extra and wrong letters, split words); see affix rules in HunspellEngine.cpp.
    std::vector<std::string> suggest(const std::string& word) override;
    // Accepts the word from now on and appends it to the user dictionary ("userdic.dic" in
    // the lexicon folder), keeping the dictionary's word count on its first line current.
    void addToUserDictionary(const std::string& word) override;
    // Keeps the user dictionary at `path` instead (read as "userdic.dic" is, written there):
    // an installation the author cannot write keeps the author's words in their own files.
    void setUserDictionary(const std::string& path) { userDictionary_ = path; }

    // The dictionaries actually loaded, in order (for About's list and diagnostics).
    const std::vector<std::string>& loadedFiles() const { return loaded_; }
    const std::string& helpFile() const { return helpFile_; }

  private:
    std::string userDictionaryPath() const;

    std::string folder_;
    std::string userDictionary_;
    std::string helpFile_;
    bool skipMarkup_ = false;
    std::unique_ptr<Hunspell> hunspell_;
    std::vector<std::string> loaded_;
};

// True for a tag ("<...>") or an entity ("&...;"), the markup the engine may skip.
bool isMarkupToken(const std::string& word);

// Affix rules as the engine opens them. Two parts of Hunspell's search for suggestions cost
// around a hundred milliseconds a word over the standard and medical dictionaries: the n-gram
// comparison with every dictionary entry and compound forms. The rules drop both (the only
// compounds of the English rules are ordinal numbers, and words with digits are never
// checked); suggestions within a few edits of the word, which hold the right one for common
// misspellings, remain.
std::string interactiveAffixRules(const std::string& rules);

} // namespace lumora
