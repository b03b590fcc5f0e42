// The Spell Check dialog and its entry point; see SpellCheckDialog.h.
#include "forms/dialogs/SpellCheckDialog.h"

#include "app/ErrorReport.h"
#include "app/Services.h"
#include "content/SpellCheckRun.h"
#include "forms/QtPrompt.h"
#include "storage/TextFile.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTextEdit>

namespace lumora {

namespace {

QString qs(const std::string& text) {
    return QString::fromStdString(text);
}

QPushButton* button(QWidget* parent, const char* name, const QString& caption,
                    const QString& accessible, const QString& tip) {
    auto* b = new QPushButton(caption, parent);
    b->setObjectName(name);
    b->setAccessibleName(accessible);
    b->setToolTip(tip);
    b->setAutoDefault(false);
    return b;
}

QLabel* label(QWidget* parent, const char* name, const QString& caption, QWidget* buddy) {
    auto* l = new QLabel(caption, parent);
    l->setObjectName(name);
    l->setBuddy(buddy);
    return l;
}

} // namespace

std::optional<std::string> runSpellCheck(QWidget* parent, SpellingEngine& engine,
                                         const std::string& block, bool html) {
    if (!engine.available())
        return std::nullopt;
    try {
        SpellCheckRun run(block, html, [&engine](const std::string& w) { return engine.check(w); });
        if (!run.next())
            return block;
        SpellCheckDialog dialog(run, engine, parent);
        if (dialog.exec() != QDialog::Accepted || dialog.failed())
            return std::nullopt;
        return run.text();
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

SpellCheckDialog::SpellCheckDialog(SpellCheckRun& run, SpellingEngine& engine, QWidget* parent)
    : QDialog(parent), run_(run), engine_(engine) {
    setObjectName("frmSpell");
    setWindowTitle("Spell Check");
    setModal(true);
    build();
    showWord();
}

void SpellCheckDialog::build() {
    txtContext_ = new QTextEdit(this);
    txtContext_->setObjectName("txtContext");
    txtContext_->setAccessibleName("Not in dictionary");
    txtContext_->setReadOnly(true);
    txtContext_->setTabChangesFocus(true);
    txtContext_->setTextInteractionFlags(Qt::TextSelectableByKeyboard | Qt::TextSelectableByMouse);
    txtContext_->setFixedHeight(txtContext_->fontMetrics().lineSpacing() * 4 + 12);

    txtChangeTo_ = new QLineEdit(this);
    txtChangeTo_->setObjectName("txtChangeTo");
    txtChangeTo_->setAccessibleName("Change to");

    lstSuggestions_ = new QListWidget(this);
    lstSuggestions_->setObjectName("lstSuggestions");
    lstSuggestions_->setAccessibleName("Suggestions");
    // Choosing a suggestion makes it the correction; a double-click also applies it.
    connect(lstSuggestions_, &QListWidget::currentItemChanged, this, [this](QListWidgetItem* item) {
        if (item)
            txtChangeTo_->setText(item->text());
    });
    connect(lstSuggestions_, &QListWidget::itemDoubleClicked, this,
            &SpellCheckDialog::cmdChange_Click);

    auto* cmdIgnore =
        button(this, "cmdIgnore", "&Ignore", "Ignore", "Leave this occurrence as it is");
    auto* cmdIgnoreAll = button(this, "cmdIgnoreAll", "I&gnore All", "Ignore All",
                                "Leave every occurrence of the word as it is");
    auto* cmdAdd = button(this, "cmdAdd", "&Add", "Add",
                          "Add the word to your dictionary, kept for later checks");
    auto* cmdChange = button(this, "cmdChange", "&Change", "Change",
                             "Replace this occurrence with the Change To text");
    auto* cmdChangeAll = button(this, "cmdChangeAll", "C&hange All", "Change All",
                                "Replace this and every later occurrence of the word");
    auto* cmdCancel =
        button(this, "cmdCancel", "Cancel", "Cancel", "Stop checking and keep the text as it was");
    // Enter changes the word wherever the focus is; Escape cancels (QDialog's own handling).
    cmdChange->setDefault(true);
    connect(cmdIgnore, &QPushButton::clicked, this, &SpellCheckDialog::cmdIgnore_Click);
    connect(cmdIgnoreAll, &QPushButton::clicked, this, &SpellCheckDialog::cmdIgnoreAll_Click);
    connect(cmdAdd, &QPushButton::clicked, this, &SpellCheckDialog::cmdAdd_Click);
    connect(cmdChange, &QPushButton::clicked, this, &SpellCheckDialog::cmdChange_Click);
    connect(cmdChangeAll, &QPushButton::clicked, this, &SpellCheckDialog::cmdChangeAll_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);

    auto* grid = new QGridLayout(this);
    grid->addWidget(label(this, "lblNotInDictionary", "&Not in dictionary:", txtContext_), 0, 0);
    grid->addWidget(txtContext_, 1, 0, 3, 1);
    grid->addWidget(cmdIgnore, 1, 1);
    grid->addWidget(cmdIgnoreAll, 2, 1);
    grid->addWidget(cmdAdd, 3, 1, Qt::AlignTop);
    grid->addWidget(label(this, "lblChangeTo", "Change &to:", txtChangeTo_), 4, 0);
    grid->addWidget(txtChangeTo_, 5, 0);
    grid->addWidget(cmdChange, 5, 1);
    grid->addWidget(label(this, "lblSuggestions", "&Suggestions:", lstSuggestions_), 6, 0);
    grid->addWidget(cmdChangeAll, 7, 1, Qt::AlignTop);
    grid->addWidget(lstSuggestions_, 7, 0, 2, 1);
    grid->addWidget(cmdCancel, 8, 1, Qt::AlignBottom);
    grid->setColumnStretch(0, 1);
    grid->setRowStretch(7, 1);

    setTabOrder(txtContext_, txtChangeTo_);
    setTabOrder(txtChangeTo_, lstSuggestions_);
    setTabOrder(lstSuggestions_, cmdChange);
    setTabOrder(cmdChange, cmdChangeAll);
    setTabOrder(cmdChangeAll, cmdIgnore);
    setTabOrder(cmdIgnore, cmdIgnoreAll);
    setTabOrder(cmdIgnoreAll, cmdAdd);
    setTabOrder(cmdAdd, cmdCancel);
    resize(520, 340);
}

QString SpellCheckDialog::word() const {
    return qs(run_.word());
}

void SpellCheckDialog::showWord() {
    const SpellContext context = run_.context();
    // The word is marked in the desktop's selection colours, readable under any theme.
    const QPalette& colours = txtContext_->palette();
    txtContext_->setHtml(qs(context.before).toHtmlEscaped() +
                         QString("<span style=\"background-color:%1; color:%2; font-weight:bold\">")
                             .arg(colours.color(QPalette::Highlight).name(),
                                  colours.color(QPalette::HighlightedText).name()) +
                         qs(context.word).toHtmlEscaped() + "</span>" +
                         qs(context.after).toHtmlEscaped());
    txtContext_->setAccessibleDescription(qs(context.before + context.word + context.after));

    lstSuggestions_->clear();
    for (const std::string& suggestion : engine_.suggest(run_.word()))
        lstSuggestions_->addItem(qs(suggestion));
    if (lstSuggestions_->count() > 0) {
        lstSuggestions_->setCurrentRow(0);
        lstSuggestions_->setFocus();
    } else {
        txtChangeTo_->setText(word());
        txtChangeTo_->selectAll();
        txtChangeTo_->setFocus();
    }
}

template <class Answer> void SpellCheckDialog::answer(Answer&& step) {
    try {
        if (step())
            showWord();
        else
            accept();
    } catch (const std::exception&) {
        // The engine failed mid-run: the caller keeps its content as it stands.
        failed_ = true;
        reject();
    }
}

void SpellCheckDialog::cmdChange_Click() {
    answer([this] { return run_.change(txtChangeTo_->text().toStdString()); });
}

void SpellCheckDialog::cmdChangeAll_Click() {
    answer([this] { return run_.changeAll(txtChangeTo_->text().toStdString()); });
}

void SpellCheckDialog::cmdIgnore_Click() {
    answer([this] { return run_.ignore(); });
}

void SpellCheckDialog::cmdIgnoreAll_Click() {
    answer([this] { return run_.ignoreAll(); });
}

void SpellCheckDialog::cmdAdd_Click() {
    answer([this] {
        try {
            engine_.addToUserDictionary(run_.word());
        } catch (const FileError& e) {
            QtPrompt prompt;
            reportFileError(prompt, e);
        }
        // Accepted for the rest of this run, whatever became of the dictionary file.
        return run_.ignoreAll();
    });
}

} // namespace lumora
