#pragma once

#include "playlists/PlaylistText.h"
#include "support/DesktopTest.h"

namespace orvantine::fake {

/// A row of the catalogue as it stands in the database.
struct IndexRow
{
    QString name;
    QString path;
    QString tracks = QStringLiteral("2");
    QString description;
    /// Without a date, showing the list would store that of its last track.
    QString date = QStringLiteral("01.02.2003");
    QString favourite;
};

/// A desktop with a catalogue of playlists whose tracks exist, so that nothing is told of missing files.
class CatalogueWorld : public DesktopTest
{
protected:
    explicit CatalogueWorld(const DesktopOptions& options = {}) : DesktopTest(options) {}

    [[nodiscard]] QString database() const { return data() + QStringLiteral("Orvantine.dat"); }
    [[nodiscard]] QString backup() const { return data() + QStringLiteral("Orvantine.bak"); }
    [[nodiscard]] QString listPath(const QString& name) const
    {
        return data() + QStringLiteral("Playlisten/") + name + QStringLiteral(".m3u");
    }

    /// A track that exists: "/m/<name>.mp3".
    QString putTrack(const QString& name)
    {
        QString path = QStringLiteral("/m/") + name + QStringLiteral(".mp3");
        put(path, "mp3");
        return path;
    }

    /// A list in "Playlisten" as a display leaves it: one entry a line and an empty line.
    QString putList(const QString& name, const QStringList& entries)
    {
        put(listPath(name), (entries.join(QStringLiteral("\r\n")) + QStringLiteral("\r\n\r\n")).toUtf8());
        return listPath(name);
    }

    /// The seven keys of a row; those with an empty value are left out.
    static QByteArray indexRow(int number, const IndexRow& row)
    {
        QString text;
        const auto line = [&](char16_t letter, const QString& value) {
            if (!value.isEmpty())
                text += QString::number(number) + QChar(letter) + u'=' + value + QStringLiteral("\r\n");
        };
        line(u'a', QStringLiteral("%1").arg(number - 1, 3, 10, QLatin1Char('0')));
        line(u'b', row.name);
        line(u'c', row.path);
        line(u'd', row.tracks);
        line(u'e', row.description);
        line(u'f', row.date);
        line(u'g', row.favourite);
        return text.toUtf8();
    }

    void putDatabase(const QByteArray& index, const QByteArray& before = {})
    {
        put(database(), before + "[Index]\r\n" + index);
    }

    /// Rows by name, each a list in "Playlisten" with two tracks: "/m/<name> 1.mp3" and "/m/<name> 2.mp3".
    void putCatalogue(const QStringList& names)
    {
        QByteArray index;
        for (int row = 1; row <= names.size(); ++row) {
            const QString& name = names[row - 1];
            const QString path =
                putList(name, {putTrack(name + QStringLiteral(" 1")), putTrack(name + QStringLiteral(" 2"))});
            index += indexRow(row, {.name = name, .path = path});
        }
        putDatabase(index);
    }

    /// The user clicks a row of the catalogue.
    void click(int row)
    {
        catalogue().select(row);
        catalogue().Click();
    }

    /// The database's bytes with the data folder as "{data}/".
    [[nodiscard]] std::string databaseText() { return withoutFolder(bytes(database())); }
    [[nodiscard]] std::string backupText() { return withoutFolder(bytes(backup())); }
    [[nodiscard]] std::string withoutFolder(const QByteArray& text) const
    {
        return QString::fromUtf8(text).replace(data(), QStringLiteral("{data}/")).toStdString();
    }

    /// Actions on the disk since the last look, with the data folder as "{data}/".
    [[nodiscard]] std::string actions()
    {
        QStringList lines;
        const QStringList starts = LoggingFiles::actions();
        const QStringList taken = desktop.log.take();
        for (const QString& line : taken)
            for (const QString& start : starts)
                if (line.startsWith(start))
                    lines += QString(line).replace(data(), QStringLiteral("{data}/"));
        return DesktopTest::lines(lines);
    }

    /// Says what follows was logged from here on.
    void forgetCalls() { desktop.log.take(); }
};

} // namespace orvantine::fake
