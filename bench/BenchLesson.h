// The editor benchmarks' starting point: the Lesson template copied as the module "Bench" into
// a fresh installation folder and loaded into the session.
#pragma once

#include "app/Session.h"

#include <filesystem>

namespace lumora::bench {

inline bool loadBenchLesson(Session& session, const std::filesystem::path& install) {
    namespace fs = std::filesystem;
    for (const char* part : {"Templates", "app"})
        fs::copy(fs::path(LUMORA_DIST_DIR) / part, install / part, fs::copy_options::recursive);
    fs::create_directories(install / "MyContent" / "Bench");
    fs::copy(install / "Templates" / "Lesson", install / "MyContent" / "Bench",
             fs::copy_options::recursive);
    session.setInstallation(install.string());
    session.module.moduleType = "Lesson";
    session.module.folderName = "Bench";
    return session.LoadModule();
}

} // namespace lumora::bench
