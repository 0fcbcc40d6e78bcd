#include "desktop/qt/forms/Builders.h"
#include "desktop/qt/forms/FormWindow.h"
#include "desktop/qt/services/QtForms.h"
#include "desktop/qt/widgets/PlainTips.h"
#include "gui/OpenWindow.h"
#include "metadata/frmID3.h"
#include "operations/Eigenschaften.h"
#include "operations/Positionen.h"
#include "shell/Dialoge.h"
#include "shell/Info.h"
#include "shell/Startup.h"
#include "transfer/Trackcopy.h"

#include <QHelpEvent>
#include <QLabel>
#include <QToolTip>

#include <gtest/gtest.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// A name that would load a picture that never ends, far too long for any label.
QString hostileText()
{
    return u"<img src=/dev/zero><b>"_s + QString(300, u'W');
}

/// What the tip of the widget shows; "" for none.
QString shownTip(QWidget& widget)
{
    QHelpEvent help(QEvent::ToolTip, QPoint(1, 1), widget.mapToGlobal(QPoint(1, 1)));
    QApplication::sendEvent(&widget, &help);
    const QString shown = QToolTip::text();
    QToolTip::hideText();
    return shown;
}

void expectPlainLabels(const QWidget& window)
{
    const QList<QLabel*> labels = window.findChildren<QLabel*>();
    for (const QLabel* const label : labels)
        EXPECT_TRUE(label->textFormat() == Qt::PlainText || label->text().isEmpty())
            << window.objectName().toStdString() << ": " << label->objectName().toStdString() << " "
            << label->text().toStdString();
}

class PlainText : public OpenWindow
{
protected:
    PlainTips m_plain;
};

TEST_F(PlainText, NoTipOfTheWindowTakesANameForMarkup)
{
    open();
    for (Label* const label :
         std::initializer_list<Label*>{&root.tPlaylisteinträge, &root.LSoundCaption, &root.LListenCaption,
                                       &root.tDateiname, &root.tDatum, &root.sAnzeige[1], &root.sAnzeige[2]})
        label->Caption = hostileText();
    root.LListView1.setSubItem(1, 1, hostileText());
    root.LListView2.setSubItem(1, 1, hostileText());
    window.grab();
    int tips = 0;
    const QWidgetList widgets = window.findChildren<QWidget*>();
    for (QWidget* const widget : widgets) {
        if (!widget->isVisible())
            continue;
        const QString shown = shownTip(*widget);
        EXPECT_FALSE(shown.contains(u"<img"_s)) << widget->objectName().toStdString();
        tips += shown.contains(u"&lt;img"_s) ? 1 : 0;
    }
    EXPECT_GE(tips, 2) << "cut labels show their whole text";
}

TEST_F(PlainText, NoLabelOfTheWindowOrAFormTakesATextForMarkup)
{
    open();
    expectPlainLabels(window);
    QtForms forms;
    for (Form* const form :
         std::initializer_list<Form*>{root.eigenschaften.get(), root.positionen.get(), root.trackcopy.get(),
                                      root.startup.get(), root.info.get(), root.dialoge.get()}) {
        FormWindow made(*form, forms, nullptr);
        made.setObjectName(form->name);
        ASSERT_NE(formBuilder(form->name), nullptr) << form->name.toStdString();
        formBuilder(form->name)(made);
        expectPlainLabels(made);
    }
}

TEST(PlainTip, KeepsWhatNobodyTakesForMarkup)
{
    EXPECT_EQ(plainTip(u"a < b & c\nd"_s), u"a < b & c\nd"_s);
    EXPECT_FALSE(plainTip(hostileText()).contains(u"<img"_s));
    EXPECT_TRUE(plainTip(hostileText()).startsWith(u"<p>&lt;img src=/dev/zero&gt;&lt;b&gt;W"_s));
}

} // namespace

} // namespace orvantine
