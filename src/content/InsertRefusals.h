// The page editor's Terms and Q&A buttons insert a reference to a glossary term or an activity;
// with nothing to refer to they tell the author so instead of opening an empty chooser.
#pragma once

#include "base/Prompt.h"
#include "storage/CourseModule.h"

namespace lumora {

// True when the glossary holds a term; otherwise shows "Empty Glossary" and returns false.
bool termsToInsert(const CourseModule& module, Prompt& prompt);
// True when the lesson holds a Q&A item; otherwise shows "Empty Q&A Pool" and returns false.
bool activitiesToInsert(const CourseModule& module, Prompt& prompt);

} // namespace lumora
