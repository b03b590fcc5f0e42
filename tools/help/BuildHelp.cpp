// lumora-help-build: writes the offline help (a Lesson) from its readable source with the
// module writer, then reads the result back and reports its figures and any reference that
// leads nowhere.
//   lumora-help-build SOURCE LESSON_TEMPLATE HELP_FOLDER   write, then check
//   lumora-help-build --facts HELP_FOLDER                   check only
// Exit status: 0 written and sound, 1 a problem in the source or in the written help.
#include "HelpFacts.h"
#include "HelpSource.h"

#include "storage/TextFile.h"

#include <filesystem>
#include <iostream>

namespace fs = std::filesystem;
using namespace lumora;

namespace {

int report(const std::string& folder) {
    const help::HelpFacts facts = help::scanHelpFolder(folder);
    std::cout << "pages " << facts.pages << ", words " << facts.words << ", terms " << facts.terms
              << ", activities " << facts.activities << ", pictures " << facts.pictures << '\n';
    for (const std::string& problem : facts.problems)
        std::cerr << problem << '\n';
    return facts.problems.empty() ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    try {
        if (argc == 3 && std::string(argv[1]) == "--facts")
            return report(fs::absolute(argv[2]).lexically_normal().string());
        if (argc != 4) {
            std::cerr << "usage: lumora-help-build SOURCE LESSON_TEMPLATE HELP_FOLDER\n"
                         "       lumora-help-build --facts HELP_FOLDER\n";
            return 1;
        }
        help::writeHelpFolder(readFileBytes(argv[1]), argv[2], argv[3]);
        return report(fs::absolute(argv[3]).lexically_normal().string());
    } catch (const std::exception& e) {
        std::cerr << "lumora-help-build: " << e.what() << '\n';
        return 1;
    }
}
