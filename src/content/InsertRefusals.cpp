// The refusals of the Terms and Q&A buttons. The lists are never empty: a module without terms
// or items still holds one blank placeholder, which counts as nothing to insert.
#include "content/InsertRefusals.h"

#include "base/TextUtil.h"
#include "content/Normalize.h"

#include <algorithm>

namespace lumora {

bool termsToInsert(const CourseModule& module, Prompt& prompt) {
    if (std::any_of(module.glossary.begin(), module.glossary.end(),
                    [](const GlossaryTerm& t) { return !trimSpaces(t.term).empty(); }))
        return true;
    prompt.message(std::string("There are currently no terms to select.") + kCrLf +
                       "Please create a term before attempting to insert.",
                   "Empty Glossary", Icon::Information, Buttons::OK);
    return false;
}

bool activitiesToInsert(const CourseModule& module, Prompt& prompt) {
    if (std::any_of(module.questions.begin(), module.questions.end(),
                    [](const QAndAItem& q) { return !blankIfEmpty(q.questionText).empty(); }))
        return true;
    prompt.message(std::string("There are currently no Q&A items to select.") + kCrLf +
                       "Please create a Q&A item before attempting to insert.",
                   "Empty Q&A Pool", Icon::Information, Buttons::OK);
    return false;
}

} // namespace lumora
