// frmMain: the one authoring form. It holds no module data of its own: every field shows the
// session's module and every edit is written straight back into it. This file declares the
// form; its parts are built in MainFormWidgets.cpp, filled in MainFormLists.cpp, laid out in
// MainFormLayout.cpp, its item lists' buttons are MainFormItems.cpp and MainFormQuestions.cpp,
// the dialogs that insert into a page and the colour scheme are opened in MainFormInserts.cpp,
// and the open module's life (new, open, save, exit) is MainForm.cpp.
#pragma once

#include "forms/FormDialogs.h"
#include "forms/SpellingDialog.h"
#include "forms/TabChain.h"
#include "forms/dialogs/ColorsForm.h"
#include "forms/dialogs/FindForm.h"
#include "forms/dialogs/FontForm.h"
#include "forms/dialogs/PageLinkForm.h"
#include "forms/dialogs/QAndAChooser.h"
#include "forms/dialogs/TermChooser.h"
#include "forms/dialogs/WebViewerForm.h"
#include "forms/editor/EditingCommands.h"
#include "storage/LmsPackage.h"

#include <QMainWindow>
#include <QPointer>
#include <QTimer>

#include <utility>
#include <vector>

class QAction;
class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QMenu;
class QPlainTextEdit;
class QPushButton;
class QTabWidget;
class QToolBar;
class QToolButton;

namespace lumora {

// Where the main form's place on screen is remembered between runs.
inline constexpr const char* kGeometryKey = "mainWindow/geometry";

class AboutForm;
class HtmlEditor;
class OptionForm;
class Session;
struct QuestionOption;

class MainForm : public QMainWindow {
    Q_OBJECT
  public:
    explicit MainForm(Session& session, QWidget* parent = nullptr);
    ~MainForm() override;

    // After the loader filled the module: caption "Lumora: " + title, then resetPage.
    void showLoadedModule();

    // --- the open module ---
    void resetPage();
    // Offers to save a changed module; false when the author said Yes and the save failed.
    bool CheckSave();
    // Writes the open module; false (after the "Error" message) when the files could not be
    // written, with the module left changed.
    bool SaveModule();

    // --- list refreshers ---
    void setPageList();
    void setQAndAList();
    void setOptionsList();
    void setTermList();

    // Copies an editor's content into the current page or question: "dhtmlLessonEdit",
    // "txtLessonEdit", "dhtmlQuestionEdit"; any other name does nothing.
    void saveEditorContent(const QString& editorName);
    QString activeEditorName() const { return activeEditor_; }

    // --- editing (MainFormEditing.cpp) ---
    // The editing commands the toolbars, the Edit menu and the inserting dialogs use.
    EditingCommands& editing() { return editing_; }
    // The control the Edit menu acts on: the active editor or field when it is on screen,
    // else the editor of the tab shown; null on a tab without one.
    QWidget* commandTarget() const;
    // The page editor in use (design view or source view), or the question editor, by the tabs
    // shown: where links and media go when no editor is named.
    QWidget* tabEditor() const;
    // Makes an editor or field the one the Edit menu acts on.
    void setActiveEditor(const QString& name);
    // The file-open and colour dialogs (tests answer them).
    void setDialogs(FormDialogs* dialogs) { dialogs_ = dialogs; }
    // The spell check's dialog; without one, Spell Check is unavailable.
    void setSpellingDialog(SpellingDialog dialog);
    // The file-open dialog of media insertion: the chosen path, or "" when cancelled.
    QString chooseMediaFile();
    // Copies a chosen file into the module and inserts it at the editor's selection.
    void insertMedia(QWidget* editor);

    // --- inserting references into a lesson page, the colour scheme (MainFormInserts.cpp) ---
    // The lesson page view the choosers insert into: the design view, or the source view while
    // its tab is shown, whatever tab of the form is in front.
    QWidget* lessonPageEditor() const;
    // Brings a tab of tabMain to the front: 0 pages, 1 questions (Q&A), 2 glossary.
    void selectMainTab(int tab);
    void btnInsertTerm_Click();
    void btnInsertQAndA_Click();
    void Command1_Click();
    void mnuColors_Click();

    // A File menu entry placed above the separator before Exit (for example a package export).
    void insertFileMenuAction(QAction* action);

    // --- handlers, connected explicitly ---
    void mnuNewLesson_Click();
    void mnuNewEval_Click();
    void mnuNewSurvey_Click();
    void mnuOpen_Click();
    void mnuSave_Click();
    void mnuSaveNonSCORM_Click();
    void mnuSaveAs_Click();
    // Export Package...: asks the format and where (frmExportPackage), then exportPackageTo.
    void mnuExportPackage_Click();
    // Saves the module first (after asking) when it is changed or was never saved for
    // SCORM/AICC here, then writes the zip an LMS imports. False when the author declined, or
    // the package could not be written (after a message).
    bool exportPackageTo(const QString& zipPath, const PackageOptions& options = {});
    void mnuExit_Click();
    void btnPreview_Click();
    void mnuSettings_Click();
    void mnuHelpContents_Click();
    void mnuHelpOnline_Click();
    void mnuAbout_Click();
    void tabMain_Click();
    void tabLessonPage_Click();
    void lstPages_Click();
    void lstQAndA_Click();
    void lstTerms_Click();
    void lblEgg_Click();
    void tmrEgg_Timer();
    void mnuEdit_Click();
    void mnuCut_Click();
    void mnuCopy_Click();
    void mnuPasteUnformatted_Click();
    void mnuClearPageFormat_Click();
    void mnuSpellCheck_Click();
    void mnuFind_Click();
    void btnLink_Click();
    void btnLinkQuestion_Click();
    void btnInsertImage_Click();
    void btnInsertImageQ_Click();
    void btnUnformatLesson_Click();
    void btnUnformatQuestion_Click();
    void btnFontColor_Click();
    void btnFont_Click();
    void btnFontQ_Click();
    void btnFontSizeUp_Click();
    void btnFontSizeDown_Click();
    void btnQFontSizeUp_Click();
    void btnQFontSizeDown_Click();

    // --- the item lists (MainFormItems.cpp, MainFormQuestions.cpp) ---
    // The glossary tab shown with the current term selected in lstTerms and in its fields.
    void showCurrentTerm();
    // The questions tab shown with the current item selected in lstQAndA and in the question
    // editor with its options.
    void showCurrentItem();
    void btnAddPage_Click();
    void btnRemovePage_Click();
    void btnUpPage_Click();
    void btnDownPage_Click();
    void btnAddTerm_Click();
    void btnRemoveTerm_Click();
    void btnAddQuestion_Click();
    void btnRemoveQuestion_Click();
    void btnUpQuestion_Click();
    void btnDownQuestion_Click();
    void btnSubmit_Click();
    void btnAddOption_Click();
    void btnEditOption_Click();
    void btnRemoveOption_Click();
    void btnUpOption_Click();
    void btnDownOption_Click();
    void lstOptions_DblClick();
    // A key released in one of the four item lists; the Delete key (46) removes the selection.
    void lstPages_KeyUp(int keyCode);
    void lstQAndA_KeyUp(int keyCode);
    void lstOptions_KeyUp(int keyCode);
    void lstTerms_KeyUp(int keyCode);
    // The option editor while it is open (it is modeless), else null.
    OptionForm* optionForm() const;

    // The open viewers and dialogs, for the program's shutdown and for tests.
    PreviewForm* previewForm() const { return frmPreview_; }
    HelpForm* helpForm() const { return frmHelp_; }
    FindForm* findForm() const { return frmFind_; }
    FontForm* fontForm() const { return frmFont_; }
    TermChooser* termChooser() const { return frmTermChoose_; }
    QAndAChooser* qAndAChooser() const { return frmQAndAChoose_; }
    PageLinkForm* pageLinkForm() const { return frmPageLink_; }
    ColorsForm* colorsForm() const { return frmColors_; }

  signals:
    // Open was chosen and the save question answered: the folder chooser is wanted.
    void openRequested();
    // The exit question was answered Yes: the program ends.
    void exitConfirmed();
    // An editing command of a toolbar, the Edit menu or an insert button has completed (its
    // result, if any, is in the module).
    void commandFinished();

  protected:
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool focusNextPrevChild(bool next) override;

  private:
    // MainFormWidgets.cpp
    void buildMenus();
    QWidget* buildHeader();
    QWidget* buildPagesTab();
    QWidget* buildQuestionsTab();
    QWidget* buildGlossaryTab();
    void connectFields();
    // MainFormKeyboard.cpp
    void makeKeyboardReady();
    TabChain tabChain();
    // MainFormEditing.cpp
    QToolBar* buildFormatBar(QWidget* parent, bool questionRow);
    void buildEditMenu();
    void showFormatState(bool questionRow, const QStringList& commands);
    void formatCommand(HtmlEditor* editor, const QString& command);
    void fontSizeStep(HtmlEditor* editor, int step);
    void showFontForm(HtmlEditor* editor);
    void enableEditCommands();
    HtmlEditor* htmlEditorOf(QWidget* control) const;
    QWidget* editorNamed(const QString& name) const;
    // MainFormLists.cpp
    void fillQuestionEditor();
    void clearQuestionEditor();
    void applyModuleType();
    void lessonEditorChanged(const QString& bodyHtml);
    void questionEditorChanged(const QString& bodyHtml);
    void txtLessonEdit_Change();
    std::string sourceText() const;
    void txtModuleTitle_Change(const QString& text);
    void txtCopyright_Change(const QString& text);
    void txtPageTitle_Change(const QString& text);
    void txtTerm_Change(const QString& text);
    void txtDefinition_Change();
    QString definitionText() const;
    void lstQuestionType_Click(int index);
    void chkShuffleOptions_Click(bool checked);
    void chkShuffleQuestions_Click(bool checked);
    void storePageContent(int page, const std::string& html);
    // MainFormItems.cpp
    void connectItemLists();
    // The module index of the item selected in lstQAndA, -1 for none. Items without text are
    // not listed, so rows and indices part after such an item.
    int selectedItem() const;
    int rowOfItem(int item) const;
    // lstQAndA's entry for `item` follows its text; an item listed for the first time gets one.
    void showItemEntry(int item);
    // MainFormQuestions.cpp
    void showOptionRow(QListWidgetItem* row, const QuestionOption& option);
    void refreshOptionRow(int option);
    void openOptionForm();
    void txtRationale_Change(const QString& text);
    void txtNumberToAsk_Change();
    // MainForm.cpp
    void newModule(const char* type);
    bool saveWith(bool scorm);
    // Shows the help viewer on "offline" (the installed help) or "online".
    void showHelp(const char* helpLocation);
    // The status bar: what the last save wrote, and whether there are unsaved changes.
    void buildStatusBar();
    void showSaved();
    void refreshChangedMark();
    // MainFormLayout.cpp
    void resolutionCheck();
    void placeEgg();
    // The remembered place when it fits the screen, else the opening size within the screen.
    void placeOnScreen();
    // The minimum size, widened when the controls of the module's type need more.
    void keepMinimumSize();

    Session& session_;
    QtFormDialogs qtDialogs_;
    FormDialogs* dialogs_ = &qtDialogs_;
    EditingCommands editing_;
    SpellingDialog spellingDialog_;
    QString activeEditor_;
    bool filling_ = false;        // the form is writing into its own fields
    bool exiting_ = false;        // the exit question was answered Yes
    int lessonEditorPage_ = -1;   // the page dhtmlLessonEdit was filled with
    int questionEditorItem_ = -1; // the item dhtmlQuestionEdit was filled with
    bool lessonEditorReady_ = false;
    bool questionEditorReady_ = false;

    // menus
    QMenu* mnuFile_ = nullptr;
    QAction* mnuSep2_ = nullptr;
    QMenu* mnuEdit_ = nullptr;
    QAction* mnuCut_ = nullptr;
    QAction* mnuCopy_ = nullptr;
    QAction* mnuPasteUnformatted_ = nullptr;
    QAction* mnuClearPageFormat_ = nullptr;
    QAction* mnuSpellCheck_ = nullptr;
    QAction* mnuFind_ = nullptr;

    // header
    QLineEdit* txtModuleTitle_ = nullptr;
    QLineEdit* txtCopyright_ = nullptr;
    QPushButton* btnPreview_ = nullptr;
    QTabWidget* tabMain_ = nullptr;

    // pages tab
    QListWidget* lstPages_ = nullptr;
    QGroupBox* frameMain_ = nullptr;
    QLineEdit* txtPageTitle_ = nullptr;
    QTabWidget* tabLessonPage_ = nullptr;
    HtmlEditor* dhtmlLessonEdit_ = nullptr;
    QPlainTextEdit* txtLessonEdit_ = nullptr;
    QToolBar* pageToolbar_ = nullptr;
    // The toolbar buttons that show an on/off command's state, by command word.
    std::vector<std::pair<QString, QToolButton*>> pageStateButtons_, questionStateButtons_;

    // questions tab
    QListWidget* lstQAndA_ = nullptr;
    QPushButton* btnUpQuestion_ = nullptr;
    QPushButton* btnDownQuestion_ = nullptr;
    QGroupBox* frameQuestion_ = nullptr;
    HtmlEditor* dhtmlQuestionEdit_ = nullptr;
    QComboBox* lstQuestionType_ = nullptr;
    QListWidget* lstOptions_ = nullptr;
    QCheckBox* chkShuffleOptions_ = nullptr;
    QCheckBox* chkShuffleQuestions_ = nullptr;
    QLabel* lblRationale_ = nullptr;
    QLineEdit* txtRationale_ = nullptr;
    QLabel* lblNumberToAsk_ = nullptr;
    QLineEdit* txtNumberToAsk_ = nullptr;

    // glossary tab
    QListWidget* lstTerms_ = nullptr;
    QGroupBox* frameTerm_ = nullptr;
    QLineEdit* txtTerm_ = nullptr;
    QPlainTextEdit* txtDefinition_ = nullptr;

    // status bar
    QLabel* lblSaveState_ = nullptr;
    QLabel* lblUnsavedChanges_ = nullptr;
    bool changedShown_ = false;
    bool placed_ = false; // placed on screen at its first showing

    // the hidden animation
    QLabel* lblEgg_ = nullptr;
    QTimer tmrEgg_;
    std::size_t eggFrame_ = 0;

    QPointer<PreviewForm> frmPreview_;
    QPointer<HelpForm> frmHelp_;
    QPointer<FindForm> frmFind_;
    QPointer<FontForm> frmFont_;
    QPointer<OptionForm> frmLOption_;
    QPointer<TermChooser> frmTermChoose_;
    QPointer<QAndAChooser> frmQAndAChoose_;
    QPointer<PageLinkForm> frmPageLink_;
    QPointer<ColorsForm> frmColors_;

    TabChain tabChain_ = tabChain();
};

} // namespace lumora
