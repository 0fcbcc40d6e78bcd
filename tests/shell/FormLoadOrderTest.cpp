#include "shell/FormLoad.h"

#include "catalogue/CatalogueWorld.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

/// What of a call tells the step: values by their names alone, files and folders by theirs.
QString stepOf(const QString& line)
{
    const QString call = line.section(u' ', 0, 0);
    if (call == u"settings.value"_s)
        return u"read "_s + line.section(u'"', -2, -2);
    if (call == u"settings.setValue"_s)
        return u"write "_s + line.section(u'"', 3, 3);
    if (call == u"settings.createKey"_s)
        return u"key "_s + line.section(u"\\\\"_s, -1).remove(u'"');
    if (call == u"files.makeFolder"_s || call == u"files.readText"_s)
        return call.section(u'.', 1) + u' ' + line.section(u'/', -1).remove(u'"');
    for (const QString& kind : {u"instance."_s, u"forms."_s, u"mixer.open"_s, u"messages."_s, u"tray."_s})
        if (line.startsWith(kind))
            return line;
    return {};
}

class FormLoadOrder : public CatalogueWorld
{
protected:
    /// The told steps that did not come, or came before one that is told earlier.
    [[nodiscard]] std::string outOfOrder(const QStringList& told)
    {
        QStringList steps;
        const QStringList taken = desktop.log.take();
        for (const QString& line : taken)
            if (const QString step = stepOf(line); !step.isEmpty())
                steps += step;
        QStringList missing;
        qsizetype from = 0;
        for (const QString& step : told) {
            qsizetype at = from;
            while (at < steps.size() && !steps[at].startsWith(step))
                ++at;
            if (at == steps.size())
                missing += step;
            else
                from = at + 1;
        }
        return missing.isEmpty() ? std::string() : lines(missing) + "\nof\n" + lines(steps);
    }
};

} // namespace

TEST_F(FormLoadOrder, AFirstStartTakesTheToldStepsInTheirOrder)
{
    desktop.fonts.families = {};
    desktop.messages.answer(Answer::Cancel);
    desktop.messages.answer(Answer::Cancel);
    forgetCalls();
    start();
    EXPECT_EQ("", outOfOrder({u"instance.acquire"_s,
                              u"forms.show Startup"_s,
                              u"mixer.open"_s,
                              u"key Verdanis"_s,
                              u"key Orvant Manager"_s,
                              u"read Version"_s,
                              u"write Version"_s,
                              u"makeFolder Orvanten Manager"_s,
                              u"read Database"_s,
                              u"write Database"_s,
                              u"write InstallDir"_s,
                              u"makeFolder Burning"_s,
                              u"makeFolder Playlisten"_s,
                              u"makeFolder Resource"_s,
                              u"messages.show"_s,
                              u"messages.show"_s,
                              u"read Error"_s,
                              u"read Height"_s,
                              u"read Width"_s,
                              u"read Left"_s,
                              u"read Top"_s,
                              u"read Maximized"_s,
                              u"read Fontname"_s,
                              u"read Fontsize"_s,
                              u"tray.add"_s,
                              u"forms.unload Startup"_s,
                              u"read Index"_s,
                              u"read Position"_s,
                              u"read ReCall"_s,
                              u"read CreateFolder"_s,
                              u"read Volume"_s,
                              u"read ShowDate"_s,
                              u"read FolderView"_s,
                              u"read ShowFiles"_s,
                              u"read Lokal"_s,
                              u"read Info"_s,
                              u"forms.show Dialoge"_s,
                              u"forms.show Dialoge"_s,
                              u"write Info"_s}));
}

TEST_F(FormLoadOrder, TheStateChangesInTheToldOrder)
{
    putCatalogue({u"Erste"_s, u"Zweite"_s});
    QStringList told;
    std::vector<QPropertyNotifier> watches;
    const auto watch = [&](auto& property, const QString& name, auto printed) {
        watches.push_back(property.addNotifier([&told, &property, name, printed] {
            const QString value = printed(property.value());
            const QString line = value.isEmpty() ? name : name + u' ' + value;
            if (told.isEmpty() || told.last() != line)
                told += line;
        }));
    };
    const auto onOff = [](bool on) { return on ? u"on"_s : u"off"_s; };
    const auto nothing = [](const auto&) { return QString(); };
    watch(root().mnuBearbeiten.Enabled, u"buttons"_s, onOff);
    watch(root().tDatum.Caption, u"date"_s, nothing);
    watch(root().tDatenbank.Text, u"folder"_s, nothing);
    watch(root().pCoverBack.BackColor, u"cover"_s, nothing);
    watch(root().mnuErrorDisplay.Checked, u"errors"_s, onOff);
    watch(root().Left, u"centred"_s, nothing);
    watch(root().pAnimations.Height, u"strip"_s, nothing);
    watch(root().mnuWiederholung[3].Checked, u"repeat"_s, onOff);
    watch(root().mnuDatumsanzeige.Checked, u"date display"_s, onOff);
    watch(root().mnuAddSoundfiles.Checked, u"folders"_s, onOff);
    watch(root().mnuOrvmenu[1].Checked, u"paths"_s, onOff);
    watch(root().mnuLokalePlayliste.Checked, u"local"_s, onOff);
    watch(root().pSymbole.ToolTipText, u"tips"_s, nothing);
    watch(root().Visible, u"visible"_s, onOff);
    start();
    told.removeAll(u"date"_s);
    // Each list that is read on the way takes the buttons away and gives them back.
    QStringList once;
    for (const QString& line : std::as_const(told))
        if (!line.startsWith(u"buttons"_s) || once.isEmpty())
            once += line;
    EXPECT_EQ(
        "buttons off\nfolder\ncover\nerrors on\ncentred\nstrip\nrepeat on\ndate display on\nfolders on\npaths on\n"
        "local on\ntips\nvisible on",
        lines(once));
}

TEST_F(FormLoadOrder, BehindTheMenusComeTheTipsTheClickOnTheTrackAndTheFocusBeforeTheWindowIsSeen)
{
    putCatalogue({u"Erste"_s, u"Zweite"_s});
    setting(u"Index"_s, {.type = SettingType::Binary, .text = {}, .bytes = QByteArray("\1\0\0\0", 4)});
    QStringList told;
    root().LListView1.Click = [&told, click = root().LListView1.Click] {
        told += u"open"_s;
        click();
    };
    root().LListView2.Click = [&told, click = root().LListView2.Click] {
        told += u"track"_s;
        click();
    };
    root().LListView1.SetFocus = [&told] { told += u"focus"_s; };
    const auto menus = root().mnuLokalePlayliste.Checked.addNotifier([&told] { told += u"menus"_s; });
    const auto tips = root().pPlayBack.ToolTipText.addNotifier([&told] { told += u"tips"_s; });
    const auto seen = root().Visible.addNotifier([&told] { told += u"visible"_s; });
    start();
    EXPECT_EQ("open menus tips track focus visible", told.join(u' ').toStdString());
    EXPECT_EQ("Erste", root().tPlaylisteinträge.Caption.value().toStdString());
}

TEST_F(FormLoadOrder, APlayCommandPlaysBehindAllOtherSteps)
{
    putCatalogue({u"Erste"_s});
    forgetCalls();
    desktop.log.take();
    start(u"/play"_s);
    const QStringList calls = desktop.log.linesOf({u"tray.add"_s, u"Mediaplayer.URL"_s, u"forms.unload Startup"_s});
    ASSERT_EQ(3, calls.size()) << lines(calls);
    EXPECT_TRUE(calls[0].startsWith(u"tray.add"_s) && calls[1].startsWith(u"forms.unload"_s)) << lines(calls);
    EXPECT_TRUE(root().Timer1.Enabled.value());
    EXPECT_EQ("1", root().Tag.toStdString());
}

} // namespace orvantine::fake
