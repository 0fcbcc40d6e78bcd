#pragma once

#include "catalogue/CatalogueWorld.h"

#include <functional>

namespace orvantine::fake {

inline const QString SaveTitle = QStringLiteral(" Wiedergabeliste speichern");
inline const QString SaveFailure =
    QStringLiteral("Die Wiedergabeliste konnte nicht ordnungsgemäss gespeichert werden.    ");
inline const QString LinkQuestion =
    QStringLiteral("Sie haben eine vorhandene Playliste unter einer neuen Datei gespeichert.    \n"
                   "In der Datenbank wird ein Verweiss zu dieser Wiedergabeliste gesetzt.\n \n"
                   "Möchten Sie die Verknüpfung zur neuen Wiedergabeliste setzen ?");

/// One playlist, "Liste", with three tracks, open; lists stay where they are unless a test turns that option on.
class SavePlaylists : public CatalogueWorld
{
protected:
    void open(const QString& path)
    {
        list = path;
        setting(QStringLiteral("Error"), dwordSetting(0));
        put(path, "/m/a.mp3\r\n/m/b.mp3\r\n/m/c.mp3\r\n\r\n");
        for (const QString& name : {QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")})
            putTrack(name);
        putDatabase(indexRow(1, {.name = QStringLiteral("Liste"), .path = path, .tracks = QStringLiteral("3")}));
        start();
        root().mnuLokalePlayliste.Checked = false;
        ASSERT_EQ(3, tracks().count());
        forgetCalls();
    }
    void SetUp() override { open(QStringLiteral("/l/liste.m3u")); }

    void expectWaitOver()
    {
        EXPECT_EQ(MousePointer::Default, root().Pointer.value());
        EXPECT_TRUE(catalogue().Enabled.value());
        EXPECT_TRUE(tracks().Enabled.value());
        EXPECT_TRUE(root().mnuBearbeiten.Enabled.value());
    }

    /// The user chooses `path`; `meanwhile` happens while the dialog is up.
    void chooseMeanwhile(const QString& path, std::function<void()> meanwhile)
    {
        const qsizetype name = path.lastIndexOf(u'/');
        desktop.choosers.queue.push({.kind = ChooserKind::Save,
                                     .file = ChosenFile{path.left(std::max(name, qsizetype{0})), path.mid(name + 1)},
                                     .folder = {},
                                     .font = {},
                                     .meanwhile = std::move(meanwhile)});
    }

    /// What the user finds in the middle of a save.
    [[nodiscard]] std::string waiting()
    {
        QStringList words;
        if (root().Pointer.value() == MousePointer::Hourglass)
            words += QStringLiteral("hourglass");
        for (const auto& [name, on] :
             {std::pair{QStringLiteral("catalogue"), catalogue().Enabled.value()},
              std::pair{QStringLiteral("tracks"), tracks().Enabled.value()},
              std::pair{QStringLiteral("mnuBearbeiten"), root().mnuBearbeiten.Enabled.value()}})
            if (!on)
                words += name + QStringLiteral(" off");
        return words.join(QStringLiteral(", ")).toStdString();
    }

    [[nodiscard]] std::string listBytes() { return bytes(list).toStdString(); }

    QString list;
};

} // namespace orvantine::fake
