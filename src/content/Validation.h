// The check of correct options run before a save, the survey scale and the flag conversions.
#pragma once

#include "base/Prompt.h"
#include "storage/CourseModule.h"

#include <cstdint>
#include <string>

namespace lumora {

int countCorrectOptions(const QAndAItem& item);
bool isQuestionValid(const CourseModule& module, std::size_t position);
// The message text shown for the invalid questions, or "" when every question is valid.
std::string invalidQuestionsMessage(const CourseModule& module);
// Shows the warning (title "Error", exclamation icon) when needed.
void validateQuestions(const CourseModule& module, Prompt& prompt);

std::string surveyScaleWord(std::int16_t rating);
bool flagToBool(const std::string& flag);
std::string checkStateToFlag(int state);

} // namespace lumora
