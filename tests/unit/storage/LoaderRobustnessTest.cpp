// Damaged and hand-edited modules: thousands of generated module folders whose scripts mix real
// prefixes with truncated values, garbage bytes, invalid UTF-8 and a huge line. Loading must
// never crash, must keep every list non-empty, and what it loads must save again.
#include "StorageFixture.h"

#include "storage/ModuleLoader.h"
#include "storage/ModuleWriter.h"
#include "storage/TextFile.h"

#include <array>
#include <random>

namespace lumora::test {
namespace {

// Every prefix the loader knows, for all module types, with the closing text the writer puts
// after the value.
const std::array<std::pair<const char*, const char*>, 24> kPrefixes{{
    {"var modTitle = \"", "\";"},
    {"var copyright = \"", "\";"},
    {"var useSCORM = ", ";"},
    {"objLessonModule.addPage(objLessonModule.pages.length, \"", "\");"},
    {"var shuffleEvalQuestions = ", ";"},
    {"var intNumQuestions = ", ";"},
    {"arrDefObjects[TermID] = new objGlossary(TermID);", ""},
    {"arrDefObjects[TermID].term = \"", "\";"},
    {"arrDefObjects[TermID].definition = \"", "\";"},
    {"arrActObjects[ActID] = new objActQuestion(thisID, \"", "\");"},
    {"arrActObjects[ActID].actQuestion = \"", "\";"},
    {"arrActObjects[ActID].addDistractor(", ");"},
    {"arrActObjects[ActID].actDistractors[thisOpt].txtValue = \"", "\";"},
    {"arrActObjects[ActID].actDistractors[thisOpt].txtDisplay = \"", "\";"},
    {"arrActObjects[ActID].actRationale = \"", "\";"},
    {"arrActObjects[ActID].shuffleDistractors();", ""},
    {"arrQuestions[EvalID] = new objEvalQuestion(thisID, \"", "\");"},
    {"arrQuestions[EvalID].evalQuestion = \"", "\";"},
    {"arrQuestions[EvalID].addDistractor(", ");"},
    {"arrQuestions[EvalID].evalDistractors[thisOpt].txtValue = \"", "\";"},
    {"arrQuestions[EvalID].evalDistractors[thisOpt].txtDisplay = \"", "\";"},
    {"arrQuestions[EvalID].evalDistractors[thisOpt].incorrectRationale = \"", "\";"},
    {"arrQuestions[EvalID].evalRationale = \"", "\";"},
    {"arrQuestions[EvalID].shuffleDistractors();", ""},
}};

// Values that exercise the content conversions as well as plain text.
const std::array<const char*, 12> kValues{
    {"", "true", "x", "\\\"", "<br>", "&nbsp;", "<P>&nbsp;</P>", "-32769", "007",
     "<SCRIPT language=JavaScript>document.write(parentRef.writeActivityHTML(3));</SCRIPT>",
     "<IMG src=\"media/a.png\">", "\xE2\x82\xAC<STRONG>b</STRONG>"}};

class Generator {
  public:
    explicit Generator(std::uint32_t seed) : rng_(seed) {}

    std::uint32_t below(std::uint32_t n) { return rng_() % n; }

    std::string garbage(std::size_t length) {
        std::string s(length, '\0');
        for (char& c : s)
            c = static_cast<char>(below(256));
        return s;
    }

    std::string line() {
        const auto& [prefix, close] = kPrefixes[below(kPrefixes.size())];
        const std::string value = kValues[below(kValues.size())];
        const std::string full = std::string(prefix) + value + close;
        switch (below(8)) {
        case 0:
            return garbage(below(80));
        case 1: // cut anywhere, shorter than its closing characters included
            return full.substr(0, below(static_cast<std::uint32_t>(full.size()) + 1));
        case 2:
            return std::string(prefix) + prefix + value + close;
        case 3:
            return garbage(below(6)) + full + garbage(below(6));
        case 4:
            return std::string(prefix) + garbage(below(4));
        default:
            return full;
        }
    }

    std::string file(std::size_t maxLines) {
        std::string text;
        const std::size_t lines = below(static_cast<std::uint32_t>(maxLines) + 1);
        for (std::size_t i = 0; i < lines; ++i) {
            text += line();
            const char* ends[] = {"\r\n", "\n", "\r", ""};
            text += ends[below(4)];
        }
        return text;
    }

  private:
    std::mt19937 rng_;
};

// Lists are never empty, and every element read from a file carries its position (only an
// untouched placeholder at index 0 has none).
void expectListsUsable(const CourseModule& m) {
    ASSERT_FALSE(m.pages.empty());
    ASSERT_FALSE(m.glossary.empty());
    ASSERT_FALSE(m.questions.empty());
    const auto placeholder = [](std::size_t i, const std::string& id) {
        return i == 0 && id.empty();
    };
    for (std::size_t i = 0; i < m.pages.size(); ++i)
        ASSERT_TRUE(placeholder(i, m.pages[i].fileName) ||
                    m.pages[i].fileName == "page" + std::to_string(i) + ".html");
    for (std::size_t i = 0; i < m.glossary.size(); ++i)
        ASSERT_TRUE(placeholder(i, m.glossary[i].id) || m.glossary[i].id == std::to_string(i));
    for (std::size_t i = 0; i < m.questions.size(); ++i) {
        ASSERT_TRUE(placeholder(i, m.questions[i].id) ||
                    m.questions[i].id == std::to_string(i + 1));
        ASSERT_FALSE(m.questions[i].options.empty());
    }
}

TEST_F(StorageTest, GeneratedDamagedModulesNeverCrashTheLoader) {
    Generator gen(20240611);
    const std::array<const char*, 3> types{kLesson, kEvaluation, kSurvey};
    std::array<CourseModule, 3> fresh{makeModule(kLesson), makeModule(kEvaluation),
                                      makeModule(kSurvey)};
    for (int round = 0; round < 2000; ++round) {
        // A folder of its own per round: new files are far cheaper to write than replaced ones.
        const std::string folder = (root / "rounds" / std::to_string(round)).string();
        const auto scriptFile = [&](const std::string& name) {
            return fs::path(folder) / "scripts" / name;
        };
        const std::size_t t = gen.below(3);
        const std::string type = types[t];

        std::vector<std::string> files;
        if (type == kLesson)
            files = {"inc_ModuleInfo.js", "inc_QAndA.js", "inc_Glossary.js"};
        else
            files = {type == kEvaluation ? "inc_Questions.js" : "inc_Objectives.js"};
        fs::create_directories(scriptFile("").parent_path());
        for (const std::string& file : files) {
            std::string text = gen.file(30);
            if (round % 500 == 7) // a 1 MB line holding a prefix in the middle
                text += gen.garbage(1 << 19) + kPrefixes[gen.below(kPrefixes.size())].first +
                        gen.garbage(1 << 19) + "\r\n";
            writeBytes(scriptFile(file), text);
        }
        if (type == kLesson && gen.below(2) == 0)
            writeBytes(fs::path(folder) / ("page" + std::to_string(gen.below(3)) + ".html"),
                       gen.file(6) + "<LUMApageContent>\r\n" + gen.file(6));

        CourseModule m = fresh[t];
        m.ModuleFolder = folder;
        const ContentPaths roundPaths{folder, paths.installFolder};
        SCOPED_TRACE("round " + std::to_string(round));
        ASSERT_NO_THROW(LoadModuleFiles(m, roundPaths));
        expectListsUsable(m);
        if (HasFatalFailure())
            return;
        // Whatever came out of a damaged file can be saved again (a sample of rounds: replacing
        // files is the slow part).
        if (round % 16 == 0) {
            ASSERT_NO_THROW(WriteModuleFiles(m, roundPaths));
        }
    }
}

} // namespace
} // namespace lumora::test
