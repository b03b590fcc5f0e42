// The forms as a keyboard and screen reader user meets them. Each form of the table is walked
// by Tab as a person walks it: every enabled control on screen is reached, each with a name a
// screen reader announces (asked through Qt's accessibility interface), in reading order where
// it matters, and Shift+Tab walks back the same way; no two captions on screen share a
// mnemonic, and a label's mnemonic moves the focus to its field. The main form's commands carry
// the usual key sequences, and its pictures follow a dark or high-contrast theme.
#include "GuiFixture.h"

#include "app/Services.h"
#include "content/SpellCheckRun.h"
#include "forms/dialogs/AboutForm.h"
#include "forms/dialogs/ExportPackageDialog.h"
#include "forms/dialogs/FindForm.h"
#include "forms/dialogs/FontForm.h"
#include "forms/dialogs/SettingsForm.h"
#include "forms/dialogs/SpellCheckDialog.h"
#include "forms/dialogs/WebViewerForm.h"
#include "forms/editor/HtmlEditor.h"
#include "forms/web/ModuleWebView.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QGroupBox>
#include <QLabel>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTabBar>
#include <QTabWidget>
#include <QToolButton>

#include <algorithm>
#include <functional>
#include <map>

namespace lumora::testing {
namespace {

// Tab steps after which a walk that has not come round is called endless.
constexpr int kMaxSteps = 120;
// How long one Tab may take to move the focus (a web view passes it on asynchronously).
constexpr int kStepMs = 5000;

// A widget by its objectName; an unnamed part of a control by the control's name and its kind.
QString nameOf(const QWidget* w) {
    if (!w->objectName().isEmpty())
        return w->objectName();
    const QString kind = w->metaObject()->className();
    const QWidget* parent = w->parentWidget();
    return parent && !parent->objectName().isEmpty() ? parent->objectName() + "." + kind : kind;
}

// The widget that takes the focus for `w`, through its focus proxies.
QWidget* focusTaker(QWidget* w) {
    while (w->focusProxy())
        w = w->focusProxy();
    return w;
}

bool isTabStop(QWidget* w) {
    return w->isVisible() && w->isEnabled() && !w->focusProxy() &&
           (w->focusPolicy() & Qt::TabFocus);
}

// The control a person tabs to: the focus widget, or the widget that hands its focus to it
// and holds no other stop (an editor to its web view's widget, a tab control to its tabs).
QWidget* controlOf(QWidget* focus) {
    QWidget* control = focus;
    for (QWidget* p = focus->parentWidget(); p && !p->isWindow() && p->focusProxy() == control;
         p = p->parentWidget()) {
        const auto within = p->findChildren<QWidget*>();
        const auto stops = std::count_if(within.begin(), within.end(), isTabStop);
        if (stops > 1 && !qobject_cast<QTabWidget*>(p))
            break;
        control = p;
    }
    return control;
}

// What a screen reader announces for the focus: the name of the focused object, or of the
// control it belongs to.
QString announcedName(QWidget* focus) {
    for (QWidget* w : {focus, controlOf(focus)})
        if (QAccessibleInterface* iface = QAccessible::queryAccessibleInterface(w))
            if (const QString name = iface->text(QAccessible::Name).trimmed(); !name.isEmpty())
                return name;
    return {};
}

// An exclusive radio button that is not checked is reached with the arrow keys from its
// checked neighbour, not by Tab.
bool reachedByArrows(QWidget* w) {
    auto* radio = qobject_cast<QRadioButton*>(w);
    return radio && radio->autoExclusive() && !radio->isChecked();
}

// The widgets of `form` that Tab must reach: on screen, enabled, taking the focus by Tab.
QList<QWidget*> tabStops(QWidget* form) {
    QList<QWidget*> stops;
    for (QWidget* w : form->findChildren<QWidget*>())
        if (w->window() == form && isTabStop(w) && !reachedByArrows(w))
            stops << w;
    return stops;
}

struct Walk {
    QStringList order;    // the controls in the order Tab reached them
    QStringList problems; // unnamed controls, controls never reached, a walk that stuck
};

// Starts at `first` and presses Tab (Shift+Tab) until the focus comes back to where it started.
Walk walkByTab(QWidget* form, QWidget* first, bool forward = true) {
    Walk walk;
    form->activateWindow();
    if (!QTest::qWaitForWindowActive(form)) {
        walk.problems << "the form never became active";
        return walk;
    }
    first->setFocus(Qt::TabFocusReason);
    if (!QTest::qWaitFor([&] { return QApplication::focusWidget() != nullptr; }, kStepMs)) {
        walk.problems << "nothing has the focus";
        return walk;
    }
    QWidget* start = QApplication::focusWidget();
    QList<QWidget*> reached;
    for (QWidget* focus = start; walk.order.size() < kMaxSteps;) {
        reached << focus;
        const QString name = nameOf(controlOf(focus));
        walk.order << name;
        if (announcedName(focus).isEmpty())
            walk.problems << name + ": no accessible name";
        // A web viewer is one control: Tab walks the links of its document.
        if (tabStops(form).size() == 1)
            break;
        QTest::keyClick(focus, Qt::Key_Tab, forward ? Qt::NoModifier : Qt::ShiftModifier);
        if (!QTest::qWaitFor([&] { return QApplication::focusWidget() != focus; }, kStepMs)) {
            walk.problems << "Tab stays in " + name;
            break;
        }
        focus = QApplication::focusWidget();
        if (!focus || focus->window() != form) {
            walk.problems << "Tab left the form after " + name;
            break;
        }
        if (reached.contains(focus)) {
            if (focus != start)
                walk.problems << "Tab goes round without coming back to " + nameOf(start);
            break;
        }
    }
    for (QWidget* w : tabStops(form))
        if (!reached.contains(w))
            walk.problems << nameOf(controlOf(w)) + " (" + nameOf(w) + "): never reached by Tab";
    return walk;
}

// The mnemonic letter of a caption, or none: "&" marks it, "&&" is an ampersand.
QChar mnemonicOf(const QString& caption) {
    static const QRegularExpression marked("(?<!&)(?:&&)*&([^&])");
    const auto match = marked.match(caption);
    return match.hasMatch() ? match.captured(1).at(0).toLower() : QChar();
}

// No two captions on screen share a mnemonic, and a label's mnemonic focuses its field.
QStringList mnemonicProblems(QWidget* form) {
    std::map<QChar, QStringList> owners;
    QList<QLabel*> labels;
    const auto add = [&](const QString& caption, const QString& owner) {
        if (const QChar letter = mnemonicOf(caption); !letter.isNull())
            owners[letter] << owner;
    };
    for (QWidget* w : form->findChildren<QWidget*>()) {
        if (w->window() != form || !w->isVisible())
            continue;
        if (auto* b = qobject_cast<QAbstractButton*>(w))
            add(b->text(), nameOf(b));
        else if (auto* box = qobject_cast<QGroupBox*>(w))
            add(box->title(), nameOf(box));
        else if (auto* bar = qobject_cast<QTabBar*>(w))
            for (int i = 0; i < bar->count(); ++i)
                add(bar->isTabVisible(i) ? bar->tabText(i) : QString(), bar->tabText(i));
        else if (auto* menus = qobject_cast<QMenuBar*>(w))
            for (QAction* menu : menus->actions())
                add(menu->text(), menu->text());
        else if (auto* label = qobject_cast<QLabel*>(w);
                 label && !mnemonicOf(label->text()).isNull()) {
            add(label->text(), nameOf(label));
            labels << label;
        }
    }
    QStringList problems;
    for (const auto& [letter, captions] : owners)
        if (captions.size() > 1)
            problems << QString("Alt+%1 is shared by %2").arg(letter, captions.join(", "));
    for (QLabel* label : labels) {
        QWidget* buddy = label->buddy();
        if (!buddy) {
            problems << nameOf(label) + ": a mnemonic without a field";
            continue;
        }
        QTest::keyClick(form, mnemonicOf(label->text()).toLatin1(), Qt::AltModifier);
        if (QApplication::focusWidget() != focusTaker(buddy))
            problems << nameOf(label) + ": Alt does not move the focus to " + nameOf(buddy);
    }
    return problems;
}

// A spelling engine that knows one wrong word, for the spell check dialog.
class OneWordEngine : public SpellingEngine {
  public:
    void setOption(std::uint32_t, int) override {}
    std::string mainLexPath() override { return {}; }
    void setMainLexPath(const std::string&) override {}
    void setMainLexFiles(const std::string&) override {}
    void setHelpFile(const std::string&) override {}
    bool available() const override { return true; }
    bool check(const std::string& word) override { return word != "Teh"; }
    std::vector<std::string> suggest(const std::string&) override { return {"The", "Ten"}; }
    void addToUserDictionary(const std::string&) override {}
};

// The forms of the table open through this fixture.
class KeyboardTest : public GuiTest {
  public:
    using GuiTest::addModule;
    using GuiTest::program;
    using GuiTest::session;
    using GuiTest::startToChooser;

    // The main form of a module of `type`, on the tab `tab`, waiting for its editors.
    QWidget* mainFormOn(const std::string& type, int tab) {
        MainForm* form = openModule("Course", type);
        if (!form || !QTest::qWaitForWindowExposed(form))
            return nullptr;
        control<QTabWidget>(form, "tabMain")->setCurrentIndex(tab);
        for (auto* editor : form->findChildren<HtmlEditor*>())
            if (editor->isVisible())
                if (!QTest::qWaitFor([&] { return editor->isLoaded(); }, kWaitMs))
                    return nullptr;
        return form;
    }

    // A dialog of the main form, shown without a nested event loop.
    template <class Dialog> QWidget* shown(Dialog* dialog) {
        dialog->setAttribute(Qt::WA_DeleteOnClose);
        dialog->show();
        return QTest::qWaitForWindowExposed(dialog) ? dialog : nullptr;
    }

    // A viewer showing its document, once the document has loaded.
    QWidget* loaded(WebViewerForm* viewer, const std::function<void()>& show) {
        QSignalSpy done(viewer, &WebViewerForm::loadFinished);
        viewer->show();
        show();
        if (!done.wait(kWaitMs) || !QTest::qWaitForWindowExposed(viewer))
            return nullptr;
        return viewer;
    }

    OneWordEngine engine;
    SpellCheckRun run{"<P>Teh end.</P>", true,
                      [this](const std::string& w) { return engine.check(w); }};
};

struct FormCase {
    const char* name;
    std::function<QWidget*(KeyboardTest&)> open;
    // Controls that Tab must reach in this order, the walk starting at the first.
    std::vector<const char*> readingOrder;
};

void PrintTo(const FormCase& c, std::ostream* os) {
    *os << c.name;
}

MainForm* mainOf(QWidget* w) {
    return qobject_cast<MainForm*>(w);
}

const FormCase kForms[] = {
    {"StartChooser",
     [](KeyboardTest& t) {
         t.startToChooser();
         return visibleForm("frmOpenChoose");
     },
     {"imgEdit", "imgNewLesson", "imgNewEval", "imgNewSurvey"}},
    {"FolderChooser",
     [](KeyboardTest& t) {
         t.startToChooser();
         t.addModule("Course", "Lesson");
         t.program->showFolderChooser();
         return visibleForm("frmChooseFolder");
     },
     {"lstDirectories", "OKButton", "CancelButton"}},
    {"LessonPages",
     [](KeyboardTest& t) { return t.mainFormOn("Lesson", 0); },
     {"txtModuleTitle", "txtCopyright", "btnPreview", "tabMain", "lstPages", "txtPageTitle",
      "btnBold", "btnUnformatLesson", "btnInsertImage", "btnLink", "tabLessonPage",
      "dhtmlLessonEdit"}},
    {"LessonPageSource",
     [](KeyboardTest& t) {
         QWidget* form = t.mainFormOn("Lesson", 0);
         control<QTabWidget>(form, "tabLessonPage")->setCurrentIndex(1);
         return form;
     },
     {"txtModuleTitle", "tabLessonPage", "txtLessonEdit"}},
    {"LessonQAndA",
     [](KeyboardTest& t) { return t.mainFormOn("Lesson", 1); },
     {"txtModuleTitle", "tabMain", "lstQAndA", "btnBoldQ", "btnInsertImageQ", "btnSubmit",
      "dhtmlQuestionEdit", "lstQuestionType", "chkShuffleOptions", "lstOptions", "txtRationale"}},
    {"LessonGlossary",
     [](KeyboardTest& t) { return t.mainFormOn("Lesson", 2); },
     {"txtModuleTitle", "tabMain", "lstTerms", "txtTerm", "txtDefinition"}},
    {"EvaluationQuestions",
     [](KeyboardTest& t) { return t.mainFormOn("Evaluation", 1); },
     {"txtModuleTitle", "lstQAndA", "btnSubmit", "dhtmlQuestionEdit", "lstQuestionType",
      "lstOptions", "txtRationale", "txtNumberToAsk", "chkShuffleQuestions"}},
    {"SurveyQuestions",
     [](KeyboardTest& t) { return t.mainFormOn("Survey", 1); },
     {"txtModuleTitle", "lstQAndA", "btnSubmit", "dhtmlQuestionEdit", "lstQuestionType"}},
    {"Find",
     [](KeyboardTest& t) {
         QWidget* form = t.mainFormOn("Lesson", 0);
         return t.shown(new FindForm(
             t.session.prompt, [](QWidget*) {}, form));
     },
     {"txtFind", "txtReplace", "chkCase", "chkWholeWords", "btnFind", "btnReplace", "btnCancel"}},
    {"Font",
     [](KeyboardTest& t) {
         QWidget* form = t.mainFormOn("Lesson", 0);
         return t.shown(new FontForm(mainOf(form)->editing(),
                                     form->findChild<HtmlEditor*>("dhtmlLessonEdit"),
                                     t.session.prompt, {}, form));
     },
     {"lstFonts", "OKButton", "CancelButton"}},
    {"About",
     [](KeyboardTest& t) {
         QWidget* form = t.mainFormOn("Lesson", 0);
         return t.shown(new AboutForm(t.session, form));
     },
     {"cmdOK", "cmdSysInfo"}},
    {"Settings",
     [](KeyboardTest& t) { return t.shown(new SettingsForm(t.mainFormOn("Lesson", 0))); },
     {"txtOnlineHelp"}},
    {"ExportPackage",
     [](KeyboardTest& t) {
         QWidget* form = t.mainFormOn("Evaluation", 0);
         auto* dialog = new ExportPackageDialog(t.session, form);
         dialog->findChild<QAbstractButton*>("chkPassMark")->setChecked(true);
         return t.shown(dialog);
     },
     {"optScorm12", "chkPassMark", "spnPassMark", "txtPackageFile", "btnBrowse", "btnExport",
      "btnCancel"}},
    {"SpellCheck",
     [](KeyboardTest& t) -> QWidget* {
         if (!t.run.next())
             return nullptr;
         return t.shown(new SpellCheckDialog(t.run, t.engine));
     },
     {"txtContext", "txtChangeTo", "lstSuggestions", "cmdChange", "cmdChangeAll", "cmdIgnore",
      "cmdIgnoreAll", "cmdAdd", "cmdCancel"}},
    {"Preview",
     [](KeyboardTest& t) -> QWidget* {
         auto* form = mainOf(t.mainFormOn("Lesson", 0));
         form->btnPreview_Click();
         return form->previewForm() && t.loaded(form->previewForm(), [] {}) ? form->previewForm()
                                                                            : nullptr;
     },
     {"wwwPreview"}},
    {"Help",
     [](KeyboardTest& t) -> QWidget* {
         auto* form = mainOf(t.mainFormOn("Lesson", 0));
         auto* help = new HelpForm(t.session, form);
         help->setAttribute(Qt::WA_DeleteOnClose);
         return t.loaded(help, [help] { help->refreshBrowser("offline"); });
     },
     {"wwwBrowser"}},
};

class EveryForm : public KeyboardTest, public ::testing::WithParamInterface<FormCase> {};

TEST_P(EveryForm, TabReachesEveryControlInReadingOrderEachWithAName) {
    const FormCase& c = GetParam();
    QWidget* form = c.open(*this);
    ASSERT_NE(form, nullptr);
    auto* first = form->findChild<QWidget*>(c.readingOrder.front());
    ASSERT_NE(first, nullptr);
    const Walk walk = walkByTab(form, first);
    QStringList problems = walk.problems + mnemonicProblems(form);
    // The reading order is a sequence within the walk; a control's name covers its parts.
    int at = 0;
    for (const QString name : c.readingOrder) {
        while (at < walk.order.size() && walk.order[at] != name &&
               !walk.order[at].startsWith(name + "."))
            ++at;
        if (at == walk.order.size()) {
            problems << QString("%1 out of reading order").arg(name);
            break;
        }
    }
    // Shift+Tab retraces the walk.
    if (problems.isEmpty()) {
        QStringList back = walk.order;
        std::reverse(back.begin() + 1, back.end());
        const Walk backward = walkByTab(form, first, false);
        if (backward.order != back)
            problems << "Shift+Tab walks " + backward.order.join(", ");
    }
    EXPECT_TRUE(problems.isEmpty()) << "walk: " << walk.order.join(", ").toStdString() << "\n"
                                    << problems.join('\n').toStdString();
    // A web view's document is announced by its title.
    for (auto* view : form->findChildren<ModuleWebView*>())
        EXPECT_FALSE(view->title().isEmpty() || view->title() == view->url().toString())
            << nameOf(view).toStdString() << " shows a document without a title";
}

INSTANTIATE_TEST_SUITE_P(Forms, EveryForm, ::testing::ValuesIn(kForms),
                         [](const auto& param) { return std::string(param.param.name); });

// The commands people reach for without the menu, and no key sequence that two commands share.
using MainFormKeys = GuiTest;

TEST_F(MainFormKeys, CommandsCarryTheStandardKeySequencesAndNoneIsShared) {
    MainForm* form = openModule("Course", "Lesson");
    ASSERT_NE(form, nullptr);
    const struct {
        const char* command;
        QKeySequence keys;
    } kKeys[] = {
        {"mnuSave", QKeySequence::Save},
        {"mnuOpen", QKeySequence::Open},
        // The desktop's Quit; Qt's offscreen platform knows none, Linux desktops say Ctrl+Q.
        {"mnuExit", QKeySequence(Qt::CTRL | Qt::Key_Q)},
        {"mnuHelpContents", QKeySequence::HelpContents},
        {"mnuHelpContents", Qt::Key_F1},
        {"btnPreview", Qt::Key_F5},
    };
    for (const auto& k : kKeys) {
        QList<QKeySequence> carried;
        if (auto* action = form->findChild<QAction*>(k.command))
            carried = action->shortcuts();
        else if (auto* button = form->findChild<QAbstractButton*>(k.command))
            carried = {button->shortcut()};
        EXPECT_TRUE(!k.keys.isEmpty() && carried.contains(k.keys))
            << k.command << " lacks " << k.keys.toString().toStdString();
    }
    std::map<QString, QStringList> owners;
    for (QAction* action : form->findChildren<QAction*>())
        for (const QKeySequence& keys : action->shortcuts())
            owners[keys.toString()] << nameOf(form) + "." + action->objectName();
    for (QAbstractButton* button : form->findChildren<QAbstractButton*>())
        if (!button->shortcut().isEmpty() && mnemonicOf(button->text()).isNull())
            owners[button->shortcut().toString()] << button->objectName();
    for (const auto& [keys, commands] : owners)
        EXPECT_EQ(commands.size(), 1)
            << keys.toStdString() << ": " << commands.join(", ").toStdString();

    // The keys act: F5 previews the saved module, Ctrl+S saves it for SCORM/AICC.
    session.module.useSCORM = "false";
    session.markChanged();
    ASSERT_TRUE(QTest::qWaitForWindowActive(form));
    QTest::keyClick(form, Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(session.module.useSCORM, "true");
    EXPECT_FALSE(session.ModuleChanged);
    QTest::keyClick(form, Qt::Key_F5);
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return form->previewForm() && form->previewForm()->isVisible(); }, kWaitMs));
}

// Under a dark or high-contrast theme the formatting rows' pictures are drawn in the theme's
// text colour, not in the dark grey they were made in.
struct Theme {
    const char* name;
    QColor button, text;
};

void PrintTo(const Theme& t, std::ostream* os) {
    *os << t.name;
}

class ThemedIcons : public GuiTest, public ::testing::WithParamInterface<Theme> {
  protected:
    void TearDown() override {
        GuiTest::TearDown();
        QApplication::setPalette(original);
    }
    const QPalette original = QApplication::palette();
};

TEST_P(ThemedIcons, FormattingPicturesTakeTheThemesTextColour) {
    QPalette palette = original;
    palette.setColor(QPalette::Button, GetParam().button);
    palette.setColor(QPalette::ButtonText, GetParam().text);
    QApplication::setPalette(palette);
    MainForm* form = openModule("Course", "Lesson");
    ASSERT_NE(form, nullptr);
    for (const char* name : {"btnIndentLesson", "btnLeftAlign", "btnFontQ"}) {
        const QImage picture = control<QToolButton>(form, name)->icon().pixmap(32).toImage();
        int drawn = 0, otherColour = 0;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                if (const QColor c = picture.pixelColor(x, y); c.alpha() == 255)
                    (c.rgb() == GetParam().text.rgb() ? drawn : otherColour)++;
        EXPECT_TRUE(drawn > 0 && otherColour == 0)
            << name << ": " << drawn << " pixels in the text colour, " << otherColour
            << " in another";
    }
}

INSTANTIATE_TEST_SUITE_P(Themes, ThemedIcons,
                         ::testing::Values(Theme{"Dark", QColor("#202020"), QColor("#f0f0f0")},
                                           Theme{"HighContrast", Qt::black, QColor("#ffff00")}),
                         [](const auto& param) { return std::string(param.param.name); });

} // namespace
} // namespace lumora::testing
