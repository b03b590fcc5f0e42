// The colour scheme dialog over an open Lesson, the colour dialog answered from a script:
// the miniature painted from the scheme, Default, Save writing the stylesheet at once, Cancel
// and the close box discarding, picking (black not handed to the picker), and the warning of
// pairs that read poorly.
#include "AuthoringFixture.h"

#include "forms/dialogs/ColorLabel.h"
#include "forms/dialogs/ColorsForm.h"
#include "storage/Stylesheet.h"

#include <QLabel>
#include <QPushButton>

namespace lumora::testing {
namespace {

class ColorsTest : public AuthoringTest {
  protected:
    void SetUp() override {
        AuthoringTest::SetUp();
        open(kLesson);
        stylesheet = moduleFile("Course1", "css/camstyle.css");
    }

    ColorsForm* openColors() {
        menu("mnuColors")->trigger();
        ColorsForm* dialog = form->colorsForm();
        EXPECT_TRUE(dialog && dialog->isVisible());
        return dialog;
    }
    void click(ColorsForm* dialog, const char* name) {
        control<QAbstractButton>(dialog, name)->click();
    }
    // The colours the labels of one field are painted in.
    static QStringList painted(ColorsForm* dialog, const char* name) {
        QStringList colors;
        for (ColorLabel* label : dialog->findChildren<ColorLabel*>(name))
            colors << label->color().name(QColor::HexRgb).toUpper();
        return colors;
    }

    std::filesystem::path stylesheet;
};

// Default then Cancel or the close box discards everything; Default then Save keeps it.
TEST_F(ColorsTest, DefaultThenCancelOrTheCloseBoxDiscardsAndSaveWritesAtOnce) {
    session.module.colors.aLink = "#123456";
    session.module.colors.pageNumberBackground = "#ABCDEF";
    const ColorScheme before = session.module.colors;
    const std::string file = readText(stylesheet);

    ColorsForm* dialog = openColors();
    EXPECT_EQ(painted(dialog, "lblALink"), QStringList{"#123456"});
    EXPECT_EQ(painted(dialog, "lblPageNumberBackground"), (QStringList{"#ABCDEF", "#ABCDEF"}));
    EXPECT_EQ(control<QAbstractButton>(dialog, "lblContentBackground")->text(),
              "  Page Background");
    click(dialog, "btnDefaultColors");
    EXPECT_EQ(session.module.colors, session.defaults.colors);
    EXPECT_EQ(painted(dialog, "lblALink"), QStringList{"#000099"});
    click(dialog, "CancelButton");
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(session.module.colors, before);
    EXPECT_EQ(readText(stylesheet), file);

    dialog = openColors();
    dialogs.colors.push_back(QColor("#00ff00"));
    click(dialog, "lblTitleColor");
    EXPECT_EQ(session.module.colors.titleColor, "#00FF00");
    dialog->close();
    EXPECT_EQ(session.module.colors, before);
    EXPECT_EQ(readText(stylesheet), file);
    EXPECT_FALSE(session.ModuleChanged);

    // Default then Save writes the stylesheet at once (its lines are the stylesheet writer's).
    dialog = openColors();
    click(dialog, "btnDefaultColors");
    click(dialog, "btnSave");
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(session.module.colors, session.defaults.colors);
    CourseModule reread;
    ReadStylesheetColours(reread, stylesheet.string());
    EXPECT_EQ(reread.colors, session.defaults.colors);
}

TEST_F(ColorsTest, PickingStartsFromTheFieldsColourButNeverFromBlackAndWarnsOfPoorContrast) {
    ColorsForm* dialog = openColors();
    auto* warning = control<QLabel>(dialog, "lblContrast");
    EXPECT_TRUE(warning->isHidden()) << "the default scheme reads well";

    click(dialog, "lblALink"); // cancelled: nothing changes
    EXPECT_EQ(session.module.colors.aLink, "#000099");
    // The page number's colour is black: the picker keeps the colour it showed last.
    dialogs.colors.push_back(QColor(0, 0, 255));
    click(dialog, "lblPageNumberColor");
    ASSERT_EQ(dialogs.initialColors.size(), 2u);
    EXPECT_EQ(dialogs.initialColors[0], QColor("#000099"));
    EXPECT_EQ(dialogs.initialColors[1], QColor("#000099"));
    EXPECT_EQ(session.module.colors.pageNumberColor, "#0000FF");
    EXPECT_EQ(painted(dialog, "lblPageNumberColor"), (QStringList{"#0000FF", "#0000FF"}));

    // A title barely lighter than its background is named with its ratio; Save still writes it.
    dialogs.colors.push_back(QColor("#6699CC"));
    click(dialog, "lblTitleColor");
    EXPECT_FALSE(warning->isHidden());
    // (The warning's wording and ratios are the contrast rule's own tests.)
    EXPECT_TRUE(warning->text().endsWith("Module Title on the title background: 1.99:1"));
    click(dialog, "btnSave");
    EXPECT_TRUE(containsText(readText(stylesheet), ".popupTitle, .moduleTitle {color: #6699CC;}"));
}

} // namespace
} // namespace lumora::testing
