// Builds the main form's menus, header and tabs with the system's names, captions, tooltips
// and mnemonics. The Edit menu and the formatting rows are built with the editing commands
// (MainFormEditing.cpp). The item buttons are connected with the item operations
// (MainFormItems.cpp), the insert buttons with the dialogs they open (MainFormInserts.cpp).
#include "forms/main/MainForm.h"

#include "forms/editor/HtmlEditor.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSplitter>
#include <QStyle>
#include <QTabWidget>
#include <QToolBar>
#include <QVBoxLayout>

#include <limits>

namespace lumora {

namespace {

QAction* menuItem(QMenu* menu, const char* name, const QString& caption) {
    QAction* action = menu->addAction(caption);
    action->setObjectName(name);
    return action;
}

QAction* separator(QMenu* menu, const char* name) {
    QAction* action = menu->addSeparator();
    action->setObjectName(name);
    return action;
}

template <class W> W* named(W* widget, const char* name, const QString& tip = {}) {
    widget->setObjectName(name);
    if (!tip.isEmpty())
        widget->setToolTip(tip);
    return widget;
}

QPushButton* button(QWidget* parent, const char* name, const QString& caption,
                    const QString& tip = {}) {
    QPushButton* b = named(new QPushButton(caption, parent), name, tip);
    // A button without a caption is known by its tooltip to screen readers.
    if (caption.isEmpty())
        b->setAccessibleName(tip);
    return b;
}

// Buttons that are enabled where their handlers are connected.
QPushButton* laterButton(QWidget* parent, const char* name, const QString& caption,
                         const QString& tip = {}) {
    QPushButton* b = button(parent, name, caption, tip);
    b->setEnabled(false);
    return b;
}

QPushButton* arrowButton(QWidget* parent, const char* name, const QString& caption,
                         QStyle::StandardPixmap arrow, const QString& tip) {
    QPushButton* b = laterButton(parent, name, caption, tip);
    b->setIcon(parent->style()->standardIcon(arrow));
    return b;
}

QLabel* label(QWidget* parent, const char* name, const QString& caption, QWidget* buddy) {
    auto* l = named(new QLabel(caption, parent), name);
    l->setBuddy(buddy);
    return l;
}

// A row of buttons, left-aligned.
QHBoxLayout* buttonRow(std::initializer_list<QPushButton*> buttons) {
    auto* row = new QHBoxLayout;
    row->setSpacing(4);
    for (QPushButton* b : buttons)
        row->addWidget(b);
    row->addStretch();
    return row;
}

// The Create / Remove (and Up / Down) buttons under an item list, two to a row: the list's
// column then needs no more width than two buttons, which leaves the editors room at the
// form's minimum size.
QGridLayout* itemButtons(std::initializer_list<QPushButton*> buttons) {
    auto* grid = new QGridLayout;
    grid->setSpacing(4);
    int i = 0;
    for (QPushButton* b : buttons) {
        grid->addWidget(b, i / 2, i % 2);
        ++i;
    }
    grid->setColumnStretch(2, 1);
    return grid;
}

} // namespace

void MainForm::buildMenus() {
    mnuFile_ = menuBar()->addMenu("&File");
    mnuFile_->setObjectName("mnuFile");
    QMenu* mnuNew = mnuFile_->addMenu("&New");
    mnuNew->setObjectName("mnuNew");
    mnuNew->menuAction()->setObjectName("mnuNewAction");
    connect(menuItem(mnuNew, "mnuNewLesson", "Lesson"), &QAction::triggered, this,
            &MainForm::mnuNewLesson_Click);
    connect(menuItem(mnuNew, "mnuNewEval", "Evaluation"), &QAction::triggered, this,
            &MainForm::mnuNewEval_Click);
    connect(menuItem(mnuNew, "mnuNewSurvey", "Survey"), &QAction::triggered, this,
            &MainForm::mnuNewSurvey_Click);
    QAction* mnuOpen = menuItem(mnuFile_, "mnuOpen", "&Open");
    mnuOpen->setShortcut(QKeySequence::Open);
    connect(mnuOpen, &QAction::triggered, this, &MainForm::mnuOpen_Click);
    separator(mnuFile_, "mnuSep1");
    QAction* mnuSave = menuItem(mnuFile_, "mnuSave", "&Save (SCORM/AICC)");
    mnuSave->setShortcut(QKeySequence::Save);
    connect(mnuSave, &QAction::triggered, this, &MainForm::mnuSave_Click);
    connect(menuItem(mnuFile_, "mnuSaveNonSCORM", "Save (non-SCORM/AICC)"), &QAction::triggered,
            this, &MainForm::mnuSaveNonSCORM_Click);
    connect(menuItem(mnuFile_, "mnuSaveAs", "Save Module As..."), &QAction::triggered, this,
            &MainForm::mnuSaveAs_Click);
    connect(menuItem(mnuFile_, "mnuExportPackage", "Export Package..."), &QAction::triggered, this,
            &MainForm::mnuExportPackage_Click);
    connect(menuItem(mnuFile_, "mnuSettings", "Settings..."), &QAction::triggered, this,
            &MainForm::mnuSettings_Click);
    mnuSep2_ = separator(mnuFile_, "mnuSep2");
    QAction* mnuExit = menuItem(mnuFile_, "mnuExit", "E&xit");
    connect(mnuExit, &QAction::triggered, this, &MainForm::mnuExit_Click);

    buildEditMenu();

    QMenu* mnuHelp = menuBar()->addMenu("&Help");
    mnuHelp->setObjectName("mnuHelp");
    connect(menuItem(mnuHelp, "mnuHelpOnline", "Help Contents (online)"), &QAction::triggered, this,
            &MainForm::mnuHelpOnline_Click);
    QAction* mnuHelpContents = menuItem(mnuHelp, "mnuHelpContents", "Help Contents");
    mnuHelpContents->setShortcut(QKeySequence::HelpContents);
    connect(mnuHelpContents, &QAction::triggered, this, &MainForm::mnuHelpContents_Click);
    separator(mnuHelp, "mnuSep5");
    connect(menuItem(mnuHelp, "mnuAbout", "About"), &QAction::triggered, this,
            &MainForm::mnuAbout_Click);
}

void MainForm::insertFileMenuAction(QAction* action) {
    mnuFile_->insertAction(mnuSep2_, action);
}

QWidget* MainForm::buildHeader() {
    auto* header = new QWidget(this);
    txtModuleTitle_ =
        named(new QLineEdit(header), "txtModuleTitle", "Change the name of this Module");
    txtCopyright_ = named(new QLineEdit(header), "txtCopyright", "Change the copyright statement");
    btnPreview_ = button(header, "btnPreview", "Preview", "Preview the current module");
    connect(btnPreview_, &QPushButton::clicked, this, &MainForm::btnPreview_Click);
    auto* layout = new QGridLayout(header);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(label(header, "lblModuleTitle", "Module Title", txtModuleTitle_), 0, 0);
    layout->addWidget(txtModuleTitle_, 0, 1);
    layout->addWidget(btnPreview_, 0, 2, 2, 1, Qt::AlignVCenter);
    layout->addWidget(label(header, "lblCopyright", "Copyright", txtCopyright_), 1, 0);
    layout->addWidget(txtCopyright_, 1, 1);
    layout->setColumnStretch(1, 1);
    btnPreview_->setMinimumHeight(48);
    btnPreview_->setMinimumWidth(96);
    return header;
}

QWidget* MainForm::buildPagesTab() {
    auto* tab = new QWidget;
    lstPages_ = named(new QListWidget(tab), "lstPages");
    connect(lstPages_, &QListWidget::currentRowChanged, this, [this] {
        if (!filling_)
            lstPages_Click();
    });
    auto* left = new QVBoxLayout;
    left->addWidget(lstPages_, 1);
    left->addLayout(itemButtons(
        {laterButton(tab, "btnAddPage", "Create", "Create a new page"),
         laterButton(tab, "btnRemovePage", "Remove", "Remove the selected item"),
         arrowButton(tab, "btnUpPage", "", QStyle::SP_ArrowUp, "Move the selected item up"),
         arrowButton(tab, "btnDownPage", "Down", QStyle::SP_ArrowDown,
                     "Move the selected item down")}));

    frameMain_ = named(new QGroupBox(tab), "frameMain");
    txtPageTitle_ = named(new QLineEdit(frameMain_), "txtPageTitle");
    auto* titleRow = new QHBoxLayout;
    titleRow->addWidget(label(frameMain_, "lblPageTitle", "Page Title", txtPageTitle_));
    titleRow->addWidget(txtPageTitle_, 1);

    auto* insertRow = new QHBoxLayout;
    auto* btnInsertImage = button(frameMain_, "btnInsertImage", "Media", "Insert media");
    connect(btnInsertImage, &QPushButton::clicked, this, &MainForm::btnInsertImage_Click);
    auto* btnLink = button(frameMain_, "btnLink", "External Link",
                           "Create a hyperlink on the current selection");
    connect(btnLink, &QPushButton::clicked, this, &MainForm::btnLink_Click);
    insertRow->addWidget(btnInsertImage);
    insertRow->addWidget(btnLink);
    auto* Command1 = button(frameMain_, "Command1", "Internal Link",
                            "Create a hyperlink on the current selection");
    connect(Command1, &QPushButton::clicked, this, &MainForm::Command1_Click);
    auto* btnInsertTerm =
        button(frameMain_, "btnInsertTerm", "Terms", "Insert a Glossary term link");
    connect(btnInsertTerm, &QPushButton::clicked, this, &MainForm::btnInsertTerm_Click);
    auto* btnInsertQAndA = button(frameMain_, "btnInsertQAndA", "Q&&A", "Insert a Q&A item");
    connect(btnInsertQAndA, &QPushButton::clicked, this, &MainForm::btnInsertQAndA_Click);
    insertRow->addWidget(Command1);
    insertRow->addWidget(btnInsertTerm);
    insertRow->addWidget(btnInsertQAndA);
    insertRow->addStretch();

    tabLessonPage_ = named(new QTabWidget(frameMain_), "tabLessonPage");
    dhtmlLessonEdit_ = named(new HtmlEditor(tabLessonPage_), "dhtmlLessonEdit");
    txtLessonEdit_ = named(new QPlainTextEdit(tabLessonPage_), "txtLessonEdit");
    txtLessonEdit_->setFont(QFont("Verdana", 10));
    txtLessonEdit_->setLineWrapMode(QPlainTextEdit::WidgetWidth);
    tabLessonPage_->addTab(dhtmlLessonEdit_, "Design");
    tabLessonPage_->addTab(txtLessonEdit_, "Source");
    connect(tabLessonPage_, &QTabWidget::currentChanged, this, &MainForm::tabLessonPage_Click);

    auto* frame = new QVBoxLayout(frameMain_);
    frame->addLayout(titleRow);
    pageToolbar_ = buildFormatBar(frameMain_, false);
    frame->addWidget(pageToolbar_);
    frame->addLayout(insertRow);
    frame->addWidget(tabLessonPage_, 1);

    auto* layout = new QHBoxLayout(tab);
    layout->addLayout(left, 1);
    layout->addWidget(frameMain_, 4);
    return tab;
}

QWidget* MainForm::buildQuestionsTab() {
    auto* tab = new QWidget;
    lstQAndA_ = named(new QListWidget(tab), "lstQAndA");
    connect(lstQAndA_, &QListWidget::currentRowChanged, this, [this] {
        if (!filling_)
            lstQAndA_Click();
    });
    btnUpQuestion_ =
        arrowButton(tab, "btnUpQuestion", "", QStyle::SP_ArrowUp, "Move the selected item up");
    btnDownQuestion_ = arrowButton(tab, "btnDownQuestion", "Down", QStyle::SP_ArrowDown,
                                   "Move the selected item down");
    auto* left = new QVBoxLayout;
    left->addWidget(lstQAndA_, 1);
    left->addLayout(
        itemButtons({laterButton(tab, "btnAddQuestion", "Create", "Create a new question"),
                     laterButton(tab, "btnRemoveQuestion", "Remove", "Delete the selected item"),
                     btnUpQuestion_, btnDownQuestion_}));

    frameQuestion_ = named(new QGroupBox(tab), "frameQuestion");
    dhtmlQuestionEdit_ = named(new HtmlEditor(frameQuestion_), "dhtmlQuestionEdit");
    auto* btnSubmit = button(frameQuestion_, "btnSubmit", "Save",
                             "Save the current question text and update the question listing");
    connect(btnSubmit, &QPushButton::clicked, this, &MainForm::btnSubmit_Click);
    auto* questionRow = new QHBoxLayout;
    questionRow->addWidget(label(frameQuestion_, "lblQuestion", "Question", dhtmlQuestionEdit_));
    questionRow->addWidget(buildFormatBar(frameQuestion_, true), 1);
    questionRow->addWidget(btnSubmit);

    lstQuestionType_ = named(new QComboBox(frameQuestion_), "lstQuestionType",
                             "Select Single-select or Multiple-select");
    // Its entries are set per question; the box keeps the width of the longest.
    lstQuestionType_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    lstOptions_ = named(new QListWidget(frameQuestion_), "lstOptions");
    chkShuffleOptions_ =
        named(new QCheckBox("Shuffle Options", frameQuestion_), "chkShuffleOptions",
              "Shuffle the order of options for this question");
    chkShuffleQuestions_ =
        named(new QCheckBox("Shuffle Questions", frameQuestion_), "chkShuffleQuestions",
              "Shuffle the order of options for this question");
    txtRationale_ = named(new QLineEdit(frameQuestion_), "txtRationale",
                          "Enter an explanation of the answer for this question");
    lblRationale_ = label(frameQuestion_, "lblRationale", "Rationale", txtRationale_);
    txtNumberToAsk_ = named(new QLineEdit(frameQuestion_), "txtNumberToAsk",
                            "Set the number of questions to ask- must be less than or equal to "
                            "the number of available questions");
    txtNumberToAsk_->setMaximumWidth(80);
    lblNumberToAsk_ = label(frameQuestion_, "lblNumberToAsk", "Number to Ask", txtNumberToAsk_);

    // Labels in the first column; each check box shares a row with a field, so the frame
    // fits the form's minimum size.
    auto* typeRow = new QHBoxLayout;
    typeRow->addWidget(lstQuestionType_);
    typeRow->addWidget(chkShuffleOptions_);
    typeRow->addStretch();
    auto* numberRow = new QHBoxLayout;
    numberRow->addWidget(txtNumberToAsk_);
    numberRow->addWidget(chkShuffleQuestions_);
    numberRow->addStretch();
    auto* details = new QGridLayout;
    details->addWidget(label(frameQuestion_, "lblType", "Type", lstQuestionType_), 0, 0);
    details->addLayout(typeRow, 0, 1);
    details->addWidget(label(frameQuestion_, "lblOptions", "Options", lstOptions_), 1, 0,
                       Qt::AlignTop);
    details->addWidget(lstOptions_, 1, 1);
    details->addLayout(
        buttonRow(
            {laterButton(frameQuestion_, "btnAddOption", "Create",
                         "Create a new option for this question"),
             laterButton(frameQuestion_, "btnEditOption", "Edit", "Edit the selected item"),
             laterButton(frameQuestion_, "btnRemoveOption", "Remove", "Remove the selected item"),
             arrowButton(frameQuestion_, "btnUpOption", "", QStyle::SP_ArrowUp,
                         "Move the selected item up"),
             arrowButton(frameQuestion_, "btnDownOption", "Down", QStyle::SP_ArrowDown,
                         "Move the selected item down")}),
        2, 0, 1, 2);
    details->addWidget(lblRationale_, 3, 0);
    details->addWidget(txtRationale_, 3, 1);
    details->addWidget(lblNumberToAsk_, 4, 0);
    details->addLayout(numberRow, 4, 1);
    lstOptions_->setMaximumHeight(110);

    auto* frame = new QVBoxLayout(frameQuestion_);
    frame->addLayout(questionRow);
    frame->addWidget(dhtmlQuestionEdit_, 1);
    frame->addLayout(details);

    auto* layout = new QHBoxLayout(tab);
    layout->addLayout(left, 1);
    layout->addWidget(frameQuestion_, 4);
    return tab;
}

QWidget* MainForm::buildGlossaryTab() {
    auto* tab = new QWidget;
    lstTerms_ = named(new QListWidget(tab), "lstTerms");
    connect(lstTerms_, &QListWidget::currentRowChanged, this, [this] {
        if (!filling_)
            lstTerms_Click();
    });
    auto* left = new QVBoxLayout;
    left->addWidget(lstTerms_, 1);
    left->addLayout(
        itemButtons({laterButton(tab, "btnAddTerm", "Create", "Create a new glossary term"),
                     laterButton(tab, "btnRemoveTerm", "Remove", "Remove the selected item")}));

    frameTerm_ = named(new QGroupBox(tab), "frameTerm");
    txtTerm_ = named(new QLineEdit(frameTerm_), "txtTerm");
    txtDefinition_ = named(new QPlainTextEdit(frameTerm_), "txtDefinition");
    auto* frame = new QGridLayout(frameTerm_);
    frame->addWidget(label(frameTerm_, "lblTerm", "Term", txtTerm_), 0, 0);
    frame->addWidget(txtTerm_, 0, 1);
    frame->addWidget(label(frameTerm_, "lblDefinition", "Definition", txtDefinition_), 1, 0,
                     Qt::AlignTop);
    frame->addWidget(txtDefinition_, 1, 1);
    frame->setRowStretch(1, 1);

    auto* layout = new QHBoxLayout(tab);
    layout->addLayout(left, 1);
    layout->addWidget(frameTerm_, 4);
    return tab;
}

void MainForm::connectFields() {
    connect(txtModuleTitle_, &QLineEdit::textEdited, this, &MainForm::txtModuleTitle_Change);
    connect(txtCopyright_, &QLineEdit::textEdited, this, &MainForm::txtCopyright_Change);
    connect(txtPageTitle_, &QLineEdit::textEdited, this, &MainForm::txtPageTitle_Change);
    connect(txtTerm_, &QLineEdit::textEdited, this, &MainForm::txtTerm_Change);
    connect(txtDefinition_, &QPlainTextEdit::textChanged, this, &MainForm::txtDefinition_Change);
    connect(txtLessonEdit_, &QPlainTextEdit::textChanged, this, &MainForm::txtLessonEdit_Change);
    connect(lstQuestionType_, &QComboBox::activated, this, &MainForm::lstQuestionType_Click);
    connect(chkShuffleOptions_, &QCheckBox::clicked, this, &MainForm::chkShuffleOptions_Click);
    connect(chkShuffleQuestions_, &QCheckBox::clicked, this, &MainForm::chkShuffleQuestions_Click);
    connect(txtRationale_, &QLineEdit::textEdited, this, &MainForm::txtRationale_Change);
    // Every change, typed, pasted or undone, is checked at once.
    connect(txtNumberToAsk_, &QLineEdit::textChanged, this, &MainForm::txtNumberToAsk_Change);
    // A field takes as much text as the module files do.
    for (QLineEdit* field :
         {txtModuleTitle_, txtCopyright_, txtPageTitle_, txtTerm_, txtRationale_})
        field->setMaxLength(std::numeric_limits<int>::max());
    connectItemLists();

    connect(dhtmlLessonEdit_, &HtmlEditor::contentChanged, this, &MainForm::lessonEditorChanged);
    connect(dhtmlQuestionEdit_, &HtmlEditor::contentChanged, this,
            &MainForm::questionEditorChanged);
    connect(dhtmlLessonEdit_, &HtmlEditor::loaded, this, [this] { lessonEditorReady_ = true; });
    connect(dhtmlQuestionEdit_, &HtmlEditor::loaded, this, [this] { questionEditorReady_ = true; });
    connect(dhtmlLessonEdit_, &HtmlEditor::focusReceived, this,
            [this] { setActiveEditor("dhtmlLessonEdit"); });
    connect(dhtmlQuestionEdit_, &HtmlEditor::focusReceived, this,
            [this] { setActiveEditor("dhtmlQuestionEdit"); });
    connect(tabLessonPage_, &QTabWidget::currentChanged, this, &MainForm::enableEditCommands);
    // The other fields become the active control when clicked, for the Edit menu's commands.
    for (QWidget* field : std::initializer_list<QWidget*>{
             txtModuleTitle_, txtCopyright_, txtPageTitle_, txtLessonEdit_, txtTerm_,
             txtDefinition_, txtRationale_, txtNumberToAsk_})
        field->installEventFilter(this);
}

} // namespace lumora
