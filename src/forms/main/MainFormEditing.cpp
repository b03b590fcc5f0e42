// The main form's editing commands: the formatting rows above the page and question editors,
// the Edit menu, links, media, font and colour, find and spell check. Each handler picks the
// editor it acts on and hands the work to EditingCommands; commandFinished follows when the
// result is in the module.
#include "forms/main/MainForm.h"

#include "app/Session.h"
#include "base/TextUtil.h"
#include "content/Colors.h"
#include "content/MediaInsertion.h"
#include "forms/PaletteIcons.h"
#include "forms/dialogs/FindForm.h"
#include "forms/dialogs/FontForm.h"
#include "forms/editor/HtmlEditor.h"
#include "forms/main/ModuleActions.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QToolBar>
#include <QToolButton>

#include <span>

// Resources of a static library must be registered by hand; outside the namespace by rule.
static void initIconResources() {
    Q_INIT_RESOURCE(icons);
}

namespace lumora {

namespace {

// The filter of the media file dialog in Qt's form; "All Files" is selected first and, as on
// the platform the tool comes from, shows every file, with an extension or without.
const char* const kMediaFilter = "All Files (*);;Images (*.gif *.jpg *.jpeg *.png);;"
                                 "Macromedia (*.dcr *.swf);;Office (*.ppt *.doc *.xls *.rtf)";

enum class Face { Icon, Bold, Italic, Underline, Plain, Caption };

struct FormatButton {
    const char* name;
    const char* command; // a command word for execOnSelection, or "" for a handler of its own
    const char* tip;
    Face face;
    const char* text; // the face's letters, the caption, or the icon's name
    void (MainForm::*handler)() = nullptr;
};

// The page editor's row, then the question editor's.
const FormatButton kPageRow[] = {
    {"btnBold", "Bold", "Bold or remove bold on the current selection", Face::Bold, "B"},
    {"btnItalics", "Italic", "Italicize or remove italics on the current selection", Face::Italic,
     "I"},
    {"btnUnderline", "Underline", "Underline or remove underline on the current selection",
     Face::Underline, "U"},
    {"btnLeftAlign", "JustifyLeft", "Align the current selection to the left", Face::Icon,
     "format-justify-left"},
    {"btnCenter", "JustifyCenter", "Align the current selection to the center", Face::Icon,
     "format-justify-center"},
    {"btnRightAlign", "JustifyRight", "Align the current selection to the right", Face::Icon,
     "format-justify-right"},
    {"btnSubscript", "Subscript", "Subscript or remove subscript on the current selection",
     Face::Icon, "format-text-subscript"},
    {"btnSuperscript", "Superscript", "Superscript or remove superscript on the current selection",
     Face::Icon, "format-text-superscript"},
    {"btnUList", "InsertUnorderedList", "Bullet the current selection", Face::Plain,
     "\u2022\u2261"},
    {"btnIndentLesson", "Indent", "Increase indentation on the current selection", Face::Icon,
     "format-indent-more"},
    {"btnOutdentLesson", "Outdent", "Decrease indentation on the current selection", Face::Icon,
     "format-indent-less"},
    {"btnFontSizeUp", "", "", Face::Icon, "format-font-size-more", &MainForm::btnFontSizeUp_Click},
    {"btnFontSizeDown", "", "", Face::Icon, "format-font-size-less",
     &MainForm::btnFontSizeDown_Click},
    {"btnFontColor", "", "Sets font color for the current selection", Face::Icon,
     "format-text-color", &MainForm::btnFontColor_Click},
    {"btnFont", "", "Sets font face for the current selection", Face::Icon, "dialog-text-and-font",
     &MainForm::btnFont_Click},
    {"btnUnformatLesson", "", "Removes all formatting", Face::Caption, "Clear Format",
     &MainForm::btnUnformatLesson_Click},
};

const FormatButton kQuestionRow[] = {
    {"btnBoldQ", "Bold", "Bold or remove bold on the current selection", Face::Bold, "B"},
    {"btnItalicQ", "Italic", "Italicize or remove italics on the current selection", Face::Italic,
     "I"},
    {"btnUnderlineQ", "Underline", "Underline or remove underline on the current selection",
     Face::Underline, "U"},
    {"btnIndentQuestion", "Indent", "Increase indentation on the current selection", Face::Icon,
     "format-indent-more"},
    {"btnOutdentQuestion", "Outdent", "Decrease indentation on the current selection", Face::Icon,
     "format-indent-less"},
    {"btnQFontSizeUp", "", "", Face::Icon, "format-font-size-more",
     &MainForm::btnQFontSizeUp_Click},
    {"btnQFontSizeDown", "", "", Face::Icon, "format-font-size-less",
     &MainForm::btnQFontSizeDown_Click},
    {"btnFontQ", "", "Sets Font face, style and Size", Face::Icon, "dialog-text-and-font",
     &MainForm::btnFontQ_Click},
    {"btnUnformatQuestion", "", "Removes all formatting", Face::Caption, "Clear Format",
     &MainForm::btnUnformatQuestion_Click},
    {"btnLinkQuestion", "", "Create a hyperlink on the current selection", Face::Caption, "Link",
     &MainForm::btnLinkQuestion_Click},
    {"btnInsertImageQ", "", "Insert media", Face::Caption, "Media",
     &MainForm::btnInsertImageQ_Click},
};

// The commands whose state the editor reports, shown as pressed buttons.
bool showsState(const QString& command) {
    static const QStringList kStates = {"Bold",          "Italic",       "Underline",
                                        "Subscript",     "Superscript",  "JustifyLeft",
                                        "JustifyCenter", "JustifyRight", "InsertUnorderedList"};
    return kStates.contains(command);
}

// The letters of Bold, Italic, Underline and the bullet button are drawn in "MS Serif", or in
// the system's serif face where that font is not installed.
QFont serifFace(Face face, const QFont& base) {
    QFont font = base;
    font.setFamilies({"MS Serif"});
    font.setStyleHint(QFont::Serif);
    font.setBold(face == Face::Bold);
    font.setItalic(face == Face::Italic);
    font.setUnderline(face == Face::Underline);
    return font;
}

// Names for the size buttons, which have neither caption nor tooltip.
QString accessibleNameOf(const FormatButton& b) {
    if (*b.tip)
        return b.tip;
    return QString(b.name).contains("Up") ? "Font size up" : "Font size down";
}

QClipboard* clipboard() {
    return QApplication::clipboard();
}

} // namespace

// --- building ------------------------------------------------------------------------------

QToolBar* MainForm::buildFormatBar(QWidget* parent, bool questionRow) {
    initIconResources();
    auto* bar = new QToolBar(parent);
    bar->setObjectName(questionRow ? "questionToolbar" : "pageToolbar");
    bar->setIconSize(QSize(16, 16));
    HtmlEditor* editor = questionRow ? dhtmlQuestionEdit_ : dhtmlLessonEdit_;
    editor->setReportsFormatState(true);
    auto& stateButtons = questionRow ? questionStateButtons_ : pageStateButtons_;
    for (const FormatButton& b : questionRow ? std::span<const FormatButton>(kQuestionRow)
                                             : std::span<const FormatButton>(kPageRow)) {
        auto* button = new QToolButton(bar);
        button->setObjectName(b.name);
        button->setToolTip(b.tip);
        button->setAccessibleName(accessibleNameOf(b));
        button->setAutoRaise(true);
        // Clicking a button leaves the focus, and so the caret, in the editor; Tab reaches it.
        button->setFocusPolicy(Qt::TabFocus);
        if (b.face == Face::Icon) {
            button->setIcon(
                paletteIcon(QString(":/lumora/icons/%1.svg").arg(b.text), button->palette()));
        } else {
            button->setText(b.text);
            if (b.face != Face::Caption)
                button->setFont(serifFace(b.face, button->font()));
        }
        const QString command = b.command;
        if (b.handler) {
            connect(button, &QToolButton::clicked, this, b.handler);
        } else {
            connect(button, &QToolButton::clicked, this, [this, editor, command, button] {
                // The button shows the editor's state, not its own toggling.
                if (button->isCheckable())
                    button->setChecked(!button->isChecked());
                formatCommand(editor, command);
            });
        }
        if (showsState(command)) {
            button->setCheckable(true);
            stateButtons.emplace_back(command, button);
        }
        bar->addWidget(button);
    }
    connect(editor, &HtmlEditor::formatStateChanged, this,
            [this, questionRow](const QStringList& commands) {
                showFormatState(questionRow, commands);
            });
    return bar;
}

void MainForm::buildEditMenu() {
    mnuEdit_ = menuBar()->addMenu("&Edit");
    mnuEdit_->setObjectName("mnuEdit");
    // The tooltip of a disabled Spell Check says why.
    mnuEdit_->setToolTipsVisible(true);
    const auto item = [this](const char* name, const QString& caption, void (MainForm::*handler)(),
                             const QKeySequence& shortcut = {}) {
        QAction* action = mnuEdit_->addAction(caption);
        action->setObjectName(name);
        action->setShortcut(shortcut);
        if (handler)
            connect(action, &QAction::triggered, this, handler);
        return action;
    };
    mnuCut_ = item("mnuCut", "Cut", &MainForm::mnuCut_Click, QKeySequence::Cut);
    mnuCopy_ = item("mnuCopy", "Copy", &MainForm::mnuCopy_Click, QKeySequence::Copy);
    mnuPasteUnformatted_ = item("mnuPasteUnformatted", "Paste Unformatted",
                                &MainForm::mnuPasteUnformatted_Click, QKeySequence("Ctrl+Shift+V"));
    mnuEdit_->addSeparator()->setObjectName("mnuSep3");
    mnuClearPageFormat_ =
        item("mnuClearPageFormat", "Clear Format", &MainForm::mnuClearPageFormat_Click);
    item("mnuColors", "Color Scheme", &MainForm::mnuColors_Click);
    mnuEdit_->addSeparator()->setObjectName("mnuSep4");
    mnuSpellCheck_ =
        item("mnuSpellCheck", "Spell Check", &MainForm::mnuSpellCheck_Click, QKeySequence("F7"));
    mnuFind_ = item("mnuFind", "Find", &MainForm::mnuFind_Click, QKeySequence::Find);
    connect(mnuEdit_, &QMenu::aboutToShow, this, &MainForm::mnuEdit_Click);
    enableEditCommands();
}

// --- which editor ----------------------------------------------------------------------------

QWidget* MainForm::editorNamed(const QString& name) const {
    for (QWidget* editor : std::initializer_list<QWidget*>{
             dhtmlLessonEdit_, txtLessonEdit_, dhtmlQuestionEdit_, txtModuleTitle_, txtCopyright_,
             txtPageTitle_, txtTerm_, txtDefinition_, txtRationale_, txtNumberToAsk_})
        if (editor && editor->objectName() == name)
            return editor;
    return nullptr;
}

QWidget* MainForm::tabEditor() const {
    switch (tabMain_->currentIndex()) {
    case 0:
        return tabLessonPage_->currentIndex() <= 0 ? static_cast<QWidget*>(dhtmlLessonEdit_)
                                                   : txtLessonEdit_;
    case 1:
        return dhtmlQuestionEdit_;
    default:
        return nullptr;
    }
}

QWidget* MainForm::commandTarget() const {
    QWidget* active = editorNamed(activeEditor_);
    if (active && active->isVisible())
        return active;
    return tabEditor();
}

HtmlEditor* MainForm::htmlEditorOf(QWidget* control) const {
    auto* editor = qobject_cast<HtmlEditor*>(control);
    return editor && editor->isVisible() ? editor : nullptr;
}

void MainForm::setActiveEditor(const QString& name) {
    if (activeEditor_ == name)
        return;
    activeEditor_ = name;
    enableEditCommands();
}

void MainForm::setSpellingDialog(SpellingDialog dialog) {
    spellingDialog_ = std::move(dialog);
    enableEditCommands();
}

// --- the Edit menu ---------------------------------------------------------------------------

void MainForm::mnuEdit_Click() {
    static const char* const kClearCaptions[] = {"Clear Page Format", "Clear Question Format",
                                                 "Clear Format"};
    const int tab = tabMain_->currentIndex();
    if (tab >= 0 && tab <= 2)
        mnuClearPageFormat_->setText(kClearCaptions[tab]);
    enableEditCommands();
}

// What each Edit command may act on now. Shortcuts follow the same states, so they are kept
// current as the tab, the view and the active editor change, not only when the menu opens.
void MainForm::enableEditCommands() {
    if (!mnuEdit_ || !tabMain_)
        return;
    const int tab = tabMain_->currentIndex();
    QWidget* target = commandTarget();
    const bool designShown = tabLessonPage_ && tabLessonPage_->currentIndex() <= 0;
    mnuCut_->setEnabled(target != nullptr);
    mnuCopy_->setEnabled(target != nullptr);
    // On the questions tab only the question editor takes a paste; the question's other
    // fields are filled by their own dialogs.
    mnuPasteUnformatted_->setEnabled(target &&
                                     (tab != 1 || qobject_cast<HtmlEditor*>(target) != nullptr));
    // The clear item works on the page's design view or the question editor; the glossary has
    // neither, and a page shown as source would be cleared behind the author's back.
    mnuClearPageFormat_->setEnabled((tab == 0 && designShown) || tab == 1);
    mnuFind_->setEnabled(qobject_cast<HtmlEditor*>(tabEditor()) != nullptr);

    const bool spelling = session_.spellingAvailable && spellingDialog_;
    mnuSpellCheck_->setEnabled(spelling && target != nullptr);
    QString why;
    if (!session_.spellingAvailable)
        why = QString("Spell Check is not available: no spelling dictionary could be loaded "
                      "from %1")
                  .arg(QString::fromStdString(session_.spellingFolder));
    else if (!spellingDialog_)
        why = "Spell Check is not available: this build has no spelling dialog";
    mnuSpellCheck_->setToolTip(why);
    if (pageToolbar_)
        pageToolbar_->setEnabled(designShown);
}

void MainForm::mnuCut_Click() {
    QWidget* target = commandTarget();
    if (!target)
        return;
    editing_.cutSelectionHTML(target, [this](const std::string& html) {
        // Nothing selected, nothing cut: the clipboard keeps what it had.
        if (!html.empty())
            clipboard()->setText(QString::fromStdString(html));
        emit commandFinished();
    });
}

void MainForm::mnuCopy_Click() {
    QWidget* target = commandTarget();
    if (!target)
        return;
    editing_.getSelectionHTML(target, [this](const std::string& html) {
        if (!html.empty())
            clipboard()->setText(QString::fromStdString(html));
        emit commandFinished();
    });
}

void MainForm::mnuPasteUnformatted_Click() {
    QWidget* target = commandTarget();
    const QString text = clipboard()->text();
    if (!target || text.isEmpty())
        return;
    editing_.insertText(text.toStdString(), target, [this] { emit commandFinished(); });
}

void MainForm::mnuClearPageFormat_Click() {
    HtmlEditor* editor = tabMain_->currentIndex() == 0 ? dhtmlLessonEdit_ : dhtmlQuestionEdit_;
    editing_.clearToPlainText(editor, mnuClearPageFormat_->text(), [this](const std::string& text) {
        clipboard()->setText(QString::fromStdString(text));
        emit commandFinished();
    });
}

void MainForm::mnuSpellCheck_Click() {
    QWidget* target = commandTarget();
    if (!target || !spellingDialog_)
        return;
    editing_.spellCheckEditor(this, target, spellingDialog_, [this] { emit commandFinished(); });
}

void MainForm::mnuFind_Click() {
    auto* editor = qobject_cast<HtmlEditor*>(tabEditor());
    if (!editor)
        return;
    if (frmFind_)
        frmFind_->close();
    frmFind_ = new FindForm(
        session_.prompt, [this](QWidget* edited) { saveEditorContent(edited->objectName()); },
        this);
    frmFind_->show();
    frmFind_->resetForm(editor);
}

// --- the formatting rows ---------------------------------------------------------------------

void MainForm::showFormatState(bool questionRow, const QStringList& commands) {
    for (const auto& [command, button] : questionRow ? questionStateButtons_ : pageStateButtons_)
        button->setChecked(commands.contains(command));
}

void MainForm::formatCommand(HtmlEditor* editor, const QString& command) {
    setActiveEditor(editor->objectName());
    editor->setFocus();
    editing_.execOnSelection(editor, command, [this] { emit commandFinished(); });
}

void MainForm::fontSizeStep(HtmlEditor* editor, int step) {
    setActiveEditor(editor->objectName());
    editor->setFocus();
    editing_.fontSizeStep(editor, step, [this] { emit commandFinished(); });
}

void MainForm::btnFontSizeUp_Click() {
    fontSizeStep(dhtmlLessonEdit_, 1);
}
void MainForm::btnFontSizeDown_Click() {
    fontSizeStep(dhtmlLessonEdit_, -1);
}
void MainForm::btnQFontSizeUp_Click() {
    fontSizeStep(dhtmlQuestionEdit_, 1);
}
void MainForm::btnQFontSizeDown_Click() {
    fontSizeStep(dhtmlQuestionEdit_, -1);
}

void MainForm::btnFontColor_Click() {
    HtmlEditor* editor = dhtmlLessonEdit_;
    setActiveEditor(editor->objectName());
    editor->call("fontColorState", {}, [this, editor](const QVariant& reply) {
        const QVariantMap state = reply.toMap();
        // Only marked text takes a colour; a bare caret changes nothing.
        if (state.value("type").toString() != "Text") {
            emit commandFinished();
            return;
        }
        const QVariant current = state.value("color");
        const QColor initial(QString::fromStdString(
            colorToHex(current.isNull() ? 0 : static_cast<long>(current.toLongLong()))));
        const std::optional<QColor> chosen = dialogs_->color(this, initial);
        if (!chosen) {
            emit commandFinished();
            return;
        }
        const long color = hexToColor(chosen->name().toStdString());
        editing_.execOnSelection(
            editor, "ForeColor", [this] { emit commandFinished(); }, QString::number(color));
    });
}

void MainForm::showFontForm(HtmlEditor* editor) {
    setActiveEditor(editor->objectName());
    if (frmFont_)
        frmFont_->close();
    frmFont_ = new FontForm(
        editing_, editor, session_.prompt, [this] { emit commandFinished(); }, this);
    frmFont_->open();
    frmFont_->resetPage();
}

void MainForm::btnFont_Click() {
    showFontForm(dhtmlLessonEdit_);
}
void MainForm::btnFontQ_Click() {
    showFontForm(dhtmlQuestionEdit_);
}

void MainForm::btnUnformatLesson_Click() {
    editing_.clearFormat(dhtmlLessonEdit_, [this] { emit commandFinished(); });
}
void MainForm::btnUnformatQuestion_Click() {
    editing_.clearFormat(dhtmlQuestionEdit_, [this] { emit commandFinished(); });
}

// --- links and media -------------------------------------------------------------------------

void MainForm::btnLink_Click() {
    QWidget* editor = tabEditor();
    if (!editor)
        return;
    setActiveEditor(editor->objectName());
    editing_.insertHyperlink(editor, [this] { emit commandFinished(); });
}

void MainForm::btnLinkQuestion_Click() {
    setActiveEditor(dhtmlQuestionEdit_->objectName());
    editing_.insertHyperlink(dhtmlQuestionEdit_, [this] { emit commandFinished(); });
}

QString MainForm::chooseMediaFile() {
    return dialogs_->openFile(this, kMediaFilter);
}

void MainForm::insertMedia(QWidget* editor) {
    const QString chosen = chooseMediaFile();
    if (chosen.isEmpty())
        return;
    setActiveEditor(editor->objectName());
    editing_.getSelectionHTML(editor, [this, editor, chosen](const std::string& selection) {
        std::string html;
        if (!reportFileErrors(session_.prompt, [&] {
                html = makeMediaHTML(chosen.toStdString(), session_.module.ModuleFolder,
                                     session_.prompt, trimSpaces(selection));
            })) {
            emit commandFinished();
            return;
        }
        editing_.insertHTMLAtSelection(html, editor, [this](bool) { emit commandFinished(); });
    });
}

void MainForm::btnInsertImage_Click() {
    if (tabMain_->currentIndex() == 0)
        insertMedia(tabEditor());
}

void MainForm::btnInsertImageQ_Click() {
    insertMedia(dhtmlQuestionEdit_);
}

} // namespace lumora
