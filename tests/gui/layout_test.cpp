// The main form on scaled screens: it opens within the screen, and no caption of a button, tab
// or combo box is cut (and no button goes without a name), on any tab of any module type, at
// the form's minimum size and at the size it opens with. CTest runs these tests once more under
// QT_SCALE_FACTOR 1.5 and 2 on a 1280x1024 screen; every visible control is walked, so controls
// added later are held to it.
#include "GuiFixture.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QPushButton>
#include <QRegularExpression>
#include <QScreen>
#include <QSettings>
#include <QStyleOptionButton>
#include <QStyleOptionComboBox>
#include <QTabBar>
#include <QTabWidget>
#include <QToolButton>

namespace lumora::testing {
namespace {

// A caption as shown: "&" marks a mnemonic, "&&" is an ampersand.
QString shownText(QString caption) {
    return caption.remove(QRegularExpression("&(?!&)"));
}

QString describe(const QWidget* w, const QString& text, int room, int needed) {
    return QString("%1 \"%2\": %3 px for %4 px")
        .arg(w->objectName().isEmpty() ? w->metaObject()->className() : w->objectName(), text)
        .arg(room)
        .arg(needed);
}

// Where each kind of control draws its caption, against the room the caption needs.
void checkButton(QAbstractButton* b, QStringList& cut) {
    // A picture-only button says what it does to a screen reader.
    if (b->text().isEmpty()) {
        if (b->accessibleName().isEmpty())
            cut << b->objectName() + ": neither a caption nor an accessible name";
        return;
    }
    const QString text = shownText(b->text());
    const int textWidth = b->fontMetrics().horizontalAdvance(text);
    if (auto* push = qobject_cast<QPushButton*>(b)) {
        QStyleOptionButton opt;
        opt.initFrom(push);
        opt.text = push->text();
        opt.icon = push->icon();
        opt.iconSize = push->iconSize();
        const int room =
            push->style()->subElementRect(QStyle::SE_PushButtonContents, &opt, push).width();
        const int needed = textWidth + (push->icon().isNull() ? 0 : push->iconSize().width() + 4);
        if (room < needed)
            cut << describe(b, text, room, needed);
        return;
    }
    // Check boxes, radio and tool buttons have no minimum of their own in their size hint.
    if (b->width() < b->sizeHint().width())
        cut << describe(b, text, b->width(), b->sizeHint().width());
}

void checkTabs(QTabBar* bar, QStringList& cut) {
    for (QToolButton* scroll : bar->findChildren<QToolButton*>())
        if (scroll->isVisible())
            cut << bar->objectName() + ": the tabs do not fit and scroll";
    const int padding = bar->style()->pixelMetric(QStyle::PM_TabBarTabHSpace, nullptr, bar);
    for (int i = 0; i < bar->count(); ++i) {
        if (!bar->isTabVisible(i))
            continue;
        const QString text = shownText(bar->tabText(i));
        const QRect tab = bar->tabRect(i);
        const int needed = bar->fontMetrics().horizontalAdvance(text) + padding;
        if (tab.width() < needed || !bar->rect().contains(tab))
            cut << describe(bar, text, tab.intersected(bar->rect()).width(), needed);
    }
}

void checkCombo(QComboBox* combo, QStringList& cut) {
    QStyleOptionComboBox opt;
    opt.initFrom(combo);
    opt.editable = combo->isEditable();
    const int room =
        combo->style()
            ->subControlRect(QStyle::CC_ComboBox, &opt, QStyle::SC_ComboBoxEditField, combo)
            .width();
    for (int i = 0; i < combo->count(); ++i) {
        const int needed = combo->fontMetrics().horizontalAdvance(combo->itemText(i)) + 2;
        if (room < needed)
            cut << describe(combo, combo->itemText(i), room, needed);
    }
}

QStringList cutCaptions(QWidget* form) {
    QStringList cut;
    for (QWidget* w : form->findChildren<QWidget*>()) {
        // Parts Qt makes for its own controls (a tool bar's overflow button) are Qt's to name.
        if (!w->isVisible() || w->objectName().startsWith("qt_"))
            continue;
        // Buttons and boxes keep the height their caption needs.
        if ((qobject_cast<QAbstractButton*>(w) || qobject_cast<QComboBox*>(w)) &&
            w->height() < w->sizeHint().height())
            cut << w->objectName() + ": squeezed in height";
        if (auto* b = qobject_cast<QAbstractButton*>(w); b && !qobject_cast<QTabBar*>(w->parent()))
            checkButton(b, cut);
        else if (auto* bar = qobject_cast<QTabBar*>(w))
            checkTabs(bar, cut);
        else if (auto* combo = qobject_cast<QComboBox*>(w))
            checkCombo(combo, cut);
    }
    return cut;
}

class MainFormLayout : public GuiTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(MainFormLayout, NoCaptionIsCutOnAnyTabAtTheMinimumAndTheOpeningSize) {
    MainForm* form = openModule("Course", GetParam());
    ASSERT_NE(form, nullptr);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(form));
    const QSize opening = form->size();
    auto* tabs = control<QTabWidget>(form, "tabMain");
    QStringList cut;
    for (const QSize size : {form->minimumSize(), opening}) {
        form->resize(size);
        ASSERT_TRUE(QTest::qWaitFor([&] { return form->size() == size; }, kWaitMs));
        for (int i = 0; i < tabs->count(); ++i) {
            if (!tabs->isTabVisible(i))
                continue;
            tabs->setCurrentIndex(i);
            QCoreApplication::processEvents();
            for (const QString& c : cutCaptions(form))
                cut << QString("%1x%2, tab %3: %4")
                           .arg(size.width())
                           .arg(size.height())
                           .arg(shownText(tabs->tabText(i)), c);
        }
    }
    EXPECT_TRUE(cut.isEmpty()) << "scale " << form->devicePixelRatio() << "\n"
                               << cut.join('\n').toStdString();
}

INSTANTIATE_TEST_SUITE_P(EveryModuleType, MainFormLayout,
                         ::testing::Values("Lesson", "Evaluation", "Survey"));

// The form opens within the screen's available room unless its minimum size is larger; the
// minimum holds in device-independent pixels at every scale.
using MainFormScreen = GuiTest;

TEST_F(MainFormScreen, TheMainFormOpensWithinTheScreen) {
    MainForm* form = openModule("Course", "Lesson");
    ASSERT_TRUE(QTest::qWaitForWindowExposed(form));
    const QRect available = form->screen()->availableGeometry();
    EXPECT_GE(form->minimumWidth(), 618);
    EXPECT_GE(form->minimumHeight(), 487);
    if (available.width() >= form->minimumWidth() + 8 &&
        available.height() >= form->minimumHeight() + 8)
        EXPECT_TRUE(available.contains(form->frameGeometry()));
    else
        EXPECT_EQ(form->size(), form->minimumSize());
}

} // namespace
} // namespace lumora::testing
