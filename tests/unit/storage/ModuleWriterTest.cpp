// The module scripts byte for byte: the grammar the player runs and the loader reads.
#include "StorageFixture.h"

#include "base/TextUtil.h"
#include "storage/ModuleWriter.h"
#include "storage/TextFile.h"

namespace lumora::test {
namespace {

// The whole grammar of the three module types is pinned by the templates, which a new module
// saves unchanged (SessionTest); these tests hold the rules the templates do not exercise.

// Expected files are written with "\n" for readability; the files end every line with CR LF.
std::string crlf(const std::string& text) {
    return replaceAll(text, "\n", "\r\n");
}

// The four lines that add one option to the item `self` ("arrActObjects[ActID]") whose option
// list is `list` ("actDistractors").
std::string opt(const std::string& self, const std::string& list, const char* correct, int value,
                const std::string& display) {
    const std::string o = self + "." + list + "[thisOpt]";
    return "thisOpt = " + self + "." + list + ".length;\n" + self + ".addDistractor(" + correct +
           ");\n" + o + ".txtValue = \"" + std::to_string(value) + "\";\n" + o +
           ".txtDisplay = \"" + display + "\";\n";
}
std::string act(const char* correct, int value, const std::string& display) {
    return opt("arrActObjects[ActID]", "actDistractors", correct, value, display);
}

// Quotes in titles are escaped (backslashes are not); pages are written by position.
TEST_F(StorageTest, LessonInformationAndPages) {
    CourseModule m = makeModule(kLesson);
    m.modTitle = "Say \"hi\" C:\\x";
    m.copyright = "Acme \"Co\"";
    m.pages = {LessonPage{"page0.html", "Intro", "<P>Hello</P>"},
               LessonPage{"page5.html", "The \"end\"", ""}};
    WriteModuleInfo(m, paths);
    const std::string info = readBytes(script("inc_ModuleInfo.js"));
    for (const char* line :
         {"var modTitle = \"Say \\\"hi\\\" C:\\x\";\r\n",
          "var copyright = \"Acme \\\"Co\\\"\";\r\n",
          "objLessonModule.addPage(objLessonModule.pages.length, \"The \\\"end\\\"\");\r\n"})
        EXPECT_NE(info.find(line), std::string::npos) << line;
    // Pages are written by position, whatever file name they were loaded from; the skeleton's
    // sample content between the markers is dropped.
    const auto page = [](const std::string& content) {
        return replaceAll(kSkeleton, "<P>Template sample</P>\r\n", content + "\r\n");
    };
    EXPECT_EQ(readBytes(moduleFile("page0.html")), page("<P>Hello</P>"));
    EXPECT_EQ(readBytes(moduleFile("page1.html")), page(""));
    EXPECT_FALSE(fs::exists(moduleFile("page5.html")));
}

// Items without text (or only blank-looking text) or without a first option are left out of the
// file and kept in memory; an option without text is left out and leaves a gap in the values.
TEST_F(StorageTest, LessonActivities) {
    CourseModule m = makeModule(kLesson);
    m.questions = {
        item("radio", "What is \"2+2\"?",
             {option("true", "Four"), option("false", ""), option("false", "Five")},
             "Line one\r\nLine two", "true"),
        item("radio", "&nbsp;", {option("true", "Blank text")}),
        item("radio", "First option empty", {option("true", ""), option("true", "Later")}),
        item("checkbox", "Q4", {option("true", "A")}),
    };
    WriteQAndA(m, paths);

    EXPECT_EQ(readBytes(script("inc_QAndA.js")),
              crlf("ActID = arrActObjects.length;\n"
                   "thisID = ActID+1;\n"
                   "arrActObjects[ActID] = new objActQuestion(thisID, \"radio\");\n"
                   "arrActObjects[ActID].actQuestion = \"What is \\\"2+2\\\"?\";\n" +
                   act("true", 0, "Four") + act("false", 2, "Five") +
                   "arrActObjects[ActID].actRationale = \"Line one<br>Line two\";\n"
                   "arrActObjects[ActID].shuffleDistractors();\n"
                   "\n"
                   "ActID = arrActObjects.length;\n"
                   "thisID = ActID+1;\n"
                   "arrActObjects[ActID] = new objActQuestion(thisID, \"checkbox\");\n"
                   "arrActObjects[ActID].actQuestion = \"Q4\";\n" +
                   act("true", 0, "A") + "arrActObjects[ActID].actRationale = \"\";\n"));
    // Skipped items stay in memory; the blank-looking text was made blank.
    ASSERT_EQ(m.questions.size(), 4u);
    EXPECT_EQ(m.questions[1].questionText, "");
    EXPECT_EQ(m.questions[2].questionText, "First option empty");
}

// A pool question's feedback is escaped like its text; survey questions have no feedback and are
// never shuffled, whatever the item holds.
TEST_F(StorageTest, PoolFeedbackIsEscapedAndSurveyQuestionsHaveNone) {
    CourseModule pool = makeModule(kEvaluation);
    pool.questions = {item("radio", "Pick",
                           {option("true", "Yes"), option("false", "No", "Not \"no\"")},
                           "Because \"so\"")};
    WriteQuestions(pool, paths);
    const std::string questions = readBytes(script("inc_Questions.js"));
    EXPECT_NE(questions.find(".incorrectRationale = \"Not \\\"no\\\"\";\r\n"), std::string::npos);
    EXPECT_NE(questions.find(".evalRationale = \"Because \\\"so\\\"\";\r\n"), std::string::npos);

    CourseModule m = makeModule(kSurvey);
    QAndAItem rated = makeDefaultRecords(2024).surveyQuestion;
    rated.rationale = "never written";
    rated.shuffleDistractors = "true";
    rated.options[0].incorrectRationale = "never written";
    m.questions = {rated};
    WriteObjectives(m, paths);
    const std::string file = readBytes(script("inc_Objectives.js"));
    EXPECT_NE(file.find(".txtDisplay = \"Poor\";\r\n\r\nintNumQuestions"), std::string::npos);
    for (const char* absent : {"never written", "Rationale", "shuffle"})
        EXPECT_EQ(file.find(absent), std::string::npos) << absent;
}

TEST_F(StorageTest, GlossarySkipsTermsBlankAfterTrimming) {
    CourseModule m = makeModule(kLesson);
    m.glossary = {GlossaryTerm{"", "API", "Application \"programming\"\r\ninterface"},
                  GlossaryTerm{"", "  ", "No term"}, GlossaryTerm{"", "No definition", "   "},
                  GlossaryTerm{"", "Tab\tterm", "back\\slash"}};
    WriteGlossary(m);
    EXPECT_EQ(readBytes(script("inc_Glossary.js")),
              "TermID = arrDefObjects.length;\r\n"
              "arrDefObjects[TermID] = new objGlossary(TermID);\r\n"
              "arrDefObjects[TermID].term = \"API\";\r\n"
              "arrDefObjects[TermID].definition = "
              "\"Application \\\"programming\\\"\\ninterface\";\r\n"
              "\r\n"
              "TermID = arrDefObjects.length;\r\n"
              "arrDefObjects[TermID] = new objGlossary(TermID);\r\n"
              "arrDefObjects[TermID].term = \"Tab\tterm\";\r\n"
              "arrDefObjects[TermID].definition = \"back\\slash\";\r\n"
              "\r\n");
}

TEST_F(StorageTest, FailedSaveLeavesTheOldFileInPlace) {
    CourseModule m = makeModule(kEvaluation);
    writeBytes(script("inc_Questions.js"), "old");
    // A folder where the temporary file should go makes the write fail.
    fs::create_directories(script("inc_Questions.js.tmp-lumora"));
    EXPECT_THROW(WriteQuestions(m, paths), FileError);
    EXPECT_EQ(readBytes(script("inc_Questions.js")), "old");
}

TEST_F(StorageTest, SaveRewritesOnlyFilesWhoseBytesChange) {
    CourseModule m = makeModule(kLesson);
    m.modTitle = "T";
    m.pages = {LessonPage{"", "One", "<P>1</P>"}, LessonPage{"", "Two", "<P>2</P>"}};
    WriteModuleFiles(m, paths);
    // Any write of these two files would now fail on its temporary file.
    fs::create_directories(moduleFile("page0.html.tmp-lumora"));
    fs::create_directories(script("inc_ModuleInfo.js.tmp-lumora"));
    EXPECT_NO_THROW(WriteModuleFiles(m, paths));

    m.pages[1].content = "<P>changed</P>";
    EXPECT_NO_THROW(WriteModuleFiles(m, paths));
    EXPECT_NE(readBytes(moduleFile("page1.html")).find("changed"), std::string::npos);
    m.pages[0].content = "<P>changed</P>";
    EXPECT_THROW(WriteModuleFiles(m, paths), FileError);
}

// Five pages loaded, two deleted: their files go, files the module never held stay (the save
// over a damaged module is SaveSafetyTest's; here, which names count as the module's pages).
TEST_F(StorageTest, RemoveStalePageFilesRemovesOnlyTheModulesOwnPages) {
    CourseModule m = makeModule(kLesson);
    m.pages.resize(3);
    m.pageFileCount = 5;
    for (const char* name : {"page0.html", "page1.html", "page2.html", "page3.html", "page4.html",
                             "page17.html", "page03.html", "pageX.html", "page5.html.bak"})
        writeBytes(moduleFile(name), "x");
    EXPECT_EQ(countStrayPageFiles(m), 1u); // page17.html
    RemoveStalePageFiles(m);
    EXPECT_EQ(m.pageFileCount, 3u);
    for (const char* kept : {"page0.html", "page1.html", "page2.html", "page17.html", "page03.html",
                             "pageX.html", "page5.html.bak"})
        EXPECT_TRUE(fs::exists(moduleFile(kept))) << kept;
    for (const char* gone : {"page3.html", "page4.html"})
        EXPECT_FALSE(fs::exists(moduleFile(gone))) << gone;
}

} // namespace
} // namespace lumora::test
