// What a written help folder holds and whether every reference in it resolves: read from the
// files as they ship (scripts and page files), not from the source they were made from.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace lumora::help {

struct HelpFacts {
    std::size_t pages = 0;
    std::size_t words = 0; // words a reader sees on the pages (markup and scripts left out)
    std::size_t terms = 0;
    std::size_t activities = 0;
    std::size_t pictures = 0;          // distinct media files shown
    std::vector<std::string> problems; // one line each: a reference that leads nowhere, ...
};

// Loads the Lesson in `folder` with the module loader and checks every page: term links name
// a term, page links a page, activity calls an activity, pictures a file in its media folder;
// and every term and activity is used somewhere. Throws FileError when the module is unreadable.
HelpFacts scanHelpFolder(const std::string& folder);

// The words of page HTML as a reader sees them.
std::size_t countWords(const std::string& html);

} // namespace lumora::help
