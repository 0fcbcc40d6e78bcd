#pragma once

#include "catalogue/CatalogueWorld.h"

namespace orvantine::fake {

/// Two lists of two tracks each, the second with a cover; nobody asks about missing files.
class BackupWorld : public CatalogueWorld
{
protected:
    void SetUp() override
    {
        setting(QStringLiteral("Error"), dwordSetting(0));
        putCatalogue({QStringLiteral("Eins"), QStringLiteral("Zwei")});
        put(data() + QStringLiteral("Resource/Zwei.jpg"), "Bild");
        start();
        click(1);
        forgetCalls();
        putFolder(QStringLiteral("/stick"));
    }

    [[nodiscard]] QString archive() const { return QStringLiteral("/stick/Orvantenbackup.zip"); }
    void backUp()
    {
        desktop.choosers.save(archive());
        root().mnuDbSicherungen.Click();
    }
    void restore()
    {
        desktop.messages.answer(Answer::Ok);
        desktop.choosers.open(archive());
        root().mnuDbWiederherstellung.Click();
    }
    /// "name: bytes", sorted; "(none)" for what is no archive.
    [[nodiscard]] std::string content(const QString& path)
    {
        const auto entries = FakeArchive::unpacked(desktop.disk().readBytes(path).bytes);
        if (!entries)
            return "(none)";
        QStringList all;
        for (const auto& [entry, bytes] : *entries)
            all.append(entry.name + QStringLiteral(": ") +
                       QString::fromUtf8(bytes).replace(data(), QStringLiteral("{data}/")));
        all.sort();
        return lines(all).substr(0, 4000);
    }
    /// Names alone.
    [[nodiscard]] std::string names(const QString& path)
    {
        const auto entries = FakeArchive::unpacked(desktop.disk().readBytes(path).bytes);
        QStringList all;
        for (const auto& packed : entries.value_or(QList<FakeArchive::Packed>()))
            all.append(packed.entry.name);
        all.sort();
        return lines(all);
    }
    /// An archive as somebody else may have made it.
    void putArchive(const QList<std::pair<QString, QByteArray>>& files, const QString& path)
    {
        QList<FakeArchive::Packed> packed;
        for (const auto& [name, bytes] : files) {
            FakeArchive::Packed one;
            one.entry.name = name;
            one.entry.kind = name.endsWith(u'/') ? ArchiveEntry::Kind::Folder : ArchiveEntry::Kind::File;
            one.entry.size = one.entry.packedSize = bytes.size();
            one.entry.modified = QDateTime(QDate(2003, 2, 1), QTime(4, 5, 6));
            one.bytes = bytes;
            packed.append(one);
        }
        put(path, FakeArchive::packed(packed));
    }
    void putArchive(const QList<std::pair<QString, QByteArray>>& files) { putArchive(files, archive()); }
    /// Everything is usable again.
    void expectUnfrozen()
    {
        EXPECT_EQ("0", root().Tag.toStdString());
        EXPECT_TRUE(root().Timer2.Enabled.value());
        EXPECT_TRUE(catalogue().Enabled.value());
        EXPECT_TRUE(tracks().Enabled.value());
        EXPECT_EQ(MousePointer::Default, root().Pointer.value());
    }
};

} // namespace orvantine::fake
