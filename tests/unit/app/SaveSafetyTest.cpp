// Saving modules whose folders were damaged by hand, checked by what is left on disk: page files
// the module never held, a read-only file, folders whose names hold the
// characters normalisation rewrites, and the leftovers of an interrupted save.
#include "AppFixture.h"

#include "app/Workspace.h"
#include "content/Normalize.h"
#include "storage/TextFile.h"

namespace lumora::test {
namespace {

class SaveSafetyTest : public AppTest {
  protected:
    // A new Lesson from the staged template, saved with `pages` pages.
    CourseModule& newLesson(const std::string& name, std::size_t pages) {
        prompt.type(name);
        EXPECT_TRUE(NewModuleFolder(session(), kLesson));
        CourseModule& m = session().module;
        while (m.pages.size() < pages)
            m.pages.push_back(LessonPage{"", "Added " + std::to_string(m.pages.size()),
                                         "<P>Page " + std::to_string(m.pages.size()) + "</P>"});
        session().saveForScorm(true);
        return m;
    }

    fs::path folder() { return fs::path(session().module.ModuleFolder); }
};

// A module information file cut after its first line yields no pages (the loader's readings of
// other damage are its own tests): every page file stays on disk through a save, with a warning
// at load; pages deleted by the author in the session are the ones removed.
TEST_F(SaveSafetyTest, ASaveRemovesOnlyPageFilesOfPagesDeletedSinceTheLoad) {
    stageTemplates();
    newLesson("Damaged", 5);
    const auto saved = folderFiles(folder(), "page");
    ASSERT_EQ(saved.size(), 5u);
    const fs::path info = folder() / "scripts" / "inc_ModuleInfo.js";
    const std::string text = readBytes(info);
    writeBytes(info, text.substr(0, text.find("\r\n") + 2));

    prompt.messages.clear();
    ASSERT_TRUE(reopen(session()));
    ASSERT_EQ(session().module.pages.size(), 1u);
    ASSERT_EQ(prompt.messages.size(), 1u);
    EXPECT_EQ(prompt.messages[0].title, "Warning");
    EXPECT_EQ(prompt.messages[0].icon, Icon::Exclamation);
    EXPECT_NE(prompt.messages[0].text.find(" 5 page files "), std::string::npos);

    session().saveForScorm(true);
    auto after = folderFiles(folder(), "page");
    EXPECT_EQ(after.size(), 5u);
    after.erase("page0.html"); // the module's one page now
    for (const auto& [name, bytes] : after)
        EXPECT_EQ(bytes, saved.at(name)) << name;

    newLesson("Deleting", 5);
    writeBytes(folder() / "page9.html", "not the module's");
    prompt.messages.clear();
    ASSERT_TRUE(reopen(session()));
    EXPECT_NE(prompt.last()->text.find(" 1 page file "), std::string::npos);
    session().module.pages.resize(3);
    session().saveForScorm(true);
    EXPECT_FALSE(fs::exists(folder() / "page3.html"));
    EXPECT_FALSE(fs::exists(folder() / "page4.html"));
    EXPECT_EQ(readBytes(folder() / "page9.html"), "not the module's");
}

// Whichever file a save would write is read-only, the save fails naming it and writes nothing.
TEST_F(SaveSafetyTest, AReadOnlyFileFailsTheSaveBeforeAnythingIsWritten) {
    stageTemplates();
    newLesson("Course1", 3);
    for (const char* file : {"scripts/inc_QAndA.js", "page2.html", "imsmanifest.xml"}) {
        SCOPED_TRACE(file);
        const fs::path locked = folder() / file;
        writeBytes(locked, readBytes(locked) + "// added by hand\r\n");
        fs::permissions(locked,
                        fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
        const auto before = folderFiles(folder());

        session().module.modTitle = "Changed";
        session().module.pages[2].content = "<P>Changed</P>";
        session().markChanged();
        try {
            session().saveForScorm(true);
            ADD_FAILURE() << "the save went through";
        } catch (const FileError& e) {
            EXPECT_EQ(e.path(), locked.string());
            EXPECT_EQ(e.reason(), "Permission denied");
        }
        EXPECT_TRUE(session().ModuleChanged);
        EXPECT_EQ(folderFiles(folder()), before);
        EXPECT_EQ(fs::status(locked).permissions(),
                  fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
        fs::permissions(locked, fs::perms::owner_write, std::filesystem::perm_options::add);
    }
}

// The nineteen characters normalisation turns into entities, each in the names of the
// installation, the workspace and the module folder: a picture and an activity stored from
// the editor form come out exactly as they do in plain folders, through load, save, reload and
// Save As.
TEST_F(SaveSafetyTest, FolderNamesWithNormalisedCharactersKeepTheStoredForm) {
    const char* characters[] = {"\u20AC", "\u2020", "\u2014", "\u2122", "\u00A2",
                                "\u00A3", "\u00A5", "\u00A7", "\u00A9", "\u00AE",
                                "\u00B0", "\u00B1", "\u00B5", "\u00B6", "\u00BC",
                                "\u00BD", "\u00BE", "\u00D7", "\u00F7"};
    const auto cycle = [&](const std::string& c) {
        const fs::path inst = root / ("inst " + c);
        fs::create_directories(inst);
        fs::copy(fs::path(LUMORA_DIST_DIR) / "Templates", inst / "Templates",
                 fs::copy_options::recursive);
        Session s(prompt, registry, processes);
        s.defaults = makeDefaultRecords(2024);
        s.ResetModule();
        s.setInstallation(inst.string(), (root / ("ws " + c)).string());
        fs::create_directories(s.WorkspaceFolder);
        createModuleFolder(s, kLesson, "Kurs " + c);

        // As the editor hands content back: absolute paths, the characters as they are.
        const std::string app = s.installFolder() + kSep + "app" + kSep;
        const std::string media = s.module.ModuleFolder + kSep + "media" + kSep;
        s.setPageContent(1, "<P>" + c + "<IMG src=\"" + media + "a.gif\"><IMG src=\"" + app +
                                "QAndAStart.gif\">1<IMG src=\"" + app + "QAndAEnd.gif\"></P>");
        s.setQuestionText(0, "<P><IMG src=\"" + media + "b.gif\"></P>");
        s.saveForScorm(true);
        const fs::path folder = s.module.ModuleFolder;
        const std::string stored =
            readBytes(folder / "page1.html") + readBytes(folder / "scripts" / "inc_QAndA.js");

        EXPECT_TRUE(reopen(s));
        s.markChanged();
        s.saveForScorm(true);
        EXPECT_EQ(readBytes(folder / "page1.html") + readBytes(folder / "scripts" / "inc_QAndA.js"),
                  stored);

        prompt.type("Kopie " + c);
        EXPECT_TRUE(SaveModuleAs(s));
        s.saveForScorm(true);
        const fs::path copy = s.module.ModuleFolder;
        EXPECT_EQ(readBytes(copy / "page1.html") + readBytes(copy / "scripts" / "inc_QAndA.js"),
                  stored);
        return stored;
    };

    std::string plain = cycle("plain");
    // The page's own text holds the character normalised; everything else is the plain form.
    ASSERT_NE(plain.find("<IMG src=\"media/a.gif\">"), std::string::npos) << plain;
    ASSERT_NE(plain.find("writeActivityHTML(1));</SCRIPT>"), std::string::npos) << plain;
    for (const char* c : characters) {
        SCOPED_TRACE(c);
        const std::string entity = normalizeHTML(std::string(c));
        std::string expected = plain;
        for (std::size_t at = expected.find("<P>plain"); at != std::string::npos;
             at = expected.find("<P>plain", at + 1))
            expected.replace(at + 3, 5, entity);
        EXPECT_EQ(cycle(c), expected);
    }
}

// (The package listing skips them whenever they are there: its own test.)
TEST_F(SaveSafetyTest, LeftoversOfAnInterruptedSaveGoAtTheNextSave) {
    stageTemplates();
    newLesson("Course1", 3);
    const fs::path leftovers[] = {folder() / "page0.html.tmp-lumora",
                                  folder() / "scripts" / "inc_QAndA.js.tmp-lumora",
                                  folder() / "media" / "a.gif.tmp-lumora"};
    for (const fs::path& p : leftovers)
        writeBytes(p, "half written");
    session().saveForScorm(true);
    for (const fs::path& p : leftovers)
        EXPECT_FALSE(fs::exists(p)) << p;
}

} // namespace
} // namespace lumora::test
