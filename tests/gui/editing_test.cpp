// The editing commands on the real page and question editors: the formatting rows, links,
// clear format, the clipboard commands, font size, colour and face, find and replace, media
// and spell check, with prompts and the common dialogs answered from a script.
#include "AuthoringFixture.h"

#include "forms/dialogs/FindForm.h"
#include "forms/dialogs/FontForm.h"
#include "forms/dialogs/SimpleComboBox.h"
#include "gui/SpellAnswers.h"
#include "platform/HunspellEngine.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextEdit>
#include <QToolBar>
#include <QToolButton>

namespace lumora::testing {
namespace {

TEST_F(EditingTest, FormattingButtonsChangeTheSelectionAndShowItsState) {
    showPage("<P>one two three</P><P>four</P><P>five</P>");
    select(page, "P", "two");
    click("btnBold");
    EXPECT_TRUE(containsText(pageContent(), "<P>one <B>two</B> three</P>")) << pageContent();
    EXPECT_TRUE(session.ModuleChanged);

    auto* bold = control<QToolButton>(form, "btnBold");
    caretIn(page, "two");
    ASSERT_TRUE(QTest::qWaitFor([&] { return bold->isChecked(); }, kWaitMs));
    caretIn(page, "three");
    ASSERT_TRUE(QTest::qWaitFor([&] { return !bold->isChecked(); }, kWaitMs));

    select(page, "P", "four", "five");
    click("btnIndentLesson");
    EXPECT_TRUE(containsText(pageContent(), "<BLOCKQUOTE")) << pageContent();
    select(page, "P", "one");
    click("btnUList");
    EXPECT_TRUE(containsText(pageContent(), "<UL><LI>one <B>two</B> three")) << pageContent();

    // The source view takes no formatting: its row is disabled while it is shown.
    control<QTabWidget>(form, "tabLessonPage")->setCurrentIndex(1);
    EXPECT_FALSE(control<QToolBar>(form, "pageToolbar")->isEnabled());
}

// A link over a selection keeps the selection's character formatting around it and replaces a
// link that was there; a selected picture becomes the link's content; no address changes
// nothing. (The link's text without a selection is EditingText's own test.)
TEST_F(EditingTest, ExternalLinksWrapTheSelection) {
    showPage("<P>see <A href=\"old.html\"><B><I><FONT face=\"Arial\" color=\"#ff0000\">the "
             "guide</FONT></I></B></A> now</P>");
    select(page, "FONT", "the guide");
    prompt.type("http://x.org/new.html");
    click("btnLink");
    EXPECT_EQ(prompt.asked.back().prompt, "Please enter a URL for the hyperlink:");
    EXPECT_EQ(prompt.asked.back().title, "Hyperlink URL");
    EXPECT_FALSE(containsText(pageContent(), "old.html")) << pageContent();
    EXPECT_TRUE(containsText(pageContent(), "href=\"http://x.org/new.html\" target=\"_new\">the "
                                            "guide</A>"))
        << pageContent();
    EXPECT_EQ(js(page, "(() => { const a = document.querySelector('A');"
                       " return [a.closest('B'), a.closest('I'), a.closest('FONT[face=Arial]'),"
                       " a.closest('FONT[color=\"#ff0000\"]')].every(e => e) })()")
                  .toBool(),
              true)
        << pageContent();

    const std::string picture = session.module.ModuleFolder + "/media/pic.png";
    showPage("<P>x<IMG src=\"" + picture + "\">y</P>");
    clickOn(page, "IMG");
    prompt.type("http://x.org/");
    click("btnLink");
    EXPECT_TRUE(
        containsText(pageContent(),
                     "<A href=\"http://x.org/\" target=\"_new\"><IMG src=\"" + picture + "\"></A>"))
        << pageContent();

    const std::string before = pageContent();
    prompt.type("   ");
    click("btnLink");
    expectLast("You must provide a URL for the hyperlink.", "Error", Icon::Critical);
    EXPECT_EQ(pageContent(), before);

    // In the source view the link's markup goes in as text at the selection.
    showSource("<P>Read more</P>", 3, 12);
    prompt.type("b.html");
    click("btnLink");
    EXPECT_EQ(pageContent(), "<P><a href=\"b.html\" target=\"_new\">Read more</a></P>");
}

TEST_F(EditingTest, ClearFormatAnsweredNoChangesNothingAndYesClears) {
    const std::string page0 = "<P align=\"center\"><B>bold</B> <A href=\"a.html\">link</A></P>";
    showPage(page0);
    clipboardText("kept");
    select(page, "P", "bold", "link");
    click("btnUnformatLesson");
    expectLast("Clear Format removes all images, links, and scripts as well as formatting from "
               "your selection.\r\nDo you want to continue?",
               "Warning", Icon::Exclamation);
    EXPECT_EQ(pageContent(), page0);
    prompt.answer(Answer::Yes);
    click("btnUnformatLesson");
    EXPECT_EQ(pageContent(), "<P>bold link</P>");

    // The Edit menu's clear item reduces the whole page to its text, which the clipboard keeps.
    showPage(page0 + "<P>two</P>");
    form->mnuEdit_Click();
    menu("mnuClearPageFormat")->trigger();
    EXPECT_EQ(prompt.last()->text, "Clear Page Format removes all images, links, and scripts as "
                                   "well as formatting.\r\nDo you want to continue?");
    EXPECT_EQ(QApplication::clipboard()->text(), "kept");
    EXPECT_EQ(pageContent(), page0 + "<P>two</P>");
    prompt.answer(Answer::Yes);
    run([&] { menu("mnuClearPageFormat")->trigger(); });
    EXPECT_EQ(QApplication::clipboard()->text(), "bold link\n\ntwo");
    EXPECT_EQ(pageContent(), "bold link<BR><BR>two");
}

// Cut and Copy put the selection's HTML on the clipboard as text: a picture selected by a click
// is cut whole; a field's selected text is copied; nothing selected leaves the clipboard alone.
TEST_F(EditingTest, CutAndCopyTakeTheSelectionOfTheActiveControl) {
    const std::string picture = session.module.ModuleFolder + "/media/pic.png";
    showPage("<P>a<IMG src=\"" + picture + "\" border=0>b</P>");
    page->setFocus();
    clickOn(page, "IMG");
    run([&] { menu("mnuCut")->trigger(); });
    EXPECT_EQ(clipboardText().toStdString(), "<IMG src=\"" + picture + "\" border=\"0\">");
    EXPECT_EQ(pageContent(), "<P>ab</P>");

    auto* title = control<QLineEdit>(form, "txtPageTitle");
    title->setFocus();
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return form->activeEditorName() == "txtPageTitle"; }, kWaitMs));
    title->setSelection(0, 3);
    run([&] { menu("mnuCopy")->trigger(); });
    EXPECT_EQ(clipboardText(), "Wel");
    title->deselect();
    run([&] { menu("mnuCut")->trigger(); });
    EXPECT_EQ(clipboardText(), "Wel");
    EXPECT_EQ(session.module.pages[0].title, "Welcome");

    title->setSelection(3, 4);
    run([&] { menu("mnuCut")->trigger(); });
    EXPECT_EQ(clipboardText(), "come");
    EXPECT_EQ(session.module.pages[0].title, "Wel");
}

TEST_F(EditingTest, FontSizeAndColourSteps) {
    showPage("<P><FONT size=\"1\">small</FONT> and <FONT size=\"5\">big</FONT></P>");
    select(page, "FONT", "small", "big");
    click("btnFontSizeUp");
    // Size 3 throughout (the browser writes no FONT where 3 is the size the text has anyway).
    EXPECT_FALSE(containsText(pageContent(), "size=\"1\"")) << pageContent();
    EXPECT_FALSE(containsText(pageContent(), "size=\"5\"")) << pageContent();
    select(page, "P", "small", "big");
    EXPECT_EQ(js(page, "lumoraEditor.queryCommandValue('FontSize')").toInt(), 3) << pageContent();

    // A bare caret takes no colour: no dialog, no change.
    showPage("<P>plain <FONT color=\"#336699\">blue</FONT></P>");
    caretIn(page, "plain");
    click("btnFontColor");
    EXPECT_TRUE(dialogs.initialColors.empty());
    EXPECT_FALSE(session.ModuleChanged);

    select(page, "FONT", "blue");
    dialogs.colors.push_back(QColor("#ff0000"));
    click("btnFontColor");
    ASSERT_EQ(dialogs.initialColors.size(), 1u);
    EXPECT_EQ(dialogs.initialColors[0].name(), "#336699");
    EXPECT_TRUE(containsText(pageContent(), "color=\"#ff0000\">blue")) << pageContent();
}

// A selection of two fonts opens the dialog with an empty box, which OK refuses; a double-click
// on a name applies it at once.
TEST_F(EditingTest, FontDialogOnATwoFontSelection) {
    showPage("<P><FONT face=\"Courier New\">one</FONT> <FONT face=\"Arial\">two</FONT></P>");
    select(page, "FONT", "one", "two");
    control<QToolButton>(form, "btnFont")->click();
    FontForm* font = form->fontForm();
    ASSERT_NE(font, nullptr);
    QSignalSpy reset(font, &FontForm::pageReset);
    ASSERT_TRUE(reset.count() > 0 || reset.wait(kWaitMs));
    auto* box = control<SimpleComboBox>(font, "lstFonts");
    EXPECT_EQ(box->currentText(), "");
    ASSERT_GT(box->count(), 0);
    control<QPushButton>(font, "OKButton")->click();
    EXPECT_EQ(prompt.last()->text, "You must select a font");
    EXPECT_TRUE(font->isVisible());

    QListWidgetItem* item = box->list()->item(0);
    const std::string family = item->text().toStdString();
    run([&] { emit box->list()->itemDoubleClicked(item); });
    EXPECT_TRUE(containsText(pageContent(), "face=\"" + family + "\">one")) << pageContent();

    // One font: preselected.
    showPage("<P><FONT face=\"Arial\">two</FONT></P>");
    select(page, "FONT", "two");
    control<QToolButton>(form, "btnFont")->click();
    QSignalSpy again(form->fontForm(), &FontForm::pageReset);
    ASSERT_TRUE(again.wait(kWaitMs));
    EXPECT_EQ(control<SimpleComboBox>(form->fontForm(), "lstFonts")->currentText(), "Arial");
}

// ---- find and replace -------------------------------------------------------------------------

class FindTest : public EditingTest {
  protected:
    // Opens the find dialog on the page editor (answering its first question, if it asks).
    FindForm* openFind(Answer fromBeginning = Answer::No) {
        prompt.answer(fromBeginning);
        menu("mnuFind")->trigger();
        FindForm* find = form->findForm();
        EXPECT_NE(find, nullptr);
        QSignalSpy ready(find, &FindForm::stepFinished);
        EXPECT_TRUE(ready.wait(kWaitMs));
        prompt.answers.clear();
        return find;
    }
    // Find Next; the offset of the highlighted match in its text node, or -1 when the dialog
    // closed without one.
    int findNext(FindForm* find, const QString& text, bool matchCase = false,
                 bool wholeWords = false) {
        control<QLineEdit>(find, "txtFind")->setText(text);
        control<QCheckBox>(find, "chkCase")->setChecked(matchCase);
        control<QCheckBox>(find, "chkWholeWords")->setChecked(wholeWords);
        QPointer<FindForm> open(find);
        QSignalSpy step(find, &FindForm::stepFinished);
        control<QPushButton>(find, "btnFind")->click();
        EXPECT_TRUE(step.count() > 0 || step.wait(kWaitMs));
        if (!open || !open->isVisible())
            return -1;
        return js(page,
                  "getSelection().isCollapsed ? -1 : getSelection().getRangeAt(0).startOffset")
            .toInt();
    }
};

// Offsets in "a cat. b cat. c cat. d cat.": 2, 9, 16, 23. Without marked text, No at the first
// question searches from the caret to the end, where Not Found answered No closes the dialog;
// marked text confines the search, asking nothing, until Yes widens it.
TEST_F(FindTest, TheSearchRunsFromTheCaretOrWithinTheMarkedText) {
    showPage("<P>a cat. b cat. c cat. d cat.</P>");
    caretIn(page, "c cat");
    FindForm* find = openFind(Answer::No);
    EXPECT_EQ(prompt.messages[0].text,
              "No selection was made.  Would you like to begin searching from the beginning of "
              "the document?\r\n(If \"No\" search will begin from the cursor location)");
    EXPECT_EQ(prompt.messages[0].title, "Search from Beginning");
    EXPECT_EQ(findNext(find, "cat"), 16);
    EXPECT_EQ(findNext(find, "cat"), 23);
    QPointer<FindForm> open(find);
    EXPECT_EQ(findNext(find, "cat"), -1);
    EXPECT_TRUE(!open || !open->isVisible());

    prompt.messages.clear();
    select(page, "P", "b cat", "c cat");
    find = openFind();
    EXPECT_TRUE(prompt.messages.empty()) << "marked text asks nothing";
    EXPECT_EQ(findNext(find, "cat"), 9);
    EXPECT_EQ(findNext(find, "cat"), 16);
    prompt.answer(Answer::Yes);
    EXPECT_EQ(findNext(find, "cat"), 2);
    EXPECT_EQ(prompt.last()->text,
              "Could not find the specified text.\r\nWould you like to search from the beginning?");
}

TEST_F(FindTest, FlagsAndTheThousandCharacterCount) {
    showPage("<P>Cat cats CAT cat</P><P>" + std::string(1200, 'x') + " cat</P>");
    FindForm* find = openFind(Answer::Yes);
    EXPECT_EQ(findNext(find, "cat", true, true), 13);
    // The next "cat" lies more than 1000 characters beyond: not found by this Find Next.
    EXPECT_EQ(findNext(find, "cat", true, true), -1);
    EXPECT_EQ(prompt.last()->title, "Not Found");
}

// Replace changes the highlighted match only, as plain text; with other text selected it does
// nothing, and the search does not move on.
TEST_F(FindTest, ReplaceChangesOnlyTheHighlightedMatch) {
    showPage("<P>One cat, <B>two</B> cats.</P>");
    FindForm* find = openFind(Answer::Yes);
    EXPECT_EQ(findNext(find, "CAT"), 4);
    control<QLineEdit>(find, "txtReplace")->setText("<dog>");
    QSignalSpy step(find, &FindForm::stepFinished);
    control<QPushButton>(find, "btnReplace")->click();
    ASSERT_TRUE(step.wait(kWaitMs));
    EXPECT_EQ(pageContent(), "<P>One &lt;dog&gt;, <B>two</B> cats.</P>");

    EXPECT_EQ(findNext(find, "cat"), 1); // in " cats."
    select(page, "B", "two");
    control<QPushButton>(find, "btnReplace")->click();
    ASSERT_TRUE(step.wait(kWaitMs));
    EXPECT_EQ(pageContent(), "<P>One &lt;dog&gt;, <B>two</B> cats.</P>");
}

// ---- media ------------------------------------------------------------------------------------

class MediaTest : public EditingTest {
  protected:
    void SetUp() override {
        EditingTest::SetUp();
        in = std::filesystem::path(root.path().toStdString()) / "in";
        std::filesystem::create_directories(in / "saved_files");
        for (const char* name : {"PHOTO.GIF", "saved.htm", "saved_files/x.css"})
            std::ofstream(in / name) << name;
        std::ofstream(in / "my pic.png", std::ios::binary) << tinyPng().toStdString();
        media = session.module.ModuleFolder + "/media/";
    }
    void insert(const char* button, const std::filesystem::path& file) {
        dialogs.files.push_back(QString::fromStdString(file.string()));
        click(button);
    }
    std::filesystem::path in;
    std::string media;
};

// Each chosen file is copied into the media folder (a saved page with its companion folder) and
// inserted at the caret, a picture after the caption question. (Which files show as pictures,
// and their markup, are MediaInsertion's own tests.)
TEST_F(MediaTest, FilesAreCopiedAndInsertedAsPicturesOrLinks) {
    struct Row {
        std::filesystem::path file;
        std::optional<std::string> caption; // answered to the caption question, if asked
        std::string inserted;
    };
    const std::vector<Row> rows = {
        {in / "my pic.png", "A <b>caption</b>",
         "<TABLE border=\"0\" cellpadding=\"0\" cellspacing=\"0\" width=\"1\"><TBODY><TR><TD><IMG "
         "src=\"" +
             media +
             "my_pic.png\" alt=\"A <b>caption</b>\" border=\"0\"></TD></TR><TR><TD "
             "align=\"center\">A <B>caption</B></TD></TR></TABLE>"},
        {in / "saved.htm", {}, "<A href=\"" + media + "saved.htm\" target=\"_new\">saved.htm</A>"},
    };
    for (const Row& row : rows) {
        showPage("<P>Here: </P>");
        caretIn(page, "Here");
        const std::size_t asked = prompt.asked.size();
        if (row.caption)
            prompt.type(row.caption);
        insert("btnInsertImage", row.file);
        EXPECT_TRUE(containsText(pageContent(), row.inserted)) << row.file << "\n" << pageContent();
        if (row.inserted.find("IMG") != std::string::npos) {
            ASSERT_EQ(prompt.asked.size(), asked + 1);
            EXPECT_EQ(prompt.asked.back().prompt, "Type the caption for the image (if needed).");
            EXPECT_EQ(prompt.asked.back().title, "Caption");
            // The picture shows in the editor at once.
            EXPECT_TRUE(QTest::qWaitFor(
                [&] { return js(page, "document.images[0].naturalWidth").toInt() == 1; }, kWaitMs));
        }
    }
    EXPECT_EQ(readText(media + "my_pic.png"), readText(in / "my pic.png"));
    EXPECT_EQ(readText(media + "saved_files/x.css"), "saved_files/x.css");
}

TEST_F(MediaTest, AFileAlreadyInMediaStaysAndAFileThatCannotBeCopiedInsertsNothing) {
    showPage("<P>x</P>");
    std::ofstream(media + "pic.png") << "png";
    const auto before = std::filesystem::last_write_time(media + "pic.png");
    insert("btnInsertImage", media + "pic.png");
    EXPECT_TRUE(containsText(pageContent(), "<IMG src=\"" + media + "pic.png\"")) << pageContent();
    EXPECT_EQ(std::filesystem::last_write_time(media + "pic.png"), before);

    const std::string content = pageContent();
    insert("btnInsertImage", in / "saved_files");
    EXPECT_EQ(prompt.last()->title, "Error");
    EXPECT_TRUE(containsText(prompt.last()->text, (in / "saved_files").string()));
    EXPECT_EQ(pageContent(), content);

    // The source view gets the markup as text; the question editor takes media too.
    showSource("");
    insert("btnInsertImage", in / "PHOTO.GIF");
    EXPECT_EQ(pageContent(), "<a href=\"" + media + "PHOTO.GIF\" target=\"_new\">PHOTO.GIF</a>");
    showQuestion("<P>Which?</P>");
    insert("btnInsertImageQ", in / "saved.htm");
    EXPECT_TRUE(containsText(session.module.questions[0].questionText, "saved.htm</A>"))
        << session.module.questions[0].questionText;
}

// ---- spell check --------------------------------------------------------------------------

// The checking dialog stood in for by one that corrects "teh" and records what it saw.
class SpellCheckTest : public EditingTest {
  protected:
    void SetUp() override {
        EditingTest::SetUp();
        session.spellingAvailable = true;
        form->setSpellingDialog([this](QWidget*, const std::string& block, bool html) {
            blocks.push_back({block, html});
            std::string text = block;
            for (std::size_t at; (at = text.find("teh")) != std::string::npos;)
                text.replace(at, 3, "the");
            return std::optional<std::string>(text);
        });
    }
    void spellCheck() {
        run([&] { menu("mnuSpellCheck")->trigger(); });
    }

    std::vector<std::pair<std::string, bool>> blocks;
};

// A selection: only it is checked and replaced (the whole page goes through the real dialog
// below).
TEST_F(SpellCheckTest, TheSelectionIsCheckedAndPutBack) {
    showPage("<P>teh one</P><P>teh two teh</P>");
    page->setFocus();
    select(page, "P", "two teh");
    spellCheck();
    ASSERT_EQ(blocks.size(), 1u);
    EXPECT_EQ(blocks[0], std::pair(std::string("two teh"), true));
    EXPECT_EQ(pageContent(), "<P>teh one</P><P>teh two the</P>");

    // Nothing to correct: the content stays, and the author is told.
    const std::string content = pageContent();
    select(page, "P", "one");
    spellCheck();
    expectLast("No errors were found", "No Errors", Icon::Information);
    EXPECT_EQ(pageContent(), content);
}

TEST_F(SpellCheckTest, CellsMarkedAcrossRowsAreRefusedAndTheSourceViewIsPlainText) {
    const std::string table = "<TABLE><TBODY><TR><TD>teh a</TD></TR><TR><TD>teh b</TD></TR>"
                              "</TBODY></TABLE>";
    showPage(table);
    page->setFocus();
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return form->activeEditorName() == "dhtmlLessonEdit"; }, kWaitMs));
    select(page, "TD", "a", "teh b");
    spellCheck();
    EXPECT_EQ(prompt.last()->text, "Please select a larger area around the table.");
    EXPECT_EQ(prompt.last()->title, "Expand Selection");
    EXPECT_TRUE(blocks.empty());
    EXPECT_FALSE(session.ModuleChanged);

    showSource("<P>teh text</P>")->setFocus();
    spellCheck();
    ASSERT_EQ(blocks.size(), 1u);
    EXPECT_EQ(blocks[0], std::pair(std::string("<P>teh text</P>"), false));
    EXPECT_EQ(pageContent(), "<P>the text</P>");
}

// The program's own checking dialog over the staged dictionaries, reached with F7's command.
class CheckingDialogTest : public EditingTest {
  protected:
    void SetUp() override {
        session.spelling = &engine;
        EditingTest::SetUp();
    }
    HunspellEngine engine;
};

// Escape cancels and leaves the page as it was; Change (by Enter), Change All and a double-click
// on a suggestion correct it. (Add is SpellCheckDialogTest's.)
TEST_F(CheckingDialogTest, MisspellingsAreCorrectedThroughTheDialogsButtonsAndKeys) {
    if (!session.spellingAvailable)
        GTEST_SKIP() << "no dictionary staged";
    const std::string text = "<P>Teh operator signs the permitt.</P>\r\n<P>Keep the permitt <B>on "
                             "site</B>, recieved.</P>";
    showPage(text);
    page->setFocus();
    {
        SpellAnswers cancelled({key(Qt::Key_Escape)});
        run([&] { menu("mnuSpellCheck")->trigger(); });
        EXPECT_EQ(cancelled.asked, std::vector<std::string>{"Teh"});
        EXPECT_TRUE(prompt.messages.empty()) << "a cancelled check says nothing";
        EXPECT_EQ(pageContent(), text);
        EXPECT_FALSE(session.ModuleChanged);
    }
    QString context;
    SpellAnswers answers({
        [&](SpellCheckDialog& dialog) {
            context = dialog.findChild<QTextEdit*>("txtContext")->toPlainText();
            dialog.findChild<QLineEdit*>("txtChangeTo")->setText("The");
            key(Qt::Key_Return)(dialog);
        },
        press("cmdChangeAll"), // the first suggestion, chosen when the word is shown
        doubleClickSuggestion(0),
    });
    run([&] { menu("mnuSpellCheck")->trigger(); });
    EXPECT_EQ(answers.asked, (std::vector<std::string>{"Teh", "permitt", "recieved"}));
    EXPECT_EQ(context, "Teh operator signs the permitt.");
    EXPECT_EQ(pageContent(), "<P>The operator signs the permit.</P><P>Keep the permit <B>on "
                             "site</B>, received.</P>");
}

// ---- the Edit menu and bad input ------------------------------------------------------------

TEST_F(EditingTest, EditMenuFollowsTheTabAndTheActiveControl) {
    auto* tabs = control<QTabWidget>(form, "tabMain");
    const std::vector<std::tuple<int, const char*, bool>> rows = {
        {0, "Clear Page Format", true},
        {1, "Clear Question Format", true},
        {2, "Clear Format", false}};
    for (const auto& [tab, caption, clearable] : rows) {
        tabs->setCurrentIndex(tab);
        form->mnuEdit_Click();
        EXPECT_EQ(menu("mnuClearPageFormat")->text().toStdString(), caption);
        EXPECT_EQ(menu("mnuClearPageFormat")->isEnabled(), clearable) << caption;
    }
    // On the questions tab only the question editor takes a paste.
    tabs->setCurrentIndex(1);
    control<QLineEdit>(form, "txtModuleTitle")->setFocus();
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return form->activeEditorName() == "txtModuleTitle"; }, kWaitMs));
    form->mnuEdit_Click();
    EXPECT_FALSE(menu("mnuPasteUnformatted")->isEnabled());
    question->setFocus();
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return form->activeEditorName() == "dhtmlQuestionEdit"; }, kWaitMs));
    form->mnuEdit_Click();
    EXPECT_TRUE(menu("mnuPasteUnformatted")->isEnabled());

    // Without a dictionary the spelling command is off and its tip says why.
    session.spellingAvailable = false;
    form->mnuEdit_Click();
    EXPECT_FALSE(menu("mnuSpellCheck")->isEnabled());
    EXPECT_TRUE(menu("mnuSpellCheck")->toolTip().contains("not available"));
}

// A paste of megabytes goes in whole, as text.
TEST_F(EditingTest, APasteOfMegabytesGoesInWhole) {
    showPage("<P>start</P>");
    page->setFocus();
    caretIn(page, "start");
    std::string big;
    while (big.size() < 5'000'000)
        big += "line of <pasted> text & more " + std::to_string(big.size()) + "\n";
    clipboardText(QString::fromStdString(big));
    run([&] { menu("mnuPasteUnformatted")->trigger(); });
    EXPECT_GT(pageContent().size(), 5'000'000u);
    EXPECT_TRUE(containsText(pageContent(), "<P>s" + std::string("line of &lt;pasted&gt; text "
                                                                 "&amp; more 0<BR>")));
    EXPECT_TRUE(containsText(pageContent(), "tart</P>"));
}

// A selection from a paragraph into a table keeps every word through formatting and cutting.
TEST_F(EditingTest, ASelectionAcrossATableLosesNothing) {
    showPage("<P>before the table</P><TABLE><TBODY><TR><TD>first cell</TD><TD>second "
             "cell</TD></TR></TBODY></TABLE><P>after</P>");
    select(page, "P, TD", "the table", "first");
    click("btnBold");
    for (const char* word : {"before", "the table", "first", "cell", "second", "after"})
        EXPECT_TRUE(containsText(pageContent(), word)) << word << "\n" << pageContent();
    select(page, "P, TD", "the table", "first");
    run([&] { menu("mnuCut")->trigger(); });
    EXPECT_TRUE(clipboardText().contains("the table")) << clipboardText().toStdString();
    for (const char* word : {"before", "cell", "second", "after"})
        EXPECT_TRUE(containsText(pageContent(), word)) << word << "\n" << pageContent();
}

} // namespace
} // namespace lumora::testing
