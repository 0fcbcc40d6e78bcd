#include "app/Direkthilfe.h"
#include "desktop/qt/services/QtForms.h"
#include "desktop/qt/window/MainWindow.h"
#include "gui/Sample.h"
#include "metadata/frmID3.h"
#include "operations/Eigenschaften.h"
#include "operations/Positionen.h"
#include "search/ErrorListe.h"
#include "search/FindAudio.h"
#include "search/FolderCheck.h"
#include "search/Suchen.h"
#include "shell/Dialoge.h"
#include "shell/Info.h"
#include "shell/Optionen.h"
#include "shell/Startup.h"
#include "shell/Tastatur.h"
#include "support/FakeDesktop.h"
#include "transfer/Datenbank.h"
#include "transfer/Fassungen.h"
#include "transfer/FolderDialogs.h"
#include "transfer/Kopieren.h"
#include "transfer/Trackcopy.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QScrollBar>

#include <gtest/gtest.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

QString pathOf(const QWidget& widget)
{
    const QWidget* const parent = widget.parentWidget();
    const QString own = QString::fromLatin1(widget.metaObject()->className()) + u' ' + widget.objectName();
    return parent != nullptr && !widget.isWindow() ? pathOf(*parent) + u" > "_s + own : own;
}

/// What a screen reader would stumble over.
QStringList faultsOf(QWidget& widget)
{
    QStringList faults;
    QAccessibleInterface* const seen = QAccessible::queryAccessibleInterface(&widget);
    if (seen == nullptr)
        return {pathOf(widget) + u": nothing to be heard"_s};
    const QAccessible::Role role = seen->role();
    const bool reached = (widget.focusPolicy() & Qt::TabFocus) != 0 && widget.focusProxy() == nullptr;
    const bool control = reached || qobject_cast<QAbstractButton*>(&widget) != nullptr;
    if (control && seen->text(QAccessible::Name).trimmed().isEmpty())
        faults += pathOf(widget) + u": without a name"_s;
    if (control && (role == QAccessible::NoRole || role == QAccessible::Client))
        faults += pathOf(widget) + u": without a role"_s;
    if (reached && seen->state().disabled != !widget.isEnabled())
        faults += pathOf(widget) + u": tells a wrong state"_s;
    if (seen->text(QAccessible::Name).contains(u"&&"_s))
        faults += pathOf(widget) + u": tells its mark of a mnemonic"_s;
    return faults;
}

QStringList faultsWithin(QWidget& window)
{
    QStringList faults = window.windowTitle().trimmed().isEmpty() ? QStringList{u"no title"_s} : QStringList{};
    const QList<QWidget*> widgets = window.findChildren<QWidget*>();
    for (QWidget* const widget : widgets)
        if (widget->isVisible() && qobject_cast<QScrollBar*>(widget) == nullptr)
            faults += faultsOf(*widget);
    return faults;
}

/// Every form of the program on the real service, over the fake desktop.
class Accessibility : public testing::Test
{
protected:
    Accessibility() { fake::showSample(root); }
    ~Accessibility() override { forms.dropAll(); }

    void expectHeard(Form& form)
    {
        forms.show(form);
        QCoreApplication::processEvents();
        int seen = 0;
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (QWidget* const window : windows) {
            if (window->objectName() != form.name || !window->isVisible())
                continue;
            ++seen;
            EXPECT_EQ(faultsWithin(*window).join(u'\n').toStdString(), "") << form.name.toStdString();
        }
        EXPECT_EQ(seen, 1) << form.name.toStdString();
        forms.unload(form);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    fake::FakeDesktop desktop;
    Root& root = desktop.root();
    QtForms forms;
};

TEST_F(Accessibility, EveryControlOfTheMainWindowHasNameRoleAndState)
{
    MainWindow window(root);
    for (Button* const button : {&root.bMoveUp, &root.bMoveDown, &root.bEntryUp, &root.bEntryDown})
        button->Visible = true;
    root.Visible = true;
    QCoreApplication::processEvents();
    EXPECT_EQ(faultsWithin(window).join(u'\n').toStdString(), "");
}

TEST_F(Accessibility, EveryControlOfEveryFormHasNameRoleAndState)
{
    root.tagForm = std::make_shared<frmID3V1>();
    root.otherTagForm = std::make_shared<frmID3V2>();
    for (Form* const form : std::initializer_list<Form*>{
             root.startup.get(), root.info.get(), root.datenbank.get(), root.direkthilfe.get(), root.optionen.get(),
             root.tastatur.get(), root.positionen.get(), root.eigenschaften.get(), root.errorListe.get(),
             root.findAudio.get(), root.folderCheck.get(), root.suchen.get(), root.filesCopy.get(), root.ordner.get(),
             root.fassungen.get(), root.trackcopy.get(), root.kopieren.get(), root.tagForm.get(),
             root.otherTagForm.get()})
        expectHeard(*form);
    for (const int page : {0, 1, 2}) {
        root.dialoge->page = page;
        expectHeard(*root.dialoge);
    }
}

} // namespace
} // namespace orvantine
