// A temporary installation (the staged templates, app and help folders) with its own workspace,
// a session answering from a script, and the program's flow over it. GUI tests drive the real
// forms through it and find their controls by objectName.
#pragma once

#include "app/Session.h"
#include "forms/main/MainForm.h"
#include "forms/main/Program.h"
#include "support/ScriptedPrompt.h"

#include <QAction>
#include <QApplication>
#include <QSettings>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QVariant>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>

namespace lumora::testing {

inline constexpr int kWaitMs = 20000;

inline std::string readText(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

inline bool containsText(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

// A 1x1 transparent PNG.
inline QByteArray tinyPng() {
    return QByteArray::fromBase64("iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mNkYPhf"
                                  "DwAChwGA60e6kgAAAABJRU5ErkJggg==");
}

// A top-level form that is on screen, by its objectName.
inline QWidget* visibleForm(const QString& name) {
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w->objectName() == name && w->isVisible())
            return w;
    return nullptr;
}

// Runs a script in a web page or an editor and waits for its result.
template <class Target> QVariant runScript(Target* target, const QString& script) {
    QVariant result;
    bool done = false;
    target->runJavaScript(script, [&](const QVariant& v) {
        result = v;
        done = true;
    });
    EXPECT_TRUE(QTest::qWaitFor([&] { return done; }, kWaitMs)) << script.toStdString();
    return result;
}

// `text` as a script's string literal.
inline QString jsString(const QString& text) {
    return "'" + QString(text).replace("\\", "\\\\").replace("'", "\\'").replace("\n", "\\n") + "'";
}

template <class T> T* control(QObject* form, const QString& name) {
    T* found = form ? form->findChild<T*>(name) : nullptr;
    EXPECT_NE(found, nullptr) << "no control " << name.toStdString();
    return found;
}

class GuiTest : public ::testing::Test {
  protected:
    void SetUp() override {
        QStandardPaths::setTestModeEnabled(true);
        QCoreApplication::setOrganizationName("Lumora");
        QCoreApplication::setApplicationName("LumoraGuiTests");
        // Each test starts without remembered window places or a configured help address.
        QSettings().clear();
        ASSERT_TRUE(root.isValid());
        install = std::filesystem::path(root.path().toStdString()) / "install";
        workspace = install / "MyContent";
        std::filesystem::create_directories(install);
    }

    void TearDown() override {
        program.reset();
        // Forms closed with delete-on-close go away with the pending deletions.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    // Copies parts of the staged installation: "Templates", "app", "Help".
    void stage(std::initializer_list<const char*> parts) {
        const std::filesystem::path dist = LUMORA_DIST_DIR;
        for (const char* part : parts)
            std::filesystem::copy(dist / part, install / part,
                                  std::filesystem::copy_options::recursive);
    }

    void makeWorkspace() { std::filesystem::create_directories(workspace); }

    // A module folder copied from a template, as New would make it.
    void addModule(const std::string& name, const std::string& type) {
        std::filesystem::copy(install / "Templates" / type, workspace / name,
                              std::filesystem::copy_options::recursive);
    }

    // Start-up through the program, as main() runs it.
    bool startProgram() {
        program = std::make_unique<Program>(session);
        return program->start(install.string(), {});
    }

    // A full installation started, the splash passed, the start chooser on screen.
    void startToChooser() {
        stage({"Templates", "app", "Help"});
        makeWorkspace();
        restartToChooser();
    }

    // The installation started (once more), up to its start chooser.
    void restartToChooser() {
        ASSERT_TRUE(startProgram());
        ASSERT_NE(program->splash(), nullptr);
        program->splash()->finish();
        ASSERT_NE(visibleForm("frmOpenChoose"), nullptr);
    }

    // The program started and `name` (of `type`) opened in the main form.
    MainForm* openModule(const std::string& name, const std::string& type) {
        startToChooser();
        addModule(name, type);
        session.ResetModule();
        session.module.moduleType = type;
        session.module.folderName = name;
        EXPECT_TRUE(session.LoadModule());
        program->startChooser()->close();
        program->showMainForm();
        return program->mainForm();
    }

    // The last message shown: its text, title and icon.
    void expectLast(const std::string& text, const std::string& title, Icon icon) {
        ASSERT_NE(prompt.last(), nullptr);
        EXPECT_EQ(prompt.last()->text, text);
        EXPECT_EQ(prompt.last()->title, title);
        EXPECT_EQ(prompt.last()->icon, icon);
    }

    QAction* menu(const char* name) { return control<QAction>(program->mainForm(), name); }

    std::filesystem::path moduleFile(const std::string& module, const std::string& file) {
        return workspace / module / file;
    }

    QTemporaryDir root;
    std::filesystem::path install;
    std::filesystem::path workspace;
    ScriptedPrompt prompt;
    NullRegistry registry;
    FakeProcessStarter processes;
    Session session{prompt, registry, processes};
    std::unique_ptr<Program> program;
};

} // namespace lumora::testing
