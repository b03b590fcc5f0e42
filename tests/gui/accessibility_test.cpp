// The forms as keyboard and screen reader users meet them: each form of the table walked by Tab
// and Shift+Tab (every enabled control reached, in reading order, with the name a screen reader
// announces), mnemonics, the main form's keys, and its pictures under a dark theme.
#include "GuiFixture.h"
#include "unit/app/AppFixture.h"

#include "content/SpellCheckRun.h"
#include "forms/dialogs/AboutForm.h"
#include "forms/dialogs/ExportPackageDialog.h"
#include "forms/dialogs/SettingsForm.h"
#include "forms/dialogs/SpellCheckDialog.h"
#include "forms/editor/HtmlEditor.h"
#include "forms/main/OptionForm.h"
#include "forms/web/ModuleWebView.h"

#include <QAccessible>
#include <QAction>
#include <QLabel>
#include <QListWidget>
#include <QMenuBar>
#include <QRadioButton>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTabWidget>
#include <QToolButton>

#include <algorithm>
#include <map>

namespace lumora::testing {
namespace {

// A widget by its objectName; an unnamed part of a control by the control's name and its kind.
QString nameOf(const QWidget* w) {
    const QWidget* parent = w->isWindow() ? nullptr : w->parentWidget();
    if (!w->objectName().isEmpty() || !parent)
        return w->objectName().isEmpty() ? w->metaObject()->className() : w->objectName();
    return parent->objectName() + "." + w->metaObject()->className();
}

// A widget Tab must stop at; an exclusive radio button not checked is reached by arrow keys.
bool isTabStop(QWidget* w) {
    auto* radio = qobject_cast<QRadioButton*>(w);
    return w->isVisible() && w->isEnabled() && !w->focusProxy() &&
           (w->focusPolicy() & Qt::TabFocus) &&
           !(radio && radio->autoExclusive() && !radio->isChecked());
}

// The control a person tabs to: the focus widget, or the widget that hands its focus to it and
// holds no other stop (an editor to its web view's widget, a tab control to its tabs).
QWidget* controlOf(QWidget* focus) {
    QWidget* control = focus;
    for (QWidget* p = focus->parentWidget(); p && !p->isWindow() && p->focusProxy() == control;
         p = p->parentWidget()) {
        const auto inside = p->findChildren<QWidget*>();
        if (!qobject_cast<QTabWidget*>(p) &&
            std::count_if(inside.begin(), inside.end(), isTabStop) > 1)
            break;
        control = p;
    }
    return control;
}

// What a screen reader announces: the name of the focused object, or of its control.
QString announcedName(QWidget* focus) {
    for (QWidget* w : {focus, controlOf(focus)})
        if (QAccessibleInterface* iface = QAccessible::queryAccessibleInterface(w))
            if (!iface->text(QAccessible::Name).trimmed().isEmpty())
                return iface->text(QAccessible::Name);
    return {};
}

// From `first`, Tab (Shift+Tab) until the focus comes back: the controls in the order reached.
// Unnamed controls, controls never reached and a walk that sticks go to `problems`.
QStringList walkByTab(QWidget* form, QWidget* first, QStringList& problems, bool forward = true) {
    QList<QWidget*> stops, reached;
    for (QWidget* w : form->findChildren<QWidget*>())
        if (w->window() == form && isTabStop(w))
            stops << w;
    form->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(form));
    first->setFocus(Qt::TabFocusReason);
    QStringList order;
    for (QWidget* focus = QApplication::focusWidget(); focus && !reached.contains(focus);) {
        reached << focus;
        order << nameOf(controlOf(focus));
        if (announcedName(focus).isEmpty())
            problems << order.back() + ": no accessible name";
        if (stops.size() == 1) // a web viewer: Tab walks the links of its document
            break;
        QTest::keyClick(focus, Qt::Key_Tab, forward ? Qt::NoModifier : Qt::ShiftModifier);
        if (!QTest::qWaitFor([&] { return QApplication::focusWidget() != focus; }, 5000)) {
            problems << "Tab stays in " + order.back();
            break;
        }
        focus = QApplication::focusWidget();
        if (reached.contains(focus) && focus != reached.front())
            problems << "Tab goes round without coming back to " + order.front();
    }
    for (QWidget* w : stops)
        if (!reached.contains(w))
            problems << nameOf(controlOf(w)) + " (" + nameOf(w) + "): never reached by Tab";
    return order;
}

// The mnemonic letter of a caption, or none: "&" marks it, "&&" is an ampersand.
QChar mnemonicOf(const QString& caption) {
    static const QRegularExpression marked("(?<!&)(?:&&)*&([^&])");
    const auto match = marked.match(caption);
    return match.hasMatch() ? match.captured(1).at(0).toLower() : QChar();
}

// No two captions on screen share a mnemonic; a label's moves the focus to its field.
void checkMnemonics(QWidget* form, QStringList& problems) {
    std::map<QChar, QStringList> owners;
    for (QWidget* w : form->findChildren<QWidget*>()) {
        const auto* b = qobject_cast<QAbstractButton*>(w);
        const auto* label = qobject_cast<QLabel*>(w);
        const QChar letter = mnemonicOf(b ? b->text() : label ? label->text() : QString());
        if (w->window() == form && w->isVisible() && !letter.isNull())
            owners[letter] << nameOf(w);
        if (auto* menus = qobject_cast<QMenuBar*>(w))
            for (QAction* menu : menus->actions())
                if (const QChar m = mnemonicOf(menu->text()); !m.isNull())
                    owners[m] << menu->text();
        if (!label || letter.isNull() || !w->isVisible())
            continue;
        QTest::keyClick(form, letter.toLatin1(), Qt::AltModifier);
        QWidget* field = label->buddy();
        while (field && field->focusProxy())
            field = field->focusProxy();
        if (!field || QApplication::focusWidget() != field)
            problems << nameOf(label) + ": Alt+" + letter + " does not reach its field";
    }
    for (const auto& [letter, captions] : owners)
        if (captions.size() > 1)
            problems << QString("Alt+%1 is shared by %2").arg(letter, captions.join(", "));
}

struct FormCase {
    const char* name; // a main form's tab, or the form opened over it
    const char* module;
    int tab;
    const char* readingOrder;
    void (MainForm::*opens)() = nullptr; // the command that opens the form over the main form
};

void PrintTo(const FormCase& c, std::ostream* os) {
    *os << c.name;
}

class EveryForm : public GuiTest, public ::testing::WithParamInterface<FormCase> {
  protected:
    // The main form on the case's tab, its editors loaded.
    MainForm* mainForm() {
        MainForm* form = openModule("Course", GetParam().module);
        control<QTabWidget>(form, "tabMain")->setCurrentIndex(GetParam().tab);
        for (auto* editor : form->findChildren<HtmlEditor*>())
            if (editor->isVisible() &&
                !QTest::qWaitFor([&] { return editor->isLoaded(); }, kWaitMs))
                return nullptr;
        return form;
    }

    // A form on screen, a viewer with its document loaded.
    QWidget* shown(QWidget* form) {
        form->setAttribute(Qt::WA_DeleteOnClose);
        form->show();
        auto* view = form->findChild<ModuleWebView*>();
        if (view && !QTest::qWaitFor([&] { return view->isLoadComplete(); }, kWaitMs))
            return nullptr;
        return QTest::qWaitForWindowExposed(form) ? form : nullptr;
    }

    QWidget* open() {
        const std::string form = GetParam().name;
        if (form == "StartChooser" || form == "FolderChooser") {
            startToChooser();
            addModule("Course", "Lesson");
            if (form == "FolderChooser")
                program->showFolderChooser();
            return visibleForm(form == "StartChooser" ? "frmOpenChoose" : "frmChooseFolder");
        }
        if (form == "SpellCheck")
            return run.next() ? shown(new SpellCheckDialog(run, engine)) : nullptr;
        MainForm* main = mainForm();
        if (form == "LessonPageSource")
            control<QTabWidget>(main, "tabLessonPage")->setCurrentIndex(1);
        if (form == "OptionEditor") {
            control<QListWidget>(main, "lstQAndA")->setCurrentRow(0);
            control<QListWidget>(main, "lstOptions")->setCurrentRow(0);
        }
        if (GetParam().opens)
            (main->*GetParam().opens)();
        if (form == "About")
            return shown(new AboutForm(session, main));
        if (form == "Settings")
            return shown(new SettingsForm(main));
        if (form == "ExportPackage") {
            auto* dialog = new ExportPackageDialog(session, main);
            control<QAbstractButton>(dialog, "chkPassMark")->setChecked(true);
            return shown(dialog);
        }
        for (QWidget* opened : std::initializer_list<QWidget*>{
                 main->findForm(), main->fontForm(), main->previewForm(), main->helpForm(),
                 main->optionForm(), main->termChooser(), main->qAndAChooser(),
                 main->pageLinkForm(), main->colorsForm()})
            if (opened)
                return shown(opened);
        return main;
    }

    test::RecordingSpellingEngine engine;
    SpellCheckRun run{"<P>Teh end.</P>", true, [](const std::string& w) { return w != "Teh"; }};
};

// Each row: the form, the module and tab of the main form it opens over, and controls that Tab
// reaches in this order (the walk starts at the first).
const FormCase kForms[] = {
    {"StartChooser", "", 0, "imgEdit imgNewLesson imgNewEval imgNewSurvey"},
    {"FolderChooser", "", 0, "lstDirectories OKButton CancelButton"},
    {"LessonPages", "Lesson", 0,
     "txtModuleTitle txtCopyright btnPreview tabMain lstPages btnAddPage btnDownPage "
     "txtPageTitle btnBold btnUnformatLesson btnInsertImage btnLink tabLessonPage dhtmlLessonEdit"},
    {"LessonPageSource", "Lesson", 0, "txtModuleTitle tabLessonPage txtLessonEdit"},
    {"LessonQAndA", "Lesson", 1,
     "txtModuleTitle tabMain lstQAndA btnAddQuestion btnBoldQ btnInsertImageQ btnSubmit "
     "dhtmlQuestionEdit lstQuestionType chkShuffleOptions lstOptions txtRationale"},
    {"LessonGlossary", "Lesson", 2,
     "txtModuleTitle tabMain lstTerms btnAddTerm btnRemoveTerm txtTerm txtDefinition"},
    {"EvaluationQuestions", "Evaluation", 1,
     "txtModuleTitle lstQAndA btnAddQuestion btnDownQuestion btnSubmit dhtmlQuestionEdit "
     "lstQuestionType lstOptions btnAddOption btnEditOption txtRationale txtNumberToAsk "
     "chkShuffleQuestions"},
    {"SurveyQuestions", "Survey", 1,
     "txtModuleTitle lstQAndA btnSubmit dhtmlQuestionEdit lstQuestionType"},
    {"Find", "Lesson", 0, "txtFind txtReplace chkCase chkWholeWords btnFind btnReplace btnCancel",
     &MainForm::mnuFind_Click},
    {"Font", "Lesson", 0, "lstFonts OKButton CancelButton", &MainForm::btnFont_Click},
    {"About", "Lesson", 0, "cmdOK cmdSysInfo"},
    {"Settings", "Lesson", 0, "txtOnlineHelp"},
    {"ExportPackage", "Evaluation", 0,
     "optScorm12 chkPassMark spnPassMark txtPackageFile btnBrowse btnExport btnCancel"},
    {"SpellCheck", "", 0,
     "txtContext txtChangeTo lstSuggestions cmdChange cmdChangeAll cmdIgnore cmdIgnoreAll "
     "cmdAdd cmdCancel"},
    {"OptionEditor", "Evaluation", 1,
     "txtDisplay chkCorrect txtIncorrectRationale btnNext btnClose",
     &MainForm::btnEditOption_Click},
    {"TermChooser", "Lesson", 0, "lstTerms btnCreateTerm btnEditTerm btnInsertTerm CancelButton",
     &MainForm::btnInsertTerm_Click},
    {"QAndAChooser", "Lesson", 0,
     "lstQAndA btnCreateQAndA btnEditQAndA btnInsertQAndA CancelButton",
     &MainForm::btnInsertQAndA_Click},
    {"PageLink", "Lesson", 0, "lstPages btnInsertLink CancelButton", &MainForm::Command1_Click},
    {"Colors", "Lesson", 0,
     "lblTitleBackground lblTitleColor lblPageNumberBackground lblPageNumberColor "
     "lblPageNameBackground lblPageNameColor lblContentBackground lblALink lblAVisited "
     "lblCopyRightColor btnDefaultColors btnSave CancelButton",
     &MainForm::mnuColors_Click},
    {"Preview", "Lesson", 0, "wwwPreview", &MainForm::btnPreview_Click},
    {"Help", "Lesson", 0, "wwwBrowser", &MainForm::mnuHelpContents_Click},
};

TEST_P(EveryForm, TabReachesEveryControlInReadingOrderEachWithAName) {
    QWidget* form = open();
    ASSERT_NE(form, nullptr);
    const QStringList order = QString(GetParam().readingOrder).split(' ');
    auto* first = form->findChild<QWidget*>(order.front());
    ASSERT_NE(first, nullptr);
    QStringList problems;
    const QStringList walk = walkByTab(form, first, problems);
    checkMnemonics(form, problems);
    // The reading order is a sequence within the walk; a control's name covers its parts.
    int at = 0;
    for (const QString& name : order) {
        while (at < walk.size() && walk[at] != name && !walk[at].startsWith(name + "."))
            ++at;
        if (at == walk.size()) {
            problems << name + " out of reading order";
            break;
        }
    }
    if (problems.isEmpty()) {
        QStringList back = walk;
        std::reverse(back.begin() + 1, back.end());
        if (const QStringList backward = walkByTab(form, first, problems, false); backward != back)
            problems << "Shift+Tab walks " + backward.join(", ");
    }
    EXPECT_TRUE(problems.isEmpty()) << "walk: " << walk.join(", ").toStdString() << "\n"
                                    << problems.join('\n').toStdString();
    // A web view's document is announced by its title (the view shows the address without one).
    for (auto* view : form->findChildren<ModuleWebView*>())
        EXPECT_NE(view->title(), view->url().toString()) << nameOf(view).toStdString();
}

INSTANTIATE_TEST_SUITE_P(Forms, EveryForm, ::testing::ValuesIn(kForms),
                         [](const auto& param) { return std::string(param.param.name); });

using MainFormAccess = GuiTest;

TEST_F(MainFormAccess, CommandsCarryTheStandardKeysNoneSharedAndTheKeysAct) {
    MainForm* form = openModule("Course", "Lesson");
    ASSERT_NE(form, nullptr);
    std::map<QString, QStringList> owners; // key sequence -> commands
    for (QAction* action : form->findChildren<QAction*>())
        for (const QKeySequence& keys : action->shortcuts())
            owners[keys.toString()] << action->objectName();
    for (QAbstractButton* button : form->findChildren<QAbstractButton*>())
        if (!button->shortcut().isEmpty() && mnemonicOf(button->text()).isNull())
            owners[button->shortcut().toString()] << button->objectName();
    // Quit is the desktop's: Linux desktops say Ctrl+Q, Qt's offscreen platform says nothing.
    for (const QString& pair :
         QString("Ctrl+S=mnuSave Ctrl+O=mnuOpen Ctrl+Q=mnuExit F1=mnuHelpContents F5=btnPreview")
             .split(' '))
        EXPECT_EQ(owners[pair.section('=', 0, 0)].join(", ").toStdString(),
                  pair.section('=', 1).toStdString());
    for (const auto& [keys, commands] : owners)
        EXPECT_EQ(commands.size(), 1)
            << keys.toStdString() << ": " << commands.join(", ").toStdString();

    // A button's key presses it once the form is active: F5 previews.
    ASSERT_TRUE(QTest::qWaitForWindowActive(form));
    QTest::keyClick(form, Qt::Key_F5);
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return form->previewForm() && form->previewForm()->isVisible(); }, kWaitMs));
}

// Under a dark theme the formatting pictures are drawn in the theme's text colour.
TEST_F(MainFormAccess, FormattingPicturesTakeADarkThemesTextColour) {
    const QPalette original = QApplication::palette();
    QPalette dark = original;
    dark.setColor(QPalette::ButtonText, QColor("#f0f0f0"));
    QApplication::setPalette(dark);
    MainForm* form = openModule("Course", "Lesson");
    QApplication::setPalette(original);
    ASSERT_NE(form, nullptr);
    for (const char* name : {"btnIndentLesson", "btnLeftAlign", "btnFontQ"}) {
        const QImage picture = control<QToolButton>(form, name)->icon().pixmap(32).toImage();
        int drawn = 0, other = 0; // fully opaque pixels in the text colour, and in another
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                if (const QColor c = picture.pixelColor(x, y); c.alpha() == 255)
                    ++(c.rgb() == dark.color(QPalette::ButtonText).rgb() ? drawn : other);
        EXPECT_TRUE(drawn > 0 && other == 0) << name << ": " << drawn << " and " << other;
    }
}

} // namespace
} // namespace lumora::testing
