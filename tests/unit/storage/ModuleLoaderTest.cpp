// Reading modules back: round trips through the writer, and the loader's defined behaviour on
// files the writer would never produce.
#include "StorageFixture.h"

#include "storage/ModuleLoader.h"
#include "storage/ModuleWriter.h"
#include "storage/PageFiles.h"
#include "storage/TextFile.h"

namespace lumora::test {
namespace {

class ModuleLoaderTest : public StorageTest {
  protected:
    // Loads into a fresh module of the type, as the session does after ResetModule.
    CourseModule load(const std::string& type, LoadOutcome* outcome = nullptr) {
        CourseModule m = makeModule(type);
        LoadOutcome o = LoadModuleFiles(m, paths);
        if (outcome)
            *outcome = o;
        return m;
    }
    // A Lesson's three script files, the other two empty.
    void lessonFiles(const std::string& info, const std::string& qanda = "",
                     const std::string& glossary = "") {
        writeBytes(script("inc_ModuleInfo.js"), info);
        writeBytes(script("inc_QAndA.js"), qanda);
        writeBytes(script("inc_Glossary.js"), glossary);
    }
};

// Lists as one "a|b|c" row per element, so a whole list is checked in one comparison.
std::vector<std::string> rows(const std::vector<QuestionOption>& options) {
    std::vector<std::string> out;
    for (const QuestionOption& o : options)
        out.push_back(o.correct + "|" + o.txtValue + "|" + o.txtDisplay + "|" +
                      o.incorrectRationale);
    return out;
}
std::vector<std::string> rows(const std::vector<GlossaryTerm>& terms) {
    std::vector<std::string> out;
    for (const GlossaryTerm& t : terms)
        out.push_back(t.id + "|" + t.term + "|" + t.definition);
    return out;
}
std::vector<std::string> rows(const std::vector<LessonPage>& pages) {
    std::vector<std::string> out;
    for (const LessonPage& p : pages)
        out.push_back(p.fileName + "|" + p.title + "|" + p.content);
    return out;
}
using Rows = std::vector<std::string>;

std::string addPage(const std::string& title) {
    return "objLessonModule.addPage(objLessonModule.pages.length, \"" + title + "\");\r\n";
}

TEST_F(ModuleLoaderTest, LessonRoundTrip) {
    CourseModule m = makeModule(kLesson);
    m.modTitle = "Say \"hi\"";
    m.copyright = "\xC2\xA9 Acme \"Co\"";
    m.useSCORM = "false";
    m.pages = {LessonPage{"", "Intro", "<P>Hello</P>"}, LessonPage{"", "Two", "<P>World</P>"}};
    m.glossary = {GlossaryTerm{"", "Term \"A\"", "Plain definition"},
                  GlossaryTerm{"", "B", "line one\r\nline two"}};
    m.questions = {item("checkbox", "Which \"ones\"?",
                        {option("true", "One"), option("false", ""), option("true", "Three")},
                        "See page 2", "true")};
    WriteModuleFiles(m, paths);

    LoadOutcome outcome;
    CourseModule r = load(kLesson, &outcome);
    EXPECT_TRUE(outcome.questionTextRead);
    EXPECT_EQ(r.modTitle, m.modTitle);
    EXPECT_EQ(r.copyright, m.copyright);
    EXPECT_EQ(r.useSCORM, "false");
    EXPECT_EQ(r.shuffleEvalQuestions, "false");

    // A page comes back with the line break its line in the file ends with.
    EXPECT_EQ(rows(r.pages),
              (Rows{"page0.html|Intro|<P>Hello</P>\r\n", "page1.html|Two|<P>World</P>\r\n"}));
    // A definition's line breaks are written as the two characters \n and come back in that
    // form, which the next save writes unchanged: the files settle after one round.
    EXPECT_EQ(rows(r.glossary), (Rows{"0|Term \"A\"|Plain definition", "1|B|line one\\nline two"}));
    ASSERT_EQ(r.questions.size(), 1u);
    const QAndAItem& q = r.questions[0];
    EXPECT_EQ(q.id + q.questionType + q.questionText + q.rationale + q.shuffleDistractors,
              "1checkboxWhich \"ones\"?See page 2true");
    // The skipped option leaves a gap in the values, not in the list.
    EXPECT_EQ(rows(q.options), (Rows{"true|0|One|", "true|2|Three|"}));

    const std::string glossary = readBytes(script("inc_Glossary.js"));
    const std::string info = readBytes(script("inc_ModuleInfo.js"));
    WriteModuleFiles(r, paths);
    EXPECT_EQ(readBytes(script("inc_Glossary.js")), glossary);
    EXPECT_EQ(readBytes(script("inc_ModuleInfo.js")), info);
}

// The templates' pools and surveys come back unchanged through a save (SessionTest); here the
// texts they do not hold: a line break, quotes and a negative question count.
TEST_F(ModuleLoaderTest, EvaluationRoundTrip) {
    CourseModule m = makeModule(kEvaluation);
    m.modTitle = "Pool"; // an empty title would swallow the lines after it
    m.shuffleEvalQuestions = "true";
    m.intNumQuestions = -7;
    m.questions = {item("radio", "Line 1\r\nLine 2",
                        {option("true", "Right"), option("false", "Wrong", "Think \"again\"")},
                        "Why \"so\"")};
    WriteModuleFiles(m, paths);

    const CourseModule r = load(kEvaluation);
    EXPECT_EQ(r.intNumQuestions, -7);
    ASSERT_EQ(r.questions.size(), 1u);
    EXPECT_EQ(r.questions[0].questionText + "|" + r.questions[0].rationale,
              "Line 1\r\nLine 2|Why \"so\"");
    EXPECT_EQ(rows(r.questions[0].options),
              (Rows{"true|0|Right|", "false|1|Wrong|Think \"again\""}));
}

TEST_F(ModuleLoaderTest, SurveyRoundTripReadsNoFeedback) {
    CourseModule m = makeModule(kSurvey);
    m.shuffleEvalQuestions = "true";
    m.questions = {makeDefaultRecords(2024).surveyQuestion};
    WriteModuleFiles(m, paths);
    // A rationale line in a survey file is not the survey's.
    std::string bytes = readBytes(script("inc_Objectives.js"));
    writeBytes(script("inc_Objectives.js"),
               bytes + "arrQuestions[EvalID].evalRationale = \"stray\";\r\n"
                       "arrQuestions[EvalID].evalDistractors[thisOpt].incorrectRationale = "
                       "\"stray\";\r\n");

    CourseModule r = makeModule(kSurvey);
    r.shuffleEvalQuestions = "true";
    LoadModuleFiles(r, paths);
    EXPECT_EQ(r.shuffleEvalQuestions, "false");
    ASSERT_EQ(r.questions.size(), 1u);
    EXPECT_EQ(r.questions[0].rationale, "");
    ASSERT_EQ(r.questions[0].options.size(), 5u);
    EXPECT_EQ(r.questions[0].options[4].incorrectRationale, "");
}

TEST_F(ModuleLoaderTest, TitleAndCopyrightAreUnescapedTwiceAndOldCodePageFilesAreRead) {
    writeBytes(script("inc_Objectives.js"), "var modTitle = \"He said \\\"hi\\\"\";\r\n"
                                            "var copyright = \"a\\\\\"b\";\r\n"
                                            "var useSCORM = true;\r\n");
    CourseModule r = load(kSurvey);
    EXPECT_EQ(r.modTitle, "He said \"hi\"");
    // A backslash written before a quote does not survive the second unescape.
    EXPECT_EQ(r.copyright, "a\"b");

    writeBytes(script("inc_Objectives.js"),
               "var modTitle = \"Caf\xE9 \x80\";\r\nvar copyright = \"\xA9 1999\";\n");
    r = load(kSurvey);
    EXPECT_EQ(r.modTitle, "Caf\xC3\xA9 \xE2\x82\xAC");
    EXPECT_EQ(r.copyright, "\xC2\xA9 1999");
    EXPECT_EQ(r.useSCORM, "");
}

// The information file's lines as the loader reads them: title|copyright|useSCORM, then each
// page as file|title.
TEST_F(ModuleLoaderTest, LessonInformationLines) {
    const std::string head = "var modTitle = \"T\";\r\nvar copyright = \"C\";\r\n";
    const std::pair<std::string, std::string> cases[] = {
        // Without its line the switch means SCORM; the search for it read the page line too.
        {head + addPage("P"), "T|C|true / |"},
        // An empty copyright swallows the rest of the file.
        {"var modTitle = \"T\";\r\nvar objLessonModule = new objLesson(window.modTitle);\r\n"
         "var copyright = \"\";\r\nvar useSCORM = false;\r\n" +
             addPage("P"),
         "T|| / |"},
        // Page titles are read as content: "<br>" is a line break, a lone "&nbsp;" is empty.
        {head + "var useSCORM = true;\r\n" + addPage("a<br>b &nbsp;") + addPage("&nbsp;"),
         "T|C|true / page0.html|a\r\nb &nbsp; / page1.html|"},
    };
    for (const auto& [info, expected] : cases) {
        lessonFiles(info);
        const CourseModule r = load(kLesson);
        std::string got = r.modTitle + "|" + r.copyright + "|" + r.useSCORM;
        for (const LessonPage& p : r.pages)
            got += " / " + p.fileName + "|" + p.title;
        EXPECT_EQ(got, expected) << info;
        // A page file is recreated for every page read, and only then.
        EXPECT_EQ(fs::exists(moduleFile("page0.html")),
                  expected.find("page0") != std::string::npos);
    }
}

TEST_F(ModuleLoaderTest, MissingPageFileIsRecreatedFromTheSkeleton) {
    lessonFiles("var modTitle = \"T\";\r\nvar copyright = \"C\";\r\nvar useSCORM = true;\r\n" +
                addPage("A") + addPage("B") + addPage("C"));
    const std::string page = "<LUMApageContent>\r\n<P>kept</P>\r\n</LUMApageContent>\r\n";
    writeBytes(moduleFile("page0.html"), page);
    writeBytes(moduleFile("page1.html"), page);

    CourseModule r = load(kLesson);
    ASSERT_EQ(r.pages.size(), 3u);
    EXPECT_EQ(r.pages[1].content, "<P>kept</P>\r\n");
    EXPECT_EQ(r.pages[2].title, "C");
    // The skeleton's sample is left out: the page comes back as an empty page is written.
    EXPECT_EQ(r.pages[2].content, "\r\n");
    std::string empty = kSkeleton;
    empty.replace(empty.find("<P>Template sample</P>"), 22, "");
    EXPECT_EQ(readBytes(moduleFile("page2.html")), empty);
}

// Lines out of their place in hand-edited files: a value before its item or option is passed
// over, an empty option is not appended, a prefix matches anywhere in its line and an empty
// value is not stored. Lists stay usable: an item keeps one blank option, and without a term
// line the glossary keeps its blank placeholder.
TEST_F(ModuleLoaderTest, LinesOutOfPlace) {
    const std::string act = "arrActObjects[ActID]";
    const std::string item = act + " = new objActQuestion(thisID, \"radio\");\r\n";
    const std::string opt = act + ".actDistractors[thisOpt].";
    const std::string term = "arrDefObjects[TermID]";
    const struct {
        std::string qanda, glossary, expected;
    } cases[] = {
        // The value after the empty option still goes to the option that was appended.
        {item + act + ".addDistractor(true);\r\n" + opt + "txtDisplay = \"A\";\r\n" + act +
             ".addDistractor();\r\n" + opt + "txtDisplay = \"B\";\r\n",
         "", "1||false|1: true||B| / 1: ||"},
        // Lines before their item or option, and a term without its object line.
        {act + ".actQuestion = \"orphan\";\r\n" + act + ".addDistractor(true);\r\n" + opt +
             "txtDisplay = \"orphan\";\r\n" + act + ".shuffleDistractors();\r\n" + item + opt +
             "txtValue = \"no option yet\";\r\n" + act + ".actQuestion = \"Q\";\r\n",
         term + ".term = \"orphan\";\r\n" + term + ".definition = \"orphan\";\r\n",
         "read 1|Q|false|1: ||| / 1: ||"},
        // No activity line: the placeholder stays untouched.
        {"",
         "  " + term + " = new objGlossary(TermID); // first\r\nx " + term + ".term = \"A\";\r\n" +
             term + ".term = \"\";\r\n" + term + ".definition = \"<P>&nbsp;</P>\";\r\n" + term +
             ".definition = \"d\\\"q\\\"\";\r\n" + term + ".definition = \"\";\r\n",
         "||false|1: false|0|Sample Option| / 1: 0|x A|d\"q\""},
    };
    for (const auto& c : cases) {
        lessonFiles("", c.qanda, c.glossary);
        LoadOutcome outcome;
        const CourseModule r = load(kLesson, &outcome);
        std::string got = outcome.questionTextRead ? "read " : "";
        for (const QAndAItem& q : r.questions)
            got += q.id + "|" + q.questionText + "|" + q.shuffleDistractors + "|" +
                   std::to_string(q.options.size()) + ": " + rows(q.options)[0] + " / ";
        got += std::to_string(r.glossary.size()) + ": " + rows(r.glossary)[0];
        EXPECT_EQ(got, c.expected) << c.qanda << c.glossary;
    }
}

// Not a number or out of range: the line is passed over and a later one may still count.
TEST_F(ModuleLoaderTest, QuestionCountMustBeA16BitNumber) {
    const std::string shuffle = "var shuffleEvalQuestions = true;\r\n";
    const std::pair<std::string, int> cases[] = {
        {shuffle + "var intNumQuestions =  12 ;\r\n", 12},
        {shuffle + "var intNumQuestions = -32768;\r\n", -32768},
        {shuffle + "var intNumQuestions = abc;\r\nvar intNumQuestions = 32768;\r\n"
                   "var intNumQuestions = 1e3;\r\nvar intNumQuestions = 99999999999999999999;\r\n"
                   "var intNumQuestions = 3;\r\n",
         3},
        // Without its line the pool keeps the default order setting.
        {"var intNumQuestions = x;\r\n", 0},
    };
    for (const auto& [lines, count] : cases) {
        writeBytes(script("inc_Questions.js"),
                   "var modTitle = \"T\";\r\nvar copyright = \"C\";\r\nvar useSCORM = true;\r\n" +
                       lines);
        const CourseModule r = load(kEvaluation);
        EXPECT_EQ(r.intNumQuestions, count) << lines;
        EXPECT_EQ(r.shuffleEvalQuestions, count == 0 ? "false" : "true") << lines;
    }
}

TEST_F(ModuleLoaderTest, MissingFilesFailWithTheFileName) {
    lessonFiles("var modTitle = \"T\";\r\n");
    fs::remove(script("inc_QAndA.js"));
    try {
        load(kLesson);
        FAIL() << "no FileError";
    } catch (const FileError& e) {
        EXPECT_NE(e.path().find("inc_QAndA.js"), std::string::npos);
    }
    EXPECT_THROW(load(kEvaluation), FileError);
}

} // namespace
} // namespace lumora::test
