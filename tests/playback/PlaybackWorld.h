#pragma once

#include "catalogue/CatalogueWorld.h"

namespace orvantine::fake {

/// Four playlists of existing tracks: "Erste" (a favourite), "Zweite" and "Dritte" with two, "Einzeln" with one. The
/// first is open after startPlayback().
class PlaybackWorld : public CatalogueWorld
{
protected:
    void startPlayback()
    {
        setting(QStringLiteral("Error"), dwordSetting(0));
        QByteArray index;
        int number = 0;
        for (const QString& name :
             {QStringLiteral("Erste"), QStringLiteral("Zweite"), QStringLiteral("Dritte"), QStringLiteral("Einzeln")}) {
            QStringList entries{putTrack(name + QStringLiteral(" 1"))};
            if (name != QStringLiteral("Einzeln"))
                entries += putTrack(name + QStringLiteral(" 2"));
            ++number;
            index += indexRow(number, {.name = name,
                                       .path = putList(name, entries),
                                       .tracks = QString::number(entries.size()),
                                       .favourite = number == 1 ? QStringLiteral("1") : QString()});
        }
        putDatabase(index);
        start();
        click(1);
        forgetCalls();
    }

    FakePlayer& player() { return desktop.mediaplayer(); }

    /// What the player was told since the last look, less the folders of lists and tracks.
    [[nodiscard]] std::string told()
    {
        QStringList calls;
        const QStringList taken = desktop.log.take();
        for (const QString& line : taken)
            if (line.startsWith(QStringLiteral("Mediaplayer.")))
                calls += QString(line.mid(12)).remove(data() + QStringLiteral("Playlisten/"));
        return lines(calls);
    }

    /// Small icons of the catalogue's rows; that of the first sub-item is the same.
    [[nodiscard]] std::string marks()
    {
        QStringList icons;
        for (int row = 1; row <= catalogue().count(); ++row) {
            const ListItem& item = catalogue().item(row);
            EXPECT_EQ(item.SmallIcon.toStdString(), item.SubItems[0].ReportIcon.toStdString());
            icons += item.SmallIcon;
        }
        return icons.join(u' ').toStdString();
    }

    /// Everything that makes up the player's state, on one line.
    [[nodiscard]] std::string state()
    {
        const auto flag = [](const Control& control) { return QString::number(control.Enabled.value() ? 1 : 0); };
        return QStringLiteral("play %1 pause %2 tag %3 lists %4 timer %5 item3 %6 item4 %7 %8")
            .arg(flag(root().pSoundPlayer), flag(root().pPausePlayer), root().Tag,
                 root().pSoundPlayer.Tag + u'/' + root().LListView2.Tag, flag(root().Timer1),
                 flag(root().mnuSoundplayer[3]), flag(root().mnuSoundplayer[4]), root().mnuWiedergabe.Caption.value())
            .toStdString();
    }

    void run(int milliseconds) { desktop.events().run(std::chrono::milliseconds{milliseconds}); }
};

} // namespace orvantine::fake
