// The one module held in memory and the records it is made of. Every list is 0-based and
// never empty: it keeps at least one placeholder element, which the writer skips because its
// texts are empty. Flags the player scripts need are the texts "true" and "false".
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace lumora {

struct LessonPage {
    std::string fileName; // "page" + index + ".html", trusted only between load and save
    std::string title;
    std::string content; // editor form
};

struct GlossaryTerm {
    std::string id; // 0-based index as text, set by the loader
    std::string term;
    std::string definition; // may hold CR LF
};

struct QuestionOption {
    std::string correct;  // the literal written inside addDistractor(...)
    std::string txtValue; // read back; the writer writes the option's index instead
    std::string txtDisplay;
    std::string incorrectRationale; // Evaluation only
};

struct QAndAItem {
    std::string id;           // index + 1 as text, set by the loader
    std::string questionType; // "radio" or "checkbox"
    std::string questionText;
    std::string rationale;
    std::string shuffleDistractors; // "true" or "false"
    std::vector<QuestionOption> options;
};
using EvalQuestion = QAndAItem;

struct ColorScheme {
    std::string aLink;
    std::string aVisited;
    std::string contentBackground;
    std::string titleColor;
    std::string titleBackground;
    std::string pageNumberBackground;
    std::string pageNameBackground;
    std::string pageNumberColor;
    std::string pageNameColor;
    std::string copyRightColor;

    bool operator==(const ColorScheme&) const = default;
};

struct CourseModule {
    std::string modTitle;
    std::string moduleType; // "Lesson", "Evaluation" or "Survey"
    std::string templateFolder;
    std::string folderName;
    std::string ModuleFolder; // WorkspaceFolder + separator + folderName, no trailing separator
    std::string framesetFile;
    std::string shuffleEvalQuestions;
    std::vector<LessonPage> pages;
    std::vector<GlossaryTerm> glossary;
    std::vector<QAndAItem> questions;
    std::int16_t intNumQuestions = 0;
    std::string copyright;
    std::string useSCORM;
    ColorScheme colors;
    ColorScheme savedColors;
    // How many page files, page0.html on, hold this module's pages on disk: those the loader
    // read, then those the last save wrote. Only these are the module's own to remove when
    // pages are deleted; any other page file in the folder is left alone.
    std::size_t pageFileCount = 0;
};

// The records start-up builds once; ResetModule and the "add a blank item" operations copy
// from them and nothing changes them afterwards.
struct DefaultRecords {
    LessonPage page;
    GlossaryTerm term;
    QuestionOption option;
    QAndAItem item;
    QAndAItem surveyQuestion;
    ColorScheme colors;
    CourseModule module;
};

ColorScheme defaultColorScheme();
DefaultRecords makeDefaultRecords(int currentYear);

inline constexpr const char* kLesson = "Lesson";
inline constexpr const char* kEvaluation = "Evaluation";
inline constexpr const char* kSurvey = "Survey";

// "lessonframeset.html", "poolframeset.html", "surveyframeset.html"; "" for an unknown type.
std::string framesetFileFor(const std::string& moduleType);

} // namespace lumora
