// The spelling engine over Hunspell; see HunspellEngine.h.
#include "platform/HunspellEngine.h"

#include "storage/Paths.h"
#include "storage/TextFile.h"

#include <hunspell.hxx>

#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <optional>
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

// Hunspell reads its rules from a file only, when a dictionary is opened and again for each
// one added, so the tuned rules are written to a temporary file that lives while the lexicon
// list is loaded. Should writing fail, the rules as they stand are used.
class TunedRules {
  public:
    explicit TunedRules(const std::string& aff) : path_(aff) {
        static std::atomic<int> counter{0};
        const std::filesystem::path tuned =
            std::filesystem::temp_directory_path() / ("lumora-rules-" + std::to_string(::getpid()) +
                                                      "-" + std::to_string(counter++) + ".aff");
        try {
            writeFileAtomically(tuned.string(), interactiveAffixRules(readFileBytes(aff)));
            path_ = tuned.string();
            temporary_ = true;
        } catch (const std::exception&) {
        }
    }
    ~TunedRules() {
        std::error_code ec;
        if (temporary_)
            std::filesystem::remove(path_, ec);
    }
    TunedRules(const TunedRules&) = delete;
    TunedRules& operator=(const TunedRules&) = delete;
    const std::string& path() const { return path_; }

  private:
    std::string path_;
    bool temporary_ = false;
};

// True when `a` is `b` with two neighbouring bytes exchanged.
bool isSwapOf(const std::string& a, const std::string& b) {
    if (a.size() != b.size())
        return false;
    const auto diff = std::mismatch(a.begin(), a.end(), b.begin());
    const auto i = static_cast<std::size_t>(diff.first - a.begin());
    return i + 1 < a.size() && a[i] == b[i + 1] && a[i + 1] == b[i] &&
           a.compare(i + 2, std::string::npos, b, i + 2) == 0;
}

bool startsWith(const std::string& line, const char* prefix) {
    return line.compare(0, std::char_traits<char>::length(prefix), prefix) == 0;
}

} // namespace

std::string interactiveAffixRules(const std::string& rules) {
    std::string out;
    out.reserve(rules.size() + 32);
    std::size_t start = 0;
    while (start < rules.size()) {
        const std::size_t end = std::min(rules.find('\n', start), rules.size());
        const std::string line = rules.substr(start, end - start);
        if (!startsWith(line, "COMPOUND") && !startsWith(line, "MAXNGRAMSUGS")) {
            out += line;
            out += '\n';
        }
        start = end + 1;
    }
    return out + "MAXNGRAMSUGS 0\n";
}

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
    std::optional<TunedRules> rules;
    for (const std::string& name : splitNames(names)) {
        const std::string dic =
            name == kUserDictionary ? userDictionaryPath() : joinPath(folder_, name);
        if (!isFile(dic))
            continue;
        if (!hunspell_) {
            const std::string aff = affixFileFor(folder_, name);
            if (!isFile(aff))
                continue;
            rules.emplace(aff);
            hunspell_ = std::make_unique<Hunspell>(rules->path().c_str(), dic.c_str());
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
    std::vector<std::string> suggestions = hunspell_->suggest(word);
    // Two letters typed the wrong way round is the commonest slip ("Teh"), yet for a
    // capitalised word Hunspell lists its fix after the shorter words it finds: put such
    // fixes first, keeping Hunspell's order otherwise.
    std::stable_partition(suggestions.begin(), suggestions.end(),
                          [&](const std::string& s) { return isSwapOf(s, word); });
    return suggestions;
}

std::string HunspellEngine::userDictionaryPath() const {
    if (!userDictionary_.empty())
        return userDictionary_;
    return folder_.empty() ? "" : joinPath(folder_, kUserDictionary);
}

void HunspellEngine::addToUserDictionary(const std::string& word) {
    if (word.empty() || word.find_first_of("\r\n") != std::string::npos)
        return;
    if (hunspell_)
        hunspell_->add(word);
    const std::string path = userDictionaryPath();
    if (path.empty())
        return;
    // The first word added makes the author's own folder for it.
    std::error_code ignored;
    std::filesystem::create_directories(fsPath(path).parent_path(), ignored);

    // A Hunspell dictionary starts with its word count; the rest is one word a line.
    std::vector<std::string> words;
    if (isFile(path)) {
        const std::vector<std::string> lines = readTextLines(path);
        for (std::size_t i = 1; i < lines.size(); ++i)
            if (!lines[i].empty())
                words.push_back(lines[i]);
    }
    if (std::find(words.begin(), words.end(), word) != words.end())
        return;
    words.push_back(word);
    std::string text = std::to_string(words.size()) + "\n";
    for (const std::string& w : words)
        text += w + "\n";
    writeFileAtomically(path, text);
}

} // namespace lumora
