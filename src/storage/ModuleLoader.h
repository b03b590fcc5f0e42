// Reads the module scripts and page files back into the module, line by line, by the fixed
// prefixes the writer writes. Lines that match nothing are ignored; malformed lines never crash.
#pragma once

#include "content/ContentForms.h"
#include "storage/CourseModule.h"

namespace lumora {

struct LoadOutcome {
    bool questionTextRead = false; // the question text setter marks the module changed
};

// Steps 4 to 7 of loading: glossary, questions and module information (with page files) of
// module.moduleType from module.ModuleFolder. The caller has set ModuleFolder, templateFolder
// and framesetFile. Throws FileError for a missing or unreadable file.
LoadOutcome LoadModuleFiles(CourseModule& module, const ContentPaths& paths);

} // namespace lumora
