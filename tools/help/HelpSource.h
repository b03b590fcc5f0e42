// The help's readable source turned into a Lesson: pages, glossary terms and Q&A activities in
// editor form, as the authoring forms would hold them after inserting the same links, pictures
// and activities. The real writer then saves it, so the help is always a module Lumora reads.
#pragma once

#include "content/ContentForms.h"
#include "storage/CourseModule.h"

#include <stdexcept>
#include <string>
#include <vector>

namespace lumora::help {

// A mistake in the source, with the line it is on (counted from 1).
class SourceError : public std::runtime_error {
  public:
    SourceError(int line, const std::string& what);
};

// The source grammar, one block per keyword line:
//   title: TEXT / copyright: TEXT                 the module's title and copyright line
//   term WORD          then the definition        a glossary term
//   activity KEY radio|checkbox                   a Q&A activity: "? question", "+ correct
//                                                 option", "- wrong option", "= rationale"
//   page TITLE         then the page's blocks     a lesson page (its heading is the title)
// Page blocks are separated by blank lines: "## heading", "- " bullets, "1. " steps,
// "![caption](file.png)" a picture from the media folder, "{activity KEY}" an activity, and
// anything else a paragraph. Inline: **bold**, [[term]] or [[shown text|term]] a term link,
// [shown text](page:Page title) a page link. Text is escaped as the editor escapes it.
CourseModule parseHelpSource(const std::string& text, const ContentPaths& paths);

// Writes the help from its source text into `folder` with the module writer, the pages built
// from the Lesson template's page skeleton. Page files of an earlier, longer help are removed:
// the folder is the help's alone. Throws SourceError or FileError.
void writeHelpFolder(const std::string& sourceText, const std::string& lessonTemplate,
                     const std::string& folder);

// The media files the pages show, in the order they first appear.
std::vector<std::string> picturesOf(const std::string& text);

} // namespace lumora::help
