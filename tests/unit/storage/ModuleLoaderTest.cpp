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
                  GlossaryTerm{"", "B", "Second"}};
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
    EXPECT_EQ(rows(r.glossary), (Rows{"0|Term \"A\"|Plain definition", "1|B|Second"}));
    ASSERT_EQ(r.questions.size(), 1u);
    const QAndAItem& q = r.questions[0];
    EXPECT_EQ(q.id + q.questionType + q.questionText + q.rationale + q.shuffleDistractors,
              "1checkboxWhich \"ones\"?See page 2true");
    // The skipped option leaves a gap in the values, not in the list.
    EXPECT_EQ(rows(q.options), (Rows{"true|0|One|", "true|2|Three|"}));
}

TEST_F(ModuleLoaderTest, SecondSaveOfALoadedModuleWritesTheSameScripts) {
    // Definition line breaks are written as the two characters \n and come back in that form,
    // which the next save writes unchanged: the files settle after one round.
    CourseModule m = makeModule(kLesson);
    m.modTitle = "Settled"; // an empty title would swallow the lines after it
    m.pages = {LessonPage{"", "Only", "<P>x</P>"}};
    m.glossary = {GlossaryTerm{"", "T", "line one\r\nline \"two\""}};
    WriteModuleFiles(m, paths);
    const std::string glossary = readBytes(script("inc_Glossary.js"));
    const std::string info = readBytes(script("inc_ModuleInfo.js"));

    CourseModule r = load(kLesson);
    EXPECT_EQ(r.glossary[0].definition, "line one\\nline \"two\"");
    WriteModuleFiles(r, paths);
    EXPECT_EQ(readBytes(script("inc_Glossary.js")), glossary);
    EXPECT_EQ(readBytes(script("inc_ModuleInfo.js")), info);
}

TEST_F(ModuleLoaderTest, EvaluationRoundTrip) {
    CourseModule m = makeModule(kEvaluation);
    m.modTitle = "Pool";
    m.useSCORM = "true";
    m.shuffleEvalQuestions = "true";
    m.intNumQuestions = -7;
    const std::vector<QuestionOption> options{option("true", "Right"),
                                              option("false", "Wrong", "Think \"again\"")};
    m.questions = {item("radio", "Line 1\r\nLine 2", options, "Why"),
                   item("radio", "Line 1\r\nLine 2", options, "Why", "true")};
    WriteModuleFiles(m, paths);

    CourseModule r = load(kEvaluation);
    EXPECT_EQ(r.modTitle + r.useSCORM + r.shuffleEvalQuestions, "Pooltruetrue");
    EXPECT_EQ(r.intNumQuestions, -7);
    ASSERT_EQ(r.questions.size(), 2u);
    for (const QAndAItem& q : r.questions)
        EXPECT_EQ(q.questionText + "|" + q.rationale, "Line 1\r\nLine 2|Why");
    EXPECT_EQ(r.questions[0].id + r.questions[0].shuffleDistractors, "1false");
    EXPECT_EQ(r.questions[1].id + r.questions[1].shuffleDistractors, "2true");
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
    EXPECT_EQ(r.questions[0].questionText, m.questions[0].questionText);
    EXPECT_EQ(r.questions[0].rationale, "");
    ASSERT_EQ(r.questions[0].options.size(), 5u);
    EXPECT_EQ(rows(r.questions[0].options)[4], "true|4|Poor|");
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

TEST_F(ModuleLoaderTest, EmptyOptionIsNotAppended) {
    lessonFiles("var copyright = \"C\";\r\n",
                "arrActObjects[ActID] = new objActQuestion(thisID, \"radio\");\r\n"
                "arrActObjects[ActID].addDistractor(true);\r\n"
                "arrActObjects[ActID].actDistractors[thisOpt].txtDisplay = \"A\";\r\n"
                "arrActObjects[ActID].addDistractor();\r\n"
                "arrActObjects[ActID].actDistractors[thisOpt].txtDisplay = \"B\";\r\n");
    LoadOutcome outcome;
    CourseModule r = load(kLesson, &outcome);
    EXPECT_FALSE(outcome.questionTextRead);
    ASSERT_EQ(r.questions.size(), 1u);
    ASSERT_EQ(r.questions[0].options.size(), 1u);
    // The value after the empty option still goes to the option that was appended.
    EXPECT_EQ(r.questions[0].options[0].txtDisplay, "B");
}

TEST_F(ModuleLoaderTest, LinesBeforeTheirItemAreIgnored) {
    lessonFiles("",
                "arrActObjects[ActID].actQuestion = \"orphan\";\r\n"
                "arrActObjects[ActID].addDistractor(true);\r\n"
                "arrActObjects[ActID].actDistractors[thisOpt].txtDisplay = \"orphan\";\r\n"
                "arrActObjects[ActID].shuffleDistractors();\r\n"
                "arrActObjects[ActID] = new objActQuestion(thisID, \"radio\");\r\n"
                "arrActObjects[ActID].actDistractors[thisOpt].txtValue = \"no option yet\";\r\n"
                "arrActObjects[ActID].actQuestion = \"Q\";\r\n",
                "arrDefObjects[TermID].term = \"orphan\";\r\n"
                "arrDefObjects[TermID].definition = \"orphan\";\r\n");
    LoadOutcome outcome;
    CourseModule r = load(kLesson, &outcome);
    EXPECT_TRUE(outcome.questionTextRead);
    ASSERT_EQ(r.questions.size(), 1u);
    const QAndAItem& q = r.questions[0];
    EXPECT_EQ(q.questionText, "Q");
    EXPECT_EQ(q.shuffleDistractors, "false");
    // The item keeps one blank option so its list is never empty.
    ASSERT_EQ(q.options.size(), 1u);
    EXPECT_EQ(q.options[0].txtDisplay, "");
    EXPECT_EQ(q.options[0].txtValue, "");
    // No term line: the glossary keeps its placeholder untouched.
    ASSERT_EQ(r.glossary.size(), 1u);
    EXPECT_EQ(r.glossary[0].term, "");
    EXPECT_EQ(r.glossary[0].definition, "");
}

TEST_F(ModuleLoaderTest, PrefixesMatchAnywhereAndEmptyValuesAreNotStored) {
    lessonFiles("", "",
                "  arrDefObjects[TermID] = new objGlossary(TermID); // first\r\n"
                "x arrDefObjects[TermID].term = \"A\";\r\n"
                "arrDefObjects[TermID].term = \"\";\r\n"
                "arrDefObjects[TermID].definition = \"<P>&nbsp;</P>\";\r\n"
                "arrDefObjects[TermID].definition = \"d\\\"q\\\"\";\r\n"
                "arrDefObjects[TermID].definition = \"\";\r\n");
    CourseModule r = load(kLesson);
    ASSERT_EQ(r.glossary.size(), 1u);
    EXPECT_EQ(r.glossary[0].id, "0");
    EXPECT_EQ(r.glossary[0].term, "x A");
    EXPECT_EQ(r.glossary[0].definition, "d\"q\"");
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
