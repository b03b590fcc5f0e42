// The spelling engine over Hunspell; see HunspellEngine.h.
#include "platform/HunspellEngine.h"

#include "storage/Paths.h"
#include "storage/TextFile.h"

#include <hunspell.hxx>

#include <filesystem>
#include <system_error>

namespace lumora {

namespace {

constexpr std::uint32_t kSkipMarkupOption = 0x200000;
constexpr const char* kUserDictionary = "userdic.dic";
constexpr const char* kStandardAffixes = "en_US.aff";

bool isFile(const std::string& path) {
    std::error_code ec;
    return std::filesystem::is_regular_file(fsPath(path), ec);
}

std::vector<std::string> splitNames(const std::string& names) {
    std::vector<std::string> out;
    std::size_t start = 0;
    while (start <= names.size()) {
        const std::size_t comma = std::min(names.find(',', start), names.size());
        if (comma > start)
            out.push_back(names.substr(start, comma - start));
        start = comma + 1;
    }
    return out;
}

// The affix file a dictionary is opened with: its own ("en_US.aff" for "en_US.dic"), else the
// standard rules, which the medical, legal and user lists are written for.
std::string affixFileFor(const std::string& folder, const std::string& dicName) {
    const std::string stem = dicName.size() > 4 ? dicName.substr(0, dicName.size() - 4) : dicName;
    const std::string own = joinPath(folder, stem + ".aff");
    if (isFile(own))
        return own;
    return joinPath(folder, kStandardAffixes);
}

} // namespace

HunspellEngine::HunspellEngine() = default;
HunspellEngine::~HunspellEngine() = default;

void HunspellEngine::setOption(std::uint32_t option, int value) {
    if (option == kSkipMarkupOption)
        skipMarkup_ = value != 0;
}

std::string HunspellEngine::mainLexPath() {
    return folder_;
}

void HunspellEngine::setMainLexPath(const std::string& folder) {
    folder_ = folder;
}

void HunspellEngine::setMainLexFiles(const std::string& names) {
    hunspell_.reset();
    loaded_.clear();
    for (const std::string& name : splitNames(names)) {
        const std::string dic = joinPath(folder_, name);
        if (!isFile(dic))
            continue;
        if (!hunspell_) {
            const std::string aff = affixFileFor(folder_, name);
            if (!isFile(aff))
                continue;
            hunspell_ = std::make_unique<Hunspell>(aff.c_str(), dic.c_str());
        } else if (hunspell_->add_dic(dic.c_str()) != 0) {
            continue;
        }
        loaded_.push_back(name);
    }
}

void HunspellEngine::setHelpFile(const std::string& path) {
    helpFile_ = path;
}

bool HunspellEngine::available() const {
    return hunspell_ != nullptr;
}

bool isMarkupToken(const std::string& word) {
    if (word.size() < 2)
        return false;
    return (word.front() == '<' && word.back() == '>') ||
           (word.front() == '&' && word.back() == ';' && word.size() > 2);
}

bool HunspellEngine::check(const std::string& word) {
    if (skipMarkup_ && isMarkupToken(word))
        return true;
    if (!hunspell_)
        return true;
    return hunspell_->spell(word);
}

std::vector<std::string> HunspellEngine::suggest(const std::string& word) {
    if (!hunspell_)
        return {};
    return hunspell_->suggest(word);
}

void HunspellEngine::addToUserDictionary(const std::string& word) {
    if (word.empty() || word.find_first_of("\r\n") != std::string::npos)
        return;
    if (hunspell_)
        hunspell_->add(word);
    if (folder_.empty())
        return;

    // A Hunspell dictionary starts with its word count; the rest is one word a line.
    const std::string path = joinPath(folder_, kUserDictionary);
    std::vector<std::string> words;
    if (isFile(path)) {
        const std::vector<std::string> lines = readTextLines(path);
        for (std::size_t i = 1; i < lines.size(); ++i)
            if (!lines[i].empty())
                words.push_back(lines[i]);
    }
    words.push_back(word);
    std::string text = std::to_string(words.size()) + "\n";
    for (const std::string& w : words)
        text += w + "\n";
    writeFileAtomically(path, text);
}

} // namespace lumora
